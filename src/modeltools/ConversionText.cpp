// SPDX-License-Identifier: Apache-2.0
#include "modeltools/ConversionText.h"

#include <utility>

#include "frame/RepositoryLookup.h"
#include "modeltools/ConversionNames.h"
#include "modeltools/internalErrors.h"
#include "modeltools/messages.h"
#include "platform/QorCoreMM_AttributeProfiles.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorMessage.h"
#include "platform/QorOwnedText.h"

namespace qor::modeltools {

namespace {

constexpr std::string_view kClass = "CLASS";
constexpr std::string_view kAttribute = "ATTR";
constexpr std::string_view kFrom = "from";

QorErrorCode failed(ConversionLine line, QorErrorCode code) {
    reportInternalError(line);
    return code;
}

QorErrorCode recordClassName(long attribute, QorOwnedText& name) {
    return QorCoreModelingManager::GetGlobal()->getRecordClassName(attribute, name.out());
}

/// Empty for an attribute that refers to no class.
QorErrorCode profileClassName(long attribute, SV::String& name) {
    long cls = QorNoIdentifier;
    const QorErrorCode code = QorAttrProfRefDomainContainer::GetReferencedClassOfAttribute(attribute, cls);
    name = code == QorErrorCode::Ok ? nameOfConvertedClass(cls) : SV::String();
    return code == QorErrorCode::NotFound ? QorErrorCode::Ok : code;
}

}  // namespace

QorErrorCode ConversionText::refuse(SV::String reason) {
    _reason = std::move(reason);
    return QorErrorCode::ValueRefused;
}

QorErrorCode ConversionText::read(QorKexParser& parser) {
    for (unsigned long element = 0; element < parser.GetElemCount(); ++element) {
        parser.SetCurElemIndex(element);
        const std::string_view keyword = parser.GetCurElemNameView();
        QorErrorCode code = QorErrorCode::Ok;
        if (keyword == kClass)
            code = readClass(parser);
        else if (keyword == kAttribute && !_conversions.empty())
            code = readAttribute(parser);
        else
            code = refuse(Qor_Message(message::unexpectedElement, {{"%token", keyword}}));
        if (code != QorErrorCode::Ok) return code;
    }
    return QorErrorCode::Ok;
}

QorErrorCode ConversionText::readClass(const QorKexParser& parser) {
    const SV::String name = parser.GetStrValue();
    QorGrObjPattern pattern;
    const QorGrObjAttrHandler patterns(_businessProcess, !_businessProcess);
    if (patterns.FindPattern(name, _businessProcess, pattern) != QorErrorCode::Ok || pattern.unusable)
        return refuse(Qor_Message(message::noUsablePattern, {{"%name", name.view()}}));
    _conversions.emplace_back(std::move(pattern));
    return QorErrorCode::Ok;
}

QorErrorCode ConversionText::readAttribute(const QorKexParser& parser) {
    QorAttributeMapping mapping;
    mapping.targetName = parser.GetStrValue();
    mapping.sourceName = parser.GetStrValue(kFrom);
    if (mapping.sourceName.IsEmpty()) mapping.sourceName = mapping.targetName;
    const long targetClass = _conversions.back().targetClass();
    QorErrorCode code = lookUp(_cls, mapping.sourceName, mapping.source, mapping.sourceType);
    if (code == QorErrorCode::Ok) code = lookUp(targetClass, mapping.targetName, mapping.target, mapping.targetType);
    if (code == QorErrorCode::Ok) code = compare(mapping);
    if (code == QorErrorCode::Ok) _conversions.back().add(std::move(mapping));
    return code;
}

QorErrorCode ConversionText::lookUp(long cls, const SV::String& name, long& attribute, QorCoreAttributeType& type) {
    const auto found = frame::findAttribute(cls, name);
    if (!found)
        return refuse(Qor_Message(message::unknownConvertedAttribute,
                                  {{"%attr", name.view()}, {"%class", nameOfConvertedClass(cls).view()}}));
    attribute = *found;
    const QorErrorCode code = QorCoreModelingManager::GetGlobal()->getAttributeType(attribute, type);
    return code == QorErrorCode::Ok ? code : failed(ConversionLine::AttributeType, code);
}

QorErrorCode ConversionText::compare(const QorAttributeMapping& mapping) {
    // An expression hands on its result, which is text and so may suit any type.
    if (mapping.sourceType == QorCoreAttributeType::Expression) return QorErrorCode::Ok;
    if (mapping.sourceType == mapping.targetType) return compareDomains(mapping);
    const ConversionNames names(_cls, mapping.source, _conversions.back().targetClass(), mapping.target);
    return refuse(names.message(message::typesDiffer));
}

QorErrorCode ConversionText::compareDomains(const QorAttributeMapping& mapping) {
    const ConversionNames names(_cls, mapping.source, _conversions.back().targetClass(), mapping.target);
    if (mapping.sourceType == QorCoreAttributeType::Record) {
        QorOwnedText source;
        QorOwnedText target;
        QorErrorCode code = recordClassName(mapping.source, source);
        if (code == QorErrorCode::Ok) code = recordClassName(mapping.target, target);
        if (code != QorErrorCode::Ok) return failed(ConversionLine::RecordClass, code);
        if (source.view() != target.view())
            return refuse(names.message(message::recordClassesDiffer, source.view(), target.view()));
    }
    if (mapping.sourceType == QorCoreAttributeType::AttributeProfile) {
        SV::String source;
        SV::String target;
        QorErrorCode code = profileClassName(mapping.source, source);
        if (code == QorErrorCode::Ok) code = profileClassName(mapping.target, target);
        if (code != QorErrorCode::Ok) return failed(ConversionLine::ProfileClass, code);
        if (!(source == target))
            return refuse(names.message(message::profileClassesDiffer, source.view(), target.view()));
    }
    return QorErrorCode::Ok;
}

}  // namespace qor::modeltools
