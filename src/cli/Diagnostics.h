// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <vector>

#include "cli/Text.h"
#include "interchange/QorImport.h"

namespace qor::cli {

class JsonWriter;

/// "FILE:LINE:COLUMN", without what is not known.
[[nodiscard]] std::string placeText(const QorFilePlace& place);

/// "FILE:LINE:COLUMN: error: TEXT" and a line feed.
[[nodiscard]] std::string diagnosticLine(const QorDiagnostic& diagnostic, const Colours& colours);

[[nodiscard]] bool hasErrors(const std::vector<QorDiagnostic>& diagnostics);

/// The fields "errors" and "warnings" of an object; what is about many elements lists them under "elements".
void writeDiagnostics(JsonWriter& json, const std::vector<QorDiagnostic>& diagnostics);
/// Each as {"file", "line", "column", "text"}.
void writePlacedText(JsonWriter& json, const QorFilePlace& place, std::string_view text);

}  // namespace qor::cli
