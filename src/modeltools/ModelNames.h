// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <unordered_map>

namespace qor::modeltools {

/// Names and types of models, each asked for once; empty when the repository does not tell.
class ModelNames {
public:
    struct Names {
        std::string name;
        std::string type;
    };
    const Names& of(long model);

private:
    std::unordered_map<long, Names> _known;
};

}  // namespace qor::modeltools
