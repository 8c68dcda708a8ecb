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
    _chained = false;
    _index.clear();
    _groups.clear();
    for (std::uint32_t at = 0; at < ends.size(); ++at) {
        const auto number = _index.add(keyOf(ends[at].relationClass, ends[at].otherClass));
        if (number == _groups.size()) addGroups(at);
        ++_groups[number].count;
    }
    for (const auto& group : _groups)
        if (group.otherClass != QorNoIdentifier) _groups[group.whole].count += group.count;
}

/// Makes the group of the end's classes and, behind it, that of the relation class where it is missing.
void EndGroups::addGroups(std::uint32_t end) {
    const auto whole = _index.add(keyOf(_ends[end].relationClass, QorNoIdentifier));
    addGroup(_ends[end].otherClass, end, whole);
    if (whole == _groups.size()) addGroup(QorNoIdentifier, end, whole);
}

void EndGroups::addGroup(QorIdentifier otherClass, std::uint32_t end, std::uint32_t whole) {
    auto& group = _groups.emplace_back();
    group.relationClass = _ends[end].relationClass;
    group.otherClass = otherClass;
    group.first = end;
    group.whole = whole;
}

void EndGroups::chain() {
    _chained = true;
    _last.assign(_groups.size(), KeyIndex::kNone);
    if (_nextTowards.size() < _ends.size()) {
        _nextTowards.resize(_ends.size());
        _nextOf.resize(_ends.size());
    }
    for (std::uint32_t at = 0; at < _ends.size(); ++at) {
        const auto number = _index.find(keyOf(_ends[at].relationClass, _ends[at].otherClass));
        append(number, at, _nextTowards);
        append(_groups[number].whole, at, _nextOf);
    }
}

void EndGroups::append(std::uint32_t group, std::uint32_t end, std::vector<std::uint32_t>& next) {
    if (_last[group] != KeyIndex::kNone) next[_last[group]] = end;
    _last[group] = end;
}

std::uint32_t EndGroups::countOf(QorIdentifier relationClass, QorIdentifier otherClass) const noexcept {
    const auto number = _index.find(keyOf(relationClass, otherClass));
    return number == KeyIndex::kNone ? 0 : _groups[number].count;
}

void EndGroups::collect(QorIdentifier relationClass, QorIdentifier otherClass, std::vector<QorRelationEnd>& ends) {
    const auto number = _index.find(keyOf(relationClass, otherClass));
    if (number == KeyIndex::kNone) return;
    if (!_chained) chain();
    const auto& next = otherClass == QorNoIdentifier ? _nextOf : _nextTowards;
    ends.reserve(ends.size() + _groups[number].count);
    for (auto at = _groups[number].first;; at = next[at]) {
        ends.push_back(_ends[at]);
        if (at == _last[number]) return;
    }
}

}  // namespace qor::cardinality
