// SPDX-License-Identifier: Apache-2.0
#include "modeltools/ConversionDesk.h"
#include "modeltools/QorTransferAttributesClipboard.h"

namespace {

class Transfer : public testing::Test {
protected:
    ~Transfer() override { clipboard.clear(); }

    ConversionDesk desk;
    QorTransferAttributesClipboard& clipboard = QorTransferAttributesClipboard::Instance();
    QorIdentifier source = desk.object("Task", "Source");
    QorIdentifier target = desk.object("Task", "Target");
    bool changed = true;

    [[nodiscard]] long id(std::string_view name) const { return desk.attributeOf(source, name); }
    bool copy(const ISortedSet<long>& attributes, bool skipSize = false, bool refuse = false) {
        clipboard.setAttributes(desk.shop, source, attributes);
        return clipboard.copyAttributes(desk.shop, target, skipSize, refuse, changed);
    }
};

TEST_F(Transfer, RemembersAndForgets) {
    clipboard.setAttributes(desk.shop, source, {id("Count"), -1});
    ISortedSet<long> held{99};
    clipboard.getAttributes(held);
    EXPECT_EQ(held, (ISortedSet<long>{id("Count"), -1}));
    EXPECT_TRUE(clipboard.isSizeTransferred());
    EXPECT_EQ(clipboard.getObject(), source);
    const QorIdentifier check = desk.object("Check", "Other");
    EXPECT_TRUE(clipboard.isProperTarget(target));
    for (const long wrong : {long{source}, long{check}, -1L, 0L, 4294967296L + target})
        EXPECT_FALSE(clipboard.isProperTarget(wrong)) << wrong;
    EXPECT_FALSE(clipboard.copyAttributes(desk.shop, source, false, false, changed)) << "onto itself";
    clipboard.setAttributes(desk.shop, 4294967296L + source, {id("Count")});
    EXPECT_EQ(clipboard.getObject(), -1) << "an unknown object";
    clipboard.clear();
    EXPECT_TRUE(clipboard.empty());
    EXPECT_TRUE(clipboard.copyAttributes(desk.shop, target, false, false, changed));
    EXPECT_FALSE(changed);
    EXPECT_FALSE(clipboard.copyAttributes(desk.shop, -1, false, false, changed)) << "the source of an empty one is -1";
}

TEST_F(Transfer, CopiesValuesOfEveryType) {
    for (const auto& [name, value] : {std::pair("Count", "7"),
                                      {"Info", "say \"hi\""},
                                      {"Sum", "[Count]"},
                                      {"Calls", "MODEL \"Monday\" type: \"Shop\""}})
        desk.value(source, name, value);
    desk.value(target, "Cost", "2.5");
    desk.row(source, "nail", "3");
    desk.row(target, "old", "1");
    desk.row(target, "older", "1");
    const ISortedSet<long> all{id("Count"), id("Info"), id("Sum"), id("Calls"), id("Cost"), id("Table")};
    for (int time = 0; time < 2; ++time) {
        EXPECT_TRUE(copy(all));
        EXPECT_TRUE(changed);
        for (const char* name : {"Count", "Info", "Sum", "Calls"})
            EXPECT_EQ(desk.valueOf(target, name), desk.valueOf(source, name)) << name;
        EXPECT_EQ(desk.valueOf(target, "Cost"), "") << "no value is copied like any other";
        EXPECT_EQ(desk.rowsOf(target), "nail/3/;");
    }
    EXPECT_TRUE(copy({id("Calls")}));
    EXPECT_FALSE(changed) << "references are written without notice";
    EXPECT_FALSE(copy({id("Count"), id("Calls")}, false, true));
    EXPECT_FALSE(changed) << "after a failure";
}

TEST_F(Transfer, CopiesTheSize) {
    const struct {
        const char* from;
        const char* onto;
        const char* after;  // null: refused
    } rows[] = {
        {"NODE w:3cm h:2.5cm", "NODE x:1cm y:2cm w:10cm h:1cm i:1", "NODE x:1cm y:2cm w:3cm h:2.5cm i:1"},
        {"NODE w:3cm h:2.5cm", "NODE h:111.25cm w: 1cm", "NODE h:2.5cm w:3cm"},
        {"NODE w:0cm h:2cm", "NODE w:1cm h:1cm", "NODE w:0cm h:2cm"},
        {"NODE w:3cm", "NODE w:1cm h:1cm", "NODE w:3cm h:1cm"},
        {"NODE h:3cm", "NODE w:1cm h:1cm", "NODE w:1cm h:3cm"},
        {"NODE x:1cm", "NODE x:2cm", "NODE x:2cm"},
        {"", "NODE w:1cm h:1cm", "NODE w:1cm h:1cm"},
        {"NODE w:3cm h:2cm", "NODE w:1cm", nullptr},
        {"NODE w:3cm h:2cm", "NODE h:1cm", nullptr},
        {"NODE w:3cm h:2cm", "", nullptr},
        {"NODE w:3cm h:2cm", "NODE w:1cm h:1", nullptr},
        {"NODE w:3cm h:2cm", "NODE draw:1cm h:1cm", nullptr},
        {"NODE w:3cm", "NODE \"w:9cm\" w:1cm", "NODE \"w:9cm\" w:3cm"},
        {"NODE w:3cm", "# w:9cm\nNODE w:1cm", "# w:9cm\nNODE w:3cm"},
        {"NODE w:00:000:00:00:09", "NODE w:1cm", nullptr},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.from) + " onto " + row.onto);
        desk.value(source, "Position", row.from);
        desk.value(target, "Position", row.onto);
        EXPECT_TRUE(copy({-1}, true)) << "the size is skipped";
        EXPECT_FALSE(changed);
        EXPECT_EQ(copy({-1}), row.after != nullptr);
        EXPECT_EQ(changed, row.after != nullptr);
        EXPECT_EQ(desk.valueOf(target, "Position"), row.after ? row.after : row.onto);
    }
}

TEST_F(Transfer, OfATableOntoItsOwnerDeletesNothing) {
    desk.row(source, "nail", "3");
    clipboard.setAttributes(desk.shop, source, {id("Table")});
    EXPECT_FALSE(clipboard.copyRecordAttributes(desk.shop, source, id("Table"), false));
    EXPECT_FALSE(clipboard.copyRecordAttributes(desk.shop, target, id("Count"), false)) << "no table";
    EXPECT_EQ(desk.rowsOf(source), "nail/3/secret;");
}

TEST_F(Transfer, StopsAtTheFirstFailure) {
    const struct {
        const char* operation;
        int nth;
        const char* rows;
        const char* count;
    } rows[] = {
        {"getAttributeType", 1, "old/1/secret;", ""},
        {"getAttributeValueAsNewChar", 1, "old/1/secret;", ""},
        {"setAttributeValueAsString", 1, "old/1/secret;", ""},
        {"getRecordInstances", 1, "old/1/secret;", "7"},
        {"getRecordClassIDFromAttributeID", 1, "old/1/secret;", "7"},
        {"getAttributeIDFromAttributeName", 1, "old/1/secret;", "7"},
        {"getRecordInstances", 2, "old/1/secret;", "7"},
        {"deleteRecordInstance", 1, "old/1/secret;", "7"},
        {"createRecordInstance", 1, "", "7"},
        {"createRecordInstance", 2, "nail/3/;", "7"},
        {"setAttributeValueAsString", 3, "nail//;", "7"},
    };
    desk.watched();
    desk.value(source, "Count", "7");
    desk.row(source, "nail", "3");
    desk.row(source, "board", "1");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.operation + std::to_string(row.nth));
        target = desk.object("Task", row.operation + std::to_string(row.nth));
        desk.row(target, "old", "1");
        desk.watched().record.fail(row.operation, static_cast<QorErrorCode>(77), row.nth);
        EXPECT_FALSE(copy({id("Count"), id("Table")}));
        EXPECT_FALSE(changed);
        desk.watched().record.failNothing();
        EXPECT_EQ(desk.rowsOf(target), row.rows);
        EXPECT_EQ(desk.valueOf(target, "Count"), row.count);
    }
}

}  // namespace
