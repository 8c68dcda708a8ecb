// SPDX-License-Identifier: Apache-2.0
#include "interchange/QorExport.h"

#include <exception>
#include <ostream>
#include <vector>

#include "interchange/LibraryWriter.h"
#include "interchange/ModelWriter.h"
#include "interchange/Wording.h"

using namespace qor::interchange;

namespace {

// No exception leaves the library, not even one that the caller's stream throws.
template <class Write>
QorExportResult written(std::ostream& out, Write write) {
    try {
        YamlWriter writer(out);
        write(writer);
        writer.flush();
        return {writer.problem()};
    } catch (const std::exception& error) {
        return {concat({"writing failed: ", error.what()})};
    }
}

}  // namespace

QorExportResult Qor_ExportLibrary(const QorRepositoryReader& reader, QorIdentifier library, std::ostream& out) {
    if (reader.kindOf(library) != QorThingKind::ApplicationLibrary) return {"there is no such application library"};
    return written(out, [&](YamlWriter& writer) { LibraryWriter(reader, library, writer).write(); });
}

QorExportResult Qor_ExportModels(const QorRepositoryReader& reader, std::span<const QorIdentifier> models,
                                 std::string_view libraryFile, std::ostream& out) {
    const QorIdentifier library = models.empty() ? QorNoIdentifier : reader.applicationLibraryOf(models.front());
    for (const QorIdentifier model : models) {
        if (reader.kindOf(model) != QorThingKind::Model) return {"there is no such model"};
        if (reader.applicationLibraryOf(model) != library) return {"the models belong to different method libraries"};
    }
    return written(out, [&](YamlWriter& writer) { ModelWriter(reader, library, writer).write(models, libraryFile); });
}

QorExportResult Qor_ExportAllModels(const QorRepositoryReader& reader, QorIdentifier library,
                                    std::string_view libraryFile, std::ostream& out) {
    if (reader.kindOf(library) != QorThingKind::ApplicationLibrary) return {"there is no such application library"};
    return written(out, [&](YamlWriter& writer) {
        std::vector<QorIdentifier> models;
        for (const QorModelInfo& model : reader.modelsOf(library)) models.push_back(model.id);
        ModelWriter(reader, library, writer).write(models, libraryFile);
    });
}
