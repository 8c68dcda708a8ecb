// SPDX-License-Identifier: Apache-2.0
// Text files into a repository: all of a file or nothing of it.
#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <set>

#include "cardinality/QorCardinalityHandler.h"
#include "cli/Diagnostics.h"
#include "cli/FirstBreach.h"
#include "cli/FoundFiles.h"
#include "cli/InputFiles.h"
#include "cli/RepoCommand.h"
#include "cli/RepoSession.h"
#include "cli/RepoVerbs.h"
#include "cli/RepositoryFiles.h"
#include "cli/ShippedLibraries.h"
#include "cli/Text.h"
#include "frame/QorLibLoad.h"
#include "interchange/QorCalledProcesses.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreUnitsOfWork.h"

namespace qor::cli {

namespace {

struct Imported {
    std::string file;
    std::string path;                      ///< where it is read
    std::string library = {};              ///< that was made; empty when none was
    std::vector<std::string> models = {};  ///< that were made
    std::size_t groups = 0;                ///< that were made
    QorImportResult result = {};
};

/// Things that a file may bring beside models, by their identifiers, ascending.
struct Holdings {
    std::vector<QorIdentifier> libraries;
    std::vector<QorIdentifier> groups;
};

/// What of `now` was not there before; the last one first, since what was made last may stand on what was made before.
std::vector<QorIdentifier> madeSince(const std::vector<QorIdentifier>& before, const std::vector<QorIdentifier>& now) {
    std::vector<QorIdentifier> made;
    std::set_difference(now.begin(), now.end(), before.begin(), before.end(), std::back_inserter(made));
    std::reverse(made.begin(), made.end());
    return made;
}

class Import {
public:
    Import(RepoSession& session, const RepoOptions& options)
        : _session(session),
          _options(options),
          _units(*session.platform().host().repository->unitsOfWork()),
          _importer(session.platform().builder(), session.reader()),
          _calls(session.platform().builder(), session.reader()) {}

    /// Everything that the file brings, or nothing. What names models of files that are still to come waits for them.
    void take(const std::string& file) {
        _session.console.progress().say("importing " + file);
        std::string error;
        const std::string path = _inputs.path(file, error);
        if (path.empty()) return _session.error(file, error, Exit::BadInput);
        Imported imported{file, path};
        if (!_isUnitOpen && !begin()) return;
        if (!read(imported)) {
            if (_waiting.empty() || !takeBack(imported)) takeBackAllBut({});
            return;
        }
        for (const QorIdentifier model : imported.result.models)
            if (!_session.reader().missingTargets(model).empty()) _unresolved.push_back(model);
        _waiting.push_back(std::move(imported));
        dropResolved();
        if (_unresolved.empty() || _options.keep) commit();
    }

    /// What names something that no file has brought is refused, and with it what names the models of its file.
    void finish() {
        while (!_waiting.empty()) {
            dropResolved();
            if (_unresolved.empty() || !refuseUnresolved()) return commit();
        }
        dropResolved();
        for (const Imported& its : _imported)
            if (!_unresolved.empty() && tellMissing(its, QorSeverity::Warning)) _session.endAtLeast(Exit::Findings);
    }

    /// Processes that call those of another file refer to them, which shows when all files have been read.
    void linkCalls() {
        if (!_hasCalls) return;
        if (_units.begin() != QorErrorCode::Ok) return tellProblem();
        for (const QorDiagnostic& warning : _calls.link()) _session.tell(warning);
        if (_units.commit() != QorErrorCode::Ok) tellProblem();
    }

    [[nodiscard]] const std::vector<Imported>& imported() const { return _imported; }

private:
    [[nodiscard]] bool begin() {
        _isUnitOpen = _units.begin() == QorErrorCode::Ok;
        if (!_isUnitOpen) tellProblem();
        return _isUnitOpen;
    }

    void commit() {
        _isUnitOpen = false;
        if (_units.commit() != QorErrorCode::Ok) {
            _waiting.clear();
            _unresolved.clear();
            return tellProblem();
        }
        for (Imported& its : _waiting) {
            _calls.add(its.file, _importer, its.result);
            _hasCalls = _hasCalls || its.result.kind == QorFileKind::Bpmn;
            report(its);
            _imported.push_back(std::move(its));
        }
        _waiting.clear();
    }

    /// Of the file that was read last, and has something wrong. False when it could not be taken back.
    [[nodiscard]] bool takeBack(const Imported& imported) {
        QorRepositoryBuilder& builder = _session.platform().builder();
        const Holdings now = holdings();
        bool isGone = removeModels(imported);
        for (const QorIdentifier group : madeSince(_before.groups, now.groups))
            isGone = builder.removeModelGroup(group).ok() && isGone;
        for (const QorIdentifier library : madeSince(_before.libraries, now.libraries))
            isGone = builder.removeApplicationLibrary(library).ok() && isGone;
        return isGone;
    }

    bool removeModels(const Imported& imported) {
        const auto& models = imported.result.models;
        return std::all_of(models.rbegin(), models.rend(),
                           [&](QorIdentifier model) { return _session.platform().builder().removeModel(model).ok(); });
    }

    /// What a file brought may be what files behind it stand on, so those that stay are read again.
    void takeBackAllBut(std::string bad) {
        bool isGood = false;
        while (!isGood) {
            _units.rollBack();
            _isUnitOpen = false;
            _unresolved.clear();
            std::erase_if(_waiting, [&](const Imported& its) { return its.file == bad; });
            if (_waiting.empty() || !begin()) return _waiting.clear();
            _isRepeating = isGood = true;
            for (auto its = _waiting.begin(); isGood && its != _waiting.end(); ++its) {
                *its = {its->file, its->path};
                isGood = read(*its);
                if (!isGood) bad = its->file;
                _unresolved.insert(_unresolved.end(), its->result.models.begin(), its->result.models.end());
            }
            _isRepeating = false;
        }
    }

    /// From the last one, and no further than it takes to know whether one is left.
    void dropResolved() {
        while (!_unresolved.empty() && _session.reader().missingTargets(_unresolved.back()).empty())
            _unresolved.pop_back();
    }

    /// A model as references name it.
    using ModelKey = std::pair<std::string, std::string>;

    [[nodiscard]] ModelKey keyOf(QorIdentifier model) const {
        const QorModelInfo info = _session.reader().modelInfo(model);
        return {std::string(_session.reader().nameOf(info.modelType)), std::string(info.name)};
    }

    /// Which of the files that wait name a model.
    [[nodiscard]] std::multimap<ModelKey, std::size_t> waitingByTarget() const {
        std::multimap<ModelKey, std::size_t> files;
        QorSourceInterRefContainer targets;
        for (std::size_t file = 0; file < _waiting.size(); ++file)
            for (const QorIdentifier model : _waiting[file].result.models) {
                (void)QorCoreModelingManager::GetGlobal()->getInterRefsOfSourceModel(model, targets);
                for (unsigned long at = 0; at < targets.numberOfElements(); ++at) {
                    const QorInterModRefTarget& target = targets.elementAtIndex(at);
                    files.emplace(ModelKey{target.modelTypeName.str(), target.modelName.str()}, file);
                }
            }
        return files;
    }

    /// Tells each file that is refused, with its cause, and reads the others again. False when there is none.
    bool refuseUnresolved() {
        std::vector<std::size_t> refused;
        std::vector<bool> isRefused(_waiting.size());
        const auto refuse = [&](std::size_t file, const Imported* because) {
            if (isRefused[file] || !tellMissing(_waiting[file], QorSeverity::Error, because)) return;
            isRefused[file] = true;
            refused.push_back(file);
        };
        for (std::size_t file = 0; file < _waiting.size(); ++file) refuse(file, nullptr);
        const auto files = waitingByTarget();
        for (std::size_t at = 0; at < refused.size(); ++at) {
            const Imported& gone = _waiting[refused[at]];
            std::set<ModelKey> keys;
            for (const QorIdentifier model : gone.result.models) keys.insert(keyOf(model));
            (void)removeModels(gone);  // all of the unit is taken back below
            for (const ModelKey& key : keys) {
                const auto [first, last] = files.equal_range(key);
                for (auto user = first; user != last; ++user) refuse(user->second, &gone);
            }
        }
        if (refused.empty()) return false;
        _session.endAtLeast(Exit::BadInput);
        std::vector<Imported> kept;
        for (std::size_t file = 0; file < _waiting.size(); ++file)
            if (!isRefused[file]) kept.push_back(std::move(_waiting[file]));
        _waiting = std::move(kept);
        takeBackAllBut({});
        return true;
    }

    /// `because`: the refused file that would have brought it. False when the models name nothing that is not there.
    bool tellMissing(const Imported& its, QorSeverity severity, const Imported* because = nullptr) {
        const std::string why =
            because == nullptr ? "which does not exist" : "of " + printable(because->file) + ", which was not taken in";
        bool isSome = false;
        for (const QorIdentifier model : its.result.models)
            for (const QorMissingTarget& missing : _session.reader().missingTargets(model)) {
                const std::string_view name = _session.reader().nameOf(missing.instance);
                QorFilePlace place = _importer.placeOf(missing.instance);
                if (place.file.empty() || place.file == its.path) place.file = its.file;
                _session.tell(
                    {severity, std::move(place),
                     fmt::format("{}{} names {}{} {}", name.empty() ? std::string() : cli::quoted(name) + ": ",
                                 cli::quoted(_session.reader().nameOf(missing.attribute)), missing.what,
                                 because == nullptr ? "," : "", why)});
                isSome = true;
            }
        return isSome;
    }

    bool read(Imported& imported) {
        const bool isGood = readInto(imported);
        (void)Qor_DiscardLibrary();  // it may be one that is taken back
        return isGood;
    }

    bool readInto(Imported& imported) {
        const std::string& file = imported.file;
        const std::string& path = imported.path;
        const QorFileKind kind = _importer.kindOf(path);
        QorIdentifier library = QorNoIdentifier;
        _before = holdings();
        if ((kind == QorFileKind::Models || kind == QorFileKind::Bpmn) && !findLibrary(kind, file, path, library))
            return false;
        imported.result = _importer.readFile(path, library);
        if (!tellAll(imported.result.diagnostics, file, path)) return false;
        imported.groups = holdings().groups.size() - _before.groups.size();
        if (imported.result.library != QorNoIdentifier)
            imported.library = _session.reader().nameOf(imported.result.library);
        bool isGood = true;
        for (const QorIdentifier model : imported.result.models) {
            imported.models.emplace_back(_session.reader().nameOf(model));
            isGood = checkBeforeSaving(file, model) && isGood;
        }
        return isGood;
    }

    [[nodiscard]] Holdings holdings() const {
        Holdings held{_session.reader().applicationLibraries(), {}};
        for (const QorIdentifier library : held.libraries)
            for (const QorModelGroupInfo& group : _session.reader().modelGroupsOf(library))
                held.groups.push_back(group.id);
        std::sort(held.libraries.begin(), held.libraries.end());
        std::sort(held.groups.begin(), held.groups.end());
        return held;
    }

    /// What was told when the file was first read is not told again.
    void tell(const QorDiagnostic& diagnostic) {
        if (!_isRepeating || _session.isNews(diagnostic.text)) _session.tell(diagnostic);
    }

    /// The repository's library for the models; it is read first when only a file has it.
    bool findLibrary(QorFileKind kind, const std::string& file, const std::string& path, QorIdentifier& library) {
        std::string reason;
        const std::string named = kind == QorFileKind::Bpmn ? shippedLibrary(kBpmnLibrary)
                                                            : InputFiles::resolved(_importer.libraryNamedBy(path));
        const std::string& wanted = _options.library;
        if (!wanted.empty() || named.empty()) {
            library = chooseLibrary(_session.reader(), wanted, reason);
            if (library != QorNoIdentifier) return true;
            if (wanted.empty()) reason += fmt::format(" for {}; give --library", cli::quoted(file));
            _session.error(_session.options.file, reason, wanted.empty() ? Exit::BadInput : Exit::WrongUse);
            return false;
        }
        // What the file calls its library is known only from reading it.
        QorEmbeddedPlatform scratch;
        QorImporter importer(scratch.builder(), scratch.reader());
        const QorImportResult found = importer.readFile(named, QorNoIdentifier);
        if (found.library != QorNoIdentifier)
            library = chooseLibrary(_session.reader(), std::string(scratch.reader().nameOf(found.library)), reason);
        if (library != QorNoIdentifier) return true;
        const QorImportResult read = _importer.readFile(named, QorNoIdentifier);
        library = read.library;
        return tellAll(read.diagnostics, file, named) && library != QorNoIdentifier;
    }

    /// False when there was an error among them.
    bool tellAll(std::vector<QorDiagnostic> diagnostics, const std::string& file, const std::string& path) {
        for (QorDiagnostic& diagnostic : diagnostics) {
            if (diagnostic.place.file == path && path.starts_with("/proc/self/fd/")) diagnostic.place.file = file;
            tell(diagnostic);
        }
        if (!hasErrors(diagnostics)) return true;
        _session.endAtLeast(Exit::BadInput);
        return false;
    }

    /// What the library asks for when a model is saved. A model that breaks a rule is not, unless it is to be kept;
    /// what a modelling action touched is told of only.
    bool checkBeforeSaving(const std::string& file, QorIdentifier model) {
        (void)Qor_LoadLibrary(nullptr, _session.reader().applicationLibraryOf(model), QorLibLoad_InitHandler::Wanted,
                              QorLibLoad_UpdateFacets::Declined, QorLibLoad_AccessMode::Shared,
                              QorLibLoad_SilentMode::Silent);
        QorCardinalityHandler& handler = QorCardinalityHandler::Instance();
        bool isClean = true;
        const auto tellBreach = [&](const QorCardinalityBreach& breach, bool isKept) {
            const bool hasPlace = !breach.objects.empty();
            QorFilePlace place;
            if (hasPlace) place = _importer.placeOf(static_cast<QorIdentifier>(breach.objects.front()));
            if (place.file.empty()) place = {file, 0, 0};
            std::string text = breach.text.str();
            text.erase(text.find_last_not_of('\n') + 1);
            tell({isKept ? QorSeverity::Warning : QorSeverity::Error, place,
                  fmt::format("model {}: {}", cli::quoted(_session.reader().nameOf(model)), text)});
            _session.endAtLeast(Exit::Findings);
            isClean = isClean && isKept;
            return true;
        };
        if (handler.isCheckCardinalitiesBeforeSave())
            (void)reportFirstBreach(model, [&](const auto& breach) { return tellBreach(breach, _options.keep); });
        // Everything in the model was touched by making it.
        if (isClean && handler.isCheckCardinalitiesAfterModelingAction() && !handler.isCheckCardinalitiesBeforeSave())
            (void)reportFirstBreach(model, [&](const auto& breach) { return tellBreach(breach, true); });
        return isClean;
    }

    void tellProblem() { (void)_session.tell(_session.platform().lastProblem(), _session.options.file); }

    void report(const Imported& imported) {
        if (_session.options.json) return;
        std::string text = printable(imported.file) + ": ";
        if (!imported.library.empty()) text += "library " + cli::quoted(imported.library);
        if (!imported.library.empty() && !imported.models.empty()) text += ", ";
        if (!imported.models.empty()) text += counted(imported.models.size(), "model");
        if (imported.library.empty() && imported.models.empty())
            text += imported.groups == 0 ? "nothing" : counted(imported.groups, "model group");
        _session.console.out(text + "\n");
        _session.console.flush();
    }

    RepoSession& _session;
    const RepoOptions& _options;
    QorCoreUnitsOfWork& _units;
    QorImporter _importer;
    QorCalledProcesses _calls;
    bool _hasCalls = false;
    InputFiles _inputs;
    std::vector<Imported> _imported;
    std::vector<Imported> _waiting;          ///< read, and kept together by the unit that is open
    Holdings _before;                        ///< before the file that was read last
    std::vector<QorIdentifier> _unresolved;  ///< models that name what is not there yet
    bool _isUnitOpen = false;
    bool _isRepeating = false;
};

/// What all inputs would meet when they are written.
bool isLocked(RepoSession& session) {
    for (const QorLibraryLock& lock : session.platform().libraryLocks()) {
        if (!lock.isAlive) continue;
        const QorIdentifier library = session.reader().applicationLibraryOf(lock.library);
        session.error(session.options.file,
                      fmt::format("the library {} is locked by {}", cli::quoted(session.reader().nameOf(library)),
                                  printable(Qor_LockHolderText(lock))),
                      Exit::Locked);
        return true;
    }
    return false;
}

/// Files in the order in which they are taken in. Libraries found in folders come first, since models there may name
/// them.
std::vector<std::string> inputsOf(RepoSession& session, const std::vector<std::string>& filesAndFolders) {
    QorImporter importer(session.platform().builder(), session.reader());
    std::vector<std::string> libraries;
    std::vector<std::string> others;
    const auto report = [&session](const std::string& folder, const std::string& problem) {
        session.error(folder, problem, Exit::BadInput);
    };
    for (const std::string& given : filesAndFolders) {
        bool isAny = false;
        const std::vector<FoundFile> files = findFiles({given}, report);
        for (const FoundFile& file : files) {
            const QorFileKind kind = isMeant(file) ? QorFileKind::Models : importer.kindOf(file.name);
            if (kind == QorFileKind::Unknown) continue;
            (kind == QorFileKind::Library ? libraries : others).push_back(file.name);
            isAny = true;
        }
        if (!isAny && !files.empty()) report(given, "the folder holds nothing to take in");
    }
    libraries.insert(libraries.end(), others.begin(), others.end());
    return libraries;
}

}  // namespace

void importInto(RepoSession& session, const RepoOptions& options) {
    if (isLocked(session)) return;
    Import import(session, options);
    session.console.progress().start();
    for (const std::string& file : inputsOf(session, options.inputs)) import.take(file);
    import.finish();
    import.linkCalls();
    if (!session.options.json) return;
    JsonWriter& json = session.beginJson();
    json.key("imported").beginList();
    for (const Imported& imported : import.imported()) {
        json.beginObject().field("file", std::string_view(imported.file)).key("library");
        if (imported.library.empty())
            json.null();
        else
            json.value(std::string_view(imported.library));
        json.key("models").beginList(JsonWriter::Layout::Line);
        for (const std::string& model : imported.models) json.value(std::string_view(model));
        json.endList().endObject();
    }
    json.endList();
}

}  // namespace qor::cli
