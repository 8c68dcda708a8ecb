// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "embedded/Repository.h"
#include "platform/QorModelTypeAttrHandler.h"

namespace qor::embedded {

// The model types of one application library, numbered in order of adding.
class ModelTypeHandler final : public QorModelTypeAttrHandler {
public:
    ModelTypeHandler(const Repository& repository, QorIdentifier library)
        : _repository(repository), _library(library) {}
    ~ModelTypeHandler() override;

    [[nodiscard]] bool isError() const override { return false; }
    [[nodiscard]] SV::String getErrorText() const override { return {}; }

    QorErrorCode GetModelTypeIndexOfModel(long model, unsigned long& modelType) override;
    QorErrorCode GetModelTypeIndex(const SV::String& name, unsigned long& modelType) override;
    QorErrorCode GetModelTypeVisibleClasses(unsigned long modelType, ISortedSet<long>& classes) override;

private:
    [[nodiscard]] QorErrorCode indexOf(QorIdentifier modelType, unsigned long& index) const;

    const Repository& _repository;
    QorIdentifier _library;
};

}  // namespace qor::embedded
