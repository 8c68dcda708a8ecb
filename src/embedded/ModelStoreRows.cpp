// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "embedded/ModelStore.h"

namespace qor::embedded {

QorBuildResult ModelStore::addRow(QorIdentifier owner, const AttributeRow& attribute, long position) {
    if (attribute.type != QorCoreAttributeType::Record) return refused(QorBuildError::AttributeDoesNotBelong);
    const auto count = static_cast<long>(rows(owner, attribute.id).size());
    if (position < -1 || position > count) return refused(QorBuildError::UnknownIdentifier);
    if (!_store.things.hasRoomFor(1, _rows.size())) return refused(QorBuildError::NoIdentifiersLeft);

    makeRoomForOne(_rows);
    _store.things.makeRoom(1);
    std::vector<QorIdentifier>& list = _rowsOf[{owner, attribute.id}];
    makeRoomForOne(list);

    const QorIdentifier id = _store.things.add(QorThingKind::RecordRow, _rows.size());
    _rows.push_back({id, attribute.target, owner, attribute.id});
    list.insert(list.begin() + (position == -1 ? count : position), id);
    ++_meta.editClass(attribute.target).instances;
    return {id};
}

QorBuildResult ModelStore::removeRow(QorIdentifier id) {
    const RecordRow* const found = row(id);
    if (found == nullptr) return refused(QorBuildError::UnknownIdentifier);
    std::vector<QorIdentifier>& list = _rowsOf.find({found->owner, found->attribute})->second;
    list.erase(std::find(list.begin(), list.end(), id));
    forgetRow(id);
    sweepWhenHalfIsGone();
    return {id};
}

std::span<const QorIdentifier> ModelStore::rows(QorIdentifier owner, QorIdentifier attribute) const {
    const auto found = _rowsOf.find({owner, attribute});
    return found == _rowsOf.end() ? std::span<const QorIdentifier>() : std::span(found->second);
}

void ModelStore::forgetRow(QorIdentifier id) noexcept {
    RecordRow& gone = _rows[_store.things.at(id).index];
    forgetRows(id);
    _values.clearAll(id, gone.recordClass);
    --_meta.editClass(gone.recordClass).instances;
    gone = {};
    _store.things.remove(id);
    ++_gone.rows;
}

// All rows of all record attributes of the owner.
void ModelStore::forgetRows(QorIdentifier owner) noexcept {
    auto list = _rowsOf.lower_bound({owner, 0});
    while (list != _rowsOf.end() && list->first.first == owner) {
        for (const QorIdentifier id : list->second) forgetRow(id);
        list = _rowsOf.erase(list);
    }
}

}  // namespace qor::embedded
