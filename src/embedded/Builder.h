// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "embedded/LibrarySession.h"
#include "embedded/QorRepositoryBuilder.h"
#include "embedded/Repository.h"

namespace qor::embedded {

class Builder final : public QorRepositoryBuilder {
public:
    Builder(Repository& repository, const LibrarySession& session) : _repository(repository), _session(session) {}
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
    QorBuildResult addModelType(QorIdentifier part, std::string_view name,
                                std::span<const QorIdentifier> classes) override;
    QorBuildResult removeApplicationLibrary(QorIdentifier applicationLibrary) override;

    QorBuildResult addModel(QorIdentifier modelType, std::string_view name, std::string_view version) override;
    QorBuildResult addObject(QorIdentifier model, QorIdentifier cls, std::string_view name) override;
    QorBuildResult addRelation(QorIdentifier relationClass, QorIdentifier from, QorIdentifier to) override;
    QorBuildResult setValue(QorIdentifier instance, QorIdentifier attribute, std::string_view text) override;
    QorBuildResult removeModel(QorIdentifier model) override;

    void reserve(std::size_t objects, std::size_t relations) override;
    void layOut() override;

private:
    Repository& _repository;
    const LibrarySession& _session;
};

}  // namespace qor::embedded
