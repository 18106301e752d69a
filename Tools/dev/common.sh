# shellcheck shell=bash
# What the commands of ./dev share; sourced by it, in the top folder of the checkout.

packages=(
    g++ cmake ninja-build libexpat1-dev libcli11-dev libfmt-dev nlohmann-json3-dev libgtest-dev libgmock-dev python3
)
# What only the tests with other host services need, which are built by the preset dev alone.
second_host_packages=(libxml2-dev uuid-dev)

fail() {
    progress ''
    echo "dev: $*" >&2
    exit 1
}

# One line that says what is going on, for who waits at a terminal. The next one takes its place, an empty one
# clears it.
progress() {
    [ ! -t 2 ] || printf '\r\e[K%s' "${1:0:${COLUMNS:-80}}" >&2
}

# quietly COMMAND...: shows what it printed only when it fails.
quietly() {
    local output status=0
    output=$("$@" 2>&1) || status=$?
    [ $status -eq 0 ] || printf '%s\n' "$output" >&2
    return $status
}

# Installs the Debian packages that are missing; does nothing where all are there.
need() {
    local missing=() sudo=() package
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "to install as root first: ${missing[*]}"
        sudo=(sudo)
    fi
    progress "installing ${missing[*]}"
    quietly "${sudo[@]}" apt-get -o Acquire::Retries=3 update -qq
    quietly "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get -o Acquire::Retries=3 install -y -qq --no-install-recommends "${missing[@]}"
    progress ''
}

# npm_file FILE PACKAGE INTEGRITY PATH: a file of an npm package, unless it is there. Exit status 77 says that this machine has
# no npm, or that npm does not get it.
npm_file() {
    local file=$1 package=$2 integrity=$3 path=$4 folder archive status=0
    [ ! -f "$file" ] || return 0
    command -v npm >/dev/null || return 77
    mkdir -p "$(dirname "$file")"
    folder=$(mktemp -d build/npm.XXXXXX)
    npm pack --silent --pack-destination "$folder" "$package" >/dev/null 2>"$folder/log" || status=77
    if [ $status -eq 0 ]; then
        archive=$(ls "$folder"/*.tgz)
        [ "sha512-$(openssl dgst -sha512 -binary "$archive" | base64 -w 0)" = "$integrity" ] || status=1
    else
        cat "$folder/log" >&2
    fi
    # Under another name first, so that half a file is never taken for it.
    [ $status -ne 0 ] || { tar -xzOf "$archive" "package/$path" >"$folder/file" && mv "$folder/file" "$file"; } || status=1
    rm -rf "$folder"
    [ $status -ne 1 ] || fail "$package is not what it was"
    return $status
}

# configure PRESET [CMAKE OPTIONS...]
configure() {
    local preset=$1 log=build/$1/build.log werror=OFF
    need "${packages[@]}"
    [ "$preset" != dev ] || need "${second_host_packages[@]}"
    [ -z "${CI:-}" ] || werror=ON
    mkdir -p "build/$preset"
    cmake --preset "$preset" -DKIV_WERROR=$werror "${@:2}" >"$log" 2>&1 || {
        cat "$log" >&2
        fail "CMake failed for $preset; log: $log"
    }
}

# compile PRESET [TARGETS...], after configure
compile() {
    local preset=$1 log=build/$1/build.log targets=()
    [ $# -eq 1 ] || targets=(--target "${@:2}")
    progress "building $preset; log: $log"
    cmake --build "build/$preset" "${targets[@]}" >>"$log" 2>&1 || {
        progress ''
        compile_failures "$log" >&2
        fail "the build of $preset failed; log: $log"
    }
    progress ''
}

# What Ninja printed for the steps that failed, without their long command lines; the end of the log where no
# step did.
compile_failures() {
    awk '
        /^\[[0-9]+\/[0-9]+\]/ { failed = 0 }
        /^FAILED: / { failed = found = 1; print; getline; next }
        failed { print }
        END { exit !found }' "$1" || tail -n 40 "$1"
}

# build PRESET [CMAKE OPTIONS...]: everything
build() {
    configure "$@"
    compile "$1"
}

# Git as the owner of the checkout would run it, also where that is somebody else.
own_git() {
    need git
    git -c safe.directory='*' "$@"
}

# sources NAME-PATTERNS...: our files of these names, without Git, which is not always there.
sources() {
    local names=() pattern
    for pattern in "$@"; do
        names+=(-o -name "$pattern")
    done
    find Benchmarks Examples Fuzz Source Tests Tools -type f \( "${names[@]:1}" \) | LC_ALL=C sort
}
