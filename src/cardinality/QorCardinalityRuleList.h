// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <vector>

#include "cardinality/QorCardinalityCompleteCheck.h"
#include "cardinality/QorClassCardinality.h"
#include "platform/QorExport.h"

/// The rules of a class one by one.
class QOR_API QorCardinalityRuleList {
public:
    /// Every key that a text has written for the class and that is in force: limits of the class, then by relation
    /// class, outgoing before incoming, those of the relation class and of single other classes. A key that has lowered
    /// or raised other limits stands once. O(result). Throws when memory runs out.
    static std::vector<QorCardinalityRule> of(const QorClassCardinality& rules);
};
