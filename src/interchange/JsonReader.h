// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string_view>

#include "interchange/TreeBuilder.h"

namespace qor::interchange {

/// One JSON document; numbers and truth values are texts as they were written. False, after an error was reported, when
/// the text could not be read to its end; the tree then holds what came before. The text must have passed
/// isReadableText.
bool readJson(std::string_view text, Tree& tree, Findings& findings);

}  // namespace qor::interchange
