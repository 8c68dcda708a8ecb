// SPDX-License-Identifier: Apache-2.0
#include "embedded/Builder.h"

#include "embedded/Built.h"
#include "embedded/References.h"
#include "platform/QorGuard.h"

namespace qor::embedded {

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

QorBuildResult Builder::setUnmovedRelationClass(QorIdentifier part, std::string_view relationClass) {
    return built(_repository, [&] { return _repository.setUnmovedRelationClass(part, relationClass); });
}

QorBuildResult Builder::addModelType(QorIdentifier part, std::string_view name,
                                     std::span<const QorIdentifier> classes) {
    return built(_repository, [&] { return _repository.meta().addModelType(part, name, classes); });
}

// What is loaded stays.
QorBuildResult Builder::removeApplicationLibrary(QorIdentifier applicationLibrary) {
    if (applicationLibrary != QorNoIdentifier && applicationLibrary == _session.library)
        return refused(QorBuildError::HasInstances);
    return built(
        _repository, [&] { return _repository.removeApplicationLibrary(applicationLibrary); }, kOfManySteps);
}

QorBuildResult Builder::addModel(QorIdentifier modelType, std::string_view name, std::string_view version) {
    const QorBuildResult result =
        built(_repository, [&] { return _repository.models().addModel(modelType, name, version); });
    if (!result.ok()) return result;
    const ModelStore& models = _repository.models();
    _announcements.modelCreated(result.id, models.thread(models.model(result.id)->thread)->versions.size() > 1);
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
        _announcements.referencesChanged(_repository.models().modelOf(instance));
    return result;
}

QorBuildResult Builder::addRecordRow(QorIdentifier instance, QorIdentifier attribute, long position) {
    return built(_repository, [&] {
        const AttributeRow* const row = _repository.attributeOf(instance, attribute);
        if (_repository.models().classOfInstance(instance) == QorNoIdentifier || row == nullptr)
            return refused(QorBuildError::UnknownIdentifier);
        return _repository.models().addRow(instance, *row, position);
    });
}

QorBuildResult Builder::pasteObject(QorIdentifier model, QorIdentifier source, std::string_view name) {
    bool hasReferences = false;
    const auto paste = [&] {
        hasReferences = holdsReferences(_repository, source);
        return _repository.pasteObject(model, source, name);
    };
    const QorBuildResult result = built(_repository, paste, kOfManySteps);
    if (result.ok() && hasReferences) _announcements.referencesChanged(model);
    return result;
}

// The versions that a model has when it changes: listeners may change them.
std::vector<QorIdentifier> Builder::versionsOf(QorIdentifier model) const {
    const ModelRow* const row = _repository.models().model(model);
    if (row == nullptr) return {};
    return _repository.models().thread(row->thread)->versions.copy<QorIdentifier>(_repository.things());
}

// Runs an operation on the thread of a model, and announces each version when it changed something.
template <class Operation>
QorBuildResult Builder::changedThread(QorIdentifier model, Operation operation,
                                      void (Announcements::*announce)(QorIdentifier) noexcept) {
    std::vector<QorIdentifier> versions;
    bool hasChanged = false;
    const QorBuildResult result = built(_repository, [&] {
        const ModelRow* const row = _repository.models().model(model);
        if (row == nullptr) return refused(QorBuildError::UnknownIdentifier);
        versions = versionsOf(model);
        return operation(row->thread, hasChanged);
    });
    if (result.ok() && hasChanged)
        for (const QorIdentifier version : versions) (_announcements.*announce)(version);
    return result.ok() ? QorBuildResult{model} : result;
}

QorBuildResult Builder::renameModel(QorIdentifier model, std::string_view name) {
    return changedThread(
        model,
        [&](QorIdentifier thread, bool& hasChanged) {
            hasChanged = _repository.nameOf(thread) != name;
            return _repository.models().renameThread(thread, name);
        },
        &Announcements::modelRenamed);
}

QorBuildResult Builder::moveModel(QorIdentifier model, QorIdentifier group) {
    return changedThread(
        model,
        [&](QorIdentifier thread, bool& hasChanged) {
            hasChanged = _repository.models().thread(thread)->group != group;
            return _repository.groups().place(thread, group);
        },
        &Announcements::modelMoved);
}

QorBuildResult Builder::removeModel(QorIdentifier model) {
    const ModelRow* const row = _repository.models().model(model);
    const QorIdentifier thread = row ? row->thread : QorNoIdentifier;
    const QorBuildResult result = built(_repository, [&] { return _repository.models().removeModel(model); });
    if (!result.ok()) return result;
    const ThreadRow* const left = _repository.models().thread(thread);
    _announcements.modelDeleted(model, left ? left->versions.last(_repository.things()) : QorNoIdentifier);
    return result;
}

QorBuildResult Builder::addModelGroup(QorIdentifier parent, std::string_view name) {
    return built(_repository, [&] { return _repository.groups().add(parent, name); });
}

QorBuildResult Builder::renameModelGroup(QorIdentifier group, std::string_view name) {
    return built(_repository, [&] { return _repository.groups().rename(group, name); });
}

QorBuildResult Builder::moveModelGroup(QorIdentifier group, QorIdentifier parent) {
    return built(_repository, [&] { return _repository.groups().move(group, parent); });
}

QorBuildResult Builder::removeModelGroup(QorIdentifier group) {
    return built(
        _repository, [&] { return _repository.removeModelGroup(group); }, kOfManySteps);
}

// Room and order are a service: without memory for them, adding and reading say so.
void Builder::reserve(std::size_t objects, std::size_t relations) {
    Qor_Guarded("embedded", [&] { _repository.models().reserve(objects, relations); });
}

void Builder::layOut() {
    Qor_Guarded("embedded", [&] { _repository.models().layOut(); });
}

}  // namespace qor::embedded
