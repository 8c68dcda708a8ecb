// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

#include "platform/QorEventListener.h"
#include "platform/QorExport.h"
#include "platform/QorUserID.h"
#include "platform/SvString.h"

/// What stands where the log's settings are kept.
enum class QorAdminLogSettings : std::int32_t {
    None,       ///< nothing: they were never saved, or somebody took them away
    Readable,   ///< settings
    Unreadable  ///< what cannot be deciphered, or says nothing: nobody knows whether changes are to be logged
};

/// The administrator log: who changed which users and memberships when. Each change becomes one enciphered line of a
/// file in the repository's file area; docs/access.md has its form. A failure to write is silent, so that nobody's
/// work with users depends on the log.
///
/// Nothing happens before StartLogging. The log grows without bound.
class QOR_API QorAdminLogger : public QorEventListener {
public:
    static QorAdminLogger& Instance() noexcept;
    ~QorAdminLogger() override;

    /// Reads the settings and begins to listen; another call reads the settings anew.
    void StartLogging() noexcept;
    /// StartLogging takes settings that cannot be read for "off". Who must not change anything unlogged asks before.
    [[nodiscard]] static QorAdminLogSettings StateOfSettings() noexcept;
    /// Asks for the settings in a dialog on the top window, and saves them after OK.
    void DoSettings() noexcept;
    /// Asks for a file on the top window and writes the log into it, deciphered; every outcome but Cancel is told in a
    /// box. A line that cannot be deciphered is told as such in its place. One pass; memory for the whole log.
    void ExportLog() noexcept;

    /// Whether changes are logged. Setting saves nothing.
    [[nodiscard]] bool HasLogging() const noexcept { return _logging; }
    void SetLogging(bool logging) noexcept { _logging = logging; }
    /// Whether a record names the administrator. Setting saves nothing.
    [[nodiscard]] bool HasAdminName() const noexcept { return _adminName; }
    void SetAdminName(bool adminName) noexcept { _adminName = adminName; }

protected:
    QorAdminLogger() noexcept;

    /// Once only.
    void _RegisterEvents() noexcept;
    void _UserEventHandler(const QorUserEvent& event) noexcept;
    void _UserGroupEventHandler(const QorUserGroupEvent& event) noexcept;

    /// Makes the record buffer the whole log, deciphered, each line with its line feed. False when the file cannot be
    /// opened or read to its end.
    bool _ReadLogFromDB() noexcept;
    /// Appends the record buffer, enciphered. True for an empty buffer; false when not all of it could be written,
    /// which is left as it is, without a line feed.
    bool _WriteLogToDB() noexcept;
    /// Appends a record. False, and nothing is written, when the current user is no administrator; else true, whether
    /// the record could be written or not.
    bool _Log(const SV::String& action, const SV::String& detail) noexcept;
    /// Makes a text of several lines one quoted field, without carriage returns. A text of one line stays exactly as it
    /// is, also with carriage returns, quotes and ";" in it: what a program that reads the log has to know is that a
    /// line break never stands outside quotes.
    static void _HandleMultilineText(SV::String& text) noexcept;

    /// Without a settings file, or with one that cannot be read: logging off, the name on. What a readable one does not
    /// say stays as it is.
    void _GetSettings() noexcept;
    void _SaveSettings() noexcept;
    /// The full display name; empty for an unknown user.
    [[nodiscard]] static SV::String _GetUserName(const QorUserID& user) noexcept;
    /// Writes the line of column titles into a log that does not exist yet. Uses the record buffer.
    void _EnsureHeader() noexcept;

private:
    void handleUserEvent(const QorUserEvent& event);
    void logRemarkChange(const QorUserEvent& event);

    // One remembered value serves both pairs of events (name and remark): the later of two first events wins.
    SV::String _remembered;
    SV::String _record;
    bool _adminName = true;
    bool _logging = false;
    bool _isRegistered = false;
};
