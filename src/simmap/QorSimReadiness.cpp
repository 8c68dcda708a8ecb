// SPDX-License-Identifier: Apache-2.0
#include "simmap/QorSimReadiness.h"

#include <map>
#include <set>
#include <utility>

#include "frame/RepositoryLookup.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreInterReferenceHandler.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreVar.h"
#include "platform/QorEditingHelpers.h"
#include "platform/QorGuard.h"
#include "platform/QorOwnedText.h"
#include "simmap/ReadinessReport.h"
#include "simmap/ResultHolders.h"
#include "simmap/SimulationUses.h"
#include "simmap/internalErrors.h"
#include "simmap/resetValue.h"

using namespace qor::simmap;
namespace frame = qor::frame;

namespace {

QorCoreModelingManager& repository() { return *QorCoreModelingManager::GetGlobal(); }

/// Ends a check: what the repository does not tell must not be reported as missing.
struct RepositoryFailed {};

void require(QorErrorCode code) {
    if (code != QorErrorCode::Ok && code != QorErrorCode::NoValue) throw RepositoryFailed();
}

QorCoreAttributeType typeOf(long attribute) {
    auto type = QorCoreAttributeType::None;
    require(repository().getUIAttributeType(attribute, type));
    return type;
}

/// The attributes of that type that the class's property sheet shows, and whether it shows any at all.
struct ShownAttributes {
    std::vector<long> found;
    bool showsAny = false;
};

ShownAttributes shownAttributes(long cls, QorCoreAttributeType type) {
    ShownAttributes shown;
    const QorBasicNotebookAttrHandler notebook(cls);
    SV::String name;
    for (unsigned long index = 0; notebook.GetAttr(index, name); ++index) {
        shown.showsAny = true;
        const auto attribute = frame::findAttribute(cls, name);
        if (!attribute) throw RepositoryFailed();
        if (typeOf(*attribute) == type) shown.found.push_back(*attribute);
    }
    return shown;
}

/// Where objects of the class say which model they call: the class's hierarchy attribute, else every attribute with
/// references to models.
ShownAttributes callingAttributes(long cls) {
    const auto name = frame::readText(cls, Qor_GetCoreVarConst(QorCoreVarType::HierarchyAttribute));
    if (name && !name->IsEmpty())
        if (const auto attribute = frame::findAttribute(cls, *name)) return {{*attribute}, true};
    return shownAttributes(cls, QorCoreAttributeType::InterReference);
}

bool callsModel(long model, long object, const std::vector<long>& attributes) {
    for (const long attribute : attributes) {
        QorCoreInterReferenceHandler references(model, object, attribute);
        require(references.initHandler());
        const bool isCall = attributes.size() == 1 || references.isModelReferenceMode();
        if (isCall && references.getInterReferenceCount() != 0) return true;
    }
    return false;
}

ISortedSet<long> withSubclasses(long cls) {
    ISortedSet<long> classes;
    if (cls != 0) require(repository().getAllSubClasses(cls, classes));
    classes.add(cls);
    return classes;
}

bool hasValue(long object, long attribute) {
    QorOwnedText text;
    require(repository().getAttributeValueAsNewChar(object, attribute, text.out()));
    return !text.isEmpty();
}

bool hasAnyValue(long object, const std::vector<long>& attributes) {
    for (const long attribute : attributes)
        if (hasValue(object, attribute)) return true;
    return false;
}

/// A time that is set and not zero. What an expression gives is known only when the simulation runs.
bool hasTime(long object, long attribute, QorCoreAttributeType type) {
    if (type == QorCoreAttributeType::Expression) return true;
    QorOwnedText text;
    require(repository().getAttributeValue(object, attribute, text.out(), true));
    return !text.isEmpty() && text.view() != resetText(QorCoreAttributeType::Time);
}

bool hasRelations(long object) {
    ISortedSet<long> relations;
    require(repository().getFromRelationInstances(object, relations));
    if (!relations.isEmpty()) return true;
    require(repository().getToRelationInstances(object, relations));
    return !relations.isEmpty();
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
            long cls = 0;
            require(repository().GetClassOfInstance(object, cls));
            if (!calls.contains(cls) && !hasTime(object, attribute, type))
                _report.aboutObject(QorSimReadinessIssue::NoExecutionTime, option, model, object, attribute);
        });
    }

    void checkCalls(long cls, int option) {
        const auto attributes = callingAttributes(cls);
        if (attributes.found.empty()) {
            if (attributes.showsAny) _report.aboutClass(QorSimReadinessIssue::CannotCallModel, option, cls);
            return;
        }
        eachObject(cls, [&](long model, long object) {
            if (!callsModel(model, object, attributes.found))
                _report.aboutObject(QorSimReadinessIssue::CallsNoModel, option, model, object);
        });
    }

    void checkTypes() {
        for (const auto& use : _uses)
            if (use.attribute != 0 && !canHold(use, typeOf(use.attribute))) _report.typeDoesNotFit(use);
    }

    void checkPerformers() {
        const auto& person = _results.holders()[static_cast<std::size_t>(QorSimResultAttributeType::Person)];
        if (person.cls == 0) return;
        const auto calendars = shownAttributes(person.cls, QorCoreAttributeType::Calendar);
        if (calendars.found.empty() && calendars.showsAny)
            _report.aboutClass(QorSimReadinessIssue::CannotHaveCalendar, -1, person.cls);
        const auto named = namesReferredTo();
        eachObject(person.cls, [&](long model, long object) {
            if (!calendars.found.empty() && !hasAnyValue(object, calendars.found))
                _report.aboutObject(QorSimReadinessIssue::HasNoCalendar, -1, model, object);
            const auto name = frame::readText(object, QorAttributeId::Name);
            if (!name) throw RepositoryFailed();
            if (!hasRelations(object) && !named.contains(*name))
                _report.aboutObject(QorSimReadinessIssue::IsNotAssigned, -1, model, object);
        });
    }

    /// The objects that references of the models lead to, by name: references carry names only.
    std::set<SV::String> namesReferredTo() {
        std::set<SV::String> names;
        for (const long model : _models) {
            QorSourceInterRefContainer references;
            require(repository().getInterRefsOfSourceModel(model, references));
            for (unsigned long index = 0; index < references.numberOfElements(); ++index)
                names.insert(references.elementAtIndex(index).objectName);
        }
        return names;
    }

    void checkClasses() {
        const auto known = knownClasses();
        for (const long model : _models) {
            ISortedSet<long> objects;
            require(repository().getAllInstancesInModel(model, objects));
            std::map<long, unsigned long> strangers;
            for (const long object : objects) {
                long cls = 0;
                require(repository().GetClassOfInstance(object, cls));
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
