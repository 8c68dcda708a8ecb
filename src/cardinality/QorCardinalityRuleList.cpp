// SPDX-License-Identifier: Apache-2.0
#include "cardinality/QorCardinalityRuleList.h"

#include <algorithm>

#include "cardinality/limits.h"

using namespace qor::cardinality;

namespace {

bool isSame(const QorCardinalityRule& a, const QorCardinalityRule& b) {
    return a.key == b.key && a.relationClass == b.relationClass && a.otherClass == b.otherClass;
}

}  // namespace

std::vector<QorCardinalityRule> QorCardinalityRuleList::of(const QorClassCardinality& rules) {
    std::vector<QorCardinalityRule> list;
    std::size_t first = 0;  // of the class or relation class, whose limits alone can come from one key
    const auto add = [&](const QorCardinalityRule& rule) {
        const auto begin = list.begin() + static_cast<std::ptrdiff_t>(first);
        const bool isKnown =
            std::any_of(begin, list.end(), [&rule](const QorCardinalityRule& known) { return isSame(known, rule); });
        if (!rule.key.empty() && !isKnown) list.push_back(rule);
    };
    for (const auto* limit : {&rules.maxObjects, &rules.minObjects, &rules.maxTotal, &rules.minTotal, &rules.maxOut,
                              &rules.minOut, &rules.maxIn, &rules.minIn})
        add(ofClass(rules, *limit));
    for (const auto& relation : rules.relations)
        for (const auto direction : {Direction::Outgoing, Direction::Incoming}) {
            first = list.size();
            add(mostOf(rules, direction, relation.key()));
            add(leastOf(rules, direction, relation.key()));
            add(mostTowards(rules, direction, relation.key(), QorNoIdentifier));
            for (const auto& target : relation.targets) {
                first = list.size();
                add(mostTowards(rules, direction, relation.key(), target.key()));
                add(leastTowards(rules, direction, relation.key(), target.key()));
            }
        }
    return list;
}
