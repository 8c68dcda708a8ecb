// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "embedded/Answers.h"
#include "embedded/Repository.h"
#include "platform/QorCoreUnitsOfWork.h"

namespace qor::embedded {

class UnitsOfWork final : public QorCoreUnitsOfWork {
public:
    explicit UnitsOfWork(Repository& repository) : _repository(repository) {}
    ~UnitsOfWork() override;

    QorErrorCode begin() override;
    QorErrorCode commit() override;
    void rollBack() noexcept override { _repository.rollBackUnit(); }

private:
    Repository& _repository;
};

}  // namespace qor::embedded
