// SPDX-License-Identifier: Apache-2.0
#include "embedded/ModelTypeHandler.h"

#include "embedded/Answers.h"

namespace qor::embedded {

ModelTypeHandler::~ModelTypeHandler() = default;

QorErrorCode ModelTypeHandler::indexOf(QorIdentifier modelType, unsigned long& index) const {
    const MetaModel& meta = _repository.meta();
    const ModelTypeRow* const row = meta.modelType(modelType);
    if (row == nullptr || meta.libraryOf(modelType) != _library) return QorErrorCode::NotFound;
    index = row->index;
    return QorErrorCode::Ok;
}

QorErrorCode ModelTypeHandler::GetModelTypeIndexOfModel(long model, unsigned long& modelType) {
    modelType = ~0UL;
    const QorIdentifier id = narrow(model);
    if (_repository.models().model(id) == nullptr) return QorErrorCode::NotFound;
    return indexOf(_repository.models().modelTypeOf(id), modelType);
}

QorErrorCode ModelTypeHandler::GetModelTypeIndex(const SV::String& name, unsigned long& modelType) {
    modelType = ~0UL;
    return indexOf(_repository.meta().findModelType(_library, name.view()), modelType);
}

QorErrorCode ModelTypeHandler::GetModelTypeVisibleClasses(unsigned long modelType, ISortedSet<long>& classes) {
    classes.removeAll();
    return answered([&] {
        const std::vector<QorIdentifier>& types = _repository.meta().library(_library)->modelTypes;
        if (modelType >= types.size()) return QorErrorCode::OutOfRange;
        return give(classes, _repository.meta().modelType(types[modelType])->classes);
    });
}

}  // namespace qor::embedded
