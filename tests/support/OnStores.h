// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <gtest/gtest.h>

#include <filesystem>

#include "support/Workshop.h"

/// A folder that goes away with its content; in memory where the system offers that.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();
    [[nodiscard]] std::string file(const std::string& name) const { return (path / name).string(); }

    std::filesystem::path path;
};

/// Where a test's repository is kept: in memory, in a file, or in memory within one unit of work.
enum class Kept { InMemory, InFile, InUnit };

/// The same test wherever the repository is kept. At its end the file, read again, must show what memory shows, and
/// what the unit is rolled back to must be what was there before it.
struct OnStores : testing::TestWithParam<Kept>, private TemporaryFolder, Workshop {
    OnStores();
    void SetUp() override;
    void TearDown() override;

    [[nodiscard]] bool isInFile() const { return GetParam() == Kept::InFile; }
    [[nodiscard]] std::string path() const { return file("a.qor"); }
    Workshop& w = *this;

private:
    std::string _before;
};

/// For the names of tests.
std::string keptWhere(const testing::TestParamInfo<Kept>& info);

#define QOR_ON_STORES(Suite, ...) INSTANTIATE_TEST_SUITE_P(Kept, Suite, testing::Values(__VA_ARGS__), keptWhere)
#define QOR_ON_ALL_STORES(Suite) QOR_ON_STORES(Suite, Kept::InMemory, Kept::InFile, Kept::InUnit)
