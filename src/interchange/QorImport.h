// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/QorRepositoryBuilder.h"
#include "embedded/QorRepositoryReader.h"
#include "platform/QorExport.h"
#include "platform/QorIdentifier.h"
#include "platform/QorKexParser.h"

/// A place in a file; line and column count from 1, columns in bytes, 0 when unknown.
struct QorFilePlace {
    std::string file;
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

enum class QorSeverity : std::int32_t { Error, Warning };

/// One of several elements that a diagnostic is about; its place is in the same file.
struct QorMention {
    std::uint32_t line = 0;
    std::uint32_t column = 0;
    std::string text;
};

/// What is wrong with a file, and where.
struct QorDiagnostic {
    QorSeverity severity = QorSeverity::Error;
    QorFilePlace place;
    std::string text;
    std::vector<QorMention> mentions = {};  ///< of a diagnostic about many: all of them; its text names the first few
};

/// What a file holds, judged by its beginning.
enum class QorFileKind : std::int32_t { Unknown, Library, Models, Bpmn };

/// A process of a BPMN file by the identifier that it has there, and the model that it became part of.
struct QorImportedProcess {
    std::string id;
    QorIdentifier model = QorNoIdentifier;
};

/// What came out of reading one file.
struct QorImportResult {
    QorFileKind kind = QorFileKind::Unknown;
    std::vector<QorDiagnostic> diagnostics;     ///< errors and warnings in the order of the file
    QorIdentifier library = QorNoIdentifier;    ///< the application library that was made, for a library file
    std::vector<QorIdentifier> models;          ///< the models that were made; none when the file has an error
    std::vector<QorImportedProcess> processes;  ///< of a BPMN file without an error, in its order
    [[nodiscard]] QOR_API bool hasErrors() const;
};

/// Looks through a method library that has errors, for more of them.
class QOR_API QorLibraryReview {
public:
    virtual ~QorLibraryReview();
    /// Called while what could be read of the library is there; it is taken back afterwards. What is answered joins the
    /// other errors, except where there is one at the same place.
    virtual std::vector<QorDiagnostic> review(QorIdentifier library) = 0;
};

/// Takes text files into a repository: method libraries and models in YAML or JSON, BPMN 2.0 in XML. Reports all errors
/// of a file, not just the first; a file with an error leaves nothing behind in the repository. Remembers where things
/// were written for as long as it lives. Memory is bounded by about 20 times the file's size.
class QOR_API QorImporter {
public:
    QorImporter(QorRepositoryBuilder& builder, const QorRepositoryReader& reader);
    QorImporter(const QorImporter&) = delete;
    QorImporter& operator=(const QorImporter&) = delete;
    ~QorImporter();

    /// Reads a file; "-" is standard input. `library` is the application library that models are made with, and may be
    /// none when the file holds a library or (in YAML) names its own. A file that cannot be read, a folder, or a file
    /// of unknown kind gives an error diagnostic.
    QorImportResult readFile(const std::string& path, QorIdentifier library);
    /// The same for a method library, with a review when it has errors. There is none when the file breaks off, since
    /// names may be explained behind.
    QorImportResult readLibrary(const std::string& path, QorLibraryReview& review);
    /// Reads a text as if it were the file of that name.
    QorImportResult readText(const std::string& name, std::string_view text, QorIdentifier library);

    /// What a model file names as its library, resolved against the file's folder; empty when it names none or is no
    /// model file. For deciding which library to read first.
    [[nodiscard]] std::string libraryNamedBy(const std::string& path);
    /// The kind of a file without reading all of it.
    [[nodiscard]] QorFileKind kindOf(const std::string& path);

    /// Where an object or relation was written; no file when it did not come from one.
    [[nodiscard]] QorFilePlace placeOf(QorIdentifier thing) const;
    /// The identifier that an object or relation has in its file; empty when it has none.
    [[nodiscard]] std::string_view sourceIdOf(QorIdentifier thing) const;
    /// The place in the file of a place in a keyword text, itself the value of an attribute of a class or library.
    [[nodiscard]] QorFilePlace placeInText(QorIdentifier owner, QorIdentifier attribute, QorKexPosition position) const;
    /// What a parser says about such a text, for people who see the place in the file beside it: without the place in
    /// the text in front ("line 3, column 1: "), and with the second place that it may end with ("already has the key
    /// \"a\", in line 2, column 1") told as the file's.
    [[nodiscard]] std::string messageInFile(QorIdentifier owner, QorIdentifier attribute,
                                            std::string_view message) const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
