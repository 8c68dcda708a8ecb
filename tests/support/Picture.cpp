// SPDX-License-Identifier: Apache-2.0
#include "support/Picture.h"

#include <algorithm>

#include "embedded/QorEmbeddedPlatform.h"
#include "platform/QorCoreBulkView.h"
#include "platform/QorCoreModelingManager.h"

namespace {

constexpr QorIdentifier kFirstOwnAttribute = 1000;

struct Painter {
    const QorRepositoryReader& reader;
    QorCoreModelingManager& repository;
    std::vector<QorIdentifier> fixed;  // attributes
    std::ostringstream out;

    void value(QorIdentifier thing, QorIdentifier attribute) {
        if (reader.hasValue(thing, attribute))
            out << " [" << attribute << '=' << reader.valueOf(thing, attribute) << ']';
    }
    // `cls` has the attributes, and so have the classes above it.
    void values(QorIdentifier thing, QorIdentifier cls) {
        for (const QorIdentifier id : fixed) value(thing, id);
        for (QorIdentifier owner = cls; owner != QorNoIdentifier; owner = reader.classInfo(owner).superclass)
            for (const auto& attribute : reader.attributesOf(owner)) {
                value(thing, attribute.id);
                if (attribute.type == QorCoreAttributeType::Record) rows(thing, attribute.id);
            }
        out << '\n';
    }
    void rows(QorIdentifier owner, QorIdentifier attribute) {
        ISequence<long> found;
        if (repository.getRecordInstances(owner, attribute, found) != QorErrorCode::Ok) return;
        for (const long row : found) {
            out << "\n  row " << row << " of " << attribute;
            values(static_cast<QorIdentifier>(row), reader.attributeInfo(attribute).target);
        }
    }
    void attributes(QorIdentifier owner) {
        for (const auto& its : reader.attributesOf(owner)) {
            out << "  attribute " << its.id << ' ' << its.name << ' ' << static_cast<int>(its.type)
                << static_cast<int>(its.level) << its.refersToModels << static_cast<int>(its.shownAs) << ' '
                << its.target << ' ' << its.defaultText
                << (reader.findAttribute(owner, its.name) == its.id ? "" : " LOST");
            for (const auto value : its.enumeration) out << '|' << value;
            out << '\n';
        }
    }
    void ids(const char* what, const ISortedSet<long>& found) {
        out << what;
        for (const long id : found) out << ' ' << id;
    }
    void part(QorIdentifier part) {
        out << " part " << part << ' ' << reader.nameOf(part);
        values(part, QorNoIdentifier);
        for (const auto& its : reader.classesOf(part)) {
            out << " class " << its.id << ' ' << its.superclass << its.isAbstract << its.isRecordClass << ' '
                << its.name << (reader.findClass(part, its.name) == its.id ? "" : " LOST");
            ISortedSet<long> found;
            if (repository.getAllSubClasses(its.id, found) == QorErrorCode::Ok) ids(" below", found);
            if (repository.getAllFromRelationsRecursive(its.id, found) == QorErrorCode::Ok) ids(" from", found);
            if (repository.getAllToRelationsRecursive(its.id, found) == QorErrorCode::Ok) ids(" to", found);
            values(its.id, its.id);
            attributes(its.id);
        }
        for (const auto& its : reader.relationClassesOf(part)) {
            out << " relation class " << its.id << ' ' << its.fromClass << ' ' << its.toClass << ' ' << its.name;
            values(its.id, its.id);
            attributes(its.id);
        }
    }
    void object(QorIdentifier id, QorIdentifier model) {
        const QorIdentifier cls = reader.classOfObject(id);
        long found = -1;
        const std::string name(reader.nameOf(id));
        const bool isFound =
            repository.getInstanceIDFromInstanceName(model, cls, name.c_str(), found) == QorErrorCode::Ok;
        out << " object " << id << ' ' << cls << ' ' << name << (isFound && found == id ? "" : " LOST");
        ISortedSet<long> relations;
        if (repository.getFromRelationInstances(id, relations) == QorErrorCode::Ok) ids(" out", relations);
        if (repository.getToRelationInstances(id, relations) == QorErrorCode::Ok) ids(" in", relations);
        values(id, cls);
    }
    void model(const QorModelInfo& its, const std::vector<QorClassInfo>& classes) {
        out << "model " << its.id << ' ' << its.thread << ' ' << its.modelType << ' ' << its.name << '/' << its.version;
        out << " in " << reader.groupOfModel(its.id);
        long last = -1;
        if (repository.getLastModelVersionOfModelThread(its.thread, last) == QorErrorCode::Ok) out << ' ' << last;
        out << '\n';
        for (const QorIdentifier id : reader.objectsOf(its.id)) object(id, its.id);
        for (const auto& cls : classes) {
            ISortedSet<long> found;
            if (repository.getAllInstancesOfClassAndSubClassInModel(its.id, cls.id, found, false) == QorErrorCode::Ok)
                ids("\n of class", found);
        }
        out << '\n';
        for (const auto& relation : reader.relationsOf(its.id)) {
            out << " relation " << relation.id << ' ' << relation.relationClass << ' ' << relation.from << ' '
                << relation.to;
            values(relation.id, relation.relationClass);
        }
    }
    void library(QorIdentifier id) {
        out << "library " << id << ' ' << reader.nameOf(id);
        values(id, QorNoIdentifier);
        std::vector<QorClassInfo> classes;
        for (const auto which : {QorLibraryPart::BusinessProcess, QorLibraryPart::WorkingEnvironment}) {
            const QorIdentifier its = reader.libraryPart(id, which);
            part(its);
            for (const auto& cls : reader.classesOf(its)) classes.push_back(cls);
        }
        for (const auto& type : reader.modelTypesOf(id)) {
            out << " model type " << type.id << ' ' << type.part << ' ' << type.name
                << (reader.findModelType(id, type.name) == type.id ? "" : " LOST");
            for (const QorIdentifier cls : reader.visibleClasses(type.id)) out << ' ' << cls;
            out << '\n';
        }
        for (const auto& its : reader.modelGroupsOf(id)) {
            const QorIdentifier holder = its.parent == QorNoIdentifier ? id : its.parent;
            out << " group " << its.id << " in " << its.parent << ' ' << its.name
                << (reader.findModelGroup(holder, its.name) == its.id ? "" : " LOST") << '\n';
        }
        for (const auto& its : reader.modelsOf(id)) model(its, classes);
    }
    void users(const QorUserAdministration& administration) {
        if (administration.singleSignOnMode() != 0) out << "sign-on mode " << administration.singleSignOnMode() << '\n';
        for (const QorIdentifier id : administration.users()) {
            const QorUserInfo its = administration.userInfo(id);
            out << "user " << id << ' ' << its.logonName << '|' << its.displayName << '|' << its.secondName << ' '
                << static_cast<int>(its.nameKind) << its.isAdministrator << its.isSubAdministrator << ' '
                << its.allowedLibrary << (administration.findUser(its.logonName) == id ? "" : " LOST");
            for (const long manager : its.managers) out << ' ' << manager;
            for (const auto& entry : administration.profileOf(id))
                out << " [" << entry.number << '=' << entry.text << ']';
            memberships(administration, id);
        }
        for (const QorIdentifier id : administration.userGroups()) {
            const QorUserGroupInfo its = administration.userGroupInfo(id);
            out << "user group " << id << ' ' << its.name << its.isSystem
                << (administration.findUserGroup(its.name) == id ? "" : " LOST");
            for (const auto& entry : administration.permissionsOf(id))
                out << " (" << entry.modelGroup << ' ' << entry.permission << ')';
            memberships(administration, id);
        }
    }
    void memberships(const QorUserAdministration& administration, QorIdentifier member) {
        for (const QorIdentifier group : administration.groupsOf(member)) out << " in " << group;
        out << '\n';
    }
};

}  // namespace

std::string pictureOf(QorEmbeddedPlatform& platform) {
    Painter painter{platform.reader(), *platform.host().repository, {}, {}};
    for (QorIdentifier id = 1; id < kFirstOwnAttribute; ++id)
        if (platform.reader().kindOf(id) == QorThingKind::Attribute) painter.fixed.push_back(id);
    for (const QorIdentifier id : platform.reader().applicationLibraries()) painter.library(id);
    painter.users(platform.userAdministration());
    return painter.out.str();
}
