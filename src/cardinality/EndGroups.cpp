// SPDX-License-Identifier: Apache-2.0
#include "cardinality/EndGroups.h"

namespace qor::cardinality {

namespace {

std::uint64_t keyOf(QorIdentifier relationClass, QorIdentifier otherClass) noexcept {
    return (std::uint64_t{static_cast<std::uint32_t>(relationClass)} << 32) | static_cast<std::uint32_t>(otherClass);
}

}  // namespace

void EndGroups::count(std::span<const QorRelationEnd> ends) {
    _ends = ends;
    _index.clear();
    _groups.clear();
    if (_nextTowards.size() < ends.size()) {
        _nextTowards.resize(ends.size());
        _nextOf.resize(ends.size());
    }
    for (std::uint32_t at = 0; at < ends.size(); ++at) {
        put(ends[at].relationClass, ends[at].otherClass, at, _nextTowards);
        put(ends[at].relationClass, QorNoIdentifier, at, _nextOf);
    }
}

void EndGroups::put(QorIdentifier relationClass, QorIdentifier otherClass, std::uint32_t end,
                    std::vector<std::uint32_t>& next) {
    const auto number = _index.add(keyOf(relationClass, otherClass));
    if (number == _groups.size()) {
        _groups.push_back({relationClass, otherClass, 1, end, end});
        return;
    }
    auto& group = _groups[number];
    next[group.last] = end;
    group.last = end;
    ++group.count;
}

std::uint32_t EndGroups::countOf(QorIdentifier relationClass) const noexcept {
    return countTowards(relationClass, QorNoIdentifier);
}

std::uint32_t EndGroups::countTowards(QorIdentifier relationClass, QorIdentifier otherClass) const noexcept {
    const auto number = _index.find(keyOf(relationClass, otherClass));
    return number == KeyIndex::kNone ? 0 : _groups[number].count;
}

void EndGroups::collect(QorIdentifier relationClass, QorIdentifier otherClass,
                        std::vector<QorRelationEnd>& ends) const {
    const auto number = _index.find(keyOf(relationClass, otherClass));
    if (number == KeyIndex::kNone) return;
    const auto& group = _groups[number];
    const auto& next = otherClass == QorNoIdentifier ? _nextOf : _nextTowards;
    ends.reserve(ends.size() + group.count);
    for (auto at = group.first;; at = next[at]) {
        ends.push_back(_ends[at]);
        if (at == group.last) return;
    }
}

}  // namespace qor::cardinality
