// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <string_view>

namespace qor::interchange {

/// A file can hold the text, and reading it back gives the same bytes: UTF-8 without zero bytes, not too long.
[[nodiscard]] bool canBeWritten(std::string_view text);

/// Appends the text as a scalar on one line: as it is where every reader of YAML takes it for a text, otherwise in
/// double quotes. Good in block and flow context.
void appendScalar(std::string& out, std::string_view text);

/// The text can stand as a literal block.
[[nodiscard]] bool canBeBlock(std::string_view text);
/// It can, and on one line it would be hard to read or too long.
[[nodiscard]] bool isBetterAsBlock(std::string_view text);
/// Appends the text as a literal block, from its "|" on, each line indented by `indent`, which must be two more than
/// the indentation of the mapping that holds it. Ends with a line feed.
void appendBlock(std::string& out, std::string_view text, std::size_t indent);

}  // namespace qor::interchange
