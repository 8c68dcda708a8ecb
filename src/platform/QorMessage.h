// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "platform/QorExport.h"
#include "platform/SvString.h"

/// A placeholder of a message and what is put in its place.
struct QorPlaceholder {
    std::string_view name;  ///< with its percent sign
    std::string_view text;
};

/// Fills the placeholders in one pass over the template: where several names begin at a place the longest is taken
/// ("%s2" before "%s"); each name is replaced at its first occurrence only; what was put in is never looked at again,
/// so that a library named "%s2" does no harm.
QOR_API SV::String Qor_FillPlaceholders(std::string_view pattern, std::initializer_list<QorPlaceholder> placeholders);

/// The text of a message resource, its placeholders filled.
QOR_API SV::String Qor_Message(std::uint16_t number, std::initializer_list<QorPlaceholder> placeholders = {});
