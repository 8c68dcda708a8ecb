// SPDX-License-Identifier: Apache-2.0
// Repository files against plain SQLite with the same rows, in the same run: `ratio` is ours to plain.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "embedded/QorEmbeddedPlatform.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreUnitsOfWork.h"

namespace {

namespace fs = std::filesystem;
constexpr std::int64_t kRelationsPerObject = 4;

double secondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// On a disk, where syncing costs what it costs; /dev/shm would hide that.
struct Folder {
    Folder() {
        std::string name = "/var/tmp/qor-bench-XXXXXX";
        if (::mkdtemp(name.data()) == nullptr) std::abort();
        path = name;
    }
    ~Folder() { fs::remove_all(path); }
    [[nodiscard]] std::string file(const char* name) const { return (path / name).string(); }
    fs::path path;
};

void run(sqlite3* database, const char* sql) {
    if (sqlite3_exec(database, sql, nullptr, nullptr, nullptr) != SQLITE_OK) std::abort();
}

struct Plain {
    explicit Plain(const std::string& path) {
        if (sqlite3_open(path.c_str(), &database) != SQLITE_OK) std::abort();
        run(database, "PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL");
    }
    ~Plain() { sqlite3_close(database); }
    sqlite3_stmt* prepare(const char* sql) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(database, sql, -1, &statement, nullptr) != SQLITE_OK) std::abort();
        return statement;
    }
    // Objects with names, and relations between them.
    void fill(std::int64_t size) {
        run(database,
            "CREATE TABLE objects (id INTEGER PRIMARY KEY, class INTEGER NOT NULL, model INTEGER NOT NULL,"
            " name TEXT NOT NULL) STRICT;"
            "CREATE TABLE relations (id INTEGER PRIMARY KEY, class INTEGER NOT NULL, source INTEGER NOT NULL,"
            " target INTEGER NOT NULL) STRICT; BEGIN IMMEDIATE");
        sqlite3_stmt* const object = prepare("INSERT INTO objects VALUES (?, ?, ?, ?)");
        for (std::int64_t n = 0; n < size; ++n) {
            const std::string name = "Task " + std::to_string(n);
            insert(object, {1010 + n, 1003, 1007}, &name);
        }
        sqlite3_stmt* const relation = prepare("INSERT INTO relations VALUES (?, ?, ?, ?)");
        for (std::int64_t n = 0; n < size * kRelationsPerObject; ++n)
            insert(relation, {1010 + size + n, 1004, 1010 + n % size, 1010 + n * 7919 % size}, nullptr);
        sqlite3_finalize(object);
        sqlite3_finalize(relation);
        run(database, "COMMIT");
    }
    static void insert(sqlite3_stmt* statement, std::initializer_list<std::int64_t> numbers, const std::string* text) {
        int place = 1;
        for (const std::int64_t number : numbers) sqlite3_bind_int64(statement, place++, number);
        if (text != nullptr)
            sqlite3_bind_text(statement, place, text->data(), static_cast<int>(text->size()), SQLITE_STATIC);
        if (sqlite3_step(statement) != SQLITE_DONE) std::abort();
        sqlite3_reset(statement);
    }
    void scan() {
        std::int64_t sum = 0;
        for (const char* sql : {"SELECT id, class, model, name FROM objects ORDER BY id",
                                "SELECT id, class, source, target FROM relations ORDER BY id"}) {
            sqlite3_stmt* const rows = prepare(sql);
            while (sqlite3_step(rows) == SQLITE_ROW) {
                for (int column = 0; column < 3; ++column) sum += sqlite3_column_int64(rows, column);
                sum += *sqlite3_column_text(rows, 3);
            }
            sqlite3_finalize(rows);
        }
        benchmark::DoNotOptimize(sum);
    }
    sqlite3* database = nullptr;
};

struct Ours {
    Ours() : platform(QorEmbeddedOptions{"en", false, "bench"}) {}
    void make(const std::string& path) {
        if (!platform.createRepository(path).ok()) std::abort();
        auto& builder = platform.builder();
        const auto library = builder.addApplicationLibrary("Works", "", "").id;
        const auto part = builder.libraryPart(library, QorLibraryPart::BusinessProcess);
        cls = builder.addClass(part, "Task", QorNoIdentifier, false).id;
        then = builder.addRelationClass(part, "then", cls, cls).id;
        const auto type = builder.addModelType(part, "Process", std::span(&cls, 1)).id;
        model = builder.addModel(type, "Map", "").id;
    }
    void fill(std::int64_t size) {
        auto& units = *platform.host().repository->unitsOfWork();
        auto& builder = platform.builder();
        if (units.begin() != QorErrorCode::Ok) std::abort();
        builder.reserve(static_cast<std::size_t>(size), static_cast<std::size_t>(size * kRelationsPerObject));
        for (std::int64_t n = 0; n < size; ++n) {
            const auto made = builder.addObject(model, cls, "Task " + std::to_string(n));
            if (n == 0) first = made.id;
        }
        const auto object = [&](std::int64_t n) { return first + static_cast<QorIdentifier>(n % size); };
        for (std::int64_t n = 0; n < size * kRelationsPerObject; ++n)
            if (!builder.addRelation(then, object(n), object(n * 7919)).ok()) std::abort();
        if (units.commit() != QorErrorCode::Ok) std::abort();
    }
    QorEmbeddedPlatform platform;
    QorIdentifier cls = -1, then = -1, model = -1, first = -1;
};

void report(benchmark::State& state, double ours, double plain, std::int64_t rows) {
    state.SetIterationTime(ours);
    state.counters["ratio"] = ours / plain;
    state.counters["rows_per_s"] = static_cast<double>(rows) / ours;
}

void Import(benchmark::State& state) {
    const std::int64_t size = state.range(0);
    for (auto _ : state) {
        const Folder folder;
        Plain plain(folder.file("plain"));
        Ours ours;
        ours.make(folder.file("ours"));
        const double plainSeconds = secondsOf([&] { plain.fill(size); });
        const double seconds = secondsOf([&] { ours.fill(size); });
        report(state, seconds, plainSeconds, size * (1 + kRelationsPerObject));
    }
}
BENCHMARK(Import)->Arg(20'000)->Arg(200'000)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

void Open(benchmark::State& state) {
    const std::int64_t size = state.range(0);
    const Folder folder;
    {
        Plain plain(folder.file("plain"));
        plain.fill(size);
        Ours ours;
        ours.make(folder.file("ours"));
        ours.fill(size);
    }
    for (auto _ : state) {
        Plain plain(folder.file("plain"));
        const double plainSeconds = secondsOf([&] { plain.scan(); });
        Ours ours;
        const double seconds = secondsOf([&] {
            if (!ours.platform.openRepository(folder.file("ours")).ok()) std::abort();
        });
        report(state, seconds, plainSeconds, size * (1 + kRelationsPerObject));
        state.counters["MB"] = static_cast<double>(ours.platform.repositoryBytes()) / 1e6;
    }
}
BENCHMARK(Open)->Arg(20'000)->Arg(200'000)->Arg(1'000'000)->UseManualTime()->Iterations(3)->Unit(
    benchmark::kMillisecond);

// One change of one object, and the plain one; a hundred of each by turns, since syncs vary.
void Change(benchmark::State& state) {
    constexpr int kChanges = 100;
    const Folder folder;
    Plain plain(folder.file("plain"));
    plain.fill(state.range(0));
    Ours ours;
    ours.make(folder.file("ours"));
    ours.fill(state.range(0));
    sqlite3_stmt* const update = plain.prepare("UPDATE objects SET name = ?2 WHERE id = ?1");
    int number = 0;
    for (auto _ : state) {
        double seconds = 0;
        double plainSeconds = 0;
        for (int change = 0; change < kChanges; ++change) {
            const std::string name = "changed " + std::to_string(++number);
            plainSeconds += secondsOf([&] {
                run(plain.database, "BEGIN IMMEDIATE");
                Plain::insert(update, {1010 + number}, &name);
                run(plain.database, "COMMIT");
            });
            seconds += secondsOf([&] {
                if (!ours.platform.builder().setValue(ours.first + number, QorAttributeId::Name, name).ok())
                    std::abort();
            });
        }
        report(state, seconds / kChanges, plainSeconds / kChanges, 1);
    }
    sqlite3_finalize(update);
}
BENCHMARK(Change)->Arg(20'000)->UseManualTime()->Iterations(5)->Unit(benchmark::kMicrosecond);

}  // namespace
