// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "embedded/Announcements.h"
#include "embedded/Answers.h"
#include "embedded/Repository.h"
#include "platform/QorCoreUnitsOfWork.h"

namespace qor::embedded {

class UnitsOfWork final : public QorCoreUnitsOfWork {
public:
    UnitsOfWork(Repository& repository, Announcements& announcements)
        : _repository(repository), _announcements(announcements) {}
    ~UnitsOfWork() override;

    QorErrorCode begin() override;
    QorErrorCode commit() override;
    void rollBack() noexcept override;

private:
    [[nodiscard]] Repository::Touched touched() const noexcept;
    void announceRollBack(const Repository::Touched& touched) noexcept;

    Repository& _repository;
    Announcements& _announcements;
};

}  // namespace qor::embedded
