// SPDX-License-Identifier: Apache-2.0
// Any bytes as a file of classes or models, in YAML or JSON. What has an error leaves nothing behind and says where the
// error is; what has none is written, read back and written again, with the same bytes.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "embedded/QorEmbeddedPlatform.h"
#include "interchange/Document.h"
#include "interchange/QorExport.h"
#include "interchange/QorImport.h"

namespace {

constexpr std::string_view kLibrary = R"(format: qor.library/1
name: L
business_process:
  record_classes: [{name: R, attributes: [{name: c, type: text}]}]
  classes:
    - name: S
      abstract: true
      attributes:
        - {name: e, type: enumeration, values: [m, n], default: m}
        - {name: l, type: enumeration list, values: [m, n]}
        - {name: i, type: integer}
        - {name: t, type: text, level: class}
        - {name: r, type: record, record_class: R}
        - {name: o, type: reference}
    - {name: A, extends: S}
    - {name: B, extends: S}
  relation_classes:
    - {name: r, from: S, to: A, attributes: [{name: w, type: text}]}
  model_types:
    - {name: T, classes: [A, B]}
)";

void demand(bool condition) {
    if (!condition) std::abort();
}

/// A repository with the library that models are made with. It is used again and again, and so must come back to what
/// it was.
struct Side {
    QorEmbeddedPlatform platform;
    QorIdentifier library = QorImporter(platform.builder(), platform.reader()).readText("L", kLibrary, -1).library;

    QorImportResult read(std::string_view text) {
        return QorImporter(platform.builder(), platform.reader()).readText("input", text, library);
    }
    void remove(const QorImportResult& result) {
        for (const QorIdentifier model : result.models) demand(platform.builder().removeModel(model).ok());
        if (result.library != QorNoIdentifier) demand(platform.builder().removeApplicationLibrary(result.library).ok());
        demand(platform.reader().applicationLibraries().size() == 1 && platform.reader().modelsOf(library).empty());
    }
};

std::string exported(const Side& side, QorIdentifier library, const std::vector<QorIdentifier>& models) {
    std::ostringstream out;
    demand((models.empty() ? Qor_ExportLibrary(side.platform.reader(), library, out)
                           : Qor_ExportModels(side.platform.reader(), models, "", out))
               .ok());
    return out.str();
}

void errorsHavePlaces(const QorImportResult& result, std::string_view text) {
    const auto lines = static_cast<std::uint32_t>(std::count(text.begin(), text.end(), '\n')) + 1;
    for (const QorDiagnostic& d : result.diagnostics) {
        demand(!d.text.empty() && d.place.line <= lines && d.place.column <= text.size() + 1);
        demand((d.place.line == 0) == (d.place.column == 0));
    }
}

void survives(std::string_view text) {
    if (qor::interchange::notationOf(text) == qor::interchange::Notation::Xml) return;
    static Side one;
    static Side other;
    const QorImportResult result = one.read(text);
    errorsHavePlaces(result, text);
    if (result.hasErrors()) demand(result.models.empty() && result.library == QorNoIdentifier);
    if (result.library != QorNoIdentifier || !result.models.empty()) {
        const std::string written = exported(one, result.library, result.models);
        const QorImportResult again = other.read(written);
        demand(!again.hasErrors());
        demand(exported(other, again.library, again.models) == written);
        other.remove(again);
    }
    one.remove(result);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    survives({reinterpret_cast<const char*>(data), size});
    return 0;
}
