// SPDX-License-Identifier: Apache-2.0
#include "cli/RulePlaces.h"

#include <optional>

#include "platform/QorAttributeIds.h"
#include "platform/QorKexParser.h"

namespace qor::cli {

namespace {

/// Goes over the elements of a rule text and knows to which RELATION and other class each belongs.
class RuleTextWalk {
public:
    RuleTextWalk(const QorRepositoryReader& reader, const WrittenRule& rule)
        : _relationName(reader.nameOf(static_cast<QorIdentifier>(rule.relationClass))),
          _otherName(reader.nameOf(static_cast<QorIdentifier>(rule.otherClass))),
          _rule(rule) {}

    /// The key that set the limit; of several the last, unless one has the limit itself for its value.
    std::optional<QorKexPosition> find(QorKexParser& parser) {
        std::optional<QorKexPosition> found;
        for (unsigned long index = 0; parser.SetCurElemIndex(index); ++index) {
            const std::string_view element = parser.GetCurElemNameView();
            if (element == "RELATION") _inRelation = parser.GetStrView() == _relationName;
            if (!isElementOfRule(parser, element) || !parser.IsContained(_rule.key)) continue;
            found = parser.GetKeyPosition(_rule.key);
            if (static_cast<std::uint32_t>(parser.GetIntValue(_rule.key)) == _rule.limit) break;
        }
        return found;
    }

private:
    [[nodiscard]] bool isElementOfRule(const QorKexParser& parser, std::string_view element) const {
        if (_rule.relationClass < 0) return element == "CARDINALITIES";
        if (!_inRelation) return false;
        if (_rule.otherClass < 0) return element == "RELATION";
        const bool isOtherEnd = element == "TO_CLASS" || element == "FROM_CLASS";
        return isOtherEnd && parser.GetStrView() == _otherName;
    }

    std::string_view _relationName;
    std::string_view _otherName;
    const WrittenRule& _rule;
    bool _inRelation = false;
};

}  // namespace

const QorFilePlace& RulePlaces::placeOf(const WrittenRule& rule) {
    const auto [entry, isNew] = _places.try_emplace(rule);
    if (isNew) entry->second = search(rule);
    return entry->second;
}

QorFilePlace RulePlaces::search(const WrittenRule& rule) const {
    const auto cls = static_cast<QorIdentifier>(rule.cls);
    for (const QorIdentifier attribute : {QorAttributeId::Cardinality, QorAttributeId::WorkingEnvironmentCardinality}) {
        const std::string_view text = _reader.classValue(cls, attribute);
        QorKexParser parser{SV::String(text), SV::String()};
        if (text.empty() || parser.Parse() != 0) continue;
        if (const auto position = RuleTextWalk(_reader, rule).find(parser))
            return _importer.placeInText(cls, attribute, *position);
    }
    return {};
}

}  // namespace qor::cli
