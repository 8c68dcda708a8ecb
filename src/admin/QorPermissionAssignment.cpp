// SPDX-License-Identifier: Apache-2.0
#include "admin/QorPermissionAssignment.h"

#include <optional>
#include <utility>

#include "admin/PermissionPlan.h"
#include "admin/PermissionTable.h"
#include "admin/internalErrors.h"
#include "platform/InstalledService.h"
#include "platform/QorCoreModelGroupManager.h"
#include "platform/QorCoreUnitsOfWork.h"
#include "platform/QorGuard.h"
#include "platform/QorWindows.h"
#include "platform/SvWindow.h"

using namespace qor::admin;

namespace {

bool askOnTopWindow(const SV::String& text) {
    return qor::platform::installed(&QorHost::windows).query(SV::Application::GetTopWindow(), text);
}

bool isPermission(QorPermissionState state) {
    return state == QorPermissionState::NoAccess || state == QorPermissionState::Read ||
           state == QorPermissionState::Write;
}

QorErrorCode write(const QorPermissionChange& change, std::int32_t permission) {
    return QorCoreModelGroupManager::SetUserGroupPermission(change.modelGroup, change.userGroup, permission);
}

}  // namespace

QorPermissionState Qor_NextPermissionState(QorPermissionState state) noexcept {
    switch (state) {
        case QorPermissionState::NoAccess:
        case QorPermissionState::Undetermined:
            return QorPermissionState::Read;
        case QorPermissionState::Read:
            return QorPermissionState::Write;
        case QorPermissionState::Write:
            break;
    }
    return QorPermissionState::NoAccess;
}

/// What was opened and what was set since.
struct QorPermissionAssignment::Opened {
    void forgetWishes() { wishes.assign(table.slots(), QorPermissionState::Undetermined); }

    [[nodiscard]] QorPermissionState state(std::size_t slot) const {
        return wishes[slot] != QorPermissionState::Undetermined
                   ? wishes[slot]
                   : static_cast<QorPermissionState>(table.permission(table.placeOf(slot)));
    }

    /// Calls `visit` with the slot of each pair.
    template <class Visit>
    void eachPair(const ModelGroups& modelGroups, const UserGroups& userGroups, Visit visit) const {
        std::vector<std::size_t> columns;
        for (const auto& userGroup : userGroups)
            if (const auto column = table.indexOf(userGroup)) columns.push_back(*column);
        for (const long modelGroup : modelGroups)
            if (const auto row = table.indexOf(modelGroup))
                for (const std::size_t column : columns) visit(table.slot({*row, column}));
    }

    [[nodiscard]] bool canSet(const ModelGroups& modelGroups, const UserGroups& userGroups) const {
        for (const long modelGroup : modelGroups) {
            const auto row = table.indexOf(modelGroup);
            if (!row || !table.isChosen(*row)) return false;
        }
        for (const auto& userGroup : userGroups)
            if (!table.indexOf(userGroup)) return false;
        return true;
    }

    /// Takes changes that were carried out for what the platform has.
    void takeOver(const std::vector<QorPermissionChange>& changes) {
        for (const auto& change : changes)
            table.store(table.slot({*table.indexOf(change.modelGroup), *table.indexOf(change.userGroup)}),
                        change.after);
        forgetWishes();
    }

    PermissionTable table;
    PermissionWishes wishes;
};

QorPermissionAssignment::QorPermissionAssignment() noexcept = default;
QorPermissionAssignment::~QorPermissionAssignment() = default;

QorErrorCode QorPermissionAssignment::open(const ModelGroups& modelGroups, const UserGroups& userGroups) noexcept {
    _opened.reset();
    forgetPlan();
    return Qor_Guarded(kAccessSource, QorErrorCode::Broken, [&] {
        auto opened = std::make_unique<Opened>();
        const auto code = opened->table.read(modelGroups, userGroups);
        if (code != QorErrorCode::Ok) return code;
        opened->forgetWishes();
        _opened = std::move(opened);
        return code;
    });
}

QorPermissionState QorPermissionAssignment::state(const ModelGroups& modelGroups,
                                                  const UserGroups& userGroups) const noexcept {
    return Qor_Guarded(kAccessSource, QorPermissionState::Undetermined, [&] {
        std::optional<QorPermissionState> common;
        if (_opened)
            _opened->eachPair(modelGroups, userGroups, [&](std::size_t slot) {
                const auto state = _opened->state(slot);
                common = common.value_or(state) == state ? state : QorPermissionState::Undetermined;
            });
        return common.value_or(QorPermissionState::Undetermined);
    });
}

QorErrorCode QorPermissionAssignment::set(const ModelGroups& modelGroups, const UserGroups& userGroups,
                                          QorPermissionState state) noexcept {
    if (!isPermission(state)) return QorErrorCode::OutOfRange;
    return Qor_Guarded(kAccessSource, QorErrorCode::Broken, [&] {
        if (!_opened || !_opened->canSet(modelGroups, userGroups)) return QorErrorCode::NotFound;
        forgetPlan();
        _opened->eachPair(modelGroups, userGroups, [&](std::size_t slot) { _opened->wishes[slot] = state; });
        return QorErrorCode::Ok;
    });
}

QorErrorCode QorPermissionAssignment::click(const ModelGroups& modelGroups, const UserGroups& userGroups) noexcept {
    return set(modelGroups, userGroups, Qor_NextPermissionState(state(modelGroups, userGroups)));
}

QorErrorCode QorPermissionAssignment::plan(QorSubGroupMode mode, const Ask& ask) noexcept {
    forgetPlan();
    if (mode != QorSubGroupMode::AdaptedOnly && mode != QorSubGroupMode::All) {
        displayErrorMessage(kAccessSource, 0, "No adaption mode active?");
        return QorErrorCode::OutOfRange;
    }
    const auto code = Qor_Guarded(kAccessSource, QorErrorCode::Broken, [&] {
        if (!_opened) return QorErrorCode::NotFound;
        const Ask onTopWindow = [](const SV::String& text) { return askOnTopWindow(text); };
        PermissionPlan plan(_opened->table, _opened->wishes, ask ? ask : onTopWindow, _questions);
        plan.work(mode);
        _changes = plan.changes();
        _isPlanned = true;
        return QorErrorCode::Ok;
    });
    if (code != QorErrorCode::Ok) forgetPlan();
    return code;
}

QorErrorCode QorPermissionAssignment::apply() noexcept {
    if (!_isPlanned) return QorErrorCode::NotFound;
    const auto code = Qor_Guarded(kAccessSource, QorErrorCode::Broken, [this] {
        QorUnitOfWork unit;
        for (std::size_t done = 0; done < _changes.size(); ++done) {
            const auto written = write(_changes[done], _changes[done].after);
            if (written == QorErrorCode::Ok) continue;
            if (!unit.isOpen()) writeBack(done);
            return written;
        }
        return unit.commit();
    });
    if (code != QorErrorCode::Ok) return code;
    _isPlanned = false;
    _opened->takeOver(_changes);
    return code;
}

void QorPermissionAssignment::writeBack(std::size_t count) const noexcept {
    for (std::size_t place = count; place-- > 0;)
        if (write(_changes[place], _changes[place].before) != QorErrorCode::Ok)
            displayErrorMessage(kAccessSource, 0, "a permission could not be written back after a failed change");
}

void QorPermissionAssignment::forgetPlan() noexcept {
    _isPlanned = false;
    _changes.clear();
    _questions.clear();
}
