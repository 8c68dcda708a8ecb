// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <vector>

#include "cli/Workspace.h"
#include "interchange/QorImport.h"

namespace qor::cli {

/// Something in a text about rules that reads as nothing, or as a number that nobody wrote.
struct RuleOversight {
    QorIdentifier cls = QorNoIdentifier;  ///< whose text it is; none for a text of the library
    QorDiagnostic warning;
};

/// All of the workspace's library, with their places in its file.
[[nodiscard]] std::vector<RuleOversight> ruleOversights(Workspace& workspace);

}  // namespace qor::cli
