// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "embedded/QorRepositoryReader.h"
#include "embedded/Repository.h"

namespace qor::embedded {

class Reader final : public QorRepositoryReader {
public:
    explicit Reader(const Repository& repository) : _repository(repository) {}
    ~Reader() override;

    [[nodiscard]] QorThingKind kindOf(QorIdentifier id) const override;
    [[nodiscard]] std::string_view nameOf(QorIdentifier id) const override;

    [[nodiscard]] std::vector<QorIdentifier> applicationLibraries() const override;
    [[nodiscard]] QorIdentifier applicationLibraryOf(QorIdentifier id) const override;
    [[nodiscard]] QorIdentifier libraryPart(QorIdentifier applicationLibrary, QorLibraryPart part) const override;
    [[nodiscard]] std::vector<QorClassInfo> classesOf(QorIdentifier part) const override;
    [[nodiscard]] QorClassInfo classInfo(QorIdentifier cls) const override;
    [[nodiscard]] std::vector<QorRelationClassInfo> relationClassesOf(QorIdentifier part) const override;
    [[nodiscard]] QorRelationClassInfo relationClassInfo(QorIdentifier relationClass) const override;
    [[nodiscard]] std::vector<QorAttributeInfo> attributesOf(QorIdentifier owner) const override;
    [[nodiscard]] QorAttributeInfo attributeInfo(QorIdentifier attribute) const override;
    [[nodiscard]] QorIdentifier findAttribute(QorIdentifier owner, std::string_view name) const override;
    [[nodiscard]] QorIdentifier findClass(QorIdentifier library, std::string_view name) const override;
    [[nodiscard]] QorIdentifier findRelationClass(QorIdentifier library, std::string_view name) const override;
    [[nodiscard]] QorIdentifier findModelType(QorIdentifier library, std::string_view name) const override;
    [[nodiscard]] std::string_view classValue(QorIdentifier cls, QorIdentifier attribute) const override;
    [[nodiscard]] std::string_view libraryValue(QorIdentifier library, QorIdentifier attribute) const override;
    [[nodiscard]] std::string_view unmovedRelationClass(QorIdentifier part) const override;
    [[nodiscard]] std::vector<QorModelTypeInfo> modelTypesOf(QorIdentifier applicationLibrary) const override;
    [[nodiscard]] std::vector<QorIdentifier> visibleClasses(QorIdentifier modelType) const override;

    [[nodiscard]] std::vector<QorModelInfo> modelsOf(QorIdentifier applicationLibrary) const override;
    [[nodiscard]] QorModelInfo modelInfo(QorIdentifier model) const override;
    [[nodiscard]] QorIdentifier modelOf(QorIdentifier objectOrRelation) const override;
    [[nodiscard]] std::vector<QorIdentifier> objectsOf(QorIdentifier model) const override;
    [[nodiscard]] QorIdentifier classOfObject(QorIdentifier object) const override;
    [[nodiscard]] std::vector<QorRelationInfo> relationsOf(QorIdentifier model) const override;
    [[nodiscard]] QorRelationInfo relationInfo(QorIdentifier relation) const override;
    [[nodiscard]] std::string_view valueOf(QorIdentifier instance, QorIdentifier attribute) const override;
    [[nodiscard]] bool hasValue(QorIdentifier instance, QorIdentifier attribute) const override;
    [[nodiscard]] std::vector<QorMissingTarget> missingTargets(QorIdentifier model) const override;
    [[nodiscard]] std::vector<QorIdentifier> recordRows(QorIdentifier instance, QorIdentifier attribute) const override;

    [[nodiscard]] std::vector<QorModelGroupInfo> modelGroupsOf(QorIdentifier applicationLibrary) const override;
    [[nodiscard]] QorModelGroupInfo modelGroupInfo(QorIdentifier group) const override;
    [[nodiscard]] QorIdentifier findModelGroup(QorIdentifier parent, std::string_view name) const override;
    [[nodiscard]] QorIdentifier groupOfModel(QorIdentifier model) const override;

private:
    [[nodiscard]] std::optional<std::string_view> own(QorIdentifier thing, QorIdentifier attribute) const;

    const Repository& _repository;
};

}  // namespace qor::embedded
