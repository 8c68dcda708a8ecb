// SPDX-License-Identifier: Apache-2.0
#include "support/OnStores.h"

#include <cstdlib>

#include "platform/QorCoreUnitsOfWork.h"
#include "support/Picture.h"

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::error_code error;
    const bool inMemory = fs::is_directory("/dev/shm", error);
    std::string name = ((inMemory ? fs::path("/dev/shm") : fs::temp_directory_path()) / "qor-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    path = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code error;
    fs::remove_all(path, error);
}

std::string keptWhere(const testing::TestParamInfo<Kept>& info) {
    constexpr const char* kNames[] = {"InMemory", "InFile", "InUnit"};
    return kNames[static_cast<std::size_t>(info.param)];
}

OnStores::OnStores()
    : Workshop({.language = "en", .console = false, .user = "ada"}, GetParam() == Kept::InFile ? file("a.qor") : "") {}

void OnStores::SetUp() {
    if (GetParam() != Kept::InUnit) return;
    _before = pictureOf(platform);
    ASSERT_EQ(platform.host().repository->unitsOfWork()->begin(), QorErrorCode::Ok);
}

void OnStores::TearDown() {
    if (GetParam() == Kept::InUnit) {
        platform.host().repository->unitsOfWork()->rollBack();
        EXPECT_EQ(pictureOf(platform), _before);
    }
    if (!isInFile()) return;
    QorEmbeddedPlatform again;
    const QorRepositoryResult result = again.openRepository(path(), QorRepositoryAccess::ReadOnly);
    EXPECT_EQ(result.status, QorRepositoryStatus::Ok) << result.text << testing::PrintToString(result.findings);
    EXPECT_EQ(pictureOf(again), pictureOf(platform));
}
