// SPDX-License-Identifier: Apache-2.0
// The meta-model's rows in a repository file: taking them in, and what its things look like as rows.
#include <algorithm>

#include "embedded/MetaModel.h"

namespace qor::embedded {

namespace {

// A number that an enumeration of the program has: 0 to `last`.
template <class Enumeration>
bool isOneOf(QorIdentifier number, Enumeration last) {
    return number >= 0 && number <= static_cast<QorIdentifier>(last);
}

}  // namespace

bool MetaModel::adopt(const StoredRow& stored) {
    const auto& numbers = stored.numbers;
    const QorIdentifier id = numbers[0];
    const auto place = [&](QorThingKind kind, std::size_t row) { _store.things.place(id, kind, row); };
    const auto index = [&](NameScope scope) {
        _store.names.makeRoom(1);
        _store.names.add(NameIndex::hashOf(scope, stored.texts[0]), id);
    };
    switch (stored.table) {
        case StoredTable::Libraries: {
            LibraryRow row;
            row.id = id;
            row.name = _store.texts.add(stored.texts[0]);
            index({kAnywhere, nameTag::kLibrary});
            place(QorThingKind::ApplicationLibrary, _libraries.size());
            _libraries.push_back(std::move(row));
            return true;
        }
        case StoredTable::Parts: {
            if (library(numbers[1]) == nullptr || !isOneOf(numbers[2], QorLibraryPart::WorkingEnvironment))
                return false;
            PartRow row;
            row.id = id;
            row.library = numbers[1];
            row.part = static_cast<QorLibraryPart>(numbers[2]);
            row.name = _store.texts.add(stored.texts[0]);
            editLibrary(row.library).parts[static_cast<std::size_t>(numbers[2])] = id;
            place(QorThingKind::LibraryPart, _parts.size());
            _parts.push_back(std::move(row));
            return true;
        }
        case StoredTable::Classes: {
            const bool isRecord = numbers[4] != 0;
            const bool hasSuperclass = numbers[2] != QorNoIdentifier;
            if (part(numbers[1]) == nullptr || (hasSuperclass && objectClass(numbers[2]) == nullptr)) return false;
            ClassRow row;
            row.id = id;
            row.part = numbers[1];
            row.superclass = numbers[2];
            row.isAbstract = numbers[3] != 0;
            row.isRecordClass = isRecord;
            row.name = _store.texts.add(stored.texts[0]);
            _parts[_store.things.at(row.part).index].classes.push_back(id);
            if (hasSuperclass) editClass(row.superclass).subclasses.push_back(id);
            index({row.part, nameTag::kClass});
            place(isRecord ? QorThingKind::RecordClass : QorThingKind::Class, _classes.size());
            _classes.push_back(std::move(row));
            return true;
        }
        case StoredTable::RelationClasses: {
            if (part(numbers[1]) == nullptr || objectClass(numbers[2]) == nullptr || objectClass(numbers[3]) == nullptr)
                return false;
            RelationClassRow row;
            row.id = id;
            row.part = numbers[1];
            row.from = numbers[2];
            row.to = numbers[3];
            row.name = _store.texts.add(stored.texts[0]);
            _parts[_store.things.at(row.part).index].relationClasses.push_back(id);
            editClass(row.from).outgoing.push_back(id);
            editClass(row.to).incoming.push_back(id);
            index({row.part, nameTag::kRelationClass});
            place(QorThingKind::RelationClass, _relationClasses.size());
            _relationClasses.push_back(std::move(row));
            return true;
        }
        case StoredTable::Attributes: {
            const QorIdentifier owner = numbers[1];
            const QorIdentifier target = numbers[5];
            if ((anyClass(owner) == nullptr && relationClass(owner) == nullptr) ||
                (target != QorNoIdentifier && anyClass(target) == nullptr) ||
                !isOneOf(numbers[2], QorCoreAttributeType::Calendar) ||
                !isOneOf(numbers[3], QorAttributeLevel::Class) ||
                (numbers[6] != QorNoIdentifier && !isOneOf(numbers[6], QorCoreAttributeType::Calendar)))
                return false;
            AttributeRow row;
            row.id = id;
            row.owner = owner;
            row.type = static_cast<QorCoreAttributeType>(numbers[2]);
            row.level = static_cast<QorAttributeLevel>(numbers[3]);
            row.refersToModels = numbers[4] != 0;
            row.target = target;
            row.shownAs = static_cast<QorCoreAttributeType>(numbers[6]);
            row.name = _store.texts.add(stored.texts[0]);
            row.defaultText = _store.texts.add(stored.texts[1]);
            (anyClass(owner) ? editClass(owner).attributes : editRelationClass(owner).attributes).push_back(id);
            index({owner, nameTag::kAttribute});
            place(QorThingKind::Attribute, _attributes.size());
            makeRoomBelow(owner, stored.texts[0]);
            _attributes.push_back(std::move(row));
            noteAttributeBelow(_attributes.back(), 1);
            return true;
        }
        case StoredTable::EnumerationValues: {
            if (attribute(id) == nullptr) return false;
            AttributeRow& row = _attributes[_store.things.at(id).index];
            if (numbers[1] != static_cast<QorIdentifier>(row.enumeration.size())) return false;
            row.enumeration.push_back(_store.texts.add(stored.texts[0]));
            return true;
        }
        case StoredTable::ModelTypes: {
            if (part(numbers[1]) == nullptr) return false;
            ModelTypeRow row;
            row.id = id;
            row.part = numbers[1];
            row.library = libraryOf(row.part);
            LibraryRow& owner = editLibrary(row.library);
            row.index = static_cast<std::uint32_t>(owner.modelTypes.size());
            row.name = _store.texts.add(stored.texts[0]);
            owner.modelTypes.push_back(id);
            index({row.library, nameTag::kModelType});
            place(QorThingKind::ModelType, _modelTypes.size());
            _modelTypes.push_back(std::move(row));
            return true;
        }
        case StoredTable::VisibleClasses:
            if (modelType(id) == nullptr || objectClass(numbers[1]) == nullptr) return false;
            _modelTypes[_store.things.at(id).index].classes.push_back(numbers[1]);  // they come ascending
            return true;
        default:
            return false;
    }
}

void MetaModel::forEachStored(QorThingKind kind, QorIdentifier id, std::size_t row, const TakeStored& take) const {
    switch (kind) {
        case QorThingKind::ApplicationLibrary:
            return take({StoredTable::Libraries, {id}, {text(_libraries[row].name)}});
        case QorThingKind::LibraryPart: {
            const PartRow& its = _parts[row];
            return take(
                {StoredTable::Parts, {id, its.library, static_cast<QorIdentifier>(its.part)}, {text(its.name)}});
        }
        case QorThingKind::Class:
        case QorThingKind::RecordClass: {
            const ClassRow& its = _classes[row];
            return take({StoredTable::Classes,
                         {id, its.part, its.superclass, its.isAbstract ? 1 : 0, its.isRecordClass ? 1 : 0},
                         {text(its.name)}});
        }
        case QorThingKind::RelationClass: {
            const RelationClassRow& its = _relationClasses[row];
            return take({StoredTable::RelationClasses, {id, its.part, its.from, its.to}, {text(its.name)}});
        }
        case QorThingKind::Attribute: {
            const AttributeRow& its = _attributes[row];
            take({StoredTable::Attributes,
                  {id, its.owner, static_cast<QorIdentifier>(its.type), static_cast<QorIdentifier>(its.level),
                   its.refersToModels ? 1 : 0, its.target, static_cast<QorIdentifier>(its.shownAs)},
                  {text(its.name), text(its.defaultText)}});
            for (std::size_t at = 0; at < its.enumeration.size(); ++at)
                take({StoredTable::EnumerationValues,
                      {id, static_cast<QorIdentifier>(at)},
                      {text(its.enumeration[at])}});
            return;
        }
        case QorThingKind::ModelType: {
            const ModelTypeRow& its = _modelTypes[row];
            take({StoredTable::ModelTypes, {id, its.part}, {text(its.name)}});
            for (const QorIdentifier cls : its.classes) take({StoredTable::VisibleClasses, {id, cls}});
            return;
        }
        default:
            return;
    }
}

}  // namespace qor::embedded
