# What ./run, ./test, .ci/run and ./check-all share: packages, configuring, building, testing.
# To be sourced by bash; the sourcing script sets `me` to the name it speaks under.
# Everything said goes to standard error: standard output belongs to the programs and to ctest.

me=${me:-build}
project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

say() { printf '%s: %s\n' "$me" "$*" >&2; }

die() {
    say "$*"
    exit 1
}

# packages_for PURPOSE...: the names, one a line.
packages_for() {
    local package purposes release wanted _
    # What is to be the next release has no number yet; other systems count in other ways.
    release=$(source /etc/os-release && [[ ${ID-} != debian ]] || printf '%s' "${VERSION_ID:-999}")
    while IFS=$'\t' read -r package purposes _; do
        [[ $package == \#* ]] && continue
        if [[ $purposes == *:* ]]; then
            ((${release:-0} >= ${purposes#*:})) || continue
            purposes=${purposes%:*}
        fi
        for wanted in "$@"; do
            [[ ",$purposes," == *",$wanted,"* ]] && printf '%s\n' "$package" && break
        done
    done <"$project/packaging/packages.tsv"
    return 0
}

# missing_packages PURPOSE...: those of them that this system does not have.
missing_packages() {
    local wanted package status
    local -A installed=()
    mapfile -t wanted < <(packages_for "$@")
    while read -r package status; do
        [[ $status == @(installed|triggers-*) ]] && installed[$package]=1
    done < <(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "${wanted[@]}" 2>/dev/null)
    for package in "${wanted[@]}"; do
        [[ ${installed[$package]-} ]] || printf '%s\n' "$package"
    done
}

# need_packages PURPOSE...: installs what is missing; asks the system nothing when nothing is.
need_packages() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        say "this is no Debian: going on with what is here (packaging/packages.tsv lists what is needed)"
        return 0
    fi
    local missing as_root=()
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]} == 0)) && return 0
    if ((EUID != 0)); then
        command -v sudo >/dev/null ||
            die "please install, as root: apt-get install --no-install-recommends ${missing[*]}"
        as_root=(sudo)
    fi
    mkdir -p "$project/build"
    local log=$project/build/apt.log
    say "installing with apt (log: build/apt.log): ${missing[*]}"
    # Configuration that somebody changed stays when its package comes anew: nobody is there to be asked.
    apt_get() {
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y \
            -o DPkg::Lock::Timeout=300 -o Dpkg::Use-Pty=0 \
            -o Dpkg::Options::=--force-confdef -o Dpkg::Options::=--force-confold "$@" </dev/null
    }
    # One stale or unreachable source need not matter: the installation tells whether it does.
    apt_get update >"$log" 2>&1 || say "some package lists could not be refreshed; going on"
    if ! apt_get install --no-install-recommends "${missing[@]}" >>"$log" 2>&1; then
        tail -n 20 "$log" >&2
        die "apt could not install them; the lines above say why (all of it: build/apt.log)"
    fi
}

# configure PRESET [tests|counted|bench]: only when the build folder is not configured, or lacks what is
# wanted. Who builds the programs alone has no packages for the rest, so that is left out at first.
configure() {
    local preset=$1 part options=() wanted=(${2:+"VARNEL_BUILD_${2^^}"})
    local folder=$project/build/$1
    # What .ci/run has built, the ./test that it calls need not build again.
    [[ $preset == ci ]] && folder=$project/build/release
    local log=$folder-configure.log cache=$folder/CMakeCache.txt
    if [[ -f $cache ]] && ! stale "$cache"; then
        # What people run or debug keeps what it has; all others are checks, and stop at warnings.
        [[ $preset == @(release|debug) ]] || wanted+=(VARNEL_WARNINGS_AS_ERRORS)
        [[ -f $folder/build.ninja ]] && are_on "$cache" "${wanted[@]}" && return 0
    else
        [[ -f $cache ]] && options+=(--fresh)
        for part in TESTS COUNTED BENCH; do
            options+=("-DVARNEL_BUILD_$part=OFF")
        done
    fi
    [[ ${2-} ]] && options+=("-DVARNEL_BUILD_${2^^}=ON")
    # Used where it is found, never asked for by ./run and ./test.
    if command -v ccache >/dev/null; then
        export CMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER-ccache}
    fi
    say "configuring build/${folder##*/}"
    mkdir -p "$project/build"
    if ! (cd "$project" && cmake --preset "$preset" "${options[@]}") >"$log" 2>&1; then
        cat "$log" >&2
        die "configuring failed; the lines above say why"
    fi
}

# are_on CACHE OPTION...: all of these options.
are_on() {
    local option
    for option in "${@:2}"; do
        grep -q "^$option:BOOL=ON$" "$1" || return 1
    done
}

# stale CACHE: the project was moved or copied since, or the compiler cache it names is gone.
stale() {
    grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$project" "$1" || return 0
    grep -q '^CMAKE_CXX_COMPILER_LAUNCHER:.*=ccache$' "$1" && ! command -v ccache >/dev/null
}

# build PRESET [TARGET...]: says that it builds, and shows progress, only when something changed.
build() {
    local preset=$1 targets=() loud=
    shift
    (($#)) && targets=(--target "$@")
    local folder=$project/build/$preset name=${*:-all}
    # As a file's name, a list of many targets would be too long.
    ((${#name} < 100)) || name=$(cksum <<<"$name")
    local stamp="$folder/.built-${name//[ \/]/-}" all="$folder/.built-all"
    if changed_since "$stamp" && changed_since "$all"; then
        say "building ${*:-everything} (build/$preset)"
        loud=1
    fi
    # Otherwise the compiler cache keeps nothing that was built with precompiled headers.
    export CCACHE_SLOPPINESS=${CCACHE_SLOPPINESS-pch_defines,time_macros,include_file_mtime,include_file_ctime}
    # Two at once in one build folder would tread on each other.
    (
        # The other may have minutes to go.
        flock --nonblock 9 || { say "waiting for another build in this project to end" && flock 9; }
        if [[ $loud ]]; then
            cmake --build "$folder" "${targets[@]}" 9>&-
        else
            cmake --build "$folder" "${targets[@]}" -- --quiet 9>&- | sed '/^ninja: no work to do\.$/d'
        fi
    ) >&2 9>"$project/build/.lock" || die "the build failed; the lines above say why"
    touch "$stamp"
}

# A guess for what to say; whether anything is built is the build program's own decision.
changed_since() {
    local part parts=()
    for part in CMakeLists.txt CMakePresets.json cmake src interface resources tools tests packaging fuzz bench; do
        [[ -e $project/$part ]] && parts+=("$project/$part")
    done
    [[ ! -f $1 || $(find "${parts[@]}" -newer "$1" -print -quit) ]]
}

# make_locale PRESET: a locale with a decimal comma, inside the build folder, for the tests.
make_locale() {
    local folder=$project/build/$1/locale
    [[ -d $folder/de_DE.UTF-8 ]] && return 0
    mkdir -p "$folder"
    localedef -i de_DE -f UTF-8 "$folder/de_DE.UTF-8" 2>/dev/null ||
        say "the comma-decimal locale could not be made; the tests that need it will say so"
}

# run_tests PRESET [CTEST-ARGUMENT...]: builds everything, then ctest, without any display.
run_tests() {
    local preset=$1
    shift
    configure "$preset" tests
    build "$preset"
    make_locale "$preset"
    env -u DISPLAY -u WAYLAND_DISPLAY \
        ctest --test-dir "$project/build/$preset" --output-on-failure --parallel "$(nproc)" "$@" || return
    # The list with which ctest ends looks like one of failures.
    if grep -q ': Skipped$' "$project/build/$preset/Testing/Temporary/LastTest.log" 2>/dev/null; then
        say "nothing failed; what is listed as skipped needs root, a mount, or a program that .ci/run installs"
    fi
}
