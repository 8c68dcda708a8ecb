// SPDX-License-Identifier: Apache-2.0
#include "modeltools/NamingRun.h"

#include <algorithm>

#include "frame/RepositoryLookup.h"
#include "modeltools/GeneratedName.h"
#include "modeltools/ReferenceFormat.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreInterReferenceHandler.h"
#include "platform/QorCoreMM_AttributeProfiles.h"
#include "platform/QorCoreModelingManager.h"

namespace qor::modeltools {

namespace {

constexpr std::size_t kLongestBase = 240;  // bytes: room for the hyphen and the number

QorCoreModelingManager& repository() { return *QorCoreModelingManager::GetGlobal(); }

}  // namespace

NamingReport::~NamingReport() = default;

NamingRun::NamingRun(long model, long cls, NamingGround& ground, NamingReport& report)
    : _model(model),
      _ground(ground),
      _report(report),
      _classes(withSubclasses(cls)),
      _numbers(
          [this](const std::string& name, QorIdentifier& holder) { return _ground.holderOf(_classes, name, holder); }) {
    _rule.cls = cls;
}

void NamingRun::run(long attribute, const ISortedSet<long>& objects) {
    const auto className = frame::readText(_rule.cls, QorAttributeId::ClassName);
    const auto text = frame::readText(_rule.cls, attribute);
    if (!className || !text) return _report.failed(NamingLine::ClassText, _rule.cls, QorNoIdentifier);
    if (text->IsEmpty()) return;

    _attribute = attribute;
    _rule.className = *className;
    QorKexParser parser(*text, kNameGenAttribute, *className);
    const NamingRuleFault fault = readNamingRule(parser, _rule);
    if (fault != NamingRuleFault::None) return _report.faulty(fault, parser, _rule);
    if (repository().getUIAttributeType(_rule.source, _sourceType) != QorErrorCode::Ok)
        return _report.failed(NamingLine::SourceType, _rule.cls, QorNoIdentifier);

    _numbers.expect(objects.numberOfElements());
    for (const long id : objects) {
        Object object;
        object.id = Qor_NarrowIdentifier(id).value_or(QorNoIdentifier);
        const Outcome outcome = visit(object);
        if (outcome == Outcome::EndRun) return;
        if (outcome == Outcome::Read) name(object);
    }
}

NamingRun::Outcome NamingRun::fail(NamingLine line, const Object& object, Outcome outcome) {
    _report.failed(line, _rule.cls, object.id);
    return outcome;
}

NamingRun::Outcome NamingRun::visit(Object& object) {
    const auto name = _ground.textOf(object.id, QorAttributeId::Name);
    if (!name) return fail(NamingLine::InstanceName, object, Outcome::LeaveObject);
    object.name = *name;
    const auto remembered = _ground.textOf(object.id, _attribute);
    if (remembered) object.last = rememberedName(*remembered, object.name, _rule.className);
    if (const Outcome outcome = readBase(object); outcome != Outcome::Read) return outcome;

    // The line ends that join several references go as well, so that these stand side by side without a separator.
    std::erase_if(object.base, [](char character) { return character == '\r' || character == '\n'; });
    if (object.base.empty()) object.base = _rule.className.str();
    object.cut = object.base.size() > kLongestBase;
    if (object.cut) object.base.resize(kLongestBase);
    return Outcome::Read;
}

NamingRun::Outcome NamingRun::readBase(Object& object) {
    switch (_sourceType) {
        case QorCoreAttributeType::InterReference:
            return readReferences(object);
        case QorCoreAttributeType::AttributeProfile:
            return _rule.profileAttribute.IsEmpty() ? readValue(object, object.id, _rule.source) : readProfile(object);
        default:
            return readValue(object, object.id, _rule.source);
    }
}

NamingRun::Outcome NamingRun::readValue(Object& object, long owner, long attribute) {
    const auto value = _ground.valueOf(owner, attribute);
    if (!value) return fail(NamingLine::SourceValue, object, Outcome::LeaveObject);
    object.base = value->str();
    return Outcome::Read;
}

NamingRun::Outcome NamingRun::readReferences(Object& object) {
    QorCoreInterReferenceHandler references(_model, object.id, _rule.source);
    if (references.initHandler() != QorErrorCode::Ok) return fail(NamingLine::References, object, Outcome::LeaveObject);
    const ReferenceFormat format(_rule.format.view(), references.isModelReferenceMode());
    for (unsigned long index = 0; index < references.getInterReferenceCount(); ++index) {
        if (index > 0) object.base += "\r\n";
        object.base += format.textOf(references.getInterReference(index));
    }
    return Outcome::Read;
}

NamingRun::Outcome NamingRun::readProfile(Object& object) {
    long profile = QorNoIdentifier;
    long attribute = QorNoIdentifier;
    const QorErrorCode code = repository().getAttributeIDFromAttrProfAttributeName(
        object.id, _rule.sourceName.c_str(), _rule.profileAttribute.c_str(), profile, attribute);
    if (code != QorErrorCode::Ok && code != QorErrorCode::NoProfileReferenced)
        return fail(NamingLine::ProfileAttribute, object, Outcome::EndRun);
    if (profile > 0) return readValue(object, profile, attribute);

    long profileClass = QorNoIdentifier;
    const auto allowed =
        QorCoreMM_AttributeProfiles::Instance().getAllowedAttrProfClassOfAttribute(_rule.source, profileClass);
    const auto its = allowed == QorErrorCode::Ok ? frame::findAttribute(profileClass, _rule.profileAttribute)
                                                 : std::optional<QorIdentifier>();
    if (!its) return fail(NamingLine::ProfileClass, object, Outcome::LeaveObject);
    return readValue(object, profileClass, *its);
}

void NamingRun::name(const Object& object) {
    const std::string_view name = object.name.view();
    const bool isDefault = isNameComposition(name, _rule.className.view());
    if (!isDefault) {
        if (!(object.name == object.last)) return _report.kept(QorNameKept::GivenByHand, object.id);
        if (isNameNumberComposition(name, object.base)) return _report.kept(QorNameKept::UpToDate, object.id);
    }
    const NumberSearch::Found found = _numbers.firstFor(object.base, object.id);
    if (found.code != QorErrorCode::Ok) return _report.failed(NamingLine::LookUp, _rule.cls, object.id);
    if (found.number == 0) return _report.kept(QorNameKept::NoNumberLeft, object.id);
    giveName(object, found);
}

void NamingRun::giveName(const Object& object, const NumberSearch::Found& found) {
    const std::string candidate = object.base + "-" + std::to_string(found.number);
    if (object.name.view() == candidate) return _report.kept(QorNameKept::UpToDate, object.id);

    // Told before the renaming: a handler of its event may already rename further objects.
    _numbers.given(object.base, object.id, found.number);
    if (_ground.rename(object.id, candidate, _numbers) != QorErrorCode::Ok) {
        _numbers.nameLost(object.id);
        _report.failed(NamingLine::Rename, _rule.cls, object.id);
    }
    // A refused name is remembered and counts all the same: an object that keeps its own name is then taken for one
    // that was named by hand.
    if (_ground.setText(object.id, _attribute, rememberedText(candidate)) != QorErrorCode::Ok)
        _report.failed(NamingLine::Remember, _rule.cls, object.id);
    _report.changed({object.id, _rule.cls, object.name, SV::String(candidate),
                     isNameComposition(object.name.view(), _rule.className.view()) ? QorNameReason::DefaultName
                                                                                   : QorNameReason::SourceChanged,
                     found.number - 1, found.first, object.cut});
}

}  // namespace qor::modeltools
