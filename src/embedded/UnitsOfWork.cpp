// SPDX-License-Identifier: Apache-2.0
#include "embedded/UnitsOfWork.h"

namespace qor::embedded {

UnitsOfWork::~UnitsOfWork() = default;

QorErrorCode UnitsOfWork::begin() {
    if (_repository.isUnitOpen()) return QorRepositoryCode::UnitOpen;
    return _repository.beginUnit() ? QorErrorCode::Ok : QorRepositoryCode::NotStored;
}

QorErrorCode UnitsOfWork::commit() {
    if (!_repository.isUnitOpen()) return QorErrorCode::NotFound;
    return answered([&] { return _repository.commitUnit() ? QorErrorCode::Ok : QorRepositoryCode::NotStored; });
}

}  // namespace qor::embedded
