// SPDX-License-Identifier: Apache-2.0
// The models' rows in a repository file: taking them in, and what their things look like as rows.
#include <algorithm>

#include "embedded/ModelStore.h"

namespace qor::embedded {

bool ModelStore::adopt(const StoredRow& stored) {
    const auto& numbers = stored.numbers;
    const QorIdentifier id = numbers[0];
    const auto place = [&](QorThingKind kind, std::size_t row) { _store.things.place(id, kind, row); };
    const auto index = [&](NameScope scope) {
        _store.names.makeRoom(1);
        _store.names.add(NameIndex::hashOf(scope, stored.texts[0]), id);
    };
    switch (stored.table) {
        case StoredTable::Threads: {
            const bool isInGroup = numbers[2] != QorNoIdentifier;
            if (_meta.modelType(numbers[1]) == nullptr ||
                (isInGroup && _store.things.kindOf(numbers[2]) != QorThingKind::ModelGroup))
                return false;
            ThreadRow row;
            row.id = id;
            row.modelType = numbers[1];
            row.group = numbers[2];
            row.name = _store.texts.add(stored.texts[0]);
            index({row.modelType, nameTag::kThread});
            place(QorThingKind::ModelThread, _threads.size());
            _threads.push_back(std::move(row));
            return true;
        }
        case StoredTable::Models: {
            if (thread(numbers[1]) == nullptr) return false;
            ModelRow row;
            row.id = id;
            row.thread = numbers[1];
            row.version = _store.texts.add(stored.texts[0]);
            IdentifierList& versions = _threads[_store.things.at(row.thread).index].versions;
            IdentifierList& models = _meta.editLibrary(libraryOfThread(row.thread)).models;
            versions.makeRoom();
            versions.add(id);
            models.makeRoom();
            models.add(id);
            index({row.thread, nameTag::kVersion});
            place(QorThingKind::Model, _models.size());
            _models.push_back(std::move(row));
            return true;
        }
        case StoredTable::Objects: {
            const QorIdentifier cls = numbers[1];
            if (_meta.objectClass(cls) == nullptr || model(numbers[2]) == nullptr) return false;
            ModelRow& owner = editModel(numbers[2]);
            ObjectsOfClass& bucket = bucketFor(owner, cls);
            owner.objects.makeRoom();
            owner.objects.add(id);
            bucket.objects.makeRoom();
            bucket.objects.add(id);
            _meta.countInstance(cls, 1);
            index({owner.id, cls});
            place(QorThingKind::Object, _tables.objects.size());
            _tables.objects.push_back({id, cls, owner.id, _store.texts.add(stored.texts[0])});
            return true;
        }
        case StoredTable::Relations: {
            const ObjectRow* const source = object(numbers[2]);
            const ObjectRow* const target = object(numbers[3]);
            if (_meta.relationClass(numbers[1]) == nullptr || source == nullptr || target == nullptr ||
                source->model != target->model)
                return false;
            ModelRow& owner = editModel(source->model);
            owner.relations.makeRoom();
            owner.relations.add(id);
            ++_meta.editRelationClass(numbers[1]).instances;
            place(QorThingKind::Relation, _tables.relations.size());
            _tables.relations.push_back({id, numbers[1], numbers[2], numbers[3]});
            return true;
        }
        case StoredTable::RecordRows: {
            const AttributeRow* const attribute = _meta.attribute(numbers[3]);
            const ClassRow* const cls = _meta.anyClass(numbers[1]);
            if (attribute == nullptr || attribute->type != QorCoreAttributeType::Record || cls == nullptr ||
                !cls->isRecordClass || classOfInstance(numbers[2]) == QorNoIdentifier ||
                depthOf(numbers[2]) >= kDeepestRows)
                return false;
            _meta.countInstance(numbers[1], 1);
            place(QorThingKind::RecordRow, _rows.size());
            _rows.push_back({id, numbers[1], numbers[2], numbers[3]});
            return true;
        }
        default:
            return false;
    }
}

void ModelStore::orderRows(std::vector<StoredRow>& rows) {
    std::sort(rows.begin(), rows.end(), [](const StoredRow& a, const StoredRow& b) {
        return std::array{a.numbers[2], a.numbers[3], a.numbers[4]} <
               std::array{b.numbers[2], b.numbers[3], b.numbers[4]};
    });
    for (const StoredRow& row : rows) _rowsOf[{row.numbers[2], row.numbers[3]}].push_back(row.numbers[0]);
}

StoredRow ModelStore::stored(QorThingKind kind, QorIdentifier id, std::size_t at, std::size_t position) const {
    switch (kind) {
        case QorThingKind::ModelThread:
            return {StoredTable::Threads, {id, _threads[at].modelType, _threads[at].group}, {text(_threads[at].name)}};
        case QorThingKind::Model:
            return {StoredTable::Models, {id, _models[at].thread}, {text(_models[at].version)}};
        case QorThingKind::Object: {
            const ObjectRow& row = _tables.objects[at];
            return {StoredTable::Objects, {id, row.cls, row.model}, {text(row.name)}};
        }
        case QorThingKind::Relation: {
            const RelationRow& row = _tables.relations[at];
            return {StoredTable::Relations, {id, row.relationClass, row.from, row.to}};
        }
        default: {
            const RecordRow& row = _rows[at];
            return {StoredTable::RecordRows,
                    {id, row.recordClass, row.owner, row.attribute, static_cast<QorIdentifier>(position)}};
        }
    }
}

}  // namespace qor::embedded
