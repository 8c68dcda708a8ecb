// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "embedded/Announcements.h"
#include "embedded/LibrarySession.h"
#include "embedded/QorRepositoryBuilder.h"
#include "embedded/Repository.h"

namespace qor::embedded {

class Builder final : public QorRepositoryBuilder {
public:
    Builder(Repository& repository, const LibrarySession& session, Announcements& announcements)
        : _repository(repository), _session(session), _announcements(announcements) {}
    ~Builder() override;

    QorBuildResult addApplicationLibrary(std::string_view name, std::string_view businessProcessName,
                                         std::string_view workingEnvironmentName) override;
    [[nodiscard]] QorIdentifier libraryPart(QorIdentifier applicationLibrary, QorLibraryPart part) const override;
    QorBuildResult addClass(QorIdentifier part, std::string_view name, QorIdentifier superclass,
                            bool abstract) override;
    QorBuildResult addRecordClass(QorIdentifier part, std::string_view name) override;
    QorBuildResult addRelationClass(QorIdentifier part, std::string_view name, QorIdentifier fromClass,
                                    QorIdentifier toClass) override;
    QorBuildResult addAttribute(QorIdentifier owner, const QorAttributeSpec& attribute) override;
    QorBuildResult setClassValue(QorIdentifier cls, QorIdentifier attribute, std::string_view text) override;
    QorBuildResult setLibraryValue(QorIdentifier library, QorIdentifier attribute, std::string_view text) override;
    QorBuildResult setUnmovedRelationClass(QorIdentifier part, std::string_view relationClass) override;
    QorBuildResult addModelType(QorIdentifier part, std::string_view name,
                                std::span<const QorIdentifier> classes) override;
    QorBuildResult removeApplicationLibrary(QorIdentifier applicationLibrary) override;

    QorBuildResult addModel(QorIdentifier modelType, std::string_view name, std::string_view version) override;
    QorBuildResult addObject(QorIdentifier model, QorIdentifier cls, std::string_view name) override;
    QorBuildResult addRelation(QorIdentifier relationClass, QorIdentifier from, QorIdentifier to) override;
    QorBuildResult setValue(QorIdentifier instance, QorIdentifier attribute, std::string_view text) override;
    QorBuildResult addRecordRow(QorIdentifier instance, QorIdentifier attribute, long position) override;
    QorBuildResult pasteObject(QorIdentifier model, QorIdentifier source, std::string_view name) override;
    QorBuildResult renameModel(QorIdentifier model, std::string_view name) override;
    QorBuildResult removeModel(QorIdentifier model) override;

    QorBuildResult addModelGroup(QorIdentifier parent, std::string_view name) override;
    QorBuildResult renameModelGroup(QorIdentifier group, std::string_view name) override;
    QorBuildResult moveModelGroup(QorIdentifier group, QorIdentifier parent) override;
    QorBuildResult removeModelGroup(QorIdentifier group) override;
    QorBuildResult moveModel(QorIdentifier model, QorIdentifier group) override;

    void reserve(std::size_t objects, std::size_t relations) override;
    void layOut() override;

private:
    [[nodiscard]] std::vector<QorIdentifier> versionsOf(QorIdentifier model) const;
    template <class Operation>
    QorBuildResult changedThread(QorIdentifier model, Operation operation,
                                 void (Announcements::*announce)(QorIdentifier) noexcept);

    Repository& _repository;
    const LibrarySession& _session;
    Announcements& _announcements;
};

}  // namespace qor::embedded
