// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <unordered_set>
#include <vector>

#include "interchange/InstanceValues.h"
#include "interchange/LibraryReader.h"

namespace qor::interchange {
namespace {

enum AttributeKey { kName, kType, kLevel, kDefault, kShownAs, kFirstCompanion };
constexpr std::array kKeys = {Key{"name", Shape::Text, true},
                              Key{"type", Shape::Text, true},
                              Key{"level"},
                              Key{"default"},
                              Key{"shown_as"},
                              Key{"values", Shape::Texts},
                              Key{"record_class", Shape::Reference},
                              Key{"profile_class", Shape::Reference},
                              Key{"refers_to"}};
using AttributeFields = Fields<kKeys.size()>;

std::size_t keyIndex(std::string_view name) {
    return static_cast<std::size_t>(
        std::find_if(kKeys.begin(), kKeys.end(), [name](const Key& key) { return key.name == name; }) - kKeys.begin());
}

// The row of the type that the key names; nothing without one, and after a report.
const AttributeTypeRow* typeOf(Building& building, const AttributeFields& fields, AttributeKey key) {
    if (!fields.has(key)) return nullptr;
    const auto found = std::find_if(kAttributeTypes.begin(), kAttributeTypes.end(),
                                    [&](const AttributeTypeRow& row) { return row.name == fields.text(key); });
    if (found != kAttributeTypes.end()) return &*found;
    std::vector<std::string_view> names;
    for (const AttributeTypeRow& row : kAttributeTypes) names.push_back(row.name);
    building.error(fields[key], concat({"there is no attribute type ", inQuotes(fields.text(key)),
                                        building.reading.guesser.hint(fields.text(key), names)}));
    return nullptr;
}

// Keys that other types have are there by mistake, and the type's own may have to be there.
bool companionsFit(Building& building, NodeId node, const AttributeFields& fields, const AttributeTypeRow& type) {
    bool fit = true;
    for (std::size_t key = kFirstCompanion; key < kKeys.size(); ++key) {
        if (!fields.has(key) || kKeys[key].name == type.companion) continue;
        building.error(fields[key], concat({"an attribute of type ", inQuotes(type.name), " has no key ",
                                            inQuotes(kKeys[key].name)}));
        fit = false;
    }
    if (type.companionRequired && !fields.has(keyIndex(type.companion)) && fields.complete()) {
        building.error(
            node, concat({"an attribute of type ", inQuotes(type.name), " needs the key ", inQuotes(type.companion)}));
        fit = false;
    }
    return fit;
}

// One of two words; the first when nothing is written.
bool isSecondWord(Building& building, const AttributeFields& fields, std::size_t key, std::string_view first,
                  std::string_view second) {
    const std::string_view text = fields.text(key);
    if (fields.has(key) && text != first && text != second)
        building.error(fields[key],
                       concat({inQuotes(kKeys[key].name), " is ", first, " or ", second, ", not ", inQuotes(text)}));
    return text == second;
}

// What the repository refuses in an enumeration without saying which value it was.
bool enumerationIsGood(Building& building, NodeId list, bool forLists) {
    const Tree& tree = building.tree();
    std::unordered_set<std::string_view> seen;
    bool good = true;
    forEachItem(tree, list, [&](NodeId item) {
        const std::string_view text = tree.text(item);
        std::string_view fault;
        if (text.empty())
            fault = " cannot be a value";
        else if (forLists && text.find(';') != std::string_view::npos)
            fault = " cannot be a value of a list: semicolons part the values of a list";
        else if (!seen.insert(text).second)
            fault = " stands here twice";
        else
            return;
        building.error(item, concat({inQuotes(text), fault}));
        good = false;
    });
    if (tree.childCount(list) == 0) building.error(list, "an enumeration needs at least one value");
    return good && tree.childCount(list) != 0;
}

}  // namespace

void LibraryReader::makeAttributes(QorIdentifier owner, NodeId attributes, std::size_t part) {
    if (owner == QorNoIdentifier) return;
    forEachItem(_tree, attributes, [&](NodeId node) {
        if (makeAttribute(owner, node, part) || _tree.kind(node) != NodeKind::Mapping) return;
        forEachPair(_tree, node, [&](NodeId key, NodeId value) {
            if (_tree.text(key) == kKeys[kName].name) _failedAttributes.insert(_tree.text(value));
        });
    });
}

bool LibraryReader::makeAttribute(QorIdentifier owner, NodeId node, std::size_t part) {
    const AttributeFields fields(_building.reading, node, "an attribute", kKeys);
    const AttributeTypeRow* type = typeOf(_building, fields, kType);
    const AttributeTypeRow* shownAs = typeOf(_building, fields, kShownAs);
    QorAttributeSpec spec;
    spec.name = fields.text(kName);
    spec.level = isSecondWord(_building, fields, kLevel, "instance", "class") ? QorAttributeLevel::Class
                                                                              : QorAttributeLevel::Instance;
    spec.refersToModels = isSecondWord(_building, fields, keyIndex("refers_to"), "objects", "models");
    spec.defaultText = fields.text(kDefault);
    if (type == nullptr || !companionsFit(_building, node, fields, *type) || !fields.complete()) return false;
    spec.type = type->type;
    if (shownAs != nullptr && shownAs != type) spec.shownAs = shownAs->type;

    std::vector<std::string_view> values;
    if (type->companion == "values") {
        const NodeId list = fields[keyIndex("values")];
        if (!enumerationIsGood(_building, list, spec.type == QorCoreAttributeType::EnumerationList)) return false;
        forEachItem(_tree, list, [&](NodeId item) { values.push_back(_tree.text(item)); });
        spec.enumeration = values;
    } else if (type->companionRequired) {
        const bool toRecords = spec.type == QorCoreAttributeType::Record;
        spec.target = classIdAt(fields[keyIndex(type->companion)], part, inQuotes(type->companion), toRecords);
        if (spec.target == QorNoIdentifier) return false;
    }

    const bool hasExpression = spec.type == QorCoreAttributeType::Expression && fields.has(kDefault);
    if (hasExpression && !checkExpression(_building, fields[kDefault])) return false;
    const QorBuildResult made = _building.builder.addAttribute(owner, spec);
    if (made.ok() && hasExpression) _defaultExpressions.emplace_back(owner, fields[kDefault]);
    if (made.ok()) return true;
    if (made.error != QorBuildError::ValueRefused)
        _building.error(fields[kName], _building.whyNotMade(made, spec.name));
    else if (fields.has(kDefault))
        _building.error(fields[kDefault],
                        concat({inQuotes(spec.defaultText), " cannot be the default of ", inQuotes(spec.name),
                                ", which holds ", type->form, values.empty() ? "" : " its values"}));
    else
        _building.error(
            node, concat({"an attribute of type ", inQuotes(type->name), " belongs to each object, not to the class"}));
    return false;
}

}  // namespace qor::interchange
