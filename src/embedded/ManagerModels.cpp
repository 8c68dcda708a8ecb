// SPDX-License-Identifier: Apache-2.0
#include "embedded/Answers.h"
#include "embedded/ModelingManager.h"
#include "embedded/References.h"
#include "platform/QorAttributeIds.h"

namespace qor::embedded {

QorErrorCode ModelingManager::viewObject(long object, long& cls, std::span<const QorRelationEnd>& outgoing,
                                         std::span<const QorRelationEnd>& incoming) {
    cls = -1;
    outgoing = incoming = {};
    return answered([&] {
        QorObjectView view;
        if (_repository.models().viewObjects({&object, 1}, {&view, 1}) == 0) return QorErrorCode::NotFound;
        outgoing = view.outgoing;
        incoming = view.incoming;
        cls = view.cls;
        return QorErrorCode::Ok;
    });
}

std::size_t ModelingManager::viewObjects(std::span<const long> objects, std::span<QorObjectView> views) {
    return Qor_Guarded("embedded", std::size_t{0}, [&] { return _repository.models().viewObjects(objects, views); });
}

// ---- Models and objects ----

QorErrorCode ModelingManager::getAllInstancesInModel(long model, ISortedSet<long>& objects) {
    objects.removeAll();
    return answered([&] {
        const ModelRow* const row = _repository.models().model(narrow(model));
        if (row == nullptr) return QorErrorCode::NotFound;
        return give(objects, row->objects.copy<long>(_repository.things()));
    });
}

QorErrorCode ModelingManager::getAllInstancesOfClassAndSubClassInModel(long model, long cls, ISortedSet<long>& objects,
                                                                       bool withSubclasses) {
    objects.removeAll();
    return answered([&] {
        const ModelRow* const row = _repository.models().model(narrow(model));
        const QorIdentifier id = narrow(cls);
        if (row == nullptr || _repository.meta().objectClass(id) == nullptr) return QorErrorCode::NotFound;
        std::vector<long> found;
        const auto take = [&](QorIdentifier ofClass) {
            if (const IdentifierList* list = _repository.models().objectsOfClass(*row, ofClass))
                list->forEach(_repository.things(), [&](QorIdentifier object) { found.push_back(object); });
        };
        take(id);
        if (withSubclasses)
            for (const QorIdentifier below : _repository.meta().descendants(id)) take(below);
        return give(objects, std::move(found));
    });
}

QorErrorCode ModelingManager::getModelClass(long model, long& cls) {
    cls = -1;
    const QorIdentifier id = narrow(model);
    return giveFound(cls, isModelVersion(model) ? _repository.models().modelTypeOf(id) : QorNoIdentifier);
}

QorErrorCode ModelingManager::GetClassOfInstance(long object, long& cls) {
    cls = -1;
    const QorIdentifier id = narrow(object);
    return giveFound(cls, isRelationInstance(object) ? QorNoIdentifier : _repository.models().classOfInstance(id));
}

QorErrorCode ModelingManager::getInstanceIDFromInstanceName(long model, long cls, const char* name, long& object) {
    object = -1;
    // NotFound means that the name is free, and that only.
    if (_repository.models().model(narrow(model)) == nullptr || _repository.meta().objectClass(narrow(cls)) == nullptr)
        return QorErrorCode::OutOfRange;
    return giveFound(object, _repository.models().findObject(narrow(model), narrow(cls), textOrEmpty(name)));
}

QorErrorCode ModelingManager::createInstance(long model, long cls, const char* name, long& object) {
    object = -1;
    return answered([&] {
        const QorBuildResult result = _repository.change(
            [&] { return _repository.models().addObject(narrow(model), narrow(cls), textOrEmpty(name)); });
        return result.ok() ? give(object, result.id) : codeOf(result.error);
    });
}

QorErrorCode ModelingManager::RenameInstance(long model, long object, const char* name, bool raiseEvent) {
    return answered([&] {
        const QorIdentifier id = narrow(object);
        if (_repository.models().object(id) == nullptr) return QorErrorCode::NotFound;
        return writeValue(narrow(model), id, QorAttributeId::Name, textOrEmpty(name), raiseEvent);
    });
}

QorErrorCode ModelingManager::deleteInstance(long model, long object) {
    return answered([&] {
        const QorIdentifier id = narrow(object);
        const ObjectRow* const row = _repository.models().object(id);
        if (row == nullptr || row->model != narrow(model)) return QorErrorCode::NotFound;
        const bool losesReferences = holdsReferences(_repository, id);
        const QorBuildResult result = _repository.change([&] { return _repository.models().removeObject(id); });
        if (!result.ok()) return codeOf(result.error);
        if (losesReferences) _announcements.referencesChanged(narrow(model));
        return QorErrorCode::Ok;
    });
}

QorErrorCode ModelingManager::getModelThreadIDFromModelName(const char* name, unsigned long modelType, long& thread) {
    thread = -1;
    const LibraryRow* const library = _repository.meta().library(_session.library);
    if (library == nullptr || modelType >= library->modelTypes.size()) return QorErrorCode::NotFound;
    return giveFound(thread, _repository.models().findThread(library->modelTypes[modelType], textOrEmpty(name)));
}

QorErrorCode ModelingManager::getLastModelVersionOfModelThread(long thread, long& model) {
    model = -1;
    const ThreadRow* const row = _repository.models().thread(narrow(thread));
    return giveFound(model, row ? row->versions.last(_repository.things()) : QorNoIdentifier);
}

bool ModelingManager::isModelVersion(long identifier) {
    return _repository.kindOf(narrow(identifier)) == QorThingKind::Model;
}

// ---- Relations ----

QorErrorCode ModelingManager::relationOf(long relation, long& relationClass) {
    relationClass = -1;
    const RelationRow* const row = _repository.models().relation(narrow(relation));
    return giveFound(relationClass, row ? row->relationClass : QorNoIdentifier);
}

QorErrorCode ModelingManager::getEndpointsOfRelationInstance(long relation, long& from, long& to) {
    from = to = -1;
    const RelationRow* const row = _repository.models().relation(narrow(relation));
    if (row == nullptr) return QorErrorCode::NotFound;
    from = row->from;
    to = row->to;
    return QorErrorCode::Ok;
}

QorErrorCode ModelingManager::getToInstanceViaRelnInstance(long relation, long& to) {
    long from = -1;
    return getEndpointsOfRelationInstance(relation, from, to);
}

QorErrorCode ModelingManager::giveRelations(long object, Adjacency::Direction direction, ISortedSet<long>& relations) {
    relations.removeAll();
    return answered([&] {
        const QorIdentifier id = narrow(object);
        if (_repository.models().object(id) == nullptr) return QorErrorCode::NotFound;
        const std::span<const QorRelationEnd> ends = _repository.models().ends(direction, id);
        relations.reserve(ends.size());
        for (const QorRelationEnd& end : ends) relations.add(end.relation);
        return QorErrorCode::Ok;
    });
}

QorErrorCode ModelingManager::getFromRelationInstances(long object, ISortedSet<long>& relations) {
    return giveRelations(object, Adjacency::Outgoing, relations);
}

QorErrorCode ModelingManager::getToRelationInstances(long object, ISortedSet<long>& relations) {
    return giveRelations(object, Adjacency::Incoming, relations);
}

QorErrorCode ModelingManager::moveEnd(long relation, long object, Adjacency::Direction direction) {
    return answered([&] {
        const QorBuildResult result = _repository.change(
            [&] { return _repository.models().moveEnd(narrow(relation), direction, narrow(object)); });
        return codeOf(result.error);
    });
}

QorErrorCode ModelingManager::moveFromEndpoint(long relation, long object) {
    return moveEnd(relation, object, Adjacency::Outgoing);
}

QorErrorCode ModelingManager::moveToEndpoint(long relation, long object) {
    return moveEnd(relation, object, Adjacency::Incoming);
}

}  // namespace qor::embedded
