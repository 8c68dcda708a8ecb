// SPDX-License-Identifier: Apache-2.0
#include "embedded/References.h"

#include <map>

namespace qor::embedded {

namespace {

// Walks instances, and remembers for each class which of its attributes can hold references.
class ReferenceWalk {
public:
    ReferenceWalk(const Repository& repository, const TakeReferences& take) : _repository(repository), _take(take) {}

    void visit(QorIdentifier instance) {
        for (const AttributeRow* attribute : attributesOf(_repository.models().classOfInstance(instance))) {
            if (attribute->type == QorCoreAttributeType::Record) {
                for (const QorIdentifier row : _repository.models().rows(instance, attribute->id)) visit(row);
            } else if (const auto text = _repository.value(instance, *attribute, true); text && !text->empty()) {
                _take(*attribute, *text);
            }
        }
    }

private:
    const std::vector<const AttributeRow*>& attributesOf(QorIdentifier cls) {
        const auto [place, isNew] = _attributes.try_emplace(cls);
        if (!isNew) return place->second;
        for (const QorIdentifier id : _repository.meta().attributesInLine(cls)) {
            const AttributeRow* const row = _repository.meta().attribute(id);
            const bool canHold =
                row->type == QorCoreAttributeType::InterReference || row->type == QorCoreAttributeType::Record;
            if (canHold && row->level == QorAttributeLevel::Instance) place->second.push_back(row);
        }
        return place->second;
    }

    const Repository& _repository;
    const TakeReferences& _take;
    std::map<QorIdentifier, std::vector<const AttributeRow*>> _attributes;
};

}  // namespace

void forEachReference(const Repository& repository, QorIdentifier instance, const TakeReferences& take) {
    ReferenceWalk(repository, take).visit(instance);
}

void forEachReferenceInModel(const Repository& repository, QorIdentifier model, const TakeReferences& take) {
    const ModelRow* const row = repository.models().model(model);
    if (row == nullptr) return;
    ReferenceWalk walk(repository, take);
    const auto visit = [&](QorIdentifier instance) { walk.visit(instance); };
    row->objects.forEach(repository.things(), visit);
    row->relations.forEach(repository.things(), visit);
}

bool holdsReferences(const Repository& repository, QorIdentifier instance) {
    bool holds = false;
    forEachReference(repository, instance, [&](const AttributeRow&, std::string_view) { holds = true; });
    return holds;
}

}  // namespace qor::embedded
