// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <string_view>

#include "interchange/Findings.h"
#include "interchange/QorImport.h"
#include "interchange/Tree.h"

namespace qor::interchange {

/// How a file is written, by its first byte that is not blank.
enum class Notation { Nothing, Yaml, Json, Xml };
[[nodiscard]] Notation notationOf(std::string_view beginning);

/// Largest file of models or classes; files of BPMN have their own limits.
inline constexpr std::size_t kMaxDocument = std::size_t{512} << 20;

/// Makes the tree of a YAML or JSON text. False when errors were reported that leave it incomplete.
bool readDocument(std::string_view text, Tree& tree, Findings& findings);

/// The value of a key of the document's outermost mapping; kNoNode without one.
[[nodiscard]] NodeId rootValue(const Tree& tree, std::string_view key);

/// What a document says it is, under the key "format".
[[nodiscard]] QorFileKind kindOfFormat(std::string_view format);
[[nodiscard]] QorFileKind kindOfDocument(const Tree& tree);
/// Reports what is wrong with the beginning of a document that does not say what it is.
void reportUnknownKind(const Tree& tree, Findings& findings);

}  // namespace qor::interchange
