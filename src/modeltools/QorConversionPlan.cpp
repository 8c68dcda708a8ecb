// SPDX-License-Identifier: Apache-2.0
#include "modeltools/QorConversionPlan.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include "cardinality/QorCardinalityHandler.h"
#include "frame/RepositoryLookup.h"
#include "modeltools/ConversionNames.h"
#include "modeltools/ObjectConversion.h"
#include "modeltools/QorReferenceIndex.h"
#include "modeltools/ValueCopy.h"
#include "modeltools/internalErrors.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreUnitsOfWork.h"
#include "platform/QorGuard.h"

using namespace qor::modeltools;
using ProblemKind = QorConversionProblemKind;

struct QorConversionPlan::Kind {
    std::vector<ConvertedValue> values;
    std::size_t firstAttribute = 0;  ///< of the plan's attributes
    std::size_t endAttribute = 0;
    std::vector<QorCoreAttributeType> types;  ///< of each of those attributes
};

namespace {

QorCoreModelingManager& repository() { return *QorCoreModelingManager::GetGlobal(); }

/// What tells one broken rule from another.
using BreachKey = std::tuple<bool, long, long, std::string_view, long, long>;

BreachKey keyOf(const QorCardinalityBreach& breach, long subject) {
    return {breach.subjectIsClass, subject, breach.rule.cls, breach.rule.key, breach.rule.relationClass,
            breach.rule.otherClass};
}

/// Whether the object holds a value; nothing when the repository fails.
std::optional<bool> hasValue(long object, long attribute, QorCoreAttributeType type) {
    if (type == QorCoreAttributeType::Record) {
        ISequence<long> rows;
        if (repository().getRecordInstances(object, attribute, rows) != QorErrorCode::Ok) return std::nullopt;
        return !rows.isEmpty();
    }
    QorOwnedText text;
    if (readValueOrEmpty(object, attribute, text) != QorErrorCode::Ok) return std::nullopt;
    return !text.isEmpty();
}

}  // namespace

QorConversionPlan::QorConversionPlan() noexcept = default;
QorConversionPlan::~QorConversionPlan() = default;

void QorConversionPlan::clear() noexcept {
    _kinds.reset();
    _objects.clear();
    _attributes.clear();
    _problems.clear();
    _lostRelations.clear();
    _lostReferences.clear();
    _breaches.clear();
    _isReady = false;
}

void QorConversionPlan::add(ProblemKind kind, long object, QorErrorCode code, SV::String text) {
    QorConversionProblem problem;
    problem.kind = kind;
    problem.object = object;
    problem.code = code;
    problem.text = std::move(text);
    _problems.push_back(std::move(problem));
}

bool QorConversionPlan::make(long model, const ISortedSet<long>& objects, long targetClass,
                             const ISortedSet<long>& others) noexcept {
    clear();
    const bool made = Qor_Guarded(kConversionSource, false, [&] {
        _model = model;
        _targetClass = targetClass;
        _kinds = std::make_unique<Kinds>();
        survey(objects);
        if (!_objects.empty()) noteLostReferences(objects, others);
        if (_problems.empty()) rehearse();
        return true;
    });
    if (!made) clear();
    _isReady = made && _problems.empty();
    return _isReady;
}

// ---- What there is ----

void QorConversionPlan::survey(const ISortedSet<long>& objects) {
    ISortedSet<long> inModel;
    const UnmovedRelationClasses staying;
    const QorErrorCode code = repository().getAllInstancesInModel(_model, inModel);
    if (code != QorErrorCode::Ok && code != QorErrorCode::NotFound)
        return add(ProblemKind::Failed, QorNoIdentifier, code);
    for (const long object : objects) {
        if (!inModel.contains(object)) {
            add(ProblemKind::UnknownObject, object);
            continue;
        }
        long cls = QorNoIdentifier;
        if (const QorErrorCode its = repository().GetClassOfInstance(object, cls); its != QorErrorCode::Ok) {
            add(ProblemKind::Failed, object, its);
            continue;
        }
        _objects.push_back({object, cls});
        if (_kinds->find(cls) == _kinds->end()) surveyClass(cls, object);
        countValues(cls, object);
        if (staying.any()) noteLostRelations(object, staying);
    }
}

void QorConversionPlan::surveyClass(long cls, long object) {
    QorConversionHandler handler(cls);
    if (const long code = handler.Init(nullptr); code != 0)
        add(handler.GetErrorText().IsEmpty() ? ProblemKind::Failed : ProblemKind::WrongText, object,
            static_cast<QorErrorCode>(code), handler.GetErrorText());
    else if (handler.isWithoutConversion())
        add(ProblemKind::NoConversions, object);
    else if (handler.conversionInto(_targetClass) == nullptr)
        add(ProblemKind::NotIntoClass, object);

    Kind kind;
    if (const QorErrorCode code = findConvertedValues(handler, _targetClass, kind.values); code != QorErrorCode::Ok)
        add(ProblemKind::Failed, object, code);
    kind.firstAttribute = _attributes.size();
    std::vector<qor::frame::ShownAttribute> shown;
    if (const QorErrorCode code = qor::frame::readNotebook(cls, shown); code != QorErrorCode::Ok)
        add(ProblemKind::Failed, object, code);
    for (const auto& [name, source] : shown) {
        bool isMapped = false;
        for (const ConvertedValue& value : kind.values) {
            if (value.source != source) continue;
            const bool isCast = value.sourceType != value.targetType;
            _attributes.push_back(
                {cls, source, value.target, isCast ? QorConversionFate::Cast : QorConversionFate::Carried});
            isMapped = true;
        }
        if (!isMapped) _attributes.push_back({cls, source});
    }
    kind.endAttribute = _attributes.size();
    for (std::size_t at = kind.firstAttribute; at < kind.endAttribute; ++at) {
        auto& type = kind.types.emplace_back(QorCoreAttributeType::None);
        const QorErrorCode code = repository().getAttributeType(_attributes[at].source, type);
        if (code != QorErrorCode::Ok) add(ProblemKind::Failed, object, code);
    }
    _kinds->emplace(cls, std::move(kind));
}

void QorConversionPlan::countValues(long cls, long object) {
    const Kind& kind = _kinds->at(cls);
    for (std::size_t at = kind.firstAttribute; at < kind.endAttribute; ++at) {
        const auto has = hasValue(object, _attributes[at].source, kind.types[at - kind.firstAttribute]);
        if (!has) return add(ProblemKind::Failed, object);
        if (*has) ++_attributes[at].objects;
    }
}

void QorConversionPlan::noteLostRelations(long object, const UnmovedRelationClasses& staying) {
    ISortedSet<long> leaving;
    ISortedSet<long> arriving;
    if (repository().getFromRelationInstances(object, leaving) != QorErrorCode::Ok ||
        repository().getToRelationInstances(object, arriving) != QorErrorCode::Ok)
        return add(ProblemKind::Failed, object);
    leaving.addAllFrom(arriving);
    for (const long relation : leaving) {
        long relationClass = QorNoIdentifier;
        const QorErrorCode code = repository().relationOf(relation, relationClass);
        if (code != QorErrorCode::Ok) return add(ProblemKind::Failed, object, code);
        if (staying.contain(relationClass)) _lostRelations.push_back({relation, object});
    }
}

void QorConversionPlan::noteLostReferences(const ISortedSet<long>& objects, ISortedSet<long> models) {
    models.add(_model);
    QorReferenceIndex references;
    if (!references.build(models) || !references.unreadModels().empty())
        return add(ProblemKind::Failed, QorNoIdentifier);
    std::set<std::tuple<long, long, long>> lost;
    for (const QorModelReference& use : references.usesOf(_model))
        if (objects.contains(use.object)) lost.emplace(use.object, use.source, use.attribute);
    for (const auto& [object, model, attribute] : lost) _lostReferences.push_back({object, model, attribute});
}

// ---- What is done ----

bool QorConversionPlan::convertOne(QorPlannedConversion& planned, const ObjectConversion& conversion) {
    const std::size_t before = _problems.size();
    const long object = planned.object;
    const Kind& kind = _kinds->at(planned.cls);
    long cls = QorNoIdentifier;
    if (repository().GetClassOfInstance(object, cls) != QorErrorCode::Ok || cls != planned.cls) {
        add(ProblemKind::UnknownObject, object);
        return false;
    }
    const auto refused = [&](const ConvertedValue& value, const ConversionOutcome& outcome) {
        add(ProblemKind::ValueRefused, object, outcome.code,
            ConversionNames(planned.cls, value.source, _targetClass, value.target).message(outcome.message));
        _problems.back().source = value.source;
        _problems.back().target = value.target;
    };
    const auto unmoved = [&](long relation, QorErrorCode code) {
        add(ProblemKind::RelationRefused, object, code);
        _problems.back().relation = relation;
    };
    const QorErrorCode code = conversion.run(object, kind.values, refused, unmoved, planned.newObject);
    if (planned.newObject == QorNoIdentifier)
        add(ProblemKind::NotMade, object, code);
    else if (code != QorErrorCode::Ok && _problems.size() == before)
        add(ProblemKind::Failed, object, code);
    return _problems.size() == before;
}

/// Goes on after a problem, so that all are known.
bool QorConversionPlan::convertAll(ConvertedPart part) {
    const ObjectConversion conversion(_model, _targetClass, part);
    bool all = true;
    for (QorPlannedConversion& planned : _objects)
        if (!convertOne(planned, conversion)) all = false;
    return all;
}

void QorConversionPlan::rehearse() {
    QorCardinalityCompleteCheck check(QorCardinalityHandler::Instance());
    std::set<BreachKey> before;
    const bool checkedBefore = check.checkModel(_model, [&](const QorCardinalityBreach& breach) {
        before.insert(keyOf(breach, breach.subject));
        return true;
    });
    if (!checkedBefore) return add(ProblemKind::Failed, QorNoIdentifier);

    const QorUnitOfWork unit;
    if (!unit.isOpen()) return add(ProblemKind::NoUnitsOfWork, QorNoIdentifier);
    const bool converted = convertAll(ConvertedPart::Trial);
    std::map<long, long> oldOf;
    for (QorPlannedConversion& planned : _objects) {
        const long made = std::exchange(planned.newObject, QorNoIdentifier);
        if (made != QorNoIdentifier) oldOf.emplace(made, planned.object);
    }
    if (!converted) return;
    const auto nameOld = [&](long& object) {
        if (const auto found = oldOf.find(object); found != oldOf.end()) object = found->second;
    };
    const bool checkedAfter = check.checkModel(_model, [&](const QorCardinalityBreach& found) {
        QorCardinalityBreach breach = found;
        if (!breach.subjectIsClass) nameOld(breach.subject);
        if (before.count(keyOf(breach, breach.subject)) != 0) return true;
        for (long& object : breach.objects) nameOld(object);
        std::sort(breach.objects.begin(), breach.objects.end());
        _breaches.push_back(std::move(breach));
        return true;
    });
    if (!checkedAfter) add(ProblemKind::Failed, QorNoIdentifier);
}

bool QorConversionPlan::carryOut() noexcept {
    if (!std::exchange(_isReady, false)) return false;
    const bool done = Qor_Guarded(kConversionSource, false, [this] {
        QorUnitOfWork unit;
        if (!unit.isOpen()) {
            add(ProblemKind::NoUnitsOfWork, QorNoIdentifier);
            return false;
        }
        if (!convertAll(ConvertedPart::Everything)) return false;
        const QorErrorCode code = unit.commit();
        if (code != QorErrorCode::Ok) add(ProblemKind::Failed, QorNoIdentifier, code);
        return code == QorErrorCode::Ok;
    });
    if (!done)
        for (QorPlannedConversion& planned : _objects) planned.newObject = QorNoIdentifier;
    return done;
}
