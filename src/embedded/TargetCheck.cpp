// SPDX-License-Identifier: Apache-2.0
#include "embedded/TargetCheck.h"

#include <algorithm>

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

// Empty when the target exists.
std::string whatIsMissing(const Repository& repository, QorIdentifier library, const QorInterModRefTarget& target) {
    const QorIdentifier model = findModel(repository, library, target);
    const std::string modelText =
        "model " + inQuotes(target.modelName.view()) + " of type " + inQuotes(target.modelTypeName.view());
    if (model == QorNoIdentifier) return "the " + modelText;
    if (target.objectName.IsEmpty() || holdsObject(repository, library, model, target)) return {};
    return "the object " + inQuotes(target.objectName.view()) + " of class " + inQuotes(target.className.view()) +
           " in the " + modelText;
}

}  // namespace

QorIdentifier findProfile(const Repository& repository, QorIdentifier object, QorIdentifier profileClass,
                          std::string_view name) {
    const ModelStore& models = repository.models();
    std::vector<QorIdentifier> classes = repository.meta().descendants(profileClass);
    classes.insert(classes.begin(), profileClass);
    QorIdentifier found = QorNoIdentifier;
    const auto search = [&](QorIdentifier model) {
        for (auto at = classes.begin(); found == QorNoIdentifier && at != classes.end(); ++at)
            found = models.findObject(model, *at, name);
    };
    search(models.modelOf(object));
    if (found == QorNoIdentifier)
        repository.meta().library(repository.applicationLibraryOf(object))->models.forEach(repository.things(), search);
    return found;
}

std::vector<std::string> missingTargets(const Repository& repository, QorIdentifier instance,
                                        const AttributeRow& attribute, std::string_view text) {
    std::vector<std::string> missing;
    if (text.empty()) return missing;
    if (attribute.type == QorCoreAttributeType::AttributeProfile) {
        if (findProfile(repository, instance, attribute.target, text) == QorNoIdentifier)
            missing.push_back("the profile " + inQuotes(text) + " of class " +
                              inQuotes(repository.nameOf(attribute.target)));
    } else if (attribute.type == QorCoreAttributeType::InterReference) {
        const auto targets = parseReferences(text, attribute.refersToModels);
        const QorIdentifier library = repository.applicationLibraryOf(instance);
        for (const QorInterModRefTarget& target : targets.value_or(std::vector<QorInterModRefTarget>()))
            if (std::string what = whatIsMissing(repository, library, target); !what.empty())
                missing.push_back(std::move(what));
    }
    return missing;
}

std::vector<QorMissingTarget> missingTargetsIn(const Repository& repository, QorIdentifier model) {
    std::vector<QorMissingTarget> found;
    forEachNamingValue(repository, model,
                       [&](QorIdentifier instance, const AttributeRow& attribute, std::string_view text) {
                           for (std::string& what : missingTargets(repository, instance, attribute, text))
                               found.push_back({instance, attribute.id, std::move(what)});
                       });
    return found;
}

bool TargetCheck::mayBeSet(QorIdentifier instance, const AttributeRow& attribute, std::string_view text) {
    const std::vector<std::string> missing = missingTargets(_repository, instance, attribute, text);
    const QorIdentifier model = _repository.models().modelOf(instance);
    const auto areKnown = [&] {
        return _model == model && std::all_of(missing.begin(), missing.end(),
                                              [&](const std::string& what) { return _missing.contains(what); });
    };
    if (missing.empty() || areKnown()) return true;
    _missing.clear();
    _model = model;
    for (QorMissingTarget& its : missingTargetsIn(_repository, model)) _missing.insert(std::move(its.what));
    return areKnown();
}

}  // namespace qor::embedded
