// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <span>
#include <string_view>

#include "embedded/Announcements.h"
#include "embedded/LibrarySession.h"
#include "embedded/Repository.h"
#include "embedded/TargetCheck.h"
#include "embedded/UnitsOfWork.h"
#include "embedded/Users.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorEvent.h"

namespace qor::embedded {

// The repository as the contracts show it: narrows identifiers, sets outputs, turns failures into codes, raises events.
class ModelingManager final : public QorCoreModelingManager, public QorCoreBulkView {
public:
    ModelingManager(Repository& repository, LibrarySession& session, Users& users, Announcements& announcements)
        : _repository(repository), _session(session), _users(users), _announcements(announcements) {}
    ~ModelingManager() override;

    QorCoreBulkView* bulkView() override { return this; }
    QorCoreUnitsOfWork* unitsOfWork() override { return &_units; }
    QorModelTypeAttrHandler* modelTypeHandler() override { return _session.modelTypes.get(); }
    QorErrorCode viewObject(long object, long& cls, std::span<const QorRelationEnd>& outgoing,
                            std::span<const QorRelationEnd>& incoming) override;
    std::size_t viewObjects(std::span<const long> objects, std::span<QorObjectView> views) override;

    // Names and kinds (ManagerMetaModel.cpp)
    QorErrorCode getAttributeName(long attribute, char*& name) override;
    QorErrorCode getClassName(long cls, char*& name) override;
    QorErrorCode getRelationClassName(long relationClass, char*& name) override;
    QorErrorCode getRecordClassName(long attribute, char*& name) override;
    QorErrorCode getAttributeType(long attribute, QorCoreAttributeType& type) override;
    QorErrorCode getUIAttributeType(long attribute, QorCoreAttributeType& type) override;
    bool isClass(long identifier) override;
    bool isRelationClass(long identifier) override;
    bool isRelationInstance(long identifier) override;

    // Libraries (ManagerLibraries.cpp)
    bool IsLibraryLoaded(long library) override;
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

    // Meta-model (ManagerMetaModel.cpp)
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

    // Models, objects, relations (ManagerModels.cpp)
    QorErrorCode getAllInstancesInModel(long model, ISortedSet<long>& objects) override;
    QorErrorCode getAllInstancesOfClassAndSubClassInModel(long model, long cls, ISortedSet<long>& objects,
                                                          bool withSubclasses) override;
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

    // Values, records, references (ManagerValues.cpp)
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
    QorErrorCode getInterRefsOfSourceModel(long model, QorSourceInterRefContainer& references) override;

private:
    // Calls `take(text, type)` with the value, or gives the code that says why there is none.
    template <class Take>
    QorErrorCode readValue(long identifier, long attribute, bool withDefault, Take take) const;
    QorErrorCode writeValue(QorIdentifier model, QorIdentifier instance, QorIdentifier attribute, std::string_view text,
                            bool raiseEvent);
    void announceValue(QorIdentifier model, QorIdentifier instance, const AttributeRow& attribute) const;
    [[nodiscard]] bool isRecordOf(QorIdentifier owner, QorIdentifier attribute) const;

    QorErrorCode giveRelations(long object, Adjacency::Direction direction, ISortedSet<long>& relations);
    QorErrorCode moveEnd(long relation, long object, Adjacency::Direction direction);
    QorErrorCode giveRelationClasses(long cls, bool outgoing, ISortedSet<long>& relationClasses) const;

    void raiseLoadEvent(QorEventType type) const;
    [[nodiscard]] bool isLibrary(QorIdentifier id) const;
    QorErrorCode lockAll(std::span<const QorIdentifier> libraries, QorDBLockModeType mode);
    QorErrorCode unlockAll(std::span<const QorIdentifier> libraries);

    Repository& _repository;
    LibrarySession& _session;
    Users& _users;
    Announcements& _announcements;
    TargetCheck _targets{_repository};
    UnitsOfWork _units{_repository, _announcements};
};

}  // namespace qor::embedded
