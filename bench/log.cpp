// SPDX-License-Identifier: Apache-2.0
// The sealed log. "ratio" of an append is the time of a record, enciphered, sealed and durable, in times of a bare
// synced commit of the same bytes, in turns in one run.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "admin/QorAdminLogRecords.h"
#include "admin/QorAdminLogger.h"
#include "embedded/QorEmbeddedPlatform.h"
#include "platform/QorEncryption.h"
#include "platform/QorFileManager.h"
#include "platform/QorOwnedText.h"

namespace {

namespace fs = std::filesystem;
constexpr const char* kRecord = "2026.03.01;09:05:07;Ada Lovelace;Added to user group;User: Bob;User group: Staff";

double secondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// On a disk, where syncing costs what it costs, or in memory, where many lines come into being quickly.
struct Folder {
    explicit Folder(bool onDisk) {
        std::string name = onDisk ? "/var/tmp/qor-bench-XXXXXX" : "/dev/shm/qor-bench-XXXXXX";
        if (::mkdtemp(name.data()) == nullptr) std::abort();
        path = name;
    }
    ~Folder() { fs::remove_all(path); }
    fs::path path;
};

void run(sqlite3* database, const char* sql) {
    if (sqlite3_exec(database, sql, nullptr, nullptr, nullptr) != SQLITE_OK) std::abort();
}

class Logger : public QorAdminLogger {
public:
    using QorAdminLogger::_Log;
};

struct Scene {
    explicit Scene(bool onDisk) : folder(onDisk) {
        QorEmbeddedOptions options;
        options.user = "ada";
        options.keyFile = (folder.path / "a.key").string();
        platform = std::make_unique<QorEmbeddedPlatform>(options);
        if (!platform->createRepository((folder.path / "a.qor").string()).ok()) std::abort();
        installation = std::make_unique<QorHostInstallation>(platform->host());
    }
    // As many lines, several a transaction.
    void fill(std::int64_t lines) const {
        constexpr std::int64_t kAtOnce = 1000;
        for (std::int64_t line = 0; line < lines; line += kAtOnce) {
            const long file = QorFileManager::fileOpenWrite(QorAdminLogRecords::kLogFile, QorFileOpenMode::Append);
            for (std::int64_t at = 0; at < kAtOnce; ++at) {
                QorOwnedText text;
                if (QorEncryption::Instance().Encrypt(QorEncryption::kStandardMode, kRecord, text.out(), -1) !=
                    QorErrorCode::Ok)
                    std::abort();
                (void)QorFileManager::fileWrite(file, text.c_str(), text.view().size());
                (void)QorFileManager::fileWrite(file, "\n", 1);
            }
            if (!QorFileManager::fileClose(file)) std::abort();
        }
    }
    Folder folder;
    std::unique_ptr<QorEmbeddedPlatform> platform;
    std::unique_ptr<QorHostInstallation> installation;
};

void appendRecord(benchmark::State& state) {
    const Scene scene(true);
    Logger logger;
    sqlite3* plain = nullptr;
    if (sqlite3_open((scene.folder.path / "plain").c_str(), &plain) != SQLITE_OK) std::abort();
    run(plain,
        "PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL; CREATE TABLE lines (id INTEGER PRIMARY KEY, text)");
    double ours = 0;
    double theirs = 0;
    for (auto _ : state) {
        ours += secondsOf([&] { logger._Log("Added to user group", "User: Bob;User group: Staff"); });
        theirs += secondsOf([&] { run(plain, "INSERT INTO lines (text) VALUES (zeroblob(170))"); });
    }
    sqlite3_close(plain);
    if (scene.platform->fileArea().lostWrites() != 0) std::abort();
    state.counters["ratio"] = ours / theirs;
}
BENCHMARK(appendRecord)->Unit(benchmark::kMillisecond);

void verifyLines(benchmark::State& state) {
    const Scene scene(false);
    QorFileArea& area = scene.platform->fileArea();
    if (!area.prepare().ok()) std::abort();
    const std::string key = area.takeVerificationKey();
    for (std::int64_t line = 0; line < state.range(0); ++line) {
        const long file = QorFileManager::fileOpenWrite(QorAdminLogRecords::kLogFile, QorFileOpenMode::Append);
        (void)QorFileManager::fileWrite(file, std::string(170, 'x').c_str(), 170);
        if (!QorFileManager::fileClose(file)) std::abort();
    }
    for (auto _ : state)
        if (!area.verify(key, "").isSound()) state.SkipWithError("not sound");
}
BENCHMARK(verifyLines)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)->Iterations(3);

void readLines(benchmark::State& state) {
    const Scene scene(false);
    scene.fill(state.range(0));
    std::int64_t lines = 0;
    for (auto _ : state) {
        lines = 0;
        const bool wasRead = QorAdminLogRecords::read({}, [&](const QorAdminLogRecord& record) {
            benchmark::DoNotOptimize(QorAdminLogRecords::csvLine(record));
            ++lines;
            return record.isReadable;
        });
        if (!wasRead || lines < state.range(0) - 1) state.SkipWithError("not read to its end");
    }
}
BENCHMARK(readLines)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
