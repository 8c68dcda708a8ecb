// SPDX-License-Identifier: Apache-2.0
#include "admin/QorAdminLogger.h"

#include <array>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>

#include "admin/QorAdminLogRecords.h"
#include "admin/QorAdminLoggerSettingsDlg.h"
#include "admin/internalErrors.h"
#include "admin/logFiles.h"
#include "admin/messages.h"
#include "platform/QorGuard.h"
#include "platform/QorKexParser.h"
#include "platform/QorMessage.h"
#include "platform/QorTimeFunctions.h"
#include "platform/QorUserManager.h"

using namespace qor::admin;

namespace {

constexpr const char* kLogFile = QorAdminLogRecords::kLogFile;
constexpr const char* kSettingsFile = "db:\\qor_admin_log.conf";
constexpr QorEventPriority kPriority = 400;

/// "2026.11.21;09:05:00", the first two fields of a record.
SV::String localDateAndTime() {
    SV::Date date;
    SV::Time time;
    QorTimeFunctions::getLocalDateAndTime(date, time);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d.%02d.%02d;%02d:%02d:%02d", date.GetYear(), date.GetMonth(),
                  date.GetDay(), time.GetHours(), time.GetMinutes(), time.GetSeconds());
    return text.data();
}

/// What a settings file says; what it does not say stays as it is.
struct Settings {
    std::optional<bool> logging;
    std::optional<bool> adminName;
};

/// Nothing when there are none, or none that can be read.
std::optional<Settings> readSettings() {
    if (!QorFileManager::fileExists(kSettingsFile)) return std::nullopt;
    std::string enciphered;
    if (!readChunks(kSettingsFile, [&](std::string_view chunk) {
            enciphered += chunk;
            return true;
        }))
        return std::nullopt;
    QorOwnedText plain;
    if (!decipher(SV::String(std::move(enciphered)), plain)) return std::nullopt;
    QorKexParser parser(SV::String(plain.view()), "Admin Logsettings");
    if (parser.Parse() != 0 || parser.GetElemCount() == 0) return std::nullopt;
    Settings settings;
    for (unsigned long index = 0; parser.SetCurElemIndex(index); ++index) {
        if (parser.GetCurElemNameView() != "LOGSETTINGS") continue;
        if (parser.IsContained("log")) settings.logging = parser.GetIntValue("log") == 1;
        if (parser.IsContained("adminname")) settings.adminName = parser.GetIntValue("adminname") != 0;
    }
    return settings;
}

}  // namespace

QorAdminLogger& QorAdminLogger::Instance() noexcept {
    static QorAdminLogger instance;
    return instance;
}

QorAdminLogger::QorAdminLogger() noexcept = default;
QorAdminLogger::~QorAdminLogger() = default;

void QorAdminLogger::StartLogging() noexcept {
    _GetSettings();
    _RegisterEvents();
}

void QorAdminLogger::DoSettings() noexcept {
    QorAdminLoggerSettingsDlg dialog(SV::Application::GetTopWindow());
    dialog.SetAdminName(_adminName);
    dialog.SetLogging(_logging);
    if (!dialog.Execute()) return;
    _adminName = dialog.GetAdminName();
    _logging = dialog.GetLogging();
    _SaveSettings();
}

void QorAdminLogger::_RegisterEvents() noexcept {
    if (_isRegistered) return;
    Qor_Guarded(kLogSource, [this] {
        setEventHandler(QorEventType::UserChanged, &QorAdminLogger::_UserEventHandler, kPriority);
        setEventHandler(QorEventType::UserGroupChanged, &QorAdminLogger::_UserGroupEventHandler, kPriority);
        _isRegistered = true;
    });
}

bool QorAdminLogger::_Log(const SV::String& action, const SV::String& detail) noexcept {
    return Qor_Guarded(kLogSource, false, [&] {
        QorUserID user;
        (void)QorUserManager::allUmansGetCurrentUserID(user);  // nobody is no administrator
        if (!QorUserManager::isUserAdmin(user) && !QorUserManager::isUserSubAdmin(user)) return false;

        _EnsureHeader();
        _record = localDateAndTime();
        _record += ";";
        _record += _adminName ? _GetUserName(user) : Qor_Message(message::anonymousAdministrator);
        for (const auto* part : {&action, &detail}) {
            _record += ";";
            _record += *part;
        }
        (void)_WriteLogToDB();
        return true;
    });
}

void QorAdminLogger::_EnsureHeader() noexcept {
    Qor_Guarded(kLogSource, [this] {
        if (QorFileManager::fileExists(kLogFile)) return;
        _record = Qor_Message(message::dateColumn);
        for (const auto column :
             {message::timeColumn, message::userColumn, message::actionColumn, message::detailColumn}) {
            _record += ";";
            _record += Qor_Message(column);
        }
        (void)_WriteLogToDB();
    });
}

bool QorAdminLogger::_WriteLogToDB() noexcept {
    return Qor_Guarded(kLogSource, false, [this] {
        if (_record.IsEmpty()) return true;
        QorOwnedText enciphered;
        if (!encipher(_record, enciphered)) return false;
        const OpenFile file(kLogFile, QorFileOpenMode::Append);
        if (!file.isOpen() || !file.write(enciphered.view())) return false;
        (void)file.write("\n");  // whether a line is kept whole is up to the file area, once it is closed
        return true;
    });
}

bool QorAdminLogger::_ReadLogFromDB() noexcept {
    return Qor_Guarded(kLogSource, false, [this] {
        _record.Clear();
        std::string log;
        const bool wasRead = QorAdminLogRecords::readText([&](std::string_view line, bool) {
            log += line;
            return true;
        });
        if (wasRead) _record = std::move(log);
        return wasRead;
    });
}

void QorAdminLogger::_HandleMultilineText(SV::String& text) noexcept {
    if (text.view().find('\n') == std::string_view::npos) return;
    Qor_Guarded(kLogSource, [&] {
        std::string quoted = "\"";
        for (const char c : text.view()) {
            if (c == '\r') continue;
            quoted += c;
            if (c == '"') quoted += c;
        }
        text = quoted + "\"";
    });
}

QorAdminLogSettings QorAdminLogger::StateOfSettings() noexcept {
    return Qor_Guarded(kLogSource, QorAdminLogSettings::Unreadable, [] {
        if (!QorFileManager::fileExists(kSettingsFile)) return QorAdminLogSettings::None;
        return readSettings() ? QorAdminLogSettings::Readable : QorAdminLogSettings::Unreadable;
    });
}

void QorAdminLogger::_GetSettings() noexcept {
    const bool wereRead = Qor_Guarded(kLogSource, false, [this] {
        const auto settings = readSettings();
        if (!settings) return false;
        _logging = settings->logging.value_or(_logging);
        _adminName = settings->adminName.value_or(_adminName);
        return true;
    });
    if (wereRead) return;
    _logging = false;
    _adminName = true;
}

void QorAdminLogger::_SaveSettings() noexcept {
    Qor_Guarded(kLogSource, [this] {
        SV::String text = "LOGSETTINGS log:";
        text += _logging ? "1" : "0";
        text += " adminname:";
        text += _adminName ? "1" : "0";
        QorOwnedText enciphered;
        if (!encipher(text, enciphered)) return;
        const OpenFile file(kSettingsFile, QorFileOpenMode::Replace);
        if (file.isOpen()) (void)file.write(enciphered.view());
    });
}
