// SPDX-License-Identifier: Apache-2.0
#include "support/FailingRepository.h"

#include <algorithm>

void CallRecord::fail(std::string_view operation, QorErrorCode code, int nth) {
    _failures.insert_or_assign(std::string(operation), Failure{code, nth});
}

int CallRecord::count(std::string_view operation) const {
    return static_cast<int>(std::count(_order.begin(), _order.end(), operation));
}

QorErrorCode CallRecord::note(std::string_view operation) {
    _order.emplace_back(operation);
    const auto failure = _failures.find(operation);
    if (failure == _failures.end()) return QorErrorCode::Ok;
    if (failure->second.left == 0) return failure->second.code;
    if (--failure->second.left > 0) return QorErrorCode::Ok;
    const QorErrorCode code = failure->second.code;
    _failures.erase(failure);
    return code;
}

/// The model-type handler of the wrapped repository, seen through the record.
class FailingRepository::ModelTypes final : public QorModelTypeAttrHandler {
public:
    ModelTypes(CallRecord& record, QorCoreModelingManager& wrapped) : _record(record), _wrapped(wrapped) {}

    [[nodiscard]] bool isError() const override { return _wrapped.modelTypeHandler()->isError(); }
    [[nodiscard]] SV::String getErrorText() const override { return _wrapped.modelTypeHandler()->getErrorText(); }
    QorErrorCode GetModelTypeIndexOfModel(long model, unsigned long& modelType) override {
        return qor::test::passed(
            _record, "GetModelTypeIndexOfModel",
            [&] { return _wrapped.modelTypeHandler()->GetModelTypeIndexOfModel(model, modelType); }, model, modelType);
    }
    QorErrorCode GetModelTypeIndex(const SV::String& name, unsigned long& modelType) override {
        return qor::test::passed(
            _record, "GetModelTypeIndex",
            [&] { return _wrapped.modelTypeHandler()->GetModelTypeIndex(name, modelType); }, name, modelType);
    }
    QorErrorCode GetModelTypeVisibleClasses(unsigned long modelType, ISortedSet<long>& classes) override {
        return qor::test::passed(
            _record, "GetModelTypeVisibleClasses",
            [&] { return _wrapped.modelTypeHandler()->GetModelTypeVisibleClasses(modelType, classes); }, modelType,
            classes);
    }

private:
    CallRecord& _record;
    QorCoreModelingManager& _wrapped;
};

FailingRepository::FailingRepository(QorCoreModelingManager& wrapped)
    : _wrapped(wrapped), _modelTypes(std::make_unique<ModelTypes>(record, wrapped)) {}

FailingRepository::~FailingRepository() = default;

QorModelTypeAttrHandler* FailingRepository::modelTypeHandler() {
    if (_ownHandler != nullptr) return _ownHandler;
    return _wrapped.modelTypeHandler() != nullptr ? _modelTypes.get() : nullptr;
}
