// SPDX-License-Identifier: Apache-2.0
// What a repository keeps about method libraries. A removed row has no identifier any more, and is swept.
#pragma once
#include <array>
#include <cstdint>
#include <vector>

#include "embedded/FixedAttributes.h"
#include "embedded/IdentifierList.h"
#include "embedded/QorRepositoryBuilder.h"
#include "embedded/TextArena.h"
#include "platform/QorIdentifier.h"

namespace qor::embedded {

struct LibraryRow {
    QorIdentifier id = QorNoIdentifier;
    TextRef name = 0;
    std::array<QorIdentifier, 2> parts{QorNoIdentifier, QorNoIdentifier};
    std::vector<QorIdentifier> modelTypes;
    IdentifierList models;
};

struct PartRow {
    QorIdentifier id = QorNoIdentifier;
    QorIdentifier library = QorNoIdentifier;
    QorLibraryPart part = QorLibraryPart::BusinessProcess;
    TextRef name = 0;
    std::vector<QorIdentifier> classes;  // record classes as well
    std::vector<QorIdentifier> relationClasses;
};

struct ClassRow {
    QorIdentifier id = QorNoIdentifier;
    QorIdentifier part = QorNoIdentifier;
    QorIdentifier superclass = QorNoIdentifier;
    TextRef name = 0;
    bool isAbstract = false;
    bool isRecordClass = false;
    std::uint32_t instances = 0;  // of exactly this class
    std::uint32_t inhabited = 0;  // it and the classes below it, as far as they have instances
    std::vector<QorIdentifier> subclasses;
    std::vector<QorIdentifier> attributes;
    std::vector<QorIdentifier> outgoing;  // relation classes that name this class as their source
    std::vector<QorIdentifier> incoming;
};

struct RelationClassRow {
    QorIdentifier id = QorNoIdentifier;
    QorIdentifier part = QorNoIdentifier;
    QorIdentifier from = QorNoIdentifier;
    QorIdentifier to = QorNoIdentifier;
    TextRef name = 0;
    std::uint32_t instances = 0;
    std::vector<QorIdentifier> attributes;
};

struct AttributeRow {
    QorIdentifier id = QorNoIdentifier;
    QorIdentifier owner = QorNoIdentifier;  // none for a fixed attribute
    FixedOwner fixedOwner = FixedOwner::AnyClass;
    QorCoreAttributeType type = QorCoreAttributeType::None;
    QorCoreAttributeType shownAs = QorCoreAttributeType::None;  // to users; none: as what it is
    QorAttributeLevel level = QorAttributeLevel::Instance;
    bool refersToModels = false;
    QorIdentifier target = QorNoIdentifier;
    TextRef name = 0;
    TextRef defaultText = 0;
    std::vector<TextRef> enumeration;
};

struct ModelTypeRow {
    QorIdentifier id = QorNoIdentifier;
    QorIdentifier part = QorNoIdentifier;
    QorIdentifier library = QorNoIdentifier;
    std::uint32_t index = 0;  // among the library's model types
    TextRef name = 0;
    std::vector<QorIdentifier> classes;  // ascending
};

}  // namespace qor::embedded
