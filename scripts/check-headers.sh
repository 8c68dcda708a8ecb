#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Every header compiles alone, with both compilers and without a warning. --quick takes GCC only.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

check_header() {
    local flags=(-std=c++20 -fsyntax-only -Isrc -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
    printf '#include "%s"\n' "${2#src/}" | "$1" "${flags[@]}" -x c++ - 2>&1 ||
        { printf '%s does not compile alone with %s\n' "$2" "$1" >&2; return 1; }
}
export -f check_header

compilers=(g++ clang++-14)
[[ ${1:-} != --quick ]] || compilers=(g++)
for compiler in "${compilers[@]}"; do
    find src -name '*.h' -print0 | sort -z |
        xargs -0 -r -I{} -P "${QOR_JOBS:-$(nproc)}" bash -c 'check_header "$@"' _ "$compiler" {}
done
