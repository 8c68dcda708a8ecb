// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "cli/Exit.h"
#include "cli/InternalErrors.h"
#include "cli/ModelSet.h"
#include "modeltools/QorNamePlan.h"
#include "modeltools/QorReferenceIndex.h"

namespace qor::cli {

/// A reference to an object that gets another name.
struct LostReference {
    QorModelReference reference;
    std::string oldName;
    std::string newName;
};

/// What naming does to the models of a set, and doing it.
class RenameView {
public:
    explicit RenameView(const ModelSet& set) : _set(set) {}

    /// Plans the naming of the models of these names; none given: of all that have objects to be named. False when
    /// memory ran out.
    [[nodiscard]] bool make(const std::vector<std::string>& names);

    /// Gives the planned names, all of them or none. When a model was not named as planned, an internal error; when the
    /// repository file did not take the names, the reason in `problem`.
    [[nodiscard]] Exit carryOut(const InternalErrors& internalErrors, std::string& problem);
    [[nodiscard]] bool isCarriedOut() const { return _carriedOut; }

    [[nodiscard]] const ModelSet& set() const { return _set; }
    [[nodiscard]] const std::vector<std::pair<long, QorNamePlan>>& plans() const { return _plans; }
    /// Of rules, each once, and of values that cannot be read.
    [[nodiscard]] const std::vector<QorDiagnostic>& errors() const { return _errors; }
    [[nodiscard]] const std::vector<LostReference>& lost() const { return _lost; }
    [[nodiscard]] std::string nameOf(long id) const;

private:
    void addErrors(const QorNamePlan& plan, long model);
    [[nodiscard]] bool findLost();
    [[nodiscard]] Exit exitOfProblem(std::string& problem) const;
    [[nodiscard]] bool allHaveNewNames() const;

    const ModelSet& _set;
    std::vector<std::pair<long, QorNamePlan>> _plans;
    std::map<long, std::string> _newNames;
    std::set<QorIdentifier> _toldClasses;
    std::vector<QorDiagnostic> _errors;
    std::vector<LostReference> _lost;
    bool _carriedOut = false;
};

}  // namespace qor::cli
