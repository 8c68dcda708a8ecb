// SPDX-License-Identifier: Apache-2.0
// The meta-model's way back: taking back what was added, knowing again what was removed.
#include "embedded/MetaModel.h"

namespace qor::embedded {

QorIdentifier MetaModel::scopeOf(QorIdentifier id) const {
    switch (_store.things.kindOf(id)) {
        case QorThingKind::Class:
        case QorThingKind::RecordClass:
        case QorThingKind::RelationClass:
            return id;
        case QorThingKind::Attribute:
            return attribute(id)->owner;
        default:
            return libraryOf(id);
    }
}

MetaModel::Entry MetaModel::entryOf(QorThingKind kind, std::size_t row) noexcept {
    switch (kind) {
        case QorThingKind::ApplicationLibrary:
            return {&_libraries[row].id, &_libraries[row].name, {kAnywhere, nameTag::kLibrary}};
        case QorThingKind::LibraryPart:
            return {&_parts[row].id, &_parts[row].name, kNotIndexed};
        case QorThingKind::RelationClass: {
            RelationClassRow& its = _relationClasses[row];
            return {&its.id, &its.name, {its.part, nameTag::kRelationClass}};
        }
        case QorThingKind::Attribute: {
            AttributeRow& its = _attributes[row];
            return {&its.id, &its.name, {its.owner, nameTag::kAttribute}};
        }
        case QorThingKind::ModelType: {
            ModelTypeRow& its = _modelTypes[row];
            return {&its.id, &its.name, {its.library, nameTag::kModelType}};
        }
        default: {
            ClassRow& its = _classes[row];
            return {&its.id, &its.name, {its.part, nameTag::kClass}};
        }
    }
}

void MetaModel::takeBack(const Step& step) noexcept {
    if (step.kind == StepKind::Added) return takeBackAdded(step);
    const Entry entry = entryOf(step.thing, step.row);
    *entry.id = step.id;
    _store.things.place(step.id, step.thing, step.row);
    if (entry.scope.within != kNotIndexed.within)
        _store.names.add(NameIndex::hashOf(entry.scope, text(*entry.name)), step.id);
    if (step.thing == QorThingKind::Attribute) noteAttributeBelow(_attributes[step.row], 1);
}

// What was added last stands last wherever it stands.
void MetaModel::takeBackAdded(const Step& step) noexcept {
    const std::size_t row = _store.things.at(step.id).index;
    if (step.thing == QorThingKind::Attribute) noteAttributeBelow(_attributes[row], -1);
    const Entry entry = entryOf(step.thing, row);
    if (entry.scope.within != kNotIndexed.within)
        _store.names.remove(NameIndex::hashOf(entry.scope, text(*entry.name)), step.id);
    releaseTexts(step.thing, row);
    switch (step.thing) {
        case QorThingKind::ApplicationLibrary:
            _libraries.pop_back();
            break;
        case QorThingKind::LibraryPart:
            _parts.pop_back();
            break;
        case QorThingKind::RelationClass: {
            const RelationClassRow& its = _relationClasses[row];
            _parts[_store.things.at(its.part).index].relationClasses.pop_back();
            editClass(its.from).outgoing.pop_back();
            editClass(its.to).incoming.pop_back();
            _relationClasses.pop_back();
            break;
        }
        case QorThingKind::Attribute: {
            const QorIdentifier owner = _attributes[row].owner;
            (anyClass(owner) ? editClass(owner).attributes : editRelationClass(owner).attributes).pop_back();
            _attributes.pop_back();
            break;
        }
        case QorThingKind::ModelType:
            editLibrary(_modelTypes[row].library).modelTypes.pop_back();
            _modelTypes.pop_back();
            break;
        default: {
            const ClassRow& its = _classes[row];
            _parts[_store.things.at(its.part).index].classes.pop_back();
            if (its.superclass != QorNoIdentifier) editClass(its.superclass).subclasses.pop_back();
            _classes.pop_back();
            break;
        }
    }
    _store.things.remove(step.id);
}

void MetaModel::releaseTexts(QorThingKind kind, std::size_t row) noexcept {
    _store.texts.release(*entryOf(kind, row).name);
    if (kind != QorThingKind::Attribute) return;
    AttributeRow& its = _attributes[row];
    _store.texts.release(its.defaultText);
    for (const TextRef value : its.enumeration) _store.texts.release(value);
}

void MetaModel::bury(const Step& step) noexcept {
    if (step.kind == StepKind::Removed) releaseTexts(step.thing, step.row);
}

void MetaModel::sweep() noexcept {
    closeGaps(_store.things, _libraries);
    closeGaps(_store.things, _parts);
    closeGaps(_store.things, _classes);
    closeGaps(_store.things, _relationClasses);
    closeGaps(_store.things, _attributes);
    closeGaps(_store.things, _modelTypes);
    _attributesBelow.sweep();
}

}  // namespace qor::embedded
