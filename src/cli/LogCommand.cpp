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

struct LogRun {
    const LogOptions& options;
    RepoSession& session;

    [[nodiscard]] QorFileArea& area() const { return session.platform().fileArea(); }
    void say(const std::string& text) const {
        if (!options.repo.json) session.console.out(text + "\n");
    }
    void error(std::string text, Exit exit) const { session.error(options.repo.file, std::move(text), exit); }
    /// False after telling why.
    bool tell(const QorRepositoryResult& result) const { return session.tell(result, options.repo.file); }

    // ---- Settings ----

    /// Whether the current user may change what is logged; told if not.
    [[nodiscard]] bool mayAdminister() const {
        if (session.platform().isRepositoryReadOnly())
            return tell({QorRepositoryStatus::ReadOnly, Qor_RepositoryStatusText(QorRepositoryStatus::ReadOnly), {}});
        if (isAdministrator()) return true;
        error("only administrators change what is logged", Exit::WrongUse);
        return false;
    }

    void showSettings(const std::string& verificationKey) const {
        const QorAdminLogger& logger = QorAdminLogger::Instance();
        if (options.repo.json) {
            JsonWriter& json = session.beginJson();
            json.field("logging", logger.HasLogging())
                .field("names", logger.HasAdminName())
                .field("keyFile", std::string_view(area().keyFile()));
            if (!verificationKey.empty()) json.field("verificationKey", std::string_view(verificationKey));
            return;
        }
        say(fmt::format("logging: {}", logger.HasLogging() ? "on" : "off"));
        say(fmt::format("names of administrators: {}", logger.HasAdminName() ? "yes" : "no"));
        say("key file: " + printable(area().keyFile()));
        if (!verificationKey.empty())
            say("verification key: " + verificationKey +
                "\nKeep it elsewhere; it is not told again. qor log verify uses it against changes by somebody with "
                "the "
                "key file.");
    }

    void change(std::optional<bool> logging) const {
        if (!mayAdminister() || !tell(area().prepare())) return;
        const std::string verificationKey = area().takeVerificationKey();
        if (!saveSettings(logging, options.names)) tell(area().lastProblem());
        showSettings(verificationKey);
    }
    void start() const { change(true); }
    void stop() const { change(false); }
    void settings() const {
        if (options.names) return change(std::nullopt);
        const bool wereSaved = QorFileManager::fileExists(kLogSettingsFile);
        std::string head;
        if (wereSaved && !tell(area().readHead(head))) return;
        QorAdminLogger::Instance().StartLogging();
        showSettings({});
    }

    // ---- Reading ----

    [[nodiscard]] std::optional<QorAdminLogFilter> filter() const {
        QorAdminLogFilter filter;
        filter.user = options.by;
        filter.action = options.action;
        for (const auto& [given, bound] :
             {std::pair(&options.from, &filter.from), std::pair(&options.to, &filter.to)}) {
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
    [[nodiscard]] bool canRead() const {
        const std::string file = logFile(options.file);
        if (!QorFileManager::fileExists(file)) {
            if (options.file.empty())
                session.tell({QorSeverity::Warning, {options.repo.file, 0, 0}, "nothing was logged yet"});
            else
                error("there is no log " + quoted(options.file) + " that was put aside", Exit::BadInput);
            return false;
        }
        std::string head;
        const QorRepositoryResult result = area().readHead(head);
        if (result.ok()) return true;
        tell(result);
        return result.status == QorRepositoryStatus::Damaged;
    }

    void unreadable() const {
        session.endAtLeast(Exit::Findings);
        _gaps = true;
    }
    mutable bool _gaps = false;

    template <class Take>
    void readRecords(Take take) const {
        const auto wanted = filter();
        if (!wanted || !canRead()) return;
        const bool wasRead = QorAdminLogRecords::read(
            *wanted,
            [&](const QorAdminLogRecord& record) {
                if (!record.isReadable) unreadable();
                take(record);
                return true;
            },
            logFile(options.file));
        if (!wasRead) error("the log cannot be read to its end", Exit::BadInput);
        if (_gaps)
            session.tell({QorSeverity::Warning,
                          {options.repo.file, 0, 0},
                          "lines cannot be deciphered; qor log verify tells what was done to them"});
    }

    void show() const {
        if (!options.repo.json) return readRecords([&](const QorAdminLogRecord& record) { say(recordText(record)); });
        JsonWriter& json = session.beginJson();
        json.key("records").beginList();
        readRecords([&](const QorAdminLogRecord& record) { writeRecord(json, record); });
        json.endList();
    }

    void exportLog() const {
        OutputFile target(options.repo.target);
        std::uint64_t lines = 0;
        if (options.raw) {
            if (!canRead()) return;
            const bool wasRead = QorAdminLogRecords::readText(
                [&](std::string_view line) {
                    ++lines;
                    target.add(line);
                    return true;
                },
                logFile(options.file));
            if (!wasRead) return error("the log cannot be read to its end", Exit::BadInput);
        } else {
            if (!options.jsonLines) target.add(QorAdminLogRecords::csvHeader());
            readRecords([&](const QorAdminLogRecord& record) {
                ++lines;
                if (!options.jsonLines) return target.add(QorAdminLogRecords::csvLine(record));
                JsonWriter json([&](std::string_view text) { target.add(text); });
                writeRecord(json, record);
                target.add("\n");
            });
        }
        if (session.exit() >= Exit::WrongUse) return;  // half a log reads like a whole one
        if (const std::string problem = target.commit(); !problem.empty())
            return session.error(options.repo.target, problem, Exit::WriteFailed);
        if (options.repo.json)
            session.beginJson()
                .field("target", std::string_view(options.repo.target))
                .field("lines", static_cast<std::int64_t>(lines));
        else if (options.repo.target != "-")
            say(fmt::format("{}: {}", printable(options.repo.target), counted(lines, "line")));
    }

    // ---- Seals ----

    void verify() const {
        std::string key = options.verificationKey;
        if (key == "-") std::getline(std::cin, key);
        const QorSealReport report = area().verify(key, options.head);
        if (!tell(report.result)) return;
        if (report.tampering != QorTampering::None) session.endAtLeast(Exit::Findings);
        if (options.repo.json) return writeReport(report, !key.empty());
        const std::string with =
            fmt::format("checked with the key file{}{}", key.empty() ? "" : ", the verification key",
                        options.head.empty() ? "" : ", the noted head");
        if (report.lostWrites > 0)
            say(counted(static_cast<std::uint64_t>(report.lostWrites), "line") +
                " could not be written when they came");
        if (report.isSound())
            say(fmt::format("{}: {} sealed, {}; {}\nhead: {}", printable(options.repo.file),
                            report.entries == 1 ? "1 entry" : fmt::format("{} entries", report.entries),
                            tamperingText(report), with, report.head));
        else
            say(fmt::format("{}: {} ({})", printable(options.repo.file), tamperingText(report), with));
    }

    void writeReport(const QorSealReport& report, bool hadKey) const {
        JsonWriter& json = session.beginJson();
        json.field("entries", report.entries)
            .field("lostWrites", report.lostWrites)
            .field("withVerificationKey", hadKey)
            .field("withHead", !options.head.empty())
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

    void head() const {
        std::string head;
        if (!tell(area().readHead(head))) return;
        if (options.repo.json)
            session.beginJson().field("head", std::string_view(head));
        else
            say(head);
    }

    /// Behind the others that were put aside; the next line begins a new log.
    void rotate() const {
        if (!mayAdminister()) return;
        if (!QorFileManager::fileExists(logFile({}))) return error("nothing was logged yet", Exit::BadInput);
        int number = 1;
        while (QorFileManager::fileExists(logFile(std::to_string(number)))) ++number;
        if (!tell(area().rename(logFile({}), logFile(std::to_string(number))))) return;
        if (options.repo.json)
            session.beginJson().field("number", std::int64_t{number});
        else
            say(fmt::format("the log was put aside as number {}: qor log show --number {}", number, number));
    }
};

struct Verb {
    std::string_view name;
    QorRepositoryAccess access;
    void (LogRun::*run)() const;
};
constexpr Verb kVerbs[] = {
    {"start", QorRepositoryAccess::ReadWrite, &LogRun::start},
    {"stop", QorRepositoryAccess::ReadWrite, &LogRun::stop},
    {"settings", QorRepositoryAccess::ReadWrite, &LogRun::settings},
    {"show", QorRepositoryAccess::ReadOnly, &LogRun::show},
    {"export", QorRepositoryAccess::ReadOnly, &LogRun::exportLog},
    {"verify", QorRepositoryAccess::ReadOnly, &LogRun::verify},
    {"head", QorRepositoryAccess::ReadOnly, &LogRun::head},
    {"rotate", QorRepositoryAccess::ReadWrite, &LogRun::rotate},
};

}  // namespace

Exit runLog(const LogOptions& options, Console& console) {
    RepoSession session(options.repo, console);
    const LogRun run{options, session};
    for (const Verb& verb : kVerbs)
        if (options.repo.verb == verb.name && session.open(verb.access)) (run.*verb.run)();
    return session.end();
}

}  // namespace qor::cli
