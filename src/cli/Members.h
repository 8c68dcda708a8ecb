// SPDX-License-Identifier: Apache-2.0
// What users and user groups have in common to commands: both have a name, and are in user groups.
#pragma once
#include <string>
#include <vector>

#include "cli/AdminSession.h"
#include "cli/JsonWriter.h"

namespace qor::cli {

struct MemberKind {
    const char* noun;     ///< "user"
    const char* isIn;     ///< "is in", of a user group "lies in"
    const char* isNotIn;  ///< "is not in"
    QorIdentifier (AdminSession::*find)(const std::string& name);
    QorBuildResult (QorUserAdministration::*rename)(QorIdentifier member, std::string_view name);
    /// What is to be said of being in such a group; null: nothing.
    std::string (*remark)(AdminSession& session, QorIdentifier member, bool isSystemGroup);

    /// "user \"ada\"".
    [[nodiscard]] std::string text(const std::string& name) const;
};

/// Gives the subject the name that the word is.
bool renameMember(AdminSession& session, const MemberKind& kind);
/// Puts the subject into the named groups, or takes it out of them.
bool changeMembership(AdminSession& session, const MemberKind& kind, bool joins);

/// "\"Staff\", \"Bosses\"".
[[nodiscard]] std::string namesText(const AdminSession& session, const std::vector<QorIdentifier>& ids);
void writeNames(const AdminSession& session, JsonWriter& json, const char* key, const std::vector<QorIdentifier>& ids);

}  // namespace qor::cli
