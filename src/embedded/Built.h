// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "embedded/Repository.h"

namespace qor::embedded {

inline constexpr bool kOfManySteps = true;

// Changes the repository; memory is what identifiers are made of, and running out of it is running out of them.
template <class Operation>
QorBuildResult built(Repository& repository, Operation operation, bool ofManySteps = false) noexcept {
    try {
        return repository.change(operation, ofManySteps);
    } catch (...) {
        return refused(QorBuildError::NoIdentifiersLeft);
    }
}

}  // namespace qor::embedded
