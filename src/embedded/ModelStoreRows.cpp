// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "embedded/ModelStore.h"

namespace qor::embedded {

QorBuildResult ModelStore::addRow(QorIdentifier owner, const AttributeRow& attribute, long position) {
    if (attribute.type != QorCoreAttributeType::Record) return refused(QorBuildError::AttributeDoesNotBelong);
    const auto count = static_cast<long>(rows(owner, attribute.id).size());
    if (position < -1 || position > count) return refused(QorBuildError::UnknownIdentifier);
    if (depthOf(owner) >= kDeepestRows) return refused(QorBuildError::NestedTooDeeply);
    if (!_store.things.hasRoomFor(1, _rows.size())) return refused(QorBuildError::NoIdentifiersLeft);

    makeRoomForOne(_rows);
    _store.things.makeRoom(1);
    std::vector<QorIdentifier>& list = _rowsOf[{owner, attribute.id}];
    makeRoomForOne(list);
    _store.journal.makeRoom(1);

    const QorIdentifier id = _store.things.add(QorThingKind::RecordRow, _rows.size());
    _rows.push_back({id, attribute.target, owner, attribute.id});
    const long at = position == -1 ? count : position;
    list.insert(list.begin() + at, id);
    noteAdded(QorThingKind::RecordRow, id, modelOf(id), static_cast<std::size_t>(at));
    _meta.countInstance(attribute.target, 1);
    return {id};
}

// How many rows a row of the owner lies in.
std::size_t ModelStore::depthOf(QorIdentifier owner) const {
    std::size_t depth = 0;
    for (const RecordRow* above = row(owner); above != nullptr; above = row(above->owner)) ++depth;
    return depth;
}

QorBuildResult ModelStore::removeRow(QorIdentifier id) {
    const RecordRow* const found = row(id);
    if (found == nullptr) return refused(QorBuildError::UnknownIdentifier);
    const std::vector<QorIdentifier>& list = _rowsOf.find({found->owner, found->attribute})->second;
    forgetRow(id, static_cast<std::size_t>(std::find(list.begin(), list.end(), id) - list.begin()));
    if (!_store.journal.isOn()) sweepWhenHalfIsGone();
    return {id};
}

std::span<const QorIdentifier> ModelStore::rows(QorIdentifier owner, QorIdentifier attribute) const {
    const auto found = _rowsOf.find({owner, attribute});
    return found == _rowsOf.end() ? std::span<const QorIdentifier>() : std::span(found->second);
}

void ModelStore::forgetRow(QorIdentifier id, std::size_t position) {
    forgetRows(id);
    const QorIdentifier modelId = modelOf(id);
    RecordRow& row = _rows[_store.things.at(id).index];
    _values.clearAll(id, row.recordClass, modelId);
    const Step step = noteRemoved(id, modelId, position);
    std::vector<QorIdentifier>& list = _rowsOf.find({row.owner, row.attribute})->second;
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(position));
    _meta.countInstance(row.recordClass, -1);
    row.id = QorNoIdentifier;
    ++_gone.rows;
    gone(step);
}

// All rows of all record attributes of the owner, from the last one, which costs each no more than itself.
void ModelStore::forgetRows(QorIdentifier owner) {
    auto list = _rowsOf.lower_bound({owner, 0});
    while (list != _rowsOf.end() && list->first.first == owner) {
        for (std::size_t left = list->second.size(); left > 0; --left) forgetRow(list->second[left - 1], left - 1);
        list = _store.journal.isOn() ? std::next(list) : _rowsOf.erase(list);
    }
}

}  // namespace qor::embedded
