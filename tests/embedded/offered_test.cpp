// SPDX-License-Identifier: Apache-2.0
// Which operations of the contracts the embedded platform leaves at their refusing defaults.
#include <gtest/gtest.h>

#include "embedded/QorEmbeddedPlatform.h"
#include "platform/QorCoreModelingManager.h"
#include "support/ContractCalls.h"

TEST(EmbeddedPlatform, OffersAllOperationsOfTheContracts) {
    QorEmbeddedPlatform platform;
    const QorHostInstallation installation(platform.host());
    const auto library = platform.builder().addApplicationLibrary("L", "P", "W");
    auto& repository = *QorCoreModelingManager::GetGlobal();
    ASSERT_EQ(repository.LoadApplicationLibrary(library.id, false), QorErrorCode::Ok);
    ASSERT_EQ(repository.initLibraryHandlers(true), QorErrorCode::Ok) << "makes the handler of model types";
    const auto missing = qor::test::operationsRefusedBy(platform.host(), false);
    EXPECT_EQ(missing, std::set<std::string>{});
}
