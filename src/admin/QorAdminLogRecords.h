// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <functional>
#include <string_view>

#include "platform/QorExport.h"
#include "platform/SvString.h"

/// One line of the administrator log.
struct QorAdminLogRecord {
    unsigned long line = 0;  ///< of the file, from 1
    bool isReadable = true;  ///< false for a line that cannot be deciphered: then nothing but its number is known
    SV::String date;  ///< "2026.03.01", local; empty, like the next three, in a line without the form of a record
    SV::String time;  ///< "09:05:07"
    SV::String user;  ///< who acted, as written: a name of two parts has a ";" in it
    SV::String action;
    SV::String detail;  ///< as written, with all of its columns; the whole line where that has no form
};

/// Which records are wanted; what is empty excludes nothing. Lines that cannot be deciphered or have no form belong to
/// every answer, since nobody can say that they do not.
struct QorAdminLogFilter {
    // "2026.03.01;09:05:07", or as much of it from the left as matters; both ends belong to it.
    SV::String from;
    SV::String to;
    SV::String user;  ///< as written, or the first part of a name of two
    SV::String action;
};

/// Reads the administrator log record by record.
class QOR_API QorAdminLogRecords {
public:
    static constexpr const char* kLogFile = "db:\\qor_admin_log.dat";

    /// Hands on the wanted records in the order of the file, until `take` gives false; the line of column titles is
    /// left out. False when there is no log, or it cannot be read to its end. One pass; memory for one line.
    /// `file`: the log, or one that the log was renamed to.
    static bool read(const QorAdminLogFilter& filter, const std::function<bool(const QorAdminLogRecord&)>& take,
                     const SV::String& file = kLogFile) noexcept;
    /// Hands on every line as QorAdminLogger::ExportLog writes it, with its line feed; else as `read`.
    static bool readText(const std::function<bool(std::string_view line, bool isReadable)>& take,
                         const SV::String& file = kLogFile) noexcept;

    // Lines for spreadsheets, with five columns separated by ";" and a line feed at the end. Unlike in
    // QorAdminLogger::ExportLog, the detail is one column, and a field that a spreadsheet would take for a formula
    // begins with an apostrophe.
    [[nodiscard]] static SV::String csvHeader() noexcept;
    [[nodiscard]] static SV::String csvLine(const QorAdminLogRecord& record) noexcept;
};
