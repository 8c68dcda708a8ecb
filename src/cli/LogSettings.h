// SPDX-License-Identifier: Apache-2.0
// The administrator log as other commands need it.
#pragma once
#include <optional>
#include <string>

namespace qor::cli {

class RepoSession;

inline constexpr const char* kLogSettingsFile = "db:\\qor_admin_log.conf";

/// Whether the current user administers users, wholly or in part.
[[nodiscard]] bool isAdministrator();

/// Answers the dialog for the settings and saves them; what is not given stays. False when they could not be saved.
[[nodiscard]] bool saveSettings(std::optional<bool> logging, std::optional<bool> names);

/// Keeps the log while a command changes users. False, after telling, when a log is kept whose key is not here: what
/// the command does would not be written down.
[[nodiscard]] bool keepLog(RepoSession& session);
/// Tells of lines that could not be written meanwhile.
void tellLostLines(RepoSession& session);

}  // namespace qor::cli
