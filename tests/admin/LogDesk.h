// SPDX-License-Identifier: Apache-2.0
// A host with users, a file area, a cipher, a clock and scripted dialogs, for the administrator log.
#pragma once
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "admin/QorAdminLogger.h"
#include "platform/QorEncryption.h"
#include "platform/QorFileManager.h"
#include "platform/QorMessage.h"
#include "platform/QorTimeFunctions.h"
#include "support/UserDesk.h"

/// Files in memory, which take only so many bytes.
class MemoryFiles final : public QorFileService {
public:
    explicit MemoryFiles(CallRecord& record) : _record(record) {}

    std::map<std::string, std::string> content;
    std::optional<std::size_t> room;  ///< bytes that can still be written
    [[nodiscard]] std::size_t openHandles() const { return _open.size(); }

    bool exists(const SV::String& name) override { return content.contains(name.str()); }
    long open(const SV::String& name, QorFileOpenMode mode) override {
        if (_record.note("open") != QorErrorCode::Ok) return -1;
        if (mode == QorFileOpenMode::Read && !exists(name)) return -1;
        if (mode == QorFileOpenMode::Replace) content[name.str()].clear();
        _open[++_last] = {name.str(), 0};
        return _last;
    }
    long read(long handle, char* buffer, unsigned long size) override {
        if (_record.note("read") != QorErrorCode::Ok) return -1;
        auto& [name, place] = _open.at(handle);
        const std::size_t count = content.at(name).copy(buffer, size, place);
        place += count;
        return static_cast<long>(count);
    }
    long write(long handle, const char* bytes, unsigned long size) override {
        if (_record.note("write") != QorErrorCode::Ok) return -1;
        const std::size_t count = std::min(size, room.value_or(size));
        content[_open.at(handle).first].append(bytes, count);
        if (room) *room -= count;
        return static_cast<long>(count);
    }
    bool close(long handle) override {
        const auto code = _record.note("close");
        return _open.erase(handle) != 0 && code == QorErrorCode::Ok;
    }
    bool isFolder(const SV::String& path) override { return path == "/out" || path == "." || path == "/"; }

private:
    CallRecord& _record;
    std::map<long, std::pair<std::string, std::size_t>> _open;
    long _last = -1;
};

/// Turns every letter by 13 and puts the text in brackets; nothing else deciphers.
class BracketCipher final : public QorEncryption {
public:
    explicit BracketCipher(CallRecord& record) : _record(record) {}

    static std::string enciphered(std::string text) {
        for (char& c : text) c = turned(c);
        return "<" + text + ">";
    }
    QorErrorCode Encrypt(long mode, const char* text, char*& result, long length) override {
        result = nullptr;
        if (mode != kStandardMode || length != -1) return QorErrorCode::OutOfRange;
        return handOut("encrypt", enciphered(text), result);
    }
    QorErrorCode Decrypt(long mode, const char* text, char*& result) override {
        result = nullptr;
        const std::string_view all = text;
        if (mode != kStandardMode || all.size() < 2 || all.front() != '<' || all.back() != '>')
            return QorErrorCode::ValueRefused;
        std::string plain(all.substr(1, all.size() - 2));
        for (char& c : plain) c = turned(c);
        return handOut("decrypt", plain, result);
    }

private:
    static char turned(char c) {
        if (c == '\n') return '\v';  // one line, whatever the text
        if (c == '\v') return '\n';
        const char base = c >= 'a' && c <= 'z' ? 'a' : c >= 'A' && c <= 'Z' ? 'A' : '\0';
        return base == '\0' ? c : static_cast<char>(base + (c - base + 13) % 26);
    }
    QorErrorCode handOut(const char* operation, const std::string& text, char*& result) {
        const auto code = _record.note(operation);
        if (code != QorErrorCode::Ok) return code;
        result = new char[text.size() + 1]{};
        text.copy(result, text.size());
        return code;
    }

    CallRecord& _record;
};

class ScriptedWindows final : public QorWindows {
public:
    std::vector<std::pair<unsigned long, std::string>> boxes;
    std::optional<std::string> path;                    ///< answer to the save dialog; none: cancelled
    std::optional<std::pair<bool, bool>> checks;        ///< answer to the settings dialog
    std::vector<std::pair<bool, int>> shownCheckBoxes;  ///< checked, enabled by
    std::string shownFilter;

    int box(SV::Window*, unsigned long style, const SV::String& text) override {
        boxes.emplace_back(style, text.str());
        return 0;
    }
    bool checkBoxDialog(SV::Window*, const SV::String&, std::span<QorCheckBox> shown) override {
        shownCheckBoxes.clear();
        for (const auto& it : shown) shownCheckBoxes.emplace_back(it.checked, it.enabledBy);
        if (!checks) return false;
        shown[0].checked = checks->first;
        shown[1].checked = checks->second;
        return true;
    }
    bool saveFileDialog(SV::Window*, const QorFileFilter& filter, SV::String& chosen) override {
        shownFilter = filter.pattern.str();
        chosen = SV::String(path.value_or(""));
        return path.has_value();
    }
};

class FixedClock final : public QorClockService {
public:
    void localDateAndTime(SV::Date& date, SV::Time& time) override {
        date = SV::Date(2026, 3, 1);
        time = SV::Time(9, 5, 7);
    }
};

class Logger : public QorAdminLogger {
public:
    using QorAdminLogger::_EnsureHeader;
    using QorAdminLogger::_GetSettings;
    using QorAdminLogger::_HandleMultilineText;
    using QorAdminLogger::_Log;
    using QorAdminLogger::_ReadLogFromDB;
    using QorAdminLogger::_SaveSettings;
};

class LogTest : public testing::Test {
protected:
    static constexpr const char* kLog = "db:\\qor_admin_log.dat";
    static constexpr const char* kSettings = "db:\\qor_admin_log.conf";

    LogTest() {
        auto& user = desk.of(ada);
        user.first = "Ada";
        user.second = "Office";
        user.kind = QorUserLogonNameType::TwoPart;
        user.isAdministrator = true;
        desk.current = ada;
    }

    /// The text with each "{n}" replaced by message n.
    static std::string text(std::string_view pattern) {
        std::string found;
        for (auto open = pattern.find('{'); open != std::string_view::npos; open = pattern.find('{')) {
            const auto close = pattern.find('}', open);
            found += pattern.substr(0, open);
            const auto number = std::stoi(std::string(pattern.substr(open + 1, close - open - 1)));
            found += Qor_Message(static_cast<std::uint16_t>(number)).view();
            pattern.remove_prefix(close + 1);
        }
        return found.append(pattern);
    }

    /// The lines of the log, deciphered; without those before.
    std::vector<std::string> newLines() {
        std::vector<std::string> found;
        std::istringstream lines(files.content[kLog]);
        for (std::string line; std::getline(lines, line);) {
            SV::String plain;
            char* buffer = nullptr;
            if (cipher.Decrypt(QorEncryption::kStandardMode, line.c_str(), buffer) == QorErrorCode::Ok) plain = buffer;
            delete[] buffer;
            found.push_back(plain.str());
        }
        const std::vector<std::string> fresh(found.begin() + static_cast<std::ptrdiff_t>(_seen), found.end());
        _seen = found.size();
        return fresh;
    }

    void settings(const std::string& plain) { files.content[kSettings] = BracketCipher::enciphered(plain); }

    UserDesk desk;
    QorUserID ada = desk.user("ada");
    QorUserID bob = desk.user("Bob");
    QorUserGroupID staff = desk.group("Staff");
    MemoryFiles files{desk.record};
    BracketCipher cipher{desk.record};
    ScriptedWindows windows;
    FixedClock clock;
    QorHostInstallation installation{[this] {
        QorHost host = desk.host;
        host.files = &files;
        host.encryption = &cipher;
        host.windows = &windows;
        host.clock = &clock;
        return host;
    }()};
    Logger logger;

private:
    std::size_t _seen = 0;
};
