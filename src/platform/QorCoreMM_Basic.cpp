// SPDX-License-Identifier: Apache-2.0
#include "platform/QorCoreMM_Basic.h"

QorCoreMM_Basic::~QorCoreMM_Basic() = default;

QorErrorCode QorCoreMM_Basic::getAttributeName(long, char*& name) {
    name = nullptr;
    return Qor_NotInstalled("QorCoreMM_Basic::getAttributeName");
}

QorErrorCode QorCoreMM_Basic::getClassName(long, char*& name) {
    name = nullptr;
    return Qor_NotInstalled("QorCoreMM_Basic::getClassName");
}

QorErrorCode QorCoreMM_Basic::getRelationClassName(long, char*& name) {
    name = nullptr;
    return Qor_NotInstalled("QorCoreMM_Basic::getRelationClassName");
}

QorErrorCode QorCoreMM_Basic::getRecordClassName(long, char*& name) {
    name = nullptr;
    return Qor_NotInstalled("QorCoreMM_Basic::getRecordClassName");
}

QorErrorCode QorCoreMM_Basic::getAttributeType(long, QorCoreAttributeType& type) {
    type = QorCoreAttributeType::None;
    return Qor_NotInstalled("QorCoreMM_Basic::getAttributeType");
}

QorErrorCode QorCoreMM_Basic::getUIAttributeType(long, QorCoreAttributeType& type) {
    type = QorCoreAttributeType::None;
    return Qor_NotInstalled("QorCoreMM_Basic::getUIAttributeType");
}

QorErrorCode QorCoreMM_Basic::getAllInstancesOfClassAndSubClassInModel(long, long, ISortedSet<long>& objects, bool) {
    objects.removeAll();
    return Qor_NotInstalled("QorCoreMM_Basic::getAllInstancesOfClassAndSubClassInModel");
}

bool QorCoreMM_Basic::isClass(long) {
    (void)Qor_NotInstalled("QorCoreMM_Basic::isClass");
    return false;
}

bool QorCoreMM_Basic::isRelationClass(long) {
    (void)Qor_NotInstalled("QorCoreMM_Basic::isRelationClass");
    return false;
}

bool QorCoreMM_Basic::isRelationInstance(long) {
    (void)Qor_NotInstalled("QorCoreMM_Basic::isRelationInstance");
    return false;
}
