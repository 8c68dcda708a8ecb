// SPDX-License-Identifier: Apache-2.0
#include "simmap/QorSimReadiness.h"

#include <map>

#include "frame/RepositoryLookup.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorGuard.h"
#include "platform/QorOwnedText.h"
#include "simmap/CalledModels.h"
#include "simmap/ReadinessQueries.h"
#include "simmap/ReadinessReport.h"
#include "simmap/ReferredObjects.h"
#include "simmap/ResultHolders.h"
#include "simmap/SimulationUses.h"
#include "simmap/internalErrors.h"
#include "simmap/resetValue.h"

using namespace qor::simmap;
namespace frame = qor::frame;

namespace {

QorCoreModelingManager& repository() { return *QorCoreModelingManager::GetGlobal(); }

std::vector<long> calendarAttributes(long cls) { return shownAttributes(cls, QorCoreAttributeType::Calendar); }

bool hasAnyValue(long object, const std::vector<long>& attributes) {
    for (const long attribute : attributes)
        if (hasValue(object, attribute)) return true;
    return false;
}

/// A time that is set and not zero. What an expression gives is known only when the simulation runs.
bool hasTime(long object, long attribute, QorCoreAttributeType type) {
    if (type == QorCoreAttributeType::Expression) return hasValue(object, attribute);
    QorOwnedText text;
    require(repository().getAttributeValue(object, attribute, text.out(), true));
    return !text.isEmpty() && text.view() != resetText(QorCoreAttributeType::Time);
}

/// One check: definitions and models go in, uses and findings come out.
class Check {
public:
    Check(long library, QorSimMappingHandler& mapping, const QorSimResultDefinitions& results,
          const ISortedSet<long>& models, std::vector<QorSimUse>& uses, ReadinessReport report)
        : _library(library), _mapping(mapping), _results(results), _models(models), _uses(uses), _report(report) {}

    void run(int first, int last) {
        for (int index = first; index < last; ++index) checkOption(*_mapping.option(index), index);
        for (const auto& holder : _results.holders()) collectUses(holder, _uses);
        checkTypes();
        checkPerformers();
        checkClasses();
    }

private:
    void checkOption(const QorSimulationOption& option, int index) {
        collectUses(_library, option, index, _uses);
        const long activity = frame::findClass(_library, option.activityClassName).value_or(0);
        if (activity == 0) return;  // the built-in option simulates nothing in particular
        if (const long time = option.standardAttributes.elementAtIndex(0); time == 0)
            _report.noExecutionTimeNamed(option, index);
        else
            checkTimes(activity, time, option.processCallClass, index);
        if (option.processCallClass != 0) checkCalls(option.processCallClass, index);
    }

    /// A process call takes as long as what it calls.
    void checkTimes(long activity, long attribute, long processCall, int option) {
        const auto type = typeOf(attribute);
        const auto calls = withSubclasses(processCall);
        eachObject(activity, [&](long model, long object) {
            if (!calls.contains(classOf(object)) && !hasTime(object, attribute, type))
                _report.aboutObject(QorSimReadinessIssue::NoExecutionTime, option, model, object, attribute);
        });
    }

    void checkCalls(long cls, int option) {
        AttributesByClass attributes(callingAttributes);
        for (const long lacking : attributes.lackingFrom(cls))
            _report.aboutClass(QorSimReadinessIssue::CannotCallModel, option, lacking);
        eachObject(cls, [&](long model, long object) {
            const auto& calling = attributes.of(classOf(object));
            if (calling.empty()) return;
            const CalledModels called = calledModels(model, object, calling);
            if (!called.any)
                _report.aboutObject(QorSimReadinessIssue::CallsNoModel, option, model, object);
            else if (!called.found)
                _report.calledModelIsMissing(option, model, object, called);
        });
    }

    void checkTypes() {
        for (const auto& use : _uses)
            if (use.attribute != 0 && !canHold(use, typeOf(use.attribute))) _report.typeDoesNotFit(use);
    }

    void checkPerformers() {
        const auto& person = _results.holders()[static_cast<std::size_t>(QorSimResultAttributeType::Person)];
        if (person.cls == 0) {
            if (!_models.isEmpty()) _report.performersAreUnknown();
            return;
        }
        AttributesByClass calendars(calendarAttributes);
        for (const long lacking : calendars.lackingFrom(person.cls))
            _report.aboutClass(QorSimReadinessIssue::CannotHaveCalendar, -1, lacking);
        ReferredObjects referred(_models);
        eachObject(person.cls, [&](long model, long object) {
            const long cls = classOf(object);
            const auto& attributes = calendars.of(cls);
            if (!attributes.empty() && !hasAnyValue(object, attributes))
                _report.aboutObject(QorSimReadinessIssue::HasNoCalendar, -1, model, object);
            if (!hasRelations(object) && !referred.contain(model, cls, nameOf(object)))
                _report.aboutObject(QorSimReadinessIssue::IsNotAssigned, -1, model, object);
        });
    }

    void checkClasses() {
        const auto known = knownClasses();
        for (const long model : _models) {
            ISortedSet<long> objects;
            require(repository().getAllInstancesInModel(model, objects));
            std::map<long, unsigned long> strangers;
            for (const long object : objects) {
                const long cls = classOf(object);
                if (!known.contains(cls)) ++strangers[cls];
            }
            for (const auto& [cls, count] : strangers) _report.classTakesNoPart(cls, model, count);
        }
    }

    /// Everything that may be simulated or that a definition names, with the subclasses.
    ISortedSet<long> knownClasses() {
        ISortedSet<long> known;
        ISortedSet<long> workingEnvironment;
        _mapping.getSimableBPClasses(known);
        _mapping.getSimableWEClasses(workingEnvironment);
        known.addAllFrom(workingEnvironment);
        ISortedSet<long> used;
        for (const auto& use : _uses) used.add(use.cls);
        for (const long cls : used) known.addAllFrom(withSubclasses(cls));
        return known;
    }

    template <class Visit>
    void eachObject(long cls, Visit visit) {
        for (const long model : _models) {
            ISortedSet<long> objects;
            require(repository().getAllInstancesOfClassAndSubClassInModel(model, cls, objects, true));
            for (const long object : objects) visit(model, object);
        }
    }

    long _library;
    QorSimMappingHandler& _mapping;
    const QorSimResultDefinitions& _results;
    const ISortedSet<long>& _models;
    std::vector<QorSimUse>& _uses;
    ReadinessReport _report;
};

}  // namespace

QorSimReadiness::QorSimReadiness() noexcept = default;
QorSimReadiness::~QorSimReadiness() = default;

bool QorSimReadiness::check(long library, QorSimMappingHandler& mapping, const QorSimResultDefinitions& results,
                            int option, const ISortedSet<long>& models) noexcept {
    return Qor_Guarded(kMappingSource, false, [&] {
        _uses.clear();
        _findings.clear();
        if (results.holders().size() != resultHolders().size()) return false;  // there was no memory for them
        mapping.isDefined();                                                   // reads the text when nobody has yet
        const int count = mapping.getSimOptionCount();
        if (option != kAllOptions && (option < 0 || option >= count)) return false;
        const int first = option == kAllOptions ? 0 : option;
        const int last = option == kAllOptions ? count : option + 1;
        try {
            Check(library, mapping, results, models, _uses, ReadinessReport(_findings)).run(first, last);
            return true;
        } catch (const RepositoryFailed&) {
            return false;
        }
    });
}
