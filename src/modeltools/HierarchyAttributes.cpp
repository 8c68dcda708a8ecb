// SPDX-License-Identifier: Apache-2.0
#include "modeltools/HierarchyAttributes.h"

#include "frame/RepositoryLookup.h"
#include "modeltools/messages.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreVar.h"
#include "platform/QorMessage.h"

namespace qor::modeltools {

namespace {

QorCoreModelingManager& repository() { return *QorCoreModelingManager::GetGlobal(); }

ISortedSet<long> instantiableClasses() {
    ISortedSet<long> all;
    for (const auto part : {QorCoreVarType::BusinessProcessLibrary, QorCoreVarType::WorkingEnvironmentLibrary}) {
        ISortedSet<long> classes;
        const long library = Qor_GetCoreVarConst(part);
        if (library > 0 && repository().getAllInstantiableClasses(library, classes, true) == QorErrorCode::Ok)
            all.addAllFrom(classes);
    }
    return all;
}

/// The name that the class gives, else the one that every class has without saying so.
SV::String attributeNameOf(long cls) {
    long library = QorNoIdentifier;
    const bool isProcessClass = repository().getLibraryOfClass(cls, library) == QorErrorCode::Ok &&
                                library == Qor_GetCoreVarConst(QorCoreVarType::BusinessProcessLibrary);
    const auto name = frame::readText(cls, isProcessClass ? QorAttributeId::HierarchyAttribute
                                                          : QorAttributeId::WorkingEnvironmentHierarchyAttribute);
    return name && !name->IsEmpty() ? *name : Qor_Message(message::defaultHierarchyAttribute);
}

}  // namespace

HierarchyAttributes readHierarchyAttributes() {
    HierarchyAttributes attributes;
    for (const long cls : instantiableClasses()) {
        const auto attribute = frame::findAttribute(cls, attributeNameOf(cls));
        auto type = QorCoreAttributeType::None;
        if (attribute && repository().getUIAttributeType(*attribute, type) == QorErrorCode::Ok &&
            type == QorCoreAttributeType::InterReference)
            attributes[*attribute].add(cls);
    }
    return attributes;
}

}  // namespace qor::modeltools
