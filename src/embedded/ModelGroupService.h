// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "embedded/Repository.h"
#include "embedded/UserAdministration.h"
#include "platform/QorCoreModelGroupManager.h"

namespace qor::embedded {

// The model groups as the contracts show them.
class ModelGroupService final : public QorModelGroupService {
public:
    ModelGroupService(const Repository& repository, UserAdministration& administration)
        : _repository(repository), _administration(administration) {}
    ~ModelGroupService() override;

    QorErrorCode subGroups(long modelGroup, ISortedSet<long>& groups, bool recursive) override;
    QorErrorCode modelGroupInfo(long modelGroup, SV::String& name, long& library) override;
    QorErrorCode setUserGroupPermission(long modelGroup, const QorUserGroupID& userGroup,
                                        std::int32_t permission) override;

private:
    const Repository& _repository;
    UserAdministration& _administration;
};

}  // namespace qor::embedded
