// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string_view>

#include "cardinality/RuleReader.h"
#include "platform/ISortedSet.h"
#include "platform/QorKexParser.h"

namespace qor::cardinality {

/// Where a rule text stands, for messages.
struct TextSource {
    long library = -1;
    long cls = -1;
    long attribute = -1;
    SV::String className;
    SV::String attributeName;
};

/// Takes the rules of one class out of its parsed text: one CARDINALITIES element, then groups of a RELATION element
/// with the TO_CLASS and FROM_CLASS elements behind it.
class ClassText {
public:
    ClassText(QorKexParser& parser, const TextSource& source, QorClassCardinality& rules, DefinitionErrors errors);

    /// False when the text had an error or the repository failed.
    bool read();

private:
    bool readClassKeys();
    unsigned long readGroup(unsigned long index);
    unsigned long skipToNextRelation(unsigned long index);
    void readRelationKeys(QorIdentifier relationClass, std::string_view name);
    bool readTarget(QorIdentifier relationClass);

    void queryDirections();

    [[nodiscard]] QorCardinalityLimit written(std::string_view key) const;
    void unexpected(std::string_view found, std::string_view expected);
    void addError(QorKexPosition position, const SV::String& text);

    QorKexParser& _parser;
    const TextSource& _source;
    QorClassCardinality& _rules;
    DefinitionErrors _errors;
    bool _clean = true;
    bool _directionsKnown = false;
    ISortedSet<long> _leaving;
    ISortedSet<long> _arriving;
};

}  // namespace qor::cardinality
