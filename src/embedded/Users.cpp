// SPDX-License-Identifier: Apache-2.0
#include "embedded/Users.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>

#include "platform/QorGuard.h"

namespace qor::embedded {

namespace {

// The operating system's user; by number when it has no name for it.
std::string systemUser() {
    const passwd* entry = ::getpwuid(::getuid());
    if (entry != nullptr && entry->pw_name != nullptr && *entry->pw_name != '\0') return entry->pw_name;
    return "user" + std::to_string(::getuid());
}

}  // namespace

Users::Users(std::string_view currentUser) {
    setCurrentUser(currentUser.empty() ? std::string_view(systemUser()) : currentUser);
}

Users::~Users() = default;

void Users::setCurrentUser(std::string_view logonName) { _current = identify(logonName); }

QorUserID Users::identify(std::string_view logonName) {
    auto place = std::find(_names.begin(), _names.end(), logonName);
    if (place == _names.end()) place = _names.insert(_names.end(), std::string(logonName));
    return QorUserID(place - _names.begin() + 1);
}

std::string Users::currentLogonName() const { return *nameOf(_current); }

const std::string* Users::nameOf(const QorUserID& user) const {
    const long number = user.value();
    return number >= 1 && number <= static_cast<long>(_names.size()) ? &_names[static_cast<std::size_t>(number - 1)]
                                                                     : nullptr;
}

QorErrorCode Users::currentUser(QorUserID& user) {
    user = _current;
    return QorErrorCode::Ok;
}

QorErrorCode Users::fullDisplayName(const QorUserID& user, SV::String& first, SV::String& second,
                                    QorUserLogonNameType& kind, bool) {
    first.Clear();
    second.Clear();
    kind = QorUserLogonNameType::Plain;
    return Qor_Guarded("users", QorErrorCode::Broken, [&] {
        const std::string* name = nameOf(user);
        if (name == nullptr) return QorErrorCode::NotFound;
        first = SV::String(*name);
        return QorErrorCode::Ok;
    });
}

bool Users::isAdministrator(const QorUserID& user) { return nameOf(user) != nullptr; }

bool Users::isSubAdministrator(const QorUserID&) { return false; }

QorErrorCode Users::allUserIDs(ISortedSet<QorUserID>& users) {
    users.removeAll();
    return Qor_Guarded("users", QorErrorCode::Broken, [&] {
        users.reserve(_names.size());
        for (std::size_t number = 1; number <= _names.size(); ++number) users.add(QorUserID(static_cast<long>(number)));
        return QorErrorCode::Ok;
    });
}

}  // namespace qor::embedded
