// SPDX-License-Identifier: Apache-2.0
#include "modeltools/QorNamePlan.h"

#include <utility>

#include "modeltools/NamingClasses.h"
#include "modeltools/NamingRun.h"
#include "modeltools/PlannedGround.h"
#include "platform/QorGuard.h"
#include "platform/QorModelTypeAttrHandler.h"

using namespace qor::modeltools;

namespace {

/// Writes down what happens in a run.
class WrittenReport final : public NamingReport {
public:
    WrittenReport(std::vector<QorNameChange>& changes, std::vector<QorNameProblem>& problems, std::size_t* kept)
        : _changes(changes), _problems(problems), _kept(kept) {}
    ~WrittenReport() override = default;

    void faulty(NamingRuleFault fault, const QorKexParser& parser, const NamingRule& rule) override {
        QorNameProblem problem;
        problem.cls = rule.cls;
        problem.position = fault == NamingRuleFault::Syntax          ? parser.GetErrorPosition()
                           : fault == NamingRuleFault::UnknownSource ? parser.GetKeyPosition(kSourceKey)
                                                                     : parser.GetCurElemPosition();
        problem.text = fault == NamingRuleFault::Syntax ? parser.GetErrorReason() : textOf(fault, parser, rule);
        _problems.push_back(std::move(problem));
    }
    void failed(NamingLine line, long cls, long object) override {
        QorNameProblem problem;
        problem.cls = cls;
        problem.object = object;
        problem.line = static_cast<long>(line);
        _problems.push_back(std::move(problem));
    }
    void changed(QorNameChange change) override { _changes.push_back(std::move(change)); }
    void kept(QorNameKept why, long) override { ++_kept[static_cast<std::size_t>(why)]; }

private:
    std::vector<QorNameChange>& _changes;
    std::vector<QorNameProblem>& _problems;
    std::size_t* _kept;
};

}  // namespace

QorNamePlan::QorNamePlan(long model) : _model(model) {}
QorNamePlan::~QorNamePlan() = default;

void QorNamePlan::clear() noexcept {
    _changes.clear();
    _problems.clear();
    for (std::size_t& count : _kept) count = 0;
}

bool QorNamePlan::make() noexcept {
    clear();
    const bool made = Qor_Guarded(kNamingSource, false, [this] {
        unsigned long modelType = 0;
        if (QorModelTypeAttrHandler::GetGlobal()->GetModelTypeIndexOfModel(_model, modelType) != QorErrorCode::Ok)
            return true;
        PlannedGround ground(_model);
        WrittenReport report(_changes, _problems, _kept);
        forEachNamingClass(modelType, [&](long cls, long attribute) {
            NamingRun(_model, cls, ground, report).run(attribute, objectsOf(_model, cls));
            return true;
        });
        return true;
    });
    if (!made) clear();
    return made;
}
