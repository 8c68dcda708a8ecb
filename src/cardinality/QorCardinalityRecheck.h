// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <memory>

#include "cardinality/QorCardinalityCompleteCheck.h"
#include "platform/ISortedSet.h"
#include "platform/QorExport.h"

class QorCardinalityHandler;

/// All breaches of one model, kept up to date while the model is edited: what QorCardinalityCompleteCheck would find,
/// at the cost of what has changed.
class QOR_API QorCardinalityRecheck {
public:
    /// The handler must outlive this object. After its rules have changed, call `checkModel` again.
    explicit QorCardinalityRecheck(const QorCardinalityHandler& handler);
    QorCardinalityRecheck(const QorCardinalityRecheck&) = delete;
    QorCardinalityRecheck& operator=(const QorCardinalityRecheck&) = delete;
    ~QorCardinalityRecheck();

    /// Checks the whole model and forgets any other. Takes 4 bytes for each object, and the breaches. False, after an
    /// internal error was shown, when the repository failed; nothing is known then.
    bool checkModel(long model) noexcept;

    /// Takes changes of the model into account. `objects`: those that were added, renamed or deleted, and both ends,
    /// former and present, of every relation that was deleted or got another end. `relations`: those that were added;
    /// their ends are looked up, and one that is gone again is passed over. Naming more than has changed does no harm.
    /// False, after an internal error was shown, when the repository failed: call it again with the same changes, or
    /// `checkModel`. O(relations of the objects, breaches of classes with a changed number of objects).
    bool recheck(const ISortedSet<long>& objects, const ISortedSet<long>& relations) noexcept;

    /// In the order of QorCardinalityCompleteCheck; false from the sink ends the visit.
    void visitBreaches(const QorCardinalityCompleteCheck::Sink& sink) const;
    [[nodiscard]] std::size_t numberOfBreaches() const noexcept;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
