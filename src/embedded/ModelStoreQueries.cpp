// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "embedded/ModelStore.h"

namespace qor::embedded {

const ThreadRow* ModelStore::thread(QorIdentifier id) const {
    return rowOf(_store.things, _threads, id, QorThingKind::ModelThread);
}

const ModelRow* ModelStore::model(QorIdentifier id) const {
    return rowOf(_store.things, _models, id, QorThingKind::Model);
}

const ObjectRow* ModelStore::object(QorIdentifier id) const {
    return rowOf(_store.things, _tables.objects, id, QorThingKind::Object);
}

std::size_t ModelStore::viewObjects(std::span<const long> objects, std::span<QorObjectView> views) {
    _adjacency.prepare();
    const auto most = std::min(objects.size(), views.size());
    for (std::size_t at = 0; at < most; ++at) {
        const ThingPlace place = _store.things.at(Qor_NarrowIdentifier(objects[at]).value_or(QorNoIdentifier));
        if (place.kind != QorThingKind::Object) return at;
        views[at] = {_tables.objects[place.index].cls, _adjacency.preparedEnds(Adjacency::Outgoing, place.index),
                     _adjacency.preparedEnds(Adjacency::Incoming, place.index)};
    }
    return most;
}

const RelationRow* ModelStore::relation(QorIdentifier id) const {
    return rowOf(_store.things, _tables.relations, id, QorThingKind::Relation);
}

const RecordRow* ModelStore::row(QorIdentifier id) const {
    return rowOf(_store.things, _rows, id, QorThingKind::RecordRow);
}

QorIdentifier ModelStore::classOfInstance(QorIdentifier id) const {
    const ThingPlace place = _store.things.at(id);
    switch (place.kind) {
        case QorThingKind::Object:
            return _tables.objects[place.index].cls;
        case QorThingKind::Relation:
            return _tables.relations[place.index].relationClass;
        case QorThingKind::RecordRow:
            return _rows[place.index].recordClass;
        default:
            return QorNoIdentifier;
    }
}

QorIdentifier ModelStore::modelOf(QorIdentifier id) const {
    const ThingPlace place = _store.things.at(id);
    switch (place.kind) {
        case QorThingKind::Model:
            return id;
        case QorThingKind::Object:
            return _tables.objects[place.index].model;
        case QorThingKind::Relation:
            return modelOf(_tables.relations[place.index].from);
        case QorThingKind::RecordRow:
            return modelOf(_rows[place.index].owner);
        default:
            return QorNoIdentifier;
    }
}

QorIdentifier ModelStore::modelTypeOf(QorIdentifier id) const {
    const ModelRow* row = model(id);
    const ThreadRow* owner = row ? thread(row->thread) : thread(id);
    return owner ? owner->modelType : QorNoIdentifier;
}

const IdentifierList* ModelStore::objectsOfClass(const ModelRow& model, QorIdentifier cls) const {
    const auto place = std::lower_bound(model.byClass.begin(), model.byClass.end(), cls,
                                        [](const ObjectsOfClass& bucket, QorIdentifier id) { return bucket.cls < id; });
    return place != model.byClass.end() && place->cls == cls ? &place->objects : nullptr;
}

QorIdentifier ModelStore::findThread(QorIdentifier modelType, std::string_view name) const {
    return _store.names.find(NameIndex::hashOf({modelType, nameTag::kThread}, name), [&](QorIdentifier id) {
        const ThreadRow* row = thread(id);
        return row != nullptr && row->modelType == modelType && text(row->name) == name;
    });
}

QorIdentifier ModelStore::findVersion(QorIdentifier threadId, std::string_view version) const {
    return _store.names.find(NameIndex::hashOf({threadId, nameTag::kVersion}, version), [&](QorIdentifier id) {
        const ModelRow* row = model(id);
        return row != nullptr && row->thread == threadId && text(row->version) == version;
    });
}

QorIdentifier ModelStore::findObject(QorIdentifier modelId, QorIdentifier cls, std::string_view name) const {
    return _store.names.find(NameIndex::hashOf({modelId, cls}, name), [&](QorIdentifier id) {
        const ObjectRow* row = object(id);
        return row != nullptr && row->model == modelId && row->cls == cls && text(row->name) == name;
    });
}

std::string_view ModelStore::nameOf(QorIdentifier id) const {
    if (const ObjectRow* row = object(id)) return text(row->name);
    const ModelRow* row = model(id);
    const ThreadRow* owner = row ? thread(row->thread) : thread(id);
    return owner ? text(owner->name) : std::string_view();
}

std::size_t ModelStore::bytes() const {
    std::size_t lists = 0;
    for (const ModelRow& row : _models) {
        lists += row.objects.bytes() + row.relations.bytes();
        for (const ObjectsOfClass& bucket : row.byClass) lists += bucket.objects.bytes();
    }
    return _tables.objects.capacity() * sizeof(ObjectRow) + _tables.relations.capacity() * sizeof(RelationRow) +
           _rows.capacity() * sizeof(RecordRow) + _models.capacity() * sizeof(ModelRow) +
           _threads.capacity() * sizeof(ThreadRow) + _adjacency.bytes() + lists;
}

}  // namespace qor::embedded
