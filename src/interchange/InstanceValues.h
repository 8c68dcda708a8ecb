// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "interchange/Building.h"

namespace qor::interchange {

/// Gives an object, relation or record row of the class the values that a document has for it: a mapping of attributes
/// to texts, to lists for enumeration lists, and to lists of such mappings for the rows of records. What is wrong is
/// reported.
void setInstanceValues(Building& building, QorIdentifier instance, QorIdentifier cls, NodeId values);

/// False, after the fault was reported at its place in the file, when the text of the node is no expression. The empty
/// text passes: it stands for no expression.
bool checkExpression(Building& building, NodeId node);

/// A warning for each attribute that an expression names and the class or relation class has not.
void warnOfUnknownAttributes(Building& building, QorIdentifier owner, NodeId expression);

}  // namespace qor::interchange
