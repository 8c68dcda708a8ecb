// SPDX-License-Identifier: Apache-2.0
#include "support/FailingRepository.h"

#include <algorithm>

void CallRecord::fail(std::string_view operation, QorErrorCode code, int nth) {
    _failures.insert_or_assign(std::string(operation), Failure{code, nth});
}

int CallRecord::count(std::string_view operation) const {
    return static_cast<int>(std::count(_order.begin(), _order.end(), operation));
}

QorErrorCode CallRecord::note(std::string_view operation) {
    _order.emplace_back(operation);
    const auto failure = _failures.find(operation);
    if (failure == _failures.end()) return QorErrorCode::Ok;
    if (failure->second.left == 0) return failure->second.code;
    if (--failure->second.left > 0) return QorErrorCode::Ok;
    const QorErrorCode code = failure->second.code;
    _failures.erase(failure);
    return code;
}

namespace {

void none(long& id) { id = -1; }
void none(double& number) { number = 0.0; }
void none(unsigned long& index) { index = ~0UL; }
void none(char*& text) { text = nullptr; }
void none(ISortedSet<long>& ids) { ids.removeAll(); }
void none(ISequence<long>& ids) { ids.removeAll(); }
void none(QorUserID& user) { user = QorUserID(); }
void none(QorCoreAttributeType& type) { type = QorCoreAttributeType::None; }
void none(QorSourceInterRefContainer& references) { references.removeAll(); }

/// The call itself, or its failure with the outputs set to none.
template <class Call, class... Outputs>
QorErrorCode passed(CallRecord& record, std::string_view operation, Call call, Outputs&... outputs) {
    const QorErrorCode code = record.note(operation);
    if (code == QorErrorCode::Ok) return call();
    (none(outputs), ...);
    return code;
}

}  // namespace

/// The model-type handler of the wrapped repository, seen through the record.
class FailingRepository::ModelTypes final : public QorModelTypeAttrHandler {
public:
    ModelTypes(CallRecord& record, QorCoreModelingManager& wrapped) : _record(record), _wrapped(wrapped) {}

    [[nodiscard]] bool isError() const override { return _wrapped.modelTypeHandler()->isError(); }
    [[nodiscard]] SV::String getErrorText() const override { return _wrapped.modelTypeHandler()->getErrorText(); }
    QorErrorCode GetModelTypeIndexOfModel(long model, unsigned long& modelType) override {
        return passed(
            _record, "GetModelTypeIndexOfModel",
            [&] { return _wrapped.modelTypeHandler()->GetModelTypeIndexOfModel(model, modelType); }, modelType);
    }
    QorErrorCode GetModelTypeIndex(const SV::String& name, unsigned long& modelType) override {
        return passed(
            _record, "GetModelTypeIndex",
            [&] { return _wrapped.modelTypeHandler()->GetModelTypeIndex(name, modelType); }, modelType);
    }
    QorErrorCode GetModelTypeVisibleClasses(unsigned long modelType, ISortedSet<long>& classes) override {
        return passed(
            _record, "GetModelTypeVisibleClasses",
            [&] { return _wrapped.modelTypeHandler()->GetModelTypeVisibleClasses(modelType, classes); }, classes);
    }

private:
    CallRecord& _record;
    QorCoreModelingManager& _wrapped;
};

FailingRepository::FailingRepository(QorCoreModelingManager& wrapped)
    : _wrapped(wrapped), _modelTypes(std::make_unique<ModelTypes>(record, wrapped)) {}

FailingRepository::~FailingRepository() = default;

QorModelTypeAttrHandler* FailingRepository::modelTypeHandler() {
    if (_ownHandler != nullptr) return _ownHandler;
    return _wrapped.modelTypeHandler() != nullptr ? _modelTypes.get() : nullptr;
}

QorErrorCode FailingRepository::getAttributeName(long attribute, char*& name) {
    return passed(
        record, "getAttributeName", [&] { return _wrapped.getAttributeName(attribute, name); }, name);
}

QorErrorCode FailingRepository::getClassName(long cls, char*& name) {
    return passed(
        record, "getClassName", [&] { return _wrapped.getClassName(cls, name); }, name);
}

QorErrorCode FailingRepository::getRelationClassName(long relationClass, char*& name) {
    return passed(
        record, "getRelationClassName", [&] { return _wrapped.getRelationClassName(relationClass, name); }, name);
}

QorErrorCode FailingRepository::getRecordClassName(long attribute, char*& name) {
    return passed(
        record, "getRecordClassName", [&] { return _wrapped.getRecordClassName(attribute, name); }, name);
}

QorErrorCode FailingRepository::getAttributeType(long attribute, QorCoreAttributeType& type) {
    return passed(
        record, "getAttributeType", [&] { return _wrapped.getAttributeType(attribute, type); }, type);
}

QorErrorCode FailingRepository::getUIAttributeType(long attribute, QorCoreAttributeType& type) {
    return passed(
        record, "getUIAttributeType", [&] { return _wrapped.getUIAttributeType(attribute, type); }, type);
}

QorErrorCode FailingRepository::getAllInstancesOfClassAndSubClassInModel(long model, long cls,
                                                                         ISortedSet<long>& objects,
                                                                         bool withSubclasses) {
    return passed(
        record, "getAllInstancesOfClassAndSubClassInModel",
        [&] { return _wrapped.getAllInstancesOfClassAndSubClassInModel(model, cls, objects, withSubclasses); },
        objects);
}

bool FailingRepository::isClass(long identifier) {
    const bool passes = record.note("isClass") == QorErrorCode::Ok;
    return passes && _wrapped.isClass(identifier);
}

bool FailingRepository::isRelationClass(long identifier) {
    const bool passes = record.note("isRelationClass") == QorErrorCode::Ok;
    return passes && _wrapped.isRelationClass(identifier);
}

bool FailingRepository::isRelationInstance(long identifier) {
    const bool passes = record.note("isRelationInstance") == QorErrorCode::Ok;
    return passes && _wrapped.isRelationInstance(identifier);
}

QorErrorCode FailingRepository::getAttachedLibraries(long library, long& first, long& second) {
    return passed(
        record, "getAttachedLibraries", [&] { return _wrapped.getAttachedLibraries(library, first, second); }, first,
        second);
}

QorErrorCode FailingRepository::getAppLibraryName(long library, char*& name) {
    return passed(
        record, "getAppLibraryName", [&] { return _wrapped.getAppLibraryName(library, name); }, name);
}

QorErrorCode FailingRepository::getAppLibraryName(char*& name) {
    return passed(
        record, "getAppLibraryName", [&] { return _wrapped.getAppLibraryName(name); }, name);
}

QorErrorCode FailingRepository::LoadApplicationLibrary(long library, bool lock) {
    return passed(record, "LoadApplicationLibrary", [&] { return _wrapped.LoadApplicationLibrary(library, lock); });
}

QorErrorCode FailingRepository::discardCompleteLibrary(long library) {
    return passed(record, "discardCompleteLibrary", [&] { return _wrapped.discardCompleteLibrary(library); });
}

QorErrorCode FailingRepository::updateFacets() {
    return passed(record, "updateFacets", [&] { return _wrapped.updateFacets(); });
}

QorErrorCode FailingRepository::initLibraryHandlers(bool all) {
    return passed(record, "initLibraryHandlers", [&] { return _wrapped.initLibraryHandlers(all); });
}

bool FailingRepository::isLibraryLocked(long library, QorUserID& holder) {
    const bool passes = record.note("isLibraryLocked") == QorErrorCode::Ok;
    if (!passes) none(holder);
    return passes && _wrapped.isLibraryLocked(library, holder);
}

QorErrorCode FailingRepository::lockLibrary(long library, bool wait, QorDBLockModeType mode) {
    return passed(record, "lockLibrary", [&] { return _wrapped.lockLibrary(library, wait, mode); });
}

QorErrorCode FailingRepository::unlockLibrary(long library) {
    return passed(record, "unlockLibrary", [&] { return _wrapped.unlockLibrary(library); });
}

QorErrorCode FailingRepository::classOf(long identifier, long& cls) {
    return passed(
        record, "classOf", [&] { return _wrapped.classOf(identifier, cls); }, cls);
}

QorErrorCode FailingRepository::getAllInstantiableClasses(long library, ISortedSet<long>& classes,
                                                          bool withSubclasses) {
    return passed(
        record, "getAllInstantiableClasses",
        [&] { return _wrapped.getAllInstantiableClasses(library, classes, withSubclasses); }, classes);
}

QorErrorCode FailingRepository::getClassIDFromClassName(long library, const char* name, long& cls) {
    return passed(
        record, "getClassIDFromClassName", [&] { return _wrapped.getClassIDFromClassName(library, name, cls); }, cls);
}

QorErrorCode FailingRepository::getRelationIDFromRelationName(long library, const char* name, long& relationClass) {
    return passed(
        record, "getRelationIDFromRelationName",
        [&] { return _wrapped.getRelationIDFromRelationName(library, name, relationClass); }, relationClass);
}

QorErrorCode FailingRepository::getAllFromRelationsRecursive(long cls, ISortedSet<long>& relationClasses) {
    return passed(
        record, "getAllFromRelationsRecursive",
        [&] { return _wrapped.getAllFromRelationsRecursive(cls, relationClasses); }, relationClasses);
}

QorErrorCode FailingRepository::getAllToRelationsRecursive(long cls, ISortedSet<long>& relationClasses) {
    return passed(
        record, "getAllToRelationsRecursive", [&] { return _wrapped.getAllToRelationsRecursive(cls, relationClasses); },
        relationClasses);
}

QorErrorCode FailingRepository::getAllSubClasses(long cls, ISortedSet<long>& subclasses) {
    return passed(
        record, "getAllSubClasses", [&] { return _wrapped.getAllSubClasses(cls, subclasses); }, subclasses);
}

QorErrorCode FailingRepository::getLibraryOfClass(long cls, long& library) {
    return passed(
        record, "getLibraryOfClass", [&] { return _wrapped.getLibraryOfClass(cls, library); }, library);
}

QorErrorCode FailingRepository::getAttributeIDFromAttributeName(long cls, const char* name, long& attribute) {
    return passed(
        record, "getAttributeIDFromAttributeName",
        [&] { return _wrapped.getAttributeIDFromAttributeName(cls, name, attribute); }, attribute);
}

QorErrorCode FailingRepository::getRecordClassIDFromAttributeID(long attribute, long& recordClass) {
    return passed(
        record, "getRecordClassIDFromAttributeID",
        [&] { return _wrapped.getRecordClassIDFromAttributeID(attribute, recordClass); }, recordClass);
}

QorErrorCode FailingRepository::getAllInstancesInModel(long model, ISortedSet<long>& objects) {
    return passed(
        record, "getAllInstancesInModel", [&] { return _wrapped.getAllInstancesInModel(model, objects); }, objects);
}

QorErrorCode FailingRepository::getModelClass(long model, long& cls) {
    return passed(
        record, "getModelClass", [&] { return _wrapped.getModelClass(model, cls); }, cls);
}

QorErrorCode FailingRepository::GetClassOfInstance(long object, long& cls) {
    return passed(
        record, "GetClassOfInstance", [&] { return _wrapped.GetClassOfInstance(object, cls); }, cls);
}

QorErrorCode FailingRepository::getInstanceIDFromInstanceName(long model, long cls, const char* name, long& object) {
    return passed(
        record, "getInstanceIDFromInstanceName",
        [&] { return _wrapped.getInstanceIDFromInstanceName(model, cls, name, object); }, object);
}

QorErrorCode FailingRepository::createInstance(long model, long cls, const char* name, long& object) {
    return passed(
        record, "createInstance", [&] { return _wrapped.createInstance(model, cls, name, object); }, object);
}

QorErrorCode FailingRepository::RenameInstance(long model, long object, const char* name, bool raiseEvent) {
    return passed(record, "RenameInstance", [&] { return _wrapped.RenameInstance(model, object, name, raiseEvent); });
}

QorErrorCode FailingRepository::deleteInstance(long model, long object) {
    return passed(record, "deleteInstance", [&] { return _wrapped.deleteInstance(model, object); });
}

QorErrorCode FailingRepository::getModelThreadIDFromModelName(const char* name, unsigned long modelType, long& thread) {
    return passed(
        record, "getModelThreadIDFromModelName",
        [&] { return _wrapped.getModelThreadIDFromModelName(name, modelType, thread); }, thread);
}

QorErrorCode FailingRepository::getLastModelVersionOfModelThread(long thread, long& model) {
    return passed(
        record, "getLastModelVersionOfModelThread",
        [&] { return _wrapped.getLastModelVersionOfModelThread(thread, model); }, model);
}

bool FailingRepository::isModelVersion(long identifier) {
    const bool passes = record.note("isModelVersion") == QorErrorCode::Ok;
    return passes && _wrapped.isModelVersion(identifier);
}

QorErrorCode FailingRepository::relationOf(long relation, long& relationClass) {
    return passed(
        record, "relationOf", [&] { return _wrapped.relationOf(relation, relationClass); }, relationClass);
}

QorErrorCode FailingRepository::getEndpointsOfRelationInstance(long relation, long& from, long& to) {
    return passed(
        record, "getEndpointsOfRelationInstance",
        [&] { return _wrapped.getEndpointsOfRelationInstance(relation, from, to); }, from, to);
}

QorErrorCode FailingRepository::getToInstanceViaRelnInstance(long relation, long& to) {
    return passed(
        record, "getToInstanceViaRelnInstance", [&] { return _wrapped.getToInstanceViaRelnInstance(relation, to); },
        to);
}

QorErrorCode FailingRepository::getFromRelationInstances(long object, ISortedSet<long>& relations) {
    return passed(
        record, "getFromRelationInstances", [&] { return _wrapped.getFromRelationInstances(object, relations); },
        relations);
}

QorErrorCode FailingRepository::getToRelationInstances(long object, ISortedSet<long>& relations) {
    return passed(
        record, "getToRelationInstances", [&] { return _wrapped.getToRelationInstances(object, relations); },
        relations);
}

QorErrorCode FailingRepository::moveFromEndpoint(long relation, long object) {
    return passed(record, "moveFromEndpoint", [&] { return _wrapped.moveFromEndpoint(relation, object); });
}

QorErrorCode FailingRepository::moveToEndpoint(long relation, long object) {
    return passed(record, "moveToEndpoint", [&] { return _wrapped.moveToEndpoint(relation, object); });
}

QorErrorCode FailingRepository::getAttributeValue(long identifier, long attribute, char*& text, bool withDefault) {
    return passed(
        record, "getAttributeValue",
        [&] { return _wrapped.getAttributeValue(identifier, attribute, text, withDefault); }, text);
}

QorErrorCode FailingRepository::getAttributeValue(long identifier, long attribute, long& number, bool withDefault) {
    return passed(
        record, "getAttributeValue",
        [&] { return _wrapped.getAttributeValue(identifier, attribute, number, withDefault); }, number);
}

QorErrorCode FailingRepository::getAttributeValue(long identifier, long attribute, double& number, bool withDefault) {
    return passed(
        record, "getAttributeValue",
        [&] { return _wrapped.getAttributeValue(identifier, attribute, number, withDefault); }, number);
}

QorErrorCode FailingRepository::getAttributeValueAsNewChar(long identifier, long attribute, char*& text) {
    return passed(
        record, "getAttributeValueAsNewChar",
        [&] { return _wrapped.getAttributeValueAsNewChar(identifier, attribute, text); }, text);
}

QorErrorCode FailingRepository::setAttributeValue(long model, long identifier, long attribute, const char* text,
                                                  bool raiseEvent) {
    return passed(record, "setAttributeValue",
                  [&] { return _wrapped.setAttributeValue(model, identifier, attribute, text, raiseEvent); });
}

QorErrorCode FailingRepository::setAttributeValue(long model, long identifier, long attribute, long number,
                                                  bool raiseEvent) {
    return passed(record, "setAttributeValue",
                  [&] { return _wrapped.setAttributeValue(model, identifier, attribute, number, raiseEvent); });
}

QorErrorCode FailingRepository::setAttributeValue(long model, long identifier, long attribute, double number,
                                                  bool raiseEvent) {
    return passed(record, "setAttributeValue",
                  [&] { return _wrapped.setAttributeValue(model, identifier, attribute, number, raiseEvent); });
}

QorErrorCode FailingRepository::setAttributeValueAsString(long model, long identifier, long attribute, const char* text,
                                                          bool raiseEvent) {
    return passed(record, "setAttributeValueAsString",
                  [&] { return _wrapped.setAttributeValueAsString(model, identifier, attribute, text, raiseEvent); });
}

QorErrorCode FailingRepository::getAttributeIDFromAttrProfAttributeName(long object, const char* referenceAttribute,
                                                                        const char* profileAttribute, long& profile,
                                                                        long& attribute) {
    return passed(
        record, "getAttributeIDFromAttrProfAttributeName",
        [&] {
            return _wrapped.getAttributeIDFromAttrProfAttributeName(object, referenceAttribute, profileAttribute,
                                                                    profile, attribute);
        },
        profile, attribute);
}

QorErrorCode FailingRepository::getRecordInstances(long object, long attribute, ISequence<long>& rows) {
    return passed(
        record, "getRecordInstances", [&] { return _wrapped.getRecordInstances(object, attribute, rows); }, rows);
}

QorErrorCode FailingRepository::createRecordInstance(long model, long object, long attribute, long& row,
                                                     long position) {
    return passed(
        record, "createRecordInstance",
        [&] { return _wrapped.createRecordInstance(model, object, attribute, row, position); }, row);
}

QorErrorCode FailingRepository::deleteRecordInstance(long model, long object, long attribute, long row) {
    return passed(record, "deleteRecordInstance",
                  [&] { return _wrapped.deleteRecordInstance(model, object, attribute, row); });
}

bool FailingRepository::IsLibraryLoaded(long library) {
    const bool passes = record.note("IsLibraryLoaded") == QorErrorCode::Ok;
    return passes && _wrapped.IsLibraryLoaded(library);
}

QorErrorCode FailingRepository::getInterRefsOfSourceModel(long model, QorSourceInterRefContainer& references) {
    return passed(
        record, "getInterRefsOfSourceModel", [&] { return _wrapped.getInterRefsOfSourceModel(model, references); },
        references);
}
