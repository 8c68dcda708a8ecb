// SPDX-License-Identifier: Apache-2.0
#include "cli/RuleImpact.h"

#include <algorithm>
#include <iterator>

#include "cardinality/QorCardinalityHandler.h"
#include "cardinality/QorCardinalityRuleList.h"

namespace qor::cli {

namespace {

using Subjects = std::set<RuleBreakers::Subject>;

/// Of the subjects that the second set does not hold.
RuleImpact::Count countWithout(const Subjects& subjects, const Subjects& without) {
    std::vector<RuleBreakers::Subject> left;
    std::set_difference(subjects.begin(), subjects.end(), without.begin(), without.end(), std::back_inserter(left));
    RuleImpact::Count count;
    count.objects = left.size();
    for (std::size_t at = 0; at < left.size(); ++at)
        if (at == 0 || left[at].first != left[at - 1].first) ++count.models;
    return count;
}

}  // namespace

RuleBreakers::RuleBreakers(const QorRepositoryReader& reader) : _reader(reader) {
    for (const auto& rules : QorCardinalityHandler::Instance().getClassCardinalities())
        for (const auto& rule : QorCardinalityRuleList::of(rules)) _rules[nameOf(rule)].limit = rule.limit;
}

RuleName RuleBreakers::nameOf(const QorCardinalityRule& rule) const {
    const auto name = [this](long id) { return std::string(_reader.nameOf(static_cast<QorIdentifier>(id))); };
    return {name(rule.cls), rule.relationClass > 0 ? name(rule.relationClass) : std::string(),
            rule.otherClass > 0 ? name(rule.otherClass) : std::string(), std::string(rule.key)};
}

std::string RuleBreakers::nameOfSubject(const QorCardinalityBreach& breach) const {
    const auto subject = static_cast<QorIdentifier>(breach.subject);
    if (breach.subjectIsClass) return std::string(_reader.nameOf(subject));
    const auto cls = _reader.nameOf(_reader.classOfObject(subject));
    return std::to_string(cls.size()) + std::string(cls) + std::string(_reader.nameOf(subject));
}

bool RuleBreakers::addModel(const std::string& file, QorIdentifier model) {
    const auto info = _reader.modelInfo(model);
    const auto named = file + '\n' + std::string(info.name) + '\n' + std::string(info.version);
    return QorCardinalityCompleteCheck(QorCardinalityHandler::Instance())
        .checkModel(model, [&](const QorCardinalityBreach& breach) {
            _rules[nameOf(breach.rule)].subjects.emplace(named, nameOfSubject(breach));
            return true;
        });
}

std::vector<RuleImpact> impactsOf(const RuleBreakers& before, const RuleBreakers& after) {
    std::set<RuleName> names;
    for (const auto* side : {&before, &after})
        for (const auto& entry : side->rules()) names.insert(entry.first);
    std::vector<RuleImpact> impacts;
    const RuleBreakers::Rule none;
    for (const auto& name : names) {
        const auto find = [&](const RuleBreakers& side) -> const RuleBreakers::Rule& {
            const auto place = side.rules().find(name);
            return place == side.rules().end() ? none : place->second;
        };
        const auto& earlier = find(before);
        const auto& later = find(after);
        const RuleImpact impact{name, earlier.limit, later.limit, countWithout(later.subjects, earlier.subjects),
                                countWithout(earlier.subjects, later.subjects)};
        const bool isSame = impact.from == impact.to && impact.broken.objects == 0 && impact.mended.objects == 0;
        if (!isSame) impacts.push_back(impact);
    }
    return impacts;
}

}  // namespace qor::cli
