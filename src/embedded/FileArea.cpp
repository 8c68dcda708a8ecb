// SPDX-License-Identifier: Apache-2.0
#include "embedded/FileArea.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "embedded/store/RepositoryStore.h"

namespace qor::embedded {

namespace {

constexpr std::string_view kArea = "db:\\";
constexpr std::size_t kLongestName = 255;
// SQLite takes no row beyond 1,000,000,000 bytes.
constexpr std::size_t kMostAtOnce = std::size_t{1} << 29;

bool isLetter(char c, char lower) { return c == lower || c == lower - 'a' + 'A'; }

// The length of the UTF-8 sequence at the text's begin; 0 when there is none, or it is a control character.
std::size_t printableAt(std::string_view text) {
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    if (byte(0) < 0x80) return byte(0) >= 0x20 && byte(0) != 0x7f ? 1 : 0;
    const std::size_t length = byte(0) >= 0xf0 ? 4 : byte(0) >= 0xe0 ? 3 : 2;
    if (byte(0) < 0xc2 || byte(0) > 0xf4 || text.size() < length) return 0;
    std::uint32_t letter = byte(0) & (0xffU >> (length + 1));
    for (std::size_t at = 1; at < length; ++at) {
        if ((byte(at) & 0xc0U) != 0x80) return 0;
        letter = letter << 6 | (byte(at) & 0x3fU);
    }
    const bool isLong = (length == 3 && letter < 0x800) || (length == 4 && letter < 0x10000);
    const bool isControl = letter < 0xa0;
    return isLong || isControl || (letter >= 0xd800 && letter < 0xe000) || letter > 0x10ffff ? 0 : length;
}

bool isStep(std::string_view part) { return part == "." || part == ".."; }

}  // namespace

bool isMeantForFileArea(std::string_view name) {
    return name.size() >= 3 && isLetter(name[0], 'd') && isLetter(name[1], 'b') && name[2] == ':';
}

bool isFileAreaName(std::string_view name) {
    if (!name.starts_with(kArea) || name.size() == kArea.size() || name.size() > kArea.size() + kLongestName)
        return false;
    std::string_view rest = name.substr(kArea.size());
    for (std::string_view parts = rest;;) {
        const std::size_t end = parts.find_first_of("/\\");
        if (isStep(parts.substr(0, end))) return false;
        if (end == std::string_view::npos) break;
        parts.remove_prefix(end + 1);
    }
    while (!rest.empty()) {
        const std::size_t length = printableAt(rest);
        if (length == 0) return false;
        rest.remove_prefix(length);
    }
    return true;
}

FileArea::~FileArea() = default;

// Null when another repository has been opened since.
FileStore* FileArea::storeOf(const RepositoryIdentity& repository) {
    FileStore* const store = _vault.files();
    RepositoryIdentity now{};
    const bool isSame = store != nullptr && store->readIdentity(now) == QorRepositoryStatus::Ok && now == repository;
    return isSame ? store : nullptr;
}

bool FileArea::exists(const SV::String& name) {
    if (isMeantForFileArea(name)) {
        StoredFile file;
        FileStore* const store = _vault.files();
        return isFileAreaName(name) && store != nullptr && store->find(name, file) == QorRepositoryStatus::Ok;
    }
    struct stat status {};
    return name.view().find('\0') == std::string_view::npos && ::stat(name.c_str(), &status) == 0 &&
           !S_ISDIR(status.st_mode);
}

bool FileArea::isFolder(const SV::String& path) {
    if (isMeantForFileArea(path)) return path == kArea;
    struct stat status {};
    return path.view().find('\0') == std::string_view::npos && ::stat(path.c_str(), &status) == 0 &&
           S_ISDIR(status.st_mode);
}

long FileArea::keep(Handle handle) {
    if (_next == std::numeric_limits<std::int32_t>::max()) return -1;
    _open.emplace(_next, std::move(handle));
    return _next++;
}

long FileArea::open(const SV::String& name, QorFileOpenMode mode) {
    if (mode != QorFileOpenMode::Read && mode != QorFileOpenMode::Append && mode != QorFileOpenMode::Replace) return -1;
    if (isMeantForFileArea(name)) return isFileAreaName(name) ? openInArea(name.str(), mode) : -1;
    OrdinaryFile file;
    const bool isNamed = !name.IsEmpty() && name.view().find('\0') == std::string_view::npos;
    return isNamed && file.open(name.str(), mode) ? keep(std::move(file)) : -1;
}

long FileArea::openInArea(const std::string& name, QorFileOpenMode mode) {
    FileStore* const store = _vault.files();
    RepositoryIdentity repository{};
    if (store == nullptr || store->readIdentity(repository) != QorRepositoryStatus::Ok) return -1;
    if (mode == QorFileOpenMode::Read) {
        Reading reading{repository, {}, 0, {}, 0};
        return store->find(name, reading.file) == QorRepositoryStatus::Ok ? keep(std::move(reading)) : -1;
    }
    if (store->isReadOnly() || _vault.seals(true) == nullptr) return -1;
    const auto kind = mode == QorFileOpenMode::Append ? FileEntryKind::Appended : FileEntryKind::Replaced;
    return keep(Writing{repository, name, kind, {}, true});
}

long FileArea::readFrom(Reading& reading, char* buffer, unsigned long size) {
    FileStore* const store = storeOf(reading.repository);
    if (store == nullptr) return -1;
    unsigned long done = 0;
    while (done < size) {
        if (reading.at == reading.content.size()) {
            const auto status = store->readMore(reading.file, reading.after, reading.content);
            reading.at = 0;
            if (status != QorRepositoryStatus::Ok) return -1;
            if (reading.content.empty()) break;
        }
        const std::size_t part = std::min<std::size_t>(size - done, reading.content.size() - reading.at);
        std::memcpy(buffer + done, reading.content.data() + reading.at, part);
        reading.at += part;
        done += part;
    }
    return static_cast<long>(done);
}

long FileArea::read(long handle, char* buffer, unsigned long size) {
    const auto found = _open.find(handle);
    if (found == _open.end() || buffer == nullptr) return -1;
    if (auto* const file = std::get_if<OrdinaryFile>(&found->second)) return file->read(buffer, size);
    auto* const reading = std::get_if<Reading>(&found->second);
    return reading == nullptr ? -1 : readFrom(*reading, buffer, size);
}

long FileArea::write(long handle, const char* bytes, unsigned long size) {
    const auto found = _open.find(handle);
    if (found == _open.end() || bytes == nullptr) return -1;
    if (auto* const file = std::get_if<OrdinaryFile>(&found->second)) return file->write(bytes, size);
    auto* const writing = std::get_if<Writing>(&found->second);
    if (writing == nullptr) return -1;
    const std::size_t taken = std::min<std::size_t>(size, kMostAtOnce - writing->content.size());
    const bool wasWhole = std::exchange(writing->isWhole, false);  // in case there is no memory for it
    writing->content.append(bytes, taken);
    writing->isWhole = wasWhole && taken == size;
    return static_cast<long>(taken);
}

bool FileArea::close(long handle) {
    const auto found = _open.find(handle);
    if (found == _open.end()) return false;
    Handle open = std::move(found->second);
    _open.erase(found);
    if (auto* const file = std::get_if<OrdinaryFile>(&open)) return file->close();
    const auto* const writing = std::get_if<Writing>(&open);
    if (writing == nullptr) return true;
    if (writeWhole(*writing).ok()) return true;
    _vault.countLostWrite();
    return false;
}

// Half of a line is none.
QorRepositoryResult FileArea::writeWhole(const Writing& writing) {
    if (!writing.isWhole) return _vault.fail(failure(QorRepositoryStatus::NoMemory));
    if (storeOf(writing.repository) == nullptr) return _vault.fail(failure(QorRepositoryStatus::NotOpen));
    return _vault.write({writing.kind, writing.name, writing.content});
}

}  // namespace qor::embedded
