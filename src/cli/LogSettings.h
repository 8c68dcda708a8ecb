// SPDX-License-Identifier: Apache-2.0
// The administrator log as other commands need it.
#pragma once
#include <optional>
#include <string>

#include "embedded/QorFileArea.h"

namespace qor::cli {

inline constexpr const char* kLogSettingsFile = "db:\\qor_admin_log.conf";

/// Whether the current user administers users, wholly or in part.
[[nodiscard]] bool isAdministrator();

/// Answers the dialog for the settings and saves them; what is not given stays. False when they could not be saved.
[[nodiscard]] bool saveSettings(std::optional<bool> logging, std::optional<bool> names);

/// Writes what follows into the log, when one is kept. NoKey: one is, and its key is not here, so that what changes
/// would not be written down.
[[nodiscard]] QorRepositoryResult keepLog(QorFileArea& area);
/// "1 line of the log could not be written: the disk is full"; empty when none was lost.
[[nodiscard]] std::string lostLines(const QorFileArea& area);

}  // namespace qor::cli
