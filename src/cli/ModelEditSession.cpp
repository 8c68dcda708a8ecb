// SPDX-License-Identifier: Apache-2.0
#include "cli/ModelEditSession.h"

#include <fmt/format.h>

#include <set>
#include <vector>

#include "cli/Nearest.h"
#include "cli/RepositoryFiles.h"
#include "cli/Text.h"

namespace qor::cli {

std::string ModelEditSession::objectText(long object) const {
    return fmt::format("{} {}", printable(nameOf(reader().classOfObject(static_cast<QorIdentifier>(object)))),
                       quoted(nameOf(object)));
}

Exit ModelEditSession::open() {
    Exit exit = openFile();
    if (exit == Exit::Clean) exit = loadNamedLibrary();
    return exit == Exit::Clean ? findModel() : exit;
}

Exit ModelEditSession::loadNamedLibrary() {
    std::string reason;
    _library = chooseLibrary(reader(), libraryName(), reason);
    if (_library == QorNoIdentifier) return fileError(reason, Exit::WrongUse);
    return loadLibrary(_library, QorLibLoad_InitHandler::Wanted);
}

Exit ModelEditSession::findModel() {
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
const std::multimap<std::string, QorIdentifier>& ModelEditSession::objectsByName() {
    if (!_objects.empty()) return _objects;
    for (const QorIdentifier object : reader().objectsOf(_model)) {
        const std::string name = nameOf(object);
        _objects.emplace(nameOf(reader().classOfObject(object)) + ":" + name, object);
        _objects.emplace(name, object);
    }
    return _objects;
}

QorIdentifier ModelEditSession::findObject(const std::string& given) {
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

std::optional<ISortedSet<long>> ModelEditSession::findObjects(const std::vector<std::string>& given) {
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

}  // namespace qor::cli
