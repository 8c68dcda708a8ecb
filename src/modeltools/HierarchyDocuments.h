// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <vector>

#include "modeltools/QorHierarchyTree.h"

namespace qor::modeltools {

/// What every tree in XML begins with.
inline constexpr const char* kXmlDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

[[nodiscard]] std::string hierarchyXml(const std::vector<QorHierarchyElement>& elements, bool withNames);
[[nodiscard]] std::string hierarchyJson(const std::vector<QorHierarchyElement>& elements, bool complete);
[[nodiscard]] std::string hierarchySvg(const std::vector<QorHierarchyElement>& elements);

}  // namespace qor::modeltools
