// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/QorExport.h"
#include "platform/SvString.h"

/// Permissions of a user group on a model group.
namespace QorModelGroupPermission {
inline constexpr std::int32_t None = 0;
inline constexpr std::int32_t Read = 2;
inline constexpr std::int32_t Write = 4;
}  // namespace QorModelGroupPermission

/// One model group that a user group may reach. Holds what it was given; nothing is looked up or checked.
class QOR_API QorAccModelgroup {
public:
    /// A null name counts as the empty text. `applicationLibrary`: the method library that the model group belongs to.
    QorAccModelgroup(long modelGroup, const char* name, long applicationLibrary, std::int32_t permission);
    /// Reads a permission of 1, which older data sources deliver, as no access.
    QorAccModelgroup(const QorAccModelgroup& other);
    QorAccModelgroup& operator=(const QorAccModelgroup&) = delete;
    ~QorAccModelgroup();

    [[nodiscard]] long getModelGroupID() const { return _modelGroup; }
    [[nodiscard]] const SV::String& getName() const { return _name; }
    [[nodiscard]] long getApplicationLibraryID() const { return _applicationLibrary; }
    [[nodiscard]] std::int32_t getPermission() const { return _permission; }

private:
    long _modelGroup;
    SV::String _name;
    long _applicationLibrary;
    std::int32_t _permission;
};

/// Access entries, owned. Ordered by address only, so the order of iteration carries no meaning; a model group appears
/// once for each user group through which it is reached.
class QOR_API QorAccModelgroupContainer {
public:
    QorAccModelgroupContainer();
    /// Copies every entry, as QorAccModelgroup is copied.
    QorAccModelgroupContainer(const QorAccModelgroupContainer& other);
    QorAccModelgroupContainer& operator=(const QorAccModelgroupContainer& other);
    ~QorAccModelgroupContainer();

    /// Takes the entry over; amortised O(1).
    void add(std::unique_ptr<QorAccModelgroup> entry);
    void removeAll();
    [[nodiscard]] unsigned long numberOfElements() const { return _entries.size(); }

    /// Entries stay where they are until `removeAll` or the container's end; iterators hold until the next change. The
    /// first question after additions puts the entries in order, O(n log n) unless they came so.
    using Entries = std::vector<std::unique_ptr<QorAccModelgroup>>;
    [[nodiscard]] Entries::const_iterator begin() const {
        if (!_isInOrder) putInOrder();
        return _entries.begin();
    }
    [[nodiscard]] Entries::const_iterator end() const { return _entries.end(); }

private:
    void putInOrder() const;

    // Putting in order changes where entries stand, never which ones they are.
    mutable Entries _entries;
    mutable bool _isInOrder = true;
};
