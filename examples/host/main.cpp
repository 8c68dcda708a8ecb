// SPDX-License-Identifier: Apache-2.0
// A host in one file: reads a method library and models with it, and prints every breach of the library's rules.
#include <cstdio>
#include <string>

#include "cardinality/QorCardinalityCompleteCheck.h"
#include "cardinality/QorCardinalityHandler.h"
#include "embedded/QorEmbeddedPlatform.h"
#include "frame/QorLibLoad.h"
#include "interchange/QorImport.h"

namespace {

bool report(const QorImportResult& result) {
    for (const auto& finding : result.diagnostics)
        std::fprintf(stderr, "%s:%u:%u: %s\n", finding.place.file.c_str(), finding.place.line, finding.place.column,
                     finding.text.c_str());
    return !result.hasErrors();
}

bool checkModels(const QorImportResult& models) {
    QorCardinalityCompleteCheck check(QorCardinalityHandler::Instance());
    bool clean = true;
    for (const auto model : models.models) {
        const bool finished = check.checkModel(model, [&clean](const QorCardinalityBreach& breach) {
            std::puts(breach.text.c_str());
            clean = false;
            return true;
        });
        if (!finished) return false;
    }
    return clean;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s LIBRARY MODELS\n", argv[0]);
        return 2;
    }
    QorEmbeddedPlatform platform;
    const QorHostInstallation installed(platform.host());

    QorImporter importer(platform.builder(), platform.reader());
    const auto library = importer.readFile(argv[1], QorNoIdentifier);
    if (!report(library)) return 3;
    const auto models = importer.readFile(argv[2], library.library);
    if (!report(models)) return 3;

    const auto loaded =
        Qor_LoadLibrary(nullptr, library.library, QorLibLoad_InitHandler::Wanted, QorLibLoad_UpdateFacets::Declined,
                        QorLibLoad_AccessMode::Shared, QorLibLoad_SilentMode::Silent);
    if (loaded != QorErrorCode::Ok) {
        std::fprintf(stderr, "the library could not be loaded: %s\n",
                     QorCardinalityHandler::Instance().getErrorText().c_str());
        return 3;
    }
    const bool clean = checkModels(models);
    return Qor_DiscardLibrary() == QorErrorCode::Ok && clean ? 0 : 1;
}
