// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <string_view>
#include <vector>

#include "embedded/MetaModel.h"
#include "embedded/ModelStore.h"
#include "embedded/QorRepositoryBuilder.h"
#include "embedded/Store.h"
#include "embedded/store/StoredRow.h"

namespace qor::embedded {

// A model group. A removed row has no identifier any more, and is swept.
struct GroupRow {
    QorIdentifier id = QorNoIdentifier;
    QorIdentifier library = QorNoIdentifier;
    QorIdentifier parent = QorNoIdentifier;  // none at the top
    TextRef name = 0;
};

// The model groups: for each application library a tree of groups with models in them. A model lies in one group at
// most, with all its versions; its thread knows which. What lies in a group is found by looking at all of them, so that
// the way back and the repository file have one number to care for. Operations that change something throw
// std::bad_alloc when memory runs out, and have then changed nothing.
class ModelGroups {
public:
    // How many groups may lie within one another.
    static constexpr std::size_t kDeepest = 64;

    ModelGroups(Store& store, const MetaModel& meta, ModelStore& models)
        : _store(store), _meta(meta), _models(models) {}

    // `parent` is a group, or the application library for a group at the top.
    QorBuildResult add(QorIdentifier parent, std::string_view name);
    QorBuildResult rename(QorIdentifier group, std::string_view name);
    QorBuildResult move(QorIdentifier group, QorIdentifier parent);
    // Refused (HasInstances) while something lies in the group. O(groups + models).
    QorBuildResult remove(QorIdentifier group);
    // `group` none takes the model out of its group.
    QorBuildResult place(QorIdentifier thread, QorIdentifier group);
    // All groups of the library, which must have no models.
    void removeAllOf(QorIdentifier library);

    // Null when the identifier is no group.
    [[nodiscard]] const GroupRow* group(QorIdentifier id) const;
    [[nodiscard]] QorIdentifier find(QorIdentifier parent, std::string_view name) const;
    // Groups in the group (or at the top of the application library), ascending. O(groups).
    [[nodiscard]] std::vector<QorIdentifier> groupsIn(QorIdentifier parent) const;
    // The same at any depth; no group comes before the one that it lies in. O(groups).
    [[nodiscard]] std::vector<QorIdentifier> groupsBelow(QorIdentifier parent) const;

    // As for the other rows of the repository (ModelStore.h).
    void takeBack(const Step& step) noexcept;
    void bury(const Step& step) noexcept;
    void sweep() noexcept;
    [[nodiscard]] bool adopt(const StoredRow& row);
    // Whether the adopted groups form trees with names of their own.
    [[nodiscard]] bool areSound() const;
    [[nodiscard]] StoredRow stored(QorIdentifier id, std::size_t row) const;
    template <class Take>
    void forEach(Take take) const {
        for (std::size_t at = 0; at < _rows.size(); ++at)
            if (_rows[at].id != QorNoIdentifier) take(_rows[at].id, at);
    }

private:
    [[nodiscard]] GroupRow& edit(QorIdentifier id) { return _rows[_store.things.at(id).index]; }
    [[nodiscard]] std::string_view text(TextRef ref) const { return _store.texts.view(ref); }
    [[nodiscard]] QorIdentifier libraryOf(QorIdentifier parent) const;
    [[nodiscard]] std::size_t depthOf(QorIdentifier parent) const;
    [[nodiscard]] std::size_t heightOf(QorIdentifier group) const;
    void index(const GroupRow& row, QorIdentifier id) noexcept;
    void unindex(const GroupRow& row, QorIdentifier id) noexcept;
    void note(StepKind kind, QorIdentifier group);
    void forget(QorIdentifier group);

    Store& _store;
    const MetaModel& _meta;
    ModelStore& _models;
    std::vector<GroupRow> _rows;
};

}  // namespace qor::embedded
