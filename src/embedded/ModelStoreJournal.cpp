// SPDX-License-Identifier: Apache-2.0
// The models' way back: taking back what was added or changed, knowing again what was removed.
#include "embedded/ModelStore.h"

namespace qor::embedded {

void ModelStore::takeBack(const Step& step) noexcept {
    switch (step.kind) {
        case StepKind::Added:
            return takeBackAdded(step);
        case StepKind::Removed:
            return takeBackRemoved(step);
        case StepKind::Renamed:
            return takeBackName(step);
        case StepKind::Moved:
            _threads[_store.things.at(step.id).index].group = step.other;
            return;
        case StepKind::EndMoved:
            return takeBackEnd(step);
        default:
            return;
    }
}

// What was added last stands last wherever it stands, but for a record row in its owner's list.
void ModelStore::takeBackAdded(const Step& step) noexcept {
    const std::size_t at = _store.things.at(step.id).index;
    switch (step.thing) {
        case QorThingKind::ModelThread: {
            const ThreadRow& row = _threads[at];
            _store.names.remove(NameIndex::hashOf({row.modelType, nameTag::kThread}, text(row.name)), step.id);
            _store.texts.release(row.name);
            _threads.pop_back();
            break;
        }
        case QorThingKind::Model: {
            const ModelRow& row = _models[at];
            _meta.editLibrary(step.scope).models.takeBackLast();
            _threads[_store.things.at(row.thread).index].versions.takeBackLast();
            _store.names.remove(NameIndex::hashOf({row.thread, nameTag::kVersion}, text(row.version)), step.id);
            _store.texts.release(row.version);
            _models.pop_back();
            break;
        }
        case QorThingKind::Object: {
            const ObjectRow row = _tables.objects[at];
            ModelRow& owner = editModel(row.model);
            owner.objects.takeBackLast();
            bucketFor(owner, row.cls).objects.takeBackLast();
            _meta.countInstance(row.cls, -1);
            _store.names.remove(NameIndex::hashOf({row.model, row.cls}, text(row.name)), step.id);
            _store.texts.release(row.name);
            _tables.objects.pop_back();
            _adjacency.forget();
            break;
        }
        case QorThingKind::Relation:
            editModel(step.scope).relations.takeBackLast();
            --_meta.editRelationClass(_tables.relations[at].relationClass).instances;
            _tables.relations.pop_back();
            _adjacency.forget();
            break;
        default: {
            const RecordRow row = _rows[at];
            const auto place = _rowsOf.find({row.owner, row.attribute});
            place->second.erase(place->second.begin() + step.position);  // the list stays: an earlier step may need it
            _meta.countInstance(row.recordClass, -1);
            _rows.pop_back();
            break;
        }
    }
    _store.things.remove(step.id);
}

// Everything has kept its room, so nothing here needs memory.
void ModelStore::takeBackRemoved(const Step& step) noexcept {
    _store.things.place(step.id, step.thing, step.row);
    switch (step.thing) {
        case QorThingKind::ModelThread: {
            ThreadRow& row = _threads[step.row];
            row.id = step.id;
            _store.names.add(NameIndex::hashOf({row.modelType, nameTag::kThread}, text(row.name)), step.id);
            --_gone.threads;
            break;
        }
        case QorThingKind::Model: {
            ModelRow& row = _models[step.row];
            row.id = step.id;
            _meta.editLibrary(step.scope).models.noteReturn();
            _threads[_store.things.at(row.thread).index].versions.noteReturn();
            _store.names.add(NameIndex::hashOf({row.thread, nameTag::kVersion}, text(row.version)), step.id);
            --_gone.models;
            break;
        }
        case QorThingKind::Object: {
            ObjectRow& row = _tables.objects[step.row];
            row.id = step.id;
            ModelRow& owner = editModel(row.model);
            owner.objects.noteReturn();
            bucketFor(owner, row.cls).objects.noteReturn();
            _meta.countInstance(row.cls, 1);
            _store.names.add(NameIndex::hashOf({row.model, row.cls}, text(row.name)), step.id);
            --_gone.objects;
            _adjacency.forget();
            break;
        }
        case QorThingKind::Relation: {
            RelationRow& row = _tables.relations[step.row];
            row.id = step.id;
            editModel(step.scope).relations.noteReturn();
            ++_meta.editRelationClass(row.relationClass).instances;
            --_gone.relations;
            _adjacency.forget();
            break;
        }
        default: {
            RecordRow& row = _rows[step.row];
            row.id = step.id;
            std::vector<QorIdentifier>& list = _rowsOf.find({row.owner, row.attribute})->second;
            list.insert(list.begin() + step.position, step.id);
            _meta.countInstance(row.recordClass, 1);
            --_gone.rows;
            break;
        }
    }
}

void ModelStore::takeBackName(const Step& step) noexcept {
    const NameScope within = nameScopeOf(step.id);
    TextRef& its = nameIn(step.id);
    _store.names.remove(NameIndex::hashOf(within, text(its)), step.id);
    _store.texts.release(its);
    its = step.text;
    _store.names.add(NameIndex::hashOf(within, text(its)), step.id);
}

void ModelStore::takeBackEnd(const Step& step) noexcept {
    RelationRow& row = _tables.relations[_store.things.at(step.id).index];
    (step.atSource ? row.from : row.to) = step.other;
    _adjacency.forget();
}

void ModelStore::bury(const Step& step) noexcept {
    if (step.kind == StepKind::Renamed) return _store.texts.release(step.text);
    if (step.kind != StepKind::Removed) return;
    switch (step.thing) {
        case QorThingKind::ModelThread:
            _store.texts.release(_threads[step.row].name);
            _threads[step.row] = {};
            break;
        case QorThingKind::Model:
            _store.texts.release(_models[step.row].version);
            if (const QorIdentifier its = _models[step.row].thread; thread(its) != nullptr)
                _threads[_store.things.at(its).index].versions.tidy(_store.things);
            if (_meta.library(step.scope) != nullptr) _meta.editLibrary(step.scope).models.tidy(_store.things);
            _models[step.row] = {};
            break;
        case QorThingKind::Object:
            _store.texts.release(_tables.objects[step.row].name);
            break;
        case QorThingKind::RecordRow: {
            const auto list = _rowsOf.find({_rows[step.row].owner, _rows[step.row].attribute});
            if (_store.journal.isOn() && list != _rowsOf.end() && list->second.empty()) _rowsOf.erase(list);
            break;
        }
        default:
            break;
    }
}

void ModelStore::tidy(const std::vector<Step>& steps) noexcept {
    bool someAreGone = false;
    for (const Step& step : steps) {
        if (step.kind != StepKind::Removed) continue;
        someAreGone = true;
        if (step.thing == QorThingKind::Object) tidyLists(step.scope, _tables.objects[step.row].cls);
        if (step.thing == QorThingKind::Relation) tidyLists(step.scope, QorNoIdentifier);
    }
    if (someAreGone) sweepWhenHalfIsGone();
}

}  // namespace qor::embedded
