// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <memory>

#include "embedded/LibraryLocks.h"
#include "embedded/ModelTypeHandler.h"
#include "platform/QorIdentifier.h"

namespace qor::embedded {

// Which library is loaded, its model-type handler, and who holds which library's lock.
struct LibrarySession {
    QorIdentifier library = QorNoIdentifier;
    QorIdentifier businessProcess = QorNoIdentifier;
    QorIdentifier workingEnvironment = QorNoIdentifier;
    std::unique_ptr<ModelTypeHandler> modelTypes;
    LibraryLocks locks;
};

}  // namespace qor::embedded
