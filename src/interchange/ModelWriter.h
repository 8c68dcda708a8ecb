// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "embedded/QorRepositoryReader.h"
#include "interchange/ClassNaming.h"
#include "interchange/YamlWriter.h"

namespace qor::interchange {

/// Writes models of one application library.
class ModelWriter {
public:
    ModelWriter(const QorRepositoryReader& reader, QorIdentifier library, YamlWriter& writer)
        : _reader(reader), _library(library), _naming(reader, library), _writer(writer) {}

    void write(std::span<const QorIdentifier> models, std::string_view libraryFile);

private:
    struct Attribute {
        QorIdentifier id;
        std::string_view name;
        QorIdentifier recordClass;  ///< of a record, whose value are rows; else none
    };
    /// What is the same for all instances of a class or relation class.
    struct Class {
        std::string reference;
        std::vector<Attribute> attributes;  ///< those that instances can have values of
    };

    void writeModel(QorIdentifier model);
    void writeObject(QorIdentifier object);
    void writeRelation(const QorRelationInfo& relation);
    void writeValues(QorIdentifier instance, const Class& cls);
    [[nodiscard]] bool hasValues(QorIdentifier instance, const Class& cls) const;
    [[nodiscard]] bool hasValue(QorIdentifier instance, const Attribute& attribute) const;
    void writePairs(QorIdentifier instance, const Class& cls);
    void writeRows(QorIdentifier instance, const Attribute& attribute);
    void writeGroups(std::span<const QorIdentifier> models);
    [[nodiscard]] std::string wayTo(QorIdentifier group);
    const Class& classOf(QorIdentifier cls);
    [[nodiscard]] std::string end(QorIdentifier object);

    const QorRepositoryReader& _reader;
    QorIdentifier _library;
    ClassNaming _naming;
    YamlWriter& _writer;
    std::unordered_map<QorIdentifier, Class> _classes;
    std::unordered_map<std::string_view, unsigned> _namesakes;  // objects of the model by name
};

}  // namespace qor::interchange
