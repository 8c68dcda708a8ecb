// SPDX-License-Identifier: Apache-2.0
#include "embedded/Answers.h"
#include "embedded/ModelingManager.h"
#include "platform/QorAttributeIds.h"

namespace qor::embedded {

ModelingManager::~ModelingManager() = default;

// ---- Names and kinds ----

QorErrorCode ModelingManager::getAttributeName(long attribute, char*& name) {
    name = nullptr;
    return answered([&] {
        const QorIdentifier id = narrow(attribute);
        if (_repository.meta().attribute(id) == nullptr) return QorErrorCode::NotFound;
        return give(name, _repository.nameOf(id));
    });
}

QorErrorCode ModelingManager::getClassName(long cls, char*& name) {
    name = nullptr;
    return answered([&] {
        const QorIdentifier id = narrow(cls);
        if (!isClass(cls) && _repository.meta().anyClass(id) == nullptr) return QorErrorCode::NotFound;
        return give(name, _repository.nameOf(id));
    });
}

QorErrorCode ModelingManager::getRelationClassName(long relationClass, char*& name) {
    name = nullptr;
    return answered([&] {
        const QorIdentifier id = narrow(relationClass);
        if (_repository.meta().relationClass(id) == nullptr) return QorErrorCode::NotFound;
        return give(name, _repository.nameOf(id));
    });
}

QorErrorCode ModelingManager::getRecordClassName(long attribute, char*& name) {
    name = nullptr;
    return answered([&] {
        long recordClass = -1;
        const QorErrorCode code = getRecordClassIDFromAttributeID(attribute, recordClass);
        return code == QorErrorCode::Ok ? give(name, _repository.nameOf(narrow(recordClass))) : code;
    });
}

QorErrorCode ModelingManager::getAttributeType(long attribute, QorCoreAttributeType& type) {
    const AttributeRow* const row = _repository.meta().attribute(narrow(attribute));
    type = row ? row->type : QorCoreAttributeType::None;
    return row ? QorErrorCode::Ok : QorErrorCode::NotFound;
}

QorErrorCode ModelingManager::getUIAttributeType(long attribute, QorCoreAttributeType& type) {
    const AttributeRow* const row = _repository.meta().attribute(narrow(attribute));
    const bool isShownOtherwise = row != nullptr && row->shownAs != QorCoreAttributeType::None;
    if (!isShownOtherwise) return getAttributeType(attribute, type);
    type = row->shownAs;
    return QorErrorCode::Ok;
}

// Whatever `classOf` can answer is a class: also a model type, and the class of a library part.
bool ModelingManager::isClass(long identifier) {
    const QorThingKind kind = _repository.kindOf(narrow(identifier));
    return kind == QorThingKind::Class || kind == QorThingKind::ModelType || kind == QorThingKind::LibraryClass;
}

bool ModelingManager::isRelationClass(long identifier) {
    return _repository.kindOf(narrow(identifier)) == QorThingKind::RelationClass;
}

bool ModelingManager::isRelationInstance(long identifier) {
    return _repository.kindOf(narrow(identifier)) == QorThingKind::Relation;
}

// ---- Meta-model ----

QorErrorCode ModelingManager::classOf(long identifier, long& cls) {
    cls = -1;
    const QorIdentifier id = narrow(identifier);
    switch (_repository.kindOf(id)) {
        case QorThingKind::Object:
            return give(cls, _repository.models().object(id)->cls);
        case QorThingKind::Model:
            return give(cls, _repository.models().modelTypeOf(id));
        case QorThingKind::LibraryPart:
            return give(cls, _repository.meta().part(id)->part == QorLibraryPart::BusinessProcess
                                 ? QorLibraryKind::BusinessProcess
                                 : QorLibraryKind::WorkingEnvironment);
        default:
            return QorErrorCode::NotFound;
    }
}

QorErrorCode ModelingManager::getAllInstantiableClasses(long library, ISortedSet<long>& classes, bool withSubclasses) {
    classes.removeAll();
    return answered([&] {
        const MetaModel& meta = _repository.meta();
        const QorIdentifier id = narrow(library);
        if (!isLibrary(id)) return QorErrorCode::NotFound;
        std::vector<long> found;
        const auto take = [&](QorIdentifier cls) {
            const ClassRow& row = *meta.anyClass(cls);
            if (!row.isAbstract && !row.isRecordClass) found.push_back(cls);
        };
        const auto takePart = [&](QorIdentifier partId) {
            for (const QorIdentifier cls : meta.part(partId)->classes) {
                take(cls);
                // A class below one of the same part is among that part's classes anyway.
                if (!withSubclasses) continue;
                for (const QorIdentifier below : meta.anyClass(cls)->subclasses) {
                    if (meta.partOf(below) == partId) continue;
                    take(below);
                    for (const QorIdentifier deeper : meta.descendants(below)) take(deeper);
                }
            }
        };
        if (const LibraryRow* both = meta.library(id))
            for (const QorIdentifier partId : both->parts) takePart(partId);
        else
            takePart(id);
        return give(classes, std::move(found));
    });
}

QorErrorCode ModelingManager::getClassIDFromClassName(long library, const char* name, long& cls) {
    cls = -1;
    const QorIdentifier found = _repository.meta().findClass(narrow(library), textOrEmpty(name));
    return giveFound(cls, _repository.meta().objectClass(found) ? found : QorNoIdentifier);
}

QorErrorCode ModelingManager::getRelationIDFromRelationName(long library, const char* name, long& relationClass) {
    relationClass = -1;
    return giveFound(relationClass, _repository.meta().findRelationClass(narrow(library), textOrEmpty(name)));
}

QorErrorCode ModelingManager::giveRelationClasses(long cls, bool outgoing, ISortedSet<long>& relationClasses) const {
    relationClasses.removeAll();
    return answered([&] {
        const QorIdentifier id = narrow(cls);
        if (_repository.meta().objectClass(id) == nullptr) return QorErrorCode::NotFound;
        std::vector<long> found;
        _repository.meta().forEachInLine(id, [&](const ClassRow& row) {
            const std::vector<QorIdentifier>& own = outgoing ? row.outgoing : row.incoming;
            found.insert(found.end(), own.begin(), own.end());
        });
        return give(relationClasses, std::move(found));
    });
}

QorErrorCode ModelingManager::getAllFromRelationsRecursive(long cls, ISortedSet<long>& relationClasses) {
    return giveRelationClasses(cls, true, relationClasses);
}

QorErrorCode ModelingManager::getAllToRelationsRecursive(long cls, ISortedSet<long>& relationClasses) {
    return giveRelationClasses(cls, false, relationClasses);
}

QorErrorCode ModelingManager::getAllSubClasses(long cls, ISortedSet<long>& subclasses) {
    subclasses.removeAll();
    return answered([&] {
        const QorIdentifier id = narrow(cls);
        if (_repository.meta().anyClass(id) == nullptr) return QorErrorCode::NotFound;
        return give(subclasses, _repository.meta().descendants(id));
    });
}

QorErrorCode ModelingManager::getLibraryOfClass(long cls, long& library) {
    library = -1;
    const QorIdentifier id = narrow(cls);
    const bool isAnyClass = _repository.meta().anyClass(id) || _repository.meta().relationClass(id);
    return giveFound(library, isAnyClass ? _repository.meta().partOf(id) : QorNoIdentifier);
}

QorErrorCode ModelingManager::getAttributeIDFromAttributeName(long cls, const char* name, long& attribute) {
    attribute = -1;
    return giveFound(attribute, _repository.meta().findAttribute(narrow(cls), textOrEmpty(name)));
}

QorErrorCode ModelingManager::getRecordClassIDFromAttributeID(long attribute, long& recordClass) {
    recordClass = -1;
    const AttributeRow* const row = _repository.meta().attribute(narrow(attribute));
    const bool isRecord = row != nullptr && row->type == QorCoreAttributeType::Record;
    return giveFound(recordClass, isRecord ? row->target : QorNoIdentifier);
}

}  // namespace qor::embedded
