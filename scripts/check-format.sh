#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Fails when clang-format would change a C++ file; with --fix it changes them.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mode=(--dry-run -Werror)
[[ ${1:-} != --fix ]] || mode=(-i)
git ls-files -z --cached --others --exclude-standard -- \
    'src/*.h' 'src/*.cpp' 'tests/*.h' 'tests/*.cpp' 'bench/*.h' 'bench/*.cpp' 'fuzz/*.h' 'fuzz/*.cpp' \
    'examples/*.h' 'examples/*.cpp' |
    while IFS= read -r -d '' file; do
        [[ ! -f $file ]] || printf '%s\0' "$file"
    done | xargs -0 -r -n 40 -P "$(nproc)" clang-format-14 "${mode[@]}"
