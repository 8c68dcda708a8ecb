// SPDX-License-Identifier: Apache-2.0
#include <rapidcheck.h>

#include <optional>

#include "platform/QorKexParser.h"

namespace {

QorKexParser withValue(const std::string& value) { return {SV::String("A k:" + value), "value"}; }

std::optional<long> integer(const std::string& value) {
    QorKexParser parser = withValue(value);
    if (parser.Parse() != 0) return std::nullopt;
    return parser.GetIntValue("k");
}

std::optional<long> moment(const std::string& value) {
    QorKexParser parser = withValue(value);
    if (parser.Parse() != 0) return std::nullopt;
    return parser.GetValueTMM("k");
}

}  // namespace

TEST(KexValues, IntegersOfTheirRangeOnly) {
    const struct {
        const char* text;
        std::optional<long> number;
    } cases[] = {
        {"0", 0},
        {"+12", 12},
        {"-0", 0},
        {"007", 7},
        {"4294967295", 4294967295},
        {"-2147483648", -2147483648},
        {"00000000000000000000000000004294967295", 4294967295},
        {"4294967296", std::nullopt},
        {"-2147483649", std::nullopt},
        {"18446744073709551617", std::nullopt},
        {"99999999999999999999999999999999999999", std::nullopt},
        {"-", std::nullopt},
        {"+-1", std::nullopt},
        {"5a", std::nullopt},
        {"5-3", std::nullopt},
        {"1e3", std::nullopt},
        {"5:", std::nullopt},
    };
    for (const auto& [text, number] : cases) EXPECT_EQ(integer(text), number) << text;
}

TEST(KexValues, TimesAndLengthsShareOneNumber) {
    const struct {
        const char* text;
        std::optional<long> number;
        const char* written;  // "" where it is the text itself
    } cases[] = {
        {"00:000:00:00:00", 0, ""},
        {"01:001:01:01:01", 365 * 86400 + 86400 + 3600 + 60 + 1, ""},
        {"00:364:23:59:59", 365 * 86400 - 1, ""},
        {"00:365:24:60:60", 365 * 86400 + 86400 + 3600 + 60, "01:001:01:01:00"},
        {"68:035:03:14:07", 2147483647, ""},
        {"68:035:03:14:08", std::nullopt, ""},
        {"99:999:99:99:99", std::nullopt, ""},
        {"0:000:00:00:00", std::nullopt, ""},
        {"00:000:00:00", std::nullopt, ""},
        {"00:000:00:00:000", std::nullopt, ""},
        {"00:000:00:00:00:00", std::nullopt, ""},
        {"-00:000:00:00:01", std::nullopt, ""},
        {"0cm", -1, ""},
        {"-0.0cm", -1, "0cm"},
        {"0.001cm", -2, ""},
        {"2.5cm", -2501, ""},
        {"+2.500cm", -2501, "2.5cm"},
        {"10.05cm", -10051, ""},
        {"2147483.647cm", -2147483648, ""},
        {"2147483.648cm", std::nullopt, ""},
        {"99999999999999999999.5cm", std::nullopt, ""},
        {"-2.5cm", 0, "00:000:00:00:00"},
        {"2.5", std::nullopt, ""},
        {"2.cm", std::nullopt, ""},
        {".5cm", std::nullopt, ""},
        {"2.0001cm", std::nullopt, ""},
        {"2CM", std::nullopt, ""},
        {"2.5cmx", std::nullopt, ""},
    };
    for (const auto& [text, number, written] : cases) {
        EXPECT_EQ(moment(text), number) << text;
        if (number) {
            EXPECT_EQ(QorKexParser::GetKexTextOfTMMValue(*number), *written != '\0' ? written : text);
        }
    }
    EXPECT_EQ(QorKexParser::GetKexTextOfTMMValue(4294967301), "68:035:03:14:07");
    EXPECT_EQ(QorKexParser::GetKexTextOfTMMValue(-4294967301), "2147483.647cm");
}

TEST(KexValues, EveryNumberReadsBackAsWritten) {
    EXPECT_TRUE(rc::check([] {
        const long number = *rc::gen::arbitrary<std::int32_t>() >> *rc::gen::inRange(0, 31);
        RC_ASSERT(moment(QorKexParser::GetKexTextOfTMMValue(number).str()) == number);
    }));
}

TEST(KexValues, EveryStringReadsBackAsWritten) {
    EXPECT_TRUE(rc::check([] {
        const auto bytes = rc::gen::weightedOneOf<char>(
            {{1, rc::gen::elementOf(std::string("\"\"\n\r\\#:\0", 8))}, {1, rc::gen::arbitrary<char>()}});
        const std::string first = *rc::gen::container<std::string>(bytes);
        const std::string second = *rc::gen::container<std::string>(bytes);
        const auto quoted = [](const std::string& text) { return QorKexParser::GetKexTextOfStrValue(text).str(); };
        QorKexParser parser(SV::String("A" + quoted(second) + "\nk:" + quoted(first) + "l:" + quoted(second)), "");
        RC_ASSERT(parser.Parse() == 0);
        RC_ASSERT(parser.GetStrValue("k").str() == first);
        RC_ASSERT(parser.GetStrValue("l").str() == second);
        RC_ASSERT(parser.GetStrValue().str() == second);
    }));
}
