// SPDX-License-Identifier: Apache-2.0
// The language of expressions: what they come to, and where their faults are.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "embedded/QorExpression.h"
#include "embedded/expressions/ExpressionMachine.h"
#include "embedded/expressions/ExpressionParser.h"

namespace {

using namespace qor::embedded;

class Attributes final : public ExpressionContext {
public:
    std::variant<ExpressionValue, ExpressionFault> attribute(std::string_view name) override {
        if (name == "Count") return ExpressionValue(4.0);
        if (name == "Price ]") return ExpressionValue(2.5);
        if (name == "Word") return ExpressionValue::borrowed("say \"x\"");
        if (name == "Duration") return ExpressionValue::borrowed("00:001:00:00:30");
        if (name == "Long") return ExpressionValue(std::string(kLongestExpressionResult, 'x'));
        if (name == "None") return ExpressionValue();
        return ExpressionFault{0, "unknown"};
    }
};

// The result, or "! offset: cause".
std::string worth(std::string_view text) {
    const auto shown = [](const ExpressionFault& fault) {
        return "! " + std::to_string(fault.offset) + ": " + fault.text;
    };
    auto parsed = parseExpression(text);
    if (const auto* fault = std::get_if<ExpressionFault>(&parsed)) return shown(*fault);
    Attributes attributes;
    auto outcome = runExpression(std::get<ExpressionCode>(parsed), attributes);
    if (const auto* fault = std::get_if<ExpressionFault>(&outcome)) return shown(*fault);
    return std::get<ExpressionValue>(std::move(outcome)).intoText();
}

struct Case {
    const char* text;
    const char* result;
};

TEST(Expressions, ComeToTheirResults) {
    constexpr Case kCases[] = {
        {"1 + 2 * 3", "7"},
        {"(1 + 2) * 3", "9"},
        {"7 - 2 - 1", "4"},
        {"8 / 4 / 2", "1"},
        {"--2", "2"},
        {"2 * -3", "-6"},
        {"0 * -1", "0"},
        {"1 / 4", "0.25"},
        {"1e6 * 10", "10000000"},
        {"9007199254740992", "9007199254740992"},
        {"1e20", "1e+20"},
        {"0.1 + 0.2", "0.30000000000000004"},
        {"round(0.1 + 0.2, 2)", "0.3"},
        {"round(-2.5, 0)", "-3"},
        {"round(1e300, 15)", "1e+300"},
        {"\"a\" & \"b\"\"c\" & 1 + 1", "ab\"c2"},
        {"\"\"", ""},
        {"[Count] * [Price ]]]", "10"},
        {"[Word] & \"!\"", "say \"x\"!"},
        {"[None] + 1 & [None]", "1"},
        {"[None] = 0", "1"},
        {"[None] = \"\"", "1"},
        {"2 < 10", "1"},
        {"\"2\" < \"10\"", "0"},
        {"2 <= 2", "1"},
        {"2 <> 2", "0"},
        {"3 >= 4", "0"},
        {"4 > 3", "1"},
        {"\"a\" & \"b\" = \"ab\"", "1"},
        {"not 1 = 2 and 3 = 3", "1"},
        {"not not 5", "1"},
        {"0 or 7", "1"},
        {"1 or 0 and 0", "1"},
        {"if([Count] > 3, \"many\", \"few\")", "many"},
        {"if(0, 1, if(0, 2, 3))", "3"},
        {"if([Count] = 0, 0, 8 / [Count])", "2"},
        {"if(1, 1, 1 / 0)", "1"},
        {"0 and 1 / 0", "0"},
        {"1 or 1 / 0", "1"},
        {"number(\"-1.5\") * 2", "-3"},
        {"seconds([Duration])", "86430"},
        {"time(seconds([Duration]) * 400)", "01:035:03:20:00"},
        {"time(0.4)", "00:000:00:00:00"},
        {"seconds(\"99:364:23:59:59\") + 1", "3153600000"},
        {" \t\r\n1\n", "1"},
    };
    for (const Case& each : kCases) EXPECT_EQ(worth(each.text), each.result) << each.text;
}

TEST(Expressions, NameTheirFaultsAndThePlace) {
    constexpr Case kCases[] = {
        {"", "! 0: the expression is empty"},
        {"1 +", "! 3: the expression ends too early"},
        {"1 2", "! 2: an operator"},
        {"(1", "! 2: \")\" is missing"},
        {"1 + )", "! 4: a number, a text"},
        {"1 = 1 = 1", "! 6: comparisons do not follow"},
        {"\"a", "! 0: a text is not closed"},
        {"1 + [a", "! 4: an attribute's name is not closed"},
        {"[]", "! 0: an attribute's name is missing"},
        {"1 % 2", "! 2: this character"},
        {"1.5.2", "! 3: a number goes on wrongly"},
        {"1e999", "! 0: this number is too great"},
        {"Count + 1", "! 0: there is no function \"Count\""},
        {"if(1, 2)", "! 7: \",\" is missing"},
        {"round(1)", "! 7: \",\" is missing"},
        {"1 + [Other]", "! 4: unknown"},
        {"1 / (2 - 2)", "! 2: a division by zero"},
        {"1e308 * 10", "! 6: the result is too great"},
        {"1 + [Word]", "! 2: a number is needed"},
        {"[Word] = 1", "! 7: a text is compared with a number"},
        {"if([Word], 1, 2)", "! 0: a condition is needed"},
        {"number([Word])", "! 0: the text holds no number"},
        {"seconds(\"1\")", "! 0: the text is no time"},
        {"time(0 - 1)", "! 0: a time holds"},
        {"time(3153600000)", "! 0: a time holds"},
        {"round(1, 0.5)", "! 0: numbers are rounded"},
        {"[Long] & \"x\"", "! 7: the text is longer"},
    };
    for (const Case& each : kCases)
        EXPECT_EQ(worth(each.text).find(each.result), 0U) << each.text << ": " << worth(each.text);
}

TEST(Expressions, AreBoundedInLengthAndDepthButNotByTheStack) {
    const auto repeated = [](std::string_view part, std::size_t times) {
        std::string text;
        while (times-- > 0) text += part;
        return text;
    };
    EXPECT_EQ(worth(repeated("(", 90) + "1" + repeated(")", 90)), "1");
    for (const char* part : {"(", "-", "not ", "if(1,1,"})
        EXPECT_NE(worth(repeated(part, 9000) + "1").find("nested too deeply"), std::string::npos) << part;
    EXPECT_EQ(worth("0" + repeated("+1", 30000)), "30000");
    EXPECT_EQ(worth("\"\"" + repeated("&[Word]", 9000)).size(), 63000U);
    EXPECT_EQ(worth(repeated(" ", kLongestExpression) + "1").find("! 65535: the expression is longer"), 0U);
}

TEST(Expressions, TellPlacesInLinesAndTheAttributesTheyName) {
    const auto fault = Qor_ExpressionFault("1 +\n  2 +\n");
    ASSERT_TRUE(fault.has_value());
    EXPECT_EQ(fault->place.line, 3U);
    EXPECT_EQ(fault->place.column, 1U);
    EXPECT_FALSE(Qor_ExpressionFault("[A]").has_value());
    const auto names = Qor_ExpressionNames("[A] +\n if(1, [B ]]], 2)");
    ASSERT_EQ(names.size(), 2U);
    EXPECT_EQ(names[1].name, "B ]");
    EXPECT_EQ(names[1].place.line, 2U);
    EXPECT_EQ(names[1].place.column, 8U);
}

}  // namespace
