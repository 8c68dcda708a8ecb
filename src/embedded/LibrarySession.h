// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <memory>

#include "embedded/ModelTypeHandler.h"
#include "platform/QorIdentifier.h"
#include "platform/QorUserID.h"

namespace qor::embedded {

// Which library is loaded, its model-type handler, and who holds which library's lock.
struct LibrarySession {
    QorIdentifier library = QorNoIdentifier;
    QorIdentifier businessProcess = QorNoIdentifier;
    QorIdentifier workingEnvironment = QorNoIdentifier;
    std::unique_ptr<ModelTypeHandler> modelTypes;
    std::map<QorIdentifier, QorUserID> locks;

    [[nodiscard]] QorUserID holderOf(QorIdentifier id) const {
        const auto lock = locks.find(id);
        return lock == locks.end() ? QorUserID() : lock->second;
    }
};

}  // namespace qor::embedded
