// SPDX-License-Identifier: Apache-2.0
#include "interchange/InstanceValues.h"

#include "embedded/QorExpression.h"

namespace qor::interchange {

namespace {

Mark markOf(const Tree& tree, NodeId node, QorExpressionPlace place) {
    return markInText(textPlaceOf(tree, node), place.line, place.column);
}

// A mapping of columns to cells for each row.
void makeRows(Building& building, QorIdentifier instance, const Building::Attribute& attribute, NodeId rows) {
    const Tree& tree = building.tree();
    if (tree.kind(rows) != NodeKind::Sequence && tree.kind(rows) != NodeKind::Null)
        return building.error(rows, "the rows of a record must be a list");
    forEachItem(tree, rows, [&](NodeId row) {
        if (tree.kind(row) == NodeKind::Bad) return;
        if (tree.kind(row) != NodeKind::Mapping)
            return building.error(row, "a row must be a mapping of columns to values");
        const QorBuildResult made = building.builder.addRecordRow(instance, attribute.id);
        if (!made.ok()) return building.error(row, Qor_BuildErrorText(made.error));
        setInstanceValues(building, made.id, attribute.target, row);
    });
}

void setValue(Building& building, QorIdentifier instance, QorIdentifier cls, NodeId key, NodeId value) {
    const Tree& tree = building.tree();
    const auto& attribute = building.findAttribute(cls, tree.text(key));
    if (attribute.id == QorNoIdentifier) return building.error(key, building.unknownAttribute(cls, tree.text(key)));
    if (attribute.type == QorCoreAttributeType::Record && !tree.isText(value))
        return makeRows(building, instance, attribute, value);
    const bool isExpression = attribute.type == QorCoreAttributeType::Expression && tree.isText(value);
    if (isExpression && !checkExpression(building, value)) return;
    const auto text = building.valueText(value, attribute.id);
    if (!text) return;
    const QorBuildResult set = building.builder.setValue(instance, attribute.id, *text);
    if (!set.ok()) return building.error(value, building.whyNotTaken(set, attribute.id, *text));
    if (isExpression) warnOfUnknownAttributes(building, cls, value);
}

}  // namespace

void setInstanceValues(Building& building, QorIdentifier instance, QorIdentifier cls, NodeId values) {
    forEachPair(building.tree(), values,
                [&](NodeId key, NodeId value) { setValue(building, instance, cls, key, value); });
}

bool checkExpression(Building& building, NodeId node) {
    const std::string_view text = building.tree().text(node);
    if (text.empty()) return true;
    const auto fault = Qor_ExpressionFault(text);
    if (!fault) return true;
    building.reading.findings.error(markOf(building.tree(), node, fault->place),
                                    concat({"in the expression: ", fault->text}));
    return false;
}

void warnOfUnknownAttributes(Building& building, QorIdentifier owner, NodeId expression) {
    for (const QorExpressionName& name : Qor_ExpressionNames(building.tree().text(expression))) {
        if (building.reader.findAttribute(owner, name.name) != QorNoIdentifier) continue;
        const Mark mark = markOf(building.tree(), expression, name.place);
        building.reading.findings.report(QorSeverity::Warning, mark.line, mark.column,
                                         concat({"in the expression: ", building.unknownAttribute(owner, name.name)}));
    }
}

}  // namespace qor::interchange
