// SPDX-License-Identifier: Apache-2.0
#include "interchange/QorImport.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <new>
#include <optional>

#include "interchange/Building.h"
#include "interchange/Document.h"
#include "interchange/FileInput.h"
#include "interchange/Input.h"
#include "interchange/LibraryReader.h"
#include "interchange/ModelReader.h"
#include "interchange/bpmn/BpmnReader.h"

using namespace qor::interchange;

namespace {

// The same for every way to write a path.
std::string canonical(const std::string& path) {
    std::error_code error;
    const auto result = std::filesystem::weakly_canonical(path, error);
    return error ? path : result.string();
}

// A beginning without the character or line end that it may break off in.
std::string_view withoutTornEnd(std::string_view text) {
    while (!text.empty() && (static_cast<unsigned char>(text.back()) >= 0x80 || text.back() == '\r'))
        text.remove_suffix(1);
    return text;
}

// No exception leaves the library; what could still be thrown comes from making the answer itself.
template <class Read>
QorImportResult guarded(const std::string& file, Read read) {
    try {
        return read();
    } catch (const std::exception&) {
        QorImportResult failed;
        failed.diagnostics.push_back({QorSeverity::Error, {file, 0, 0}, "not enough memory"});
        return failed;
    }
}

}  // namespace

QorLibraryReview::~QorLibraryReview() = default;

bool QorImportResult::hasErrors() const {
    return std::any_of(diagnostics.begin(), diagnostics.end(),
                       [](const QorDiagnostic& d) { return d.severity == QorSeverity::Error; });
}

struct QorImporter::Impl {
    Impl(QorRepositoryBuilder& builderToUse, const QorRepositoryReader& readerToUse)
        : builder(builderToUse), reader(readerToUse) {}

    /// The value of a key of the outermost mapping, which mostly stands in the beginning; the whole document is read
    /// when it does not.
    std::string rootText(const std::string& path, std::string_view key) {
        Input input = inputs.look(path);
        const Notation notation = notationOf(input.text);
        if (!input.problem.empty() || notation == Notation::Nothing || notation == Notation::Xml) return {};
        for (const bool all : {false, true}) {
            if (all && (!input.file || !input.readAll())) break;
            const bool breaksOff = !all && input.file;
            Places nowhere;
            Findings nobody(path, nowhere);
            Tree tree;
            (void)readDocument(breaksOff ? withoutTornEnd(input.text) : input.text, tree, nobody);
            const NodeId value = rootValue(tree, key);
            // What stands at the very end of a beginning may be only half of it.
            if (value != kNoNode && !(breaksOff && tree.isLast(value))) return std::string(tree.text(value));
        }
        return {};
    }

    QorImportResult read(const std::string& name, Input input, QorIdentifier library, bool onlyLibraries,
                         QorLibraryReview* review = nullptr) {
        QorImportResult result;
        Findings findings(name, places);
        std::vector<QorDiagnostic> ofLibrary;
        try {
            if (!input.problem.empty())
                findings.error({}, input.problem);
            else
                dispatch(name, input, library, onlyLibraries, result, findings, ofLibrary);
            if (review != nullptr && findings.hasErrors()) take(*review, result, findings);
        } catch (const std::bad_alloc&) {
            findings.error({}, "there is not enough memory for this file");
        } catch (const std::exception& error) {
            findings.error({}, concat({"cannot be read: ", error.what()}));
        }
        result.models = findings.models();
        if (findings.hasErrors())
            takeBack(result, findings.groups());
        else
            result.processes = findings.processes();
        result.diagnostics = findings.takeDiagnostics();
        result.diagnostics.insert(result.diagnostics.begin(), std::make_move_iterator(ofLibrary.begin()),
                                  std::make_move_iterator(ofLibrary.end()));
        return result;
    }

    static void take(QorLibraryReview& review, const QorImportResult& result, Findings& findings) {
        if (result.library == QorNoIdentifier || findings.brokeOff()) return;
        const auto known = findings.errorPlaces();
        for (QorDiagnostic& more : review.review(result.library))
            if (!known.contains({more.place.line, more.place.column}))
                findings.report(more.severity, more.place.line, more.place.column, std::move(more.text));
    }

    void dispatch(const std::string& name, Input& input, QorIdentifier library, bool onlyLibraries,
                  QorImportResult& result, Findings& findings, std::vector<QorDiagnostic>& ofLibrary) {
        const Notation notation = notationOf(input.text);
        if (notation == Notation::Nothing) {
            findings.error({}, input.text.empty() ? "the file is empty" : "the file begins with nothing but blanks");
            return;
        }
        if (notation == Notation::Xml) {
            result.kind = QorFileKind::Bpmn;
            if (onlyLibraries)
                findings.error({}, "this is no method library");
            else
                readXml(name, input, library, findings);
            return;
        }
        Tree tree;
        if (!input.readAll()) {
            findings.error({}, input.problem);
            return;
        }
        const bool complete = readDocument(input.text, tree, findings);
        input.text = {};
        result.kind = kindOfDocument(tree);
        if (!complete) {
            findings.breakOff();
            if (result.kind == QorFileKind::Unknown || findings.hadTooMany()) return;
        }
        Building building(tree, findings, builder, reader);
        if (result.kind == QorFileKind::Library) {
            LibraryReader(building).read(0, result.library);
        } else if (result.kind != QorFileKind::Models) {
            reportUnknownKind(tree, findings);
        } else if (onlyLibraries) {
            findings.error(tree.mark(0), "this is a file of models, not a method library");
        } else {
            if (library == QorNoIdentifier) library = libraryOf(name, tree, findings, ofLibrary);
            if (library != QorNoIdentifier) ModelReader(building, library).read(0);
        }
    }

    void readXml(const std::string& name, Input& input, QorIdentifier library, Findings& findings) {
        if (library == QorNoIdentifier) {
            findings.error({}, "a method library is needed to read this file");
            return;
        }
        TextSource beginning(input.text);
        std::optional<ResumedSource> all;
        if (input.file) all.emplace(input.text, *input.file);
        readBpmn(all ? static_cast<ByteSource&>(*all) : beginning, name, library, builder, reader, findings);
    }

    /// The library that a document of models names, read now if it was not read before.
    QorIdentifier libraryOf(const std::string& name, const Tree& tree, Findings& findings,
                            std::vector<QorDiagnostic>& diagnostics) {
        const NodeId named = rootValue(tree, "library");
        if (named == kNoNode || tree.text(named).empty()) {
            if (!tree.breaksOff())
                findings.error(tree.mark(0),
                               "the models need a method library: name its file under the key \"library\"");
            return QorNoIdentifier;
        }
        const std::string path = besides(name, tree.text(named));
        const std::string key = canonical(path);
        auto known = libraries.find(key);
        if (known == libraries.end() ||
            (known->second != QorNoIdentifier && reader.kindOf(known->second) != QorThingKind::ApplicationLibrary)) {
            QorImportResult library = read(path, inputs.open(path), QorNoIdentifier, true);
            known = libraries.insert_or_assign(key, library.library).first;
            diagnostics = std::move(library.diagnostics);
            // Further places belong to the models again.
            places.beginFile(name);
        }
        if (known->second == QorNoIdentifier)
            findings.error(tree.mark(named), concat({"the method library ", inQuotes(path), " cannot be used"}));
        return known->second;
    }

    static std::string besides(const std::string& file, std::string_view named) {
        const std::filesystem::path path(named);
        if (path.is_absolute() || file == "-") return path.string();
        return (std::filesystem::path(file).parent_path() / path).string();
    }

    void takeBack(QorImportResult& result, const std::vector<QorIdentifier>& groups) {
        // From the last: what was made last may stand on what was made before.
        for (auto model = result.models.rbegin(); model != result.models.rend(); ++model)
            (void)builder.removeModel(*model);  // it was made a moment ago
        result.models.clear();
        for (auto group = groups.rbegin(); group != groups.rend(); ++group) (void)builder.removeModelGroup(*group);
        if (result.library != QorNoIdentifier) (void)builder.removeApplicationLibrary(result.library);
        result.library = QorNoIdentifier;
        places.forgetFile();
    }

    QorRepositoryBuilder& builder;
    const QorRepositoryReader& reader;
    Places places;
    std::map<std::string, QorIdentifier> libraries;  // by canonical path; none for what could not be read
    Inputs inputs;
};

QorImporter::QorImporter(QorRepositoryBuilder& builder, const QorRepositoryReader& reader)
    : _impl(std::make_unique<Impl>(builder, reader)) {}

QorImporter::~QorImporter() = default;

QorImportResult QorImporter::readFile(const std::string& path, QorIdentifier library) {
    return guarded(path, [&] {
        QorImportResult result = _impl->read(path, _impl->inputs.open(path), library, false);
        if (result.kind == QorFileKind::Library) _impl->libraries[canonical(path)] = result.library;
        return result;
    });
}

QorImportResult QorImporter::readLibrary(const std::string& path, QorLibraryReview& review) {
    return guarded(path, [&] {
        QorImportResult result = _impl->read(path, _impl->inputs.open(path), QorNoIdentifier, false, &review);
        if (result.kind == QorFileKind::Library) _impl->libraries[canonical(path)] = result.library;
        return result;
    });
}

QorImportResult QorImporter::readText(const std::string& name, std::string_view text, QorIdentifier library) {
    return guarded(name, [&] {
        Input input;
        input.text = text;
        return _impl->read(name, std::move(input), library, false);
    });
}

std::string QorImporter::libraryNamedBy(const std::string& path) {
    try {
        const std::string named = _impl->rootText(path, "library");
        return named.empty() ? named : Impl::besides(path, named);
    } catch (const std::exception&) {
        return {};
    }
}

QorFileKind QorImporter::kindOf(const std::string& path) {
    try {
        const Input input = _impl->inputs.look(path);
        if (!input.problem.empty()) return QorFileKind::Unknown;
        if (notationOf(input.text) == Notation::Xml) return QorFileKind::Bpmn;
        return kindOfFormat(_impl->rootText(path, "format"));
    } catch (const std::exception&) {
        return QorFileKind::Unknown;
    }
}

QorFilePlace QorImporter::placeOf(QorIdentifier thing) const { return _impl->places.placeOf(thing); }

std::string_view QorImporter::sourceIdOf(QorIdentifier thing) const { return _impl->places.sourceIdOf(thing); }

QorFilePlace QorImporter::placeInText(QorIdentifier owner, QorIdentifier attribute, QorKexPosition position) const {
    return _impl->places.placeInText(owner, attribute, position);
}

std::string QorImporter::messageInFile(QorIdentifier owner, QorIdentifier attribute, std::string_view message) const {
    return _impl->places.messageInFile(owner, attribute, message);
}
