// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"

/// How an operation on a repository file ended.
enum class QorRepositoryStatus : std::int32_t {
    Ok = 0,
    Missing,         ///< no such file, or no such folder
    Exists,          ///< a file of that name is there already
    NotARepository,  ///< another kind of file, or a folder
    NewerSchema,     ///< written by a later version of this program
    Damaged,         ///< something in it is not what was written; `findings` names it
    Locked,          ///< another process is writing
    ChangedByOther,  ///< another process has written since the file was opened; open it again
    ReadOnly,        ///< open for reading only
    NoPermission,
    NoRoom,       ///< the disk is full
    ReadFailed,   ///< the device did not give the data
    WriteFailed,  ///< the device did not take the data
    NoMemory,
    NotOpen,      ///< no repository file is open
    AlreadyOpen,  ///< the platform has a repository file, or content of its own
    UnitOpen,     ///< a unit of work is open
    NoKey,        ///< the key for ciphering and sealing cannot be used
};

struct [[nodiscard]] QorRepositoryResult {
    QorRepositoryStatus status = QorRepositoryStatus::Ok;
    std::string text;                   ///< what went wrong, in words, without the file's name
    std::vector<std::string> findings;  ///< each thing that is damaged, at most 1,000
    [[nodiscard]] bool ok() const { return status == QorRepositoryStatus::Ok; }
};

enum class QorRepositoryAccess : std::int32_t {
    ReadWrite,
    ReadOnly,
    Copy,  ///< takes everything into memory and closes the file again; what is changed then stays in memory
};

/// What operations that change the repository give, beside the codes of the contracts, when a repository file is open.
namespace QorRepositoryCode {
/// The file did not take what was to be written; nothing of it is kept. QorEmbeddedPlatform::lastProblem() says why.
inline constexpr auto NotStored = static_cast<QorErrorCode>(-10);
/// A unit of work is open already.
inline constexpr auto UnitOpen = static_cast<QorErrorCode>(-11);
/// The current user may not change this (QorUserAdministration.h). Also without a file.
inline constexpr auto NotAllowed = static_cast<QorErrorCode>(-12);
}  // namespace QorRepositoryCode

/// The status in words ("the disk is full").
[[nodiscard]] QOR_API const char* Qor_RepositoryStatusText(QorRepositoryStatus status);
