// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string_view>

#include "platform/SvString.h"

namespace qor::admin {

/// The path with that extension ("csv") in place of the one that its file name has, or behind a name without one. A
/// path without a file name stays as it is, and so does the dot that a hidden file's name begins with.
[[nodiscard]] SV::String withExtension(std::string_view path, std::string_view extension);

/// What stands behind the last separator.
[[nodiscard]] std::string_view fileNamePart(std::string_view path);

/// The folder that the file lies in: ".", when the path names none.
[[nodiscard]] SV::String folderPart(std::string_view path);

}  // namespace qor::admin
