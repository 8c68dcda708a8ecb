// SPDX-License-Identifier: Apache-2.0
#include "cli/CommandRunner.h"

namespace {

using qor::test::CommandRunner;
using qor::test::Outcome;
using testing::HasSubstr;

constexpr std::string_view kWeek = R"(# The workshop
cyclic: yes
B@Workday@A@28800-43200@T@46800-61200@T@Weekend@B@@@$AAAAABB
)";

class CalendarCommand : public testing::Test {
protected:
    CalendarCommand() {
        _runner.write("week.cal", kWeek);
        _runner.write("late.cal", "cyclic: yes\ndays: 7\nB@Late@L@57600-79200@T@$LLLLLLL\n");
        _runner.write("once.cal", "B@P@A@0-3600@T@Unused@U@@@$AA");
    }
    CommandRunner _runner;
};

TEST_F(CalendarCommand, AnswersInWordsAndExitCodes) {
    const struct {
        const char* arguments;
        int exit;
        const char* out;
        const char* err;  // a part of it
    } cases[] = {
        {"calendar sum week.cal --from 1/00:00 --to 8/09:00", 0, "41:00:00 h (147600 s)\n", ""},
        {"calendar sum week.cal --from=-5 --to 28801", 0, "0:00:01 h (1 s)\n", ""},
        {"calendar sum week.cal --from 5 --to 4", 2, "", "the first instant lies after the second"},
        {"calendar sum week.cal --from 1/25:00 --to 4", 2, "", "\"1/25:00\" is no instant"},
        {"calendar covered week.cal --from 1/08:00 --to 1/12:00", 0, "covered\n", ""},
        {"calendar covered week.cal --from 1/08:00 --to 2/12:00", 1,
         "not covered: closed at 12:00, day 1, profile Workday; opens day 1 13:00\n", ""},
        {"calendar until week.cal 6/03:00", 0, "opens in 53:00:00 h, at cycle 1 day 1 08:00\n", ""},
        {"calendar until week.cal 1/09:30", 0, "interval ends in 2:30:00 h, at day 1 12:00\n", ""},
        {"calendar next once.cal 1/00:00:01", 0, "day 2 00:00 to day 2 01:00\n", ""},
        {"calendar next once.cal 2/00:00:01", 1, "open at 00:00:01, day 2, profile P; interval ends 01:00\n", ""},
        {"calendar add week.cal 5/16:00 1h30m", 0,
         "635400 (cycle 1 day 1 08:30)\nopen at 08:30, day 1, profile Workday; interval ends 12:00\n", ""},
        {"calendar add week.cal -- 8/08:30 -90m", 0,
         "403200 (day 5 16:00)\nopen at 16:00, day 5, profile Workday; interval ends 17:00\n", ""},
        {"calendar add once.cal 0 7201", 1, "the period ends with 1 s of working time missing\n", ""},
        {"calendar add once.cal 0 7201 --language de", 1, "die Periode endet, wenn noch 1 s Arbeitszeit fehlen\n", ""},
        {"calendar add once.cal 0 7201 --cyclic true --offset -60", 0,
         "172861 (cycle 1 day 1 00:00:01)\nopen at 00:00:01, day 1, profile P; interval ends 01:00\n", ""},
        {"calendar add once.cal 0 soon", 2, "", "\"soon\" is no duration"},
        {"calendar intersect week.cal late.cal", 0,
         "cyclic: yes\noffset: 0\ndays: 7\nB@Workday & Late@!@57600-61200@T@Weekend & Late@\"@@@$!!!!!\"\"\n", ""},
        {"calendar union week.cal once.cal", 1,
         "the calendars differ in offset, in whether they repeat, or in their number of days\n", ""},
        {"calendar check once.cal", 1, "2 days, does not repeat, offset 0 s, 2 profiles of flags\n",
         "once.cal: warning: no day has the profile \"Unused\""},
        {"calendar days --weekday Friday --year 2027 | cut -c1-10", 0, "1 8 15 22 \n", ""},
        {"calendar days --weekday Freitag --year 2027", 2, "", "\"Freitag\" is no weekday"},
        {"calendar summ week.cal", 2, "", "there is no command \"summ\"; did you mean sum?"},
        {"calendar sum - --from 0 --to 1 < once.cal", 0, "0:00:01 h (1 s)\n", ""},
        {"calendar minus - -", 2, "", "standard input can be read only once"},
        {"distribution long 'U3;7' --language de", 0, "Gleichverteilung (3 ; 7)\n", ""},
        {"distribution short ' Exponential ( 0,5 )'", 0, "E0.5\n", ""},
        {"distribution mean 'Uniform (3 ; 4)'", 0, "3.5\n", ""},
        {"distribution check 'U7;3'", 3, "", "\"U7;3\" is no distribution"},
    };
    for (const auto& row : cases) {
        const Outcome outcome = _runner.run(row.arguments);
        EXPECT_EQ(outcome.exit, row.exit) << row.arguments << '\n' << outcome.err;
        EXPECT_EQ(outcome.out, row.out) << row.arguments;
        EXPECT_THAT(outcome.err, HasSubstr(row.err)) << row.arguments;
    }
}

TEST_F(CalendarCommand, ShowsProfilesAndTheWeeksByHours) {
    const Outcome shown = _runner.run("calendar show week.cal");
    EXPECT_EQ(shown.exit, 0);
    EXPECT_THAT(shown.out, HasSubstr("A  Workday\n   08:00-12:00 13:00-17:00\n   8:00:00 h, days 1-5\n"));
    EXPECT_THAT(shown.out, HasSubstr("\n1          ....##+#+... ....##+#+... "));
}

TEST_F(CalendarCommand, TellsWhereAFileIsWrong) {
    const struct {
        std::string_view content;
        const char* err;
    } cases[] = {
        {"", "bad.cal:1:1: error: there is no calendar"},
        {"cyclic: maybe\nperiod: 5\nB@P@A@@@$A", "bad.cal:1:1: error: cyclic: is followed by yes or no\nbad.cal:2:1: "},
        {"days: 0\nB@P@A@@@$A", "bad.cal:1:1: error: days: is followed by a number of days from 1"},
        {"# a\n\nB@P@A@5-4@T@$A\n", "bad.cal:3:7: error: the interval does not start before it ends"},
        {"B@P@A@0-4@F@$A\n", "bad.cal:1:11: error: the interval's property is not T"},
        {"B@P\nQ@A@0-4@T@R@A@@@$A\n", "bad.cal:2:11: error: the profile's identifier is missing or belongs"},
        {"B@P@A@0-4@T@$AB", "bad.cal:1:13: error: the day list holds an identifier that no profile"},
        {"days: 3\nB@P@A@0-4@T@$AA", "bad.cal:2:13: error: the day list does not hold one identifier for each day"},
        {"B@P@A@0-4@T\n", "bad.cal:1:12: error: there is no day list"},
        {"D@P@A@0-4@U7;3@$A\n", "bad.cal:1:11: error: this is no distribution"},
    };
    for (const auto& row : cases) {
        _runner.write("bad.cal", row.content);
        const Outcome outcome = _runner.run("calendar show bad.cal");
        EXPECT_EQ(outcome.exit, 3) << row.content;
        EXPECT_EQ(outcome.out, "") << row.content;
        EXPECT_THAT(outcome.err, HasSubstr(row.err));
    }
    EXPECT_THAT(_runner.run("calendar show missing.cal").err, HasSubstr("missing.cal: error: "));
}

TEST_F(CalendarCommand, WritesOneJsonDocumentAlsoWhenItFails) {
    const Outcome added = _runner.run("calendar add week.cal 0 60 --json");
    EXPECT_EQ(added.exit, 0);
    EXPECT_THAT(added.out, HasSubstr(R"("result": {
    "instant": 0,
    "seconds": 60,
    "result": 28860,)"));
    EXPECT_EQ(_runner.run("calendar show week.cal --json | python3 -m json.tool > shown.json").exit, 0);

    // Beyond 94 pairs identifiers are single bytes from 128 on, which are no UTF-8.
    std::string many[2] = {"B", "B"};
    for (int profile = 0; profile < 10; ++profile) {
        const std::string its = std::to_string(profile) + '@' + std::to_string(profile) + "@@";
        (many[0] += "@P") += its;
        (many[1] += "@Q") += its;
    }
    for (auto& text : many) text += "@$";
    for (int day = 0; day < 100; ++day) {
        many[0] += static_cast<char>('0' + day / 10);
        many[1] += static_cast<char>('0' + day % 10);
    }
    _runner.write("p.cal", many[0]);
    _runner.write("q.cal", many[1]);
    const std::string file = _runner.run("calendar union p.cal q.cal").out;
    const std::string decoded =
        _runner
            .run(
                "calendar union p.cal q.cal --json | python3 -c 'import base64,json,sys;"
                "sys.stdout.buffer.write(base64.b64decode(json.load(sys.stdin)[\"result\"][\"calendar_base64\"]))'")
            .out;
    EXPECT_EQ(file, "cyclic: no\noffset: 0\ndays: 100\n" + decoded + '\n');

    const Outcome failed = _runner.run("calendar sum missing.cal --from 0 --to 1 --json");
    EXPECT_EQ(failed.exit, 3);
    EXPECT_THAT(failed.out, HasSubstr("\"schema\": \"qor.calendar/1\""));
    EXPECT_THAT(failed.out, HasSubstr("\"result\": null"));
    EXPECT_THAT(_runner.run("distribution check x --json").out, HasSubstr("\"valid\": false"));
}

}  // namespace
