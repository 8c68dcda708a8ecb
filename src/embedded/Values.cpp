// SPDX-License-Identifier: Apache-2.0
#include "embedded/Values.h"

#include <algorithm>

#include "embedded/ValueCheck.h"

namespace qor::embedded {

namespace {

// An enumeration's values stand with the attribute and are shared by all who have them.
bool sharesTexts(const AttributeRow& attribute) { return attribute.type == QorCoreAttributeType::Enumeration; }

bool isFreeText(QorCoreAttributeType type) {
    switch (type) {
        case QorCoreAttributeType::Text:
        case QorCoreAttributeType::LongText:
        case QorCoreAttributeType::Expression:
        case QorCoreAttributeType::SimulationAction:
            return true;
        default:
            return false;
    }
}

}  // namespace

TextRef Values::enumerationValue(const AttributeRow& attribute, std::string_view text) const {
    for (const TextRef value : attribute.enumeration)
        if (_store.texts.view(value) == text) return value;
    return 0;
}

QorBuildError Values::set(QorIdentifier thing, const AttributeRow& attribute, std::string_view text) {
    const auto isMember = [&](std::string_view part) { return enumerationValue(attribute, part) != 0; };
    if (!valueFits(attribute.type, attribute.refersToModels, text, isMember)) return QorBuildError::ValueRefused;
    if (text.empty() && !isFreeText(attribute.type)) {
        clear(thing, attribute);
        return QorBuildError::None;
    }
    const bool shared = sharesTexts(attribute);
    if (TextRef* value = _store.values.find(thing, attribute.id)) {
        if (shared)
            *value = enumerationValue(attribute, text);
        else
            _store.texts.replace(*value, text);
        return QorBuildError::None;
    }
    _store.values.makeRoom(1);
    _store.values.add(thing, attribute.id, shared ? enumerationValue(attribute, text) : _store.texts.add(text));
    return QorBuildError::None;
}

std::optional<std::string_view> Values::own(QorIdentifier thing, QorIdentifier attribute) const {
    const TextRef* value = _store.values.find(thing, attribute);
    if (value == nullptr) return std::nullopt;
    return _store.texts.view(*value);
}

void Values::clear(QorIdentifier thing, const AttributeRow& attribute) noexcept {
    const TextRef* value = _store.values.find(thing, attribute.id);
    if (value == nullptr) return;
    if (!sharesTexts(attribute)) _store.texts.release(*value);
    _store.values.remove(thing, attribute.id);
}

void Values::clearAll(QorIdentifier thing, QorIdentifier owner) noexcept {
    const bool isInstance = thing != owner;
    for (const FixedAttribute& fixed : fixedAttributes())
        if (!isInstance || levelOf(fixed.owner) == QorAttributeLevel::Instance)
            clear(thing, *_meta.attribute(fixed.id));
    const auto clearOwned = [&](const std::vector<QorIdentifier>& attributes) {
        for (const QorIdentifier id : attributes) clear(thing, *_meta.attribute(id));
    };
    if (const RelationClassRow* row = _meta.relationClass(owner)) return clearOwned(row->attributes);
    _meta.forEachInLine(owner, [&](const ClassRow& row) { clearOwned(row.attributes); });
}

}  // namespace qor::embedded
