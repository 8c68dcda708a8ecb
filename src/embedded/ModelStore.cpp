// SPDX-License-Identifier: Apache-2.0
#include "embedded/ModelStore.h"

#include <algorithm>

namespace qor::embedded {

ModelStore::ModelStore(Store& store, MetaModel& meta, Values& values) : _store(store), _meta(meta), _values(values) {}

QorBuildResult ModelStore::addModel(QorIdentifier modelType, std::string_view name, std::string_view version) {
    if (_meta.modelType(modelType) == nullptr) return refused(QorBuildError::UnknownIdentifier);
    if (const QorBuildError error = checkName(name); error != QorBuildError::None) return refused(error);
    if (const QorBuildError error = checkName(version);
        error != QorBuildError::None && error != QorBuildError::EmptyName)
        return refused(error);
    QorIdentifier thread = findThread(modelType, name);
    if (thread != QorNoIdentifier)
        if (const QorIdentifier holder = findVersion(thread, version); holder != QorNoIdentifier)
            return refused(QorBuildError::DuplicateName, holder);
    if (!_store.things.hasRoomFor(2, std::max(_models.size(), _threads.size())))
        return refused(QorBuildError::NoIdentifiersLeft);

    NewText threadName(_store.texts, thread == QorNoIdentifier ? name : std::string_view());
    NewText versionText(_store.texts, version);
    LibraryRow& library = _meta.editLibrary(_meta.libraryOf(modelType));
    library.models.makeRoom();
    makeRoomForOne(_models);
    makeRoomForOne(_threads);
    _store.things.makeRoom(2);
    _store.names.makeRoom(2);
    _store.journal.makeRoom(2);
    ThreadRow fresh;
    (thread == QorNoIdentifier ? fresh : _threads[_store.things.at(thread).index]).versions.makeRoom();

    if (thread == QorNoIdentifier) {
        thread = fresh.id = _store.things.add(QorThingKind::ModelThread, _threads.size());
        fresh.modelType = modelType;
        fresh.name = threadName.keep();
        _store.names.add(NameIndex::hashOf({modelType, nameTag::kThread}, name), thread);
        _threads.push_back(std::move(fresh));
        noteAdded(QorThingKind::ModelThread, thread, library.id);
    }
    ModelRow row;
    row.id = _store.things.add(QorThingKind::Model, _models.size());
    row.thread = thread;
    row.version = versionText.keep();
    _store.names.add(NameIndex::hashOf({thread, nameTag::kVersion}, version), row.id);
    _threads[_store.things.at(thread).index].versions.add(row.id);
    library.models.add(row.id);
    _models.push_back(std::move(row));
    noteAdded(QorThingKind::Model, _models.back().id, library.id);
    return {_models.back().id};
}

ObjectsOfClass& ModelStore::bucketFor(ModelRow& model, QorIdentifier cls) {
    const auto place = std::lower_bound(model.byClass.begin(), model.byClass.end(), cls,
                                        [](const ObjectsOfClass& bucket, QorIdentifier id) { return bucket.cls < id; });
    if (place != model.byClass.end() && place->cls == cls) return *place;
    return *model.byClass.insert(place, ObjectsOfClass{cls, {}});
}

QorBuildResult ModelStore::addObject(QorIdentifier modelId, QorIdentifier cls, std::string_view name) {
    if (model(modelId) == nullptr) return refused(QorBuildError::UnknownIdentifier);
    const ClassRow* const classRow = _meta.objectClass(cls);
    if (classRow == nullptr) return refused(QorBuildError::UnknownIdentifier);
    if (classRow->isAbstract) return refused(QorBuildError::AbstractClass);
    if (!_meta.allows(*_meta.modelType(modelTypeOf(modelId)), cls)) return refused(QorBuildError::ClassNotInModelType);
    if (const QorBuildError error = checkName(name); error != QorBuildError::None) return refused(error);
    if (const QorIdentifier holder = findObject(modelId, cls, name); holder != QorNoIdentifier)
        return refused(QorBuildError::DuplicateName, holder);
    if (!_store.things.hasRoomFor(1, _tables.objects.size())) return refused(QorBuildError::NoIdentifiersLeft);

    NewText text(_store.texts, name);
    ModelRow& owner = editModel(modelId);
    owner.objects.makeRoom();
    ObjectsOfClass& bucket = bucketFor(owner, cls);
    bucket.objects.makeRoom();
    makeRoomForOne(_tables.objects);
    _store.things.makeRoom(1);
    _store.names.makeRoom(1);
    _store.journal.makeRoom(1);

    const QorIdentifier id = _store.things.add(QorThingKind::Object, _tables.objects.size());
    _tables.objects.push_back({id, cls, modelId, text.keep()});
    owner.objects.add(id);
    bucket.objects.add(id);
    _meta.countInstance(cls, 1);
    _store.names.add(NameIndex::hashOf({modelId, cls}, name), id);
    noteAdded(QorThingKind::Object, id, modelId);
    return {id};
}

QorBuildError ModelStore::checkEnds(const RelationClassRow& relationClass, QorIdentifier from, QorIdentifier to) const {
    const ObjectRow* const source = object(from);
    const ObjectRow* const target = object(to);
    if (source == nullptr || target == nullptr) return QorBuildError::UnknownIdentifier;
    if (source->model != target->model) return QorBuildError::ForeignModel;
    if (!_meta.isA(source->cls, relationClass.from)) return QorBuildError::SourceDoesNotFit;
    if (!_meta.isA(target->cls, relationClass.to)) return QorBuildError::TargetDoesNotFit;
    return QorBuildError::None;
}

QorBuildResult ModelStore::addRelation(QorIdentifier relationClass, QorIdentifier from, QorIdentifier to) {
    const RelationClassRow* const classRow = _meta.relationClass(relationClass);
    if (classRow == nullptr) return refused(QorBuildError::UnknownIdentifier);
    if (const QorBuildError error = checkEnds(*classRow, from, to); error != QorBuildError::None) return refused(error);
    if (!_store.things.hasRoomFor(1, _tables.relations.size())) return refused(QorBuildError::NoIdentifiersLeft);

    ModelRow& owner = editModel(object(from)->model);
    owner.relations.makeRoom();
    makeRoomForOne(_tables.relations);
    _store.things.makeRoom(1);
    _store.journal.makeRoom(1);

    const QorIdentifier id = _store.things.add(QorThingKind::Relation, _tables.relations.size());
    _tables.relations.push_back({id, relationClass, from, to});
    owner.relations.add(id);
    noteAdded(QorThingKind::Relation, id, owner.id);
    ++_meta.editRelationClass(relationClass).instances;
    return {id};
}

QorBuildResult ModelStore::renameObject(QorIdentifier id, std::string_view name) {
    const ObjectRow* const row = object(id);
    if (row == nullptr) return refused(QorBuildError::UnknownIdentifier);
    if (const QorBuildError error = checkName(name); error != QorBuildError::None) return refused(error);
    const QorIdentifier holder = findObject(row->model, row->cls, name);
    if (holder == id) return {id};
    if (holder != QorNoIdentifier) return refused(QorBuildError::DuplicateName, holder);

    return rename(id, row->model, name);
}

QorBuildResult ModelStore::renameThread(QorIdentifier id, std::string_view name) {
    const ThreadRow* const row = thread(id);
    if (row == nullptr) return refused(QorBuildError::UnknownIdentifier);
    if (const QorBuildError error = checkName(name); error != QorBuildError::None) return refused(error);
    const QorIdentifier holder = findThread(row->modelType, name);
    if (holder == id) return {id};
    if (holder != QorNoIdentifier) return refused(QorBuildError::DuplicateName, holder);
    return rename(id, libraryOfThread(id), name);
}

NameScope ModelStore::nameScopeOf(QorIdentifier id) const {
    if (const ObjectRow* row = object(id)) return {row->model, row->cls};
    return {thread(id)->modelType, nameTag::kThread};
}

TextRef& ModelStore::nameIn(QorIdentifier id) {
    return object(id) ? editObject(id).name : _threads[_store.things.at(id).index].name;
}

QorBuildResult ModelStore::rename(QorIdentifier id, QorIdentifier scope, std::string_view name) {
    NewText newName(_store.texts, name);
    _store.names.makeRoom(1);
    const NameScope within = nameScopeOf(id);
    TextRef& its = nameIn(id);
    noteChange(StepKind::Renamed, id, scope, its, QorNoIdentifier);
    _store.names.remove(NameIndex::hashOf(within, text(its)), id);
    _store.names.add(NameIndex::hashOf(within, name), id);
    if (!_store.journal.isOn()) _store.texts.release(its);
    its = newName.keep();
    return {id};
}

void ModelStore::noteChange(StepKind kind, QorIdentifier id, QorIdentifier scope, TextRef text, QorIdentifier other) {
    Step step;
    step.kind = kind;
    step.thing = _store.things.kindOf(id);
    step.id = id;
    step.scope = scope;
    step.text = text;
    step.other = other;
    _store.journal.note(step);
}

void ModelStore::moveThread(QorIdentifier id, QorIdentifier group) {
    QorIdentifier& its = _threads[_store.things.at(id).index].group;
    noteChange(StepKind::Moved, id, libraryOfThread(id), 0, its);
    its = group;
}

bool ModelStore::hasThreadsIn(QorIdentifier group) const {
    return std::any_of(_threads.begin(), _threads.end(),
                       [&](const ThreadRow& row) { return row.id != QorNoIdentifier && row.group == group; });
}

QorBuildResult ModelStore::moveEnd(QorIdentifier id, Adjacency::Direction direction, QorIdentifier objectId) {
    const RelationRow* const row = relation(id);
    if (row == nullptr) return refused(QorBuildError::UnknownIdentifier);
    const bool atSource = direction == Adjacency::Outgoing;
    const QorBuildError error = checkEnds(*_meta.relationClass(row->relationClass), atSource ? objectId : row->from,
                                          atSource ? row->to : objectId);
    if (error != QorBuildError::None) return refused(error);
    Step step;
    step.kind = StepKind::EndMoved;
    step.thing = QorThingKind::Relation;
    step.id = id;
    step.scope = modelOf(id);
    step.atSource = atSource;
    step.other = atSource ? row->from : row->to;
    _store.journal.makeRoom(1);
    _adjacency.moveEnd(direction, _tables.relations[_store.things.at(id).index], objectId);
    _store.journal.note(step);
    return {id};
}

QorBuildResult ModelStore::removeObject(QorIdentifier id) {
    if (object(id) == nullptr) return refused(QorBuildError::UnknownIdentifier);
    std::vector<QorIdentifier> relations;
    for (const Adjacency::Direction direction : {Adjacency::Outgoing, Adjacency::Incoming})
        for (const QorRelationEnd& end : ends(direction, id)) relations.push_back(end.relation);

    const QorIdentifier modelId = object(id)->model;
    const QorIdentifier cls = object(id)->cls;
    for (const QorIdentifier relationId : relations) {
        const RelationRow* const row = relation(relationId);
        if (row == nullptr) continue;  // a self-loop, met a second time
        _adjacency.noteRemoval(*row);
        forgetRelation(relationId);
    }
    forgetObject(id);
    if (_store.journal.isOn()) return {id};
    tidyLists(modelId, cls);
    sweepWhenHalfIsGone();
    return {id};
}

// The adjacency keeps what it has of the model: no other model's objects reach into it, and nobody asks for an object
// that is gone.
QorBuildResult ModelStore::removeModel(QorIdentifier id) {
    if (model(id) == nullptr) return refused(QorBuildError::UnknownIdentifier);
    const QorIdentifier threadId = model(id)->thread;
    const ModelRow& row = *model(id);
    row.relations.forEach(_store.things, [&](QorIdentifier relationId) { forgetRelation(relationId); });
    row.objects.forEach(_store.things, [&](QorIdentifier objectId) { forgetObject(objectId); });
    forgetModel(id);
    if (thread(threadId)->versions.empty()) forgetThread(threadId);
    if (!_store.journal.isOn()) sweepWhenHalfIsGone();
    return {id};
}

void ModelStore::noteAdded(QorThingKind kind, QorIdentifier id, QorIdentifier scope, std::size_t position) {
    Step step;
    step.thing = kind;
    step.id = id;
    step.scope = scope;
    step.position = static_cast<std::uint32_t>(position);
    _store.journal.note(step);
}

Step ModelStore::noteRemoved(QorIdentifier id, QorIdentifier scope, std::size_t position) {
    const ThingPlace place = _store.things.at(id);
    Step step;
    step.kind = StepKind::Removed;
    step.thing = place.kind;
    step.id = id;
    step.scope = scope;
    step.row = place.index;
    step.position = static_cast<std::uint32_t>(position);
    _store.journal.note(step);
    return step;
}

void ModelStore::gone(const Step& step) noexcept {
    _store.things.remove(step.id);
    if (!_store.journal.isOn()) bury(step);
}

void ModelStore::forgetRelation(QorIdentifier id) {
    forgetRows(id);
    const QorIdentifier modelId = modelOf(id);
    RelationRow& row = _tables.relations[_store.things.at(id).index];
    _values.clearAll(id, row.relationClass, modelId);
    const Step step = noteRemoved(id, modelId);
    --_meta.editRelationClass(row.relationClass).instances;
    editModel(modelId).relations.noteRemoval();
    row.id = QorNoIdentifier;
    ++_gone.relations;
    gone(step);
}

void ModelStore::forgetObject(QorIdentifier id) {
    forgetRows(id);
    ObjectRow& row = editObject(id);
    _values.clearAll(id, row.cls, row.model);
    const Step step = noteRemoved(id, row.model);
    _meta.countInstance(row.cls, -1);
    _store.names.remove(NameIndex::hashOf({row.model, row.cls}, text(row.name)), id);
    ModelRow& owner = editModel(row.model);
    owner.objects.noteRemoval();
    bucketFor(owner, row.cls).objects.noteRemoval();
    row.id = QorNoIdentifier;
    ++_gone.objects;
    gone(step);
}

void ModelStore::forgetModel(QorIdentifier id) {
    ModelRow& row = editModel(id);
    const QorIdentifier library = libraryOfThread(row.thread);
    const Step step = noteRemoved(id, library);
    _store.names.remove(NameIndex::hashOf({row.thread, nameTag::kVersion}, text(row.version)), id);
    _threads[_store.things.at(row.thread).index].versions.noteRemoval();
    _meta.editLibrary(library).models.noteRemoval();
    row.id = QorNoIdentifier;
    ++_gone.models;
    gone(step);
}

void ModelStore::forgetThread(QorIdentifier id) {
    ThreadRow& row = _threads[_store.things.at(id).index];
    const Step step = noteRemoved(id, libraryOfThread(id));
    _store.names.remove(NameIndex::hashOf({row.modelType, nameTag::kThread}, text(row.name)), id);
    row.id = QorNoIdentifier;
    ++_gone.threads;
    gone(step);
}

QorIdentifier ModelStore::libraryOfThread(QorIdentifier id) const { return _meta.libraryOf(thread(id)->modelType); }

void ModelStore::tidyLists(QorIdentifier modelId, QorIdentifier cls) noexcept {
    if (model(modelId) == nullptr) return;
    ModelRow& row = editModel(modelId);
    row.objects.tidy(_store.things);
    row.relations.tidy(_store.things);
    if (cls != QorNoIdentifier) bucketFor(row, cls).objects.tidy(_store.things);
}

void ModelStore::reserve(std::size_t objects, std::size_t relations) {
    makeRoomFor(_tables.objects, objects);
    makeRoomFor(_tables.relations, relations);
    _store.things.makeRoom(objects + relations);
    _store.names.makeRoom(objects);
    _store.journal.makeRoom(objects + relations);
}

void ModelStore::layOut() {
    if (_gone.objects + _gone.relations > 0 && !_store.journal.isOn()) sweep();
    _adjacency.foldIn();
}

void ModelStore::sweepWhenHalfIsGone() noexcept {
    const auto halfOf = [](std::size_t gone, const auto& rows) { return gone * 2 > rows.size(); };
    if (halfOf(_gone.objects, _tables.objects) || halfOf(_gone.relations, _tables.relations) ||
        halfOf(_gone.rows, _rows) || halfOf(_gone.models, _models) || halfOf(_gone.threads, _threads))
        sweep();
}

void ModelStore::sweep() noexcept {
    if (_gone.objects + _gone.relations > 0) _adjacency.forget();
    closeGaps(_store.things, _tables.objects);
    closeGaps(_store.things, _tables.relations);
    closeGaps(_store.things, _rows);
    closeGaps(_store.things, _models);
    closeGaps(_store.things, _threads);
    _gone = {};
}

}  // namespace qor::embedded
