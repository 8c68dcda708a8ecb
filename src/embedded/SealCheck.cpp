// SPDX-License-Identifier: Apache-2.0
#include "embedded/SealCheck.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "embedded/ByteText.h"
#include "embedded/store/RepositoryStore.h"

namespace qor::embedded {

namespace {

template <class Link>
Link withContentOf(Link link, const Link& other) {
    link.entry.contentHash = other.entry.contentHash;
    return link;
}

bool isSealed(const FileEntry& entry) { return !isEqual(entry.seal, SealDigest{}); }

}  // namespace

std::string headText(const NotedHead& head) {
    return std::to_string(head.sequence) + "-" + toDigits(head.chain.data(), head.chain.size());
}

std::optional<NotedHead> readHeadText(std::string_view text) {
    NotedHead head;
    const char* const end = text.data() + text.size();
    const auto number = std::from_chars(text.data(), end, head.sequence);
    const bool hasForm = number.ec == std::errc() && head.sequence >= 0 && number.ptr != end && *number.ptr == '-';
    if (!hasForm) return std::nullopt;
    const auto chain = text.substr(static_cast<std::size_t>(number.ptr - text.data()) + 1);
    return fromDigits(chain, head.chain) ? std::optional(head) : std::nullopt;
}

SealCheck::SealCheck(FileStore& store, const Seals& seals, std::optional<SealDigest> firstSealKey,
                     std::optional<NotedHead> noted)
    : _store(store), _seals(seals), _sealKey(firstSealKey), _noted(noted), _chain(seals.beginning()) {}

QorSealReport SealCheck::run() {
    _report.result = failure(readAtOnce());
    _report.lostWrites = _head.lostWrites;
    if (_report.isSound()) _report.head = headText({_last, _chain});
    return std::move(_report);
}

QorRepositoryStatus SealCheck::readAtOnce() {
    const QorRepositoryStatus status = _store.beginReading();
    if (status != QorRepositoryStatus::Ok) return status;
    struct End {
        explicit End(FileStore& itsStore) : store(itsStore) {}
        End(const End&) = delete;
        End& operator=(const End&) = delete;
        ~End() { store.endReading(); }
        FileStore& store;
    } const end(_store);
    return readAll();
}

QorRepositoryStatus SealCheck::readAll() {
    QorRepositoryStatus status = _store.readHead(_head);
    if (status != QorRepositoryStatus::Ok && status != QorRepositoryStatus::Damaged) return status;
    _isHeadSound = status == QorRepositoryStatus::Ok && isEqual(_head.mac, _seals.macOf(_head));
    if (_noted && _noted->sequence == 0 && !isEqual(_noted->chain, _chain)) find(QorTampering::RolledBack, 1);
    status = _store.visitEntries([this](const FileEntry& entry) { return take(entry); });
    if (status != QorRepositoryStatus::Ok || isFound()) return status;
    if (!_rest.empty()) {
        classify();
        return _report.tampering == QorTampering::Inserted ? findCopied() : status;
    }
    checkEnd();
    return isFound() ? status : checkFiles();
}

bool SealCheck::take(const FileEntry& entry) {
    ++_report.entries;
    Link link{entry, entry.contentHash};
    link.entry.content.reset();
    if (entry.content) link.entry.contentHash = Seals::hashOf(*entry.content);
    if (!_rest.empty() || !follows(link))
        _rest.push_back(link);
    else
        accept(entry);
    return !isFound();
}

bool SealCheck::makes(const SealDigest& chain, Link link, std::int64_t sequence, const SealDigest& before) const {
    link.entry.sequence = sequence;
    return isEqual(_seals.chain(link.entry, before), chain);
}

bool SealCheck::follows(const Link& link) const {
    return link.entry.sequence == _last + 1 && isEqual(link.entry.contentHash, link.storedHash) &&
           isSealed(link.entry) && makes(link.entry.chain, link, _last + 1, _chain);
}

void SealCheck::accept(const FileEntry& entry) {
    if (_sealKey && !isEqual(Seals::seal(*_sealKey, entry, _chain), entry.seal)) {
        find(QorTampering::Resealed, entry.sequence);
        return nameFile(entry.file);
    }
    if (_sealKey) _sealKey = Seals::nextKey(*_sealKey);
    _last = entry.sequence;
    _chain = entry.chain;
    if (_noted && _noted->sequence == _last && !isEqual(_noted->chain, _chain)) find(QorTampering::RolledBack, _last);
    applyToFile(entry);
}

void SealCheck::applyToFile(const FileEntry& entry) {
    File& file = _files[entry.file];
    const bool isGone = !entry.content;
    switch (entry.kind) {
        case FileEntryKind::Made:
            file = {std::string(entry.content.value_or("")), entry.sequence, 0, isGone ? entry.sequence : 0};
            return;
        case FileEntryKind::Renamed:
            file.name = entry.content.value_or("");
            if (isGone && file.dropped == 0) file.dropped = entry.sequence;
            return;
        case FileEntryKind::Replaced:
            file.begins = entry.sequence;
            file.lines = 1;
            file.dropped = isGone ? entry.sequence : 0;
            return;
        case FileEntryKind::Appended:
            ++file.lines;
            if (isGone && file.dropped == 0) file.dropped = entry.sequence;
            return;
    }
}

// ---- What was done ----

void SealCheck::find(QorTampering tampering, std::int64_t sequence, std::int64_t other, std::int64_t count) {
    _report.tampering = tampering;
    _report.sequence = sequence;
    _report.other = other;
    _report.count = count;
}

void SealCheck::nameFile(std::int64_t id) {
    const auto file = _files.find(id);
    if (file == _files.end()) return;
    _report.file = file->second.name;
    _report.line = file->second.lines + 1;
}

void SealCheck::classify() {
    const Link& first = _rest.front();
    const std::int64_t place = _last + 1;
    nameFile(first.entry.file);
    if (first.entry.sequence > place) return find(QorTampering::Removed, place, 0, first.entry.sequence - place);
    if (!isSealed(first.entry)) return find(QorTampering::NotSealed, place);
    if (classifyMoved()) return;
    // What comes next still hangs on this one: only this one is not what it was.
    const bool isNextSound = _rest.size() > 1 && _rest[1].entry.sequence == place + 1 &&
                             makes(_rest[1].entry.chain, _rest[1], place + 1, first.entry.chain);
    if (isNextSound || !_isHeadSound) return find(QorTampering::Changed, place);
    // Of those who come later, only the number tells whether some were taken away and the others moved up.
    const std::int64_t missing = _head.sequence - _rest.back().entry.sequence;
    if (missing > 0) return find(QorTampering::Removed, place, 0, missing);
    find(missing < 0 ? QorTampering::Inserted : QorTampering::Changed, place);
}

// Whether what belongs here stands further down: the whole entry, or only its content.
bool SealCheck::classifyMoved() {
    const Link& first = _rest.front();
    const std::int64_t place = _last + 1;
    const auto genuine = std::find_if(_rest.begin() + 1, _rest.end(), [&](const Link& link) {
        return makes(link.entry.chain, link, place, _chain) ||
               makes(first.entry.chain, withContentOf(first, link), place, _chain);
    });
    if (genuine == _rest.end()) return false;
    const bool standsNext = genuine == _rest.begin() + 1;
    const bool areNeighbours =
        makes(first.entry.chain, first, place + 1, genuine->entry.chain) ||
        makes(genuine->entry.chain, withContentOf(*genuine, first), place + 1, first.entry.chain);
    const bool areTooMany = _isHeadSound && _rest.back().entry.sequence > _head.sequence;
    if ((standsNext && !areNeighbours) || areTooMany)
        find(QorTampering::Inserted, place);
    else
        find(QorTampering::Swapped, place, genuine->entry.sequence);
    return true;
}

// Whether what was inserted is a copy of an entry before it.
QorRepositoryStatus SealCheck::findCopied() {
    const Link& inserted = _rest.front();
    return _store.visitEntries([&](const FileEntry& entry) {
        if (entry.sequence >= inserted.entry.sequence) return false;
        if (isEqual(entry.contentHash, inserted.entry.contentHash)) _report.other = entry.sequence;
        return _report.other == 0;
    });
}

void SealCheck::checkEnd() {
    if (_isHeadSound && _head.sequence > _last) return find(QorTampering::Cut, _last + 1, 0, _head.sequence - _last);
    if (!_isHeadSound || _head.sequence != _last || !isEqual(_head.chain, _chain))
        return find(QorTampering::EndChanged, _last + 1);
    if (_sealKey && !isEqual(*_sealKey, _head.sealKey)) return find(QorTampering::Resealed, _last + 1);
    if (_noted && _noted->sequence > _last) find(QorTampering::RolledBack, _last + 1, 0, _noted->sequence - _last);
}

QorRepositoryStatus SealCheck::checkFiles() {
    for (const auto& [id, file] : _files) {
        if (file.dropped == 0 || (isFound() && _report.sequence < file.dropped)) continue;
        find(QorTampering::Changed, file.dropped);
        _report.file = file.name;
        _report.line = 0;
    }
    if (isFound()) return QorRepositoryStatus::Ok;
    std::size_t shown = 0;
    const auto wrong = [this](std::int64_t entry, const std::string& name) {
        if (!isFound()) find(QorTampering::FileList, entry);
        if (_report.file.empty()) _report.file = name;
    };
    const QorRepositoryStatus status = _store.visitFiles([&](const StoredFile& stored, std::string_view name) {
        const auto file = _files.find(stored.id);
        const bool isKnown = file != _files.end();
        shown += isKnown ? 1 : 0;
        if (!isKnown || file->second.name != name || file->second.begins != stored.begins)
            wrong(isKnown ? file->second.begins : 0, isKnown ? file->second.name : std::string(name));
    });
    if (shown != _files.size()) wrong(0, {});
    return status;
}

}  // namespace qor::embedded
