#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Every source, script and authored data file says its licence in its first three lines.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

needs_line() {
    case $1 in
        fuzz/corpus/*) return 1 ;;
        *.h | *.cpp | *.md | *.py | *.sh | *.cmake | *.in | *.po | *.yaml | *.yml | *.map | *.dict) return 0 ;;
        */CMakeLists.txt | CMakeLists.txt | cmake/*.txt | src/*.txt | .clang-format | .gitignore) return 0 ;;
        *) [[ $(head -c 2 "$1" | tr -d '\0') == '#!' ]] ;;
    esac
}

missing=0
while IFS= read -r -d '' file; do
    [[ -f $file ]] && needs_line "$file" || continue
    if ! head -n 3 "$file" | grep -q 'SPDX-License-Identifier: Apache-2.0'; then
        printf '%s:1: no SPDX line\n' "$file" >&2
        missing=1
    fi
done < <(git ls-files -z --cached --others --exclude-standard)
exit "$missing"
