// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <sqlite3.h>

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

/// A disk in memory that forgets, at a power cut, what was written and not synced: wholly, in part, or not at all; and
/// of which any single call can be made to fail. While it lives, SQLite puts every file there.
class SimulatedDisk {
public:
    enum class Fault { None, InputOutput, Full, ShortWrite };

    struct File {
        struct Write {
            std::size_t at;
            std::string bytes;  // empty: the file ends here
            bool isEnd;
        };
        std::string now;
        std::string synced;
        std::vector<Write> pending;
        std::vector<std::unique_ptr<std::array<char, 65536>>> shared;
    };

    SimulatedDisk();
    SimulatedDisk(const SimulatedDisk&) = delete;
    SimulatedDisk& operator=(const SimulatedDisk&) = delete;
    ~SimulatedDisk();

    /// The n-th call from now on fails, n from 1.
    void failCall(long n, Fault fault);
    /// From the n-th call on none does anything any more.
    void cutPowerAt(long n);
    [[nodiscard]] bool isCut() const { return _isCut; }
    [[nodiscard]] bool hasFailed() const { return _hasFailed; }
    void failNothing();
    /// What is left when the power comes back. Files must have been closed.
    void restorePower(std::mt19937& random);

    /// The same content, all of it on the disk.
    void assign(const std::map<std::string, std::string>& files);
    [[nodiscard]] std::map<std::string, std::string> content() const;

    /// Syncing the write-ahead log does nothing, as with a lower setting than full.
    bool ignoresSyncsOfLog = false;
    /// Whether the disk has no room for what is written; always room when not set.
    std::function<bool()> isFull;

    // For the calls.
    std::map<std::string, std::shared_ptr<File>> files;
    /// Notes a call; the code that it is to fail with, or SQLITE_OK.
    [[nodiscard]] int note(int code, bool isWrite = false);
    [[nodiscard]] bool failsShort() const { return _failsShort; }

private:
    sqlite3_vfs _vfs{};
    long _untilFailure = 0;
    long _untilCut = 0;
    Fault _fault = Fault::None;
    bool _isCut = false;
    bool _hasFailed = false;
    bool _failsShort = false;
};
