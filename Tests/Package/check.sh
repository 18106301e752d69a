#!/usr/bin/env bash
# Compares what a release build of GCC exports and installs with the lists that are kept in this folder, and what kivifc
# needs at its start with what it may need.
#
#     check.sh BUILD STAGE [--accept]     BUILD has the libraries, STAGE what `cmake --install BUILD` put there
#
# With --accept the lists of today are kept. `./dev package --accept` makes both folders and comes here. Where a version has
# a tag, abidiff compares the libraries with those of the newest tag too.
set -euo pipefail
here=$(dirname "$(realpath "${BASH_SOURCE[0]}")")
[ $# -ge 2 ] || { sed -n '2,8s/^# \{0,1\}//p' "${BASH_SOURCE[0]}" >&2; exit 2; }
build=$(realpath "$1") stage=$(realpath "$2") accept=${3:-}
lists=$(mktemp -d)
trap 'rm -rf "$lists"' EXIT

# The library's symbols by mangled name. Weak ones are instantiations and inline functions that the compiler may inline
# away from one version to the next, but hosts may be linked to them as well, so they are listed.
symbols() { nm -D --defined-only "$1" | awk '{ print $3 }' | LC_ALL=C sort -u; }

installed() {
    # The folder of the libraries has other names elsewhere.
    (cd "$stage" && find . ! -type d | sed -E "s|^\./||; s|^lib/[^/]*-linux-gnu/|lib/|" | LC_ALL=C sort)
}

for library in KivAssert KivId KivIfcKit KivIfcSchemaPset KivLocale KivXml; do
    symbols "$(find "$stage" -name "lib$library.so")" >"$lists/$library.symbols.txt"
    # A list that is empty, or that has names of others, compares nothing.
    [ -s "$lists/$library.symbols.txt" ] || { echo "package: $library exports nothing" >&2; exit 1; }
    ! grep -vE '^_Z(N|NK|TV|TI|TS|TT|GV|GVZ|Z|Th.*_|Tv.*_|Tc.*_)(N|NK)*3kiv' "$lists/$library.symbols.txt" >&2 ||
        { echo "package: $library exports names outside namespace kiv" >&2; exit 1; }
done
installed >"$lists/installed.txt"

# What the program needs at its start is found, mapped and bound each time: no library that could be in it.
needed=$(readelf -d "$stage/bin/kivifc" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p')
! grep -vE '^(libc|libm|libexpat|ld-linux-[a-z0-9-]+)\.so\.' <<<"$needed" >&2 ||
    { echo "package: kivifc needs these libraries at its start" >&2; exit 1; }

if [ "$accept" = --accept ]; then
    cp "$lists"/*.txt "$here/"
    echo "package: the lists of today are kept in Tests/Package"
else
    status=0
    for list in "$lists"/*.txt; do
        diff -u --label "kept: $(basename "$list")" --label "today: $(basename "$list")" \
            "$here/$(basename "$list")" "$list" >&2 || status=1
    done
    [ $status -eq 0 ] || { echo "package: if this is meant: ./dev package --accept" >&2; exit 1; }
fi

# Compares with the libraries of the newest tag: they are built from it, once, and kept.
tag=$(git -c safe.directory='*' -C "$here" describe --tags --abbrev=0 --match 'v*' 2>/dev/null) ||
    { echo "package: no tag yet, so there is nothing for abidiff to compare with"; exit 0; }
old=$build/abi/$tag
if [ ! -d "$old/stage" ]; then
    mkdir -p "$old/source"
    git -c safe.directory='*' -C "$here/../.." archive "$tag" | tar -x -C "$old/source"
    cmake -S "$old/source" -B "$old/build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
        -DKIV_BUILD_TESTS=OFF -DKIV_BUILD_EXAMPLES=OFF -DKIV_BUILD_TOOLS=OFF >/dev/null
    cmake --build "$old/build" >/dev/null
    cmake --install "$old/build" --prefix "$old/stage" >/dev/null
fi
# Versions whose names of the libraries differ may differ in everything.
status=0
for library in KivAssert KivId KivIfcKit KivIfcSchemaPset KivLocale KivXml; do
    before=$(find "$old/stage" -name "lib$library.so") after=$(find "$stage" -name "lib$library.so")
    soname() { readelf -d "$1" | sed -n 's/.*SONAME.*\[\(.*\)\]/\1/p'; }
    [ "$(soname "$before")" = "$(soname "$after")" ] || continue
    # Additions are no break: bits 4 and 8 of the status say that hosts break, or may.
    abidiff --no-added-syms "$before" "$after" >&2 || status=1
done
exit $status
