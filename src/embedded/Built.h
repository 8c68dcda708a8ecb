// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "embedded/Repository.h"

namespace qor::embedded {

inline constexpr bool kOfManySteps = true;

// Memory is what identifiers are made of, and running out of it is running out of them.
template <class Operation>
QorBuildResult built(Operation operation) noexcept {
    try {
        return operation();
    } catch (...) {
        return refused(QorBuildError::NoIdentifiersLeft);
    }
}

// Changes the repository.
template <class Operation>
QorBuildResult built(Repository& repository, Operation operation, bool ofManySteps = false) noexcept {
    return built([&] { return repository.change(operation, ofManySteps); });
}

}  // namespace qor::embedded
