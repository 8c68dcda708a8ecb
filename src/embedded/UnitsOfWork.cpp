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
    const Repository::Touched before = touched();
    const QorErrorCode code =
        answered([&] { return _repository.commitUnit() ? QorErrorCode::Ok : QorRepositoryCode::NotStored; });
    if (code != QorErrorCode::Ok) announceRollBack(before);
    return code;
}

void UnitsOfWork::rollBack() noexcept {
    if (!_repository.isUnitOpen()) return;
    const Repository::Touched before = touched();
    _repository.rollBackUnit();
    announceRollBack(before);
}

// Without memory to tell them apart, all models count as touched: whoever keeps answers forgets them all.
Repository::Touched UnitsOfWork::touched() const noexcept {
    return Qor_Guarded("embedded", Repository::Touched{true, {}}, [&] { return _repository.touchedByUnit(); });
}

void UnitsOfWork::announceRollBack(const Repository::Touched& touched) noexcept {
    if (touched.models) _announcements.modelsRestored();
    for (const QorIdentifier model : touched.references) _announcements.referencesChanged(model);
}

}  // namespace qor::embedded
