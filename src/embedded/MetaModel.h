// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "embedded/AttributesBelow.h"
#include "embedded/MetaRows.h"
#include "embedded/QorRepositoryBuilder.h"
#include "embedded/Store.h"
#include "embedded/store/StoredRow.h"

namespace qor::embedded {

// The method libraries: application libraries with their parts, classes, relation classes, attributes, model types.
// Operations that change something throw std::bad_alloc when memory runs out, and have then changed nothing.
class MetaModel {
public:
    explicit MetaModel(Store& store);

    QorBuildResult addApplicationLibrary(std::string_view name, std::string_view businessProcessName,
                                         std::string_view workingEnvironmentName);
    QorBuildResult addClass(QorIdentifier part, std::string_view name, QorIdentifier superclass, bool isAbstract);
    QorBuildResult addRecordClass(QorIdentifier part, std::string_view name);
    QorBuildResult addRelationClass(QorIdentifier part, std::string_view name, QorIdentifier from, QorIdentifier to);
    QorBuildResult addAttribute(QorIdentifier owner, const QorAttributeSpec& attribute);
    QorBuildResult addModelType(QorIdentifier part, std::string_view name, std::span<const QorIdentifier> classes);
    // The library must exist, without models; values of its classes are cleared before.
    void removeApplicationLibrary(QorIdentifier library);

    // Takes back a step of the journal that concerns the meta-model, as the last one that was taken.
    void takeBack(const Step& step) noexcept;
    // Gives up what a step kept for the way back.
    void bury(const Step& step) noexcept;
    // Closes the gaps that buried rows left.
    void sweep() noexcept;

    // Takes in a row of a repository file, in the order of identifiers. False when it refers to what is not there.
    [[nodiscard]] bool adopt(const StoredRow& row);
    // The rows that stand for a thing in a repository file; `row` is its place in its table.
    void forEachStored(QorThingKind kind, QorIdentifier id, std::size_t row, const TakeStored& take) const;
    // The application library or class whose content a thing of the meta-model is.
    [[nodiscard]] QorIdentifier scopeOf(QorIdentifier id) const;

    // Rows by identifier; null when the identifier is of another kind.
    [[nodiscard]] const LibraryRow* library(QorIdentifier id) const;
    [[nodiscard]] const PartRow* part(QorIdentifier id) const;
    [[nodiscard]] const ClassRow* anyClass(QorIdentifier id) const;     // class or record class
    [[nodiscard]] const ClassRow* objectClass(QorIdentifier id) const;  // class, not a record class
    [[nodiscard]] const RelationClassRow* relationClass(QorIdentifier id) const;
    [[nodiscard]] const AttributeRow* attribute(QorIdentifier id) const;
    [[nodiscard]] const ModelTypeRow* modelType(QorIdentifier id) const;

    [[nodiscard]] std::vector<QorIdentifier> libraries() const;
    // The application library of a library, part, class, relation class, attribute or model type.
    [[nodiscard]] QorIdentifier libraryOf(QorIdentifier id) const;
    [[nodiscard]] QorIdentifier partOf(QorIdentifier cls) const;
    [[nodiscard]] QorLibraryPart partKindOf(QorIdentifier cls) const;

    // By name. `library` is a part, or an application library whose parts are searched in their order.
    [[nodiscard]] QorIdentifier findApplicationLibrary(std::string_view name) const;
    [[nodiscard]] QorIdentifier findClass(QorIdentifier library, std::string_view name) const;
    [[nodiscard]] QorIdentifier findRelationClass(QorIdentifier library, std::string_view name) const;
    [[nodiscard]] QorIdentifier findModelType(QorIdentifier library, std::string_view name) const;
    // Attribute of a class, record class or relation class, inherited and fixed ones included.
    [[nodiscard]] QorIdentifier findAttribute(QorIdentifier owner, std::string_view name) const;

    [[nodiscard]] bool isA(QorIdentifier cls, QorIdentifier ancestor) const;
    [[nodiscard]] bool hasAttribute(QorIdentifier owner, const AttributeRow& attribute) const;
    // Classes below the class at any depth.
    [[nodiscard]] std::vector<QorIdentifier> descendants(QorIdentifier cls) const;
    // The class itself, then its superclass, and so on.
    template <class Take>
    void forEachInLine(QorIdentifier cls, Take take) const {
        for (const ClassRow* row = anyClass(cls); row != nullptr; row = anyClass(row->superclass)) take(*row);
    }
    // The attributes that are not fixed: first those of the topmost ancestor.
    [[nodiscard]] std::vector<QorIdentifier> attributesInLine(QorIdentifier owner) const;
    [[nodiscard]] bool allows(const ModelTypeRow& type, QorIdentifier cls) const;

    // For the models, which are counted here.
    [[nodiscard]] LibraryRow& editLibrary(QorIdentifier id) { return _libraries[_store.things.at(id).index]; }
    [[nodiscard]] ClassRow& editClass(QorIdentifier id) { return _classes[_store.things.at(id).index]; }
    // One instance more or less of exactly the class.
    void countInstance(QorIdentifier cls, int change) noexcept;
    [[nodiscard]] RelationClassRow& editRelationClass(QorIdentifier id) {
        return _relationClasses[_store.things.at(id).index];
    }

    [[nodiscard]] std::string_view nameOf(QorIdentifier id) const;

private:
    static constexpr QorIdentifier kAnywhere = 0;  // the scope of names that belong to no other thing

    [[nodiscard]] std::string_view text(TextRef ref) const { return _store.texts.view(ref); }
    template <class Matches>
    [[nodiscard]] QorIdentifier find(NameScope scope, std::string_view name, Matches matches) const {
        return _store.names.find(NameIndex::hashOf(scope, name),
                                 [&](QorIdentifier id) { return matches(id) && nameOf(id) == name; });
    }
    // The first hit in the part, or in the parts of the application library.
    template <class FindInPart>
    [[nodiscard]] QorIdentifier findInParts(QorIdentifier libraryId, FindInPart findInPart) const {
        const LibraryRow* both = library(libraryId);
        if (both == nullptr) return part(libraryId) ? findInPart(libraryId) : QorNoIdentifier;
        const QorIdentifier first = findInPart(both->parts[0]);
        return first != QorNoIdentifier ? first : findInPart(both->parts[1]);
    }
    [[nodiscard]] QorIdentifier findOwnAttribute(QorIdentifier owner, std::string_view name) const;
    [[nodiscard]] QorIdentifier findFixedAttribute(QorIdentifier owner, std::string_view name) const;
    [[nodiscard]] bool hasFixed(QorIdentifier owner, FixedOwner fixedOwner) const;
    [[nodiscard]] bool hasInstances(QorIdentifier owner) const;
    [[nodiscard]] QorIdentifier attributeNamed(QorIdentifier owner, std::string_view name) const;
    [[nodiscard]] QorBuildError checkSpec(QorIdentifier owner, const QorAttributeSpec& attribute) const;
    [[nodiscard]] bool hasRoom(std::size_t things, std::size_t index) const {
        return _store.things.hasRoomFor(things, index);
    }
    QorBuildResult addAnyClass(QorIdentifier part, std::string_view name, QorIdentifier superclass, bool isAbstract,
                               bool isRecordClass);
    // The identifier and name in the row of a thing, and where its name is unique.
    struct Entry {
        QorIdentifier* id;
        TextRef* name;
        NameScope scope;
    };
    static constexpr NameScope kNotIndexed{0, 0};
    [[nodiscard]] Entry entryOf(QorThingKind kind, std::size_t row) noexcept;
    void noteAdded(QorThingKind kind, QorIdentifier id, QorIdentifier scope) {
        Step step;
        step.thing = kind;
        step.id = id;
        step.scope = scope;
        _store.journal.note(step);
    }
    void forget(QorIdentifier id);
    // Every class above the owner is told of an attribute more or less below it; room comes first.
    void makeRoomBelow(QorIdentifier owner, std::string_view name);
    void noteAttributeBelow(const AttributeRow& attribute, int change) noexcept;
    void takeBackAdded(const Step& step) noexcept;
    void releaseTexts(QorThingKind kind, std::size_t row) noexcept;

    Store& _store;
    std::vector<LibraryRow> _libraries;
    std::vector<PartRow> _parts;
    std::vector<ClassRow> _classes;
    std::vector<RelationClassRow> _relationClasses;
    std::vector<AttributeRow> _attributes;
    std::vector<ModelTypeRow> _modelTypes;
    AttributesBelow _attributesBelow;
};

}  // namespace qor::embedded
