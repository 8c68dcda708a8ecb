// SPDX-License-Identifier: Apache-2.0
#include "admin/UserLookup.h"

#include "platform/QorUserManager.h"

namespace qor::admin {

namespace {

/// A user manager, selected while this lives.
class Selection {
public:
    explicit Selection(long userManager) : _succeeded(QorUserManager::push(userManager) == QorErrorCode::Ok) {}
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;
    ~Selection() {
        if (_succeeded) (void)QorUserManager::pop();  // nobody could do anything about a failure
    }
    [[nodiscard]] bool succeeded() const { return _succeeded; }

private:
    bool _succeeded;
};

}  // namespace

UserListing usersOfManager(long userManager) {
    UserListing listing;
    const Selection selection(userManager);
    listing.isSelected = selection.succeeded();
    if (listing.isSelected) listing.code = QorUserManager::getAllUserIDs(listing.users);
    return listing;
}

std::optional<long> managerOfSignOnMode(long mode) {
    if (mode == QorSingleSignOnMode::First) return QorUserManagerNumber::FirstSingleSignOn;
    if (mode == QorSingleSignOnMode::Second) return QorUserManagerNumber::SecondSingleSignOn;
    return std::nullopt;
}

FoundUser findUser(const QorUserID& user) {
    const auto ordinary = usersOfManager(QorUserManagerNumber::Ordinary);
    if (!ordinary.isSelected) return {UserHome::Unknown, ordinary.code};
    if (ordinary.users.contains(user)) return {UserHome::Ordinary, QorErrorCode::Ok};

    long mode = -1;
    const auto asked = QorDataSourceDB::Instance().getSingleSignOnMode(mode);
    if (asked != QorErrorCode::Ok) return {UserHome::Unknown, asked};
    const auto further = managerOfSignOnMode(mode);
    if (!further) return {UserHome::Unknown, ordinary.code};

    const auto signedOn = usersOfManager(*further);
    return {signedOn.users.contains(user) ? UserHome::SingleSignOn : UserHome::Unknown, signedOn.code};
}

QorErrorCode eachUser(const std::function<QorErrorCode(const QorUserID&, UserHome)>& visit) {
    const auto ordinary = usersOfManager(QorUserManagerNumber::Ordinary);
    if (ordinary.code != QorErrorCode::Ok) return ordinary.code;
    long mode = -1;
    if (const auto code = QorDataSourceDB::Instance().getSingleSignOnMode(mode); code != QorErrorCode::Ok) return code;
    for (const auto& user : ordinary.users)
        if (const auto code = visit(user, UserHome::Ordinary); code != QorErrorCode::Ok) return code;

    const auto further = managerOfSignOnMode(mode);
    if (!further) return QorErrorCode::Ok;
    const auto signedOn = usersOfManager(*further);
    if (signedOn.code != QorErrorCode::Ok) return signedOn.code;
    for (const auto& user : signedOn.users) {
        if (ordinary.users.contains(user)) continue;
        if (const auto code = visit(user, UserHome::SingleSignOn); code != QorErrorCode::Ok) return code;
    }
    return QorErrorCode::Ok;
}

QorErrorCode userGroupsOf(const QorUserID& user, UserHome home, ISortedSet<QorUserGroupID>& groups) {
    const auto code = home == UserHome::SingleSignOn ? QorDBAdministration::getSysUsergroups(user, groups)
                                                     : QorDBAdministration::getUsergroups(user, groups);
    return code == QorErrorCode::NotInstalled ? QorErrorCode::UserManagerNotSelected : code;
}

}  // namespace qor::admin
