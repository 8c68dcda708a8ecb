// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <optional>
#include <string_view>

#include "embedded/MetaModel.h"
#include "embedded/ModelStore.h"
#include "embedded/Store.h"
#include "embedded/Values.h"

namespace qor::embedded {

// Everything that the embedded platform knows about method libraries and models, and what concerns both.
class Repository {
public:
    Repository() = default;
    Repository(const Repository&) = delete;
    Repository& operator=(const Repository&) = delete;

    [[nodiscard]] MetaModel& meta() { return _meta; }
    [[nodiscard]] const MetaModel& meta() const { return _meta; }
    [[nodiscard]] ModelStore& models() { return _models; }
    [[nodiscard]] const ModelStore& models() const { return _models; }
    [[nodiscard]] const ThingTable& things() const { return _store.things; }

    [[nodiscard]] QorThingKind kindOf(QorIdentifier id) const { return _store.things.kindOf(id); }
    [[nodiscard]] std::string_view text(TextRef ref) const { return _store.texts.view(ref); }
    [[nodiscard]] std::string_view nameOf(QorIdentifier id) const;
    [[nodiscard]] QorIdentifier applicationLibraryOf(QorIdentifier id) const;

    // Refused (HasInstances) while it has models.
    QorBuildResult removeApplicationLibrary(QorIdentifier library);

    QorBuildResult setClassValue(QorIdentifier cls, QorIdentifier attribute, std::string_view text);
    QorBuildResult setLibraryValue(QorIdentifier library, QorIdentifier attribute, std::string_view text);
    // Of an object, relation or record row; setting an object's name renames it.
    QorBuildResult setInstanceValue(QorIdentifier instance, QorIdentifier attribute, std::string_view text);

    // The attribute as one that the instance, class or library can have a value of; null when it cannot.
    [[nodiscard]] const AttributeRow* attributeOf(QorIdentifier thing, QorIdentifier attribute) const;
    // The thing's own value: as it was set, or its name. Nothing when there is none.
    [[nodiscard]] std::optional<std::string_view> ownValue(QorIdentifier thing, const AttributeRow& attribute) const;
    // The own value or, for an instance, the attribute's default. A default of no text is none.
    [[nodiscard]] std::optional<std::string_view> value(QorIdentifier thing, const AttributeRow& attribute,
                                                        bool withDefault) const;

    // What it takes in memory, without small change.
    [[nodiscard]] std::size_t bytes() const;

private:
    [[nodiscard]] bool isInstance(QorIdentifier id) const;

    Store _store;
    MetaModel _meta{_store};
    Values _values{_store, _meta};
    ModelStore _models{_store, _meta, _values};
};

}  // namespace qor::embedded
