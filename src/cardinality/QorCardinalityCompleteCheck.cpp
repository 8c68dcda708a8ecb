// SPDX-License-Identifier: Apache-2.0
#include "cardinality/QorCardinalityCompleteCheck.h"

#include "cardinality/ObjectBlocks.h"
#include "cardinality/ObjectTests.h"
#include "cardinality/QorCardinalityHandler.h"
#include "cardinality/breaches.h"
#include "cardinality/repository.h"
#include "platform/QorGuard.h"
#include "platform/SvWindow.h"

using namespace qor::cardinality;

namespace {

/// Hands every breach to the sink until the sink has enough.
class CompleteRun final : private TestObserver {
public:
    using Sink = QorCardinalityCompleteCheck::Sink;

    CompleteRun(ClassPlans& plans, const Sink& sink) : _plans(plans), _sink(sink), _tests(plans) {}
    CompleteRun(const CompleteRun&) = delete;
    CompleteRun& operator=(const CompleteRun&) = delete;
    ~CompleteRun() override = default;

    Outcome checkModel(long model) {
        const auto objects = checkObjects(model);
        return objects == Outcome::Completed ? checkClasses(model) : objects;
    }

    Outcome checkObject(long object) { return _object.open(object) ? _tests.test(_object, *this) : Outcome::Failed; }

private:
    Outcome checkObjects(long model) {
        ISortedSet<long> objects;
        if (!succeeded(Request::ObjectsOfModel, repository().getAllInstancesInModel(model, objects)))
            return Outcome::Failed;
        auto* const view = repository().bulkView();
        if (view == nullptr && !readAhead(objects)) return Outcome::Failed;
        ObjectBlocks blocks({objects.begin(), objects.end()}, view);
        for (auto block = blocks.next(); !block.objects.empty(); block = blocks.next())
            for (std::size_t at = 0; at < block.objects.size(); ++at) {
                if (at < block.views.size() && _tests.planKept(block.views[at]) != nullptr) continue;
                const auto outcome = checkObject(block.objects[at]);
                if (outcome != Outcome::Completed) return outcome;
            }
        return Outcome::Completed;
    }

    /// Of classes without rules nothing is read.
    bool readAhead(const ISortedSet<long>& objects) {
        std::vector<long> withRules;
        withRules.reserve(objects.numberOfElements());
        _object.expect(objects.numberOfElements());
        for (const long object : objects) {
            if (!_object.open(object)) return false;
            if (_plans.of(_object.cls()).rules != nullptr) withRules.push_back(object);
        }
        return _object.readAhead(withRules);
    }

    Outcome checkClasses(long model) {
        ISortedSet<long> classes;
        if (!visibleClasses(model, classes)) return Outcome::Failed;
        for (const long cls : classes) {
            const auto key = Qor_NarrowIdentifier(cls);
            const auto* rules = key ? _plans.rules().find(*key) : nullptr;
            if (rules == nullptr) continue;
            const auto outcome = testClass(*rules, model, true, true, _sink);
            if (outcome != Outcome::Completed) return outcome;
        }
        return Outcome::Completed;
    }

    bool breached(ObjectRelations& object, const Finding& finding) override { return _sink(breachOf(object, finding)); }

    ClassPlans& _plans;
    const Sink& _sink;
    ObjectTests _tests;
    ObjectRelations _object;
};

}  // namespace

QorCardinalityCompleteCheck::QorCardinalityCompleteCheck(const QorCardinalityHandler& handler) : _handler(handler) {}
QorCardinalityCompleteCheck::~QorCardinalityCompleteCheck() = default;

bool QorCardinalityCompleteCheck::checkModel(long model, const Sink& sink) {
    const QorWaitCursor wait;
    return Qor_Guarded(kSource, false,
                       [&] { return CompleteRun(_handler.plans(), sink).checkModel(model) != Outcome::Failed; });
}

bool QorCardinalityCompleteCheck::checkObject(long object, const Sink& sink) {
    const QorWaitCursor wait;
    return Qor_Guarded(kSource, false,
                       [&] { return CompleteRun(_handler.plans(), sink).checkObject(object) != Outcome::Failed; });
}
