// SPDX-License-Identifier: Apache-2.0
#include "embedded/Announcements.h"

#include <new>
#include <utility>

#include "platform/QorEventListener.h"

namespace qor::embedded {

namespace {

constexpr long kSender = 0;  // the platform itself

}  // namespace

void Announcements::modelCreated(QorIdentifier model, bool isFurtherVersion) noexcept {
    Qor_RaiseEvent(QorModelEvent(QorEventType::ModelCreated, model));
    if (isFurtherVersion) Qor_RaiseEvent(QorModelEvent(QorEventType::ModelVersionsChanged, model));
}

void Announcements::modelRenamed(QorIdentifier model) noexcept {
    Qor_RaiseEvent(QorModelEvent(QorEventType::ModelRenamed, model));
}

void Announcements::modelMoved(QorIdentifier model) noexcept {
    Qor_RaiseEvent(QorModelEvent(QorEventType::ModelMoved, model));
}

void Announcements::modelDeleted(QorIdentifier model, QorIdentifier newestLeft) noexcept {
    Qor_RaiseEvent(QorModelEvent(QorEventType::ModelDeleted, model));
    if (newestLeft != QorNoIdentifier) Qor_RaiseEvent(QorModelEvent(QorEventType::ModelVersionsChanged, newestLeft));
}

void Announcements::referencesChanged(QorIdentifier model) noexcept {
    Qor_RaiseEvent(QorModelEvent(QorEventType::ModelReferencesChanged, model));
}

void Announcements::valueChanged(QorIdentifier model, QorIdentifier object, QorIdentifier attribute, QorIdentifier row,
                                 QorCoreAttributeType type) noexcept {
    Qor_RaiseEvent(QorAttributeEvent(QorEventType::AttributeValueChanged, kSender, model, object, attribute, row,
                                     static_cast<long>(type)));
    if (_holds == 0 || type != QorCoreAttributeType::InterReference) return;
    try {
        _toTellAgain.insert(model);
    } catch (const std::bad_alloc&) {
        referencesChanged(model);  // at once, since it cannot be kept for later
    }
}

void Announcements::modelsRestored() noexcept {
    Qor_RaiseEvent(QorModelEvent(QorEventType::ModelVersionsChanged, QorNoIdentifier));
}

void Announcements::userChanged(long kind, QorIdentifier user, long value, long furtherValue) noexcept {
    Qor_RaiseEvent(QorUserEvent(kind, user, value, furtherValue));
}

void Announcements::userGroupChanged(long kind, QorIdentifier group, QorIdentifier user) noexcept {
    Qor_RaiseEvent(QorUserGroupEvent(kind, group, user));
}

void Announcements::hold() noexcept {
    if (_holds++ == 0) Qor_RaiseEvent(QorSwitchEvent(QorEventType::AutomaticUpdatesSwitched, kSender, false));
}

void Announcements::release() noexcept {
    if (_holds == 0 || --_holds > 0) return;
    const std::set<QorIdentifier> models = std::exchange(_toTellAgain, {});
    Qor_RaiseEvent(QorSwitchEvent(QorEventType::AutomaticUpdatesSwitched, kSender, true));
    for (const QorIdentifier model : models) referencesChanged(model);
}

}  // namespace qor::embedded
