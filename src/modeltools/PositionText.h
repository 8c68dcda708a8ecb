// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace qor::modeltools {

/// Width and height as a position text holds them: lengths, as QorKexParser numbers them.
struct ObjectSize {
    std::optional<long> width;
    std::optional<long> height;
};

/// Nothing when the text cannot be parsed, or when what stands for a side is no length: written back, it would not be
/// one either. A text without elements holds neither side.
[[nodiscard]] std::optional<ObjectSize> sizeIn(std::string_view position);

/// Puts the sides that the size has in place of the text's own; a side that it has not stays as it is. Nothing when the
/// text lacks the place of a side.
[[nodiscard]] std::optional<std::string> withSize(std::string position, const ObjectSize& size);

}  // namespace qor::modeltools
