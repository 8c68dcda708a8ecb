// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <utility>
#include <vector>

#include "interchange/Fields.h"

namespace qor::interchange {

/// The keyword texts of a library file. Whoever reads them reports their errors; nobody reads those of a file with
/// other errors, which should not hide what else is wrong with it.
class KeywordTexts {
public:
    /// `what` begins what is said about the text.
    void add(NodeId text, std::string what) { _texts.emplace_back(text, std::move(what)); }
    void reportSyntaxErrors(Reading& reading) const;

private:
    std::vector<std::pair<NodeId, std::string>> _texts;
};

}  // namespace qor::interchange
