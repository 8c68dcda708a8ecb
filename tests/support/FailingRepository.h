// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/QorCoreModelingManager.h"
#include "platform/QorModelTypeAttrHandler.h"

/// What is called, how often, in what order, and which call is to fail. Operations are known by their bare names;
/// overloads share one.
class CallRecord {
public:
    /// The n-th call of the operation from now on fails with that code (a question: answers false); with n 0, every
    /// call does.
    void fail(std::string_view operation, QorErrorCode code, int nth = 1);
    void failNothing() { _failures.clear(); }
    void forget() { _order.clear(); }

    [[nodiscard]] int count(std::string_view operation) const;
    [[nodiscard]] const std::vector<std::string>& order() const { return _order; }

    /// Notes a call; the code that it is to fail with, or Ok.
    QorErrorCode note(std::string_view operation);

private:
    struct Failure {
        QorErrorCode code;
        int left;
    };

    std::vector<std::string> _order;
    std::map<std::string, Failure, std::less<>> _failures;
};

/// Hands every call on to another repository, unless it is to fail: then the outputs are set to none. Offers no bulk
/// view, so that everything passes through here. The model-type handler is wrapped as well.
class FailingRepository final : public QorCoreModelingManager {
public:
    explicit FailingRepository(QorCoreModelingManager& wrapped);
    ~FailingRepository() override;

    CallRecord record;

    /// Takes the place of the wrapped repository's model-type handler; not owned. Null: back to that.
    void setModelTypeHandler(QorModelTypeAttrHandler* handler) { _ownHandler = handler; }

    QorCoreBulkView* bulkView() override { return nullptr; }
    QorModelTypeAttrHandler* modelTypeHandler() override;

    QorErrorCode getAttributeName(long attribute, char*& name) override;
    QorErrorCode getClassName(long cls, char*& name) override;
    QorErrorCode getRelationClassName(long relationClass, char*& name) override;
    QorErrorCode getRecordClassName(long attribute, char*& name) override;
    QorErrorCode getAttributeType(long attribute, QorCoreAttributeType& type) override;
    QorErrorCode getUIAttributeType(long attribute, QorCoreAttributeType& type) override;
    QorErrorCode getAllInstancesOfClassAndSubClassInModel(long model, long cls, ISortedSet<long>& objects,
                                                          bool withSubclasses) override;
    bool isClass(long identifier) override;
    bool isRelationClass(long identifier) override;
    bool isRelationInstance(long identifier) override;
    QorErrorCode getAttachedLibraries(long library, long& first, long& second) override;
    QorErrorCode getAppLibraryName(long library, char*& name) override;
    QorErrorCode getAppLibraryName(char*& name) override;
    QorErrorCode LoadApplicationLibrary(long library, bool lock) override;
    QorErrorCode discardCompleteLibrary(long library) override;
    QorErrorCode updateFacets() override;
    QorErrorCode initLibraryHandlers(bool all) override;
    bool isLibraryLocked(long library, QorUserID& holder) override;
    QorErrorCode lockLibrary(long library, bool wait, QorDBLockModeType mode) override;
    QorErrorCode unlockLibrary(long library) override;
    QorErrorCode classOf(long identifier, long& cls) override;
    QorErrorCode getAllInstantiableClasses(long library, ISortedSet<long>& classes, bool withSubclasses) override;
    QorErrorCode getClassIDFromClassName(long library, const char* name, long& cls) override;
    QorErrorCode getRelationIDFromRelationName(long library, const char* name, long& relationClass) override;
    QorErrorCode getAllFromRelationsRecursive(long cls, ISortedSet<long>& relationClasses) override;
    QorErrorCode getAllToRelationsRecursive(long cls, ISortedSet<long>& relationClasses) override;
    QorErrorCode getAllSubClasses(long cls, ISortedSet<long>& subclasses) override;
    QorErrorCode getLibraryOfClass(long cls, long& library) override;
    QorErrorCode getAttributeIDFromAttributeName(long cls, const char* name, long& attribute) override;
    QorErrorCode getRecordClassIDFromAttributeID(long attribute, long& recordClass) override;
    QorErrorCode getAllInstancesInModel(long model, ISortedSet<long>& objects) override;
    QorErrorCode getModelClass(long model, long& cls) override;
    QorErrorCode GetClassOfInstance(long object, long& cls) override;
    QorErrorCode getInstanceIDFromInstanceName(long model, long cls, const char* name, long& object) override;
    QorErrorCode createInstance(long model, long cls, const char* name, long& object) override;
    QorErrorCode RenameInstance(long model, long object, const char* name, bool raiseEvent) override;
    QorErrorCode deleteInstance(long model, long object) override;
    QorErrorCode getModelThreadIDFromModelName(const char* name, unsigned long modelType, long& thread) override;
    QorErrorCode getLastModelVersionOfModelThread(long thread, long& model) override;
    bool isModelVersion(long identifier) override;
    QorErrorCode relationOf(long relation, long& relationClass) override;
    QorErrorCode getEndpointsOfRelationInstance(long relation, long& from, long& to) override;
    QorErrorCode getToInstanceViaRelnInstance(long relation, long& to) override;
    QorErrorCode getFromRelationInstances(long object, ISortedSet<long>& relations) override;
    QorErrorCode getToRelationInstances(long object, ISortedSet<long>& relations) override;
    QorErrorCode moveFromEndpoint(long relation, long object) override;
    QorErrorCode moveToEndpoint(long relation, long object) override;
    QorErrorCode getAttributeValue(long identifier, long attribute, char*& text, bool withDefault) override;
    QorErrorCode getAttributeValue(long identifier, long attribute, long& number, bool withDefault) override;
    QorErrorCode getAttributeValue(long identifier, long attribute, double& number, bool withDefault) override;
    QorErrorCode getAttributeValueAsNewChar(long identifier, long attribute, char*& text) override;
    QorErrorCode setAttributeValue(long model, long identifier, long attribute, const char* text,
                                   bool raiseEvent) override;
    QorErrorCode setAttributeValue(long model, long identifier, long attribute, long number, bool raiseEvent) override;
    QorErrorCode setAttributeValue(long model, long identifier, long attribute, double number,
                                   bool raiseEvent) override;
    QorErrorCode setAttributeValueAsString(long model, long identifier, long attribute, const char* text,
                                           bool raiseEvent) override;
    QorErrorCode getAttributeIDFromAttrProfAttributeName(long object, const char* referenceAttribute,
                                                         const char* profileAttribute, long& profile,
                                                         long& attribute) override;
    QorErrorCode getRecordInstances(long object, long attribute, ISequence<long>& rows) override;
    QorErrorCode createRecordInstance(long model, long object, long attribute, long& row, long position) override;
    QorErrorCode deleteRecordInstance(long model, long object, long attribute, long row) override;
    bool IsLibraryLoaded(long library) override;
    QorErrorCode getInterRefsOfSourceModel(long model, QorSourceInterRefContainer& references) override;

private:
    class ModelTypes;

    QorCoreModelingManager& _wrapped;
    QorModelTypeAttrHandler* _ownHandler = nullptr;
    std::unique_ptr<ModelTypes> _modelTypes;
};
