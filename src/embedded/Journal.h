// SPDX-License-Identifier: Apache-2.0
// What was done to the repository since the last commit: enough to take it back, and to know what to write behind.
#pragma once
#include <cstdint>
#include <vector>

#include "embedded/QorRepositoryReader.h"
#include "embedded/TextArena.h"
#include "embedded/ThingTable.h"
#include "platform/QorIdentifier.h"

namespace qor::embedded {

enum class StepKind : std::uint8_t {
    Added,
    Removed,
    Renamed,
    Moved,
    EndMoved,
    ValueSet,
    // Of users and user groups (UserDirectory.h).
    UserChanged,
    Joined,
    Left,
    PermissionSet,
    ProfileSet,
    SignOnModeSet,
};

// Whether things of the kind belong to models, not to the meta-model.
[[nodiscard]] constexpr bool isOfModels(QorThingKind kind) {
    return kind >= QorThingKind::ModelThread && kind < QorThingKind::ModelGroup;
}
[[nodiscard]] constexpr bool isOfUsers(QorThingKind kind) {
    return kind == QorThingKind::User || kind == QorThingKind::UserGroup;
}

// One step. What a removal or a change replaces is not given up before the commit: a removed row stays where it is,
// without its identifier, and so do the texts, so that going back needs no memory and cannot fail.
struct Step {
    StepKind kind = StepKind::Added;
    QorThingKind thing = QorThingKind::None;
    bool atSource = false;    // EndMoved: the relation left the object, else it reached it
    bool hadValue = false;    // ValueSet: `text` is the value before; of users: the row was there before
    bool sharesText = false;  // ValueSet: the texts belong to the attribute's enumeration
    QorIdentifier id = QorNoIdentifier;
    QorIdentifier scope = QorNoIdentifier;  // the library, class or model whose content the thing is
    // ValueSet: the attribute; EndMoved: the object before; Moved: the model group before; Joined, Left: the user
    // group; PermissionSet: the model group; ProfileSet: the entry
    QorIdentifier other = QorNoIdentifier;
    std::uint32_t row = 0;       // Removed: where its row stands
    std::uint32_t position = 0;  // of a record row, among its owner's; the permission or sign-on mode before
    TextRef text = 0;            // Renamed: the name before; ValueSet: the value before
};

// Off, it costs a test of a flag. While it is on, no row changes its place.
class Journal {
public:
    [[nodiscard]] bool isOn() const noexcept { return _on; }
    // Things from `next` on are new.
    void start(QorIdentifier next) noexcept {
        _on = true;
        _firstNew = next;
    }
    void stop() noexcept {
        constexpr std::size_t kKept = 4096;
        _on = false;
        _steps.clear();
        if (_steps.capacity() > kKept) _steps = {};
    }

    // Makes `note` free of failure for that many steps.
    void makeRoom(std::size_t steps) {
        if (_on) makeRoomFor(_steps, steps);
    }
    // To be called before the step is taken. Throws std::bad_alloc unless there is room.
    void note(const Step& step) {
        if (!_on) return;
        makeRoomForOne(_steps);
        _steps.push_back(step);
    }

    [[nodiscard]] std::size_t size() const noexcept { return _steps.size(); }
    [[nodiscard]] const std::vector<Step>& steps() const noexcept { return _steps; }
    [[nodiscard]] bool isNew(QorIdentifier id) const noexcept { return id >= _firstNew; }
    [[nodiscard]] Step takeLast() noexcept {
        const Step step = _steps.back();
        _steps.pop_back();
        return step;
    }

private:
    bool _on = false;
    QorIdentifier _firstNew = 0;
    std::vector<Step> _steps;
};

}  // namespace qor::embedded
