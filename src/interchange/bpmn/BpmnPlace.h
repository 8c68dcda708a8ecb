// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

namespace qor::interchange::bpmn {

/// A place in the file; line and column count from 1, columns in bytes (in UTF-16 files, in characters).
struct Place {
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

}  // namespace qor::interchange::bpmn
