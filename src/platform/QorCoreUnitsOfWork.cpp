// SPDX-License-Identifier: Apache-2.0
#include "platform/QorCoreUnitsOfWork.h"

#include <utility>

#include "platform/QorCoreModelingManager.h"
#include "platform/QorGuard.h"

namespace {
constexpr const char* kSource = "unitofwork";
}

QorCoreUnitsOfWork::~QorCoreUnitsOfWork() = default;

QorUnitOfWork::QorUnitOfWork() noexcept
    : _units(Qor_Guarded(kSource, static_cast<QorCoreUnitsOfWork*>(nullptr), [] {
          auto* const units = QorCoreModelingManager::GetGlobal()->unitsOfWork();
          return units != nullptr && units->begin() == QorErrorCode::Ok ? units : nullptr;
      })) {}

QorUnitOfWork::~QorUnitOfWork() {
    if (_units != nullptr) _units->rollBack();
}

QorErrorCode QorUnitOfWork::commit() noexcept {
    auto* const units = std::exchange(_units, nullptr);
    if (units == nullptr) return QorErrorCode::Ok;
    return Qor_Guarded(kSource, QorErrorCode::Broken, [units] { return units->commit(); });
}
