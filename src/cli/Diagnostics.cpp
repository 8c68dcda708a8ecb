// SPDX-License-Identifier: Apache-2.0
#include "cli/Diagnostics.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/JsonWriter.h"

namespace qor::cli {

std::string placeText(const QorFilePlace& place) {
    std::string text = printable(place.file);
    if (place.line == 0) return text;
    text += fmt::format(":{}", place.line);
    if (place.column != 0) text += fmt::format(":{}", place.column);
    return text;
}

std::string diagnosticLine(const QorDiagnostic& diagnostic, const Colours& colours) {
    const bool isError = diagnostic.severity == QorSeverity::Error;
    return fmt::format("{}: {} {}\n", colours.bold(placeText(diagnostic.place)),
                       isError ? colours.error("error:") : colours.warning("warning:"), printable(diagnostic.text));
}

bool hasErrors(const std::vector<QorDiagnostic>& diagnostics) {
    return std::any_of(diagnostics.begin(), diagnostics.end(),
                       [](const QorDiagnostic& diagnostic) { return diagnostic.severity == QorSeverity::Error; });
}

namespace {

void writePlacedTextFields(JsonWriter& json, const QorFilePlace& place, std::string_view text) {
    json.field("file", std::string_view(place.file))
        .field("line", std::int64_t{place.line})
        .field("column", std::int64_t{place.column})
        .field("text", text);
}

void writeDiagnostic(JsonWriter& json, const QorDiagnostic& diagnostic) {
    if (diagnostic.mentions.empty()) return writePlacedText(json, diagnostic.place, diagnostic.text);
    json.beginObject();
    writePlacedTextFields(json, diagnostic.place, diagnostic.text);
    json.key("elements").beginList();
    for (const QorMention& mention : diagnostic.mentions)
        json.beginObject(JsonWriter::Layout::Line)
            .field("line", std::int64_t{mention.line})
            .field("column", std::int64_t{mention.column})
            .field("text", std::string_view(mention.text))
            .endObject();
    json.endList().endObject();
}

}  // namespace

void writeDiagnostics(JsonWriter& json, const std::vector<QorDiagnostic>& diagnostics) {
    for (const QorSeverity severity : {QorSeverity::Error, QorSeverity::Warning}) {
        json.key(severity == QorSeverity::Error ? "errors" : "warnings").beginList();
        for (const QorDiagnostic& diagnostic : diagnostics)
            if (diagnostic.severity == severity) writeDiagnostic(json, diagnostic);
        json.endList();
    }
}

void writePlacedText(JsonWriter& json, const QorFilePlace& place, std::string_view text) {
    json.beginObject(JsonWriter::Layout::Line);
    writePlacedTextFields(json, place, text);
    json.endObject();
}

}  // namespace qor::cli
