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

Step Values::stepFor(QorIdentifier thing, const AttributeRow& attribute, QorIdentifier scope) const {
    Step step;
    step.kind = StepKind::ValueSet;
    step.id = thing;
    step.other = attribute.id;
    step.scope = scope;
    step.sharesText = sharesTexts(attribute);
    const TextRef* const before = _store.values.find(thing, attribute.id);
    step.hadValue = before != nullptr;
    step.text = before ? *before : 0;
    return step;
}

QorBuildError Values::set(QorIdentifier thing, const AttributeRow& attribute, std::string_view text,
                          QorIdentifier scope) {
    const auto isMember = [&](std::string_view part) { return enumerationValue(attribute, part) != 0; };
    if (!valueFits(attribute.type, attribute.refersToModels, text, isMember)) return QorBuildError::ValueRefused;
    if (text.empty() && !isFreeText(attribute.type)) {
        clear(thing, attribute, scope);
        return QorBuildError::None;
    }
    const bool shared = sharesTexts(attribute);
    NewText own(_store.texts, shared ? std::string_view() : text);
    _store.values.makeRoom(1);
    const Step step = stepFor(thing, attribute, scope);
    _store.journal.note(step);
    const TextRef value = shared ? enumerationValue(attribute, text) : own.keep();
    if (step.hadValue)
        *_store.values.find(thing, attribute.id) = value;
    else
        _store.values.add(thing, attribute.id, value);
    if (!_store.journal.isOn()) bury(step);
    return QorBuildError::None;
}

std::optional<std::string_view> Values::own(QorIdentifier thing, QorIdentifier attribute) const {
    const TextRef* value = _store.values.find(thing, attribute);
    if (value == nullptr) return std::nullopt;
    return _store.texts.view(*value);
}

void Values::clear(QorIdentifier thing, const AttributeRow& attribute, QorIdentifier scope) {
    const Step step = stepFor(thing, attribute, scope);
    if (!step.hadValue) return;
    _store.journal.note(step);
    _store.values.remove(thing, attribute.id);
    if (!_store.journal.isOn()) bury(step);
}

void Values::clearAll(QorIdentifier thing, QorIdentifier owner, QorIdentifier scope) {
    const bool isInstance = thing != owner;
    for (const FixedAttribute& fixed : fixedAttributes())
        if (!isInstance || levelOf(fixed.owner) == QorAttributeLevel::Instance)
            clear(thing, *_meta.attribute(fixed.id), scope);
    const auto clearOwned = [&](const std::vector<QorIdentifier>& attributes) {
        for (const QorIdentifier id : attributes) clear(thing, *_meta.attribute(id), scope);
    };
    if (const RelationClassRow* row = _meta.relationClass(owner)) return clearOwned(row->attributes);
    _meta.forEachInLine(owner, [&](const ClassRow& row) { clearOwned(row.attributes); });
}

void Values::takeBack(const Step& step) noexcept {
    TextRef* const value = _store.values.find(step.id, step.other);
    if (value != nullptr && !step.sharesText) _store.texts.release(*value);
    if (value == nullptr)
        _store.values.add(step.id, step.other, step.text);
    else if (step.hadValue)
        *value = step.text;
    else
        _store.values.remove(step.id, step.other);
}

void Values::bury(const Step& step) noexcept {
    if (step.hadValue && !step.sharesText) _store.texts.release(step.text);
}

bool Values::adopt(QorIdentifier thing, const AttributeRow& attribute, std::string_view text) {
    const bool shared = sharesTexts(attribute);
    if (shared && enumerationValue(attribute, text) == 0) return false;
    _store.values.makeRoom(1);
    _store.values.add(thing, attribute.id, shared ? enumerationValue(attribute, text) : _store.texts.add(text));
    return true;
}

}  // namespace qor::embedded
