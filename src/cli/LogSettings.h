// SPDX-License-Identifier: Apache-2.0
// The administrator log as other commands need it.
#pragma once
#include <optional>
#include <string>

#include "embedded/QorFileArea.h"

namespace qor::cli {

/// Whether the current user administers users, wholly or in part.
[[nodiscard]] bool isAdministrator();

/// Answers the dialog for the settings and saves them; what is not given stays. False when they could not be saved.
[[nodiscard]] bool saveSettings(std::optional<bool> logging, std::optional<bool> names);

/// Whether the settings are what was saved. NoKey: the log's key is not here. Damaged: the settings cannot be read, or
/// are gone although they were saved.
[[nodiscard]] QorRepositoryResult checkSettings(QorFileArea& area);
/// Writes what follows into the log, when one is kept. Not Ok: nobody knows whether one is, or it cannot be written, so
/// that what changes would not be written down.
[[nodiscard]] QorRepositoryResult keepLog(QorFileArea& area);
/// "1 line of the log could not be written: the disk is full"; empty when none was lost.
[[nodiscard]] std::string lostLines(const QorFileArea& area);

}  // namespace qor::cli
