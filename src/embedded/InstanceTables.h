// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <vector>

#include "embedded/TextArena.h"
#include "platform/QorIdentifier.h"

namespace qor::embedded {

// Rows stand in ascending order of identifiers. A deleted row has no identifier any more and is swept later.
struct ObjectRow {
    QorIdentifier id;
    QorIdentifier cls;
    QorIdentifier model;
    TextRef name;
};

struct RelationRow {
    QorIdentifier id;
    QorIdentifier relationClass;
    QorIdentifier from;
    QorIdentifier to;
};

struct InstanceTables {
    std::vector<ObjectRow> objects;
    std::vector<RelationRow> relations;
};

}  // namespace qor::embedded
