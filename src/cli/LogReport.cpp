// SPDX-License-Identifier: Apache-2.0
#include "cli/LogReport.h"

#include <fmt/format.h>

#include <array>
#include <iterator>

#include "cli/JsonWriter.h"
#include "cli/Text.h"

namespace qor::cli {

namespace {

/// Of a date and time: month, day, hour, minute, second.
struct TwoDigits {
    std::size_t at;
    int least;
    int most;
};
constexpr TwoDigits kFields[] = {{5, 1, 12}, {8, 1, 31}, {11, 0, 23}, {14, 0, 59}, {17, 0, 59}};

}  // namespace

std::optional<std::string> logInstant(const std::string& given) {
    constexpr std::string_view kForm = "0000-00-00 00:00:00";
    if (given.size() > kForm.size()) return std::nullopt;
    std::string instant = given;
    for (std::size_t at = 0; at < given.size(); ++at) {
        const char wanted = kForm[at];
        const char c = given[at];
        const bool fits = wanted == '0'   ? c >= '0' && c <= '9'
                          : wanted == '-' ? c == '-' || c == '.'
                          : wanted == ' ' ? c == ' ' || c == 'T' || c == ';'
                                          : c == wanted;
        if (!fits) return std::nullopt;
        if (wanted == '-') instant[at] = '.';
        if (wanted == ' ') instant[at] = ';';
    }
    for (const TwoDigits& field : kFields) {
        if (instant.size() < field.at + 2) break;
        const int number = (instant[field.at] - '0') * 10 + (instant[field.at + 1] - '0');
        if (number < field.least || number > field.most) return std::nullopt;
    }
    return instant;
}

std::string recordText(const QorAdminLogRecord& record) {
    if (!record.isReadable) return fmt::format("[line {} cannot be deciphered]", record.line);
    if (record.date.IsEmpty()) return printable(record.detail.view());
    return fmt::format("{} {}  {}  {}  {}", record.date.view(), record.time.view(), printable(record.user.view()),
                       printable(record.action.view()), printable(record.detail.view()));
}

void writeRecord(JsonWriter& json, const QorAdminLogRecord& record) {
    json.beginObject(JsonWriter::Layout::Line)
        .field("line", static_cast<std::int64_t>(record.line))
        .field("readable", record.isReadable);
    if (record.isReadable)
        json.field("date", record.date.view())
            .field("time", record.time.view())
            .field("user", record.user.view())
            .field("action", record.action.view())
            .field("detail", record.detail.view());
    json.endObject();
}

namespace {

std::string entries(std::int64_t count) { return fmt::format("{} {}", count, count == 1 ? "entry is" : "entries are"); }

std::string where(const QorSealReport& report) {
    if (report.line > 0 && !report.file.empty())
        return fmt::format("line {} of {} (entry {})", report.line, printable(report.file), report.sequence);
    return fmt::format("entry {}", report.sequence);
}

}  // namespace

std::string tamperingText(const QorSealReport& report) {
    switch (report.tampering) {
        case QorTampering::None:
            return "nothing was changed";
        case QorTampering::Changed:
            return where(report) + " was changed";
        case QorTampering::Removed:
            return fmt::format("{} missing at {}", entries(report.count), where(report));
        case QorTampering::Swapped:
            return fmt::format("{} stands where entry {} should, and the other way round", where(report), report.other);
        case QorTampering::Inserted:
            return report.other == 0 ? where(report) + " was inserted"
                                     : fmt::format("{} was inserted, a copy of entry {}", where(report), report.other);
        case QorTampering::NotSealed:
            return where(report) + " is not sealed";
        case QorTampering::Cut:
            return fmt::format("the end was cut off: {} missing from entry {} on", entries(report.count),
                               report.sequence);
        case QorTampering::EndChanged:
            return fmt::format("the noted end was changed: entries may be missing from entry {} on", report.sequence);
        case QorTampering::Resealed:
            return where(report) + " does not fit the verification key: it was sealed again by somebody with the key";
        case QorTampering::RolledBack:
            return fmt::format(
                "entry {} does not lead to the noted head: an older copy was put in place, or another "
                "history written",
                report.sequence);
        case QorTampering::FileList:
            return fmt::format("the list of files was changed: {}", printable(report.file));
    }
    return {};
}

const char* tamperingName(QorTampering tampering) {
    constexpr const char* kNames[] = {"none", "changed",     "removed",  "swapped",     "inserted", "not_sealed",
                                      "cut",  "end_changed", "resealed", "rolled_back", "file_list"};
    static_assert(std::size(kNames) == static_cast<std::size_t>(QorTampering::FileList) + 1);
    return kNames[static_cast<std::size_t>(tampering)];
}

}  // namespace qor::cli
