// SPDX-License-Identifier: Apache-2.0
#include "platform/QorCoreMM_InterRef.h"

QorCoreMM_InterRef::~QorCoreMM_InterRef() = default;

QorErrorCode QorCoreMM_InterRef::getInterRefsOfSourceModel(long, QorSourceInterRefContainer& references) {
    references.removeAll();
    return Qor_NotInstalled("QorCoreMM_InterRef::getInterRefsOfSourceModel");
}

QorSourceInterRefContainer::QorSourceInterRefContainer() = default;
QorSourceInterRefContainer::~QorSourceInterRefContainer() = default;
