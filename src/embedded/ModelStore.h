// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "embedded/Adjacency.h"
#include "embedded/InstanceTables.h"
#include "embedded/MetaModel.h"
#include "embedded/ModelRows.h"
#include "embedded/QorRepositoryBuilder.h"
#include "embedded/Store.h"
#include "embedded/Values.h"

namespace qor::embedded {

// The models with their objects, relations and record rows. Operations that change something throw std::bad_alloc when
// memory runs out, and have then changed nothing.
class ModelStore {
public:
    ModelStore(Store& store, MetaModel& meta, Values& values);

    QorBuildResult addModel(QorIdentifier modelType, std::string_view name, std::string_view version);
    QorBuildResult addObject(QorIdentifier model, QorIdentifier cls, std::string_view name);
    QorBuildResult addRelation(QorIdentifier relationClass, QorIdentifier from, QorIdentifier to);
    QorBuildResult renameObject(QorIdentifier object, std::string_view name);
    // Makes the relation leave (reach) another object of the same model.
    QorBuildResult moveEnd(QorIdentifier relation, Adjacency::Direction direction, QorIdentifier object);
    // With its relations.
    QorBuildResult removeObject(QorIdentifier object);
    QorBuildResult removeModel(QorIdentifier model);

    // A row of a record attribute that the owner has. `position` counts from 0, -1 means the end.
    QorBuildResult addRow(QorIdentifier owner, const AttributeRow& attribute, long position);
    QorBuildResult removeRow(QorIdentifier row);
    [[nodiscard]] std::span<const QorIdentifier> rows(QorIdentifier owner, QorIdentifier attribute) const;

    void reserve(std::size_t objects, std::size_t relations);
    void layOut();

    // Rows by identifier; null when the identifier is of another kind.
    [[nodiscard]] const ThreadRow* thread(QorIdentifier id) const;
    [[nodiscard]] const ModelRow* model(QorIdentifier id) const;
    [[nodiscard]] const ObjectRow* object(QorIdentifier id) const;
    [[nodiscard]] const RelationRow* relation(QorIdentifier id) const;
    [[nodiscard]] const RecordRow* row(QorIdentifier id) const;

    // Of an object, relation or record row; none for anything else.
    [[nodiscard]] QorIdentifier classOfInstance(QorIdentifier instance) const;
    // Of an object, relation, record row, or of the model itself.
    [[nodiscard]] QorIdentifier modelOf(QorIdentifier instance) const;
    [[nodiscard]] QorIdentifier modelTypeOf(QorIdentifier model) const;
    [[nodiscard]] const IdentifierList* objectsOfClass(const ModelRow& model, QorIdentifier cls) const;

    [[nodiscard]] QorIdentifier findThread(QorIdentifier modelType, std::string_view name) const;
    [[nodiscard]] QorIdentifier findObject(QorIdentifier model, QorIdentifier cls, std::string_view name) const;
    [[nodiscard]] std::string_view nameOf(QorIdentifier id) const;

    // The object must exist. Holds until the next change.
    [[nodiscard]] std::span<const QorRelationEnd> ends(Adjacency::Direction direction, QorIdentifier object) {
        return _adjacency.ends(direction, _store.things.at(object).index);
    }

    [[nodiscard]] std::size_t bytes() const;

private:
    // Rows without an identifier, to be swept.
    struct Gone {
        std::size_t objects = 0;
        std::size_t relations = 0;
        std::size_t rows = 0;
        std::size_t models = 0;
        std::size_t threads = 0;
    };
    using RowKey = std::pair<QorIdentifier, QorIdentifier>;  // owner, attribute

    [[nodiscard]] std::string_view text(TextRef ref) const { return _store.texts.view(ref); }
    [[nodiscard]] QorIdentifier findVersion(QorIdentifier thread, std::string_view version) const;
    [[nodiscard]] ModelRow& editModel(QorIdentifier id) { return _models[_store.things.at(id).index]; }
    [[nodiscard]] ObjectRow& editObject(QorIdentifier id) { return _tables.objects[_store.things.at(id).index]; }
    [[nodiscard]] QorBuildError checkEnds(const RelationClassRow& relationClass, QorIdentifier from,
                                          QorIdentifier to) const;
    ObjectsOfClass& bucketFor(ModelRow& model, QorIdentifier cls);
    void forgetRelation(QorIdentifier relation) noexcept;
    void forgetObject(QorIdentifier object) noexcept;
    void forgetRows(QorIdentifier owner) noexcept;
    void forgetRow(QorIdentifier row) noexcept;
    void forgetThread(QorIdentifier thread) noexcept;
    void sweepWhenHalfIsGone() noexcept;
    void sweep() noexcept;

    Store& _store;
    MetaModel& _meta;
    Values& _values;
    std::vector<ThreadRow> _threads;
    std::vector<ModelRow> _models;
    InstanceTables _tables;
    Gone _gone;
    std::vector<RecordRow> _rows;
    std::map<RowKey, std::vector<QorIdentifier>> _rowsOf;
    Adjacency _adjacency{_store.things, _tables};
};

}  // namespace qor::embedded
