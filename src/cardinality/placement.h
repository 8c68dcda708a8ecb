// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <functional>

#include "cardinality/QorCardinalityConnection.h"
#include "cardinality/RuleReader.h"

/// What an editor asks before it creates something: would the maxima still hold? Nothing is marked or reported but
/// internal errors, after which the answer is no.
namespace qor::cardinality {

/// Takes the maxima that a change meets, one by one.
using LimitVisitor = std::function<void(const QorConnectionLimit&)>;

/// One more object of a class, connected by a relation of `relationClass` with an object that is there. Without a
/// relation class or without an object, below 1, only the numbers of objects count.
struct NewObject {
    long model = -1;
    long cls = -1;
    long relationClass = -1;
    long object = -1;
    bool objectIsSource = false;
};
[[nodiscard]] bool isAllowed(const ClassRules& rules, const NewObject& wanted);
/// The maxima that the answer depends on; false after an internal error.
[[nodiscard]] bool visitLimits(const ClassRules& rules, const NewObject& wanted, const LimitVisitor& visit);

/// One more relation between two objects that are there.
struct NewRelation {
    long relationClass = -1;
    long source = -1;
    long target = -1;
};
[[nodiscard]] bool visitLimits(const ClassRules& rules, const NewRelation& wanted, const LimitVisitor& visit);

/// One relation between objects of two classes that have no relations yet.
struct RelatedClasses {
    long relationClass = -1;
    long source = -1;
    long target = -1;
};
void visitLimits(const ClassRules& rules, const RelatedClasses& wanted, const LimitVisitor& visit);

/// One more object of a class in the middle of a relation, which is replaced by one from its source to the new object
/// and one from there to its target.
struct NewObjectInBetween {
    long model = -1;
    long cls = -1;
    long relationClass = -1;
    long source = -1;
    long target = -1;
};
[[nodiscard]] bool isAllowed(const ClassRules& rules, const NewObjectInBetween& wanted);

/// How many relations of the class one object of the source class may have with objects of the target class; 65535
/// when nothing limits them.
[[nodiscard]] std::uint32_t relationSlots(const ClassRules& rules, long relationClass, long sourceClass,
                                          long targetClass);

}  // namespace qor::cardinality
