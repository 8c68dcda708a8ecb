// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <string_view>

#include "cardinality/QorCardinalityCompleteCheck.h"
#include "cli/CheckReport.h"

namespace qor::cli {

/// A breach by names, which stay what they are from run to run. Views hold until the repository next changes.
struct BreachName {
    std::string_view model;
    std::string_view version;
    std::string_view cls;       ///< of the object that breaks the rule, or the class that does
    std::string_view object;    ///< empty for a rule about a number of objects
    std::string_view sourceId;  ///< of the object in its file; mostly empty
    std::string_view ruleClass;
    std::string_view key;
    std::string_view relation;    ///< empty for a limit of the class itself
    std::string_view otherClass;  ///< empty when the rule names none

    /// One text for all of it that two different breaches do not share.
    [[nodiscard]] std::string joined() const;
};

[[nodiscard]] BreachName nameOf(const CheckedModel& model, const QorCardinalityBreach& breach);

}  // namespace qor::cli
