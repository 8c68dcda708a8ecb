// SPDX-License-Identifier: Apache-2.0
#include "simmap/resetValue.h"

#include "platform/QorCoreModelingManager.h"

namespace qor::simmap {

namespace {
constexpr const char* kNoTime = "00:000:00:00:00";
}

const char* resetText(QorCoreAttributeType type) {
    switch (type) {
        case QorCoreAttributeType::Integer:
        case QorCoreAttributeType::Floating:
            return "0";
        case QorCoreAttributeType::Time:
            return kNoTime;
        default:
            return "";
    }
}

QorErrorCode writeReset(long model, long object, long attribute, QorCoreAttributeType type) {
    auto& repository = *QorCoreModelingManager::GetGlobal();
    switch (type) {
        case QorCoreAttributeType::Integer:
            return repository.setAttributeValue(model, object, attribute, 0L, false);
        case QorCoreAttributeType::Floating:
            return repository.setAttributeValue(model, object, attribute, 0.0, false);
        default:
            return repository.setAttributeValue(model, object, attribute, resetText(type), false);
    }
}

}  // namespace qor::simmap
