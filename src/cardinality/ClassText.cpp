// SPDX-License-Identifier: Apache-2.0
#include "cardinality/ClassText.h"

#include <algorithm>
#include <optional>

#include "cardinality/messages.h"
#include "cardinality/repository.h"
#include "cardinality/ruleKeys.h"
#include "platform/QorMessage.h"

namespace qor::cardinality {

namespace {

std::string quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

using NameLookup = QorErrorCode (QorCoreMM_Enhanced::*)(long library, const char* name, long& identifier);

/// Nothing for a name that the library does not know, whatever the repository's reason.
std::optional<QorIdentifier> findByName(NameLookup lookup, long library, const SV::String& name) {
    if (name.view().find('\0') != std::string_view::npos) return std::nullopt;
    long found = QorNoIdentifier;
    if ((repository().*lookup)(library, name.c_str(), found) != QorErrorCode::Ok || found < 1) return std::nullopt;
    return Qor_NarrowIdentifier(found);
}

const TargetElement* targetElement(std::string_view name) {
    const auto elements = targetElements();
    const auto place = std::find_if(elements.begin(), elements.end(),
                                    [name](const TargetElement& element) { return element.element == name; });
    return place == elements.end() ? nullptr : &*place;
}

}  // namespace

ClassText::ClassText(QorKexParser& parser, const TextSource& source, QorClassCardinality& rules,
                     DefinitionErrors errors)
    : _parser(parser), _source(source), _rules(rules), _errors(errors) {}

bool ClassText::read() {
    if (!readClassKeys()) return false;
    for (unsigned long index = 1; _parser.SetCurElemIndex(index);) index = readGroup(index);
    return _clean;
}

bool ClassText::readClassKeys() {
    _parser.SetCurElemIndex(0);
    if (_parser.GetCurElemNameView() != kClassElement) {
        unexpected(_parser.GetCurElemNameView(), quoted(kClassElement));
        return false;
    }
    for (const auto& row : classKeys())
        if (_parser.IsContained(row.key)) row.store(_rules, written(row.key));
    return true;
}

/// Returns the index of the first element behind the group.
unsigned long ClassText::readGroup(unsigned long index) {
    if (_parser.GetCurElemNameView() != kRelationElement) {
        unexpected(_parser.GetCurElemNameView(), quoted(kRelationElement));
        return index + 1;
    }
    const auto name = _parser.GetStrValue();
    const auto relationClass = findByName(&QorCoreMM_Enhanced::getRelationIDFromRelationName, _source.library, name);
    if (!relationClass) {
        unexpected(name.view(), Qor_Message(message::relationClassExpected).view());
        return skipToNextRelation(index + 1);
    }
    readRelationKeys(*relationClass, name.view());
    do ++index;
    while (_parser.SetCurElemIndex(index) && readTarget(*relationClass));
    return index;
}

/// Goes by whatever else stands there without a word, not only by the elements of the unknown relation class.
unsigned long ClassText::skipToNextRelation(unsigned long index) {
    while (_parser.SetCurElemIndex(index) && _parser.GetCurElemNameView() != kRelationElement) ++index;
    return index;
}

void ClassText::readRelationKeys(QorIdentifier relationClass, std::string_view name) {
    queryDirections();
    for (const auto& row : relationKeys()) {
        if (!_parser.IsContained(row.key)) continue;
        const auto& possible = row.direction == Direction::Outgoing ? _leaving : _arriving;
        if (!possible.contains(relationClass))
            addError(_parser.GetKeyPosition(row.key),
                     Qor_Message(message::directionDoesNotFit, {{"%s", row.key},
                                                                {"%r", name},
                                                                {"%a", _source.attributeName.view()},
                                                                {"%k", _source.className.view()}}));
        // Stored all the same: the rule may be right and the relation class wrong.
        row.store(_rules.relations.findOrCreate(relationClass), written(row.key));
    }
}

/// False when the current element is not one of the group's any more.
bool ClassText::readTarget(QorIdentifier relationClass) {
    const auto* element = targetElement(_parser.GetCurElemNameView());
    if (element == nullptr) return false;
    const auto name = _parser.GetStrValue();
    const auto cls = findByName(&QorCoreMM_Enhanced::getClassIDFromClassName, _source.library, name);
    if (!cls) {
        unexpected(name.view(), Qor_Message(message::classExpected).view());
        return true;
    }
    if (!_parser.IsContained(element->maxKey) && !_parser.IsContained(element->minKey)) return true;
    auto& target = _rules.relations.findOrCreate(relationClass).targets.findOrCreate(*cls);
    // An absent key would stand for "no limit", which a merge never takes.
    if (_parser.IsContained(element->maxKey)) lower(target.*element->max, written(element->maxKey));
    if (_parser.IsContained(element->minKey)) raise(target.*element->min, written(element->minKey));
    return true;
}

/// A direction that cannot be asked for counts as impossible.
void ClassText::queryDirections() {
    if (_directionsKnown) return;
    _directionsKnown = true;
    if (!succeeded(Request::LeavingRelationClasses, repository().getAllFromRelationsRecursive(_source.cls, _leaving))) {
        _leaving.removeAll();
        _clean = false;
    }
    if (!succeeded(Request::ArrivingRelationClasses, repository().getAllToRelationsRecursive(_source.cls, _arriving))) {
        _arriving.removeAll();
        _clean = false;
    }
}

/// Counts are unsigned: -1 is a very large one.
QorCardinalityLimit ClassText::written(std::string_view key) const {
    return {static_cast<std::uint32_t>(_parser.GetIntValue(key)), key};
}

void ClassText::unexpected(std::string_view found, std::string_view expected) {
    addError(_parser.GetCurElemPosition(), Qor_Message(message::unexpectedText, {{"%s", found},
                                                                                 {"%e", expected},
                                                                                 {"%a", _source.attributeName.view()},
                                                                                 {"%k", _source.className.view()}}));
}

void ClassText::addError(QorKexPosition position, const SV::String& text) {
    _errors.text += text.view();
    _errors.list.push_back({_source.library, _source.cls, _source.attribute, position, text});
    _clean = false;
}

}  // namespace qor::cardinality
