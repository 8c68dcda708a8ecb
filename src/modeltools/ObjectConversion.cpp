// SPDX-License-Identifier: Apache-2.0
#include "modeltools/ObjectConversion.h"

#include "platform/ISortedSet.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreVar.h"
#include "platform/QorOwnedText.h"

namespace qor::modeltools {

namespace {

constexpr const char* kVariants = "__Variants__";

QorCoreModelingManager& repository() { return *QorCoreModelingManager::GetGlobal(); }

QorErrorCode addUnmapped(long source, long target, std::vector<ConvertedValue>& values) {
    ConvertedValue value{source, target};
    QorErrorCode code = repository().getAttributeType(source, value.sourceType);
    if (code == QorErrorCode::Ok) code = repository().getAttributeType(target, value.targetType);
    if (code == QorErrorCode::Ok) values.push_back(value);
    return code;
}

QorErrorCode addVariants(long sourceClass, long targetClass, std::vector<ConvertedValue>& values) {
    long source = QorNoIdentifier;
    long target = QorNoIdentifier;
    QorErrorCode code = repository().getAttributeIDFromAttributeName(sourceClass, kVariants, source);
    if (code == QorErrorCode::Ok) code = repository().getAttributeIDFromAttributeName(targetClass, kVariants, target);
    if (code == QorErrorCode::NotFound) return QorErrorCode::Ok;
    return code == QorErrorCode::Ok ? addUnmapped(source, target, values) : code;
}

using MoveEnd = QorErrorCode (QorCoreMM_Enhanced::*)(long relation, long object);
using Relations = QorErrorCode (QorCoreMM_Enhanced::*)(long object, ISortedSet<long>& relations);

/// Moves what can be moved; the first failure.
QorErrorCode moveRelations(long object, long newObject, Relations list, MoveEnd move,
                           const UnmovedRelationClasses& staying, const ObjectConversion::Unmoved& unmoved) {
    ISortedSet<long> relations;
    QorErrorCode first = (repository().*list)(object, relations);
    for (const long relation : relations) {
        long relationClass = QorNoIdentifier;
        QorErrorCode code = staying.any() ? repository().relationOf(relation, relationClass) : QorErrorCode::Ok;
        if (code == QorErrorCode::Ok && !staying.contain(relationClass))
            code = (repository().*move)(relation, newObject);
        if (code != QorErrorCode::Ok && unmoved) unmoved(relation, code);
        if (first == QorErrorCode::Ok) first = code;
    }
    return first;
}

}  // namespace

bool ConvertedValue::mayBeRefused() const {
    if (sourceType != targetType) return true;
    switch (sourceType) {
        case QorCoreAttributeType::Integer:
        case QorCoreAttributeType::Floating:
        case QorCoreAttributeType::Text:
        case QorCoreAttributeType::LongText:
        case QorCoreAttributeType::Time:
        case QorCoreAttributeType::Date:
        case QorCoreAttributeType::DateTime:
            return false;
        default:
            return true;
    }
}

UnmovedRelationClasses::UnmovedRelationClasses()
    : _first(Qor_GetCoreVarConst(QorCoreVarType::UnmovedRelationClass)),
      _second(Qor_GetCoreVarConst(QorCoreVarType::OtherUnmovedRelationClass)) {}

QorErrorCode findConvertedValues(const QorConversionHandler& handler, long targetClass,
                                 std::vector<ConvertedValue>& values) {
    values.clear();
    const long graphic =
        Qor_GetCoreVarConst(handler.isBusinessProcess() ? QorCoreVarType::GraphicAttribute
                                                        : QorCoreVarType::WorkingEnvironmentGraphicAttribute);
    QorErrorCode code = graphic > 0 ? addUnmapped(graphic, graphic, values) : QorErrorCode::Ok;
    if (code == QorErrorCode::Ok) code = addVariants(handler.cls(), targetClass, values);
    if (const QorClassConversion* const conversion = handler.conversionInto(targetClass))
        for (const QorAttributeMapping& mapping : conversion->mappings())
            values.push_back({mapping.source, mapping.target, mapping.sourceType, mapping.targetType, true});
    return code;
}

void ObjectConversion::carryOver(long object, long newObject, const std::vector<ConvertedValue>& values, bool mapped,
                                 const Refused& refused) const {
    for (const ConvertedValue& value : values) {
        if (value.isMapped != mapped || (_part == ConvertedPart::Trial && !value.mayBeRefused())) continue;
        const auto outcome = convertAttribute(_model, {object, value.source, value.sourceType},
                                              {newObject, value.target, value.targetType});
        if (outcome.message != 0) refused(value, outcome);
    }
}

QorErrorCode ObjectConversion::run(long object, const std::vector<ConvertedValue>& values, const Refused& refused,
                                   const Unmoved& unmoved, long& newObject) const {
    newObject = QorNoIdentifier;
    QorOwnedText name;
    QorErrorCode code = repository().getAttributeValue(object, QorAttributeId::Name, name.out(), false);
    if (code != QorErrorCode::Ok) return code;
    code = repository().createInstance(_model, _targetClass, name.c_str(), newObject);
    if (code != QorErrorCode::Ok) return code;

    carryOver(object, newObject, values, false, refused);
    // Arriving relations are asked for after the leaving ones were moved, so that a relation of the object with itself
    // ends on the new object at both ends.
    const QorErrorCode leaving = moveRelations(object, newObject, &QorCoreMM_Enhanced::getFromRelationInstances,
                                               &QorCoreMM_Enhanced::moveFromEndpoint, _staying, unmoved);
    const QorErrorCode arriving = moveRelations(object, newObject, &QorCoreMM_Enhanced::getToRelationInstances,
                                                &QorCoreMM_Enhanced::moveToEndpoint, _staying, unmoved);
    carryOver(object, newObject, values, true, refused);
    // A relation that could not be moved would be deleted with the old object.
    if (leaving != QorErrorCode::Ok) return leaving;
    if (arriving != QorErrorCode::Ok) return arriving;
    return repository().deleteInstance(_model, object);
}

}  // namespace qor::modeltools
