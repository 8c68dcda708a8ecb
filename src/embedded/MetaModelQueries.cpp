// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "embedded/MetaModel.h"

namespace qor::embedded {

namespace {

constexpr const char* kLibraryClassNames[] = {"Business process library", "Working environment library"};

}  // namespace

const LibraryRow* MetaModel::library(QorIdentifier id) const {
    return rowOf(_store.things, _libraries, id, QorThingKind::ApplicationLibrary);
}

const PartRow* MetaModel::part(QorIdentifier id) const {
    return rowOf(_store.things, _parts, id, QorThingKind::LibraryPart);
}

const ClassRow* MetaModel::objectClass(QorIdentifier id) const {
    return rowOf(_store.things, _classes, id, QorThingKind::Class);
}

const ClassRow* MetaModel::anyClass(QorIdentifier id) const {
    const ClassRow* row = objectClass(id);
    return row ? row : rowOf(_store.things, _classes, id, QorThingKind::RecordClass);
}

const RelationClassRow* MetaModel::relationClass(QorIdentifier id) const {
    return rowOf(_store.things, _relationClasses, id, QorThingKind::RelationClass);
}

const AttributeRow* MetaModel::attribute(QorIdentifier id) const {
    return rowOf(_store.things, _attributes, id, QorThingKind::Attribute);
}

const ModelTypeRow* MetaModel::modelType(QorIdentifier id) const {
    return rowOf(_store.things, _modelTypes, id, QorThingKind::ModelType);
}

std::vector<QorIdentifier> MetaModel::libraries() const {
    std::vector<QorIdentifier> ids;
    for (const LibraryRow& row : _libraries)
        if (row.id != QorNoIdentifier) ids.push_back(row.id);
    return ids;
}

QorIdentifier MetaModel::partOf(QorIdentifier id) const {
    const ThingPlace place = _store.things.at(id);
    switch (place.kind) {
        case QorThingKind::LibraryPart:
            return id;
        case QorThingKind::Class:
        case QorThingKind::RecordClass:
            return _classes[place.index].part;
        case QorThingKind::RelationClass:
            return _relationClasses[place.index].part;
        case QorThingKind::ModelType:
            return _modelTypes[place.index].part;
        case QorThingKind::Attribute:
            return partOf(_attributes[place.index].owner);
        default:
            return QorNoIdentifier;
    }
}

QorIdentifier MetaModel::libraryOf(QorIdentifier id) const {
    if (library(id) != nullptr) return id;
    const PartRow* row = part(partOf(id));
    return row ? row->library : QorNoIdentifier;
}

QorLibraryPart MetaModel::partKindOf(QorIdentifier id) const {
    const PartRow* row = part(partOf(id));
    return row ? row->part : QorLibraryPart::BusinessProcess;
}

std::string_view MetaModel::nameOf(QorIdentifier id) const {
    const ThingPlace place = _store.things.at(id);
    switch (place.kind) {
        case QorThingKind::ApplicationLibrary:
            return text(_libraries[place.index].name);
        case QorThingKind::LibraryPart:
            return text(_parts[place.index].name);
        case QorThingKind::LibraryClass:
            return kLibraryClassNames[place.index];
        case QorThingKind::Class:
        case QorThingKind::RecordClass:
            return text(_classes[place.index].name);
        case QorThingKind::RelationClass:
            return text(_relationClasses[place.index].name);
        case QorThingKind::Attribute:
            return text(_attributes[place.index].name);
        case QorThingKind::ModelType:
            return text(_modelTypes[place.index].name);
        default:
            return {};
    }
}

QorIdentifier MetaModel::findApplicationLibrary(std::string_view name) const {
    return find({kAnywhere, nameTag::kLibrary}, name, [&](QorIdentifier id) { return library(id) != nullptr; });
}

QorIdentifier MetaModel::findClass(QorIdentifier libraryId, std::string_view name) const {
    return findInParts(libraryId, [&](QorIdentifier partId) {
        return find({partId, nameTag::kClass}, name, [&](QorIdentifier id) {
            const ClassRow* row = anyClass(id);
            return row != nullptr && row->part == partId;
        });
    });
}

QorIdentifier MetaModel::findRelationClass(QorIdentifier libraryId, std::string_view name) const {
    return findInParts(libraryId, [&](QorIdentifier partId) {
        return find({partId, nameTag::kRelationClass}, name, [&](QorIdentifier id) {
            const RelationClassRow* row = relationClass(id);
            return row != nullptr && row->part == partId;
        });
    });
}

QorIdentifier MetaModel::findModelType(QorIdentifier libraryId, std::string_view name) const {
    const QorIdentifier owner = libraryOf(libraryId);
    return find({owner, nameTag::kModelType}, name,
                [&](QorIdentifier id) { return modelType(id) != nullptr && libraryOf(id) == owner; });
}

QorIdentifier MetaModel::findOwnAttribute(QorIdentifier owner, std::string_view name) const {
    return find({owner, nameTag::kAttribute}, name, [&](QorIdentifier id) {
        const AttributeRow* row = attribute(id);
        return row != nullptr && row->owner == owner;
    });
}

QorIdentifier MetaModel::findFixedAttribute(QorIdentifier owner, std::string_view name) const {
    for (const FixedAttribute& fixed : fixedAttributes())
        if (name == fixed.name && hasFixed(owner, fixed.owner)) return fixed.id;
    return QorNoIdentifier;
}

QorIdentifier MetaModel::findAttribute(QorIdentifier owner, std::string_view name) const {
    if (anyClass(owner) == nullptr && relationClass(owner) == nullptr) return QorNoIdentifier;
    if (relationClass(owner) != nullptr) {
        const QorIdentifier own = findOwnAttribute(owner, name);
        return own != QorNoIdentifier ? own : findFixedAttribute(owner, name);
    }
    QorIdentifier found = QorNoIdentifier;
    forEachInLine(owner, [&](const ClassRow& row) {
        if (found == QorNoIdentifier && !row.attributes.empty()) found = findOwnAttribute(row.id, name);
    });
    return found != QorNoIdentifier ? found : findFixedAttribute(owner, name);
}

// Who has the name among the attributes of the owner, its ancestors and its descendants.
QorIdentifier MetaModel::attributeNamed(QorIdentifier owner, std::string_view name) const {
    const QorIdentifier found = findAttribute(owner, name);
    if (found != QorNoIdentifier || anyClass(owner) == nullptr) return found;
    const AttributesBelow::Entry entry = _attributesBelow.find(owner, name);
    if (entry.count == 0 || attribute(entry.latest) != nullptr)
        return entry.count == 0 ? QorNoIdentifier : entry.latest;
    QorIdentifier holder = QorNoIdentifier;
    for (const QorIdentifier below : descendants(owner))
        if (holder == QorNoIdentifier) holder = findOwnAttribute(below, name);
    return holder;
}

void MetaModel::makeRoomBelow(QorIdentifier owner, std::string_view name) {
    if (const ClassRow* cls = anyClass(owner))
        forEachInLine(cls->superclass, [&](const ClassRow& above) { _attributesBelow.makeRoom(above.id, name); });
}

void MetaModel::noteAttributeBelow(const AttributeRow& attribute, int change) noexcept {
    const ClassRow* const owner = anyClass(attribute.owner);
    if (owner == nullptr) return;
    const std::string_view name = text(attribute.name);
    forEachInLine(owner->superclass, [&](const ClassRow& above) {
        if (change > 0)
            _attributesBelow.add(above.id, name, attribute.id);
        else
            _attributesBelow.remove(above.id, name);
    });
}

void MetaModel::countInstance(QorIdentifier cls, int change) noexcept {
    ClassRow& row = editClass(cls);
    const bool wasInhabited = row.instances > 0;
    row.instances = static_cast<std::uint32_t>(static_cast<std::int64_t>(row.instances) + change);
    if (wasInhabited == (row.instances > 0)) return;
    forEachInLine(cls, [&](const ClassRow& above) {
        std::uint32_t& inhabited = editClass(above.id).inhabited;
        inhabited = static_cast<std::uint32_t>(static_cast<std::int64_t>(inhabited) + change);
    });
}

bool MetaModel::hasFixed(QorIdentifier owner, FixedOwner fixedOwner) const {
    const ThingPlace place = _store.things.at(owner);
    const bool ofObjects = place.kind == QorThingKind::Class;
    const bool business = partKindOf(owner) == QorLibraryPart::BusinessProcess;
    switch (fixedOwner) {
        case FixedOwner::AnyClass:
            return ofObjects || place.kind == QorThingKind::RecordClass || place.kind == QorThingKind::ModelType ||
                   place.kind == QorThingKind::LibraryClass;
        case FixedOwner::AnyRelationClass:
            return place.kind == QorThingKind::RelationClass;
        case FixedOwner::AnyInstance:
            return ofObjects;
        case FixedOwner::BusinessClass:
        case FixedOwner::BusinessInstance:
            return ofObjects && business;
        case FixedOwner::WorkingClass:
        case FixedOwner::WorkingInstance:
            return ofObjects && !business;
        case FixedOwner::AnyLibrary:
            return place.kind == QorThingKind::ApplicationLibrary || place.kind == QorThingKind::LibraryPart;
    }
    return false;
}

bool MetaModel::hasAttribute(QorIdentifier owner, const AttributeRow& attribute) const {
    if (attribute.owner == QorNoIdentifier) return hasFixed(owner, attribute.fixedOwner);
    return owner == attribute.owner || isA(owner, attribute.owner);
}

bool MetaModel::isA(QorIdentifier cls, QorIdentifier ancestor) const {
    while (cls != QorNoIdentifier && cls != ancestor) {
        const ClassRow* row = anyClass(cls);
        cls = row ? row->superclass : QorNoIdentifier;
    }
    return cls != QorNoIdentifier;
}

std::vector<QorIdentifier> MetaModel::descendants(QorIdentifier cls) const {
    std::vector<QorIdentifier> found;
    const ClassRow* row = anyClass(cls);
    for (std::size_t at = 0; row != nullptr; ++at) {
        found.insert(found.end(), row->subclasses.begin(), row->subclasses.end());
        row = at < found.size() ? anyClass(found[at]) : nullptr;
    }
    return found;
}

std::vector<QorIdentifier> MetaModel::attributesInLine(QorIdentifier owner) const {
    if (const RelationClassRow* row = relationClass(owner)) return row->attributes;
    std::vector<const ClassRow*> line;
    forEachInLine(owner, [&](const ClassRow& row) { line.push_back(&row); });
    std::vector<QorIdentifier> ids;
    for (auto row = line.rbegin(); row != line.rend(); ++row)
        ids.insert(ids.end(), (*row)->attributes.begin(), (*row)->attributes.end());
    return ids;
}

bool MetaModel::hasInstances(QorIdentifier owner) const {
    if (const RelationClassRow* row = relationClass(owner)) return row->instances > 0;
    return anyClass(owner)->inhabited > 0;
}

bool MetaModel::allows(const ModelTypeRow& type, QorIdentifier cls) const {
    return std::binary_search(type.classes.begin(), type.classes.end(), cls);
}

}  // namespace qor::embedded
