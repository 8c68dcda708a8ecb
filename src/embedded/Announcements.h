// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <set>

#include "platform/QorCoreAttributeType.h"
#include "platform/QorIdentifier.h"

namespace qor::embedded {

// Tells the platform's listeners what has changed (docs/events.md). Each is called when the change is complete and
// kept: a listener may ask whatever it likes, change things in turn, or fail.
class Announcements {
public:
    // A model came into being, as the first of its thread or as a further version.
    void modelCreated(QorIdentifier model, bool isFurtherVersion) noexcept;
    void modelRenamed(QorIdentifier model) noexcept;
    void modelMoved(QorIdentifier model) noexcept;
    // `newestLeft` is the newest version that the thread still has, or none.
    void modelDeleted(QorIdentifier model, QorIdentifier newestLeft) noexcept;
    // What the model's things refer to changed in a way that no changed value tells.
    void referencesChanged(QorIdentifier model) noexcept;
    // `row` is the record row that the value belongs to, or none.
    void valueChanged(QorIdentifier model, QorIdentifier object, QorIdentifier attribute, QorIdentifier row,
                      QorCoreAttributeType type) noexcept;
    // What was announced of models did not come to stay: they are as they were before.
    void modelsRestored() noexcept;

    // The values of a user event after the user, or of a user-group event after the group (QorUserEventKind.h).
    void userChanged(long kind, QorIdentifier user, long value = 0, long furtherValue = 0) noexcept;
    void userGroupChanged(long kind, QorIdentifier group, QorIdentifier user = QorNoIdentifier) noexcept;

    // Holds automatic executions until the last hold is released. Listeners may pass over changed values meanwhile, so
    // that those of references are told again afterwards.
    void hold() noexcept;
    // Does nothing without a hold.
    void release() noexcept;

private:
    unsigned _holds = 0;
    std::set<QorIdentifier> _toTellAgain;  // models
};

}  // namespace qor::embedded
