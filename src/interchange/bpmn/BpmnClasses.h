// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "interchange/bpmn/BpmnDocument.h"
#include "interchange/bpmn/BpmnLinks.h"

namespace qor::interchange::bpmn {

/// The class of the object that an element becomes; none for elements that become no object. Elements to which the
/// usual rules about flows do not apply have classes of their own, since rules belong to classes.
[[nodiscard]] ObjectClass classFor(const Document& document, const Links& links, NodeIndex node);

/// Attributes with the value "true" that neither the class nor the kind of the trigger says.
[[nodiscard]] std::vector<std::string_view> flagsNotShown(const Node& node, ObjectClass cls, std::string_view trigger);

/// The kind of an event with these triggers, as the attribute "Trigger" has it.
[[nodiscard]] std::string_view triggerWord(const Document& document, NodeIndex event,
                                           const std::vector<NodeIndex>& triggers);

/// What the triggers say, one line each: "timer: duration PT5M", "message: Order".
[[nodiscard]] std::string triggerDetail(const Document& document, const Links& links, NodeIndex event,
                                        const std::vector<NodeIndex>& triggers);

}  // namespace qor::interchange::bpmn
