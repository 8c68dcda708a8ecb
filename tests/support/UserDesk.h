// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/QorEmbeddedPlatform.h"
#include "platform/QorCoreModelGroupManager.h"
#include "platform/QorCoreUnitsOfWork.h"
#include "platform/QorUserManager.h"
#include "platform/QorWindows.h"
#include "support/FailingRepository.h"

/// A host with users in several user managers, nested user groups, a tree of model groups and permissions between them,
/// in memory and installed. Texts are those of the embedded platform. Every call is recorded and can be made to fail.
class UserDesk {
public:
    static constexpr long kLibrary = 500;  ///< the one that users are allowed unless said otherwise

    UserDesk();
    UserDesk(const UserDesk&) = delete;
    UserDesk& operator=(const UserDesk&) = delete;
    ~UserDesk();

    CallRecord record;

    QorUserID user(std::string_view name, long userManager = QorUserManagerNumber::Ordinary);
    void allow(QorUserID user, long library);
    void current(QorUserID user);
    void administrator(QorUserID user, bool isSubAdministrator = false);
    void rename(QorUserID user, std::string_view first, std::string_view second,
                QorUserLogonNameType kind = QorUserLogonNameType::TwoPart);
    void profile(QorUserID user, long entry, std::string_view value);
    void signOnMode(long mode);

    QorUserGroupID group(std::string_view name);
    void join(QorUserID user, QorUserGroupID group);
    void joinSystem(QorUserID user, QorUserGroupID group);
    /// Who is in `inner` is in `outer` too; circles are allowed.
    void nest(QorUserGroupID outer, QorUserGroupID inner);

    long modelGroup(std::string_view name, long parent = 0, long library = kLibrary);
    /// Makes `inner` a sub-group of `outer` as well, as only damaged data has it.
    void nestModelGroup(long outer, long inner);
    void permit(QorUserGroupID group, long modelGroup, std::int32_t permission);
    [[nodiscard]] std::int32_t permission(QorUserGroupID group, long modelGroup) const;
    /// An entry as it comes, beside those that `permit` makes.
    void rawEntry(QorUserGroupID group, long modelGroup, const char* name, long library, std::int32_t permission);

    /// User managers that are selected now.
    [[nodiscard]] std::size_t selected() const;

    /// Whether the host has units of work; it has by default.
    void offerUnitsOfWork(bool offered);
    [[nodiscard]] bool isUnitOpen() const;

    /// Answers to the coming questions, in order; behind the last one every answer is no.
    void answer(std::vector<bool> answers);
    [[nodiscard]] const std::vector<std::string>& questions() const;
    [[nodiscard]] const std::vector<std::string>& internalErrors() const;

    /// To install further services on top of these.
    [[nodiscard]] const QorHost& host() const;

private:
    struct Users;
    struct ModelGroups;
    struct Units;
    struct Repository;
    struct Windows;
    struct State;

    std::unique_ptr<State> _state;
};
