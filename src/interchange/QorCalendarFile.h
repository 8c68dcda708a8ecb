// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "interchange/QorImport.h"
#include "platform/QorExport.h"
#include "simcal/QorCalendar.h"

/// What the text form of a calendar leaves open.
struct QorCalendarSettings {
    std::optional<std::int64_t> offset;  ///< seconds; 0 without
    std::optional<bool> cyclic;          ///< no without
    std::optional<int> days;             ///< without: as many as the day list holds
};

/// A calendar as a text file: comment lines ("#"), setting lines in any order, then the text form up to the end.
///
///     # The workshop
///     cyclic: yes
///     offset: 0
///     days: 7
///     B@Workday@A@28800-43200@T@46800-61200@T@Weekend@B@@@$AAAAABB
///
/// The text form may hold line feeds, in names; one at the very end is the file's and not the calendar's.
class QOR_API QorCalendarFile {
public:
    /// Reads a file ("-" is standard input). `overriding` goes before what the file says. Null, with at least one error
    /// at its line and column in `diagnostics`, when the file cannot be read or is not valid, or the calendar has no
    /// day list. The texts of distributions need a host that offers message texts. Throws when memory runs out.
    static std::unique_ptr<QorCalendar> read(const std::string& path, const QorCalendarSettings& overriding,
                                             std::vector<QorDiagnostic>& diagnostics);
    /// The same for a content at hand, named `name` in diagnostics.
    static std::unique_ptr<QorCalendar> readText(const std::string& name, std::string_view content,
                                                 const QorCalendarSettings& overriding,
                                                 std::vector<QorDiagnostic>& diagnostics);
    /// The file's content for a calendar; what `getCalendarAsString` refuses gives its code.
    static QorCalendarErrorCode write(const QorCalendar& calendar, std::string& content);

    /// The meaning of a result code, as a clause: "a new interval overlaps the interval before it".
    static std::string_view meaningOf(QorCalendarErrorCode code) noexcept;
};
