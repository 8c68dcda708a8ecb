// SPDX-License-Identifier: Apache-2.0
#include "interchange/Building.h"

#include <vector>

#include "interchange/Format.h"

namespace qor::interchange {
namespace {

std::string_view kindName(QorThingKind kind) {
    switch (kind) {
        case QorThingKind::Attribute:
            return "attribute";
        case QorThingKind::ApplicationLibrary:
            return "library";
        case QorThingKind::Class:
            return "class";
        case QorThingKind::RecordClass:
            return "record class";
        case QorThingKind::RelationClass:
            return "relation class";
        case QorThingKind::ModelType:
            return "model type";
        case QorThingKind::ModelGroup:
            return "model group";
        case QorThingKind::Model:
            return "model";
        case QorThingKind::Object:
            return "object";
        default:
            return "thing";
    }
}

// The whole list would drown the message.
std::string listed(const std::vector<std::string_view>& values) {
    constexpr std::size_t kShown = 12;
    std::string text;
    for (std::size_t i = 0; i < values.size() && i < kShown; ++i) {
        if (i > 0) text += ", ";
        text += inQuotes(values[i]);
    }
    if (values.size() > kShown) text += ", \xE2\x80\xA6";
    return text;
}

}  // namespace

std::string Building::described(QorIdentifier thing) const {
    const QorThingKind kind = reader.kindOf(thing);
    std::string text = concat({kindName(kind), " ", inQuotes(reader.nameOf(thing))});
    if (kind == QorThingKind::Attribute)
        text += concat({" of ", described(reader.attributeInfo(thing).owner)});
    else if (const auto found = _nodes.find(thing); found != _nodes.end())
        text += concat({" at line ", std::to_string(tree().mark(found->second).line)});
    return text;
}

std::string Building::whyNotMade(const QorBuildResult& result, std::string_view name) const {
    switch (result.error) {
        case QorBuildError::EmptyName:
            return "the name is empty";
        case QorBuildError::NameRefused:
            return "a name has 65535 bytes at most, and neither line breaks nor control characters";
        case QorBuildError::DuplicateName:
            if (result.id == QorNoIdentifier) return concat({"the name ", inQuotes(name), " is taken"});
            return concat({"the name ", inQuotes(name), " is taken by the ", described(result.id)});
        default:
            return concat({inQuotes(name), ": ", Qor_BuildErrorText(result.error)});
    }
}

const Building::Attribute& Building::findAttribute(QorIdentifier owner, std::string_view name) {
    const auto [place, isNew] = _attributes[owner].try_emplace(name);
    if (isNew) {
        const QorAttributeInfo info = reader.attributeInfo(reader.findAttribute(owner, name));
        place->second = {info.id, info.type, info.level, info.target};
    }
    return place->second;
}

std::string Building::unknownAttribute(QorIdentifier owner, std::string_view name) {
    std::vector<std::string_view> names;
    for (QorIdentifier cls = owner; cls != QorNoIdentifier && reading.guesser.willing();
         cls = reader.classInfo(cls).superclass)
        for (const QorAttributeInfo& attribute : reader.attributesOf(cls)) names.push_back(attribute.name);
    return concat({described(owner), " has no attribute ", inQuotes(name), reading.guesser.hint(name, names)});
}

std::optional<std::string_view> Building::valueText(NodeId value, QorIdentifier attribute) {
    if (tree().isText(value) || tree().kind(value) == NodeKind::Null) return tree().text(value);
    if (tree().kind(value) == NodeKind::Bad) return std::nullopt;
    if (tree().kind(value) != NodeKind::Sequence ||
        reader.attributeInfo(attribute).type != QorCoreAttributeType::EnumerationList) {
        error(value, concat({"the value of ", inQuotes(reader.nameOf(attribute)), " must be a text"}));
        return std::nullopt;
    }
    _joined.clear();
    bool good = true;
    forEachItem(tree(), value, [&](NodeId item) {
        if (!tree().isText(item)) good = false;
        if (!_joined.empty()) _joined += ';';
        _joined += tree().text(item);
    });
    if (good) return _joined;
    error(value, concat({"the value of ", inQuotes(reader.nameOf(attribute)), " must be a list of texts"}));
    return std::nullopt;
}

std::string Building::whyNotTaken(const QorBuildResult& result, QorIdentifier attribute, std::string_view text) const {
    const QorAttributeInfo info = reader.attributeInfo(attribute);
    const AttributeTypeRow* row = attributeTypeRow(info.type);
    if (result.error != QorBuildError::ValueRefused || row == nullptr)
        return concat({"the value of ", inQuotes(info.name), ": ", Qor_BuildErrorText(result.error)});
    std::string reason = concat({inQuotes(info.name), " does not take ", inQuotes(text), ": it holds ", row->form});
    if (!info.enumeration.empty()) reason += concat({" ", listed(info.enumeration)});
    return reason;
}

std::optional<Reference> readReference(Reading& reading, NodeId node, std::string_view what) {
    enum { kName, kPart };
    static constexpr std::array kKeys = {Key{"name", Shape::Text, true}, Key{"part"}};
    const Tree& tree = reading.tree;
    if (tree.isText(node)) return Reference{node, tree.text(node)};
    if (tree.kind(node) != NodeKind::Mapping) {
        if (tree.kind(node) != NodeKind::Bad) reading.error(node, concat({what, " must be a name"}));
        return std::nullopt;
    }
    const Fields fields(reading, node, what, kKeys);
    if (!fields.complete()) return std::nullopt;
    Reference reference{fields[kName], fields.text(kName)};
    if (!fields.has(kPart)) return reference;
    for (std::size_t i = 0; i < kParts.size(); ++i)
        if (kParts[i].key == fields.text(kPart)) reference.part = static_cast<int>(i);
    if (reference.part >= 0) return reference;
    reading.error(fields[kPart], concat({inQuotes(fields.text(kPart)), " is no part of a library: the parts are ",
                                         kParts[0].key, " and ", kParts[1].key}));
    return std::nullopt;
}

}  // namespace qor::interchange
