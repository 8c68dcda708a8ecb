// SPDX-License-Identifier: Apache-2.0
#include "interchange/ClassNaming.h"

namespace qor::interchange {

ClassNaming::ClassNaming(const QorRepositoryReader& reader, QorIdentifier library) : _reader(reader) {
    for (std::size_t i = 0; i < kParts.size(); ++i) _parts[i] = reader.libraryPart(library, kParts[i].part);
}

std::string ClassNaming::reference(YamlWriter& writer, QorIdentifier cls, QorIdentifier ownPart) const {
    const bool isRelationClass = _reader.kindOf(cls) == QorThingKind::RelationClass;
    const QorIdentifier part = isRelationClass ? _reader.relationClassInfo(cls).part : _reader.classInfo(cls).part;
    const std::string_view name = _reader.nameOf(cls);
    const QorIdentifier understood =
        isRelationClass ? _reader.findRelationClass(ownPart, name) : _reader.findClass(ownPart, name);
    if (understood == cls || understood == QorNoIdentifier) return writer.scalar(name);
    const std::string_view key = part == _parts[0] ? kParts[0].key : kParts[1].key;
    return FlowMapping(writer).pair("part", key).pair("name", name).text();
}

}  // namespace qor::interchange
