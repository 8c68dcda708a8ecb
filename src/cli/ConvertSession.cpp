// SPDX-License-Identifier: Apache-2.0
#include "cli/ConvertSession.h"

#include <fmt/format.h>

#include <set>
#include <vector>

#include "cli/Nearest.h"
#include "cli/RepositoryFiles.h"
#include "cli/Text.h"
#include "frame/QorLibLoad.h"
#include "platform/QorCoreVar.h"

namespace qor::cli {

ConvertSession::ConvertSession(const ModelEditOptions& options, Console& console)
    : _options(options),
      _console(console),
      _internalErrors(console),
      _platform({.language = options.language, .console = false, .user = options.user}),
      _host(_platform.host()) {
    _host.windows = &_internalErrors.windows();
    _installation.emplace(_host);
}

ConvertSession::~ConvertSession() {
    (void)Qor_DiscardLibrary();  // the platform goes with it
    _installation.reset();
}

void ConvertSession::error(std::string_view why) const {
    _console.err(fmt::format("qor: {} {}\n", _console.errColours().error("error:"), why));
}

std::string ConvertSession::nameOf(long id) const {
    return std::string(reader().nameOf(static_cast<QorIdentifier>(id)));
}

std::string ConvertSession::objectText(long object) const {
    return fmt::format("{} {}", printable(nameOf(reader().classOfObject(static_cast<QorIdentifier>(object)))),
                       quoted(nameOf(object)));
}

Exit ConvertSession::open() {
    for (const auto step : {&ConvertSession::openFile, &ConvertSession::loadLibrary, &ConvertSession::findModel})
        if (const Exit exit = (this->*step)(); exit != Exit::Clean) return exit;
    return Exit::Clean;
}

Exit ConvertSession::openFile() {
    const RepositoryName named = repositoryNamed(_options.file);
    _file = named.file.empty() ? _options.file : named.file;
    _libraryName = named.library;
    const auto opened =
        _platform.openRepository(_file, _options.dryRun ? QorRepositoryAccess::Copy : QorRepositoryAccess::ReadWrite);
    if (!opened.ok()) {
        error(fmt::format("{}: {}", printable(_file),
                          opened.text.empty() ? Qor_RepositoryStatusText(opened.status) : opened.text));
        for (const std::string& finding : opened.findings) error(printable(finding));
        return exitOf(opened.status);
    }
    if (_options.dryRun || !_platform.isRepositoryReadOnly()) return Exit::Clean;
    error(fmt::format("{}: {}", printable(_file), Qor_RepositoryStatusText(QorRepositoryStatus::ReadOnly)));
    return Exit::WriteFailed;
}

Exit ConvertSession::loadLibrary() {
    std::string reason;
    _library = chooseLibrary(reader(), _libraryName, reason);
    if (_library == QorNoIdentifier) {
        error(fmt::format("{}: {}", printable(_file), reason));
        return Exit::WrongUse;
    }
    // Errors in its rules are what `qor rules` tells of; those that can be read are in force.
    const auto access = _options.dryRun ? QorLibLoad_AccessMode::Shared : QorLibLoad_AccessMode::Exclusive;
    const QorErrorCode loaded =
        Qor_LoadLibrary(nullptr, _library, QorLibLoad_InitHandler::Wanted, QorLibLoad_UpdateFacets::Declined, access,
                        QorLibLoad_SilentMode::Silent);
    if (const QorRepositoryResult problem = lockProblem(_platform, loaded); !problem.ok()) {
        error(fmt::format("{}: {}", printable(_file), problemText(problem)));
        return exitOf(problem.status);
    }
    for (const std::string& text : locksTakenOver(_platform))
        _console.err(
            fmt::format("qor: {} {}: {}\n", _console.errColours().warning("warning:"), printable(_file), text));
    if (Qor_GetCoreVarConst(QorCoreVarType::ApplicationLibrary) == _library) return Exit::Clean;
    error(fmt::format("{}: the library {} cannot be loaded", printable(_file), quoted(reader().nameOf(_library))));
    return Exit::Locked;
}

Exit ConvertSession::findModel() {
    const auto models = reader().modelsOf(_library);
    std::vector<std::string> names;
    std::size_t found = 0;
    for (const QorModelInfo& model : models) {
        names.emplace_back(model.name);
        if (!_options.model.empty() && model.name != _options.model) continue;
        _model = model.id;
        ++found;
    }
    if (found == 1) return Exit::Clean;
    if (found > 1)
        error(_options.model.empty() ? "there are several models; give --model NAME"
                                     : fmt::format("several models have the name {}", quoted(_options.model)));
    else
        error(_options.model.empty()
                  ? "there is no model"
                  : fmt::format("there is no model {}{}", quoted(_options.model), didYouMean(_options.model, names)));
    return Exit::WrongUse;
}

/// Made by the first question, so that many names cost one look at the model.
const std::multimap<std::string, QorIdentifier>& ConvertSession::objectsByName() const {
    if (!_objects.empty()) return _objects;
    for (const QorIdentifier object : reader().objectsOf(_model)) {
        const std::string name = nameOf(object);
        _objects.emplace(nameOf(reader().classOfObject(object)) + ":" + name, object);
        _objects.emplace(name, object);
    }
    return _objects;
}

QorIdentifier ConvertSession::findObject(const std::string& given) const {
    const auto& objects = objectsByName();
    const auto [first, last] = objects.equal_range(given);
    std::set<QorIdentifier> found;
    for (auto it = first; it != last; ++it) found.insert(it->second);
    if (found.size() == 1) return *found.begin();
    if (found.empty()) {
        std::vector<std::string> names;
        for (const QorIdentifier object : reader().objectsOf(_model)) names.push_back(nameOf(object));
        error(fmt::format("there is no object {}{}", quoted(given), didYouMean(given, names)));
    } else {
        error(fmt::format("{} are called {}; write CLASS:NAME", counted(found.size(), "object"), quoted(given)));
    }
    return QorNoIdentifier;
}

std::optional<ISortedSet<long>> ConvertSession::findObjects(const std::vector<std::string>& given) const {
    ISortedSet<long> objects;
    bool all = true;
    for (const std::string& name : given) {
        const QorIdentifier object = findObject(name);
        if (object == QorNoIdentifier)
            all = false;
        else
            objects.add(object);
    }
    if (!all) return std::nullopt;
    return objects;
}

Exit ConvertSession::notWritten() const {
    const QorRepositoryResult& problem = _platform.lastProblem();
    error(fmt::format("{}: nothing was changed: {}", printable(_file),
                      problem.ok() ? "the repository took no change" : problemText(problem)));
    return problem.ok() ? Exit::WriteFailed : exitOf(problem.status);
}

}  // namespace qor::cli
