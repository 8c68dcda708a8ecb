// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <vector>

#include "embedded/QorRepositoryReader.h"
#include "interchange/ClassNaming.h"
#include "interchange/YamlWriter.h"

namespace qor::interchange {

/// Writes an application library in the order in which its things came into being.
class LibraryWriter {
public:
    LibraryWriter(const QorRepositoryReader& reader, QorIdentifier library, YamlWriter& writer)
        : _reader(reader), _library(library), _naming(reader, library), _writer(writer) {}

    void write();

private:
    void writePart(std::size_t index);
    void writeTexts(QorIdentifier library);
    void writeClasses(QorIdentifier part, bool recordClasses);
    void writeClass(const QorClassInfo& cls);
    void writeAttributes(QorIdentifier owner, QorIdentifier part);
    void writeAttribute(const QorAttributeInfo& attribute, QorIdentifier part);
    void writeRelationClass(const QorRelationClassInfo& cls);
    void writeModelTypes(QorIdentifier part);
    [[nodiscard]] std::vector<QorIdentifier> inFileOrder(std::vector<QorIdentifier> classes) const;
    /// Values that the class itself has.
    void writeValues(QorIdentifier owner);

    const QorRepositoryReader& _reader;
    QorIdentifier _library;
    ClassNaming _naming;
    YamlWriter& _writer;
};

}  // namespace qor::interchange
