// SPDX-License-Identifier: Apache-2.0
#include "platform/QorCoreMM_Enhanced.h"

QorCoreMM_Enhanced::~QorCoreMM_Enhanced() = default;

QorErrorCode QorCoreMM_Enhanced::getAttachedLibraries(long, long& first, long& second) {
    first = -1;
    second = -1;
    return Qor_NotInstalled("QorCoreMM_Enhanced::getAttachedLibraries");
}

QorErrorCode QorCoreMM_Enhanced::getAppLibraryName(long, char*& name) {
    name = nullptr;
    return Qor_NotInstalled("QorCoreMM_Enhanced::getAppLibraryName");
}

QorErrorCode QorCoreMM_Enhanced::getAppLibraryName(char*& name) {
    name = nullptr;
    return Qor_NotInstalled("QorCoreMM_Enhanced::getAppLibraryName");
}

QorErrorCode QorCoreMM_Enhanced::LoadApplicationLibrary(long, bool) {
    return Qor_NotInstalled("QorCoreMM_Enhanced::LoadApplicationLibrary");
}

QorErrorCode QorCoreMM_Enhanced::discardCompleteLibrary(long) {
    return Qor_NotInstalled("QorCoreMM_Enhanced::discardCompleteLibrary");
}

QorErrorCode QorCoreMM_Enhanced::updateFacets() { return Qor_NotInstalled("QorCoreMM_Enhanced::updateFacets"); }

QorErrorCode QorCoreMM_Enhanced::initLibraryHandlers(bool) {
    return Qor_NotInstalled("QorCoreMM_Enhanced::initLibraryHandlers");
}

bool QorCoreMM_Enhanced::isLibraryLocked(long, QorUserID& holder) {
    holder = QorUserID();
    (void)Qor_NotInstalled("QorCoreMM_Enhanced::isLibraryLocked");
    return false;
}

QorErrorCode QorCoreMM_Enhanced::lockLibrary(long, bool, QorDBLockModeType) {
    return Qor_NotInstalled("QorCoreMM_Enhanced::lockLibrary");
}

QorErrorCode QorCoreMM_Enhanced::unlockLibrary(long) { return Qor_NotInstalled("QorCoreMM_Enhanced::unlockLibrary"); }

QorErrorCode QorCoreMM_Enhanced::classOf(long, long& cls) {
    cls = -1;
    return Qor_NotInstalled("QorCoreMM_Enhanced::classOf");
}

QorErrorCode QorCoreMM_Enhanced::getAllInstantiableClasses(long, ISortedSet<long>& classes, bool) {
    classes.removeAll();
    return Qor_NotInstalled("QorCoreMM_Enhanced::getAllInstantiableClasses");
}

QorErrorCode QorCoreMM_Enhanced::getClassIDFromClassName(long, const char*, long& cls) {
    cls = -1;
    return Qor_NotInstalled("QorCoreMM_Enhanced::getClassIDFromClassName");
}

QorErrorCode QorCoreMM_Enhanced::getRelationIDFromRelationName(long, const char*, long& relationClass) {
    relationClass = -1;
    return Qor_NotInstalled("QorCoreMM_Enhanced::getRelationIDFromRelationName");
}

QorErrorCode QorCoreMM_Enhanced::getAllFromRelationsRecursive(long, ISortedSet<long>& relationClasses) {
    relationClasses.removeAll();
    return Qor_NotInstalled("QorCoreMM_Enhanced::getAllFromRelationsRecursive");
}

QorErrorCode QorCoreMM_Enhanced::getAllToRelationsRecursive(long, ISortedSet<long>& relationClasses) {
    relationClasses.removeAll();
    return Qor_NotInstalled("QorCoreMM_Enhanced::getAllToRelationsRecursive");
}

QorErrorCode QorCoreMM_Enhanced::getAllSubClasses(long, ISortedSet<long>& subclasses) {
    subclasses.removeAll();
    return Qor_NotInstalled("QorCoreMM_Enhanced::getAllSubClasses");
}

QorErrorCode QorCoreMM_Enhanced::getLibraryOfClass(long, long& library) {
    library = -1;
    return Qor_NotInstalled("QorCoreMM_Enhanced::getLibraryOfClass");
}

QorErrorCode QorCoreMM_Enhanced::getAttributeIDFromAttributeName(long, const char*, long& attribute) {
    attribute = -1;
    return Qor_NotInstalled("QorCoreMM_Enhanced::getAttributeIDFromAttributeName");
}

QorErrorCode QorCoreMM_Enhanced::getRecordClassIDFromAttributeID(long, long& recordClass) {
    recordClass = -1;
    return Qor_NotInstalled("QorCoreMM_Enhanced::getRecordClassIDFromAttributeID");
}

QorErrorCode QorCoreMM_Enhanced::getAllInstancesInModel(long, ISortedSet<long>& objects) {
    objects.removeAll();
    return Qor_NotInstalled("QorCoreMM_Enhanced::getAllInstancesInModel");
}

QorErrorCode QorCoreMM_Enhanced::getModelClass(long, long& cls) {
    cls = -1;
    return Qor_NotInstalled("QorCoreMM_Enhanced::getModelClass");
}

QorErrorCode QorCoreMM_Enhanced::GetClassOfInstance(long, long& cls) {
    cls = -1;
    return Qor_NotInstalled("QorCoreMM_Enhanced::GetClassOfInstance");
}

QorErrorCode QorCoreMM_Enhanced::getInstanceIDFromInstanceName(long, long, const char*, long& object) {
    object = -1;
    return Qor_NotInstalled("QorCoreMM_Enhanced::getInstanceIDFromInstanceName");
}

QorErrorCode QorCoreMM_Enhanced::createInstance(long, long, const char*, long& object) {
    object = -1;
    return Qor_NotInstalled("QorCoreMM_Enhanced::createInstance");
}

QorErrorCode QorCoreMM_Enhanced::RenameInstance(long, long, const char*, bool) {
    return Qor_NotInstalled("QorCoreMM_Enhanced::RenameInstance");
}

QorErrorCode QorCoreMM_Enhanced::deleteInstance(long, long) {
    return Qor_NotInstalled("QorCoreMM_Enhanced::deleteInstance");
}

QorErrorCode QorCoreMM_Enhanced::getModelThreadIDFromModelName(const char*, unsigned long, long& thread) {
    thread = -1;
    return Qor_NotInstalled("QorCoreMM_Enhanced::getModelThreadIDFromModelName");
}

QorErrorCode QorCoreMM_Enhanced::getLastModelVersionOfModelThread(long, long& model) {
    model = -1;
    return Qor_NotInstalled("QorCoreMM_Enhanced::getLastModelVersionOfModelThread");
}

bool QorCoreMM_Enhanced::isModelVersion(long) {
    (void)Qor_NotInstalled("QorCoreMM_Enhanced::isModelVersion");
    return false;
}

QorErrorCode QorCoreMM_Enhanced::relationOf(long, long& relationClass) {
    relationClass = -1;
    return Qor_NotInstalled("QorCoreMM_Enhanced::relationOf");
}

QorErrorCode QorCoreMM_Enhanced::getEndpointsOfRelationInstance(long, long& from, long& to) {
    from = -1;
    to = -1;
    return Qor_NotInstalled("QorCoreMM_Enhanced::getEndpointsOfRelationInstance");
}

QorErrorCode QorCoreMM_Enhanced::getToInstanceViaRelnInstance(long, long& to) {
    to = -1;
    return Qor_NotInstalled("QorCoreMM_Enhanced::getToInstanceViaRelnInstance");
}

QorErrorCode QorCoreMM_Enhanced::getFromRelationInstances(long, ISortedSet<long>& relations) {
    relations.removeAll();
    return Qor_NotInstalled("QorCoreMM_Enhanced::getFromRelationInstances");
}

QorErrorCode QorCoreMM_Enhanced::getToRelationInstances(long, ISortedSet<long>& relations) {
    relations.removeAll();
    return Qor_NotInstalled("QorCoreMM_Enhanced::getToRelationInstances");
}

QorErrorCode QorCoreMM_Enhanced::moveFromEndpoint(long, long) {
    return Qor_NotInstalled("QorCoreMM_Enhanced::moveFromEndpoint");
}

QorErrorCode QorCoreMM_Enhanced::moveToEndpoint(long, long) {
    return Qor_NotInstalled("QorCoreMM_Enhanced::moveToEndpoint");
}

QorErrorCode QorCoreMM_Enhanced::getAttributeValue(long, long, char*& text, bool) {
    text = nullptr;
    return Qor_NotInstalled("QorCoreMM_Enhanced::getAttributeValue");
}

QorErrorCode QorCoreMM_Enhanced::getAttributeValue(long, long, long& number, bool) {
    number = -1;
    return Qor_NotInstalled("QorCoreMM_Enhanced::getAttributeValue");
}

QorErrorCode QorCoreMM_Enhanced::getAttributeValue(long, long, double& number, bool) {
    number = 0.0;
    return Qor_NotInstalled("QorCoreMM_Enhanced::getAttributeValue");
}

QorErrorCode QorCoreMM_Enhanced::getAttributeValueAsNewChar(long, long, char*& text) {
    text = nullptr;
    return Qor_NotInstalled("QorCoreMM_Enhanced::getAttributeValueAsNewChar");
}

QorErrorCode QorCoreMM_Enhanced::setAttributeValue(long, long, long, const char*, bool) {
    return Qor_NotInstalled("QorCoreMM_Enhanced::setAttributeValue");
}

QorErrorCode QorCoreMM_Enhanced::setAttributeValue(long, long, long, long, bool) {
    return Qor_NotInstalled("QorCoreMM_Enhanced::setAttributeValue");
}

QorErrorCode QorCoreMM_Enhanced::setAttributeValue(long, long, long, double, bool) {
    return Qor_NotInstalled("QorCoreMM_Enhanced::setAttributeValue");
}

QorErrorCode QorCoreMM_Enhanced::setAttributeValueAsString(long, long, long, const char*, bool) {
    return Qor_NotInstalled("QorCoreMM_Enhanced::setAttributeValueAsString");
}

QorErrorCode QorCoreMM_Enhanced::getAttributeIDFromAttrProfAttributeName(long, const char*, const char*, long& profile,
                                                                         long& attribute) {
    profile = -1;
    attribute = -1;
    return Qor_NotInstalled("QorCoreMM_Enhanced::getAttributeIDFromAttrProfAttributeName");
}

QorErrorCode QorCoreMM_Enhanced::getRecordInstances(long, long, ISequence<long>& rows) {
    rows.removeAll();
    return Qor_NotInstalled("QorCoreMM_Enhanced::getRecordInstances");
}

QorErrorCode QorCoreMM_Enhanced::createRecordInstance(long, long, long, long& row, long) {
    row = -1;
    return Qor_NotInstalled("QorCoreMM_Enhanced::createRecordInstance");
}

QorErrorCode QorCoreMM_Enhanced::deleteRecordInstance(long, long, long, long) {
    return Qor_NotInstalled("QorCoreMM_Enhanced::deleteRecordInstance");
}
