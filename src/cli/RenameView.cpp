// SPDX-License-Identifier: Apache-2.0
#include "cli/RenameView.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/RepositoryFiles.h"
#include "cli/Text.h"
#include "modeltools/QorNameGenerator.h"
#include "platform/QorCoreUnitsOfWork.h"

namespace qor::cli {

bool RenameView::make(const std::vector<std::string>& names) {
    const std::set<std::string> wanted(names.begin(), names.end());
    for (const long model : _set.models()) {
        const bool isMeant =
            wanted.empty() ? QorNameGenerator(model).IsNameGenDefined() : wanted.contains(nameOf(model));
        if (!isMeant) continue;
        QorNamePlan plan(model);
        if (!plan.make()) return false;
        for (const QorNameChange& change : plan.changes()) _newNames[change.object] = change.newName.str();
        addErrors(plan, model);
        _plans.emplace_back(model, std::move(plan));
    }
    return findLost();
}

void RenameView::addErrors(const QorNamePlan& plan, long model) {
    Workspace& workspace = *_set.workspace();
    for (const QorNameProblem& problem : plan.problems()) {
        const auto cls = static_cast<QorIdentifier>(problem.cls);
        if (problem.object > 0) {
            _errors.push_back({QorSeverity::Error, _set.placeOf(model, problem.object),
                               fmt::format("object {}: no name can be made (anamegen, line {})",
                                           quoted(nameOf(problem.object)), problem.line)});
        } else if (_toldClasses.insert(cls).second) {
            const QorIdentifier attribute =
                workspace.reader().findAttribute(cls, QorNameGenerator::GetNameGenAttrName());
            const QorImporter& importer = workspace.libraryImporter();
            QorFilePlace place = importer.placeInText(cls, attribute, problem.position);
            std::string where;
            if (place.file.empty()) {
                place.file = workspace.libraryPath();
                where =
                    fmt::format(" (line {}, column {} of the rule)", problem.position.line, problem.position.column);
            }
            _errors.push_back({QorSeverity::Error, std::move(place),
                               fmt::format("class {}: its objects are not named: {}{}", quoted(nameOf(cls)),
                                           importer.messageInFile(cls, attribute, problem.text.view()), where)});
        }
    }
}

/// References carry names, so that those to a renamed object lead nowhere.
bool RenameView::findLost() {
    if (_newNames.empty()) return true;
    QorReferenceIndex index;
    if (!index.build(_set.models())) return false;
    for (const long model : _set.models())
        for (const QorModelReference& reference : index.referencesOf(model))
            if (const auto renamed = _newNames.find(reference.object); renamed != _newNames.end())
                _lost.push_back({reference, nameOf(reference.object), renamed->second});
    return true;
}

Exit RenameView::carryOut(const InternalErrors& internalErrors, std::string& problem) {
    if (!_newNames.empty()) {
        QorUnitOfWork unit;
        if (!unit.isOpen()) return exitOfProblem(problem);
        for (const auto& [model, plan] : _plans)
            if (!plan.changes().empty()) QorNameGenerator(model).Execute();
        if (internalErrors.count() != 0 || !allHaveNewNames()) return Exit::Internal;
        if (unit.commit() != QorErrorCode::Ok) return exitOfProblem(problem);
    }
    _carriedOut = true;
    return Exit::Clean;
}

bool RenameView::allHaveNewNames() const {
    return std::all_of(_newNames.begin(), _newNames.end(),
                       [this](const auto& renamed) { return nameOf(renamed.first) == renamed.second; });
}

Exit RenameView::exitOfProblem(std::string& problem) const {
    const QorRepositoryResult& last = _set.workspace()->lastProblem();
    problem = last.ok() ? "the repository took no change" : Qor_RepositoryStatusText(last.status);
    return last.ok() ? Exit::WriteFailed : exitOf(last.status);
}

std::string RenameView::nameOf(long id) const {
    return std::string(_set.workspace()->reader().nameOf(static_cast<QorIdentifier>(id)));
}

}  // namespace qor::cli
