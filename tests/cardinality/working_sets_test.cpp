// SPDX-License-Identifier: Apache-2.0
// What the checks count and mark with, against the standard containers.
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>

#include "cardinality/IdentifierMarks.h"
#include "cardinality/KeyIndex.h"

namespace {

using qor::cardinality::IdentifierMarks;
using qor::cardinality::KeyIndex;

TEST(KeyIndex, NumbersKeysInOrderOfAppearanceAgainAndAgain) {
    std::mt19937_64 random(1);
    KeyIndex index;
    for (const std::uint64_t range : {3u, 1000u, 5u, 100000u, 2u}) {
        index.clear();
        std::map<std::uint64_t, std::uint32_t> numbers;
        for (int step = 0; step < 5000; ++step) {
            const auto key = (random() % range) << 32 | random() % 2;
            EXPECT_EQ(index.find(key), numbers.count(key) != 0 ? numbers[key] : KeyIndex::kNone);
            const auto number = numbers.emplace(key, static_cast<std::uint32_t>(numbers.size())).first->second;
            ASSERT_EQ(index.add(key), number);
        }
    }
}

TEST(IdentifierMarks, HoldWhatWasMarked) {
    IdentifierMarks marks;
    const std::set<long> marked{1, 63, 64, 32767, 32768, 5000000, -1};
    for (const long identifier : marked) marks.add(identifier);
    for (const long near : marked)
        for (const long identifier : {near - 1, near, near + 1})
            EXPECT_EQ(marks.contains(identifier), marked.count(identifier) != 0) << identifier;
    marks.add(4294967301);
    EXPECT_FALSE(marks.contains(4294967301));
    marks.add(2147483647);
    EXPECT_TRUE(marks.contains(2147483647));
    EXPECT_FALSE(marks.contains(-2147483648));
}

}  // namespace
