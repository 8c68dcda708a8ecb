// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <vector>

#include "cardinality/QorCardinalityDefinitionError.h"
#include "cardinality/QorCardinalityMap.h"
#include "cardinality/QorClassCardinality.h"
#include "platform/SvString.h"

namespace qor::cardinality {

using ClassRules = QorCardinalityMap<QorClassCardinality>;

/// Where errors of rule texts go: into the text that the user sees, and beside it with their places.
struct DefinitionErrors {
    SV::String& text;
    std::vector<QorCardinalityDefinitionError>& list;
};

/// Reads rule texts into the rule store. What was stored before an error stays.
class RuleReader {
public:
    RuleReader(ClassRules& rules, DefinitionErrors errors) : _rules(rules), _errors(errors) {}

    /// The texts of all classes of a library that can have objects, also behind one with errors. False when any of
    /// them had an error or the repository failed.
    bool readLibrary(long library);
    /// One class's rules from the given text, or from the class's own when `text` is null.
    bool readClass(long library, long cls, const char* text);

private:
    ClassRules& _rules;
    DefinitionErrors _errors;
};

/// When the checks run by themselves.
struct AutomaticChecks {
    bool beforeSave = false;
    bool afterModelingAction = false;
};

/// As the library says; neither when its text cannot be read.
[[nodiscard]] AutomaticChecks readAutomaticChecks(long library);

}  // namespace qor::cardinality
