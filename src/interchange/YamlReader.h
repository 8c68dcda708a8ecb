// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string_view>

#include "interchange/TreeBuilder.h"

namespace qor::interchange {

/// One YAML document without anchors, aliases and tags; plain scalars are texts, whatever they look like. False, after
/// an error was reported, when the text could not be read to its end; the tree then holds what came before. The text
/// must have passed isReadableText.
bool readYaml(std::string_view text, Tree& tree, Findings& findings);

}  // namespace qor::interchange
