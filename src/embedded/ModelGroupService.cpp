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

QorErrorCode ModelGroupService::modelGroupInfo(long modelGroup, SV::String& name, long& library) {
    name.Clear();
    library = QorNoIdentifier;
    return answered([&] {
        const GroupRow* const row = _repository.groups().group(narrow(modelGroup));
        if (row == nullptr) return QorErrorCode::NotFound;
        name = SV::String(_repository.text(row->name));
        library = row->library;
        return QorErrorCode::Ok;
    });
}

QorErrorCode ModelGroupService::setUserGroupPermission(long modelGroup, const QorUserGroupID& userGroup,
                                                       std::int32_t permission) {
    const QorErrorCode code =
        codeOf(_administration.setPermission(narrow(userGroup.value()), narrow(modelGroup), permission).error);
    return code == QorErrorCode::ValueRefused ? QorErrorCode::OutOfRange : code;
}

}  // namespace qor::embedded
