// SPDX-License-Identifier: Apache-2.0
// The attributes that exist before any library does.
#pragma once
#include <cstdint>
#include <span>

#include "embedded/QorRepositoryBuilder.h"
#include "platform/QorIdentifier.h"

namespace qor::embedded {

// Who has a fixed attribute.
enum class FixedOwner : std::uint8_t {
    AnyClass,       // every class, record class and model type
    BusinessClass,  // every class of a business-process part
    WorkingClass,   // every class of a working-environment part
    AnyRelationClass,
    AnyInstance,       // every object; libraries and models as well
    BusinessInstance,  // every object of a business-process class
    WorkingInstance,   // every object of a working-environment class
    AnyLibrary,        // every application library and part
};

// What only this platform keeps in attributes, beside those that every repository has.
inline constexpr QorIdentifier kUnmovedRelationClass = 900;  // of a library part: the name of the relation class
inline constexpr QorIdentifier kPastedFrom = 901;            // of an object: the name of the object that it copies

struct FixedAttribute {
    QorIdentifier id;
    FixedOwner owner;
    QorCoreAttributeType type;
    const char* name;
};

[[nodiscard]] std::span<const FixedAttribute> fixedAttributes();

[[nodiscard]] constexpr QorAttributeLevel levelOf(FixedOwner owner) {
    return owner == FixedOwner::AnyInstance || owner == FixedOwner::BusinessInstance ||
                   owner == FixedOwner::WorkingInstance
               ? QorAttributeLevel::Instance
               : QorAttributeLevel::Class;
}

}  // namespace qor::embedded
