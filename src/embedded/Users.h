// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "platform/QorUserManager.h"

namespace qor::embedded {

// Who works on the platform. Users come into being by being named; all of them are administrators.
class Users final : public QorUserService {
public:
    explicit Users(std::string_view currentUser);
    ~Users() override;

    void setCurrentUser(std::string_view logonName);
    [[nodiscard]] QorUserID current() const { return _current; }
    // The user of that name, who comes into being by it.
    [[nodiscard]] QorUserID identify(std::string_view logonName);
    [[nodiscard]] std::string currentLogonName() const;

    QorErrorCode currentUser(QorUserID& user) override;
    QorErrorCode fullDisplayName(const QorUserID& user, SV::String& first, SV::String& second,
                                 QorUserLogonNameType& kind, bool shortForm) override;
    bool isAdministrator(const QorUserID& user) override;
    bool isSubAdministrator(const QorUserID& user) override;
    QorErrorCode allUserIDs(ISortedSet<QorUserID>& users) override;

private:
    [[nodiscard]] const std::string* nameOf(const QorUserID& user) const;

    std::vector<std::string> _names;  // user n stands at n - 1
    QorUserID _current;
};

}  // namespace qor::embedded
