// SPDX-License-Identifier: Apache-2.0
// Any bytes as a BPMN file. A file with an error leaves nothing behind and names a place inside the file; what is read
// stays within the models that were made, has the classes that the library asks for, and comes out the same when read
// again. To be run from the project's folder, where the library of BPMN is.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "embedded/QorEmbeddedPlatform.h"
#include "interchange/QorImport.h"

namespace {

constexpr int kRunsOfOneRepository = 5000;  // identifiers are never given twice, so its tables only grow

void demand(bool condition) {
    if (!condition) std::abort();
}

class Desk {
public:
    Desk() : _importer(_platform.builder(), _platform.reader()) {
        const QorImportResult library = _importer.readFile("libraries/bpmn.yaml", QorNoIdentifier);
        demand(!library.hasErrors());
        _library = library.library;
    }

    /// What came of the bytes, in words.
    std::string read(std::string_view text) {
        const QorImportResult result = _importer.readText("fuzz.bpmn", text, _library);
        const auto lines = static_cast<std::uint32_t>(std::count(text.begin(), text.end(), '\n') +
                                                      std::count(text.begin(), text.end(), '\r') + 1);
        std::string words;
        for (const QorDiagnostic& diagnostic : result.diagnostics) {
            demand(diagnostic.place.line <= lines && !diagnostic.text.empty());
            words += diagnostic.text + '\n';
        }
        const QorRepositoryReader& reader = _platform.reader();
        if (result.hasErrors()) demand(result.models.empty() && reader.modelsOf(_library).empty());
        for (const QorIdentifier model : result.models) {
            describe(reader, model, words);
            demand(_platform.builder().removeModel(model).ok());
        }
        return words;
    }

private:
    static void describe(const QorRepositoryReader& reader, QorIdentifier model, std::string& words) {
        words.append(reader.nameOf(model)).append("\n");
        for (const QorIdentifier object : reader.objectsOf(model)) {
            demand(reader.modelOf(object) == model && !reader.nameOf(object).empty());
            words.append(reader.nameOf(reader.classOfObject(object))).append(reader.nameOf(object)).append("\n");
        }
        for (const QorRelationInfo& relation : reader.relationsOf(model)) {
            demand(reader.modelOf(relation.from) == model && reader.modelOf(relation.to) == model);
            words.append(reader.nameOf(relation.from)).append(reader.nameOf(relation.to)).append("\n");
        }
    }

    QorEmbeddedPlatform _platform;
    QorImporter _importer;
    QorIdentifier _library = QorNoIdentifier;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static std::unique_ptr<Desk> desk;
    static int runs = 0;
    if (runs++ % kRunsOfOneRepository == 0) desk = std::make_unique<Desk>();
    std::string text(reinterpret_cast<const char*>(data), size);
    // Without a tag or a byte order mark in front, the importer would take the bytes for YAML: another target's.
    constexpr std::string_view kBeginnings = "<\xEF\xFE\xFF";
    if (text.empty() || kBeginnings.find(text.front()) == std::string_view::npos) text.insert(0, 1, '<');
    demand(desk->read(text) == desk->read(text));
    return 0;
}
