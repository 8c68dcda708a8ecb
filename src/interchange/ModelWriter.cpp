// SPDX-License-Identifier: Apache-2.0
#include "interchange/ModelWriter.h"

#include <algorithm>
#include <unordered_set>

namespace qor::interchange {

void ModelWriter::write(std::span<const QorIdentifier> models, std::string_view libraryFile) {
    _writer.pair("format", kModelFormat);
    if (!libraryFile.empty()) _writer.pair("library", libraryFile);
    writeGroups(models);
    if (models.empty()) return;
    _writer.key("models");
    _writer.enter();
    for (const QorIdentifier model : models) writeModel(model);
    _writer.leave();
}

// The groups on the way to one of the models, and those that hold no model at all. A group whose models stand in
// another file is that file's to tell.
void ModelWriter::writeGroups(std::span<const QorIdentifier> models) {
    const auto groups = _reader.modelGroupsOf(_library);
    if (groups.empty()) return;
    std::unordered_set<QorIdentifier> wanted;
    std::unordered_set<QorIdentifier> inhabited;
    const auto takeAbove = [&](QorIdentifier group, std::unordered_set<QorIdentifier>& taken) {
        for (; group != QorNoIdentifier && taken.insert(group).second; group = _reader.modelGroupInfo(group).parent) {
        }
    };
    for (const QorModelInfo& model : _reader.modelsOf(_library)) takeAbove(_reader.groupOfModel(model.id), inhabited);
    for (const QorIdentifier model : models) takeAbove(_reader.groupOfModel(model), wanted);
    for (const QorModelGroupInfo& group : groups)
        if (!inhabited.contains(group.id)) takeAbove(group.id, wanted);

    if (wanted.empty()) return;
    _writer.key("groups");
    _writer.enter();
    for (const QorModelGroupInfo& group : groups)
        if (wanted.contains(group.id)) _writer.item(wayTo(group.id));
    _writer.leave();
}

std::string ModelWriter::wayTo(QorIdentifier group) {
    std::string way;
    for (; group != QorNoIdentifier; group = _reader.modelGroupInfo(group).parent)
        way = concat({_writer.scalar(_reader.nameOf(group)), way.empty() ? "" : ", ", way});
    return concat({"[", way, "]"});
}

void ModelWriter::writeModel(QorIdentifier model) {
    const QorModelInfo info = _reader.modelInfo(model);
    _writer.beginItem();
    _writer.pair("name", info.name);
    _writer.pair("type", _reader.nameOf(info.modelType));
    if (!info.version.empty()) _writer.pair("version", info.version);
    if (const QorIdentifier group = _reader.groupOfModel(model); group != QorNoIdentifier)
        _writer.writtenPair("group", wayTo(group));

    const auto objects = _reader.objectsOf(model);
    _namesakes.clear();
    for (const QorIdentifier object : objects) ++_namesakes[_reader.nameOf(object)];
    if (!objects.empty()) {
        _writer.key("objects");
        _writer.enter();
        for (const QorIdentifier object : objects) writeObject(object);
        _writer.leave();
    }
    if (const auto relations = _reader.relationsOf(model); !relations.empty()) {
        _writer.key("relations");
        _writer.enter();
        for (const QorRelationInfo& relation : relations) writeRelation(relation);
        _writer.leave();
    }
    _writer.endItem();
}

void ModelWriter::writeObject(QorIdentifier object) {
    const Class& cls = classOf(_reader.classOfObject(object));
    const std::string_view name = _reader.nameOf(object);
    if (!hasValues(object, cls)) {
        _writer.item(FlowMapping(_writer).written("class", cls.reference).pair("name", name).text());
        return;
    }
    _writer.beginItem();
    _writer.writtenPair("class", cls.reference);
    _writer.pair("name", name);
    writeValues(object, cls);
    _writer.endItem();
}

void ModelWriter::writeRelation(const QorRelationInfo& relation) {
    const Class& cls = classOf(relation.relationClass);
    if (!hasValues(relation.id, cls)) {
        _writer.item(FlowMapping(_writer)
                         .written("class", cls.reference)
                         .written("from", end(relation.from))
                         .written("to", end(relation.to))
                         .text());
        return;
    }
    _writer.beginItem();
    _writer.writtenPair("class", cls.reference);
    _writer.writtenPair("from", end(relation.from));
    _writer.writtenPair("to", end(relation.to));
    writeValues(relation.id, cls);
    _writer.endItem();
}

bool ModelWriter::hasValue(QorIdentifier instance, const Attribute& attribute) const {
    return attribute.recordClass == QorNoIdentifier ? _reader.hasValue(instance, attribute.id)
                                                    : !_reader.recordRows(instance, attribute.id).empty();
}

bool ModelWriter::hasValues(QorIdentifier instance, const Class& cls) const {
    return std::any_of(cls.attributes.begin(), cls.attributes.end(),
                       [&](const Attribute& attribute) { return hasValue(instance, attribute); });
}

void ModelWriter::writeValues(QorIdentifier instance, const Class& cls) {
    _writer.key("values");
    _writer.enter();
    writePairs(instance, cls);
    _writer.leave();
}

void ModelWriter::writePairs(QorIdentifier instance, const Class& cls) {
    for (const Attribute& attribute : cls.attributes) {
        if (!hasValue(instance, attribute)) continue;
        if (attribute.recordClass == QorNoIdentifier)
            _writer.pair(attribute.name, _reader.valueOf(instance, attribute.id));
        else
            writeRows(instance, attribute);
    }
}

// A row without values is "{}". How deep rows nest is bounded by the repository.
void ModelWriter::writeRows(QorIdentifier instance, const Attribute& attribute) {
    const Class& cls = classOf(attribute.recordClass);
    _writer.key(attribute.name);
    _writer.enter();
    for (const QorIdentifier row : _reader.recordRows(instance, attribute.id)) {
        if (!hasValues(row, cls)) {
            _writer.item("{}");
            continue;
        }
        _writer.beginItem();
        writePairs(row, cls);
        _writer.endItem();
    }
    _writer.leave();
}

const ModelWriter::Class& ModelWriter::classOf(QorIdentifier cls) {
    const auto [place, isNew] = _classes.try_emplace(cls);
    if (!isNew) return place->second;
    Class& result = place->second;
    result.reference = _naming.reference(_writer, cls);
    for (QorIdentifier owner = cls; owner != QorNoIdentifier; owner = _reader.classInfo(owner).superclass)
        for (const QorAttributeInfo& attribute : _reader.attributesOf(owner))
            if (attribute.level == QorAttributeLevel::Instance)
                result.attributes.push_back(
                    {attribute.id, attribute.name,
                     attribute.type == QorCoreAttributeType::Record ? attribute.target : QorNoIdentifier});
    // Where the object stands in the drawing.
    for (const QorIdentifier graphic : {QorAttributeId::Graphic, QorAttributeId::WorkingEnvironmentGraphic})
        if (const auto name = _reader.nameOf(graphic); _reader.findAttribute(cls, name) == graphic)
            result.attributes.push_back({graphic, name, QorNoIdentifier});
    return result;
}

// By the name alone where it is enough.
std::string ModelWriter::end(QorIdentifier object) {
    const std::string_view name = _reader.nameOf(object);
    if (_namesakes[name] < 2) return _writer.scalar(name);
    return FlowMapping(_writer)
        .written("class", classOf(_reader.classOfObject(object)).reference)
        .pair("name", name)
        .text();
}

}  // namespace qor::interchange
