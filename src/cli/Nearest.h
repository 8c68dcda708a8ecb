// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace qor::cli {

/// The candidate that a mistyped word most likely meant; empty when none is near. Missing, surplus, wrong and swapped
/// letters count one each; a third of the word may be wrong.
[[nodiscard]] std::string nearest(std::string_view word, const std::vector<std::string>& candidates);

/// "; did you mean NAME?", or nothing.
[[nodiscard]] std::string didYouMean(std::string_view word, const std::vector<std::string>& candidates);

}  // namespace qor::cli
