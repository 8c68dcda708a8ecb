// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <optional>
#include <string>

#include "platform/KexDocument.h"

namespace qor::platform::kex {

/// Why a text cannot be parsed, and the offset of the place.
struct SyntaxError {
    std::size_t at = 0;
    std::string complaint;
};

/// Parses a text into the document, which must be clear; after an error it holds what stands before.
[[nodiscard]] std::optional<SyntaxError> parse(const std::string& text, Document& document);

}  // namespace qor::platform::kex
