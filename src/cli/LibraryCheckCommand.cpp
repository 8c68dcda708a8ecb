// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <string>
#include <vector>

#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/Diagnostics.h"
#include "cli/InternalErrors.h"
#include "cli/JsonWriter.h"
#include "cli/ShippedLibraries.h"
#include "cli/Text.h"
#include "cli/Workspace.h"
#include "modeltools/QorConversionHandler.h"
#include "modeltools/QorNameGenerator.h"

namespace qor::cli {

namespace {

/// Gathers what is wrong with the texts about conversion and naming.
class TextCheck {
public:
    explicit TextCheck(Workspace& workspace) : _workspace(workspace) {}

    std::vector<QorDiagnostic> run() {
        for (const QorLibraryPart part : {QorLibraryPart::BusinessProcess, QorLibraryPart::WorkingEnvironment})
            for (const QorClassInfo& cls : _workspace.reader().classesOf(_workspace.part(part))) {
                if (cls.isRecordClass) continue;
                checkConversion(cls);
                checkNaming(cls);
            }
        return std::move(_errors);
    }

private:
    void checkConversion(const QorClassInfo& cls) {
        SV::String told;
        if (QorConversionHandler::IsCorrectConversionAttr(cls.id, told, nullptr)) return;
        QorConversionHandler handler(cls.id);
        (void)handler.Init(nullptr);  // tells the error and its place apart
        add(cls, QorConversionHandler::GetConversionAttrName(), handler.GetErrorPosition(), handler.GetErrorReason());
    }

    void checkNaming(const QorClassInfo& cls) {
        const QorRepositoryReader& reader = _workspace.reader();
        const char* const name = QorNameGenerator::GetNameGenAttrName();
        const QorIdentifier attribute = reader.findAttribute(cls.id, name);
        if (attribute == QorNoIdentifier) return;
        const SV::String text(reader.classValue(cls.id, attribute));
        SV::String error;
        if (QorNameGenerator::IsCorrectNameGenAttr(text, cls.id, attribute, error)) return;
        QorKexParser parser(text, name, SV::String(cls.name));
        if (parser.Parse() != 0)
            add(cls, name, parser.GetErrorPosition(), parser.GetErrorReason());
        else
            add(cls, name, parser.GetElemCount() == 0 ? QorKexPosition{1, 1} : parser.GetCurElemPosition(), error);
    }

    void add(const QorClassInfo& cls, const char* attribute, QorKexPosition position, const SV::String& reason) {
        const QorIdentifier id = _workspace.reader().findAttribute(cls.id, attribute);
        const QorImporter& importer = _workspace.libraryImporter();
        _errors.push_back({QorSeverity::Error, importer.placeInText(cls.id, id, position),
                           fmt::format("class {}, {}: {}", quoted(cls.name), attribute,
                                       printable(importer.messageInFile(cls.id, id, reason.view())))});
    }

    Workspace& _workspace;
    std::vector<QorDiagnostic> _errors;
};

}  // namespace

Exit runLibraryCheck(const LibraryOptions& options, Console& console) {
    InternalErrors internalErrors(console);
    Workspaces workspaces("en", internalErrors.windows());
    Workspace& workspace = workspaces.open(resolveLibrary(options.file));
    std::vector<QorDiagnostic> diagnostics = workspace.fileDiagnostics();
    std::size_t found = 0;
    if (workspace.hasLibrary())
        for (QorDiagnostic& error : TextCheck(workspace).run()) {
            diagnostics.push_back(std::move(error));
            ++found;
        }
    if (options.json) {
        console.setMode(OutputMode::Document);
        JsonWriter json([&console](std::string_view text) { console.out(text); });
        json.beginObject()
            .field("schema", "qor.library.check/1")
            .field("file", std::string_view(workspace.libraryPath()));
        writeDiagnostics(json, diagnostics);
        json.endObject();
    } else {
        for (const QorDiagnostic& diagnostic : diagnostics)
            console.out(diagnosticLine(diagnostic, console.outColours()));
        if (workspace.hasLibrary())
            console.out(counted(found, "error") + " in the texts about conversion and naming\n");
    }
    if (internalErrors.count() != 0) return Exit::Internal;
    if (!workspace.hasLibrary()) return Exit::BadInput;
    return found == 0 ? Exit::Clean : Exit::Findings;
}

}  // namespace qor::cli
