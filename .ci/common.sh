# Shared by ./run, ./test and .ci/run: Debian packages on demand, the build with its log, the lock on a build folder.
# Everything here speaks to standard error only, because standard output belongs to the program that is run.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
builds="$root/build"

say() { printf '%s: %s\n' "$(basename "$0")" "$*" >&2; }
die() { say "$@"; exit 1; }

# need PACKAGE...: installs the Debian packages that are missing. Costs one dpkg-query when nothing is.
need() {
    command -v dpkg-query >/dev/null 2>&1 || return 0 # no Debian: the user brings the tools, CMake names what it misses
    local installed missing=() package
    installed=$(dpkg-query -W -f '${Package}=${db:Status-Status}\n' "$@" 2>/dev/null || true)
    for package in "$@"; do
        grep -qxF "$package=installed" <<<"$installed" || missing+=("$package")
    done
    ((${#missing[@]})) || return 0

    local as_root=()
    if [[ $(id -u) != 0 ]]; then
        command -v sudo >/dev/null 2>&1 ||
            die "missing Debian packages, and neither root nor sudo to install them. As root: apt-get install ${missing[*]}"
        as_root=(sudo)
    fi
    say "installing Debian packages: ${missing[*]}"
    local log
    log=$(mktemp)
    # The package lists at hand usually do; they are fetched anew only when they do not.
    if ! install_packages "${missing[@]}" >"$log" 2>&1; then
        if ! { "${as_root[@]}" apt-get update && install_packages "${missing[@]}"; } >>"$log" 2>&1; then
            cat "$log" >&2
            rm -f "$log"
            die "could not install: ${missing[*]}"
        fi
    fi
    rm -f "$log"
}

install_packages() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "$@"
}

# quietly LOG COMMAND...: runs with all output in LOG, and shows the log when the command fails.
quietly() {
    local log=$1 status=0
    shift
    mkdir -p "$(dirname "$log")"
    "$@" >"$log" 2>&1 </dev/null || status=$?
    ((status == 0)) || cat "$log" >&2
    return "$status"
}

# configure PRESET [CACHE ARGUMENT...]: configures build/PRESET. A folder that was made for another place of the
# sources (a copied or moved checkout) is started afresh.
configure() {
    local preset=$1 fresh=() home
    shift
    home=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$builds/$preset/CMakeCache.txt" 2>/dev/null || true)
    [[ -z $home || $home == "$root" ]] || fresh=(--fresh)
    (cd "$root" && quietly "$builds/$preset.configure.log" cmake "${fresh[@]}" --preset "$preset" "-DCMAKE_UNITY_BUILD=$unity" "$@")
}

# One build at a time in a build folder; released when the calling script ends or calls unlock.
lock() {
    mkdir -p "$builds"
    exec 9>"$builds/$1.lock"
    flock -n 9 || { say "waiting for another build in build/$1"; flock 9; }
}
unlock() { exec 9>&-; }

# left_out FOLDER: what the last tests of this build left out, and what would make them run.
left_out() {
    sed -n 's/^Left out: //p' "$1/Testing/Temporary/LastTest.log" 2>/dev/null | sort | uniq -c |
        while read -r count reason; do say "$count left out: $reason"; done
}

# Tests that prove independence of the locale need one that writes a comma where C writes a point: it is made in build/.
comma_locale() {
    if [[ ! -d $builds/locales/de_DE.UTF-8 ]] && command -v localedef >/dev/null 2>&1; then
        mkdir -p "$builds/locales"
        localedef -i de_DE -f UTF-8 "$builds/locales/de_DE.UTF-8" || true
    fi
    [[ ! -d $builds/locales/de_DE.UTF-8 ]] || export LOCPATH="$builds/locales"
}

# ccache, where it is at hand and can write somewhere, makes rebuilding cheap. Without it the compiler takes several sources at once:
# most of its time goes into headers, and that halves a cold build.
unity=ON
if command -v ccache >/dev/null 2>&1; then
    unity=OFF
    export CMAKE_CXX_COMPILER_LAUNCHER=ccache
    if [[ -z ${CCACHE_DIR:-} ]] && ! mkdir -p "${XDG_CACHE_HOME:-${HOME:-/nonexistent}/.cache}/ccache" 2>/dev/null; then
        export CCACHE_DIR="$builds/ccache"
    fi
fi
