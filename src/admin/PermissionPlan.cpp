// SPDX-License-Identifier: Apache-2.0
#include "admin/PermissionPlan.h"

#include <utility>

#include "admin/messages.h"
#include "platform/QorMessage.h"

namespace qor::admin {

PermissionPlan::PermissionPlan(const PermissionTable& table, const PermissionWishes& wishes,
                               const QorPermissionAssignment::Ask& ask, std::vector<QorPermissionQuestion>& questions)
    : _table(table), _wishes(wishes), _ask(ask), _questions(questions) {
    _planned.reserve(table.slots());
    for (std::size_t slot = 0; slot < table.slots(); ++slot) _planned.push_back(table.permission(table.placeOf(slot)));
}

void PermissionPlan::work(QorSubGroupMode mode) {
    for (const auto& chosen : _table.chosen())
        for (std::size_t userGroup = 0; userGroup < _table.userGroups().size(); ++userGroup) {
            const std::size_t slot = _table.slot({chosen.modelGroup, userGroup});
            const bool isAdapted = _wishes[slot] != QorPermissionState::Undetermined;
            if (isAdapted) _planned[slot] = static_cast<std::int32_t>(_wishes[slot]);
            if (isAdapted || mode == QorSubGroupMode::All) applyToSubGroups(chosen, userGroup);
        }
}

void PermissionPlan::applyToSubGroups(const PermissionTable::Chosen& chosen, std::size_t userGroup) {
    const std::int32_t after = _planned[_table.slot({chosen.modelGroup, userGroup})];
    for (const std::size_t subGroup : chosen.subGroups) {
        const PermissionPlace place{subGroup, userGroup};
        if (isWished(place)) continue;
        if (_table.permission(place) > after && !mayLower(place, after)) return;
        _planned[_table.slot(place)] = after;
    }
}

bool PermissionPlan::mayLower(const PermissionPlace& place, std::int32_t after) {
    QorPermissionQuestion question{change(place, after), {}, false};
    question.text = Qor_Message(message::lowerSubGroup, {{"%g", question.lowering.modelGroupName.view()},
                                                         {"%u", question.lowering.userGroupName.view()}});
    question.goOn = _ask(question.text);
    _questions.push_back(std::move(question));
    return _questions.back().goOn;
}

QorPermissionChange PermissionPlan::change(const PermissionPlace& place, std::int32_t after) const {
    return {_table.modelGroups()[place.modelGroup],
            _table.userGroups()[place.userGroup],
            _table.permission(place),
            after,
            _table.nameOfModelGroup(place.modelGroup),
            _table.nameOfUserGroup(place.userGroup)};
}

std::vector<QorPermissionChange> PermissionPlan::changes() const {
    std::vector<QorPermissionChange> found;
    for (std::size_t slot = 0; slot < _planned.size(); ++slot) {
        const auto place = _table.placeOf(slot);
        if (_planned[slot] != _table.permission(place)) found.push_back(change(place, _planned[slot]));
    }
    return found;
}

}  // namespace qor::admin
