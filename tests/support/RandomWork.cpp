// SPDX-License-Identifier: Apache-2.0
#include "support/RandomWork.h"

#include <algorithm>

#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"

namespace {

constexpr std::string_view kFurnished = "Furnished";

QorErrorCode codeOf(const QorBuildResult& result) {
    if (result.error == QorBuildError::NotStored) return QorRepositoryCode::NotStored;
    if (result.error == QorBuildError::NoIdentifiersLeft) return QorErrorCode::Broken;
    return result.ok() ? QorErrorCode::Ok : QorErrorCode::ValueRefused;
}

}  // namespace

void RandomWork::furnish(QorEmbeddedPlatform& platform) {
    auto& builder = platform.builder();
    const auto library = builder.addApplicationLibrary(kFurnished, {}, {}).id;
    const auto part = builder.libraryPart(library, QorLibraryPart::BusinessProcess);
    const auto task = builder.addClass(part, "Task", QorNoIdentifier, false).id;
    const auto table = builder.addRecordClass(part, "Table").id;
    const auto attribute = [&](QorIdentifier owner, std::string_view name, QorCoreAttributeType type) {
        constexpr std::string_view kKinds[] = {"manual", "automatic"};
        QorAttributeSpec spec;
        spec.name = name;
        spec.type = type;
        if (type == QorCoreAttributeType::Enumeration) spec.enumeration = kKinds;
        if (type == QorCoreAttributeType::Record) spec.target = table;
        (void)builder.addAttribute(owner, spec);
    };
    attribute(table, "Cell", QorCoreAttributeType::LongText);
    attribute(task, "Title", QorCoreAttributeType::Text);
    attribute(task, "Kind", QorCoreAttributeType::Enumeration);
    attribute(task, "Rows", QorCoreAttributeType::Record);
    (void)builder.addRelationClass(part, "then", task, task);
    const auto type = builder.addModelType(part, "Process", std::span(&task, 1)).id;
    const auto model = builder.addModel(type, "First", "1").id;
    for (const char* name : {"a", "b", "c"}) (void)builder.addObject(model, task, name);
}

QorIdentifier RandomWork::model(const QorRepositoryReader& reader, QorIdentifier library) {
    return idIn(reader.modelsOf(library));
}

QorErrorCode RandomWork::step(QorEmbeddedPlatform& platform) {
    const auto libraries = platform.reader().applicationLibraries();
    const auto furnished = std::find_if(libraries.begin(), libraries.end(),
                                        [&](QorIdentifier id) { return platform.reader().nameOf(id) == kFurnished; });
    const QorIdentifier library =
        pick(5) == 0 || furnished == libraries.end() ? libraries[pick(libraries.size())] : *furnished;
    if (pick(10) == 0) return onUsers(platform, library);
    return pick(8) == 0 ? onLibrary(platform, library) : onModel(platform, library);
}

QorErrorCode RandomWork::onLibrary(QorEmbeddedPlatform& platform, QorIdentifier library) {
    auto& builder = platform.builder();
    const auto& reader = platform.reader();
    const auto part = reader.libraryPart(library, static_cast<QorLibraryPart>(pick(2)));
    const auto cls = idIn(reader.classesOf(part));
    const std::string name = "name " + std::to_string(pick(12));
    switch (pick(8)) {
        case 0:
            return codeOf(builder.addApplicationLibrary(name, {}, {}));
        case 1:
            if (reader.nameOf(library) == kFurnished) return QorErrorCode::Ok;
            return codeOf(builder.removeApplicationLibrary(library));
        case 2:
            return codeOf(builder.addClass(part, name, pick(2) == 0 ? cls : QorNoIdentifier, pick(3) == 0));
        case 3:
            return codeOf(builder.addRelationClass(part, name, cls, idIn(reader.classesOf(part))));
        case 4: {
            const std::string value = text() + "x";
            const std::string_view values[] = {"one", value};
            QorAttributeSpec spec;
            spec.name = name;
            spec.defaultText = "one";
            if (pick(2) == 0) spec.type = QorCoreAttributeType::Enumeration;
            if (spec.type == QorCoreAttributeType::Enumeration) spec.enumeration = values;
            return codeOf(builder.addAttribute(cls, spec));
        }
        case 5:
            return codeOf(builder.setClassValue(cls, QorAttributeId::Cardinality, text()));
        case 6:
            return codeOf(builder.setLibraryValue(part, QorAttributeId::AutomaticChecks, text()));
        default:
            return codeOf(builder.addModelType(part, name, std::span(&cls, 1)));
    }
}

QorErrorCode RandomWork::onModel(QorEmbeddedPlatform& platform, QorIdentifier library) {
    auto& builder = platform.builder();
    auto& repository = *platform.host().repository;
    const auto& reader = platform.reader();
    const QorIdentifier its = model(reader, library);
    const std::string name = "name " + std::to_string(pick(60));
    if (its == QorNoIdentifier || pick(25) == 0)
        return codeOf(builder.addModel(idIn(reader.modelTypesOf(library)), name, std::to_string(pick(3))));
    const auto objects = reader.objectsOf(its);
    const auto relations = reader.relationsOf(its);
    const auto anyObject = [&] { return objects.empty() ? QorNoIdentifier : objects[pick(objects.size())]; };
    const QorIdentifier object = anyObject();
    const QorIdentifier cls = reader.classOfObject(object);
    const auto attributes = reader.attributesOf(cls);
    const auto record = reader.findAttribute(cls, "Rows");
    ISequence<long> rows;
    (void)repository.getRecordInstances(object, record, rows);
    const long row =
        rows.numberOfElements() == 0 ? -1 : *(rows.begin() + static_cast<long>(pick(rows.numberOfElements())));
    long made = -1;
    switch (pick(17)) {
        case 0:
            return pick(12) == 0 ? codeOf(builder.removeModel(its)) : QorErrorCode::Ok;
        case 1:
        case 2:
        case 3: {
            const auto visible = reader.visibleClasses(reader.modelInfo(its).modelType);
            if (visible.empty()) return QorErrorCode::Ok;
            return repository.createInstance(its, visible[pick(visible.size())], name.c_str(), made);
        }
        case 4:
        case 5:
        case 6:
            return codeOf(builder.addRelation(reader.findRelationClass(library, "then"), object, anyObject()));
        case 7:
            return repository.RenameInstance(its, object, name.c_str(), true);
        case 8:
            return pick(2) == 0 ? repository.moveFromEndpoint(idIn(relations), object)
                                : repository.moveToEndpoint(idIn(relations), object);
        case 9:
            return pick(3) == 0 ? repository.deleteInstance(its, object) : QorErrorCode::Ok;
        case 10:
            return repository.createRecordInstance(its, object, record, made, pick(2) == 0 ? 0 : -1);
        case 11:
            return pick(2) == 0 ? repository.deleteRecordInstance(its, object, record, row)
                                : codeOf(builder.setValue(
                                      static_cast<QorIdentifier>(row),
                                      reader.findAttribute(reader.attributeInfo(record).target, "Cell"), text()));
        case 13:
            return onGroups(platform, library, its);
        case 14:
            return codeOf(builder.renameModel(its, name));
        case 15:
            return codeOf(builder.pasteObject(model(reader, library), object, name));
        case 12:
            return codeOf(builder.setValue(object, reader.findAttribute(cls, "Kind"), pick(3) == 0 ? "" : "manual"));
        default:
            return codeOf(builder.setValue(object, idIn(attributes), text()));
    }
}

QorErrorCode RandomWork::onGroups(QorEmbeddedPlatform& platform, QorIdentifier library, QorIdentifier its) {
    auto& builder = platform.builder();
    const auto groups = platform.reader().modelGroupsOf(library);
    const QorIdentifier group = idIn(groups);
    const QorIdentifier other = pick(4) == 0 ? library : idIn(groups);
    const std::string name = "name " + std::to_string(pick(6));
    switch (pick(6)) {
        case 0:
        case 1:
            return codeOf(builder.addModelGroup(other == QorNoIdentifier ? library : other, name));
        case 2:
            return codeOf(builder.renameModelGroup(group, name));
        case 3:
            return codeOf(builder.moveModelGroup(group, other));
        case 4:
            return codeOf(builder.removeModelGroup(group));
        default:
            return codeOf(builder.moveModel(its, pick(3) == 0 ? QorNoIdentifier : group));
    }
}

// The first user who is added is the one who does it all.
QorErrorCode RandomWork::onUsers(QorEmbeddedPlatform& platform, QorIdentifier library) {
    auto& users = platform.userAdministration();
    platform.setCurrentUser("boss");
    if (!users.hasUsers()) return codeOf(users.addUser("boss"));
    const auto anyOf = [&](const std::vector<QorIdentifier>& ids) {
        return ids.empty() ? QorNoIdentifier : ids[pick(ids.size())];
    };
    const QorIdentifier user = anyOf(users.users());
    const QorIdentifier group = anyOf(users.userGroups());
    const QorIdentifier modelGroup = idIn(platform.reader().modelGroupsOf(library));
    const QorIdentifier member = pick(3) == 0 ? anyOf(users.userGroups()) : user;
    const std::string name = "name " + std::to_string(pick(20));
    switch (pick(15)) {
        case 0:
            return codeOf(users.addUser(name, 1000 + static_cast<long>(pick(3))));
        case 1:
            return codeOf(user == users.findUser("boss") ? users.addUserGroup(name) : users.renameUser(user, name));
        case 2:
            return codeOf(users.setDisplayName(user, text(), pick(2) == 0 ? "firm" : ""));
        case 3:
            return codeOf(user == users.findUser("boss") ? users.addUserGroup(name, true) : users.removeUser(user));
        case 4:
            return codeOf(users.setManager(user, 1000 + static_cast<long>(pick(3)), pick(2) == 0));
        case 5:
            return codeOf(users.setAllowedLibrary(user, library));
        case 6:
            return codeOf(users.setProfileEntry(user, static_cast<long>(pick(3)) + 5, text()));
        case 7:
            return codeOf(users.setSingleSignOnMode(pick(2) == 0 ? 0 : 667));
        case 8:
            return codeOf(users.renameUserGroup(group, name));
        case 9:
            return codeOf(pick(2) == 0 ? users.removeUserGroup(group) : users.addUserGroup(name, pick(2) == 0));
        case 10:
        case 11:
        case 12:
            return codeOf(pick(4) == 0 ? users.leave(member, group) : users.join(member, group));
        default:
            return codeOf(users.setPermission(group, modelGroup, 2 * static_cast<std::int32_t>(pick(3))));
    }
}
