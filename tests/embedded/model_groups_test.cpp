// SPDX-License-Identifier: Apache-2.0
// Model groups: a tree for each library, models in it with all their versions.
#include <gtest/gtest.h>

#include <string>

#include "platform/QorCoreModelGroupManager.h"
#include "support/OnStores.h"

namespace {

using Error = QorBuildError;

struct ModelGroups : OnStores {
    ModelGroups() {
        w.cls("Task");
        w.modelType("Process", {"Task"});
        sales = made(w.library, "Sales");
        orders = made(sales, "Orders");
        late = made(orders, "Late");
        archive = made(w.library, "Archive");
        first = w.model("Process", "Pack");
        second = w.model("Process", "Pack", "2");
    }
    QorIdentifier made(QorIdentifier parent, std::string_view name) {
        const QorBuildResult result = w.builder().addModelGroup(parent, name);
        EXPECT_TRUE(result.ok()) << name << ": " << Qor_BuildErrorText(result.error);
        return result.id;
    }
    // "Sales > Orders", or "-" for no group.
    std::string way(QorIdentifier group) {
        const QorModelGroupInfo info = w.reader().modelGroupInfo(group);
        if (info.id == QorNoIdentifier) return "-";
        return info.parent == QorNoIdentifier ? std::string(info.name)
                                              : way(info.parent) + " > " + std::string(info.name);
    }
    std::string all() {
        std::string text;
        for (const QorModelGroupInfo& group : w.reader().modelGroupsOf(w.library)) text += way(group.id) + "; ";
        return text;
    }
    std::vector<long> below(long group, bool recursive, QorErrorCode expected = QorErrorCode::Ok) {
        ISortedSet<long> groups;
        groups.add(7);
        EXPECT_EQ(QorCoreModelGroupManager::GetAllSubGroupsOfModelGroup(group, groups, recursive), expected);
        return {groups.begin(), groups.end()};
    }

    QorIdentifier sales = -1, orders = -1, late = -1, archive = -1, first = -1, second = -1;
};

TEST_P(ModelGroups, RefuseWhatWouldBreakTheTree) {
    const QorIdentifier elsewhere = w.builder().addApplicationLibrary("Other", {}, {}).id;
    const QorIdentifier foreign = made(elsewhere, "Sales");
    ASSERT_TRUE(w.builder().moveModel(first, orders).ok());
    QorRepositoryBuilder& b = w.builder();
    const struct {
        const char* what;
        QorBuildResult result;
        Error error;
    } kCases[] = {
        {"a name taken at the top", b.addModelGroup(w.library, "Sales"), Error::DuplicateName},
        {"a name taken in a group", b.addModelGroup(sales, "Orders"), Error::DuplicateName},
        {"no name", b.addModelGroup(sales, ""), Error::EmptyName},
        {"a line break", b.addModelGroup(sales, "a\nb"), Error::NameRefused},
        {"in a model", b.addModelGroup(first, "x"), Error::UnknownIdentifier},
        {"in a part of the library", b.addModelGroup(w.processes, "x"), Error::UnknownIdentifier},
        {"renamed to a sibling's name", b.renameModelGroup(sales, "Archive"), Error::DuplicateName},
        {"renamed model", b.renameModelGroup(first, "x"), Error::UnknownIdentifier},
        {"into itself", b.moveModelGroup(sales, sales), Error::GroupInItself},
        {"into a group below", b.moveModelGroup(sales, late), Error::GroupInItself},
        {"into another library", b.moveModelGroup(sales, elsewhere), Error::ForeignLibrary},
        {"into a group of another library", b.moveModelGroup(sales, foreign), Error::ForeignLibrary},
        {"removed with groups in it", b.removeModelGroup(sales), Error::HasInstances},
        {"removed with a model in it", b.removeModelGroup(orders), Error::HasInstances},
        {"a model into another library", b.moveModel(first, foreign), Error::ForeignLibrary},
        {"a model into a model", b.moveModel(first, second), Error::UnknownIdentifier},
        {"a group as a model", b.moveModel(sales, archive), Error::UnknownIdentifier},
    };
    for (const auto& each : kCases) EXPECT_EQ(each.result.error, each.error) << each.what;
    EXPECT_EQ(all(), "Sales; Archive; Sales > Orders; Sales > Orders > Late; ");
    ASSERT_TRUE(b.removeModel(first).ok());
    ASSERT_TRUE(b.removeModel(second).ok());
    ASSERT_TRUE(b.moveModelGroup(late, w.library).ok());
    EXPECT_TRUE(b.removeModelGroup(orders).ok()) << "its model is gone";
}

TEST_P(ModelGroups, MoveWithAllThatLiesInThem) {
    QorRepositoryBuilder& b = w.builder();
    ASSERT_TRUE(b.moveModelGroup(orders, archive).ok());
    EXPECT_EQ(all(), "Sales; Archive; Archive > Orders; Archive > Orders > Late; ");
    EXPECT_EQ(w.reader().findModelGroup(archive, "Orders"), orders);
    EXPECT_EQ(w.reader().findModelGroup(sales, "Orders"), QorNoIdentifier);
    ASSERT_TRUE(b.moveModelGroup(late, w.library).ok());
    ASSERT_TRUE(b.renameModelGroup(late, "Orders").ok()) << "the name is free at the top";
    EXPECT_EQ(all(), "Sales; Orders; Archive; Archive > Orders; ");
    EXPECT_EQ(b.moveModelGroup(late, archive).error, Error::DuplicateName);
    ASSERT_TRUE(b.moveModelGroup(sales, late).ok()) << "into one that is younger";
    EXPECT_EQ(below(late, true), (std::vector<long>{sales}));
}

TEST_P(ModelGroups, AreToldByTheContract) {
    EXPECT_EQ(below(sales, false), (std::vector<long>{orders}));
    EXPECT_EQ(below(sales, true), (std::vector<long>{orders, late}));
    EXPECT_EQ(below(late, true), std::vector<long>{});
    for (const long wrong : {-1L, 0L, static_cast<long>(first), sales + (1L << 32)})
        EXPECT_EQ(below(wrong, true, QorErrorCode::NotFound), std::vector<long>{}) << wrong;
}

TEST_P(ModelGroups, HoldAModelWithAllItsVersions) {
    ASSERT_TRUE(w.builder().moveModel(second, orders).ok());
    EXPECT_EQ(way(w.reader().groupOfModel(first)), "Sales > Orders");
    const QorIdentifier third = w.model("Process", "Pack", "3");
    EXPECT_EQ(way(w.reader().groupOfModel(third)), "Sales > Orders");
    ASSERT_TRUE(w.builder().moveModel(first, QorNoIdentifier).ok());
    EXPECT_EQ(way(w.reader().groupOfModel(third)), "-");
    EXPECT_EQ(w.reader().groupOfModel(sales), QorNoIdentifier);
}

TEST_P(ModelGroups, LieSixtyFourDeepAtMost) {
    QorIdentifier group = late;
    for (int depth = 4; depth <= 64; ++depth) group = made(group, "deeper");
    EXPECT_EQ(w.builder().addModelGroup(group, "too deep").error, Error::NestedTooDeeply);
    EXPECT_EQ(w.builder().moveModelGroup(sales, archive).error, Error::NestedTooDeeply);
    EXPECT_TRUE(w.builder().moveModelGroup(orders, archive).ok());
}

QOR_ON_ALL_STORES(ModelGroups);

}  // namespace
