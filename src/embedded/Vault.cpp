// SPDX-License-Identifier: Apache-2.0
#include "embedded/Vault.h"

#include <sodium.h>

#include <utility>

#include "embedded/KeyFile.h"
#include "embedded/Repository.h"
#include "embedded/store/SqliteFileStore.h"

namespace qor::embedded {

Vault::Vault(Repository& repository, std::string keyFile) : _repository(repository), _keyFile(std::move(keyFile)) {}

Vault::~Vault() { wipeFirstSealKey(); }

void Vault::wipeFirstSealKey() noexcept {
    if (_firstSealKey) sodium_memzero(_firstSealKey->data(), _firstSealKey->size());
    _firstSealKey.reset();
}

FileStore* Vault::files() {
    if (_repository.file() != nullptr) return &_repository.file()->files();
    if (_inMemory == nullptr) _inMemory = makeFilesInMemory();
    return _inMemory.get();
}

QorRepositoryResult Vault::fail(QorRepositoryResult result) {
    _problem = result;
    return result;
}

// ---- The key ----

void Vault::forget() noexcept {
    _store = nullptr;
    _seals.reset();
    wipeFirstSealKey();
    _lostWrites = _toldLosses = 0;
    _problem = {};
}

// False when it cannot be told which repository is open.
bool Vault::noteStore() {
    if (_store != nullptr) return true;
    FileStore* const store = files();
    const QorRepositoryStatus status =
        store == nullptr ? QorRepositoryStatus::NoMemory : store->readIdentity(_identity);
    if (status != QorRepositoryStatus::Ok) {
        (void)fail(failure(status));
        return false;
    }
    _store = store;
    return true;
}

std::string Vault::keyPlace() {
    if (_repository.file() == nullptr || !noteStore()) return {};
    return KeyFile::placeFor(_identity, _keyFile);
}

QorRepositoryResult Vault::readKey(SecretKey& key, bool isLaid) {
    if (_repository.file() == nullptr) {
        if (!std::exchange(_hasMemoryKey, true)) randombytes_buf(_memoryKey.bytes.data(), _memoryKey.bytes.size());
        key.bytes = _memoryKey.bytes;
        return {};
    }
    const KeyFile file(KeyFile::placeFor(_identity, _keyFile));
    if (file.path().empty())
        return failure(QorRepositoryStatus::NoKey, "there is no place for the key file: neither QOR_KEY_FILE nor HOME");
    QorRepositoryResult result = file.read(key);
    if (result.status != QorRepositoryStatus::Missing) return result;
    // A new key in place of one that was lost would read nothing and break the chain.
    if (isLaid || _store->isReadOnly())
        return failure(QorRepositoryStatus::NoKey, "there is no key file " + file.path());
    result = file.make(key);
    return result.status == QorRepositoryStatus::Exists ? file.read(key) : result;
}

QorRepositoryResult Vault::layChain(const Seals& seals) {
    SealHead head;
    _store->begin();
    const QorRepositoryStatus status = _store->readHead(head);
    // Another process may have been quicker.
    if (status != QorRepositoryStatus::Ok || head.isLaid) {
        _store->rollBack();
        if (status != QorRepositoryStatus::Ok) return failure(status);
        return isEqual(head.keyCheck, seals.keyCheck())
                   ? QorRepositoryResult{}
                   : failure(QorRepositoryStatus::NoKey, "the key file is that of another repository");
    }
    head.chain = seals.beginning();
    head.keyCheck = seals.keyCheck();
    randombytes_buf(head.sealKey.data(), head.sealKey.size());
    head.mac = seals.macOf(head);
    _store->writeHead(head);
    const QorRepositoryStatus written = _store->commit();
    if (written != QorRepositoryStatus::Ok) return failure(written);
    _firstSealKey = head.sealKey;
    return {};
}

const Seals* Vault::seals(bool make) {
    if (sodium_init() < 0) {
        (void)fail(failure(QorRepositoryStatus::NoKey, "the system has no source of random numbers"));
        return nullptr;
    }
    if (!noteStore()) return nullptr;
    if (_seals) return &*_seals;
    SealHead head;
    QorRepositoryResult result = failure(_store->readHead(head));
    SecretKey key;
    if (result.ok() && !head.isLaid && !make)
        result = failure(QorRepositoryStatus::NoKey, "nothing was enciphered or sealed yet");
    if (result.ok()) result = readKey(key, head.isLaid);
    if (result.ok()) {
        const Seals seals(key, _identity);
        if (head.isLaid && !isEqual(head.keyCheck, seals.keyCheck()))
            result = failure(QorRepositoryStatus::NoKey, "the key file is that of another repository");
        else if (!head.isLaid)
            result = layChain(seals);
    }
    if (!result.ok()) {
        (void)fail(std::move(result));
        return nullptr;
    }
    return &_seals.emplace(key, _identity);
}

std::optional<SealDigest> Vault::takeFirstSealKey() { return std::exchange(_firstSealKey, std::nullopt); }

// ---- Writing ----

QorRepositoryResult Vault::write(const FileChange& change) {
    const Seals* const seals = this->seals(true);
    QorRepositoryResult result = _problem;
    if (seals != nullptr) {
        result = writeOnce(*seals, change);
        // The reserve was given up for it.
        if (result.status == QorRepositoryStatus::NoRoom) result = writeOnce(*seals, change);
    }
    return result.ok() ? result : fail(std::move(result));
}

QorRepositoryResult Vault::writeOnce(const Seals& seals, const FileChange& change) {
    SealHead head;
    _store->begin();
    QorRepositoryStatus status = _store->readHead(head);
    // To go on behind an end that was forged would make it a true one.
    if (status == QorRepositoryStatus::Ok && !isEqual(head.mac, seals.macOf(head))) {
        _store->rollBack();
        return failure(QorRepositoryStatus::Damaged, "the end of the file area's chain is not what was written");
    }
    if (status == QorRepositoryStatus::Ok) status = addEntries(seals, head, change);
    if (status != QorRepositoryStatus::Ok) {
        _store->rollBack();
        return failure(status);
    }
    head.lostWrites += _lostWrites - _toldLosses;
    head.mac = seals.macOf(head);
    _store->writeHead(head);
    status = _store->commit();
    if (status == QorRepositoryStatus::Ok) _toldLosses = _lostWrites;
    sodium_memzero(head.sealKey.data(), head.sealKey.size());
    return failure(status);
}

QorRepositoryStatus Vault::addEntries(const Seals& seals, SealHead& head, const FileChange& change) {
    StoredFile file;
    QorRepositoryStatus status = _store->find(change.name, file);
    const bool isThere = status == QorRepositoryStatus::Ok;
    if (!isThere && (status != QorRepositoryStatus::Missing || change.kind == FileEntryKind::Renamed)) return status;
    if (change.kind == FileEntryKind::Renamed) {
        StoredFile other;
        status = _store->find(change.content, other);
        if (status != QorRepositoryStatus::Missing)
            return status == QorRepositoryStatus::Ok ? QorRepositoryStatus::Exists : status;
    }
    if (!isThere) {
        file.id = file.begins = head.sequence + 1;
        addEntry(seals, head, file.id, FileEntryKind::Made, change.name);
    }
    std::string_view name = change.name;
    if (change.kind == FileEntryKind::Replaced) {
        _store->dropContent(file);
        file.begins = head.sequence + 1;
    } else if (change.kind == FileEntryKind::Renamed) {
        name = change.content;
    }
    if (change.kind != FileEntryKind::Appended || !isThere) _store->putFile(file, name);
    if (change.kind != FileEntryKind::Appended || !change.content.empty())
        addEntry(seals, head, file.id, change.kind, change.content);
    return QorRepositoryStatus::Ok;
}

void Vault::addEntry(const Seals& seals, SealHead& head, std::int64_t file, FileEntryKind kind,
                     std::string_view content) {
    FileEntry entry{head.sequence + 1, file, kind, content, Seals::hashOf(content), {}, {}};
    entry.seal = Seals::seal(head.sealKey, entry, head.chain);
    entry.chain = seals.chain(entry, head.chain);
    _store->add(entry);
    head.sequence = entry.sequence;
    head.chain = entry.chain;
    head.sealKey = Seals::nextKey(head.sealKey);
}

}  // namespace qor::embedded
