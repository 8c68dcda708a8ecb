// SPDX-License-Identifier: Apache-2.0
// Units of work: kept as a whole or taken back as a whole, in memory and on file.
#include <gtest/gtest.h>

#include "platform/QorCoreUnitsOfWork.h"
#include "support/OnStores.h"
#include "support/Picture.h"
#include "support/RandomWork.h"

namespace {

using Code = QorErrorCode;

struct Units : OnStores {
    QorCoreUnitsOfWork& units = *platform.host().repository->unitsOfWork();
};

TEST_P(Units, AreTakenBackUnlessTheyAreCommittedAndDoNotNest) {
    const std::string before = pictureOf(platform);
    QorIdentifier gone = QorNoIdentifier;
    {
        const QorUnitOfWork unit;
        ASSERT_TRUE(unit.isOpen());
        gone = cls("Task");
        EXPECT_EQ(units.begin(), QorRepositoryCode::UnitOpen);
        EXPECT_FALSE(QorUnitOfWork().isOpen());
        EXPECT_EQ(reader().kindOf(gone), QorThingKind::Class) << "what is written is seen at once";
    }
    EXPECT_EQ(pictureOf(platform), before);
    EXPECT_EQ(units.commit(), Code::NotFound) << "no unit is open";
    QorUnitOfWork unit;
    const auto task = cls("Task");
    EXPECT_GT(task, gone) << "an identifier that was seen stands for nothing else";
    EXPECT_EQ(unit.commit(), Code::Ok);
    EXPECT_FALSE(unit.isOpen());
    EXPECT_EQ(reader().findClass(library, "Task"), task);
}

TEST_P(Units, AFailureWithinAUnitTakesBackThatOperationOnly) {
    QorUnitOfWork unit;
    const auto task = cls("Task");
    EXPECT_EQ(builder().addClass(processes, "Task", QorNoIdentifier, false).error, QorBuildError::DuplicateName);
    EXPECT_EQ(unit.commit(), Code::Ok);
    EXPECT_EQ(reader().findClass(library, "Task"), task);
}

TEST_P(Units, OfAnyWorkComeBackToWhatWasThere) {
    for (unsigned seed = 1; seed <= 5; ++seed) {
        SCOPED_TRACE(seed);
        RandomWork work(seed);
        if (seed == 1) RandomWork::furnish(platform);
        for (int unit = 0; unit < 40; ++unit) {
            const std::string before = pictureOf(platform);
            ASSERT_EQ(units.begin(), Code::Ok);
            for (std::size_t left = work.pick(60); left > 0; --left) (void)work.step(platform);
            if (work.pick(2) == 0) {
                ASSERT_EQ(units.commit(), Code::Ok) << platform.lastProblem().text;
                continue;
            }
            units.rollBack();
            ASSERT_EQ(pictureOf(platform), before) << "unit " << unit;
        }
        if (!isInFile()) continue;
        QorEmbeddedPlatform again;
        ASSERT_TRUE(again.openRepository(path(), QorRepositoryAccess::ReadOnly).ok());
        ASSERT_EQ(pictureOf(again), pictureOf(platform));
    }
}

QOR_ON_STORES(Units, Kept::InMemory, Kept::InFile);

}  // namespace
