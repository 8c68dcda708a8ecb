// SPDX-License-Identifier: Apache-2.0
#include "modeltools/HierarchyDocuments.h"

#include "modeltools/EscapedText.h"
#include "modeltools/ModelNames.h"

namespace qor::modeltools {

namespace {

const char* wordOf(QorHierarchyEnd end) {
    switch (end) {
        case QorHierarchyEnd::Inner:
            return "inner";
        case QorHierarchyEnd::Leaf:
            return "leaf";
        case QorHierarchyEnd::Cycle:
            return "cycle";
        case QorHierarchyEnd::Cut:
            return "cut";
    }
    return "";
}

void appendNames(std::string& text, const ModelNames::Names& names) {
    text += " name=\"";
    appendMarkup(text, names.name);
    text += "\" type=\"";
    appendMarkup(text, names.type);
    text += '"';
}

}  // namespace

std::string hierarchyXml(const std::vector<QorHierarchyElement>& elements, bool withNames) {
    if (elements.empty()) return {};
    ModelNames names;
    std::string text = kXmlDeclaration;
    std::size_t open = 0;  // how many elements are
    const auto closeTo = [&](std::size_t depth) {
        for (; open > depth; --open) text.append(2 * (open - 1), ' ').append("</model>\n");
    };
    for (const QorHierarchyElement& element : elements) {
        closeTo(element.depth);
        text.append(2 * element.depth, ' ').append("<model id=\"").append(std::to_string(element.model)).append("\"");
        if (withNames) appendNames(text, names.of(element.model));
        if (element.omitted != 0) text.append(" omitted=\"").append(std::to_string(element.omitted)).append("\"");
        const bool opens = element.end == QorHierarchyEnd::Inner;
        text.append(opens ? ">\n" : " />\n");
        if (opens) ++open;
    }
    closeTo(0);
    return text;
}

std::string hierarchyJson(const std::vector<QorHierarchyElement>& elements, bool complete) {
    if (elements.empty()) return {};
    ModelNames names;
    std::string text = "{\n  \"schema\": \"qor.hierarchy.tree/1\",\n  \"complete\": ";
    text.append(complete ? "true" : "false").append(",\n  \"elements\": [");
    const char* separator = "\n";
    for (const QorHierarchyElement& element : elements) {
        const ModelNames::Names& its = names.of(element.model);
        text.append(separator).append("    {\"depth\": ").append(std::to_string(element.depth));
        text.append(", \"id\": ").append(std::to_string(element.model)).append(", \"name\": ");
        appendJson(text, its.name);
        text += ", \"type\": ";
        appendJson(text, its.type);
        text.append(", \"end\": \"").append(wordOf(element.end)).append("\", \"omitted\": ");
        text.append(std::to_string(element.omitted)).append("}");
        separator = ",\n";
    }
    return text + "\n  ]\n}\n";
}

}  // namespace qor::modeltools
