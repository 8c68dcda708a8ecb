// SPDX-License-Identifier: Apache-2.0
#include "support/SimulatedDisk.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::size_t kSector = 512;

struct Handle {
    sqlite3_file base;
    SimulatedDisk* disk;
    std::shared_ptr<SimulatedDisk::File>* file;
    bool isLog;
};

Handle& handleOf(sqlite3_file* file) { return *reinterpret_cast<Handle*>(file); }
SimulatedDisk::File& fileOf(sqlite3_file* file) { return **handleOf(file).file; }
SimulatedDisk& diskOf(sqlite3_vfs* vfs) { return *static_cast<SimulatedDisk*>(vfs->pAppData); }

void put(std::string& content, std::size_t at, std::string_view bytes) {
    if (content.size() < at + bytes.size()) content.resize(at + bytes.size());
    content.replace(at, bytes.size(), bytes);
}

int closeFile(sqlite3_file* file) {
    delete handleOf(file).file;
    return SQLITE_OK;
}

int readFile(sqlite3_file* file, void* buffer, int size, sqlite3_int64 at) {
    if (const int code = handleOf(file).disk->note(SQLITE_IOERR_READ); code != SQLITE_OK) return code;
    const std::string& now = fileOf(file).now;
    const auto from = std::min(static_cast<std::size_t>(at), now.size());
    const auto found = std::min(static_cast<std::size_t>(size), now.size() - from);
    std::memset(buffer, 0, static_cast<std::size_t>(size));
    std::memcpy(buffer, now.data() + from, found);
    return found == static_cast<std::size_t>(size) ? SQLITE_OK : SQLITE_IOERR_SHORT_READ;
}

int writeFile(sqlite3_file* file, const void* buffer, int size, sqlite3_int64 at) {
    const int code = handleOf(file).disk->note(SQLITE_IOERR_WRITE, true);
    std::string bytes(static_cast<const char*>(buffer), static_cast<std::size_t>(size));
    if (code != SQLITE_OK && !handleOf(file).disk->failsShort()) return code;
    if (code != SQLITE_OK) bytes.resize(bytes.size() / 2);
    put(fileOf(file).now, static_cast<std::size_t>(at), bytes);
    fileOf(file).pending.push_back({static_cast<std::size_t>(at), std::move(bytes), false});
    return code;
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size) {
    if (const int code = handleOf(file).disk->note(SQLITE_IOERR_TRUNCATE); code != SQLITE_OK) return code;
    fileOf(file).now.resize(static_cast<std::size_t>(size));
    fileOf(file).pending.push_back({static_cast<std::size_t>(size), {}, true});
    return SQLITE_OK;
}

int syncFile(sqlite3_file* file, int) {
    if (const int code = handleOf(file).disk->note(SQLITE_IOERR_FSYNC); code != SQLITE_OK) return code;
    if (handleOf(file).isLog && handleOf(file).disk->ignoresSyncsOfLog) return SQLITE_OK;
    for (const auto& write : fileOf(file).pending) {
        if (write.isEnd)
            fileOf(file).synced.resize(write.at);
        else
            put(fileOf(file).synced, write.at, write.bytes);
    }
    fileOf(file).pending.clear();
    return SQLITE_OK;
}

int sizeOfFile(sqlite3_file* file, sqlite3_int64* size) {
    *size = static_cast<sqlite3_int64>(fileOf(file).now.size());
    return handleOf(file).disk->note(SQLITE_IOERR_FSTAT);
}

int mapShared(sqlite3_file* file, int region, int, int extend, void volatile** memory) {
    auto& shared = fileOf(file).shared;
    *memory = nullptr;
    const auto wanted = static_cast<std::size_t>(region);
    if (shared.size() <= wanted && extend == 0) return SQLITE_OK;
    if (const int code = handleOf(file).disk->note(SQLITE_IOERR_SHMMAP); code != SQLITE_OK) return code;
    while (shared.size() <= wanted) shared.push_back(std::make_unique<std::array<char, 65536>>());
    *memory = shared[wanted]->data();
    return SQLITE_OK;
}

int unmapShared(sqlite3_file* file, int) {
    fileOf(file).shared.clear();
    return SQLITE_OK;
}

const sqlite3_io_methods kMethods = {
    2,
    closeFile,
    readFile,
    writeFile,
    truncateFile,
    syncFile,
    sizeOfFile,
    [](sqlite3_file*, int) { return SQLITE_OK; },
    [](sqlite3_file*, int) { return SQLITE_OK; },
    [](sqlite3_file*, int* isReserved) { return *isReserved = 0, SQLITE_OK; },
    [](sqlite3_file*, int, void*) { return SQLITE_NOTFOUND; },
    [](sqlite3_file*) { return static_cast<int>(kSector); },
    [](sqlite3_file*) { return 0; },
    mapShared,
    [](sqlite3_file*, int, int, int) { return SQLITE_OK; },
    [](sqlite3_file*) {},
    unmapShared,
    nullptr,
    nullptr,
};

int openFile(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    file->pMethods = nullptr;
    SimulatedDisk& disk = diskOf(vfs);
    if (const int code = disk.note(SQLITE_CANTOPEN); code != SQLITE_OK) return code;
    const std::string path = name == nullptr ? "unnamed" : name;
    auto found = disk.files.find(path);
    if (found == disk.files.end() && (flags & SQLITE_OPEN_CREATE) == 0) return SQLITE_CANTOPEN;
    if (found == disk.files.end()) found = disk.files.emplace(path, std::make_shared<SimulatedDisk::File>()).first;
    handleOf(file).disk = &disk;
    handleOf(file).file = new std::shared_ptr<SimulatedDisk::File>(found->second);
    handleOf(file).isLog = path.ends_with("-wal");
    file->pMethods = &kMethods;
    if (outFlags != nullptr) *outFlags = flags;
    return SQLITE_OK;
}

int deleteFile(sqlite3_vfs* vfs, const char* name, int) {
    if (const int code = diskOf(vfs).note(SQLITE_IOERR_DELETE); code != SQLITE_OK) return code;
    diskOf(vfs).files.erase(name);
    return SQLITE_OK;
}

int accessFile(sqlite3_vfs* vfs, const char* name, int, int* answer) {
    *answer = diskOf(vfs).files.count(name) > 0 ? 1 : 0;
    return diskOf(vfs).note(SQLITE_IOERR_ACCESS);
}

int fullPath(sqlite3_vfs*, const char* name, int size, char* path) {
    sqlite3_snprintf(size, path, "%s", name);
    return SQLITE_OK;
}

int fillRandom(sqlite3_vfs*, int size, char* bytes) {
    static std::mt19937 random(1);
    for (int at = 0; at < size; ++at) bytes[at] = static_cast<char>(random());
    return size;
}

int tellTime(sqlite3_vfs*, sqlite3_int64* time) {
    *time = 212'000'000'000'000;
    return SQLITE_OK;
}

}  // namespace

SimulatedDisk::SimulatedDisk() {
    _vfs.iVersion = 2;
    _vfs.szOsFile = sizeof(Handle);
    _vfs.mxPathname = 512;
    _vfs.zName = "simulated";
    _vfs.pAppData = this;
    _vfs.xOpen = openFile;
    _vfs.xDelete = deleteFile;
    _vfs.xAccess = accessFile;
    _vfs.xFullPathname = fullPath;
    _vfs.xRandomness = fillRandom;
    _vfs.xSleep = [](sqlite3_vfs*, int microseconds) { return microseconds; };
    _vfs.xCurrentTimeInt64 = tellTime;
    _vfs.xGetLastError = [](sqlite3_vfs*, int, char*) { return 0; };
    sqlite3_vfs_register(&_vfs, 1);
}

SimulatedDisk::~SimulatedDisk() { sqlite3_vfs_unregister(&_vfs); }

void SimulatedDisk::failCall(long n, Fault fault) {
    failNothing();
    _untilFailure = n;
    _fault = fault;
}

void SimulatedDisk::cutPowerAt(long n) {
    failNothing();
    _untilCut = n;
}

void SimulatedDisk::failNothing() {
    _untilFailure = _untilCut = 0;
    _isCut = _hasFailed = _failsShort = false;
}

int SimulatedDisk::note(int code, bool isWrite) {
    _failsShort = false;
    if (isWrite && isFull && isFull()) return SQLITE_FULL;
    if (_untilCut > 0 && --_untilCut == 0) _isCut = true;
    if (_isCut) return code;
    // Only what writes can meet a full disk or be cut short; the next one that does so fails.
    const bool canFail = _fault == Fault::InputOutput || isWrite;
    if (_untilFailure == 0 || !canFail || --_untilFailure > 0) return SQLITE_OK;
    _hasFailed = true;
    _failsShort = _fault == Fault::ShortWrite;
    return _fault == Fault::InputOutput ? code : SQLITE_FULL;
}

void SimulatedDisk::restorePower(std::mt19937& random) {
    failNothing();
    for (auto& [name, file] : files) {
        for (const File::Write& write : file->pending) {
            const auto fate = random() % 3;  // kept, lost, torn
            if (fate == 1) continue;
            if (write.isEnd) {
                file->synced.resize(write.at);
                continue;
            }
            for (std::size_t at = 0; at < write.bytes.size(); at += kSector)
                if (fate == 0 || random() % 2 == 0)
                    put(file->synced, write.at + at, std::string_view(write.bytes).substr(at, kSector));
        }
        file->pending.clear();
        file->now = file->synced;
        file->shared.clear();
    }
}

void SimulatedDisk::assign(const std::map<std::string, std::string>& content) {
    failNothing();
    files.clear();
    for (const auto& [name, bytes] : content) {
        auto& file = files[name] = std::make_shared<File>();
        file->now = file->synced = bytes;
    }
}

std::map<std::string, std::string> SimulatedDisk::content() const {
    std::map<std::string, std::string> content;
    for (const auto& [name, file] : files) content[name] = file->now;
    return content;
}
