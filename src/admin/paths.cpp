// SPDX-License-Identifier: Apache-2.0
#include "admin/paths.h"

#include <string>

namespace qor::admin {

namespace {

/// A backslash separates only where there is no slash: elsewhere it may be a letter of a name.
std::size_t lastSeparator(std::string_view path) {
    const auto slash = path.rfind('/');
    return slash != std::string_view::npos ? slash : path.rfind('\\');
}

}  // namespace

std::string_view fileNamePart(std::string_view path) {
    const auto separator = lastSeparator(path);
    return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

SV::String withExtension(std::string_view path, std::string_view extension) {
    const auto name = fileNamePart(path);
    if (name.empty()) return SV::String(path);
    const auto dot = name.rfind('.');
    const bool hasExtension = dot != std::string_view::npos && dot != 0;
    const auto stem = hasExtension ? path.substr(0, path.size() - name.size() + dot) : path;
    return SV::String(stem) + "." + extension;
}

SV::String folderPart(std::string_view path) {
    const auto separator = lastSeparator(path);
    if (separator == std::string_view::npos) return ".";
    const auto folder = path.substr(0, separator);
    const bool isRoot = folder.empty() || folder.back() == ':';  // "/", "c:\", "db:\"
    return isRoot ? SV::String(path.substr(0, separator + 1)) : SV::String(folder);
}

}  // namespace qor::admin
