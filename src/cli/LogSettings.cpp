// SPDX-License-Identifier: Apache-2.0
#include "cli/LogSettings.h"

#include "admin/QorAdminLogRecords.h"
#include "admin/QorAdminLogger.h"
#include "cli/Text.h"
#include "platform/QorFileManager.h"
#include "platform/QorHost.h"
#include "platform/QorUserManager.h"
#include "platform/QorWindows.h"

namespace qor::cli {

namespace {

/// Takes the given answers for those of a user.
class AnsweredDialog final : public QorWindows {
public:
    AnsweredDialog(QorWindows& others, bool logging, bool names) : _others(others), _logging(logging), _names(names) {}

    bool checkBoxDialog(SV::Window*, const SV::String&, std::span<QorCheckBox> boxes) override {
        boxes[0].checked = _logging;
        boxes[1].checked = _names;
        return true;
    }
    void internalError(const char* source, long line, const char* text) override {
        _others.internalError(source, line, text);
    }

private:
    QorWindows& _others;
    bool _logging;
    bool _names;
};

}  // namespace

bool isAdministrator() {
    QorUserID user;
    return QorUserManager::allUmansGetCurrentUserID(user) == QorErrorCode::Ok &&
           (QorUserManager::isUserAdmin(user) || QorUserManager::isUserSubAdmin(user));
}

bool saveSettings(std::optional<bool> logging, std::optional<bool> names) {
    QorAdminLogger& logger = QorAdminLogger::Instance();
    logger.StartLogging();
    const bool wantsLog = logging.value_or(logger.HasLogging());
    const bool wantsNames = names.value_or(logger.HasAdminName());
    const auto isAsWanted = [&] { return logger.HasLogging() == wantsLog && logger.HasAdminName() == wantsNames; };
    if (isAsWanted() && QorAdminLogger::StateOfSettings() == QorAdminLogSettings::Readable) return true;
    QorHost host = *Qor_InstalledHost();
    AnsweredDialog dialog(*host.windows, wantsLog, wantsNames);
    host.windows = &dialog;
    {
        const QorHostInstallation installation(host);
        logger.DoSettings();
    }
    logger.StartLogging();  // what was really saved
    return isAsWanted();
}

// The logger takes settings that cannot be read for "off", and whoever can write to the repository file can make them
// so.
QorRepositoryResult checkSettings(QorFileArea& area) {
    const QorAdminLogSettings state = QorAdminLogger::StateOfSettings();
    std::string head;
    QorRepositoryResult result = area.readHead(head);
    const bool hasLog = state != QorAdminLogSettings::None || QorFileManager::fileExists(QorAdminLogRecords::kLogFile);
    if (result.status == QorRepositoryStatus::NoKey && !hasLog) return {};  // nothing was sealed yet
    if (!result.ok() || state == QorAdminLogSettings::Readable) return result;
    // A host may log without having saved settings; that they were never there is what the chain tells.
    if (state == QorAdminLogSettings::None && area.verify({}, {}).isSound()) return {};
    return {QorRepositoryStatus::Damaged, "the log's settings cannot be read; qor log verify tells why", {}};
}

QorRepositoryResult keepLog(QorFileArea& area) {
    QorRepositoryResult result = checkSettings(area);
    if (result.ok())
        QorAdminLogger::Instance().StartLogging();
    else
        result.text += "; the change could not be written into the log";
    return result;
}

std::string lostLines(const QorFileArea& area) {
    if (area.lostWrites() == 0) return {};
    return counted(static_cast<std::uint64_t>(area.lostWrites()), "line") +
           " of the log could not be written: " + area.lastProblem().text;
}

}  // namespace qor::cli
