// SPDX-License-Identifier: Apache-2.0
#include "simmap/CalledModels.h"

#include "frame/RepositoryLookup.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreInterReferenceHandler.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorModelTypeAttrHandler.h"
#include "platform/QorOwnedText.h"
#include "simmap/ReadinessQueries.h"

namespace qor::simmap {

namespace {

bool isFound(QorErrorCode code) {
    if (code != QorErrorCode::NotFound) require(code);
    return code != QorErrorCode::NotFound;
}

/// Without a handler of model types nobody can look the model up, and it counts as there.
bool exists(const QorInterModRefTarget& target) {
    if (!QorModelTypeAttrHandler::ExistsGlobal()) return true;
    unsigned long type = 0;
    if (!isFound(QorModelTypeAttrHandler::GetGlobal()->GetModelTypeIndex(target.modelTypeName, type))) return false;
    auto& repository = *QorCoreModelingManager::GetGlobal();
    long thread = 0;
    if (!isFound(repository.getModelThreadIDFromModelName(target.modelName.c_str(), type, thread))) return false;
    long model = 0;
    return isFound(repository.getLastModelVersionOfModelThread(thread, model));
}

/// A text that is only shown as references holds none: neither this handler nor a hierarchy of models can follow it.
bool holdsReferences(long attribute) {
    auto type = QorCoreAttributeType::None;
    require(QorCoreModelingManager::GetGlobal()->getAttributeType(attribute, type));
    return type == QorCoreAttributeType::InterReference;
}

}  // namespace

std::vector<long> callingAttributes(long cls) {
    QorOwnedText name;
    const bool isNamed = isFound(QorCoreModelingManager::GetGlobal()->getAttributeValue(
        cls, QorAttributeId::HierarchyAttribute, name.out(), false));
    if (isNamed && !name.isEmpty())
        if (const auto attribute = frame::findAttribute(cls, SV::String(name.view()));
            attribute && typeOf(*attribute) == QorCoreAttributeType::InterReference && holdsReferences(*attribute))
            return {*attribute};
    auto attributes = shownAttributes(cls, QorCoreAttributeType::InterReference);
    std::erase_if(attributes, [](long attribute) { return !holdsReferences(attribute); });
    return attributes;
}

CalledModels calledModels(long model, long object, const std::vector<long>& attributes) {
    CalledModels called;
    for (const long attribute : attributes) {
        QorCoreInterReferenceHandler references(model, object, attribute);
        require(references.initHandler());
        if (!references.isModelReferenceMode()) continue;
        for (unsigned long index = 0; index < references.getInterReferenceCount(); ++index) {
            const auto& target = references.getInterReference(index);
            called.any = true;
            if (exists(target)) {
                called.found = true;
                return called;
            }
            called.missing = target.modelName;
            called.missingAttribute = attribute;
        }
    }
    return called;
}

}  // namespace qor::simmap
