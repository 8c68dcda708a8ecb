// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace qor::cli {

/// The method library that BPMN files are checked with.
inline constexpr std::string_view kBpmnLibrary = "bpmn";

/// Where method libraries that come with the command are looked for: the folder that QOR_LIBRARIES names, else
/// ../share/qor/libraries from where the command lies.
[[nodiscard]] std::string shippedLibrariesFolder();

/// File of the shipped library of that name; empty when there is none.
[[nodiscard]] std::string shippedLibrary(std::string_view name);

/// The names of the shipped libraries, sorted.
[[nodiscard]] std::vector<std::string> shippedLibraryNames();

/// What a user means by a library's name: the file of that name, else the shipped library, else what was given.
[[nodiscard]] std::string resolveLibrary(const std::string& given);

}  // namespace qor::cli
