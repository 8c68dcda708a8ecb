// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
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

/// Sets an output of a failing call to none. What is no output is handed on by value or as a constant, so that touching
/// it changes nothing for the caller.
namespace qor::test {
inline void none(long& id) { id = -1; }
inline void none(double& number) { number = 0.0; }
inline void none(unsigned long& index) { index = ~0UL; }
inline void none(char*& text) { text = nullptr; }
inline void none(ISortedSet<long>& ids) { ids.removeAll(); }
inline void none(ISequence<long>& ids) { ids.removeAll(); }
inline void none(QorUserID& user) { user = QorUserID(); }
inline void none(QorCoreAttributeType& type) { type = QorCoreAttributeType::None; }
inline void none(QorSourceInterRefContainer& references) { references.removeAll(); }
template <class Input>
void none(const Input&) {}

/// The call itself, or its failure: the code, for a question false, with the outputs set to none.
template <class Call, class... Arguments>
auto passed(CallRecord& record, std::string_view operation, Call call, Arguments&... arguments) {
    using Result = decltype(call());
    const QorErrorCode code = record.note(operation);
    if (code == QorErrorCode::Ok) return call();
    (none(arguments), ...);
    if constexpr (std::is_same_v<Result, bool>)
        return false;
    else
        return code;
}
}  // namespace qor::test

/// One operation handed on to `_wrapped`.
#define QOR_PASS(Result, operation, parameters, ...)                                                          \
    Result operation parameters override {                                                                    \
        return qor::test::passed(record, #operation,                                                          \
                                 [&] { return _wrapped.operation(__VA_ARGS__); } __VA_OPT__(, ) __VA_ARGS__); \
    }

/// Hands every call on to another repository, unless it is to fail: then the outputs are set to none. Offers no bulk
/// view of its own, so that everything passes through here. The model-type handler is wrapped as well.
class FailingRepository final : public QorCoreModelingManager {
public:
    explicit FailingRepository(QorCoreModelingManager& wrapped);
    ~FailingRepository() override;

    CallRecord record;

    /// Takes the place of the wrapped repository's model-type handler; not owned. Null: back to that.
    void setModelTypeHandler(QorModelTypeAttrHandler* handler) { _ownHandler = handler; }

    /// Hands on the wrapped repository's units of work; without, none are offered.
    void offerUnitsOfWork() { _offersUnits = true; }

    /// Not owned. Null: there is none.
    void offerView(QorCoreBulkView* view) { _view = view; }

    QorCoreBulkView* bulkView() override { return _view; }
    QorCoreUnitsOfWork* unitsOfWork() override { return _offersUnits ? _wrapped.unitsOfWork() : nullptr; }
    QorModelTypeAttrHandler* modelTypeHandler() override;

    QOR_PASS(QorErrorCode, getAttributeName, (long attribute, char*& name), attribute, name)
    QOR_PASS(QorErrorCode, getClassName, (long cls, char*& name), cls, name)
    QOR_PASS(QorErrorCode, getRelationClassName, (long relationClass, char*& name), relationClass, name)
    QOR_PASS(QorErrorCode, getRecordClassName, (long attribute, char*& name), attribute, name)
    QOR_PASS(QorErrorCode, getAttributeType, (long attribute, QorCoreAttributeType& type), attribute, type)
    QOR_PASS(QorErrorCode, getUIAttributeType, (long attribute, QorCoreAttributeType& type), attribute, type)
    QOR_PASS(QorErrorCode, getAllInstancesOfClassAndSubClassInModel,
             (long model, long cls, ISortedSet<long>& objects, bool withSubclasses), model, cls, objects,
             withSubclasses)
    QOR_PASS(bool, isClass, (long identifier), identifier)
    QOR_PASS(bool, isRelationClass, (long identifier), identifier)
    QOR_PASS(bool, isRelationInstance, (long identifier), identifier)
    QOR_PASS(QorErrorCode, getAttachedLibraries, (long library, long& first, long& second), library, first, second)
    QOR_PASS(QorErrorCode, getAppLibraryName, (long library, char*& name), library, name)
    QOR_PASS(QorErrorCode, getAppLibraryName, (char*& name), name)
    QOR_PASS(QorErrorCode, LoadApplicationLibrary, (long library, bool lock), library, lock)
    QOR_PASS(QorErrorCode, discardCompleteLibrary, (long library), library)
    QOR_PASS(QorErrorCode, updateFacets, ())
    QOR_PASS(QorErrorCode, initLibraryHandlers, (bool all), all)
    QOR_PASS(bool, isLibraryLocked, (long library, QorUserID& holder), library, holder)
    QOR_PASS(QorErrorCode, lockLibrary, (long library, bool wait, QorDBLockModeType mode), library, wait, mode)
    QOR_PASS(QorErrorCode, unlockLibrary, (long library), library)
    QOR_PASS(QorErrorCode, classOf, (long identifier, long& cls), identifier, cls)
    QOR_PASS(QorErrorCode, getAllInstantiableClasses, (long library, ISortedSet<long>& classes, bool withSubclasses),
             library, classes, withSubclasses)
    QOR_PASS(QorErrorCode, getClassIDFromClassName, (long library, const char* name, long& cls), library, name, cls)
    QOR_PASS(QorErrorCode, getRelationIDFromRelationName, (long library, const char* name, long& relationClass),
             library, name, relationClass)
    QOR_PASS(QorErrorCode, getAllFromRelationsRecursive, (long cls, ISortedSet<long>& relationClasses), cls,
             relationClasses)
    QOR_PASS(QorErrorCode, getAllToRelationsRecursive, (long cls, ISortedSet<long>& relationClasses), cls,
             relationClasses)
    QOR_PASS(QorErrorCode, getAllSubClasses, (long cls, ISortedSet<long>& subclasses), cls, subclasses)
    QOR_PASS(QorErrorCode, getLibraryOfClass, (long cls, long& library), cls, library)
    QOR_PASS(QorErrorCode, getAttributeIDFromAttributeName, (long cls, const char* name, long& attribute), cls, name,
             attribute)
    QOR_PASS(QorErrorCode, getRecordClassIDFromAttributeID, (long attribute, long& recordClass), attribute, recordClass)
    QOR_PASS(QorErrorCode, getAllInstancesInModel, (long model, ISortedSet<long>& objects), model, objects)
    QOR_PASS(QorErrorCode, getModelClass, (long model, long& cls), model, cls)
    QOR_PASS(QorErrorCode, GetClassOfInstance, (long object, long& cls), object, cls)
    QOR_PASS(QorErrorCode, getInstanceIDFromInstanceName, (long model, long cls, const char* name, long& object), model,
             cls, name, object)
    QOR_PASS(QorErrorCode, createInstance, (long model, long cls, const char* name, long& object), model, cls, name,
             object)
    QOR_PASS(QorErrorCode, RenameInstance, (long model, long object, const char* name, bool raiseEvent), model, object,
             name, raiseEvent)
    QOR_PASS(QorErrorCode, deleteInstance, (long model, long object), model, object)
    QOR_PASS(QorErrorCode, getModelThreadIDFromModelName, (const char* name, unsigned long modelType, long& thread),
             name, modelType, thread)
    QOR_PASS(QorErrorCode, getLastModelVersionOfModelThread, (long thread, long& model), thread, model)
    QOR_PASS(bool, isModelVersion, (long identifier), identifier)
    QOR_PASS(QorErrorCode, relationOf, (long relation, long& relationClass), relation, relationClass)
    QOR_PASS(QorErrorCode, getEndpointsOfRelationInstance, (long relation, long& from, long& to), relation, from, to)
    QOR_PASS(QorErrorCode, getToInstanceViaRelnInstance, (long relation, long& to), relation, to)
    QOR_PASS(QorErrorCode, getFromRelationInstances, (long object, ISortedSet<long>& relations), object, relations)
    QOR_PASS(QorErrorCode, getToRelationInstances, (long object, ISortedSet<long>& relations), object, relations)
    QOR_PASS(QorErrorCode, moveFromEndpoint, (long relation, long object), relation, object)
    QOR_PASS(QorErrorCode, moveToEndpoint, (long relation, long object), relation, object)
    QOR_PASS(QorErrorCode, getAttributeValue, (long identifier, long attribute, char*& text, bool withDefault),
             identifier, attribute, text, withDefault)
    QOR_PASS(QorErrorCode, getAttributeValue, (long identifier, long attribute, long& number, bool withDefault),
             identifier, attribute, number, withDefault)
    QOR_PASS(QorErrorCode, getAttributeValue, (long identifier, long attribute, double& number, bool withDefault),
             identifier, attribute, number, withDefault)
    QOR_PASS(QorErrorCode, getAttributeValueAsNewChar, (long identifier, long attribute, char*& text), identifier,
             attribute, text)
    QOR_PASS(QorErrorCode, setAttributeValue,
             (long model, long identifier, long attribute, const char* text, bool raiseEvent), model, identifier,
             attribute, text, raiseEvent)
    QOR_PASS(QorErrorCode, setAttributeValue,
             (long model, long identifier, long attribute, long number, bool raiseEvent), model, identifier, attribute,
             number, raiseEvent)
    QOR_PASS(QorErrorCode, setAttributeValue,
             (long model, long identifier, long attribute, double number, bool raiseEvent), model, identifier,
             attribute, number, raiseEvent)
    QOR_PASS(QorErrorCode, setAttributeValueAsString,
             (long model, long identifier, long attribute, const char* text, bool raiseEvent), model, identifier,
             attribute, text, raiseEvent)
    QOR_PASS(QorErrorCode, getAttributeIDFromAttrProfAttributeName,
             (long object, const char* referenceAttribute, const char* profileAttribute, long& profile,
              long& attribute),
             object, referenceAttribute, profileAttribute, profile, attribute)
    QOR_PASS(QorErrorCode, getRecordInstances, (long object, long attribute, ISequence<long>& rows), object, attribute,
             rows)
    QOR_PASS(QorErrorCode, createRecordInstance, (long model, long object, long attribute, long& row, long position),
             model, object, attribute, row, position)
    QOR_PASS(QorErrorCode, deleteRecordInstance, (long model, long object, long attribute, long row), model, object,
             attribute, row)
    QOR_PASS(bool, IsLibraryLoaded, (long library), library)
    QOR_PASS(QorErrorCode, getInterRefsOfSourceModel, (long model, QorSourceInterRefContainer& references), model,
             references)

private:
    class ModelTypes;

    QorCoreModelingManager& _wrapped;
    QorCoreBulkView* _view = nullptr;
    bool _offersUnits = false;
    QorModelTypeAttrHandler* _ownHandler = nullptr;
    std::unique_ptr<ModelTypes> _modelTypes;
};

#undef QOR_PASS
