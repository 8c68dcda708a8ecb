// SPDX-License-Identifier: Apache-2.0
#include "embedded/Builder.h"

#include "platform/QorEventListener.h"
#include "platform/QorGuard.h"

namespace qor::embedded {

namespace {

// Memory is what identifiers are made of.
template <class Operation>
QorBuildResult built(Repository& repository, Operation operation) noexcept {
    try {
        return repository.change(operation);
    } catch (...) {
        return refused(QorBuildError::NoIdentifiersLeft);
    }
}

}  // namespace

Builder::~Builder() = default;

QorBuildResult Builder::addApplicationLibrary(std::string_view name, std::string_view businessProcessName,
                                              std::string_view workingEnvironmentName) {
    return built(_repository, [&] {
        return _repository.meta().addApplicationLibrary(name, businessProcessName, workingEnvironmentName);
    });
}

QorIdentifier Builder::libraryPart(QorIdentifier applicationLibrary, QorLibraryPart part) const {
    const LibraryRow* const row = _repository.meta().library(applicationLibrary);
    const auto at = static_cast<std::size_t>(part);
    return row != nullptr && at < row->parts.size() ? row->parts[at] : QorNoIdentifier;
}

QorBuildResult Builder::addClass(QorIdentifier part, std::string_view name, QorIdentifier superclass, bool abstract) {
    return built(_repository, [&] { return _repository.meta().addClass(part, name, superclass, abstract); });
}

QorBuildResult Builder::addRecordClass(QorIdentifier part, std::string_view name) {
    return built(_repository, [&] { return _repository.meta().addRecordClass(part, name); });
}

QorBuildResult Builder::addRelationClass(QorIdentifier part, std::string_view name, QorIdentifier fromClass,
                                         QorIdentifier toClass) {
    return built(_repository, [&] { return _repository.meta().addRelationClass(part, name, fromClass, toClass); });
}

QorBuildResult Builder::addAttribute(QorIdentifier owner, const QorAttributeSpec& attribute) {
    return built(_repository, [&] { return _repository.meta().addAttribute(owner, attribute); });
}

QorBuildResult Builder::setClassValue(QorIdentifier cls, QorIdentifier attribute, std::string_view text) {
    return built(_repository, [&] { return _repository.setClassValue(cls, attribute, text); });
}

QorBuildResult Builder::setLibraryValue(QorIdentifier library, QorIdentifier attribute, std::string_view text) {
    return built(_repository, [&] { return _repository.setLibraryValue(library, attribute, text); });
}

QorBuildResult Builder::addModelType(QorIdentifier part, std::string_view name,
                                     std::span<const QorIdentifier> classes) {
    return built(_repository, [&] { return _repository.meta().addModelType(part, name, classes); });
}

// What is loaded stays.
QorBuildResult Builder::removeApplicationLibrary(QorIdentifier applicationLibrary) {
    if (applicationLibrary != QorNoIdentifier && applicationLibrary == _session.library)
        return refused(QorBuildError::HasInstances);
    return built(_repository, [&] { return _repository.removeApplicationLibrary(applicationLibrary); });
}

QorBuildResult Builder::addModel(QorIdentifier modelType, std::string_view name, std::string_view version) {
    const QorBuildResult result =
        built(_repository, [&] { return _repository.models().addModel(modelType, name, version); });
    if (!result.ok()) return result;
    const ModelStore& models = _repository.models();
    const bool isFurther = models.thread(models.model(result.id)->thread)->versions.size() > 1;
    Qor_RaiseEvent(QorModelEvent(QorEventType::ModelCreated, result.id));
    if (isFurther) Qor_RaiseEvent(QorModelEvent(QorEventType::ModelVersionsChanged, result.id));
    return result;
}

QorBuildResult Builder::addObject(QorIdentifier model, QorIdentifier cls, std::string_view name) {
    return built(_repository, [&] { return _repository.models().addObject(model, cls, name); });
}

QorBuildResult Builder::addRelation(QorIdentifier relationClass, QorIdentifier from, QorIdentifier to) {
    return built(_repository, [&] { return _repository.models().addRelation(relationClass, from, to); });
}

QorBuildResult Builder::setValue(QorIdentifier instance, QorIdentifier attribute, std::string_view text) {
    const QorBuildResult result =
        built(_repository, [&] { return _repository.setInstanceValue(instance, attribute, text); });
    if (result.ok() && _repository.meta().attribute(attribute)->type == QorCoreAttributeType::InterReference)
        Qor_RaiseEvent(QorModelEvent(QorEventType::ModelReferencesChanged, _repository.models().modelOf(instance)));
    return result;
}

QorBuildResult Builder::removeModel(QorIdentifier model) {
    const QorBuildResult result = built(_repository, [&] { return _repository.models().removeModel(model); });
    if (result.ok()) Qor_RaiseEvent(QorModelEvent(QorEventType::ModelDeleted, model));
    return result;
}

// Room and order are a service: without memory for them, adding and reading say so.
void Builder::reserve(std::size_t objects, std::size_t relations) {
    Qor_Guarded("embedded", [&] { _repository.models().reserve(objects, relations); });
}

void Builder::layOut() {
    Qor_Guarded("embedded", [&] { _repository.models().layOut(); });
}

}  // namespace qor::embedded
