// SPDX-License-Identifier: Apache-2.0
#include "embedded/QorEmbeddedPlatform.h"

#include "embedded/Announcements.h"
#include "embedded/Answers.h"
#include "embedded/Builder.h"
#include "embedded/ConsoleWindows.h"
#include "embedded/Editing.h"
#include "embedded/Encryption.h"
#include "embedded/FileArea.h"
#include "embedded/LibrarySession.h"
#include "embedded/ModelGroupService.h"
#include "embedded/ModelingManager.h"
#include "embedded/Reader.h"
#include "embedded/RecordingWindows.h"
#include "embedded/Repository.h"
#include "embedded/SealedArea.h"
#include "embedded/Settings.h"
#include "embedded/UserAdministration.h"
#include "embedded/Users.h"
#include "embedded/store/SqliteStore.h"
#include "platform/QorGuard.h"

using namespace qor::embedded;

struct QorEmbeddedPlatform::Impl {
    explicit Impl(const QorEmbeddedOptions& options)
        : users(repository, options.user), vault(repository, options.keyFile), texts(options.language) {
        if (options.console) console = std::make_unique<ConsoleWindows>();
        host.repository = &manager;
        host.coreVars = &coreVars;
        host.users = &users;
        host.modelGroups = &modelGroups;
        host.attributeProfiles = &attributeProfiles;
        host.editing = &editing;
        host.graphics = &patterns;
        host.files = &files;
        host.encryption = &encryption;
        host.texts = &texts;
        host.windows = console ? static_cast<QorWindows*>(console.get()) : &recording;
    }

    Repository repository;
    LibrarySession session;
    Users users;
    Announcements announcements;
    ModelingManager manager{repository, session, users, announcements};
    Builder builder{repository, session, announcements};
    Reader reader{repository};
    CoreVars coreVars{repository, session};
    AttributeProfiles attributeProfiles{repository};
    Editing editing{repository, manager, announcements};
    UserAdministration administration{repository, users, announcements};
    ModelGroupService modelGroups{repository, administration};
    ClassPatterns patterns{repository, session};
    Vault vault;
    FileArea files{vault};
    Encryption encryption{vault};
    SealedArea sealedArea{vault};
    MessageTexts texts;
    RecordingWindows recording;
    std::unique_ptr<ConsoleWindows> console;
    QorHost host;
};

QorEmbeddedPlatform::QorEmbeddedPlatform(const QorEmbeddedOptions& options) : _impl(std::make_unique<Impl>(options)) {}

QorEmbeddedPlatform::~QorEmbeddedPlatform() = default;

const QorHost& QorEmbeddedPlatform::host() const { return _impl->host; }
QorRepositoryBuilder& QorEmbeddedPlatform::builder() { return _impl->builder; }
const QorRepositoryReader& QorEmbeddedPlatform::reader() const { return _impl->reader; }
QorFileArea& QorEmbeddedPlatform::fileArea() { return _impl->sealedArea; }
QorUserAdministration& QorEmbeddedPlatform::userAdministration() { return _impl->administration; }
void QorEmbeddedPlatform::setCurrentUser(std::string_view logonName) {
    Qor_Guarded("embedded", [&] { _impl->users.setCurrentUser(logonName); });
}
const QorShownWindows& QorEmbeddedPlatform::shown() const { return _impl->recording.shown(); }
void QorEmbeddedPlatform::forgetShown() { _impl->recording.shown().clear(); }
QorScriptedAnswers& QorEmbeddedPlatform::answers() { return _impl->recording.answers(); }
std::size_t QorEmbeddedPlatform::repositoryBytes() const { return _impl->repository.bytes(); }

QorRepositoryResult QorEmbeddedPlatform::openRepository(const std::string& path, QorRepositoryAccess access) {
    return onFile([&] {
        if (hasRepository() || !_impl->repository.isEmpty()) return failure(QorRepositoryStatus::AlreadyOpen);
        QorRepositoryResult result;
        auto file = SqliteStore::open(path, access, result);
        if (file != nullptr) result = _impl->repository.attach(std::move(file));
        if (access == QorRepositoryAccess::Copy) _impl->repository.keepInMemory();
        if (hasRepository()) _impl->vault.forget();
        return result;
    });
}

QorRepositoryResult QorEmbeddedPlatform::createRepository(const std::string& path) {
    return onFile([&] {
        if (hasRepository() || !_impl->repository.isEmpty()) return failure(QorRepositoryStatus::AlreadyOpen);
        QorRepositoryResult result;
        auto file = SqliteStore::create(path, result);
        if (file != nullptr) result = _impl->repository.attach(std::move(file));
        if (hasRepository()) _impl->vault.forget();
        return result;
    });
}

QorRepositoryResult QorEmbeddedPlatform::closeRepository() {
    return onFile([&] {
        if (!hasRepository()) return failure(QorRepositoryStatus::NotOpen);
        if (_impl->session.library != QorNoIdentifier)
            return failure(QorRepositoryStatus::AlreadyOpen, "a library of it is loaded");
        _impl->repository.detach();
        _impl->session.locks.forget();
        _impl->vault.forget();
        return QorRepositoryResult{};
    });
}

bool QorEmbeddedPlatform::hasRepository() const { return _impl->repository.file() != nullptr; }

bool QorEmbeddedPlatform::isRepositoryReadOnly() const {
    return hasRepository() && _impl->repository.file()->isReadOnly();
}

std::int64_t QorEmbeddedPlatform::repositoryGeneration() const {
    return hasRepository() ? _impl->repository.file()->generation() : 0;
}

QorRepositoryResult QorEmbeddedPlatform::verifyRepository() {
    return onFile([&] {
        if (!hasRepository()) return failure(QorRepositoryStatus::NotOpen);
        return Repository::verify(*_impl->repository.file());
    });
}

QorRepositoryResult QorEmbeddedPlatform::backUpRepository(const std::string& target) {
    return onFile([&] {
        if (!hasRepository()) return failure(QorRepositoryStatus::NotOpen);
        return _impl->repository.file()->backUp(target);
    });
}

const QorRepositoryResult& QorEmbeddedPlatform::lastProblem() const { return _impl->repository.lastProblem(); }

std::vector<QorLibraryLock> QorEmbeddedPlatform::libraryLocks() const {
    return Qor_Guarded("embedded", std::vector<QorLibraryLock>(), [&] {
        RepositoryStore* const file = _impl->repository.file();
        return file == nullptr ? std::vector<QorLibraryLock>() : file->locks().allLocks();
    });
}

std::vector<QorLibraryLock> QorEmbeddedPlatform::takenOverLocks() {
    RepositoryStore* const file = _impl->repository.file();
    return file == nullptr ? std::vector<QorLibraryLock>() : file->locks().takenOver();
}

QorRepositoryResult QorEmbeddedPlatform::breakLibraryLocks(QorIdentifier library) {
    return onFile([&] {
        RepositoryStore* const file = _impl->repository.file();
        if (file == nullptr) return failure(QorRepositoryStatus::NotOpen);
        if (file->isReadOnly()) return failure(QorRepositoryStatus::ReadOnly);
        const LibraryRow* const row = _impl->repository.meta().library(library);
        if (row == nullptr) return failure(QorRepositoryStatus::Missing, "there is no such library");
        if (!_impl->users.isAdministrator(_impl->users.current()))
            return failure(QorRepositoryStatus::NoPermission, "only an administrator may break a lock");
        const QorIdentifier all[] = {library, row->parts[0], row->parts[1]};
        return file->locks().breakLocks(all);
    });
}
