// SPDX-License-Identifier: Apache-2.0
#include "interchange/Document.h"

#include "interchange/Fields.h"
#include "interchange/Format.h"
#include "interchange/JsonReader.h"
#include "interchange/SourceText.h"
#include "interchange/Wording.h"
#include "interchange/YamlReader.h"

namespace qor::interchange {

Notation notationOf(std::string_view beginning) {
    beginning = withoutByteOrderMark(beginning);
    // UTF-16 is for the XML reader to judge.
    if (beginning.starts_with("\xFF\xFE<") || beginning.starts_with(std::string_view("\xFE\xFF\0<", 4)))
        return Notation::Xml;
    const std::size_t first = beginning.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return Notation::Nothing;
    return beginning[first] == '<' ? Notation::Xml : beginning[first] == '{' ? Notation::Json : Notation::Yaml;
}

bool readDocument(std::string_view text, Tree& tree, Findings& findings) {
    const bool isJson = notationOf(text) == Notation::Json;
    text = withoutByteOrderMark(text);
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) {
        findings.error({1, 1}, "the file is written in UTF-16; it must be saved in UTF-8");
        return false;
    }
    if (!isReadableText(text, isJson ? TextForm::Json : TextForm::Yaml, findings)) return false;
    if (!(isJson ? readJson(text, tree, findings) : readYaml(text, tree, findings))) return false;
    if (!tree.empty()) return true;
    findings.error({1, 1}, "the file holds nothing but comments");
    return false;
}

NodeId rootValue(const Tree& tree, std::string_view key) {
    if (tree.empty() || tree.kind(0) != NodeKind::Mapping) return kNoNode;
    NodeId value = kNoNode;
    forEachPair(tree, 0, [&](NodeId found, NodeId itsValue) {
        if (value == kNoNode && tree.text(found) == key) value = itsValue;
    });
    return value;
}

QorFileKind kindOfFormat(std::string_view format) {
    if (format == kLibraryFormat) return QorFileKind::Library;
    if (format == kModelFormat) return QorFileKind::Models;
    return QorFileKind::Unknown;
}

QorFileKind kindOfDocument(const Tree& tree) {
    const NodeId format = rootValue(tree, "format");
    return format == kNoNode ? QorFileKind::Unknown : kindOfFormat(tree.text(format));
}

void reportUnknownKind(const Tree& tree, Findings& findings) {
    const std::string expected = concat({"\"format: ", kLibraryFormat, "\" or \"format: ", kModelFormat, "\""});
    const NodeId format = rootValue(tree, "format");
    if (tree.kind(0) != NodeKind::Mapping)
        findings.error(tree.mark(0), concat({"this is no library and no model file: such files say ", expected}));
    else if (format == kNoNode)
        findings.error(tree.mark(0), concat({"the key \"format\" is missing: write ", expected}));
    else if (tree.kind(format) != NodeKind::Bad)
        findings.error(tree.mark(format),
                       concat({"unknown format ", inQuotes(tree.text(format)), ": this version reads ", expected}));
}

}  // namespace qor::interchange
