// SPDX-License-Identifier: Apache-2.0
// How the embedded platform answers through the contracts.
#pragma once
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "embedded/QorRepositoryBuilder.h"
#include "embedded/QorRepositoryFile.h"
#include "platform/ISortedSet.h"
#include "platform/QorErrorCode.h"
#include "platform/QorGuard.h"
#include "platform/QorIdentifier.h"

namespace qor::embedded {

// No identifier beyond 32 bits stands for anything.
[[nodiscard]] constexpr QorIdentifier narrow(long identifier) {
    return Qor_NarrowIdentifier(identifier).value_or(QorNoIdentifier);
}

// Runs an operation of a contract; what it throws becomes a code.
template <class Operation>
QorErrorCode answered(Operation operation) noexcept {
    return Qor_Guarded("embedded", QorErrorCode::Broken, operation);
}

// Runs an operation on the files of a repository; what it throws is a lack of memory.
template <class Operation>
QorRepositoryResult onFile(Operation operation) noexcept {
    try {
        return operation();
    } catch (...) {
        return {QorRepositoryStatus::NoMemory, {}, {}};
    }
}

// Fills an output, and gives Ok. An output is touched only when nothing can fail any more.
inline QorErrorCode give(char*& output, std::string_view text) {
    std::unique_ptr<char[]> copy(new char[text.size() + 1]);
    if (!text.empty()) std::memcpy(copy.get(), text.data(), text.size());
    copy[text.size()] = '\0';
    output = copy.release();
    return QorErrorCode::Ok;
}

inline QorErrorCode give(long& output, QorIdentifier id) {
    output = id;
    return QorErrorCode::Ok;
}

inline QorErrorCode give(ISortedSet<long>& output, std::vector<long> ids) {
    output.assign(std::move(ids));
    return QorErrorCode::Ok;
}

inline QorErrorCode give(ISortedSet<long>& output, const std::vector<QorIdentifier>& ids) {
    return give(output, std::vector<long>(ids.begin(), ids.end()));
}

// The identifier that a search found, or NotFound.
inline QorErrorCode giveFound(long& output, QorIdentifier id) {
    if (id == QorNoIdentifier) return QorErrorCode::NotFound;
    return give(output, id);
}

[[nodiscard]] constexpr QorErrorCode codeOf(QorBuildError error) {
    switch (error) {
        case QorBuildError::None:
            return QorErrorCode::Ok;
        case QorBuildError::UnknownIdentifier:
        case QorBuildError::AttributeDoesNotBelong:
            return QorErrorCode::NotFound;
        case QorBuildError::EmptyName:
        case QorBuildError::NameRefused:
        case QorBuildError::DuplicateName:
        case QorBuildError::ValueRefused:
            return QorErrorCode::ValueRefused;
        case QorBuildError::NoIdentifiersLeft:
            return QorErrorCode::Broken;
        case QorBuildError::NotStored:
            return QorRepositoryCode::NotStored;
        case QorBuildError::NotAllowed:
        case QorBuildError::LastAdministrator:
            return QorRepositoryCode::NotAllowed;
        default:
            return QorErrorCode::OutOfRange;
    }
}

inline std::string_view textOrEmpty(const char* text) { return text ? std::string_view(text) : std::string_view(); }

}  // namespace qor::embedded
