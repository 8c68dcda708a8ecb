#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Compares what the built shared libraries export with cmake/exported-symbols-LIBRARY.txt; --update writes the lists.
# Listed are functions, data and virtual tables with one definition. Inline functions and type information come and
# go with the compiler's mood and are left out, but none may come from outside the project's own names.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
export LC_ALL=C

own='^((non-)?virtual thunk to |vtable for |VTT for |typeinfo for |typeinfo name for |guard variable for |operator[^ ]*\(|([^<( ]+ )?)(Qor|SV::|ISequence|ISortedSet|qor::|displayErrorMessage)'
code=0
for library in qor qor-embedded; do
    file=build/default/lib/lib$library.so
    list=cmake/exported-symbols-$library.txt
    [[ -f $file ]] || { printf '%s is not built\n' "$file" >&2; exit 1; }

    symbols=$(nm --dynamic --defined-only --demangle --without-symbol-versions "$file" |
        sed -E 's/^[0-9a-f]+ (.) (.*)$/\2\t\1/' | grep -v -P '\tA$' || true)
    foreign=$(cut -f 1 <<<"$symbols" | grep -v -E "$own" | grep -v '^$' || true)
    if [[ -n $foreign ]]; then
        printf '%s exports names that are not its own:\n%s\n' "$file" "$foreign" >&2
        code=1
    fi

    current=$(awk -F '\t' '($2 ~ /^[TDBR]$/ && $1 !~ /^typeinfo /) || $1 ~ /^vtable for / { print $1 }' \
        <<<"$symbols" | sort -u)
    if [[ ${1:-} == --update ]]; then
        printf '# SPDX-License-Identifier: Apache-2.0\n%s\n' "$current" >"$list"
    elif ! diff -u --label "$list" --label "$file" <(grep -v '^#' "$list") <(printf '%s\n' "$current") >&2; then
        printf 'lib%s exports other symbols than its list; if that is meant: scripts/check-exports.sh --update\n' \
            "$library" >&2
        code=1
    fi
done
exit "$code"
