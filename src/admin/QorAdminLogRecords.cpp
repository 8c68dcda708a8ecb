// SPDX-License-Identifier: Apache-2.0
#include "admin/QorAdminLogRecords.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "admin/internalErrors.h"
#include "admin/logLines.h"
#include "admin/messages.h"
#include "platform/QorGuard.h"
#include "platform/QorMessage.h"

using namespace qor::admin;

namespace {

constexpr std::string_view kDateForm = "0000.00.00";
constexpr std::string_view kTimeForm = "00:00:00";

bool hasForm(std::string_view text, std::string_view form) {
    return text.size() == form.size() && std::equal(text.begin(), text.end(), form.begin(), [](char c, char wanted) {
               return wanted == '0' ? c >= '0' && c <= '9' : c == wanted;
           });
}

/// The text up to the next ";", which is taken away with it.
std::string_view nextField(std::string_view& rest) {
    const auto end = rest.find(';');
    const auto field = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return field;
}

/// The texts of all actions in the host's language.
std::vector<SV::String> knownActions() {
    std::vector<SV::String> actions;
    for (auto number = message::userCreated; number <= message::groupLeft; ++number)
        actions.push_back(Qor_Message(number));
    return actions;
}

/// Tells the columns of lines apart. Nothing in a line says where the name of who acted ends, which may have a ";" in
/// it; the action behind it does, unless it was written in another language.
class RecordReader {
public:
    QorAdminLogRecord read(unsigned long line, std::string_view text) const {
        QorAdminLogRecord record;
        record.line = line;
        auto rest = text;
        const auto date = nextField(rest);
        const auto time = nextField(rest);
        if (!hasForm(date, kDateForm) || !hasForm(time, kTimeForm)) {
            record.detail = text;
            return record;
        }
        record.date = date;
        record.time = time;
        const auto nameLength = lengthOfName(rest);
        record.user = rest.substr(0, nameLength);
        rest.remove_prefix(std::min(nameLength + 1, rest.size()));
        record.action = nextField(rest);
        record.detail = rest;
        return record;
    }

private:
    [[nodiscard]] std::size_t lengthOfName(std::string_view text) const {
        const auto first = std::min(text.find(';'), text.size());
        for (auto end = first; end < text.size(); end = std::min(text.find(';', end + 1), text.size())) {
            auto rest = text.substr(end + 1);
            if (std::find(_actions.begin(), _actions.end(), nextField(rest)) != _actions.end()) return end;
        }
        return first;
    }

    std::vector<SV::String> _actions = knownActions();
};

bool isWanted(const QorAdminLogRecord& record, const QorAdminLogFilter& filter) {
    if (record.date.IsEmpty()) return true;
    const std::string instant = record.date.str() + ";" + record.time.str();
    const auto cut = [&](const SV::String& bound) { return std::string_view(instant).substr(0, bound.Len()); };
    if (cut(filter.from) < filter.from.view() || cut(filter.to) > filter.to.view()) return false;
    if (!filter.action.IsEmpty() && !(filter.action == record.action)) return false;
    auto name = record.user.view();
    return filter.user.IsEmpty() || filter.user == name || filter.user == nextField(name);
}

bool readsAsFormula(std::string_view field) {
    return !field.empty() && std::string_view("=+-@\t\r").find(field.front()) != std::string_view::npos;
}

void appendField(std::string& line, std::string_view field) {
    if (!line.empty()) line += ';';
    line += '"';
    if (readsAsFormula(field)) line += '\'';
    for (const char c : field) {
        line += c;
        if (c == '"') line += c;
    }
    line += '"';
}

SV::String csv(std::initializer_list<SV::String> fields) {
    std::string line;
    for (const auto& field : fields) appendField(line, field);
    return line + "\n";
}

}  // namespace

bool QorAdminLogRecords::read(const QorAdminLogFilter& filter,
                              const std::function<bool(const QorAdminLogRecord&)>& take,
                              const SV::String& file) noexcept {
    return Qor_Guarded(kLogSource, false, [&] {
        const RecordReader reader;
        return readLogLines(file, [&](unsigned long line, std::optional<std::string_view> text) {
            QorAdminLogRecord record;
            if (text) {
                record = reader.read(line, *text);
                if (line == 1 && record.date.IsEmpty()) return true;  // the column titles, in whatever language
            } else {
                record.line = line;
                record.isReadable = false;
            }
            return !isWanted(record, filter) || take(record);
        });
    });
}

bool QorAdminLogRecords::readText(const std::function<bool(std::string_view, bool)>& take,
                                  const SV::String& file) noexcept {
    return Qor_Guarded(kLogSource, false, [&] {
        std::string text;
        return readLogLines(file, [&](unsigned long line, std::optional<std::string_view> plain) {
            text = plain ? *plain : Qor_Message(message::unreadableLine, {{"%n", std::to_string(line)}}).view();
            text += '\n';
            return take(text, plain.has_value());
        });
    });
}

SV::String QorAdminLogRecords::csvHeader() noexcept {
    return Qor_Guarded(kLogSource, SV::String(), [] {
        return csv({Qor_Message(message::dateColumn), Qor_Message(message::timeColumn),
                    Qor_Message(message::userColumn), Qor_Message(message::actionColumn),
                    Qor_Message(message::detailColumn)});
    });
}

SV::String QorAdminLogRecords::csvLine(const QorAdminLogRecord& record) noexcept {
    return Qor_Guarded(kLogSource, SV::String(), [&] {
        if (record.isReadable) return csv({record.date, record.time, record.user, record.action, record.detail});
        return csv({"", "", "", "", Qor_Message(message::unreadableLine, {{"%n", std::to_string(record.line)}})});
    });
}
