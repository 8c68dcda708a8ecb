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
#include "embedded/store/StoredRow.h"

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
    // All versions of the model.
    QorBuildResult renameThread(QorIdentifier thread, std::string_view name);
    // The thread must exist; whether the group may hold it is not asked here.
    void moveThread(QorIdentifier thread, QorIdentifier group);
    [[nodiscard]] bool hasThreadsIn(QorIdentifier group) const;
    // Makes the relation leave (reach) another object of the same model.
    QorBuildResult moveEnd(QorIdentifier relation, Adjacency::Direction direction, QorIdentifier object);
    // With its relations.
    QorBuildResult removeObject(QorIdentifier object);
    QorBuildResult removeModel(QorIdentifier model);

    // How many rows may lie within one another.
    static constexpr std::size_t kDeepestRows = 16;
    // A row of a record attribute that the owner has. `position` counts from 0, -1 means the end.
    QorBuildResult addRow(QorIdentifier owner, const AttributeRow& attribute, long position);
    QorBuildResult removeRow(QorIdentifier row);
    [[nodiscard]] std::span<const QorIdentifier> rows(QorIdentifier owner, QorIdentifier attribute) const;
    // The rows of a file come by identifier: puts them in the order of their positions.
    void orderRows(std::vector<StoredRow>& rows);

    // Takes back a step of the journal that concerns models, as the last one that was taken. What is read next lays the
    // relations out anew.
    void takeBack(const Step& step) noexcept;
    // Gives up what a step kept for the way back; `tidy` goes over all steps after that.
    void bury(const Step& step) noexcept;
    void tidy(const std::vector<Step>& steps) noexcept;

    // Takes in a row of a repository file, in the order of identifiers. False when it refers to what is not there.
    [[nodiscard]] bool adopt(const StoredRow& row);
    // The row that stands for a thing in a repository file; `row` is its place in its table. For a record row, the
    // position among its owner's is to be given.
    [[nodiscard]] StoredRow stored(QorThingKind kind, QorIdentifier id, std::size_t row,
                                   std::size_t position = 0) const;

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

    // Views objects up to the first identifier that stands for none, and answers how many; no more than fit in `views`.
    std::size_t viewObjects(std::span<const long> objects, std::span<QorObjectView> views);

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
    void noteAdded(QorThingKind kind, QorIdentifier id, QorIdentifier scope, std::size_t position = 0);
    // Notes the removal of a thing; what it kept is given up by `gone`, now or at the commit.
    [[nodiscard]] Step noteRemoved(QorIdentifier id, QorIdentifier scope, std::size_t position = 0);
    void gone(const Step& step) noexcept;
    void forgetRelation(QorIdentifier relation);
    void forgetObject(QorIdentifier object);
    void forgetModel(QorIdentifier model);
    void forgetRows(QorIdentifier owner);
    void forgetRow(QorIdentifier row, std::size_t position);
    void forgetThread(QorIdentifier thread);
    void tidyLists(QorIdentifier model, QorIdentifier cls) noexcept;
    void takeBackAdded(const Step& step) noexcept;
    void takeBackRemoved(const Step& step) noexcept;
    void noteChange(StepKind kind, QorIdentifier id, QorIdentifier scope, TextRef text, QorIdentifier other);
    [[nodiscard]] NameScope nameScopeOf(QorIdentifier objectOrThread) const;
    [[nodiscard]] TextRef& nameIn(QorIdentifier objectOrThread);
    // The name must be free.
    QorBuildResult rename(QorIdentifier objectOrThread, QorIdentifier scope, std::string_view name);
    void takeBackName(const Step& step) noexcept;
    void takeBackEnd(const Step& step) noexcept;
    [[nodiscard]] QorIdentifier libraryOfThread(QorIdentifier thread) const;
    [[nodiscard]] std::size_t depthOf(QorIdentifier rowOwner) const;
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
