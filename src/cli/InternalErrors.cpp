// SPDX-License-Identifier: Apache-2.0
#include "cli/InternalErrors.h"

#include <fmt/format.h>

#include "cli/Console.h"

namespace qor::cli {

namespace {

constexpr std::uint64_t kMostTold = 20;

}  // namespace

InternalErrors::InternalErrors(Console& console)
    : _console(console),
      _windows([](void* self, std::string_view line) { static_cast<InternalErrors*>(self)->add(line); }, this) {}

void InternalErrors::add(std::string_view text) {
    ++_count;
    if (_count > kMostTold) return;
    _console.err(fmt::format("qor: {} {}\n", _console.errColours().error("internal error:"), printable(text)));
}

}  // namespace qor::cli
