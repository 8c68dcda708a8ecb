// SPDX-License-Identifier: Apache-2.0
// What a repository keeps about models, apart from their objects and relations (InstanceTables.h). A removed row has no
// identifier any more, and is swept later.
#pragma once
#include <vector>

#include "embedded/IdentifierList.h"
#include "embedded/TextArena.h"
#include "platform/QorIdentifier.h"

namespace qor::embedded {

// The models of one name and model type, one for each version.
struct ThreadRow {
    QorIdentifier id = QorNoIdentifier;
    QorIdentifier modelType = QorNoIdentifier;
    QorIdentifier group = QorNoIdentifier;  // the model group that it lies in
    TextRef name = 0;
    IdentifierList versions;
};

struct ObjectsOfClass {
    QorIdentifier cls = QorNoIdentifier;
    IdentifierList objects;
};

struct ModelRow {
    QorIdentifier id = QorNoIdentifier;
    QorIdentifier thread = QorNoIdentifier;
    TextRef version = 0;
    IdentifierList objects;
    IdentifierList relations;
    std::vector<ObjectsOfClass> byClass;  // ascending by class
};

// A row of a record attribute.
struct RecordRow {
    QorIdentifier id = QorNoIdentifier;
    QorIdentifier recordClass = QorNoIdentifier;
    QorIdentifier owner = QorNoIdentifier;  // the object (or row) whose attribute it is
    QorIdentifier attribute = QorNoIdentifier;
};

}  // namespace qor::embedded
