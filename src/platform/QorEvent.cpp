// SPDX-License-Identifier: Apache-2.0
#include "platform/QorEvent.h"

#include <algorithm>

QorEvent::QorEvent(QorEventType type, std::initializer_list<long> values) : _type(type) {
    std::copy_n(values.begin(), std::min(values.size(), kMaxFields), _values.begin());
}

QorEvent::~QorEvent() = default;

long QorEvent::field(int number) const {
    const auto index = static_cast<std::size_t>(number - kFirstField);
    return number >= kFirstField && index < kMaxFields ? _values[index] : 0;
}

QorLibraryEvent::QorLibraryEvent(QorEventType type, long first, long second) : QorEvent(type, {first, second}) {}
QorLibraryEvent::~QorLibraryEvent() = default;

QorModelEvent::QorModelEvent(QorEventType type, long model) : QorEvent(type, {model}) {}
QorModelEvent::~QorModelEvent() = default;

QorSwitchEvent::QorSwitchEvent(QorEventType type, long sender, bool on) : QorEvent(type, {sender, on ? 1 : 0}) {}
QorSwitchEvent::~QorSwitchEvent() = default;

QorAttributeEvent::QorAttributeEvent(QorEventType type, long sender, long model, long object, long attribute, long row,
                                     long attributeType)
    : QorEvent(type, {sender, model, object, attribute, row, attributeType}) {}
QorAttributeEvent::~QorAttributeEvent() = default;

QorUserEvent::QorUserEvent(long kind, long user, long value, long furtherValue)
    : QorEvent(QorEventType::UserChanged, {kind, user, value, furtherValue}) {}
QorUserEvent::~QorUserEvent() = default;

QorUserGroupEvent::QorUserGroupEvent(long kind, long userGroup, long user)
    : QorEvent(QorEventType::UserGroupChanged, {kind, userGroup, user}) {}
QorUserGroupEvent::~QorUserGroupEvent() = default;
