// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <stdexcept>
#include <vector>

#include "cardinality/Direction.h"
#include "cardinality/QorCardinalityHandler.h"
#include "cardinality/limits.h"
#include "platform/ISortedSet.h"

namespace qor::cardinality {

/// What the method library says about the classes and relation classes that rules are about. Throws RepositoryFailed
/// after an internal error was shown.
class RuleSurroundings {
public:
    struct RepositoryFailed : std::runtime_error {
        RepositoryFailed() : std::runtime_error("the repository failed") {}
    };

    explicit RuleSurroundings(const QorCardinalityMap<QorClassCardinality>& rules);

    /// Whether relations of the class may run in the direction at objects of the class.
    [[nodiscard]] bool mayRun(QorIdentifier relationClass, Direction direction, QorIdentifier cls);
    [[nodiscard]] bool isInAnyModel(QorIdentifier cls) const;
    [[nodiscard]] bool areInOneModel(QorIdentifier one, QorIdentifier other) const;
    /// The tightest maximum that counts objects of the class, its own or that of a class above it; class -1 for none.
    [[nodiscard]] QorCardinalityRule mostObjects(QorIdentifier cls) const;

private:
    void readModelTypes();
    void readMostObjects(const QorCardinalityMap<QorClassCardinality>& rules);

    std::map<QorIdentifier, PerDirection<ISortedSet<long>>> _relationClasses;  ///< by class
    std::vector<ISortedSet<long>> _visible;                                    ///< by model type
    std::map<long, QorCardinalityRule> _mostObjects;
};

}  // namespace qor::cardinality
