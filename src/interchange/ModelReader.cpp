// SPDX-License-Identifier: Apache-2.0
#include "interchange/ModelReader.h"

#include "interchange/InstanceValues.h"

namespace qor::interchange {
namespace {

enum RootKey { kFormat, kLibrary, kGroups, kModels };
constexpr std::array kRootKeys = {Key{"format", Shape::Text, true}, Key{"library"}, Key{"groups", Shape::List},
                                  Key{"models", Shape::List}};

enum ModelKey { kModelName, kModelType, kVersion, kGroup, kObjects, kRelations };
constexpr std::array kModelKeys = {
    Key{"name", Shape::Text, true}, Key{"type", Shape::Text, true}, Key{"version"},
    Key{"group", Shape::Way},       Key{"objects", Shape::List},    Key{"relations", Shape::List}};

enum ObjectKey { kIdentifier, kClass, kName, kValues };
constexpr std::array kObjectKeys = {Key{"id"}, Key{"class", Shape::Reference, true}, Key{"name", Shape::Text, true},
                                    Key{"values", Shape::Values}};

enum RelationKey { kRelationClass, kFrom, kTo, kRelationValues };
constexpr std::array kRelationKeys = {Key{"class", Shape::Reference, true}, Key{"from", Shape::Reference, true},
                                      Key{"to", Shape::Reference, true}, Key{"values", Shape::Values}};

enum EndKey { kEndClass, kEndName };
constexpr std::array kEndKeys = {Key{"class", Shape::Reference, true}, Key{"name", Shape::Text, true}};

}  // namespace

ModelReader::ModelReader(Building& building, QorIdentifier library)
    : _building(building),
      _tree(building.tree()),
      _library(library),
      _groups(building, library),
      _objects(building.tree()) {
    for (std::size_t i = 0; i < kParts.size(); ++i) _parts[i] = building.builder.libraryPart(library, kParts[i].part);
}

void ModelReader::read(NodeId root) {
    const Fields fields(_building.reading, root, "a model file", kRootKeys);
    _groups.makeGroups(fields[kGroups]);
    if (fields.has(kModels)) reserve(fields[kModels]);
    forEachItem(_tree, fields[kModels], [this](NodeId node) { readModel(node); });
}

void ModelReader::reserve(NodeId models) {
    std::size_t objects = 0;
    std::size_t relations = 0;
    forEachItem(_tree, models, [&](NodeId model) {
        if (_tree.kind(model) != NodeKind::Mapping) return;
        forEachPair(_tree, model, [&](NodeId key, NodeId value) {
            if (_tree.text(key) == kModelKeys[kObjects].name) objects += _tree.childCount(value);
            if (_tree.text(key) == kModelKeys[kRelations].name) relations += _tree.childCount(value);
        });
    });
    _building.builder.reserve(objects, relations);
}

void ModelReader::readModel(NodeId node) {
    const Fields fields(_building.reading, node, "a model", kModelKeys);
    _objects.clear();
    _model = makeModel(fields[kModelName], fields[kModelType], fields.text(kVersion));
    if (_model == QorNoIdentifier) return;
    _building.reading.findings.madeModel(_model);
    _building.wrote(_model, node);
    if (fields.has(kGroup)) _groups.placeModel(_model, fields[kGroup]);
    forEachItem(_tree, fields[kObjects], [this](NodeId item) { readObject(item); });
    forEachItem(_tree, fields[kRelations], [this](NodeId item) { readRelation(item); });
}

// A model whose type or name is wrong is made all the same, of any type and under a name that nobody writes, so that
// the rest of it can be looked at.
QorIdentifier ModelReader::makeModel(NodeId name, NodeId type, std::string_view version) {
    const auto types = _building.reader.modelTypesOf(_library);
    QorIdentifier typeId = QorNoIdentifier;
    if (type != kNoNode) {
        typeId = _building.reader.findModelType(_library, _tree.text(type));
        if (typeId == QorNoIdentifier) {
            std::vector<std::string_view> names;
            for (const QorModelTypeInfo& known : types) names.push_back(known.name);
            _building.error(type, concat({"there is no model type ", inQuotes(_tree.text(type)),
                                          _building.reading.guesser.hint(_tree.text(type), names)}));
        }
    }
    _typeIsUnknown = typeId == QorNoIdentifier;
    if (_typeIsUnknown && !types.empty()) typeId = types.front().id;
    const std::string_view text = name == kNoNode ? std::string_view{} : _tree.text(name);
    QorBuildResult made = _building.builder.addModel(typeId, text, version);
    if (made.ok() || typeId == QorNoIdentifier) return made.id;

    if (name != kNoNode && !_typeIsUnknown) {
        std::string reason = _building.whyNotMade(made, text);
        if (made.error == QorBuildError::DuplicateName)
            reason = concat({"there is already a model ", inQuotes(text), " of this type",
                             version.empty() ? std::string() : concat({" in version ", inQuotes(version)}),
                             "; give this one another version"});
        _building.error(name, std::move(reason));
    }
    for (int tries = 0; !made.ok() && tries < 100; ++tries)
        made = _building.builder.addModel(typeId, _building.reading.findings.spareName(text), {});
    return made.id;
}

void ModelReader::readObject(NodeId node) {
    const Fields fields(_building.reading, node, "an object", kObjectKeys);
    ObjectNames::Object object;
    object.node = node;
    object.name = fields[kName];
    object.identifier = fields[kIdentifier];
    if (fields.has(kClass)) object.cls = classAt(fields[kClass], "an object's class", false);
    if (object.cls != QorNoIdentifier && fields.has(kName)) {
        const std::string_view name = fields.text(kName);
        const QorBuildResult made = _building.builder.addObject(_model, object.cls, name);
        object.id = made.id;
        if (made.ok()) {
            const Mark mark = _tree.mark(node);
            _building.reading.findings.madeThing(made.id, mark.line, mark.column, fields.text(kIdentifier));
            setInstanceValues(_building, made.id, object.cls, fields[kValues]);
        } else if (made.error == QorBuildError::DuplicateName) {
            const std::uint32_t holder = _objects.find(object.cls, name);
            object.id = QorNoIdentifier;
            object.name = kNoNode;  // the name means the other one
            _building.error(
                fields[kName],
                concat({"the model has an object ", inQuotes(name), " of this class already",
                        holder == kNoObject
                            ? std::string()
                            : concat({", at line ", std::to_string(_tree.mark(_objects[holder].node).line)})}));
        } else if (made.error == QorBuildError::AbstractClass) {
            _building.error(fields[kClass],
                            concat({_building.described(object.cls), " is abstract and has no objects"}));
        } else if (made.error == QorBuildError::ClassNotInModelType) {
            if (!_typeIsUnknown)
                _building.error(fields[kClass],
                                concat({"models of this type hold no objects of ", _building.described(object.cls)}));
        } else {
            _building.error(fields[kName], _building.whyNotMade(made, name));
        }
    }
    const std::uint32_t holder = _objects.add(object);
    if (holder != kNoObject)
        _building.error(object.identifier, concat({"the identifier ", inQuotes(fields.text(kIdentifier)),
                                                   " is taken by the object at line ",
                                                   std::to_string(_tree.mark(_objects[holder].node).line)}));
}

void ModelReader::readRelation(NodeId node) {
    const Fields fields(_building.reading, node, "a relation", kRelationKeys);
    const QorIdentifier cls =
        fields.has(kRelationClass) ? classAt(fields[kRelationClass], "a relation's class", true) : QorNoIdentifier;
    const std::uint32_t from = fields.has(kFrom) ? endAt(fields[kFrom], kRelationKeys[kFrom].name) : kNoObject;
    const std::uint32_t to = fields.has(kTo) ? endAt(fields[kTo], kRelationKeys[kTo].name) : kNoObject;
    if (cls == QorNoIdentifier || from == kNoObject || to == kNoObject) return;
    const QorIdentifier fromId = _objects[from].id;
    const QorIdentifier toId = _objects[to].id;
    if (fromId == QorNoIdentifier || toId == QorNoIdentifier) return;

    const QorBuildResult made = _building.builder.addRelation(cls, fromId, toId);
    if (!made.ok()) {
        const bool atTarget = made.error == QorBuildError::TargetDoesNotFit;
        _building.error(fields[atTarget ? kTo : kFrom], whyNotRelated(made, cls, from, to));
        return;
    }
    const Mark mark = _tree.mark(node);
    _building.reading.findings.madeThing(made.id, mark.line, mark.column, {});
    setInstanceValues(_building, made.id, cls, fields[kRelationValues]);
}

std::string ModelReader::whyNotRelated(const QorBuildResult& result, QorIdentifier relationClass, std::uint32_t from,
                                       std::uint32_t to) const {
    const QorRelationClassInfo info = _building.reader.relationClassInfo(relationClass);
    const bool leaves = result.error == QorBuildError::SourceDoesNotFit;
    if (!leaves && result.error != QorBuildError::TargetDoesNotFit)
        return concat({inQuotes(info.name), ": ", Qor_BuildErrorText(result.error)});
    const std::string_view expected = _building.reader.nameOf(leaves ? info.fromClass : info.toClass);
    const std::uint32_t object = leaves ? from : to;
    return concat({"relations of class ", inQuotes(info.name), leaves ? " leave" : " arrive at", " objects of class ",
                   inQuotes(expected), ", and ", inQuotes(_tree.text(_objects[object].name)), " is of class ",
                   inQuotes(_building.reader.nameOf(_objects[object].cls))});
}

QorIdentifier ModelReader::findClass(const Reference& reference, bool wantRelationClass) {
    Cache& cache = wantRelationClass ? _relationClasses : _classes;
    if (reference.part < 0)
        if (const auto known = cache.find(reference.name); known != cache.end()) return known->second;
    QorIdentifier found = QorNoIdentifier;
    for (std::size_t i = 0; i < kParts.size() && found == QorNoIdentifier; ++i)
        if (reference.part < 0 || static_cast<std::size_t>(reference.part) == i)
            found = wantRelationClass ? _building.reader.findRelationClass(_parts[i], reference.name)
                                      : _building.reader.findClass(_parts[i], reference.name);
    if (reference.part < 0) cache.emplace(reference.name, found);
    return found;
}

QorIdentifier ModelReader::classAt(NodeId node, std::string_view what, bool wantRelationClass) {
    const auto reference = readReference(_building.reading, node, what);
    if (!reference) return QorNoIdentifier;
    const QorIdentifier found = findClass(*reference, wantRelationClass);
    if (found != QorNoIdentifier && !_building.reader.classInfo(found).isRecordClass) return found;
    std::vector<std::string_view> names;
    if (_building.reading.guesser.willing()) {
        for (const QorIdentifier part : _parts) {
            if (wantRelationClass)
                for (const auto& known : _building.reader.relationClassesOf(part)) names.push_back(known.name);
            else
                for (const auto& known : _building.reader.classesOf(part)) names.push_back(known.name);
        }
    }
    _building.error(reference->node,
                    found != QorNoIdentifier
                        ? concat({inQuotes(reference->name), " is a record class and has no objects"})
                        : concat({"the library has no ", wantRelationClass ? "relation class " : "class ",
                                  inQuotes(reference->name), _building.reading.guesser.hint(reference->name, names)}));
    return QorNoIdentifier;
}

std::uint32_t ModelReader::endAt(NodeId node, std::string_view key) {
    return _tree.isText(node) ? endByText(node, key) : endByClassAndName(node);
}

// Identifiers go before names: they are there to be unambiguous.
std::uint32_t ModelReader::endByText(NodeId node, std::string_view key) {
    const std::string_view text = _tree.text(node);
    if (const std::uint32_t object = _objects.findIdentifier(text); object != kNoObject) return object;
    const std::uint32_t object = _objects.findName(text);
    if (object == kNoObject) {
        _building.missing(node, unknownObject(node, key));
        return kNoObject;
    }
    if (_objects[object].nextOfName == kNoObject) return object;

    if (isLost(text)) return kNoObject;  // who knows which it would have been
    constexpr int kShown = 4;
    std::string candidates;
    std::uint32_t candidate = object;
    for (int shown = 0; candidate != kNoObject && shown < kShown; ++shown, candidate = _objects[candidate].nextOfName)
        candidates += concat({shown == 0 ? "" : ", ", describedObject(candidate)});
    if (candidate != kNoObject) candidates += ", \xE2\x80\xA6";
    _building.error(node, concat({inQuotes(text), " is the name of several objects (", candidates,
                                  "): give the one an \"id\", or write {class: \xE2\x80\xA6, name: \xE2\x80\xA6}"}));
    return kNoObject;
}

std::uint32_t ModelReader::endByClassAndName(NodeId node) {
    const Fields fields(_building.reading, node, "the end of a relation", kEndKeys);
    if (!fields.complete()) return kNoObject;
    const QorIdentifier cls = classAt(fields[kEndClass], "an object's class", false);
    if (cls == QorNoIdentifier) return kNoObject;
    const std::uint32_t object = _objects.find(cls, fields.text(kEndName));
    if (object == kNoObject && !isLost(fields.text(kEndName)))
        _building.missing(node, concat({"the model has no object ", inQuotes(fields.text(kEndName)), " of ",
                                        _building.described(cls)}));
    return object;
}

// The file has objects of that name that could not be made.
bool ModelReader::isLost(std::string_view name) {
    std::uint32_t object = _objects.findName(name);
    while (object != kNoObject && _objects[object].id != QorNoIdentifier) object = _objects[object].nextOfName;
    return object != kNoObject;
}

std::string ModelReader::unknownObject(NodeId node, std::string_view key) {
    const std::string_view text = _tree.text(node);
    return concat(
        {inQuotes(key), ": the model has no object with the identifier or name ", inQuotes(text),
         _building.reading.guesser.willing() ? _building.reading.guesser.hint(text, _objects.words()) : std::string()});
}

std::string ModelReader::describedObject(std::uint32_t object) const {
    return concat({inQuotes(_building.reader.nameOf(_objects[object].cls)), " at line ",
                   std::to_string(_tree.mark(_objects[object].node).line)});
}

}  // namespace qor::interchange
