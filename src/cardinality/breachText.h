// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

#include "platform/SvString.h"

namespace qor::cardinality {

/// The message, or its wording for a limit of 1.
[[nodiscard]] std::uint16_t wordedFor(std::uint16_t message, std::uint32_t limit);

/// A message about the relations of `subject`, an object or a class.
struct RelationMessage {
    std::uint16_t message = 0;
    long subject = -1;
    long other = -1;          ///< object or class at the other end; below 1: none
    long relationClass = -1;  ///< below 1: none
    std::uint32_t limit = 0;
    std::uint16_t direction = 0;  ///< resource; without effect where an other end is named
};

/// The complete text, in the wording for the limit. A name that the repository refuses is left empty, after an
/// internal error was reported.
[[nodiscard]] SV::String textOf(const RelationMessage& message);

/// A message about the number of objects of a class, in the wording for the limit.
[[nodiscard]] SV::String objectCountText(std::uint16_t message, long cls, std::uint32_t found, std::uint32_t limit);

}  // namespace qor::cardinality
