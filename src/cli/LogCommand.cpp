// SPDX-License-Identifier: Apache-2.0
#include "cli/LogCommand.h"

#include <fmt/format.h>

#include <iostream>

#include "admin/QorAdminLogRecords.h"
#include "admin/QorAdminLogger.h"
#include "cli/LogReport.h"
#include "cli/LogSettings.h"
#include "cli/OutputFile.h"
#include "cli/RepoSession.h"
#include "cli/Text.h"
#include "platform/QorFileManager.h"

namespace qor::cli {

namespace {

/// The log, or one that was put aside.
std::string logFile(const std::string& number) {
    return number.empty() ? QorAdminLogRecords::kLogFile : "db:\\qor_admin_log." + number + ".dat";
}

}  // namespace

class LogRun {
public:
    LogRun(const LogOptions& options, RepoSession& session) : _options(options), _session(session) {}

    // ---- Settings ----

    void start() { change(true); }
    void stop() { change(false); }
    void settings() {
        if (_options.names) return change(std::nullopt);
        if (!tell(checkSettings(area()))) return;
        QorAdminLogger::Instance().StartLogging();
        showSettings({});
    }

    // ---- Reading ----

    void show() {
        if (!isJson()) return readRecords([&](const QorAdminLogRecord& record) { say(recordText(record)); });
        JsonWriter& json = _session.beginJson();
        json.key("records").beginList();
        readRecords([&](const QorAdminLogRecord& record) { writeRecord(json, record); });
        json.endList();
    }

    void exportLog() {
        OutputFile target(_options.target);
        std::int64_t lines = 0;
        const auto add = [&](std::string_view line) {
            ++lines;
            target.add(line);
        };
        if (_options.raw) {
            readLog([&](const std::string& file) { return readText(file, add); });
        } else {
            if (!_options.jsonLines) target.add(QorAdminLogRecords::csvHeader());
            readRecords([&](const QorAdminLogRecord& record) {
                add(_options.jsonLines ? jsonLine(record) : QorAdminLogRecords::csvLine(record).str());
            });
        }
        if (_session.exit() >= Exit::WrongUse) return;  // half a log reads like a whole one
        if (const std::string problem = target.commit(); !problem.empty())
            return _session.error(_options.target, problem, Exit::WriteFailed);
        if (isJson())
            _session.beginJson().field("target", std::string_view(_options.target)).field("lines", lines);
        else if (_options.target != "-")
            say(fmt::format("{}: {}", printable(_options.target), counted(static_cast<std::uint64_t>(lines), "line")));
    }

    // ---- Seals ----

    void verify() {
        std::string key = _options.verificationKey;
        if (key == "-") std::getline(std::cin, key);
        const QorSealReport report = area().verify(key, _options.head);
        if (!tell(report.result)) return;
        if (report.tampering != QorTampering::None) _session.endAtLeast(Exit::Findings);
        if (isJson()) return writeReport(report, !key.empty());
        const std::string with =
            fmt::format("checked with the key file{}{}", key.empty() ? "" : ", the verification key",
                        _options.head.empty() ? "" : ", the noted head");
        if (report.lostWrites > 0)
            say(counted(static_cast<std::uint64_t>(report.lostWrites), "line") +
                " could not be written when they came");
        if (report.isSound())
            say(fmt::format("{}: {} sealed, {}; {}\nhead: {}", printable(_options.repository.file),
                            report.entries == 1 ? "1 entry" : fmt::format("{} entries", report.entries),
                            tamperingText(report), with, report.head));
        else
            say(fmt::format("{}: {} ({})", printable(_options.repository.file), tamperingText(report), with));
    }

    void head() {
        std::string head;
        if (!tell(area().readHead(head))) return;
        if (isJson())
            _session.beginJson().field("head", std::string_view(head));
        else
            say(head);
    }

    /// Behind the others that were put aside; the next line begins a new log.
    void rotate() {
        if (!mayAdminister()) return;
        if (!QorFileManager::fileExists(logFile({}))) return error("there is no log to put aside", Exit::BadInput);
        int number = 1;
        while (QorFileManager::fileExists(logFile(std::to_string(number)))) ++number;
        if (!tell(area().rename(logFile({}), logFile(std::to_string(number))))) return;
        if (isJson())
            _session.beginJson().field("number", std::int64_t{number});
        else
            say(fmt::format("the log was put aside as number {}: qor log show --number {}", number, number));
    }

private:
    [[nodiscard]] QorFileArea& area() { return _session.platform().fileArea(); }
    [[nodiscard]] bool isJson() const { return _options.repository.json; }
    void say(const std::string& text) {
        if (!isJson()) _session.console.out(text + "\n");
    }
    void warn(const std::string& text) {
        _session.tell({QorSeverity::Warning, {_options.repository.file, 0, 0}, text});
    }
    void error(std::string text, Exit exit) { _session.error(_options.repository.file, std::move(text), exit); }
    /// False after telling why.
    bool tell(const QorRepositoryResult& result) { return _session.tell(result, _options.repository.file); }

    // ---- Settings ----

    /// Whether the current user may change what is logged; told if not.
    [[nodiscard]] bool mayAdminister() {
        if (_session.platform().isRepositoryReadOnly())
            return tell({QorRepositoryStatus::ReadOnly, Qor_RepositoryStatusText(QorRepositoryStatus::ReadOnly), {}});
        if (isAdministrator()) return true;
        error("only administrators change what is logged", Exit::WrongUse);
        return false;
    }

    void showSettings(const std::string& verificationKey) {
        const QorAdminLogger& logger = QorAdminLogger::Instance();
        if (isJson()) {
            JsonWriter& json = _session.beginJson();
            json.field("logging", logger.HasLogging())
                .field("names", logger.HasAdminName())
                .field("key_file", std::string_view(area().keyFile()));
            if (!verificationKey.empty()) json.field("verification_key", std::string_view(verificationKey));
            return;
        }
        say(fmt::format("logging: {}", logger.HasLogging() ? "on" : "off"));
        say(fmt::format("names of administrators: {}", logger.HasAdminName() ? "yes" : "no"));
        say("key file: " + printable(area().keyFile()));
        if (!verificationKey.empty())
            say("verification key: " + verificationKey +
                "\nKeep it elsewhere; it is not told again. qor log verify uses it against changes by somebody with "
                "the key file.");
    }

    void change(std::optional<bool> logging) {
        if (!mayAdminister() || !tell(checkSettings(area())) || !tell(area().prepare())) return;
        const std::string verificationKey = area().takeVerificationKey();
        if (!saveSettings(logging, _options.names)) tell(area().lastProblem());
        showSettings(verificationKey);
    }

    // ---- Reading ----

    [[nodiscard]] std::optional<QorAdminLogFilter> filter() {
        QorAdminLogFilter filter;
        filter.user = _options.by;
        filter.action = _options.action;
        for (const auto& [given, bound] :
             {std::pair(&_options.from, &filter.from), std::pair(&_options.to, &filter.to)}) {
            const auto instant = logInstant(*given);
            if (!instant) {
                error(quoted(*given) + " is no date or time as in 2026-03-01 09:05", Exit::WrongUse);
                return std::nullopt;
            }
            *bound = SV::String(*instant);
        }
        return filter;
    }

    /// Whether there is a log, and its key. Tells of what is missing; that nothing was logged yet is no error.
    [[nodiscard]] bool canRead() {
        if (!QorFileManager::fileExists(logFile(_options.number))) {
            if (_options.number.empty())
                warn("nothing was logged yet");
            else
                error("there is no log " + quoted(_options.number) + " that was put aside", Exit::WrongUse);
            return false;
        }
        std::string head;
        const QorRepositoryResult result = area().readHead(head);
        return tell(result) || result.status == QorRepositoryStatus::Damaged;
    }

    /// `read` hands on what stands in the file, as far as it can.
    template <class Read>
    void readLog(Read read) {
        if (!canRead()) return;
        if (!read(logFile(_options.number))) error("the log cannot be read to its end", Exit::BadInput);
        if (!_hasGaps) return;
        _session.endAtLeast(Exit::Findings);
        warn("lines cannot be deciphered; qor log verify tells what was done to them");
    }

    template <class Take>
    void readRecords(Take take) {
        const auto wanted = filter();
        if (!wanted) return;
        readLog([&](const std::string& file) {
            return QorAdminLogRecords::read(
                *wanted,
                [&](const QorAdminLogRecord& record) {
                    _hasGaps = _hasGaps || !record.isReadable;
                    take(record);
                    return true;
                },
                file);
        });
    }

    template <class Take>
    [[nodiscard]] bool readText(const std::string& file, Take take) {
        return QorAdminLogRecords::readText(
            [&](std::string_view line, bool isReadable) {
                _hasGaps = _hasGaps || !isReadable;
                take(line);
                return true;
            },
            file);
    }

    [[nodiscard]] static std::string jsonLine(const QorAdminLogRecord& record) {
        std::string line;
        JsonWriter json([&](std::string_view text) { line += text; });
        writeRecord(json, record);
        return line;
    }

    // ---- Seals ----

    void writeReport(const QorSealReport& report, bool hadKey) {
        JsonWriter& json = _session.beginJson();
        json.field("entries", report.entries)
            .field("lost_writes", report.lostWrites)
            .field("with_verification_key", hadKey)
            .field("with_head", !_options.head.empty())
            .field("tampering", std::string_view(tamperingName(report.tampering)));
        if (report.isSound()) {
            json.field("head", std::string_view(report.head));
            return;
        }
        json.field("entry", report.sequence)
            .field("file", std::string_view(report.file))
            .field("line", report.line)
            .field("other", report.other)
            .field("count", report.count);
    }

    const LogOptions& _options;
    RepoSession& _session;
    bool _hasGaps = false;  ///< among the lines that were read
};

std::span<const LogVerb> logVerbs() {
    static constexpr LogVerb kVerbs[] = {
        {"start", "Write changes of users and memberships into the log from now on", true, false, &LogRun::start},
        {"stop", "Write no more", true, false, &LogRun::stop},
        {"settings", "Show or change what is written", true, false, &LogRun::settings},
        {"show", "Show the log", false, true, &LogRun::show},
        {"export", "Write the log into a file", false, true, &LogRun::exportLog},
        {"verify", "Tell whether anybody has tampered with it", false, false, &LogRun::verify},
        {"head", "Tell where it ends, to be noted elsewhere", false, false, &LogRun::head},
        {"rotate", "Put the log aside and begin a new one", true, false, &LogRun::rotate},
    };
    return kVerbs;
}

Exit runLog(const LogOptions& options, Console& console) {
    RepoSession session(options.repository, console);
    if (session.open(options.verb->writes ? QorRepositoryAccess::ReadWrite : QorRepositoryAccess::ReadOnly)) {
        LogRun run(options, session);
        (run.*options.verb->run)();
    }
    return session.end();
}

}  // namespace qor::cli
