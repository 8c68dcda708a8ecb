// SPDX-License-Identifier: Apache-2.0
#include "embedded/MessageTable.h"

namespace {

using qor::embedded::MessageRow;
using qor::embedded::messageRows;

// Number to placeholders as the hand-written table has them, read without the build's own reader.
std::map<int, std::set<std::string>> expectedPlaceholders() {
    std::ifstream file(QOR_SOURCE_DIR "/src/embedded/messages/placeholders.txt");
    std::map<int, std::set<std::string>> expected;
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        if (int number = 0; words >> number) {
            auto& names = expected[number];
            for (std::string word; words >> word;) {
                if (word != "-") names.insert(word);
            }
        }
    }
    return expected;
}

std::size_t occurrences(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1)) ++count;
    return count;
}

class CataloguesTest : public testing::TestWithParam<std::string_view> {};

TEST_P(CataloguesTest, HaveEveryMessageInAscendingOrderWithItsPlaceholders) {
    const auto expected = expectedPlaceholders();
    ASSERT_FALSE(expected.empty());
    const auto rows = messageRows(GetParam());
    ASSERT_EQ(rows.size(), expected.size());

    auto wanted = expected.begin();
    for (const MessageRow& row : rows) {
        EXPECT_EQ(row.number, wanted->first);
        EXPECT_STRNE(row.text, "") << row.number;
        EXPECT_EQ(occurrences(row.text, "%"), wanted->second.size()) << row.number << ": " << row.text;
        for (const auto& name : wanted->second) {
            EXPECT_GE(occurrences(row.text, name), 1U) << row.number << " lacks " << name << ": " << row.text;
        }
        ++wanted;
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, CataloguesTest, testing::ValuesIn(qor::embedded::messageLanguages()),
                         [](const auto& language) { return std::string(language.param); });

TEST(Catalogues, AreChosenByLanguageAndFallBackToEnglish) {
    const auto first = [](std::string_view language) { return std::string_view(messageRows(language).front().text); };
    EXPECT_NE(first("de"), first("en"));
    EXPECT_EQ(first("de-AT"), first("de"));
    EXPECT_EQ(first("de_CH.UTF-8"), first("de"));
    for (const std::string_view unknown : {"", "fr", "DE", "deu", "-de"}) EXPECT_EQ(first(unknown), first("en"));
}

}  // namespace
