// SPDX-License-Identifier: Apache-2.0
// Lets single allocations of a program fail. Defines its operator new: to be included by one source of the program.
#pragma once
#include <cstdlib>
#include <new>

namespace failing_allocations {

inline long untilFailure = 0;  // 0: none fails
inline bool hasFailed = false;

[[gnu::noinline]] inline void* allocate(std::size_t size) noexcept {
    if (untilFailure == 0 || --untilFailure != 0) return std::malloc(size == 0 ? 1 : size);
    hasFailed = true;
    return nullptr;
}

/// Runs `call` once for each of its allocations, which then fails, and at last without a failure. `check` sees each
/// result and the number of the allocation, 0 for the run without a failure. Returns how many failed.
template <class Call, class Check>
long failEach(Call&& call, Check&& check) {
    for (long number = 1;; ++number) {
        untilFailure = number;
        hasFailed = false;
        const auto result = call();
        untilFailure = 0;
        check(result, hasFailed ? number : 0);
        if (!hasFailed) return number - 1;
    }
}

}  // namespace failing_allocations

void* operator new(std::size_t size) {
    if (void* const memory = failing_allocations::allocate(size)) return memory;
    throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return failing_allocations::allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return failing_allocations::allocate(size); }
// Not inlined, for a compiler that sees free() behind new takes them for a mismatched pair.
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete[](void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
