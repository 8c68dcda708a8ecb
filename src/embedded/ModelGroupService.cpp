// SPDX-License-Identifier: Apache-2.0
#include "embedded/ModelGroupService.h"

#include "embedded/Answers.h"

namespace qor::embedded {

ModelGroupService::~ModelGroupService() = default;

QorErrorCode ModelGroupService::subGroups(long modelGroup, ISortedSet<long>& groups, bool recursive) {
    groups.removeAll();
    return answered([&] {
        const ModelGroups& all = _repository.groups();
        const QorIdentifier id = narrow(modelGroup);
        if (all.group(id) == nullptr) return QorErrorCode::NotFound;
        return give(groups, recursive ? all.groupsBelow(id) : all.groupsIn(id));
    });
}

}  // namespace qor::embedded
