// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <functional>
#include <string_view>

#include "embedded/Repository.h"

namespace qor::embedded {

// Takes one attribute value that holds inter-model references: the attribute and the value.
using TakeReferences = std::function<void(const AttributeRow& attribute, std::string_view text)>;

// Calls `take` for every value of the object or relation that holds references, and of the rows of its record
// attributes: by attribute, rows in their order.
void forEachReference(const Repository& repository, QorIdentifier instance, const TakeReferences& take);
// The same for everything in a model: objects by identifier, then relations.
void forEachReferenceInModel(const Repository& repository, QorIdentifier model, const TakeReferences& take);

// Takes one attribute value that names other things, with the object or relation that has it, in itself or in a row.
using TakeNamingValue =
    std::function<void(QorIdentifier instance, const AttributeRow& attribute, std::string_view text)>;
// For every value of the object or relation, or of everything in a model, that holds references or names an attribute
// profile.
void forEachNamingValueOf(const Repository& repository, QorIdentifier instance, const TakeNamingValue& take);
void forEachNamingValue(const Repository& repository, QorIdentifier model, const TakeNamingValue& take);

[[nodiscard]] bool holdsReferences(const Repository& repository, QorIdentifier instance);

}  // namespace qor::embedded
