# SPDX-License-Identifier: Apache-2.0
# What run, test and .ci/run share. To be sourced with the project's folder in $root.

say() { printf '%s\n' "$*" >&2; }

# need_packages GROUP…: installs the packages of these groups that are missing.
need_packages() {
    local group package missing=()
    while read -r group package; do
        [[ " $* " == *" $group "* ]] || continue
        [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || missing+=("$package")
    done < <(grep -v '^#' "$root/cmake/debian-packages.txt")
    ((${#missing[@]})) || return 0

    local as_root=()
    if ! command -v apt-get >/dev/null; then
        say "Going on without these Debian 12 packages, since there is no apt-get here: ${missing[*]}"
        return 0
    elif ((EUID != 0)); then
        if ! command -v sudo >/dev/null; then
            say "These packages are missing, and only root can install them:"
            say "    apt-get install ${missing[*]}"
            return 1
        fi
        as_root=(sudo)
    fi
    say "Installing ${missing[*]}"
    local log
    log=$(mktemp)
    if ! { "${as_root[@]}" apt-get update -qq &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -qq --no-install-recommends "${missing[@]}"; } >"$log" 2>&1 </dev/null; then
        cat "$log" >&2
        rm -f "$log"
        say "The packages could not be installed: ${missing[*]}"
        return 1
    fi
    rm -f "$log"
}

# build PRESET [TARGET…]: configures and builds; on a terminal with a line of progress, otherwise silent when all goes
# well. The number of parallel jobs is $QOR_JOBS, or the number of processors. With QOR_WERROR=ON warnings are errors.
build() {
    local preset=$1
    shift
    local log="$root/build/$preset.log" command=(cmake --build --preset "$preset" --parallel "${QOR_JOBS:-$(nproc)}")
    (($# == 0)) || command+=(--target "$@")
    mkdir -p "$root/build"
    [[ -f $root/build/$preset/build.ninja ]] || say "Building ($preset) for the first time; this takes some minutes."
    if ! (cd "$root" && cmake --preset "$preset" ${QOR_WERROR:+"-DQOR_WERROR=$QOR_WERROR"}) >"$log" 2>&1 </dev/null; then
        cat "$log" >&2
        say "Configuring the build ($preset) failed."
        return 1
    fi
    local code=0
    (cd "$root" && "${command[@]}") 2>&1 </dev/null | show_progress "$log" || code=$?
    if ((code != 0)); then
        grep -v '^\[[0-9]' "$log" >&2 || true
        say "The build ($preset) failed."
        return 1
    fi
    if grep -A 4 'warning:' "$log" >&2; then say "The build ($preset) has warnings, see above."; fi
}

show_progress() {
    local line terminal=
    [[ ! -t 2 ]] || terminal=1
    while IFS= read -r line; do
        printf '%s\n' "$line" >>"$1"
        if [[ $terminal && $line =~ ^\[([0-9]+)/([0-9]+)\]\ B ]]; then
            printf '\r\033[KBuilding %s of %s' "${BASH_REMATCH[1]}" "${BASH_REMATCH[2]}" >&2
        fi
    done
    [[ ! $terminal ]] || printf '\r\033[K' >&2
}
