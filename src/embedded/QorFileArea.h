// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "embedded/QorRepositoryFile.h"
#include "platform/QorExport.h"

/// What was done to the chain that seals the file area.
enum class QorTampering : std::int32_t {
    None = 0,
    Changed,     ///< the entry is not what was sealed
    Removed,     ///< entries are missing here, `count` of them
    Swapped,     ///< what belongs here stands at `other`
    Inserted,    ///< the entry does not belong here; a copy of entry `other`, unless that is 0
    NotSealed,   ///< the entry has no seal
    Cut,         ///< the last `count` entries are missing
    EndChanged,  ///< the noted end of the chain is not what was written: entries may be missing behind the last one
    Resealed,    ///< fits the key and not the verification key: the work of somebody who has the key
    RolledBack,  ///< does not lead to the head that was noted before: an older copy, or another history
    FileList,    ///< the list of files does not show what the chain says: names, or where a file begins
};

/// Which keys and heads a check had, and the first thing that is wrong.
struct QOR_API QorSealReport {
    QorRepositoryResult result;  ///< Ok when the chain could be read to its end, whatever was found
    QorTampering tampering = QorTampering::None;
    std::int64_t sequence = 0;  ///< of the first bad entry
    std::string file;           ///< that it changes, by its name then; empty when that cannot be told
    std::int64_t line = 0;      ///< which part of the file that was: with a log, the line. 0: none, or not to be told
    std::int64_t other = 0;
    std::int64_t count = 0;

    std::int64_t entries = 0;     ///< that were read
    std::int64_t lostWrites = 0;  ///< that could not be written, as the chain says
    std::string head;             ///< to be noted, when nothing is wrong
    [[nodiscard]] bool isSound() const { return result.ok() && tampering == QorTampering::None; }
};

/// The file area of the repository that is open ("db:\..."), beside what QorFileManager offers. Every change of a file
/// is an entry of one chain: it cannot be changed, left out or put elsewhere without the key, and with the key not
/// without the verification key, which is told once.
class QOR_API QorFileArea {
public:
    virtual ~QorFileArea();

    /// The file that holds the key; empty without a repository file, where the key is in memory.
    [[nodiscard]] virtual std::string keyFile() = 0;
    /// Makes key and chain when there are none. NoKey: the key file is missing, of another repository, or not safe.
    virtual QorRepositoryResult prepare() = 0;
    /// The verification key, once, if the chain was begun since the repository was opened. Else empty.
    [[nodiscard]] virtual std::string takeVerificationKey() = 0;
    /// What `verify` compares with later: where the chain ends now.
    virtual QorRepositoryResult readHead(std::string& head) = 0;
    /// Reads the whole chain. Empty texts are not checked against; those that are no key and no head give NoKey. O(n).
    [[nodiscard]] virtual QorSealReport verify(std::string_view verificationKey, std::string_view notedHead) = 0;
    /// Gives a file another name, as an entry of the chain. Missing: no such file; Exists: one of the other name is
    /// there. NotARepository: not a name for a file of the area.
    virtual QorRepositoryResult rename(std::string_view name, std::string_view newName) = 0;

    /// How many times closing a written file failed since the repository was opened, and why the last operation on the
    /// area or the key did.
    [[nodiscard]] virtual std::int64_t lostWrites() const = 0;
    [[nodiscard]] virtual const QorRepositoryResult& lastProblem() const = 0;
};
