// SPDX-License-Identifier: Apache-2.0
// The tables below the repository against standard containers, and that editing does not make them grow.
#include <gtest/gtest.h>

#include <map>
#include <random>

#include "embedded/NameIndex.h"
#include "embedded/TextArena.h"
#include "embedded/ThingTable.h"
#include "embedded/ValueTable.h"

namespace {

using namespace qor::embedded;

TEST(TextArena, KeepsTextsOfEveryLengthApartAndWhole) {
    TextArena arena;
    std::map<TextRef, std::string> kept;
    std::mt19937 random(1);
    const auto lengthOf = [&](int step) -> std::size_t {
        if (step % 500 == 0) return 100000 + random() % 2000000;  // its own block, up to three chunks long
        return random() % (step % 10 == 0 ? 6000 : 70);
    };
    for (int step = 0; step < 20000; ++step) {
        if (!kept.empty() && random() % 3 == 0) {
            const auto gone =
                std::next(kept.begin(), static_cast<std::ptrdiff_t>(random() % std::min<std::size_t>(kept.size(), 50)));
            arena.release(gone->first);
            kept.erase(gone);
            continue;
        }
        const std::string text(lengthOf(step), static_cast<char>('a' + step % 26));
        const TextRef ref = arena.add(text);
        EXPECT_EQ(ref == 0, text.empty());
        if (text.empty()) continue;
        ASSERT_TRUE(kept.emplace(ref, text).second) << "the place is taken";
    }
    for (const auto& [ref, text] : kept) ASSERT_EQ(arena.view(ref), text);
}

TEST(TextArena, UsesReleasedRoomAgainAndTakesItsOwnTextsAsInput) {
    TextArena arena;
    TextRef small = arena.add("small");
    TextRef large = arena.add(std::string(3000000, 'x'));
    const std::size_t before = arena.bytes();
    for (int edit = 0; edit < 100000; ++edit) arena.replace(small, edit % 2 ? "other" : "small");
    for (int edit = 0; edit < 20; ++edit) {
        arena.release(large);
        large = arena.add(std::string(3000000, static_cast<char>('a' + edit)));
    }
    EXPECT_EQ(arena.bytes(), before);
    arena.replace(small, arena.view(small).substr(2));
    EXPECT_EQ(arena.view(small), "her");
}

TEST(NameIndex, FindsWhatWasAddedAndNotRemovedAmongNamesOfOneHash) {
    NameIndex index;
    std::multimap<std::uint32_t, QorIdentifier> twin;
    std::mt19937 random(2);
    for (QorIdentifier id = 1; id < 20000; ++id) {
        const auto hash = static_cast<std::uint32_t>(random() % 3000 * 0x10001);  // many collisions, in the whole range
        if (random() % 5 < 3 || twin.empty()) {
            index.makeRoom(1);
            index.add(hash, id);
            twin.emplace(hash, id);
        } else {
            auto gone = twin.lower_bound(hash);
            if (gone == twin.end()) gone = twin.begin();
            index.remove(gone->first, gone->second);
            twin.erase(gone);
        }
    }
    for (std::uint32_t hash = 0; hash < 3000; ++hash) {
        std::set<QorIdentifier> found;
        EXPECT_EQ(index.find(hash * 0x10001, [&](QorIdentifier id) { return found.insert(id), false; }), -1);
        const auto [first, last] = twin.equal_range(hash * 0x10001);
        std::set<QorIdentifier> wanted;
        for (auto at = first; at != last; ++at) wanted.insert(at->second);
        ASSERT_EQ(found, wanted);
    }
    EXPECT_LT(index.bytes(), twin.size() * 8 * 4) << "no more than a quarter full";
}

TEST(NameIndex, TakesScopesApart) {
    const auto hash = [](QorIdentifier a, QorIdentifier b, const char* name) {
        return NameIndex::hashOf({a, b}, name);
    };
    const std::set<std::uint32_t> hashes{hash(1, 2, "n"), hash(2, 1, "n"), hash(1, -2, "n"), hash(1, 2, "m"),
                                         hash(0, 0, "n")};
    EXPECT_EQ(hashes.size(), 5U);
}

TEST(ValueTable, AnswersLikeAMap) {
    ValueTable table;
    std::map<std::pair<QorIdentifier, QorIdentifier>, TextRef> twin;
    std::mt19937 random(3);
    for (TextRef text = 1; text < 30000; ++text) {
        const std::pair key(static_cast<QorIdentifier>(1 + random() % 100), static_cast<QorIdentifier>(random() % 50));
        TextRef* const found = table.find(key.first, key.second);
        ASSERT_EQ(found != nullptr, twin.count(key) == 1);
        if (found == nullptr) {
            table.makeRoom(1);
            table.add(key.first, key.second, text);
            twin[key] = text;
        } else {
            ASSERT_EQ(*found, twin[key]);
            table.remove(key.first, key.second);
            twin.erase(key);
        }
    }
}

TEST(ThingTable, EndsWhereIdentifiersEnd) {
    ThingTable things(ThingTable::kFirstDynamic + 2);
    EXPECT_TRUE(things.hasRoomFor(3, 0));
    EXPECT_FALSE(things.hasRoomFor(4, 0));
    EXPECT_EQ(things.add(QorThingKind::Model, 5), ThingTable::kFirstDynamic);
    EXPECT_EQ(things.at(ThingTable::kFirstDynamic).index, 5U);
    EXPECT_TRUE(things.hasRoomFor(2, ThingTable::kMaxIndex));
    EXPECT_FALSE(things.hasRoomFor(2, ThingTable::kMaxIndex + 1));
    EXPECT_FALSE(things.hasRoomFor(3, 0));
    EXPECT_FALSE(things.exists(std::numeric_limits<QorIdentifier>::max()));
    EXPECT_FALSE(things.exists(std::numeric_limits<QorIdentifier>::min()));
}

}  // namespace
