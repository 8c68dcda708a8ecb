// SPDX-License-Identifier: Apache-2.0
#include "embedded/ModelGroups.h"

#include <algorithm>
#include <map>

namespace qor::embedded {

namespace {

// What the group lies in: another group, or the library.
QorIdentifier holderOf(const GroupRow& row) { return row.parent != QorNoIdentifier ? row.parent : row.library; }

NameScope scopeOf(QorIdentifier holder) { return {holder, nameTag::kGroup}; }

}  // namespace

const GroupRow* ModelGroups::group(QorIdentifier id) const {
    return rowOf(_store.things, _rows, id, QorThingKind::ModelGroup);
}

QorIdentifier ModelGroups::libraryOf(QorIdentifier parent) const {
    if (const GroupRow* const row = group(parent)) return row->library;
    return _meta.library(parent) ? parent : QorNoIdentifier;
}

// How many groups lie around what is put into the parent.
std::size_t ModelGroups::depthOf(QorIdentifier parent) const {
    std::size_t depth = 0;
    for (const GroupRow* row = group(parent); row != nullptr; row = group(row->parent)) ++depth;
    return depth;
}

// Of the longest line of groups from the group downwards.
std::size_t ModelGroups::heightOf(QorIdentifier id) const {
    const std::size_t depth = depthOf(id);
    std::size_t height = 1;
    for (const QorIdentifier below : groupsBelow(id)) height = std::max(height, depthOf(below) - depth + 1);
    return height;
}

QorIdentifier ModelGroups::find(QorIdentifier parent, std::string_view name) const {
    return _store.names.find(NameIndex::hashOf(scopeOf(parent), name), [&](QorIdentifier id) {
        const GroupRow* const row = group(id);
        return row != nullptr && holderOf(*row) == parent && text(row->name) == name;
    });
}

std::vector<QorIdentifier> ModelGroups::groupsIn(QorIdentifier parent) const {
    std::vector<QorIdentifier> found;
    for (const GroupRow& row : _rows)
        if (row.id != QorNoIdentifier && holderOf(row) == parent) found.push_back(row.id);
    std::sort(found.begin(), found.end());
    return found;
}

std::vector<QorIdentifier> ModelGroups::groupsBelow(QorIdentifier parent) const {
    std::multimap<QorIdentifier, QorIdentifier> byHolder;
    for (const GroupRow& row : _rows)
        if (row.id != QorNoIdentifier) byHolder.emplace(holderOf(row), row.id);
    std::vector<QorIdentifier> found;
    QorIdentifier holder = parent;
    for (std::size_t at = 0;; holder = found[at++]) {
        const auto [first, last] = byHolder.equal_range(holder);
        const auto begin = static_cast<std::ptrdiff_t>(found.size());
        for (auto entry = first; entry != last; ++entry) found.push_back(entry->second);
        std::sort(found.begin() + begin, found.end());
        if (at == found.size()) return found;
    }
}

void ModelGroups::index(const GroupRow& row, QorIdentifier id) noexcept {
    _store.names.add(NameIndex::hashOf(scopeOf(holderOf(row)), text(row.name)), id);
}

void ModelGroups::unindex(const GroupRow& row, QorIdentifier id) noexcept {
    _store.names.remove(NameIndex::hashOf(scopeOf(holderOf(row)), text(row.name)), id);
}

void ModelGroups::note(StepKind kind, QorIdentifier id) {
    const GroupRow& row = *group(id);
    Step step;
    step.kind = kind;
    step.thing = QorThingKind::ModelGroup;
    step.id = id;
    step.scope = row.library;
    step.other = row.parent;
    step.row = _store.things.at(id).index;
    step.text = row.name;
    _store.journal.note(step);
}

QorBuildResult ModelGroups::add(QorIdentifier parent, std::string_view name) {
    const QorIdentifier library = libraryOf(parent);
    if (library == QorNoIdentifier) return refused(QorBuildError::UnknownIdentifier);
    if (const QorBuildError error = checkName(name); error != QorBuildError::None) return refused(error);
    if (const QorIdentifier holder = find(parent, name); holder != QorNoIdentifier)
        return refused(QorBuildError::DuplicateName, holder);
    if (depthOf(parent) >= kDeepest) return refused(QorBuildError::NestedTooDeeply);
    if (!_store.things.hasRoomFor(1, _rows.size())) return refused(QorBuildError::NoIdentifiersLeft);

    NewText newName(_store.texts, name);
    makeRoomForOne(_rows);
    _store.things.makeRoom(1);
    _store.names.makeRoom(1);
    _store.journal.makeRoom(1);

    GroupRow row;
    row.id = _store.things.add(QorThingKind::ModelGroup, _rows.size());
    row.library = library;
    row.parent = parent == library ? QorNoIdentifier : parent;
    row.name = newName.keep();
    _rows.push_back(row);
    index(row, row.id);
    note(StepKind::Added, row.id);
    return {row.id};
}

QorBuildResult ModelGroups::rename(QorIdentifier id, std::string_view name) {
    const GroupRow* const row = group(id);
    if (row == nullptr) return refused(QorBuildError::UnknownIdentifier);
    if (const QorBuildError error = checkName(name); error != QorBuildError::None) return refused(error);
    const QorIdentifier holder = find(holderOf(*row), name);
    if (holder == id) return {id};
    if (holder != QorNoIdentifier) return refused(QorBuildError::DuplicateName, holder);

    NewText newName(_store.texts, name);
    _store.names.makeRoom(1);
    note(StepKind::Renamed, id);
    unindex(*row, id);
    if (!_store.journal.isOn()) _store.texts.release(row->name);
    edit(id).name = newName.keep();
    index(*row, id);
    return {id};
}

QorBuildResult ModelGroups::move(QorIdentifier id, QorIdentifier parent) {
    const GroupRow* const row = group(id);
    const QorIdentifier library = libraryOf(parent);
    if (row == nullptr || library == QorNoIdentifier) return refused(QorBuildError::UnknownIdentifier);
    if (library != row->library) return refused(QorBuildError::ForeignLibrary);
    for (const GroupRow* above = group(parent); above != nullptr; above = group(above->parent))
        if (above->id == id) return refused(QorBuildError::GroupInItself);
    const QorIdentifier holder = find(parent, text(row->name));
    if (holder == id) return {id};
    if (holder != QorNoIdentifier) return refused(QorBuildError::DuplicateName, holder);
    if (depthOf(parent) + heightOf(id) > kDeepest) return refused(QorBuildError::NestedTooDeeply);

    _store.names.makeRoom(1);
    note(StepKind::Moved, id);
    unindex(*row, id);
    edit(id).parent = parent == library ? QorNoIdentifier : parent;
    index(*row, id);
    return {id};
}

QorBuildResult ModelGroups::remove(QorIdentifier id) {
    if (group(id) == nullptr) return refused(QorBuildError::UnknownIdentifier);
    if (!groupsIn(id).empty() || _models.hasThreadsIn(id)) return refused(QorBuildError::HasInstances);
    forget(id);
    if (!_store.journal.isOn()) sweep();
    return {id};
}

QorBuildResult ModelGroups::place(QorIdentifier threadId, QorIdentifier groupId) {
    const ThreadRow* const thread = _models.thread(threadId);
    const GroupRow* const row = group(groupId);
    if (thread == nullptr || (row == nullptr && groupId != QorNoIdentifier))
        return refused(QorBuildError::UnknownIdentifier);
    if (row != nullptr && row->library != _meta.libraryOf(thread->modelType))
        return refused(QorBuildError::ForeignLibrary);
    if (thread->group != groupId) _models.moveThread(threadId, groupId);
    return {threadId};
}

void ModelGroups::forget(QorIdentifier id) {
    note(StepKind::Removed, id);
    GroupRow& row = edit(id);
    unindex(row, id);
    _store.things.remove(id);
    row.id = QorNoIdentifier;
    if (!_store.journal.isOn()) _store.texts.release(row.name);
}

void ModelGroups::removeAllOf(QorIdentifier library) {
    std::vector<QorIdentifier> groups = groupsBelow(library);
    for (; !groups.empty(); groups.pop_back()) forget(groups.back());
    if (!_store.journal.isOn()) sweep();
}

// ---- The way back ----

void ModelGroups::takeBack(const Step& step) noexcept {
    GroupRow& row = _rows[step.kind == StepKind::Removed ? step.row : _store.things.at(step.id).index];
    switch (step.kind) {
        case StepKind::Added:
            unindex(row, step.id);
            _store.texts.release(row.name);
            _rows.pop_back();
            return _store.things.remove(step.id);
        case StepKind::Removed:
            row.id = step.id;
            _store.things.place(step.id, QorThingKind::ModelGroup, step.row);
            return index(row, step.id);
        case StepKind::Renamed:
            unindex(row, step.id);
            _store.texts.release(row.name);
            row.name = step.text;
            return index(row, step.id);
        case StepKind::Moved:
            unindex(row, step.id);
            row.parent = step.other;
            return index(row, step.id);
        default:
            return;
    }
}

void ModelGroups::bury(const Step& step) noexcept {
    if (step.kind == StepKind::Renamed || step.kind == StepKind::Removed) _store.texts.release(step.text);
}

void ModelGroups::sweep() noexcept { closeGaps(_store.things, _rows); }

// ---- In a repository file ----

bool ModelGroups::adopt(const StoredRow& stored) {
    if (_meta.library(stored.numbers[1]) == nullptr) return false;
    _store.names.makeRoom(1);
    const GroupRow row{stored.numbers[0], stored.numbers[1], stored.numbers[2], _store.texts.add(stored.texts[0])};
    _store.things.place(row.id, QorThingKind::ModelGroup, _rows.size());
    _rows.push_back(row);
    index(row, row.id);
    return true;
}

// A group may come before the one that it was moved into, so this is asked when all are there.
bool ModelGroups::areSound() const {
    for (const GroupRow& row : _rows) {
        std::size_t depth = 1;
        for (const GroupRow* at = &row; at->parent != QorNoIdentifier; ++depth) {
            at = group(at->parent);
            if (at == nullptr || at->library != row.library || depth > kDeepest) return false;
        }
        if (find(holderOf(row), text(row.name)) != row.id) return false;
    }
    return true;
}

StoredRow ModelGroups::stored(QorIdentifier id, std::size_t row) const {
    return {StoredTable::ModelGroups, {id, _rows[row].library, _rows[row].parent}, {text(_rows[row].name)}};
}

}  // namespace qor::embedded
