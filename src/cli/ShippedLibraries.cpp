// SPDX-License-Identifier: Apache-2.0
#include "cli/ShippedLibraries.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace qor::cli {

namespace fs = std::filesystem;

namespace {

constexpr const char* kExtension = ".yaml";

}  // namespace

std::string shippedLibrariesFolder() {
    const char* given = std::getenv("QOR_LIBRARIES");
    if (given != nullptr && *given != '\0') return given;
    std::error_code error;
    const fs::path command = fs::read_symlink("/proc/self/exe", error);
    if (error) return {};
    return (command.parent_path().parent_path() / "share" / "qor" / "libraries").string();
}

std::string shippedLibrary(std::string_view name) {
    const bool isPlainName = !name.empty() && name.find('/') == std::string_view::npos;
    if (!isPlainName) return {};
    const fs::path file = fs::path(shippedLibrariesFolder()) / (std::string(name) + kExtension);
    std::error_code error;
    if (!fs::is_regular_file(file, error)) return {};
    // Below the current folder the path stays short in every rule that is told.
    const fs::path fromHere = fs::proximate(file, error);
    return !error && *fromHere.begin() != ".." ? fromHere.string() : file.string();
}

std::vector<std::string> shippedLibraryNames() {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(shippedLibrariesFolder(), error), end; !error && entry != end;
         entry.increment(error))
        if (entry->path().extension() == kExtension) names.push_back(entry->path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::string resolveLibrary(const std::string& given) {
    std::error_code error;
    if (given == "-" || fs::exists(given, error)) return given;
    const std::string shipped = shippedLibrary(given);
    return shipped.empty() ? given : shipped;
}

}  // namespace qor::cli
