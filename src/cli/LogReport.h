// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <optional>
#include <string>

#include "admin/QorAdminLogRecords.h"
#include "embedded/QorFileArea.h"

namespace qor::cli {

class JsonWriter;

/// "2026-03-01 09:05" as the log writes it; nothing when it is no date with or without a time, or the beginning of one.
[[nodiscard]] std::optional<std::string> logInstant(const std::string& given);

/// One line: date, time, who, what; or that it cannot be deciphered.
[[nodiscard]] std::string recordText(const QorAdminLogRecord& record);
void writeRecord(JsonWriter& json, const QorAdminLogRecord& record);

/// "line 7 of the log was changed".
[[nodiscard]] std::string tamperingText(const QorSealReport& report);
/// "changed", for programs.
[[nodiscard]] const char* tamperingName(QorTampering tampering);

}  // namespace qor::cli
