// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <array>
#include <cstddef>
#include <initializer_list>

#include "platform/QorEventType.h"
#include "platform/QorExport.h"

/// Something that happened on the platform. Its own values stand in numbered fields, the first one in field 8 (the
/// numbers below belong to the platform's frame); typed events give the fields names.
class QOR_API QorEvent {
public:
    static constexpr int kFirstField = 8;
    static constexpr std::size_t kMaxFields = 8;

    /// Values beyond kMaxFields are left out.
    explicit QorEvent(QorEventType type, std::initializer_list<long> values = {});
    QorEvent(const QorEvent&) = default;
    QorEvent& operator=(const QorEvent&) = default;
    virtual ~QorEvent();

    [[nodiscard]] QorEventType type() const { return _type; }
    /// The value in a field; 0 in a field that the event does not fill.
    [[nodiscard]] long field(int number) const;

private:
    QorEventType _type;
    std::array<long, kMaxFields> _values{};
};

/// LibraryLoaded and LibraryDiscarded name the application library (second is -1), LibraryLoadedCardinality the two
/// attached libraries, LibraryLoadedSimMapping the application library.
class QOR_API QorLibraryEvent final : public QorEvent {
public:
    explicit QorLibraryEvent(QorEventType type, long first = -1, long second = -1);
    ~QorLibraryEvent() override;
    [[nodiscard]] long first() const { return field(kFirst); }
    [[nodiscard]] long second() const { return field(kSecond); }

private:
    enum : int { kFirst = kFirstField, kSecond };
};

/// ModelCreated, ModelRenamed, ModelMoved, ModelDeleted, ModelReferencesChanged, ModelVersionsChanged.
class QOR_API QorModelEvent final : public QorEvent {
public:
    QorModelEvent(QorEventType type, long model);
    ~QorModelEvent() override;
    [[nodiscard]] long model() const { return field(kModel); }

private:
    enum : int { kModel = kFirstField };
};

/// AutomaticUpdatesSwitched.
class QOR_API QorSwitchEvent final : public QorEvent {
public:
    QorSwitchEvent(QorEventType type, long sender, bool on);
    ~QorSwitchEvent() override;
    [[nodiscard]] bool isOn() const { return field(kOn) != 0; }

private:
    enum : int { kSender = kFirstField, kOn };
};

/// AttributeValueChanged: sender, model, object, attribute, row (-1 when not in a record), attribute type code.
class QOR_API QorAttributeEvent final : public QorEvent {
public:
    QorAttributeEvent(QorEventType type, long sender, long model, long object, long attribute, long row,
                      long attributeType);
    ~QorAttributeEvent() override;
    [[nodiscard]] long model() const { return field(kModel); }
    [[nodiscard]] long object() const { return field(kObject); }
    [[nodiscard]] long attribute() const { return field(kAttribute); }
    [[nodiscard]] long row() const { return field(kRow); }
    [[nodiscard]] long attributeType() const { return field(kAttributeType); }

private:
    enum : int { kSender = kFirstField, kModel, kObject, kAttribute, kRow, kAttributeType };
};

/// UserChanged: kind of the change, user, up to two further values.
class QOR_API QorUserEvent final : public QorEvent {
public:
    QorUserEvent(long kind, long user, long value = 0, long furtherValue = 0);
    ~QorUserEvent() override;
    [[nodiscard]] long kind() const { return field(kKind); }
    [[nodiscard]] long user() const { return field(kUser); }
    [[nodiscard]] long value() const { return field(kValue); }
    [[nodiscard]] long furtherValue() const { return field(kFurtherValue); }

private:
    enum : int { kKind = kFirstField, kUser, kValue, kFurtherValue };
};

/// UserGroupChanged: kind of the change, user group, user.
class QOR_API QorUserGroupEvent final : public QorEvent {
public:
    QorUserGroupEvent(long kind, long userGroup, long user);
    ~QorUserGroupEvent() override;
    [[nodiscard]] long kind() const { return field(kKind); }
    [[nodiscard]] long userGroup() const { return field(kUserGroup); }
    [[nodiscard]] long user() const { return field(kUser); }

private:
    enum : int { kKind = kFirstField, kUserGroup, kUser };
};
