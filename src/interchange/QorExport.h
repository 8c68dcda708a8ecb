// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <iosfwd>
#include <span>
#include <string>
#include <string_view>

#include "embedded/QorRepositoryReader.h"
#include "platform/QorExport.h"
#include "platform/QorIdentifier.h"

/// Whether everything could be given to the stream, whose own state tells whether it took it.
struct QorExportResult {
    std::string problem;  ///< why not; what was written until then is of no use
    [[nodiscard]] bool ok() const { return problem.empty(); }
};

/// Writes an application library as YAML that QorImporter reads. The same library gives the same bytes, and so does the
/// library that is read from them.
QOR_API QorExportResult Qor_ExportLibrary(const QorRepositoryReader& reader, QorIdentifier library, std::ostream& out);

/// Writes models of one application library as one YAML file. `libraryFile` is what the file names as its library, as
/// seen from its own folder; empty to name none. The groups that hold the models or no model at all are written as
/// well.
QOR_API QorExportResult Qor_ExportModels(const QorRepositoryReader& reader, std::span<const QorIdentifier> models,
                                         std::string_view libraryFile, std::ostream& out);

/// The same for all models of an application library, with all its groups, also when it has no models.
QOR_API QorExportResult Qor_ExportAllModels(const QorRepositoryReader& reader, QorIdentifier library,
                                            std::string_view libraryFile, std::ostream& out);
