// SPDX-License-Identifier: Apache-2.0
// What the checks count and mark with, against the standard containers.
#include <numeric>
#include <random>

#include "cardinality/EndGroups.h"
#include "cardinality/IdentifierMarks.h"
#include "cardinality/KeyIndex.h"
#include "cardinality/ObjectBlocks.h"
#include "cardinality/ObjectClasses.h"

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

/// Shows each object as one of the class of that number, but for those that it declines.
class NumberedView final : public QorCoreBulkView {
public:
    explicit NumberedView(std::set<long> declined) : _declined(std::move(declined)) {}
    QorErrorCode viewObject(long object, long& cls, std::span<const QorRelationEnd>&,
                            std::span<const QorRelationEnd>&) override {
        cls = object;
        return _declined.count(object) == 0 ? QorErrorCode::Ok : QorErrorCode::NotFound;
    }

private:
    std::set<long> _declined;
};

TEST(ObjectBlocks, GoOverAllObjectsInOrderAndShowAllThatTheViewDoes) {
    for (const std::size_t count : {0u, 1u, 63u, 64u, 65u, 200u})
        for (const std::set<long>& declined :
             {std::set<long>{}, {1}, {63, 64, 65}, {64, 128, 129, 200}, {62, 100, 150}}) {
            std::vector<long> objects(count);
            std::iota(objects.begin(), objects.end(), 1);
            NumberedView view(declined);
            qor::cardinality::ObjectBlocks blocks(objects, &view);
            std::vector<long> met;
            for (auto block = blocks.next(); !block.objects.empty(); block = blocks.next())
                for (std::size_t at = 0; at < block.objects.size(); ++at) {
                    met.push_back(block.objects[at]);
                    const bool isViewed = at < block.views.size();
                    EXPECT_EQ(isViewed, declined.count(met.back()) == 0) << met.back();
                    EXPECT_TRUE(!isViewed || block.views[at].cls == met.back());
                }
            EXPECT_EQ(met, objects);
        }
}

TEST(EndGroups, CountAndCollectLikeALookAtEveryEnd) {
    std::mt19937 random(7);
    qor::cardinality::EndGroups groups;
    for (const std::uint32_t size : {1u, 17u, 400u, 3u, 5000u}) {
        std::vector<QorRelationEnd> ends;
        for (std::uint32_t at = 0; at < size; ++at)
            ends.push_back({static_cast<std::int32_t>(at + 1), static_cast<std::int32_t>(random() % 3 + 1), 9,
                            static_cast<std::int32_t>(random() % 4 + 1)});
        groups.count(ends);
        for (std::int32_t relationClass = 1; relationClass <= 4; ++relationClass)
            for (const std::int32_t otherClass : {1, 2, 3, 4, 5, QorNoIdentifier}) {
                std::vector<std::int32_t> expected;
                for (const auto& end : ends)
                    if (end.relationClass == relationClass &&
                        (otherClass == QorNoIdentifier || end.otherClass == otherClass))
                        expected.push_back(end.relation);
                EXPECT_EQ(groups.countOf(relationClass, otherClass), expected.size());
                std::vector<QorRelationEnd> collected;
                groups.collect(relationClass, otherClass, collected);
                std::vector<std::int32_t> relations;
                for (const auto& end : collected) relations.push_back(end.relation);
                EXPECT_EQ(relations, expected) << relationClass << " " << otherClass;
            }
        std::uint32_t firstOfLast = 0;
        for (const auto& group : groups.groups()) {
            EXPECT_GE(group.first, firstOfLast) << "groups stand in order of their first ends";
            firstOfLast = group.first;
        }
    }
}

TEST(ObjectClasses, KnowWhatTheyWereTold) {
    qor::cardinality::ObjectClasses classes;
    for (const int object : {1, 4095, 4096, 900000}) classes.set(object, object % 7 + 1);
    for (const int object : {1, 4095, 4096, 900000}) EXPECT_EQ(classes.of(object), object % 7 + 1);
    for (const int object : {-5, 0, 2, 4097, 2147483647}) EXPECT_EQ(classes.of(object), QorNoIdentifier);
    classes.set(4096, QorNoIdentifier);
    EXPECT_EQ(classes.of(4096), QorNoIdentifier);
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
