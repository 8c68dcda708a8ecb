// SPDX-License-Identifier: Apache-2.0
#include "embedded/Repository.h"

#include <new>
#include <string>

#include "embedded/KeywordText.h"
#include "platform/QorAttributeIds.h"

namespace qor::embedded {

namespace {

// The attributes whose values are the names of things and stand nowhere else.
bool isName(QorIdentifier attribute) {
    return attribute == QorAttributeId::ClassName || attribute == QorAttributeId::Name ||
           attribute == QorAttributeId::RelationClassName;
}

// Where an object stands in the drawing is written as a keyword text.
bool mayHold(QorIdentifier attribute, std::string_view text) {
    const bool isPosition =
        attribute == QorAttributeId::Graphic || attribute == QorAttributeId::WorkingEnvironmentGraphic;
    return !isPosition || isKeywordText(text);
}

QorBuildResult outcome(QorIdentifier id, QorBuildError error) {
    return error == QorBuildError::None ? QorBuildResult{id} : refused(error);
}

}  // namespace

bool Repository::isInstance(QorIdentifier id) const { return models().classOfInstance(id) != QorNoIdentifier; }

std::string_view Repository::nameOf(QorIdentifier id) const {
    if (const GroupRow* group = groups().group(id)) return text(group->name);
    if (const UserRow* user = users().user(id)) return user->fields.logonName;
    if (const UserGroupRow* group = users().group(id)) return group->name;
    const std::string_view name = models().nameOf(id);
    return name.empty() ? meta().nameOf(id) : name;
}

QorIdentifier Repository::applicationLibraryOf(QorIdentifier id) const {
    switch (kindOf(id)) {
        case QorThingKind::ModelThread:
        case QorThingKind::Model:
            return meta().libraryOf(models().modelTypeOf(id));
        case QorThingKind::Object:
        case QorThingKind::Relation:
        case QorThingKind::RecordRow:
            return meta().libraryOf(models().classOfInstance(id));
        case QorThingKind::ModelGroup:
            return groups().group(id)->library;
        case QorThingKind::User:
        case QorThingKind::UserGroup:
            return QorNoIdentifier;
        default:
            return meta().libraryOf(id);
    }
}

QorBuildResult Repository::removeApplicationLibrary(QorIdentifier id) {
    const LibraryRow* const library = meta().library(id);
    if (library == nullptr) return refused(QorBuildError::UnknownIdentifier);
    if (!library->models.empty()) return refused(QorBuildError::HasInstances);
    for (const QorIdentifier partId : library->parts) {
        const PartRow& part = *meta().part(partId);
        for (const QorIdentifier cls : part.classes) _content->values.clearAll(cls, cls, cls);
        for (const QorIdentifier relationClass : part.relationClasses)
            _content->values.clearAll(relationClass, relationClass, relationClass);
        _content->values.clearAll(partId, partId, id);
    }
    _content->values.clearAll(id, id, id);
    for (const QorIdentifier group : groups().groupsBelow(id)) users().forgetModelGroup(group);
    users().forgetLibrary(id);
    groups().removeAllOf(id);
    meta().removeApplicationLibrary(id);
    return {id};
}

QorBuildResult Repository::removeModelGroup(QorIdentifier group) {
    users().forgetModelGroup(group);
    return groups().remove(group);
}

QorBuildResult Repository::setClassValue(QorIdentifier cls, QorIdentifier attribute, std::string_view text) {
    if (meta().anyClass(cls) == nullptr && meta().relationClass(cls) == nullptr)
        return refused(QorBuildError::UnknownIdentifier);
    if (meta().attribute(attribute) == nullptr) return refused(QorBuildError::UnknownIdentifier);
    const AttributeRow* const row = attributeOf(cls, attribute);
    if (row == nullptr || isName(attribute)) return refused(QorBuildError::AttributeDoesNotBelong);
    if (!mayHold(attribute, text)) return refused(QorBuildError::ValueRefused);
    return outcome(cls, _content->values.set(cls, *row, text, cls));
}

QorBuildResult Repository::setLibraryValue(QorIdentifier library, QorIdentifier attribute, std::string_view text) {
    if (meta().library(library) == nullptr && meta().part(library) == nullptr)
        return refused(QorBuildError::UnknownIdentifier);
    if (meta().attribute(attribute) == nullptr) return refused(QorBuildError::UnknownIdentifier);
    const AttributeRow* const row = attributeOf(library, attribute);
    if (row == nullptr || isName(attribute)) return refused(QorBuildError::AttributeDoesNotBelong);
    return outcome(library, _content->values.set(library, *row, text, meta().libraryOf(library)));
}

QorBuildResult Repository::setInstanceValue(QorIdentifier instance, QorIdentifier attribute, std::string_view text) {
    if (!isInstance(instance) || meta().attribute(attribute) == nullptr)
        return refused(QorBuildError::UnknownIdentifier);
    const AttributeRow* const row = attributeOf(instance, attribute);
    if (row == nullptr) return refused(QorBuildError::AttributeDoesNotBelong);
    if (attribute == QorAttributeId::Name) return models().renameObject(instance, text);
    if (!mayHold(attribute, text)) return refused(QorBuildError::ValueRefused);
    return outcome(instance, _content->values.set(instance, *row, text, models().modelOf(instance)));
}

QorBuildResult Repository::setUnmovedRelationClass(QorIdentifier part, std::string_view name) {
    if (meta().part(part) == nullptr) return refused(QorBuildError::UnknownIdentifier);
    if (!name.empty() && meta().findRelationClass(part, name) == QorNoIdentifier)
        return refused(QorBuildError::UnknownIdentifier);
    return setLibraryValue(part, kUnmovedRelationClass, name);
}

QorBuildResult Repository::pasteObject(QorIdentifier modelId, QorIdentifier source, std::string_view name) {
    const ObjectRow* const row = models().object(source);
    if (row == nullptr || models().model(modelId) == nullptr) return refused(QorBuildError::UnknownIdentifier);
    if (applicationLibraryOf(modelId) != applicationLibraryOf(source)) return refused(QorBuildError::ForeignLibrary);
    const QorBuildResult made = models().addObject(modelId, row->cls, name);
    if (!made.ok()) return made;
    copyValues(source, made.id);
    const std::string sourceName(nameOf(source));
    return outcome(made.id, _content->values.set(made.id, *meta().attribute(kPastedFrom), sourceName, modelId));
}

// The instances are of one class.
void Repository::copyValues(QorIdentifier from, QorIdentifier to) {
    const QorIdentifier cls = models().classOfInstance(from);
    std::vector<QorIdentifier> attributes = meta().attributesInLine(cls);
    for (const FixedAttribute& fixed : fixedAttributes())
        if (!isName(fixed.id) && attributeOf(from, fixed.id) != nullptr) attributes.push_back(fixed.id);
    for (const QorIdentifier id : attributes) {
        const AttributeRow& attribute = *meta().attribute(id);
        // What is a view into the repository may not hold while it grows.
        if (attribute.type == QorCoreAttributeType::Record) {
            const auto rows = models().rows(from, id);
            const std::vector<QorIdentifier> sources(rows.begin(), rows.end());
            for (const QorIdentifier row : sources) {
                const QorBuildResult made = models().addRow(to, attribute, -1);
                if (!made.ok()) throw std::bad_alloc();
                copyValues(row, made.id);
            }
        } else if (const auto value = _content->values.own(from, id);
                   value && attribute.level == QorAttributeLevel::Instance) {
            // What the source took is refused only where memory for looking at it runs out.
            if (_content->values.set(to, attribute, std::string(*value), models().modelOf(to)) != QorBuildError::None)
                throw std::bad_alloc();
        }
    }
}

const AttributeRow* Repository::attributeOf(QorIdentifier thing, QorIdentifier attribute) const {
    const AttributeRow* const row = meta().attribute(attribute);
    if (row == nullptr) return nullptr;
    switch (kindOf(thing)) {
        case QorThingKind::Object:
        case QorThingKind::Relation:
        case QorThingKind::RecordRow:
            return row->level == QorAttributeLevel::Instance &&
                           meta().hasAttribute(models().classOfInstance(thing), *row)
                       ? row
                       : nullptr;
        case QorThingKind::Model:
        case QorThingKind::ApplicationLibrary:
        case QorThingKind::LibraryPart:
            return attribute == QorAttributeId::Name || meta().hasAttribute(thing, *row) ? row : nullptr;
        // A class can have a value of its own also of its instances' attributes. Their names are not among them.
        default:
            return attribute != QorAttributeId::Name && meta().hasAttribute(thing, *row) ? row : nullptr;
    }
}

std::optional<std::string_view> Repository::ownValue(QorIdentifier thing, const AttributeRow& attribute) const {
    if (isName(attribute.id)) return nameOf(thing);
    return _content->values.own(thing, attribute.id);
}

std::optional<std::string_view> Repository::value(QorIdentifier thing, const AttributeRow& attribute,
                                                  bool withDefault) const {
    std::optional<std::string_view> own = ownValue(thing, attribute);
    if (own || !withDefault || attribute.defaultText == 0 || !isInstance(thing)) return own;
    return text(attribute.defaultText);
}

std::size_t Repository::bytes() const {
    return _content->store.things.bytes() + _content->store.texts.bytes() + _content->store.names.bytes() +
           _content->store.values.bytes() + models().bytes();
}

}  // namespace qor::embedded
