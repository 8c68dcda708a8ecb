// SPDX-License-Identifier: Apache-2.0
#include "simmap/ReadinessQueries.h"

#include "frame/RepositoryLookup.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorOwnedText.h"

namespace qor::simmap {

namespace {

QorCoreModelingManager& repository() { return *QorCoreModelingManager::GetGlobal(); }

SV::String requiredText(long owner, long attribute) {
    auto text = frame::readText(owner, attribute);
    if (!text) throw RepositoryFailed();
    return std::move(*text);
}

}  // namespace

void require(QorErrorCode code) {
    if (code != QorErrorCode::Ok && code != QorErrorCode::NoValue) throw RepositoryFailed();
}

QorCoreAttributeType typeOf(long attribute) {
    auto type = QorCoreAttributeType::None;
    require(repository().getUIAttributeType(attribute, type));
    return type;
}

long classOf(long object) {
    long cls = 0;
    require(repository().GetClassOfInstance(object, cls));
    return cls;
}

SV::String nameOfClass(long cls) { return requiredText(cls, QorAttributeId::ClassName); }

SV::String nameOf(long object) { return requiredText(object, QorAttributeId::Name); }

ISortedSet<long> withSubclasses(long cls) {
    ISortedSet<long> classes;
    if (cls != 0) require(repository().getAllSubClasses(cls, classes));
    classes.add(cls);
    return classes;
}

std::vector<long> instantiableFrom(long cls) {
    long library = 0;
    require(repository().getLibraryOfClass(cls, library));
    ISortedSet<long> instantiable;
    require(repository().getAllInstantiableClasses(library, instantiable, true));
    std::vector<long> classes;
    for (const long each : withSubclasses(cls))
        if (instantiable.contains(each)) classes.push_back(each);
    return classes;
}

bool hasValue(long object, long attribute) {
    QorOwnedText text;
    require(repository().getAttributeValueAsNewChar(object, attribute, text.out()));
    return !text.isEmpty();
}

bool hasRelations(long object) {
    ISortedSet<long> relations;
    require(repository().getFromRelationInstances(object, relations));
    if (!relations.isEmpty()) return true;
    require(repository().getToRelationInstances(object, relations));
    return !relations.isEmpty();
}

std::vector<long> shownAttributes(long cls, QorCoreAttributeType type) {
    std::vector<long> found;
    std::vector<frame::ShownAttribute> shown;
    require(frame::readNotebook(cls, shown));
    for (const auto& attribute : shown)
        if (typeOf(attribute.id) == type) found.push_back(attribute.id);
    return found;
}

std::vector<long> AttributesByClass::lackingFrom(long cls) {
    std::vector<long> lacking;
    bool anyHas = false;
    for (const long each : instantiableFrom(cls)) {
        if (of(each).empty())
            lacking.push_back(each);
        else
            anyHas = true;
    }
    if (!anyHas && of(cls).empty()) return {cls};
    return lacking;
}

}  // namespace qor::simmap
