// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/ISequence.h"
#include "platform/ISortedSet.h"
#include "platform/QorDBLockModeType.h"
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"
#include "platform/QorUserID.h"

/// The repository's services around libraries, the meta-model, models and values. Outputs are set to their "none" value
/// (-1, null, empty) before anything else, and stay so after a failure. Texts come in new buffers (`new[]`) that the
/// caller deletes. Identifiers beyond 32 bits are unknown identifiers. Every default refuses with NotInstalled, a
/// question with false.
class QOR_API QorCoreMM_Enhanced {
public:
    virtual ~QorCoreMM_Enhanced();

    // ---- Libraries ----

    /// The business-process and the working-environment library attached to an application library.
    virtual QorErrorCode getAttachedLibraries(long library, long& first, long& second);
    /// NotFound when the identifier is no application library.
    virtual QorErrorCode getAppLibraryName(long library, char*& name);
    /// Of the current application library; NotFound when none is loaded.
    virtual QorErrorCode getAppLibraryName(char*& name);
    /// Makes the library the current one, sets the core variables 2, 4 and 6 and raises the load events. With `lock`
    /// the library is locked for the current user: LockedByOther when somebody else holds it. After a failure no
    /// library is current; a lock taken on the way stays for the caller to release.
    virtual QorErrorCode LoadApplicationLibrary(long library, bool lock);
    /// Unloads the library with its attached libraries, releases the user's locks on them, clears the core variables
    /// and raises the discard event.
    virtual QorErrorCode discardCompleteLibrary(long library);
    /// Brings what the repository derives from its content (its facets) up to date. O(content).
    virtual QorErrorCode updateFacets();
    /// Creates the library-wide handlers that are missing or in error: asks the registry (QorLibraryHandlers.h) and
    /// raises their load events again. Returns the failure code of the first handler that is still in error;
    /// NotAllHandlersSetUp when one is still missing. With `all` false only missing handlers are looked at.
    virtual QorErrorCode initLibraryHandlers(bool all);
    /// True when the current user holds the library exclusively, or another user holds it in any way; `holder` then
    /// names who, none while that user is just coming to hold it.
    virtual bool isLibraryLocked(long library, QorUserID& holder);
    /// Locks the library for the current user; LockedByOther when somebody else holds it, or shares it when an
    /// exclusive lock is asked for; Ok when the user holds it already, also in another process. `wait`: wait for
    /// another process's short write instead of refusing.
    virtual QorErrorCode lockLibrary(long library, bool wait, QorDBLockModeType mode);
    /// Releases the current user's lock; Ok when there is none.
    virtual QorErrorCode unlockLibrary(long library);

    // ---- Meta-model ----

    /// Class of an object, model or library (42 for a business-process part, 39 for a working-environment part).
    /// NotFound for relation instances, classes, relation classes and unknown identifiers.
    virtual QorErrorCode classOf(long identifier, long& cls);
    /// Every class of the library part that can have instances; the application library answers for both parts. With
    /// `withSubclasses` also those that other libraries derive from them.
    virtual QorErrorCode getAllInstantiableClasses(long library, ISortedSet<long>& classes, bool withSubclasses);
    /// By name: a part searches itself, the application library both parts, business process first. Abstract classes
    /// are found. NotFound for an unknown name.
    virtual QorErrorCode getClassIDFromClassName(long library, const char* name, long& cls);
    virtual QorErrorCode getRelationIDFromRelationName(long library, const char* name, long& relationClass);
    /// Relation classes whose source (target) may be of the class, those of its ancestors included.
    virtual QorErrorCode getAllFromRelationsRecursive(long cls, ISortedSet<long>& relationClasses);
    virtual QorErrorCode getAllToRelationsRecursive(long cls, ISortedSet<long>& relationClasses);
    /// Classes below the class at any depth, without itself.
    virtual QorErrorCode getAllSubClasses(long cls, ISortedSet<long>& subclasses);
    /// The library part that holds the class or relation class; NotFound for anything else.
    virtual QorErrorCode getLibraryOfClass(long cls, long& library);
    /// Attribute of a class or relation class, inherited ones included. NotFound for an unknown name.
    virtual QorErrorCode getAttributeIDFromAttributeName(long cls, const char* name, long& attribute);
    /// The class of a record attribute's rows; NotFound when the attribute is no record.
    virtual QorErrorCode getRecordClassIDFromAttributeID(long attribute, long& recordClass);

    // ---- Models and objects ----

    /// Every object of the model, relation instances not among them. NotFound when the identifier is no model.
    /// O(result).
    virtual QorErrorCode getAllInstancesInModel(long model, ISortedSet<long>& objects);
    /// The class of the model itself; NotFound when the identifier is no model.
    virtual QorErrorCode getModelClass(long model, long& cls);
    /// The class of an object; NotFound when the identifier is no object.
    virtual QorErrorCode GetClassOfInstance(long object, long& cls);
    /// NotFound when the model has no object of that class (subclasses not counted) and name, so that the name is free;
    /// OutOfRange when model or class is none.
    virtual QorErrorCode getInstanceIDFromInstanceName(long model, long cls, const char* name, long& object);
    /// Makes an object, without values of its own. NotFound when model or class is none; ValueRefused when the name is
    /// empty, longer than 65535 bytes, or taken among the class's objects of the model; OutOfRange when the class is
    /// abstract or the model's type does not show it.
    virtual QorErrorCode createInstance(long model, long cls, const char* name, long& object);
    /// NotFound when the model has no such object; ValueRefused for a name that createInstance would refuse. Ok, and no
    /// change, for the name that the object has. `raiseEvent` announces the change of the name attribute.
    virtual QorErrorCode RenameInstance(long model, long object, const char* name, bool raiseEvent);
    /// Deletes the object with its relations. NotFound when the model has no such object.
    virtual QorErrorCode deleteInstance(long model, long object);

    /// Thread of the models of that name and model type; their versions follow each other in it.
    virtual QorErrorCode getModelThreadIDFromModelName(const char* name, unsigned long modelType, long& thread);
    virtual QorErrorCode getLastModelVersionOfModelThread(long thread, long& model);
    virtual bool isModelVersion(long identifier);

    // ---- Relations ----

    // The relation class, both ends, the target of a relation instance; NotFound when the identifier is none.
    virtual QorErrorCode relationOf(long relation, long& relationClass);
    virtual QorErrorCode getEndpointsOfRelationInstance(long relation, long& from, long& to);
    virtual QorErrorCode getToInstanceViaRelnInstance(long relation, long& to);
    /// Outgoing (incoming) relation instances of the object, ascending. O(result).
    virtual QorErrorCode getFromRelationInstances(long object, ISortedSet<long>& relations);
    virtual QorErrorCode getToRelationInstances(long object, ISortedSet<long>& relations);
    /// Hangs the source (target) of the relation onto another object of the same model, whose class must fit the
    /// relation class. After a failure the relation stays as it was.
    virtual QorErrorCode moveFromEndpoint(long relation, long object);
    virtual QorErrorCode moveToEndpoint(long relation, long object);

    // ---- Values ----

    /// Value of an attribute of an object, class (class-level value), library or record row (whose cells are addressed
    /// by the row's identifier). NoValue when there is none. `withDefault`: an instance without a value of its own
    /// answers with its class's default.
    virtual QorErrorCode getAttributeValue(long identifier, long attribute, char*& text, bool withDefault);
    virtual QorErrorCode getAttributeValue(long identifier, long attribute, long& number, bool withDefault);
    virtual QorErrorCode getAttributeValue(long identifier, long attribute, double& number, bool withDefault);
    /// Value of an attribute of any type as text.
    virtual QorErrorCode getAttributeValueAsNewChar(long identifier, long attribute, char*& text);
    /// ValueRefused when the attribute's type does not take the value, or the value names a model, object or profile
    /// that neither exists nor is named in the model already. `raiseEvent` announces the change.
    virtual QorErrorCode setAttributeValue(long model, long identifier, long attribute, const char* text,
                                           bool raiseEvent);
    virtual QorErrorCode setAttributeValue(long model, long identifier, long attribute, long number, bool raiseEvent);
    virtual QorErrorCode setAttributeValue(long model, long identifier, long attribute, double number, bool raiseEvent);
    /// Takes the text form of any type.
    virtual QorErrorCode setAttributeValueAsString(long model, long identifier, long attribute, const char* text,
                                                   bool raiseEvent);
    /// The profile that an attribute-profile reference of the object names, and the profile's attribute of that name.
    /// NoProfileReferenced when the reference is empty.
    virtual QorErrorCode getAttributeIDFromAttrProfAttributeName(long object, const char* referenceAttribute,
                                                                 const char* profileAttribute, long& profile,
                                                                 long& attribute);

    // ---- Records ----

    /// Rows of a record attribute of the object, in their order.
    virtual QorErrorCode getRecordInstances(long object, long attribute, ISequence<long>& rows);
    /// `position` counts from 0; -1 puts the row at the end.
    virtual QorErrorCode createRecordInstance(long model, long object, long attribute, long& row, long position);
    virtual QorErrorCode deleteRecordInstance(long model, long object, long attribute, long row);
};
