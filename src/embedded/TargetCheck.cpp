// SPDX-License-Identifier: Apache-2.0
#include "embedded/TargetCheck.h"

#include <algorithm>
#include <utility>

#include "embedded/InterReferenceText.h"
#include "embedded/References.h"

namespace qor::embedded {

namespace {

std::string inQuotes(std::string_view name) { return "\"" + std::string(name) + "\""; }

// The newest version of a model.
QorIdentifier findModel(const Repository& repository, QorIdentifier library, const QorInterModRefTarget& target) {
    const QorIdentifier type = repository.meta().findModelType(library, target.modelTypeName.view());
    const ThreadRow* const thread =
        repository.models().thread(repository.models().findThread(type, target.modelName.view()));
    return thread == nullptr ? QorNoIdentifier : thread->versions.last(repository.things());
}

bool holdsObject(const Repository& repository, QorIdentifier library, QorIdentifier model,
                 const QorInterModRefTarget& target) {
    const auto& parts = repository.meta().library(library)->parts;
    return std::any_of(std::begin(parts), std::end(parts), [&](QorIdentifier part) {
        const QorIdentifier cls = repository.meta().findClass(part, target.className.view());
        return repository.models().findObject(model, cls, target.objectName.view()) != QorNoIdentifier;
    });
}

bool exists(const Repository& repository, QorIdentifier library, const QorInterModRefTarget& target) {
    const QorIdentifier model = findModel(repository, library, target);
    return model != QorNoIdentifier && (target.objectName.IsEmpty() || holdsObject(repository, library, model, target));
}

std::string inWords(const Repository& repository, const NamedTarget& target) {
    if (target.profileClass != QorNoIdentifier)
        return "the profile " + inQuotes(target.object) + " of class " +
               inQuotes(repository.nameOf(target.profileClass));
    const std::string model = "the model " + inQuotes(target.model) + " of type " + inQuotes(target.modelType);
    if (target.object.empty()) return model;
    return "the object " + inQuotes(target.object) + " of class " + inQuotes(target.cls) + " in " + model;
}

}  // namespace

QorIdentifier findProfile(const Repository& repository, QorIdentifier object, QorIdentifier profileClass,
                          std::string_view name) {
    const ModelStore& models = repository.models();
    std::vector<QorIdentifier> classes = repository.meta().descendants(profileClass);
    classes.insert(classes.begin(), profileClass);
    const auto profileIn = [&](QorIdentifier model) {
        QorIdentifier found = QorNoIdentifier;
        for (auto at = classes.begin(); found == QorNoIdentifier && at != classes.end(); ++at)
            found = models.findObject(model, *at, name);
        return found;
    };
    if (const QorIdentifier own = profileIn(models.modelOf(object)); own != QorNoIdentifier) return own;
    QorIdentifier found = QorNoIdentifier;
    repository.meta()
        .library(repository.applicationLibraryOf(object))
        ->models.forEachUntil(repository.things(), [&](QorIdentifier model) {
            found = profileIn(model);
            return found != QorNoIdentifier;
        });
    return found;
}

std::vector<NamedTarget> missingTargets(const Repository& repository, QorIdentifier instance,
                                        const AttributeRow& attribute, std::string_view text) {
    std::vector<NamedTarget> missing;
    if (text.empty()) return missing;
    if (attribute.type == QorCoreAttributeType::AttributeProfile) {
        if (findProfile(repository, instance, attribute.target, text) == QorNoIdentifier)
            missing.push_back({attribute.target, {}, {}, {}, std::string(text)});
    } else if (attribute.type == QorCoreAttributeType::InterReference) {
        const auto targets = parseReferences(text, attribute.refersToModels);
        const QorIdentifier library = repository.applicationLibraryOf(instance);
        for (const QorInterModRefTarget& target : targets.value_or(std::vector<QorInterModRefTarget>()))
            if (!exists(repository, library, target))
                missing.push_back({QorNoIdentifier, target.modelTypeName.str(), target.modelName.str(),
                                   target.className.str(), target.objectName.str()});
    }
    return missing;
}

std::vector<QorMissingTarget> missingTargetsIn(const Repository& repository, QorIdentifier model) {
    std::vector<QorMissingTarget> found;
    forEachNamingValue(repository, model,
                       [&](QorIdentifier instance, const AttributeRow& attribute, std::string_view text) {
                           for (const NamedTarget& target : missingTargets(repository, instance, attribute, text))
                               found.push_back({instance, attribute.id, inWords(repository, target)});
                       });
    return found;
}

bool TargetCheck::mayBeSet(QorIdentifier instance, const AttributeRow& attribute, std::string_view text) {
    const std::vector<NamedTarget> missing = missingTargets(_repository, instance, attribute, text);
    const QorIdentifier model = missing.empty() ? QorNoIdentifier : _repository.models().modelOf(instance);
    return std::all_of(missing.begin(), missing.end(),
                       [&](const NamedTarget& target) { return isNamedIn(model, target); });
}

bool TargetCheck::isNamedIn(QorIdentifier model, const NamedTarget& target) {
    if (_model == model) {
        const auto known = _missing.find(target);
        if (_asOf == _repository.changes()) return known != _missing.end();
        if (known != _missing.end() && _repository.models().modelOf(known->second) == model &&
            names(known->second, target))
            return true;
    }
    _model = QorNoIdentifier;
    _missing.clear();
    forEachNamingValue(_repository, model,
                       [&](QorIdentifier instance, const AttributeRow& attribute, std::string_view text) {
                           for (NamedTarget& its : missingTargets(_repository, instance, attribute, text))
                               _missing.try_emplace(std::move(its), instance);
                       });
    _model = model;
    _asOf = _repository.changes();
    return _missing.contains(target);
}

bool TargetCheck::names(QorIdentifier instance, const NamedTarget& target) const {
    bool isNamed = false;
    forEachNamingValueOf(_repository, instance,
                         [&](QorIdentifier, const AttributeRow& attribute, std::string_view text) {
                             const auto missing = missingTargets(_repository, instance, attribute, text);
                             isNamed = isNamed || std::find(missing.begin(), missing.end(), target) != missing.end();
                         });
    return isNamed;
}

}  // namespace qor::embedded
