// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <string_view>

#include "platform/QorSourceInterRefContainer.h"

namespace qor::modeltools {

/// Writes references into names.
class ReferenceFormat {
public:
    /// An empty pattern stands for the usual one of references to models, or to objects.
    ReferenceFormat(std::string_view pattern, bool toModels);
    [[nodiscard]] std::string textOf(const QorInterModRefTarget& reference) const;

private:
    std::string _pattern;
    bool _toModels;
};

}  // namespace qor::modeltools
