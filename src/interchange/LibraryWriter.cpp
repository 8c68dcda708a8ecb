// SPDX-License-Identifier: Apache-2.0
#include "interchange/LibraryWriter.h"

#include <algorithm>

#include "interchange/Wording.h"
#include "interchange/YamlText.h"

namespace qor::interchange {

void LibraryWriter::write() {
    _writer.pair("format", kLibraryFormat);
    _writer.pair("name", _reader.nameOf(_library));
    writeTexts(_library);
    for (std::size_t i = 0; i < kParts.size(); ++i) writePart(i);
}

void LibraryWriter::writePart(std::size_t index) {
    const QorIdentifier part = _naming.part(index);
    _writer.key(kParts[index].key);
    _writer.enter();
    _writer.pair("name", _reader.nameOf(part));
    writeTexts(part);
    writeClasses(part, true);
    writeClasses(part, false);
    if (const auto relationClasses = _reader.relationClassesOf(part); !relationClasses.empty()) {
        _writer.key("relation_classes");
        _writer.enter();
        for (const auto& cls : relationClasses) writeRelationClass(cls);
        _writer.leave();
    }
    if (const auto unmoved = _reader.unmovedRelationClass(part); !unmoved.empty())
        _writer.pair("unmoved_relation_class", unmoved);
    writeModelTypes(part);
    _writer.leave();
}

void LibraryWriter::writeTexts(QorIdentifier library) {
    bool isFirst = true;
    for (const LibraryTextRow& row : kLibraryTexts) {
        const std::string_view text = _reader.libraryValue(library, row.attribute);
        if (text.empty()) continue;
        if (isFirst) {
            _writer.key("texts");
            _writer.enter();
            isFirst = false;
        }
        _writer.lines(row.key, text);
    }
    if (!isFirst) _writer.leave();
}

void LibraryWriter::writeClasses(QorIdentifier part, bool recordClasses) {
    auto classes = _reader.classesOf(part);
    std::erase_if(classes, [&](const QorClassInfo& cls) { return cls.isRecordClass != recordClasses; });
    if (classes.empty()) return;
    _writer.key(recordClasses ? "record_classes" : "classes");
    _writer.enter();
    for (const QorClassInfo& cls : classes) writeClass(cls);
    _writer.leave();
}

void LibraryWriter::writeClass(const QorClassInfo& cls) {
    _writer.beginItem();
    _writer.pair("name", cls.name);
    if (cls.superclass != QorNoIdentifier)
        _writer.writtenPair("extends", _naming.reference(_writer, cls.superclass, cls.part));
    if (cls.isAbstract) _writer.writtenPair("abstract", "true");
    writeAttributes(cls.id, cls.part);
    if (!cls.isRecordClass) {
        for (const ClassTextRow& row : kClassTexts) {
            const bool inFirstPart = cls.part == _naming.part(0);
            const QorIdentifier attribute = row.attribute(inFirstPart ? kParts[0].part : kParts[1].part);
            const std::string_view text = _reader.classValue(cls.id, attribute);
            if (text.empty()) continue;
            if (row.isKeywordText)
                _writer.lines(row.key, text);
            else
                _writer.pair(row.key, text);
        }
    }
    writeValues(cls.id);
    _writer.endItem();
}

void LibraryWriter::writeAttributes(QorIdentifier owner, QorIdentifier part) {
    const auto attributes = _reader.attributesOf(owner);
    if (attributes.empty()) return;
    _writer.key("attributes");
    _writer.enter();
    for (const QorAttributeInfo& attribute : attributes) writeAttribute(attribute, part);
    _writer.leave();
}

void LibraryWriter::writeAttribute(const QorAttributeInfo& attribute, QorIdentifier part) {
    const AttributeTypeRow* type = attributeTypeRow(attribute.type);
    if (type == nullptr) return;  // a type of another repository, which files do not know
    FlowMapping line(_writer);
    line.pair("name", attribute.name).pair("type", type->name);
    if (attribute.level == QorAttributeLevel::Class) line.pair("level", "class");
    if (type->companion == "values") {
        std::string values;
        for (const std::string_view value : attribute.enumeration) {
            if (!values.empty()) values += ", ";
            values += _writer.scalar(value);
        }
        line.written("values", concat({"[", values, "]"}));
    } else if (type->companion == "refers_to") {
        line.pair("refers_to", attribute.refersToModels ? "models" : "objects");
    } else if (!type->companion.empty()) {
        line.written(type->companion, _naming.reference(_writer, attribute.target, part));
    }
    if (!attribute.defaultText.empty()) line.pair("default", attribute.defaultText);
    if (const AttributeTypeRow* shownAs = attributeTypeRow(attribute.shownAs)) line.pair("shown_as", shownAs->name);
    _writer.item(line.text());
}

void LibraryWriter::writeRelationClass(const QorRelationClassInfo& cls) {
    _writer.beginItem();
    _writer.pair("name", cls.name);
    _writer.writtenPair("from", _naming.reference(_writer, cls.fromClass, cls.part));
    _writer.writtenPair("to", _naming.reference(_writer, cls.toClass, cls.part));
    writeAttributes(cls.id, cls.part);
    writeValues(cls.id);
    _writer.endItem();
}

void LibraryWriter::writeModelTypes(QorIdentifier part) {
    auto types = _reader.modelTypesOf(_library);
    std::erase_if(types, [&](const QorModelTypeInfo& type) { return type.part != part; });
    if (types.empty()) return;
    _writer.key("model_types");
    _writer.enter();
    for (const QorModelTypeInfo& type : types) {
        _writer.beginItem();
        _writer.pair("name", type.name);
        if (const auto classes = inFileOrder(_reader.visibleClasses(type.id)); !classes.empty()) {
            _writer.key("classes");
            _writer.enter();
            for (const QorIdentifier cls : classes) _writer.item(_naming.reference(_writer, cls, part));
            _writer.leave();
        }
        _writer.endItem();
    }
    _writer.leave();
}

// By part: identifiers may come from both in turn, and reading the file takes one part after the other.
std::vector<QorIdentifier> LibraryWriter::inFileOrder(std::vector<QorIdentifier> classes) const {
    std::stable_partition(classes.begin(), classes.end(),
                          [this](QorIdentifier cls) { return _reader.classInfo(cls).part == _naming.part(0); });
    return classes;
}

void LibraryWriter::writeValues(QorIdentifier owner) {
    bool isFirst = true;
    for (QorIdentifier cls = owner; cls != QorNoIdentifier; cls = _reader.classInfo(cls).superclass) {
        for (const QorAttributeInfo& attribute : _reader.attributesOf(cls)) {
            const std::string_view text = _reader.classValue(owner, attribute.id);
            if (text.empty()) continue;
            if (isFirst) {
                _writer.key("values");
                _writer.enter();
                isFirst = false;
            }
            _writer.pair(attribute.name, text);
        }
    }
    if (!isFirst) _writer.leave();
}

}  // namespace qor::interchange
