// SPDX-License-Identifier: Apache-2.0
// What the administrator log writes down of which event.
#include <array>
#include <cstdio>
#include <limits>
#include <string>

#include "admin/QorAdminLogger.h"
#include "admin/internalErrors.h"
#include "admin/messages.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorGuard.h"
#include "platform/QorMessage.h"
#include "platform/QorOwnedText.h"
#include "platform/QorUserEventKind.h"
#include "platform/QorUserManager.h"
#include "platform/SvDate.h"

using namespace qor::admin;

namespace {

SV::String labelled(std::uint16_t label, std::string_view value) { return Qor_Message(label) + value; }

SV::String identifierText(const QorUserEvent& event) { return std::to_string(event.user()); }
SV::String numberText(const QorUserEvent& event) { return std::to_string(event.value()); }
SV::String yesOrNo(const QorUserEvent& event) { return Qor_Message(event.value() != 0 ? message::yes : message::no); }

SV::String groupName(long group) {
    SV::String name;
    (void)QorUserManager::allUmansGetUserGroupName(QorUserGroupID(group), name);  // the name of an unknown one is empty
    return name;
}
SV::String groupText(const QorUserEvent& event) { return groupName(event.value()); }

SV::String dateText(const QorUserEvent& event) {
    const long number = event.value();
    const SV::Date date(
        number > 0 && number <= std::numeric_limits<std::int32_t>::max() ? static_cast<std::int32_t>(number) : 0);
    if (!date.IsValid()) return Qor_Message(message::unlimited);
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%04d.%02d.%02d", date.GetYear(), date.GetMonth(), date.GetDay());
    return text.data();
}

SV::String libraryText(const QorUserEvent& event) {
    QorOwnedText name;
    const auto code = QorCoreModelingManager::GetGlobal()->getAppLibraryName(event.value(), name.out());
    return code == QorErrorCode::Ok ? SV::String(name.view()) : "#" + std::to_string(event.value());
}

/// The kinds whose detail is the user, a label and a value.
struct PlainKind {
    long kind;
    std::uint16_t action;
    std::uint16_t label;
    SV::String (*value)(const QorUserEvent&);
};
constexpr PlainKind kPlainKinds[] = {
    {QorUserEventKind::Created, message::userCreated, message::identifierLabel, identifierText},
    {QorUserEventKind::Deleted, message::userDeleted, message::identifierLabel, identifierText},
    {QorUserEventKind::PasswordSet, message::passwordSet, message::mustChangeLabel, yesOrNo},
    {QorUserEventKind::Locked, message::userLocked, message::lockedLabel, yesOrNo},
    {QorUserEventKind::LibraryAssigned, message::libraryAssigned, message::libraryLabel, libraryText},
    {QorUserEventKind::ValiditySet, message::validitySet, message::validUntilLabel, dateText},
    {QorUserEventKind::SystemGroupJoined, message::systemGroupJoined, message::groupLabel, groupText},
    {QorUserEventKind::SystemGroupLeft, message::systemGroupLeft, message::groupLabel, groupText},
    {QorUserEventKind::SignOnSet, message::signOnSet, message::signOnLabel, yesOrNo},
    {QorUserEventKind::ManagerJoined, message::managerJoined, message::managerLabel, numberText},
    {QorUserEventKind::ManagerLeft, message::managerLeft, message::managerLabel, numberText},
};

struct Right {
    long right;
    std::uint16_t granted;
    std::uint16_t withdrawn;
};
constexpr Right kRights[] = {
    {QorUserRight::Administrator, message::administratorGranted, message::administratorWithdrawn},
    {QorUserRight::SubAdministrator, message::subAdministratorGranted, message::subAdministratorWithdrawn},
};

SV::String rightText(const QorUserEvent& event) {
    const bool isWithdrawn = event.furtherValue() == QorUserRight::Withdrawn;
    for (const auto& it : kRights)
        if (it.right == event.value()) return Qor_Message(isWithdrawn ? it.withdrawn : it.granted);
    return labelled(isWithdrawn ? message::otherWithdrawnLabel : message::otherGrantedLabel, numberText(event).view());
}

SV::String remarkOf(const QorUserID& user) {
    SV::String remark;
    (void)QorUserManager::getUserProfile(user, QorUserProfileEntry::Remark, remark);  // none when it cannot be read
    return remark;
}

}  // namespace

SV::String QorAdminLogger::_GetUserName(const QorUserID& user) noexcept {
    return Qor_Guarded(kLogSource, SV::String(), [&] {
        SV::String first;
        SV::String second;
        auto kind = QorUserLogonNameType::Plain;
        (void)QorUserManager::allUmansGetUserFullDisplayNameOfUserID(user, first, second, kind, false);
        return Qor_JoinDisplayName(first, second, kind);
    });
}

void QorAdminLogger::_UserEventHandler(const QorUserEvent& event) noexcept {
    if (_logging) Qor_Guarded(kLogSource, [&] { handleUserEvent(event); });
}

void QorAdminLogger::handleUserEvent(const QorUserEvent& event) {
    const QorUserID user(event.user());
    switch (event.kind()) {
        case QorUserEventKind::ProfileChanging:
            _remembered = remarkOf(user);
            return;
        case QorUserEventKind::Renaming:
            _remembered = _GetUserName(user);
            return;
        case QorUserEventKind::ProfileChanged:
            return logRemarkChange(event);
        case QorUserEventKind::Renamed:
            (void)_Log(Qor_Message(message::userRenamed), labelled(message::beforeLabel, _remembered) + ";" +
                                                              labelled(message::afterLabel, _GetUserName(user)));
            return;
        case QorUserEventKind::RightChanged:
            (void)_Log(Qor_Message(message::rightChanged),
                       labelled(message::userLabel, _GetUserName(user)) + ";" + rightText(event));
            return;
        case QorUserEventKind::LibraryAssigned:
            if (event.value() <= 0) return;  // no library was given
            break;
        default:
            break;
    }
    for (const auto& it : kPlainKinds)
        if (it.kind == event.kind())
            (void)_Log(Qor_Message(it.action),
                       labelled(message::userLabel, _GetUserName(user)) + ";" + labelled(it.label, it.value(event)));
}

void QorAdminLogger::logRemarkChange(const QorUserEvent& event) {
    const QorUserID user(event.user());
    SV::String before = _remembered;
    SV::String after = remarkOf(user);
    if (before == after) return;
    _HandleMultilineText(before);
    _HandleMultilineText(after);
    SV::String detail = labelled(message::userLabel, _GetUserName(user));
    // A quoted field begins with its quote, so the labels are fields of their own.
    for (const auto& field : {Qor_Message(message::remarkBefore), before, Qor_Message(message::remarkAfter), after}) {
        detail += ";";
        detail += field;
    }
    (void)_Log(Qor_Message(message::remarkChanged), detail);
}

void QorAdminLogger::_UserGroupEventHandler(const QorUserGroupEvent& event) noexcept {
    if (!_logging) return;
    Qor_Guarded(kLogSource, [&] {
        const bool isJoining = event.kind() == QorUserGroupEventKind::Joined;
        if (!isJoining && event.kind() != QorUserGroupEventKind::Left) return;
        (void)_Log(Qor_Message(isJoining ? message::groupJoined : message::groupLeft),
                   labelled(message::userLabel, _GetUserName(QorUserID(event.user()))) + ";" +
                       labelled(message::groupLabel, groupName(event.userGroup())));
    });
}
