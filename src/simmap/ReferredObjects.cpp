// SPDX-License-Identifier: Apache-2.0
#include "simmap/ReferredObjects.h"

#include "platform/QorCoreModelingManager.h"
#include "platform/QorModelTypeAttrHandler.h"
#include "simmap/ReadinessQueries.h"

namespace qor::simmap {

namespace {

/// The type that stands for all where nobody numbers model types.
constexpr unsigned long kAnyType = ~0ul;

}  // namespace

ReferredObjects::ReferredObjects(const ISortedSet<long>& sources) {
    for (const long model : sources) {
        QorSourceInterRefContainer references;
        require(QorCoreModelingManager::GetGlobal()->getInterRefsOfSourceModel(model, references));
        for (unsigned long index = 0; index < references.numberOfElements(); ++index) {
            const QorInterModRefTarget& target = references.elementAtIndex(index);
            if (target.objectName.IsEmpty()) continue;
            _targets.emplace(Place(typeNumber(target.modelTypeName), target.modelName), target.className,
                             target.objectName);
        }
    }
}

bool ReferredObjects::contain(long model, long cls, const SV::String& name) {
    const auto [known, isNew] = _classes.try_emplace(cls);
    if (isNew) known->second = nameOfClass(cls);
    return _targets.contains({placeOf(model), known->second, name});
}

unsigned long ReferredObjects::typeNumber(const SV::String& name) {
    const auto [known, isNew] = _types.try_emplace(name, kAnyType);
    if (!isNew || !QorModelTypeAttrHandler::ExistsGlobal()) return known->second;
    const auto code = QorModelTypeAttrHandler::GetGlobal()->GetModelTypeIndex(name, known->second);
    if (code != QorErrorCode::NotFound) require(code);
    return known->second;
}

const ReferredObjects::Place& ReferredObjects::placeOf(long model) {
    const auto [known, isNew] = _places.try_emplace(model, kAnyType, SV::String());
    if (!isNew) return known->second;
    known->second.second = nameOf(model);
    if (QorModelTypeAttrHandler::ExistsGlobal())
        require(QorModelTypeAttrHandler::GetGlobal()->GetModelTypeIndexOfModel(model, known->second.first));
    return known->second;
}

}  // namespace qor::simmap
