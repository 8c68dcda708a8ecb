// SPDX-License-Identifier: Apache-2.0
#include "embedded/Reader.h"

#include "embedded/TargetCheck.h"

#include "platform/QorGuard.h"

namespace qor::embedded {

namespace {

// Runs a query that fills a list; without memory for it the list is empty.
template <class Query>
auto listed(Query query) noexcept {
    return Qor_Guarded("embedded", decltype(query())(), query);
}

}  // namespace

Reader::~Reader() = default;

QorThingKind Reader::kindOf(QorIdentifier id) const { return _repository.kindOf(id); }

std::string_view Reader::nameOf(QorIdentifier id) const { return _repository.nameOf(id); }

// ---- Method libraries ----

std::vector<QorIdentifier> Reader::applicationLibraries() const {
    return listed([&] { return _repository.meta().libraries(); });
}

QorIdentifier Reader::applicationLibraryOf(QorIdentifier id) const { return _repository.applicationLibraryOf(id); }

QorIdentifier Reader::libraryPart(QorIdentifier applicationLibrary, QorLibraryPart part) const {
    const LibraryRow* const row = _repository.meta().library(applicationLibrary);
    const auto at = static_cast<std::size_t>(part);
    return row != nullptr && at < row->parts.size() ? row->parts[at] : QorNoIdentifier;
}

QorClassInfo Reader::classInfo(QorIdentifier cls) const {
    const ClassRow* const row = _repository.meta().anyClass(cls);
    if (row == nullptr) return {};
    return {row->id, row->part, row->superclass, row->isAbstract, row->isRecordClass, _repository.text(row->name)};
}

std::vector<QorClassInfo> Reader::classesOf(QorIdentifier part) const {
    return listed([&] {
        std::vector<QorClassInfo> classes;
        if (const PartRow* row = _repository.meta().part(part))
            for (const QorIdentifier id : row->classes) classes.push_back(classInfo(id));
        return classes;
    });
}

QorRelationClassInfo Reader::relationClassInfo(QorIdentifier relationClass) const {
    const RelationClassRow* const row = _repository.meta().relationClass(relationClass);
    if (row == nullptr) return {};
    return {row->id, row->part, row->from, row->to, _repository.text(row->name)};
}

std::vector<QorRelationClassInfo> Reader::relationClassesOf(QorIdentifier part) const {
    return listed([&] {
        std::vector<QorRelationClassInfo> classes;
        if (const PartRow* row = _repository.meta().part(part))
            for (const QorIdentifier id : row->relationClasses) classes.push_back(relationClassInfo(id));
        return classes;
    });
}

QorAttributeInfo Reader::attributeInfo(QorIdentifier attribute) const {
    return listed([&] {
        QorAttributeInfo info;
        const AttributeRow* const row = _repository.meta().attribute(attribute);
        if (row == nullptr) return info;
        info.id = row->id;
        info.owner = row->owner;
        info.type = row->type;
        info.level = row->level;
        info.name = _repository.text(row->name);
        info.defaultText = _repository.text(row->defaultText);
        for (const TextRef value : row->enumeration) info.enumeration.push_back(_repository.text(value));
        info.target = row->target;
        info.refersToModels = row->refersToModels;
        info.shownAs = row->shownAs;
        return info;
    });
}

std::vector<QorAttributeInfo> Reader::attributesOf(QorIdentifier owner) const {
    return listed([&] {
        std::vector<QorAttributeInfo> infos;
        const ClassRow* const cls = _repository.meta().anyClass(owner);
        const RelationClassRow* const relationClass = _repository.meta().relationClass(owner);
        if (cls == nullptr && relationClass == nullptr) return infos;
        for (const QorIdentifier id : cls ? cls->attributes : relationClass->attributes)
            infos.push_back(attributeInfo(id));
        return infos;
    });
}

QorIdentifier Reader::findAttribute(QorIdentifier owner, std::string_view name) const {
    return _repository.meta().findAttribute(owner, name);
}

QorIdentifier Reader::findClass(QorIdentifier library, std::string_view name) const {
    return _repository.meta().findClass(library, name);
}

QorIdentifier Reader::findRelationClass(QorIdentifier library, std::string_view name) const {
    return _repository.meta().findRelationClass(library, name);
}

QorIdentifier Reader::findModelType(QorIdentifier library, std::string_view name) const {
    return _repository.meta().findModelType(library, name);
}

std::optional<std::string_view> Reader::own(QorIdentifier thing, QorIdentifier attribute) const {
    const AttributeRow* const row = _repository.attributeOf(thing, attribute);
    return row == nullptr ? std::nullopt : _repository.ownValue(thing, *row);
}

std::string_view Reader::classValue(QorIdentifier cls, QorIdentifier attribute) const {
    return own(cls, attribute).value_or(std::string_view());
}

std::string_view Reader::libraryValue(QorIdentifier library, QorIdentifier attribute) const {
    return own(library, attribute).value_or(std::string_view());
}

std::string_view Reader::unmovedRelationClass(QorIdentifier part) const {
    return libraryValue(part, kUnmovedRelationClass);
}

std::vector<QorModelTypeInfo> Reader::modelTypesOf(QorIdentifier applicationLibrary) const {
    return listed([&] {
        std::vector<QorModelTypeInfo> types;
        if (const LibraryRow* library = _repository.meta().library(applicationLibrary))
            for (const QorIdentifier id : library->modelTypes)
                types.push_back({id, _repository.meta().partOf(id), _repository.nameOf(id)});
        return types;
    });
}

std::vector<QorIdentifier> Reader::visibleClasses(QorIdentifier modelType) const {
    return listed([&] {
        const ModelTypeRow* const row = _repository.meta().modelType(modelType);
        return row ? row->classes : std::vector<QorIdentifier>();
    });
}

// ---- Models ----

QorModelInfo Reader::modelInfo(QorIdentifier model) const {
    const ModelRow* const row = _repository.models().model(model);
    if (row == nullptr) return {};
    return {row->id, _repository.models().modelTypeOf(model), row->thread, _repository.nameOf(model),
            _repository.text(row->version)};
}

std::vector<QorModelInfo> Reader::modelsOf(QorIdentifier applicationLibrary) const {
    return listed([&] {
        std::vector<QorModelInfo> models;
        if (const LibraryRow* library = _repository.meta().library(applicationLibrary))
            library->models.forEach(_repository.things(), [&](QorIdentifier id) { models.push_back(modelInfo(id)); });
        return models;
    });
}

QorIdentifier Reader::modelOf(QorIdentifier objectOrRelation) const {
    return _repository.models().modelOf(objectOrRelation);
}

std::vector<QorIdentifier> Reader::objectsOf(QorIdentifier model) const {
    return listed([&] {
        const ModelRow* const row = _repository.models().model(model);
        return row ? row->objects.copy<QorIdentifier>(_repository.things()) : std::vector<QorIdentifier>();
    });
}

QorIdentifier Reader::classOfObject(QorIdentifier object) const {
    const ObjectRow* const row = _repository.models().object(object);
    return row ? row->cls : QorNoIdentifier;
}

QorRelationInfo Reader::relationInfo(QorIdentifier relation) const {
    const RelationRow* const row = _repository.models().relation(relation);
    return row ? QorRelationInfo{row->id, row->relationClass, row->from, row->to} : QorRelationInfo{};
}

std::vector<QorRelationInfo> Reader::relationsOf(QorIdentifier model) const {
    return listed([&] {
        std::vector<QorRelationInfo> relations;
        const ModelRow* const row = _repository.models().model(model);
        if (row == nullptr) return relations;
        relations.reserve(row->relations.size());
        row->relations.forEach(_repository.things(), [&](QorIdentifier id) { relations.push_back(relationInfo(id)); });
        return relations;
    });
}

std::string_view Reader::valueOf(QorIdentifier instance, QorIdentifier attribute) const {
    return own(instance, attribute).value_or(std::string_view());
}

bool Reader::hasValue(QorIdentifier instance, QorIdentifier attribute) const {
    return own(instance, attribute).has_value();
}

std::vector<QorMissingTarget> Reader::missingTargets(QorIdentifier model) const {
    return listed([&] { return missingTargetsIn(_repository, model); });
}

std::vector<QorIdentifier> Reader::recordRows(QorIdentifier instance, QorIdentifier attribute) const {
    return listed([&] {
        const auto rows = _repository.models().rows(instance, attribute);
        return std::vector<QorIdentifier>(rows.begin(), rows.end());
    });
}

// ---- Model groups ----

std::vector<QorModelGroupInfo> Reader::modelGroupsOf(QorIdentifier applicationLibrary) const {
    return listed([&] {
        std::vector<QorModelGroupInfo> groups;
        if (_repository.meta().library(applicationLibrary) != nullptr)
            for (const QorIdentifier id : _repository.groups().groupsBelow(applicationLibrary))
                groups.push_back(modelGroupInfo(id));
        return groups;
    });
}

QorModelGroupInfo Reader::modelGroupInfo(QorIdentifier group) const {
    const GroupRow* const row = _repository.groups().group(group);
    return row ? QorModelGroupInfo{row->id, row->library, row->parent, _repository.text(row->name)}
               : QorModelGroupInfo{};
}

QorIdentifier Reader::findModelGroup(QorIdentifier parent, std::string_view name) const {
    return _repository.groups().find(parent, name);
}

QorIdentifier Reader::groupOfModel(QorIdentifier model) const {
    const ModelRow* const row = _repository.models().model(model);
    return row ? _repository.models().thread(row->thread)->group : QorNoIdentifier;
}

}  // namespace qor::embedded
