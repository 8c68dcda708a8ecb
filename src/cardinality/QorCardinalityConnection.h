// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <vector>

#include "cardinality/QorCardinalityCompleteCheck.h"
#include "platform/QorExport.h"

class QorCardinalityHandler;

/// Where a limit counts.
enum class QorConnectionPlace : std::int32_t { Source, Target, Model };

/// A maximum that a connection has to keep, with the count that there is and what the connection adds to it (a relation
/// of an object to itself adds two to the total).
struct QorConnectionLimit {
    QorCardinalityRule rule;
    QorConnectionPlace place = QorConnectionPlace::Source;
    std::uint32_t present = 0;
    std::uint32_t added = 1;

    /// How many such connections the maximum still allows.
    [[nodiscard]] QOR_API std::uint32_t slots() const noexcept;
};

/// Whether something may be connected, and why.
struct QorConnectionAdvice {
    bool allowed = false;
    /// How many such connections there may still be, up to 65535, which means that nothing limits them.
    std::uint32_t slots = 0;
    /// All maxima that count the connection: at the source, at the target, then numbers of objects. Those without slots
    /// are what refuses; when each of them is raised, or its count lowered, by enough, the connection is allowed.
    std::vector<QorConnectionLimit> limits;
};

/// Explains, before anything is drawn, whether the maxima of the rules allow it. While the handler's checks are off all
/// is allowed. Whether the relation class fits the classes at all is the repository's to say. Nothing is marked.
class QOR_API QorCardinalityConnection {
public:
    /// The handler must outlive this object.
    explicit QorCardinalityConnection(const QorCardinalityHandler& handler);
    ~QorCardinalityConnection();

    /// A relation between objects of two classes. Allowed when `checkRelateClasses` says so, with the slots of
    /// `getRelationSlotCount`, which look at the limits towards single classes alone: where a wider limit has no slots
    /// either, it is among the limits all the same.
    QorConnectionAdvice betweenClasses(long relationClass, long sourceClass, long targetClass) const noexcept;
    /// One more relation between two objects. Not allowed, without limits, after an internal error.
    /// O(relations of the objects).
    QorConnectionAdvice betweenObjects(long relationClass, long source, long target) const noexcept;
    /// One more object of the class, connected with one that is there; as `isNewObjectAllowed` answers.
    QorConnectionAdvice withNewObject(long model, long cls, long relationClass, long object,
                                      bool objectIsSource) const noexcept;

private:
    const QorCardinalityHandler& _handler;
};
