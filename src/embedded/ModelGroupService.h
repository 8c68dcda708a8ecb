// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "embedded/Repository.h"
#include "platform/QorCoreModelGroupManager.h"

namespace qor::embedded {

// The model groups as the contracts show them.
class ModelGroupService final : public QorModelGroupService {
public:
    explicit ModelGroupService(const Repository& repository) : _repository(repository) {}
    ~ModelGroupService() override;

    QorErrorCode subGroups(long modelGroup, ISortedSet<long>& groups, bool recursive) override;

private:
    const Repository& _repository;
};

}  // namespace qor::embedded
