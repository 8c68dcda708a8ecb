// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/ISortedSet.h"
#include "platform/QorKexParser.h"
#include "simmap/MappingErrors.h"

namespace qor::simmap {

struct ClassSide;

/// Adds the classes in the parser's current element to those that may be simulated.
class ClassesRecord {
public:
    ClassesRecord(const QorKexParser& parser, MappingErrors errors, bool continueOnError)
        : _parser(parser), _errors(errors), _tolerance(continueOnError) {}

    /// Returns QorSimCode.
    int read(ISortedSet<long>& businessProcessClasses, ISortedSet<long>& workingEnvironmentClasses);

private:
    int readSide(const ClassSide& side, ISortedSet<long>& classes);

    const QorKexParser& _parser;
    MappingErrors _errors;
    Tolerance _tolerance;
};

/// Every class of the library part that can have objects; false when the repository fails.
[[nodiscard]] bool allClasses(long part, ISortedSet<long>& classes);

}  // namespace qor::simmap
