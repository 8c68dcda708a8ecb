// SPDX-License-Identifier: Apache-2.0
#include "admin/QorAdminLogRecords.h"

#include "LogDesk.h"

namespace {

using Numbers = std::vector<unsigned long>;  // of lines

class LogRecords : public LogTest {
protected:
    LogRecords() {
        const std::string lines[] = {
            text("{29000};{29001};{29002};{29003};{29004}"),
            text("2026.03.01;09:05:07;Ada;Office;{29010};{29030}Bob;{29031}2"),
            text("2026.03.01;09:05:08;Bob;{29024};{29030}Cyd;{29038}=1+1"),
            text("2026.03.02;00:00:00;Ada;{29016};\"two\nlines\""),
            "2027.01.01;12:00:00;Eve;Angelegt;Benutzer: Bob",  // written in German
            "no form",
            "2026.3.1;1:1:1;x",
        };
        for (const auto& line : lines) files.content[kLog] += BracketCipher::enciphered(line) + "\n";
        files.content[kLog] += "foreign\n";
    }

    static std::vector<QorAdminLogRecord> read(const QorAdminLogFilter& filter) {
        std::vector<QorAdminLogRecord> found;
        EXPECT_TRUE(QorAdminLogRecords::read(filter, [&](const QorAdminLogRecord& record) {
            found.push_back(record);
            return true;
        }));
        return found;
    }
};

TEST_F(LogRecords, TheActionTellsWhereANameWithTwoPartsEnds) {
    const auto records = read({});
    ASSERT_EQ(records.size(), 7U);
    EXPECT_EQ(records[0].user, "Ada;Office");
    EXPECT_EQ(records[0].action.str(), text("{29010}"));
    EXPECT_EQ(records[0].detail.str(), text("{29030}Bob;{29031}2"));
    EXPECT_EQ(records[2].detail, "\"two\nlines\"");
    EXPECT_EQ(records[3].user, "Eve") << "an action in another language";
    EXPECT_EQ(records[3].action, "Angelegt");
    EXPECT_TRUE(records[4].date.IsEmpty() && records[4].detail == "no form");
    EXPECT_TRUE(records[5].date.IsEmpty() && records[5].detail == "2026.3.1;1:1:1;x");
    EXPECT_FALSE(records[6].isReadable);
}

TEST_F(LogRecords, FiltersKeepWhatNobodyCanExclude) {
    const std::pair<QorAdminLogFilter, Numbers> cases[] = {
        {{"", "", "", ""}, {2, 3, 4, 5}},
        {{"2026.03.01;09:05:08", "", "", ""}, {3, 4, 5}},
        {{"2026.03.01", "2026.03.01", "", ""}, {2, 3}},
        {{"2026.03.02", "2026", "", ""}, {4}},
        {{"", "2026.03.01;09:05:07", "", ""}, {2}},
        {{"2028", "", "", ""}, {}},
        {{"", "", "Ada", ""}, {2, 4}},
        {{"", "", "Ada;Office", ""}, {2}},
        {{"", "", "Office", ""}, {}},
        {{"", "", "", text("{29024}")}, {3}},
        {{"2026.03.02", "", "Ada", text("{29016}")}, {4}},
    };
    for (const auto& [filter, expected] : cases) {
        SCOPED_TRACE(filter.from.str() + " " + filter.to.str() + " " + filter.user.str() + " " + filter.action.str());
        Numbers found;
        for (const auto& record : read(filter)) found.push_back(record.line);
        Numbers all = expected;
        all.insert(all.end(), {6, 7, 8});
        EXPECT_EQ(found, all);
    }
}

TEST_F(LogRecords, SpreadsheetsGetColumnsAndNoFormulas) {
    const auto records = read({});
    EXPECT_EQ(QorAdminLogRecords::csvLine(records[0]).str(),
              text("\"2026.03.01\";\"09:05:07\";\"Ada;Office\";\"{29010}\";\"{29030}Bob;{29031}2\"\n"));
    EXPECT_EQ(QorAdminLogRecords::csvLine(records[6]).str(),
              "\"\";\"\";\"\";\"\";\"" + Qor_Message(29006, {{"%n", "8"}}).str() + "\"\n");
    for (const char* name : {"=1+1", "+1", "-1", "@a", "\t=1", "\r=1"}) {
        QorAdminLogRecord record;
        record.user = name;
        record.detail = SV::String("a") + name;
        EXPECT_EQ(QorAdminLogRecords::csvLine(record).str(),
                  std::string("\"\";\"\";\"'") + name + "\";\"\";\"a" + name + "\"\n");
    }
    QorAdminLogRecord quoted;
    quoted.detail = "say \"x\"\n";
    EXPECT_EQ(QorAdminLogRecords::csvLine(quoted).str(), "\"\";\"\";\"\";\"\";\"say \"\"x\"\"\n\"\n");
    EXPECT_EQ(QorAdminLogRecords::csvHeader().str(),
              text("\"{29000}\";\"{29001}\";\"{29002}\";\"{29003}\";\"{29004}\"\n"));
}

TEST_F(LogRecords, ReadingEndsWithTheLastRecordWanted) {
    for (int i = 0; i < 1000; ++i) files.content[kLog] += "foreign\n";
    int taken = 0;
    EXPECT_TRUE(QorAdminLogRecords::read({}, [&](const QorAdminLogRecord&) { return ++taken < 3; }));
    EXPECT_EQ(taken, 3);
    EXPECT_EQ(desk.record.count("read"), 1);
    for (const char* failing : {"open", "read"}) {
        desk.record.fail(failing, QorErrorCode::NotFound);
        EXPECT_FALSE(QorAdminLogRecords::read({}, [](const QorAdminLogRecord&) { return true; })) << failing;
    }
    EXPECT_EQ(files.openHandles(), 0U);
}

}  // namespace
