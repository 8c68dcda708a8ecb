// SPDX-License-Identifier: Apache-2.0
#include "modeltools/NamingClasses.h"

#include "frame/RepositoryLookup.h"
#include "modeltools/GeneratedName.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorModelTypeAttrHandler.h"

namespace qor::modeltools {

void forEachNamingClass(unsigned long modelType, const std::function<bool(long cls, long attribute)>& visit) {
    ISortedSet<long> classes;
    if (QorModelTypeAttrHandler::GetGlobal()->GetModelTypeVisibleClasses(modelType, classes) != QorErrorCode::Ok)
        return;
    for (const long cls : classes)
        if (const auto attribute = frame::findAttribute(cls, kNameGenAttribute); attribute && !visit(cls, *attribute))
            return;
}

ISortedSet<long> objectsOf(long model, long cls) {
    ISortedSet<long> objects;
    auto& repository = *QorCoreModelingManager::GetGlobal();
    if (repository.getAllInstancesOfClassAndSubClassInModel(model, cls, objects, true) != QorErrorCode::Ok)
        objects.removeAll();
    return objects;
}

}  // namespace qor::modeltools
