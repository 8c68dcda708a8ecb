// SPDX-License-Identifier: Apache-2.0
#include "embedded/References.h"

#include <map>
#include <utility>

namespace qor::embedded {

namespace {

// Walks instances, and remembers for each class which of its attributes can hold references.
class ReferenceWalk {
public:
    ReferenceWalk(const Repository& repository, TakeNamingValue take, bool withProfiles = false)
        : _repository(repository), _take(std::move(take)), _withProfiles(withProfiles) {}

    void visitModel(QorIdentifier model) {
        const ModelRow* const row = _repository.models().model(model);
        if (row == nullptr) return;
        const auto visitEach = [&](QorIdentifier instance) { visit(instance); };
        row->objects.forEach(_repository.things(), visitEach);
        row->relations.forEach(_repository.things(), visitEach);
    }

    void visit(QorIdentifier instance) { visit(instance, instance); }

private:
    void visit(QorIdentifier instance, QorIdentifier holder) {
        for (const AttributeRow* attribute : attributesOf(_repository.models().classOfInstance(instance))) {
            if (attribute->type == QorCoreAttributeType::Record) {
                for (const QorIdentifier row : _repository.models().rows(instance, attribute->id)) visit(row, holder);
            } else if (const auto text = _repository.value(instance, *attribute, true); text && !text->empty()) {
                _take(holder, *attribute, *text);
            }
        }
    }

    const std::vector<const AttributeRow*>& attributesOf(QorIdentifier cls) {
        const auto [place, isNew] = _attributes.try_emplace(cls);
        if (!isNew) return place->second;
        for (const QorIdentifier id : _repository.meta().attributesInLine(cls)) {
            const AttributeRow* const row = _repository.meta().attribute(id);
            const bool canHold = row->type == QorCoreAttributeType::InterReference ||
                                 row->type == QorCoreAttributeType::Record ||
                                 (_withProfiles && row->type == QorCoreAttributeType::AttributeProfile);
            if (canHold && row->level == QorAttributeLevel::Instance) place->second.push_back(row);
        }
        return place->second;
    }

    const Repository& _repository;
    TakeNamingValue _take;
    bool _withProfiles;
    std::map<QorIdentifier, std::vector<const AttributeRow*>> _attributes;
};

TakeNamingValue withoutInstance(const TakeReferences& take) {
    return [&take](QorIdentifier, const AttributeRow& attribute, std::string_view text) { take(attribute, text); };
}

}  // namespace

void forEachReference(const Repository& repository, QorIdentifier instance, const TakeReferences& take) {
    ReferenceWalk(repository, withoutInstance(take)).visit(instance);
}

void forEachReferenceInModel(const Repository& repository, QorIdentifier model, const TakeReferences& take) {
    ReferenceWalk(repository, withoutInstance(take)).visitModel(model);
}

void forEachNamingValueOf(const Repository& repository, QorIdentifier instance, const TakeNamingValue& take) {
    ReferenceWalk(repository, take, true).visit(instance);
}

void forEachNamingValue(const Repository& repository, QorIdentifier model, const TakeNamingValue& take) {
    ReferenceWalk(repository, take, true).visitModel(model);
}

bool holdsReferences(const Repository& repository, QorIdentifier instance) {
    bool holds = false;
    forEachReference(repository, instance, [&](const AttributeRow&, std::string_view) { holds = true; });
    return holds;
}

}  // namespace qor::embedded
