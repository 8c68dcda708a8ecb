// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <vector>

#include "platform/QorExport.h"
#include "platform/QorKexParser.h"
#include "platform/SvString.h"

/// Why an object gets a new name.
enum class QorNameReason : std::int32_t {
    DefaultName,   ///< it still has the name that the platform gives new objects
    SourceChanged  ///< it has the name that it was given last, and the value that names come from has changed
};

/// Why an object keeps its name.
enum class QorNameKept : std::int32_t {
    UpToDate,
    GivenByHand,
    NoNumberLeft,  ///< every number up to 9,999,998 is taken
};

/// An object that gets a new name.
struct QorNameChange {
    long object = -1;
    long cls = -1;  ///< the class whose rule names it; it may be one above the object's own
    SV::String oldName;
    SV::String newName;
    QorNameReason reason = QorNameReason::DefaultName;
    std::int32_t takenNumbers = 0;  ///< how many lower numbers others have
    long takenBy = -1;              ///< who has number 1, when it is taken
    bool cut = false;               ///< the name's base was longer than 240 bytes
};

/// Something that keeps a class's objects, or one object, from being named.
struct QorNameProblem {
    long cls = -1;
    long object = -1;         ///< -1 when it is the class's rule
    SV::String text;          ///< for people; empty for a failure of the repository
    QorKexPosition position;  ///< in the class's rule text
    long line = 0;            ///< for a failure of the repository: the line of the internal error that a run reports
};

/// What a run of QorNameGenerator would do to a model, without doing it. The names are exactly those that the run gives
/// when nothing else changes in between; only renamings that the repository refuses are not foreseen, nor computed
/// values that depend on other objects' names.
class QOR_API QorNamePlan {
public:
    explicit QorNamePlan(long model);
    ~QorNamePlan();

    /// Makes the plan afresh. False when memory ran out; the plan is then empty. Linear in the objects; nothing is
    /// changed and no event is raised.
    bool make() noexcept;

    /// In the order in which they would be carried out. An object that two classes name can stand in it twice.
    [[nodiscard]] const std::vector<QorNameChange>& changes() const noexcept { return _changes; }
    [[nodiscard]] const std::vector<QorNameProblem>& problems() const noexcept { return _problems; }
    [[nodiscard]] std::size_t keptCount(QorNameKept why) const noexcept { return _kept[static_cast<std::size_t>(why)]; }

private:
    void clear() noexcept;

    long _model;
    std::vector<QorNameChange> _changes;
    std::vector<QorNameProblem> _problems;
    std::size_t _kept[3] = {};
};
