// SPDX-License-Identifier: Apache-2.0
#include <optional>

#include "embedded/Answers.h"
#include "embedded/InterReferenceText.h"
#include "embedded/ModelingManager.h"
#include "embedded/References.h"
#include "embedded/TargetCheck.h"
#include "embedded/ValueCheck.h"
#include "platform/QorAttributeIds.h"

namespace qor::embedded {

// ---- Reading ----

template <class Take>
QorErrorCode ModelingManager::readValue(long identifier, long attribute, bool withDefault, Take take) const {
    return answered([&] {
        const QorIdentifier thing = narrow(identifier);
        const AttributeRow* const row = _repository.attributeOf(thing, narrow(attribute));
        if (row == nullptr) return QorErrorCode::NotFound;
        const std::optional<std::string_view> text = _repository.value(thing, *row, withDefault);
        return text ? take(*text, row->type) : QorErrorCode::NoValue;
    });
}

QorErrorCode ModelingManager::getAttributeValue(long identifier, long attribute, char*& text, bool withDefault) {
    text = nullptr;
    return readValue(identifier, attribute, withDefault,
                     [&](std::string_view value, QorCoreAttributeType) { return give(text, value); });
}

QorErrorCode ModelingManager::getAttributeValue(long identifier, long attribute, long& number, bool withDefault) {
    number = -1;
    return readValue(identifier, attribute, withDefault, [&](std::string_view value, QorCoreAttributeType type) {
        const auto read = type == QorCoreAttributeType::Integer ? integerFrom(value) : std::nullopt;
        if (!read) return QorErrorCode::OutOfRange;
        number = *read;
        return QorErrorCode::Ok;
    });
}

QorErrorCode ModelingManager::getAttributeValue(long identifier, long attribute, double& number, bool withDefault) {
    number = 0.0;
    return readValue(identifier, attribute, withDefault, [&](std::string_view value, QorCoreAttributeType type) {
        const bool isNumber = type == QorCoreAttributeType::Floating || type == QorCoreAttributeType::Integer;
        const auto read = isNumber ? floatingFrom(value) : std::nullopt;
        if (!read) return QorErrorCode::OutOfRange;
        number = *read;
        return QorErrorCode::Ok;
    });
}

QorErrorCode ModelingManager::getAttributeValueAsNewChar(long identifier, long attribute, char*& text) {
    return getAttributeValue(identifier, attribute, text, true);
}

// ---- Writing ----

QorErrorCode ModelingManager::writeValue(QorIdentifier model, QorIdentifier instance, QorIdentifier attribute,
                                         std::string_view text, bool raiseEvent) {
    if (model == QorNoIdentifier || _repository.models().modelOf(instance) != model) return QorErrorCode::NotFound;
    if (const AttributeRow* const row = _repository.attributeOf(instance, attribute);
        row != nullptr && !_targets.mayBeSet(instance, *row, text))
        return QorErrorCode::ValueRefused;
    const QorBuildResult result =
        _repository.change([&] { return _repository.setInstanceValue(instance, attribute, text); });
    if (!result.ok()) return codeOf(result.error);
    const AttributeRow& row = *_repository.meta().attribute(attribute);
    if (raiseEvent)
        announceValue(model, instance, row);
    else if (row.type == QorCoreAttributeType::InterReference)
        _announcements.referencesChanged(model);
    return QorErrorCode::Ok;
}

void ModelingManager::announceValue(QorIdentifier model, QorIdentifier instance, const AttributeRow& attribute) const {
    const RecordRow* const row = _repository.models().row(instance);
    QorIdentifier object = instance;
    while (const RecordRow* above = _repository.models().row(object)) object = above->owner;
    _announcements.valueChanged(model, object, attribute.id, row ? row->id : QorNoIdentifier, attribute.type);
}

QorErrorCode ModelingManager::setAttributeValue(long model, long identifier, long attribute, const char* text,
                                                bool raiseEvent) {
    return answered([&] {
        return writeValue(narrow(model), narrow(identifier), narrow(attribute), textOrEmpty(text), raiseEvent);
    });
}

QorErrorCode ModelingManager::setAttributeValueAsString(long model, long identifier, long attribute, const char* text,
                                                        bool raiseEvent) {
    return setAttributeValue(model, identifier, attribute, text, raiseEvent);
}

QorErrorCode ModelingManager::setAttributeValue(long model, long identifier, long attribute, long number,
                                                bool raiseEvent) {
    return answered([&] {
        const AttributeRow* const row = _repository.attributeOf(narrow(identifier), narrow(attribute));
        if (row == nullptr) return QorErrorCode::NotFound;
        const bool isNumber = row->type == QorCoreAttributeType::Integer || row->type == QorCoreAttributeType::Floating;
        const std::optional<QorIdentifier> narrowed = Qor_NarrowIdentifier(number);
        if (!isNumber || !narrowed) return QorErrorCode::ValueRefused;
        return writeValue(narrow(model), narrow(identifier), row->id, textFrom(*narrowed), raiseEvent);
    });
}

QorErrorCode ModelingManager::setAttributeValue(long model, long identifier, long attribute, double number,
                                                bool raiseEvent) {
    return answered([&] {
        const AttributeRow* const row = _repository.attributeOf(narrow(identifier), narrow(attribute));
        if (row == nullptr) return QorErrorCode::NotFound;
        if (row->type != QorCoreAttributeType::Floating) return QorErrorCode::ValueRefused;
        return writeValue(narrow(model), narrow(identifier), row->id, textFrom(number), raiseEvent);
    });
}

// ---- Attribute profiles ----

QorErrorCode ModelingManager::getAttributeIDFromAttrProfAttributeName(long object, const char* referenceAttribute,
                                                                      const char* profileAttribute, long& profile,
                                                                      long& attribute) {
    profile = attribute = -1;
    return answered([&] {
        const MetaModel& meta = _repository.meta();
        const QorIdentifier id = narrow(object);
        const QorIdentifier cls = _repository.models().classOfInstance(id);
        const AttributeRow* const reference = meta.attribute(meta.findAttribute(cls, textOrEmpty(referenceAttribute)));
        if (reference == nullptr || reference->type != QorCoreAttributeType::AttributeProfile)
            return QorErrorCode::NotFound;
        const std::optional<std::string_view> name = _repository.value(id, *reference, true);
        if (!name || name->empty()) return QorErrorCode::NoProfileReferenced;
        const QorIdentifier found = findProfile(_repository, id, reference->target, *name);
        const QorIdentifier its =
            meta.findAttribute(_repository.models().classOfInstance(found), textOrEmpty(profileAttribute));
        if (its == QorNoIdentifier) return QorErrorCode::NotFound;
        profile = found;
        return give(attribute, its);
    });
}

// ---- Records ----

bool ModelingManager::isRecordOf(QorIdentifier owner, QorIdentifier attribute) const {
    const AttributeRow* const row = _repository.attributeOf(owner, attribute);
    return row != nullptr && row->type == QorCoreAttributeType::Record;
}

QorErrorCode ModelingManager::getRecordInstances(long object, long attribute, ISequence<long>& rows) {
    rows.removeAll();
    return answered([&] {
        if (!isRecordOf(narrow(object), narrow(attribute))) return QorErrorCode::NotFound;
        const auto ids = _repository.models().rows(narrow(object), narrow(attribute));
        rows.reserve(ids.size());
        for (const QorIdentifier id : ids) rows.add(id);
        return QorErrorCode::Ok;
    });
}

QorErrorCode ModelingManager::createRecordInstance(long model, long object, long attribute, long& row, long position) {
    row = -1;
    return answered([&] {
        const QorIdentifier owner = narrow(object);
        ModelStore& models = _repository.models();
        if (!isRecordOf(owner, narrow(attribute)) || models.modelOf(owner) != narrow(model))
            return QorErrorCode::NotFound;
        if (position < -1 || position > static_cast<long>(models.rows(owner, narrow(attribute)).size()))
            return QorErrorCode::OutOfRange;
        const QorBuildResult result = _repository.change(
            [&] { return models.addRow(owner, *_repository.attributeOf(owner, narrow(attribute)), position); });
        return result.ok() ? give(row, result.id) : codeOf(result.error);
    });
}

QorErrorCode ModelingManager::deleteRecordInstance(long model, long object, long attribute, long row) {
    return answered([&] {
        const RecordRow* const found = _repository.models().row(narrow(row));
        if (found == nullptr || found->owner != narrow(object) || found->attribute != narrow(attribute) ||
            _repository.models().modelOf(found->owner) != narrow(model))
            return QorErrorCode::NotFound;
        const bool losesReferences = holdsReferences(_repository, found->id);
        const QorBuildResult result = _repository.change([&] { return _repository.models().removeRow(narrow(row)); });
        if (!result.ok()) return codeOf(result.error);
        if (losesReferences) _announcements.referencesChanged(narrow(model));
        return QorErrorCode::Ok;
    });
}

// ---- Inter-model references ----

QorErrorCode ModelingManager::getInterRefsOfSourceModel(long model, QorSourceInterRefContainer& references) {
    references.removeAll();
    return answered([&] {
        const QorIdentifier id = narrow(model);
        if (_repository.models().model(id) == nullptr) return QorErrorCode::NotFound;
        QorSourceInterRefContainer found;
        bool complete = true;
        forEachReferenceInModel(_repository, id, [&](const AttributeRow& attribute, std::string_view text) {
            auto targets = parseReferences(text, attribute.refersToModels);
            if (!targets) complete = false;  // what is stored was well formed
            for (QorInterModRefTarget& target : targets.value_or(std::vector<QorInterModRefTarget>())) {
                target.attribute = attribute.id;
                found.add(std::move(target));
            }
        });
        if (!complete) return QorErrorCode::Broken;
        references = std::move(found);
        return QorErrorCode::Ok;
    });
}

}  // namespace qor::embedded
