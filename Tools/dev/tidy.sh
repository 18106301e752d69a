# shellcheck shell=bash
# ./dev tidy [--changed | FILES...]

dev_tidy() {
    local files failed=0
    need clang-tidy cppcheck
    configure dev
    case "${1:-}" in
    "") files=$(tidy_sources) ;;
    --changed) files=$(changed_sources) ;;
    *) files=$(printf '%s\n' "$@") ;;
    esac
    [ -n "$files" ] || { echo "tidy: no source has changed"; return; }
    # Both run to their end, so that one run shows all.
    xargs -P "$(nproc)" -n 2 clang-tidy -p build/dev --quiet <<<"$files" || failed=1
    cppcheck --std=c++20 --language=c++ --enable=warning,performance,portability --inline-suppr --quiet \
        -j "$(nproc)" --error-exitcode=1 --suppressions-list=.cppcheck -I build/dev/include -I Source -I Tools -I Fuzz \
        --file-list=- <<<"$files" || failed=1
    [ $failed -ne 0 ] || echo "tidy: nothing found in $(wc -l <<<"$files") files"
    return $failed
}

tidy_sources() { sources '*.cpp' | grep -E '^(Source|Tools|Fuzz)/'; }

# The sources that differ from where the branch left main, and for each header that does, one that includes it.
changed_sources() {
    local base path
    base=$(branch_base) || { tidy_sources; return; }
    own_git diff --name-only "$base" -- Source Tools Fuzz | while read -r path; do
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
