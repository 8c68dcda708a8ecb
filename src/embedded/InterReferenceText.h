// SPDX-License-Identifier: Apache-2.0
// The text form of inter-model references, a keyword text with one element for each reference:
//
//   MODEL "Take an order" type: "Process"
//   OBJECT "Check stock" class: "Task" model: "Take an order" type: "Process"
#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/QorSourceInterRefContainer.h"

namespace qor::embedded {

// The references in the text, without their attribute; nothing when the text is not of the form above, leaves a name
// empty, or holds an element other than MODEL (`toModels`) or OBJECT (otherwise). A target need not exist. Without
// memory std::bad_alloc is thrown.
[[nodiscard]] std::optional<std::vector<QorInterModRefTarget>> parseReferences(std::string_view text, bool toModels);

// The inverse: one line for each reference. A name without a text makes a text that does not parse.
[[nodiscard]] std::string textOfReferences(const std::vector<QorInterModRefTarget>& targets, bool toModels);

}  // namespace qor::embedded
