// SPDX-License-Identifier: Apache-2.0
#include "modeltools/QorAttributeTransfer.h"

#include <algorithm>

#include "modeltools/AttributeTransfer.h"
#include "modeltools/internalErrors.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreUnitsOfWork.h"
#include "platform/QorGuard.h"

using namespace qor::modeltools;
using Outcome = QorTransferOutcome;

namespace {

QorCoreModelingManager& repository() { return *QorCoreModelingManager::GetGlobal(); }

bool isImpossible(const QorTransferEntry& entry) {
    return entry.outcome != Outcome::Changes && entry.outcome != Outcome::Same;
}

/// The source and what all its targets must share with it.
class TransferSurvey {
public:
    TransferSurvey(long model, long source) : _source(source), _transfer(source, false) {
        if (isFailure(repository().GetClassOfInstance(source, _cls)) ||
            isFailure(repository().getAllInstancesInModel(model, _inModel)))
            _failed = true;
    }

    /// Changes: the object can take part.
    [[nodiscard]] Outcome ofObject(long object) const {
        if (object == _source) return Outcome::IsSource;
        long cls = -1;
        if (_failed || isFailure(repository().GetClassOfInstance(object, cls))) return Outcome::Failed;
        if (_cls < 1 || cls != _cls) return Outcome::NotOfClass;
        return _inModel.contains(object) ? Outcome::Changes : Outcome::NotInModel;
    }

    [[nodiscard]] Outcome ofAttribute(long object, long attribute) const {
        if (attribute < 0) {
            const auto position = _transfer.positionFor(object);
            if (!position) return Outcome::NoPlaceForSize;
            return position->before == position->after ? Outcome::Same : Outcome::Changes;
        }
        switch (_transfer.compare(object, attribute)) {
            case AttributeTransfer::Comparison::Same:
                return Outcome::Same;
            case AttributeTransfer::Comparison::Different:
                return Outcome::Changes;
            case AttributeTransfer::Comparison::Absent:
                return Outcome::NoAttribute;
            default:
                return Outcome::Failed;
        }
    }

private:
    /// That there is no such thing is an answer.
    static bool isFailure(QorErrorCode code) { return code != QorErrorCode::Ok && code != QorErrorCode::NotFound; }

    long _source;
    long _cls = -1;
    bool _failed = false;
    ISortedSet<long> _inModel;
    AttributeTransfer _transfer;
};

}  // namespace

QorAttributeTransfer::QorAttributeTransfer() noexcept = default;
QorAttributeTransfer::~QorAttributeTransfer() = default;

bool QorAttributeTransfer::plan(long model, long source, const ISortedSet<long>& attributes,
                                const ISortedSet<long>& objects) noexcept {
    _entries.clear();
    const bool planned = Qor_Guarded(kTransferSource, false, [&] {
        _model = model;
        _source = source;
        const TransferSurvey survey(model, source);
        for (const long object : objects) {
            const Outcome ofObject = survey.ofObject(object);
            for (const long attribute : attributes)
                _entries.push_back({object, attribute,
                                    ofObject == Outcome::Changes ? survey.ofAttribute(object, attribute) : ofObject});
        }
        return true;
    });
    if (!planned) _entries.clear();
    return planned;
}

std::size_t QorAttributeTransfer::impossibleCount() const noexcept {
    return static_cast<std::size_t>(std::count_if(_entries.begin(), _entries.end(), isImpossible));
}

bool QorAttributeTransfer::carryOut(QorTransferMode mode) noexcept {
    if (mode == QorTransferMode::AllOrNothing && impossibleCount() != 0) return false;
    return Qor_Guarded(kTransferSource, false, [this] {
        QorUnitOfWork unit;
        if (!unit.isOpen()) return false;
        const AttributeTransfer transfer(_source, false);
        for (QorTransferEntry& entry : _entries) {
            if (entry.outcome != Outcome::Changes) continue;
            const bool written = entry.attribute < 0 ? transfer.copySize(_model, entry.object)
                                                     : transfer.copy(_model, entry.object, entry.attribute) !=
                                                           AttributeTransfer::Result::Failed;
            if (written) continue;
            entry.outcome = Outcome::Failed;
            return false;
        }
        return unit.commit() == QorErrorCode::Ok;
    });
}
