// SPDX-License-Identifier: Apache-2.0
// Users and groups: the steps of their changes, taking them back, giving up what they replaced.
#include <utility>

#include "embedded/UserDirectory.h"

namespace qor::embedded {

Step UserDirectory::step(StepKind kind, QorThingKind thing, QorIdentifier id) const {
    Step step;
    step.kind = kind;
    step.thing = thing;
    step.id = id;
    step.scope = kScope;
    step.hadValue = kind != StepKind::Added;
    return step;
}

// To be called between making room and noting the step.
void UserDirectory::keepBefore(Before before) {
    if (_store.journal.isOn()) _before.push_back(std::move(before));
}

// Lists have kept their room, so that nothing here can fail.
void UserDirectory::takeBack(const Step& step) noexcept {
    switch (step.kind) {
        case StepKind::Added:
            unindex(step.id);
            if (step.thing == QorThingKind::User)
                _users.pop_back();
            else
                _groups.pop_back();
            return _store.things.remove(step.id);
        case StepKind::Removed:
            if (step.thing == QorThingKind::User)
                _users[step.row].id = step.id;
            else
                _groups[step.row].id = step.id;
            _store.things.place(step.id, step.thing, step.row);
            return index(step.id);
        case StepKind::UserChanged:
            unindex(step.id);
            std::swap(editUser(step.id).fields, _before.back().fields);
            _before.pop_back();
            return index(step.id);
        case StepKind::Renamed:
            unindex(step.id);
            std::swap(editGroup(step.id).name, _before.back().text);
            _before.pop_back();
            return index(step.id);
        case StepKind::Joined:
            return eraseSorted(*groupsOfMember(step.id), step.other);
        case StepKind::Left:
            return insertSorted(*groupsOfMember(step.id), step.other);
        case StepKind::PermissionSet:
            return storePermission(step.id, step.other, static_cast<std::int32_t>(step.position));
        case StepKind::ProfileSet:
            swapProfileEntry(step.id, step.other, _before.back().text);
            return _before.pop_back();
        case StepKind::SignOnModeSet:
            _signOnMode = static_cast<std::int32_t>(step.position);
            return;
        default:
            return;
    }
}

void UserDirectory::bury(bool didGo) noexcept {
    _before.clear();
    if (didGo) sweep();
}

void UserDirectory::sweep() noexcept {
    closeGaps(_store.things, _users);
    closeGaps(_store.things, _groups);
}

}  // namespace qor::embedded
