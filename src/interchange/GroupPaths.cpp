// SPDX-License-Identifier: Apache-2.0
#include "interchange/GroupPaths.h"

namespace qor::interchange {

std::vector<NodeId> GroupPaths::stepsOf(NodeId way) {
    const Tree& tree = _building.tree();
    if (tree.isText(way)) return {way};
    std::vector<NodeId> steps;
    bool good = tree.kind(way) == NodeKind::Sequence && tree.childCount(way) > 0;
    forEachItem(tree, way, [&](NodeId step) {
        good = good && tree.isText(step);
        steps.push_back(step);
    });
    if (good) return steps;
    if (tree.kind(way) != NodeKind::Bad)
        _building.error(way, "a model group is told by its name, or by a list of names");
    return {};
}

QorIdentifier GroupPaths::find(QorIdentifier parent, std::string_view name) {
    const auto [place, isNew] = _found.try_emplace({parent, name}, QorNoIdentifier);
    if (place->second == QorNoIdentifier) place->second = _building.reader.findModelGroup(parent, name);
    return place->second;
}

void GroupPaths::makeGroups(NodeId ways) {
    forEachItem(_building.tree(), ways, [&](NodeId way) {
        QorIdentifier parent = _library;
        for (const NodeId step : stepsOf(way)) {
            const std::string_view name = _building.tree().text(step);
            QorIdentifier group = find(parent, name);
            if (group == QorNoIdentifier) {
                const QorBuildResult made = _building.builder.addModelGroup(parent, name);
                if (!made.ok()) return _building.error(step, _building.whyNotMade(made, name));
                _building.reading.findings.madeGroup(made.id);
                group = made.id;
            }
            parent = group;
        }
    });
}

void GroupPaths::placeModel(QorIdentifier model, NodeId way) {
    QorIdentifier group = _library;
    for (const NodeId step : stepsOf(way)) {
        const std::string_view name = _building.tree().text(step);
        const QorIdentifier parent = group;
        group = find(parent, name);
        if (group != QorNoIdentifier) continue;
        std::vector<std::string_view> names;
        for (const QorModelGroupInfo& known : _building.reader.modelGroupsOf(_library))
            if (known.parent == (parent == _library ? QorNoIdentifier : parent)) names.push_back(known.name);
        return _building.error(step, concat({"there is no model group ", inQuotes(name),
                                             parent == _library ? "" : concat({" in ", _building.described(parent)}),
                                             _building.reading.guesser.hint(name, names)}));
    }
    if (group == _library) return;  // no way, which was reported
    const QorBuildResult placed = _building.builder.moveModel(model, group);
    if (!placed.ok()) _building.error(way, _building.whyNotMade(placed, _building.reader.nameOf(model)));
}

}  // namespace qor::interchange
