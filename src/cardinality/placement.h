// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "cardinality/RuleReader.h"

/// What an editor asks before it creates something: would the maxima still hold? Nothing is marked or reported but
/// internal errors, after which the answer is no.
namespace qor::cardinality {

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
