// SPDX-License-Identifier: Apache-2.0
#include "embedded/MetaModel.h"

#include <algorithm>
#include <string>

#include "embedded/ValueCheck.h"
#include "platform/QorAttributeIds.h"

namespace qor::embedded {

namespace {

bool isEnumeration(QorCoreAttributeType type) {
    return type == QorCoreAttributeType::Enumeration || type == QorCoreAttributeType::EnumerationList;
}

// The values of an enumeration: some, none empty, none twice; in a list none that holds the separator.
bool isGoodEnumeration(const QorAttributeSpec& attribute) {
    if (!isEnumeration(attribute.type)) return attribute.enumeration.empty();
    std::vector<std::string_view> values(attribute.enumeration.begin(), attribute.enumeration.end());
    const bool inList = attribute.type == QorCoreAttributeType::EnumerationList;
    const auto isGood = [&](std::string_view value) {
        return !value.empty() && value.find('\0') == std::string_view::npos &&
               !(inList && value.find(';') != std::string_view::npos);
    };
    if (values.empty() || !std::all_of(values.begin(), values.end(), isGood)) return false;
    std::sort(values.begin(), values.end());
    return std::adjacent_find(values.begin(), values.end()) == values.end();
}

}  // namespace

MetaModel::MetaModel(Store& store) : _store(store) {
    for (const FixedAttribute& fixed : fixedAttributes()) {
        AttributeRow row;
        row.id = fixed.id;
        row.fixedOwner = fixed.owner;
        row.type = fixed.type;
        row.level = levelOf(fixed.owner);
        row.name = _store.texts.add(fixed.name);
        _store.things.place(fixed.id, QorThingKind::Attribute, _attributes.size());
        _attributes.push_back(std::move(row));
    }
    _store.things.place(QorLibraryKind::BusinessProcess, QorThingKind::LibraryClass, 0);
    _store.things.place(QorLibraryKind::WorkingEnvironment, QorThingKind::LibraryClass, 1);
}

QorBuildResult MetaModel::addApplicationLibrary(std::string_view name, std::string_view businessProcessName,
                                                std::string_view workingEnvironmentName) {
    if (const QorBuildError error = checkName(name); error != QorBuildError::None) return refused(error);
    const std::string partNames[] = {
        std::string(businessProcessName.empty() ? std::string(name) + " (business process)" : businessProcessName),
        std::string(workingEnvironmentName.empty() ? std::string(name) + " (working environment)"
                                                   : workingEnvironmentName)};
    for (const std::string& partName : partNames)
        if (const QorBuildError error = checkName(partName); error != QorBuildError::None) return refused(error);
    if (const QorIdentifier holder = findApplicationLibrary(name); holder != QorNoIdentifier)
        return refused(QorBuildError::DuplicateName, holder);
    if (!hasRoom(3, _parts.size() + 1)) return refused(QorBuildError::NoIdentifiersLeft);

    NewText text(_store.texts, name);
    NewText first(_store.texts, partNames[0]);
    NewText second(_store.texts, partNames[1]);
    makeRoomForOne(_libraries);
    makeRoomFor(_parts, 2);
    _store.things.makeRoom(3);
    _store.names.makeRoom(1);
    _store.journal.makeRoom(3);

    LibraryRow library;
    library.id = _store.things.add(QorThingKind::ApplicationLibrary, _libraries.size());
    library.name = text.keep();
    noteAdded(QorThingKind::ApplicationLibrary, library.id, library.id);
    for (std::size_t at = 0; at < library.parts.size(); ++at) {
        PartRow part;
        part.id = library.parts[at] = _store.things.add(QorThingKind::LibraryPart, _parts.size());
        part.library = library.id;
        part.part = static_cast<QorLibraryPart>(at);
        part.name = at == 0 ? first.keep() : second.keep();
        noteAdded(QorThingKind::LibraryPart, part.id, library.id);
        _parts.push_back(std::move(part));
    }
    _store.names.add(NameIndex::hashOf({kAnywhere, nameTag::kLibrary}, name), library.id);
    _libraries.push_back(std::move(library));
    return {_libraries.back().id};
}

QorBuildResult MetaModel::addClass(QorIdentifier partId, std::string_view name, QorIdentifier superclass,
                                   bool isAbstract) {
    return addAnyClass(partId, name, superclass, isAbstract, false);
}

QorBuildResult MetaModel::addRecordClass(QorIdentifier partId, std::string_view name) {
    return addAnyClass(partId, name, QorNoIdentifier, false, true);
}

QorBuildResult MetaModel::addAnyClass(QorIdentifier partId, std::string_view name, QorIdentifier superclass,
                                      bool isAbstract, bool isRecordClass) {
    if (part(partId) == nullptr) return refused(QorBuildError::UnknownIdentifier);
    if (superclass != QorNoIdentifier) {
        if (objectClass(superclass) == nullptr) return refused(QorBuildError::UnknownIdentifier);
        if (libraryOf(superclass) != libraryOf(partId)) return refused(QorBuildError::ForeignLibrary);
    }
    if (const QorBuildError error = checkName(name); error != QorBuildError::None) return refused(error);
    if (const QorIdentifier holder = findClass(partId, name); holder != QorNoIdentifier)
        return refused(QorBuildError::DuplicateName, holder);
    if (!hasRoom(1, _classes.size())) return refused(QorBuildError::NoIdentifiersLeft);

    NewText text(_store.texts, name);
    PartRow& owner = _parts[_store.things.at(partId).index];
    makeRoomForOne(owner.classes);
    makeRoomForOne(_classes);
    if (superclass != QorNoIdentifier) makeRoomForOne(editClass(superclass).subclasses);
    _store.things.makeRoom(1);
    _store.names.makeRoom(1);
    _store.journal.makeRoom(1);

    ClassRow row;
    row.id = _store.things.add(isRecordClass ? QorThingKind::RecordClass : QorThingKind::Class, _classes.size());
    row.part = partId;
    row.superclass = superclass;
    row.name = text.keep();
    row.isAbstract = isAbstract;
    row.isRecordClass = isRecordClass;
    owner.classes.push_back(row.id);
    if (superclass != QorNoIdentifier) editClass(superclass).subclasses.push_back(row.id);
    _store.names.add(NameIndex::hashOf({partId, nameTag::kClass}, name), row.id);
    noteAdded(isRecordClass ? QorThingKind::RecordClass : QorThingKind::Class, row.id, row.id);
    _classes.push_back(std::move(row));
    return {_classes.back().id};
}

QorBuildResult MetaModel::addRelationClass(QorIdentifier partId, std::string_view name, QorIdentifier from,
                                           QorIdentifier to) {
    if (part(partId) == nullptr || objectClass(from) == nullptr || objectClass(to) == nullptr)
        return refused(QorBuildError::UnknownIdentifier);
    if (libraryOf(from) != libraryOf(partId) || libraryOf(to) != libraryOf(partId))
        return refused(QorBuildError::ForeignLibrary);
    if (const QorBuildError error = checkName(name); error != QorBuildError::None) return refused(error);
    if (const QorIdentifier holder = findRelationClass(partId, name); holder != QorNoIdentifier)
        return refused(QorBuildError::DuplicateName, holder);
    if (!hasRoom(1, _relationClasses.size())) return refused(QorBuildError::NoIdentifiersLeft);

    NewText text(_store.texts, name);
    PartRow& owner = _parts[_store.things.at(partId).index];
    makeRoomForOne(owner.relationClasses);
    makeRoomForOne(editClass(from).outgoing);
    makeRoomForOne(editClass(to).incoming);
    makeRoomForOne(_relationClasses);
    _store.things.makeRoom(1);
    _store.names.makeRoom(1);
    _store.journal.makeRoom(1);

    RelationClassRow row;
    row.id = _store.things.add(QorThingKind::RelationClass, _relationClasses.size());
    row.part = partId;
    row.from = from;
    row.to = to;
    row.name = text.keep();
    owner.relationClasses.push_back(row.id);
    editClass(from).outgoing.push_back(row.id);
    editClass(to).incoming.push_back(row.id);
    _store.names.add(NameIndex::hashOf({partId, nameTag::kRelationClass}, name), row.id);
    noteAdded(QorThingKind::RelationClass, row.id, row.id);
    _relationClasses.push_back(std::move(row));
    return {_relationClasses.back().id};
}

QorBuildError MetaModel::checkSpec(QorIdentifier owner, const QorAttributeSpec& attribute) const {
    const auto isMember = [&](std::string_view value) {
        return std::find(attribute.enumeration.begin(), attribute.enumeration.end(), value) !=
               attribute.enumeration.end();
    };
    if (attribute.type == QorCoreAttributeType::None || !isGoodEnumeration(attribute))
        return QorBuildError::ValueRefused;
    if (attribute.type == QorCoreAttributeType::Record) {
        if (!attribute.defaultText.empty() || attribute.level == QorAttributeLevel::Class)
            return QorBuildError::ValueRefused;
    } else if (!valueFits(attribute.type, attribute.refersToModels, attribute.defaultText, isMember)) {
        return QorBuildError::ValueRefused;
    }
    if (attribute.type != QorCoreAttributeType::Record && attribute.type != QorCoreAttributeType::AttributeProfile)
        return QorBuildError::None;
    const ClassRow* target = anyClass(attribute.target);
    if (target == nullptr || target->isRecordClass != (attribute.type == QorCoreAttributeType::Record))
        return QorBuildError::UnknownIdentifier;
    return libraryOf(attribute.target) == libraryOf(owner) ? QorBuildError::None : QorBuildError::ForeignLibrary;
}

QorBuildResult MetaModel::addAttribute(QorIdentifier owner, const QorAttributeSpec& attribute) {
    if (anyClass(owner) == nullptr && relationClass(owner) == nullptr) return refused(QorBuildError::UnknownIdentifier);
    if (const QorBuildError error = checkName(attribute.name); error != QorBuildError::None) return refused(error);
    if (const QorIdentifier holder = attributeNamed(owner, attribute.name); holder != QorNoIdentifier)
        return refused(QorBuildError::DuplicateName, holder);
    if (const QorBuildError error = checkSpec(owner, attribute); error != QorBuildError::None) return refused(error);
    if (hasInstances(owner)) return refused(QorBuildError::HasInstances);
    if (!hasRoom(1, _attributes.size())) return refused(QorBuildError::NoIdentifiersLeft);

    NewText name(_store.texts, attribute.name);
    NewText defaultText(_store.texts, attribute.defaultText);
    AttributeRow row;
    row.enumeration.reserve(attribute.enumeration.size());
    std::vector<QorIdentifier>& owned =
        anyClass(owner) ? editClass(owner).attributes : editRelationClass(owner).attributes;
    makeRoomForOne(owned);
    makeRoomForOne(_attributes);
    _store.things.makeRoom(1);
    _store.names.makeRoom(1);
    _store.journal.makeRoom(1);
    makeRoomBelow(owner, attribute.name);
    try {
        for (const std::string_view value : attribute.enumeration) row.enumeration.push_back(_store.texts.add(value));
    } catch (...) {
        for (const TextRef value : row.enumeration) _store.texts.release(value);
        throw;
    }

    row.id = _store.things.add(QorThingKind::Attribute, _attributes.size());
    row.owner = owner;
    row.type = attribute.type;
    row.level = attribute.level;
    row.shownAs = attribute.shownAs;
    row.refersToModels = attribute.refersToModels;
    row.target = attribute.target;
    row.name = name.keep();
    row.defaultText = defaultText.keep();
    noteAdded(QorThingKind::Attribute, row.id, owner);
    owned.push_back(row.id);
    _store.names.add(NameIndex::hashOf({owner, nameTag::kAttribute}, attribute.name), row.id);
    _attributes.push_back(std::move(row));
    noteAttributeBelow(_attributes.back(), 1);
    return {_attributes.back().id};
}

QorBuildResult MetaModel::addModelType(QorIdentifier partId, std::string_view name,
                                       std::span<const QorIdentifier> classes) {
    if (part(partId) == nullptr) return refused(QorBuildError::UnknownIdentifier);
    const QorIdentifier library = libraryOf(partId);
    for (const QorIdentifier cls : classes) {
        if (objectClass(cls) == nullptr) return refused(QorBuildError::UnknownIdentifier);
        if (libraryOf(cls) != library) return refused(QorBuildError::ForeignLibrary);
    }
    if (const QorBuildError error = checkName(name); error != QorBuildError::None) return refused(error);
    if (const QorIdentifier holder = findModelType(library, name); holder != QorNoIdentifier)
        return refused(QorBuildError::DuplicateName, holder);
    if (!hasRoom(1, _modelTypes.size())) return refused(QorBuildError::NoIdentifiersLeft);

    NewText text(_store.texts, name);
    ModelTypeRow row;
    row.classes.assign(classes.begin(), classes.end());
    std::sort(row.classes.begin(), row.classes.end());
    row.classes.erase(std::unique(row.classes.begin(), row.classes.end()), row.classes.end());
    LibraryRow& owner = editLibrary(library);
    makeRoomForOne(owner.modelTypes);
    makeRoomForOne(_modelTypes);
    _store.things.makeRoom(1);
    _store.names.makeRoom(1);
    _store.journal.makeRoom(1);

    row.id = _store.things.add(QorThingKind::ModelType, _modelTypes.size());
    row.part = partId;
    row.library = library;
    row.index = static_cast<std::uint32_t>(owner.modelTypes.size());
    row.name = text.keep();
    noteAdded(QorThingKind::ModelType, row.id, library);
    owner.modelTypes.push_back(row.id);
    _store.names.add(NameIndex::hashOf({library, nameTag::kModelType}, name), row.id);
    _modelTypes.push_back(std::move(row));
    return {_modelTypes.back().id};
}

void MetaModel::forget(QorIdentifier id) {
    const ThingPlace place = _store.things.at(id);
    Step step;
    step.kind = StepKind::Removed;
    step.thing = place.kind;
    step.id = id;
    step.scope = scopeOf(id);
    step.row = place.index;
    _store.journal.note(step);
    if (place.kind == QorThingKind::Attribute) noteAttributeBelow(_attributes[place.index], -1);
    const Entry entry = entryOf(place.kind, place.index);
    if (entry.scope.within != kNotIndexed.within)
        _store.names.remove(NameIndex::hashOf(entry.scope, text(*entry.name)), id);
    _store.things.remove(id);
    *entry.id = QorNoIdentifier;
    if (!_store.journal.isOn()) bury(step);
}

// From the leaves to the root, so that what a thing belongs to is there as long as the thing is.
void MetaModel::removeApplicationLibrary(QorIdentifier id) {
    const LibraryRow& row = editLibrary(id);
    for (const QorIdentifier type : row.modelTypes) forget(type);
    for (const QorIdentifier partId : row.parts) {
        const PartRow& owned = *part(partId);
        for (const QorIdentifier cls : owned.classes)
            for (const QorIdentifier attribute : anyClass(cls)->attributes) forget(attribute);
        for (const QorIdentifier relation : owned.relationClasses)
            for (const QorIdentifier attribute : relationClass(relation)->attributes) forget(attribute);
    }
    for (const QorIdentifier partId : row.parts) {
        const PartRow& owned = *part(partId);
        for (const QorIdentifier relation : owned.relationClasses) forget(relation);
        for (const QorIdentifier cls : owned.classes) forget(cls);
    }
    const std::array<QorIdentifier, 2> parts = row.parts;
    for (const QorIdentifier partId : parts) forget(partId);
    forget(id);
    if (!_store.journal.isOn()) sweep();
}

}  // namespace qor::embedded
