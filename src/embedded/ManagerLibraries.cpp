// SPDX-License-Identifier: Apache-2.0
#include "embedded/Answers.h"
#include "embedded/ModelingManager.h"
#include "platform/QorEventListener.h"
#include "platform/QorLibraryHandlers.h"

namespace qor::embedded {

namespace {

constexpr QorEventType kLoadEvents[] = {QorEventType::LibraryLoaded, QorEventType::LibraryLoadedCardinality,
                                        QorEventType::LibraryLoadedSimMapping};

}  // namespace

bool ModelingManager::isLibrary(QorIdentifier id) const {
    const QorThingKind kind = _repository.kindOf(id);
    return kind == QorThingKind::ApplicationLibrary || kind == QorThingKind::LibraryPart;
}

bool ModelingManager::IsLibraryLoaded(long library) {
    const QorIdentifier id = narrow(library);
    return isLibrary(id) && _repository.applicationLibraryOf(id) == _session.library;
}

QorErrorCode ModelingManager::getAttachedLibraries(long library, long& first, long& second) {
    first = second = -1;
    const LibraryRow* const row = _repository.meta().library(narrow(library));
    if (row == nullptr) return QorErrorCode::NotFound;
    first = row->parts[0];
    second = row->parts[1];
    return QorErrorCode::Ok;
}

QorErrorCode ModelingManager::getAppLibraryName(long library, char*& name) {
    name = nullptr;
    return answered([&] {
        const QorIdentifier id = narrow(library);
        if (_repository.meta().library(id) == nullptr) return QorErrorCode::NotFound;
        return give(name, _repository.nameOf(id));
    });
}

QorErrorCode ModelingManager::getAppLibraryName(char*& name) { return getAppLibraryName(_session.library, name); }

void ModelingManager::raiseLoadEvent(QorEventType type) const {
    if (type == QorEventType::LibraryLoadedCardinality)
        Qor_RaiseEvent(QorLibraryEvent(type, _session.businessProcess, _session.workingEnvironment));
    else
        Qor_RaiseEvent(QorLibraryEvent(type, _session.library));
}

QorErrorCode ModelingManager::LoadApplicationLibrary(long library, bool lockIt) {
    return answered([&] {
        const QorIdentifier id = narrow(library);
        if (_session.library != QorNoIdentifier)
            if (const QorErrorCode code = discardCompleteLibrary(_session.library); code != QorErrorCode::Ok)
                return code;
        const LibraryRow* const row = _repository.meta().library(id);
        if (row == nullptr) return QorErrorCode::NotFound;
        _repository.models().layOut();  // before the locks are taken: memory may run out
        const QorIdentifier all[] = {id, row->parts[0], row->parts[1]};
        if (lockIt)
            if (const QorErrorCode code = lockAll(all, QorDBLockModeType::Exclusive); code != QorErrorCode::Ok)
                return code;
        _session.library = id;
        _session.businessProcess = row->parts[0];
        _session.workingEnvironment = row->parts[1];
        for (const QorEventType type : kLoadEvents) raiseLoadEvent(type);
        return QorErrorCode::Ok;
    });
}

QorErrorCode ModelingManager::discardCompleteLibrary(long library) {
    return answered([&] {
        const QorIdentifier id = narrow(library);
        if (_repository.meta().library(id) == nullptr || id != _session.library) return QorErrorCode::NotFound;
        const QorIdentifier all[] = {id, _session.businessProcess, _session.workingEnvironment};
        (void)unlockAll(all);  // what somebody else holds stays with them
        _session.modelTypes.reset();
        _session.library = _session.businessProcess = _session.workingEnvironment = QorNoIdentifier;
        Qor_RaiseEvent(QorLibraryEvent(QorEventType::LibraryDiscarded, id));
        return QorErrorCode::Ok;
    });
}

// The facets of this repository are its indexes and the order in which relations lie.
QorErrorCode ModelingManager::updateFacets() {
    return answered([&] {
        _repository.models().layOut();
        return QorErrorCode::Ok;
    });
}

QorErrorCode ModelingManager::initLibraryHandlers(bool all) {
    return answered([&] {
        if (_session.library == QorNoIdentifier) return QorErrorCode::NotFound;
        if (_session.modelTypes == nullptr)
            _session.modelTypes = std::make_unique<ModelTypeHandler>(_repository, _session.library);
        return Qor_RenewLibraryHandlers([&](QorEventType type) { raiseLoadEvent(type); }, all);
    });
}

bool ModelingManager::isLibraryLocked(long library, QorUserID& holder) {
    holder = QorUserID();
    return Qor_Guarded("embedded", false, [&] {
        QorLibraryLock lock;
        const std::string& user = _users.currentName();
        if (!_session.locks.find(narrow(library), user, _repository.file(), lock)) return false;
        if (!lock.user.empty()) holder = _users.identify(lock.user);
        return true;
    });
}

QorErrorCode ModelingManager::lockAll(std::span<const QorIdentifier> libraries, QorDBLockModeType mode) {
    QorRepositoryResult problem;
    const QorErrorCode code = _session.locks.take(libraries, mode == QorDBLockModeType::Exclusive, _users.currentName(),
                                                  _repository.file(), problem);
    if (code == QorRepositoryCode::NotStored) _repository.noteProblem(std::move(problem));
    return code;
}

QorErrorCode ModelingManager::unlockAll(std::span<const QorIdentifier> libraries) {
    return _session.locks.release(libraries, _users.currentName(), _repository.file());
}

// Another process's short write is waited for in any case.
QorErrorCode ModelingManager::lockLibrary(long library, bool, QorDBLockModeType mode) {
    return answered([&] {
        const QorIdentifier id = narrow(library);
        if (!isLibrary(id)) return QorErrorCode::NotFound;
        if (mode != QorDBLockModeType::Exclusive && mode != QorDBLockModeType::Shared) return QorErrorCode::OutOfRange;
        return lockAll({&id, 1}, mode);
    });
}

QorErrorCode ModelingManager::unlockLibrary(long library) {
    return answered([&] {
        const QorIdentifier id = narrow(library);
        return isLibrary(id) ? unlockAll({&id, 1}) : QorErrorCode::NotFound;
    });
}

}  // namespace qor::embedded
