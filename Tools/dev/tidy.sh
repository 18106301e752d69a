# shellcheck shell=bash
# ./dev tidy [--changed | FILES...]

dev_tidy() {
    local files failed=0
    need clang-tidy cppcheck
    tidy_configure
    case "${1:-}" in
    "") files=$(tidy_sources) ;;
    --changed) files=$(changed_sources) ;;
    *) files=$(printf '%s\n' "$@") ;;
    esac
    [ -n "$files" ] || { echo "tidy: no source has changed"; return; }
    # Both run to their end, so that one run shows all.
    xargs -P "$(nproc)" -n 2 clang-tidy -p build/tidy --quiet <<<"$files" || failed=1
    cppcheck --std=c++20 --language=c++ --enable=warning,performance,portability --inline-suppr --quiet \
        -j "$(nproc)" --error-exitcode=1 --suppressions-list=.cppcheck -I build/tidy/include -I Source -I Tools -I Fuzz \
        --file-list=- <<<"$files" || failed=1
    [ $failed -ne 0 ] || echo "tidy: nothing found in $(wc -l <<<"$files") files"
    return $failed
}

# A folder of its own: in large units the files would have no compile commands, and in build/dev each change between the two
# would compile all.
tidy_configure() {
    local log=build/tidy/build.log
    need "${packages[@]}" "${second_host_packages[@]}"
    mkdir -p build/tidy
    cmake --preset dev -B build/tidy -DKIV_LARGE_UNITS=OFF >"$log" 2>&1 || {
        cat "$log" >&2
        fail "CMake failed; log: $log"
    }
}

# Not Tests: they are compiled with a header that GCC has precompiled, which clang-tidy cannot read. Not Benchmarks: the preset
# dev does not build them.
tidy_sources() { sources '*.cpp' | grep -E '^(Source|Tools|Fuzz|Examples)/'; }

# The sources that differ from where the branch left main, and for each header that does, one that includes it.
changed_sources() {
    local base path
    base=$(branch_base) || { tidy_sources; return; }
    own_git diff --name-only "$base" -- Source Tools Fuzz Examples | while read -r path; do
        case "$path" in
        *.cpp) echo "$path" ;;
        *.h) source_of "$path" ;;
        esac
    done | while read -r path; do [ ! -f "$path" ] || echo "$path"; done | LC_ALL=C sort -u
}

# On main itself, the commit before: its last change is what is new. Fails where nobody knows.
branch_base() {
    local main base head
    need git >&2
    head=$(own_git rev-parse --verify --quiet HEAD 2>/dev/null) || return 1
    for main in origin/main main; do
        base=$(own_git merge-base HEAD "$main" 2>/dev/null) || continue
        [ "$base" != "$head" ] || base=$(own_git rev-parse --verify --quiet 'HEAD^1') || return 1
        echo "$base"
        return
    done
    return 1
}

# The source of the same name, or one that includes the header.
source_of() {
    [ ! -f "${1%.h}.cpp" ] || { echo "${1%.h}.cpp"; return; }
    tidy_sources | xargs grep -l "[\"/]$(basename "$1")\"" | head -n 1 || true
}
