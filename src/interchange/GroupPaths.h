// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <string_view>
#include <utility>
#include <vector>

#include "interchange/Building.h"

namespace qor::interchange {

/// The model groups of a library as files name them: by the way from the top, [Sales, Orders]; a single text names a
/// group at the top.
class GroupPaths {
public:
    GroupPaths(Building& building, QorIdentifier library) : _building(building), _library(library) {}

    /// Makes the groups of a list of ways, each with those above it, as far as they are not there yet.
    void makeGroups(NodeId ways);
    /// Puts the model into the group at the end of the way, which must be there.
    void placeModel(QorIdentifier model, NodeId way);

private:
    /// The texts of a way; none, after a report, when it is no way.
    [[nodiscard]] std::vector<NodeId> stepsOf(NodeId way);
    [[nodiscard]] QorIdentifier find(QorIdentifier parent, std::string_view name);

    Building& _building;
    QorIdentifier _library;
    std::map<std::pair<QorIdentifier, std::string_view>, QorIdentifier> _found;  // by what it lies in, and name
};

}  // namespace qor::interchange
