// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "platform/ISortedSet.h"
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"
#include "platform/QorUserGroupID.h"
#include "platform/SvString.h"

/// What an entry of an assignment tree shows: a permission, or that there are different ones below it.
enum class QorPermissionState : std::int32_t { Undetermined = -1, NoAccess = 0, Read = 2, Write = 4 };

/// What a click on an entry makes of its state: no access, read, write and round again; undetermined becomes read.
[[nodiscard]] QOR_API QorPermissionState Qor_NextPermissionState(QorPermissionState state) noexcept;

/// What becomes of the groups below the model groups that permissions are set on.
enum class QorSubGroupMode : std::int32_t {
    None = 0,         ///< nothing chosen yet; a plan cannot be made
    AdaptedOnly = 1,  ///< they get the permissions that were set, and keep the others
    All = 2,          ///< they get all permissions of the model group that they lie below
};

/// One permission that a plan changes.
struct QorPermissionChange {
    long modelGroup = 0;
    QorUserGroupID userGroup;
    std::int32_t before = 0;  ///< values of QorModelGroupPermission
    std::int32_t after = 0;
    SV::String modelGroupName;  ///< "#n" for a group that the host has no name for
    SV::String userGroupName;

    [[nodiscard]] bool isRise() const { return after > before; }
};

/// A question that had to be asked, and its answer.
struct QorPermissionQuestion {
    QorPermissionChange lowering;  ///< of the sub-group's higher permission
    SV::String text;               ///< in the host's language
    bool goOn = false;
};

/// The change of permissions of user groups on model groups, behind whatever shows it: a dialog with a tree of entries,
/// a command. First `open`, then set states, then `plan`, which writes nothing and names every permission that would
/// rise or fall, then `apply`.
///
/// An entry of a tree stands for all pairs of its model groups and user groups; the operations on states take such sets
/// and leave out what was not opened. O(pairs).
class QOR_API QorPermissionAssignment {
public:
    using ModelGroups = ISortedSet<long>;
    using UserGroups = ISortedSet<QorUserGroupID>;
    /// True to go on. Also for a host that has answers of its own, or that shows the question without asking it.
    using Ask = std::function<bool(const SV::String& text)>;

    QorPermissionAssignment() noexcept;
    QorPermissionAssignment(const QorPermissionAssignment&) = delete;
    QorPermissionAssignment& operator=(const QorPermissionAssignment&) = delete;
    ~QorPermissionAssignment();

    /// Reads the permissions of the user groups on the model groups and on everything below these; forgets all that was
    /// set and planned before. The code of the first call that fails (NotFound for unknown groups); nothing is open
    /// then. O(model groups, sub-groups of each, entries of the user groups; memory 12 bytes per pair).
    QorErrorCode open(const ModelGroups& modelGroups, const UserGroups& userGroups) noexcept;

    /// The state that all pairs share, as set or else as it is; Undetermined when they differ or there are none.
    [[nodiscard]] QorPermissionState state(const ModelGroups& modelGroups, const UserGroups& userGroups) const noexcept;
    /// Sets a permission on all pairs, which counts as adapting them even where they have it already. Only on model
    /// groups that `open` was given; what lies below follows by the plan. OutOfRange for any value but no access, read
    /// and write, NotFound when something was not opened; nothing is set then.
    QorErrorCode set(const ModelGroups& modelGroups, const UserGroups& userGroups, QorPermissionState state) noexcept;
    /// A click: sets the state that follows on that of the pairs.
    QorErrorCode click(const ModelGroups& modelGroups, const UserGroups& userGroups) noexcept;

    /// Works out what the states that were set come to. Before a sub-group's higher permission is lowered, `ask` is
    /// asked; no leaves the remaining sub-groups of that model group, in ascending order, to that user group as they
    /// are. What was set on a model group itself outweighs what comes from above it. Without `ask` the question is
    /// shown on the top window. OutOfRange, with an internal error, while no mode is chosen; NotFound when nothing is
    /// open.
    QorErrorCode plan(QorSubGroupMode mode, const Ask& ask = {}) noexcept;
    /// In ascending order of model groups, then user groups.
    [[nodiscard]] const std::vector<QorPermissionChange>& changes() const { return _changes; }
    /// In the order in which they were asked.
    [[nodiscard]] const std::vector<QorPermissionQuestion>& questions() const { return _questions; }

    /// Carries the planned changes out in one unit of work; on a host without units what was written is written back
    /// after a failure. The code of the failure; then nothing is changed and the plan stays. After success the new
    /// permissions count as those that are, and nothing is set or planned; `changes` still tells what was done.
    /// NotFound when nothing is planned.
    QorErrorCode apply() noexcept;

private:
    struct Opened;

    void forgetPlan() noexcept;
    void writeBack(std::size_t count) const noexcept;

    std::unique_ptr<Opened> _opened;
    bool _isPlanned = false;
    std::vector<QorPermissionChange> _changes;
    std::vector<QorPermissionQuestion> _questions;
};
