# shellcheck shell=bash
# ./dev format [--check]

dev_format() {
    need clang-format
    case "${1:-}" in
    "") sources '*.h' '*.cpp' | xargs clang-format -i ;;
    --check) format_check ;;
    *) fail "no option of format: $1" ;;
    esac
}

# Lists the sources that are laid out in another way, and fails when there are any.
format_check() {
    local said wrong
    said=$(sources '*.h' '*.cpp' | xargs -P "$(nproc)" -n 40 clang-format --dry-run 2>&1) || fail "clang-format: $said"
    wrong=$(sed -n 's/^\([^ :]*\):[0-9]*:[0-9]*: .*\[-Wclang-format-violations\]$/\1/p' <<<"$said" | LC_ALL=C sort -u)
    [ -n "$said" ] || { echo "format: $(sources '*.h' '*.cpp' | wc -l) files, all as clang-format lays them out"; return; }
    [ -n "$wrong" ] || fail "clang-format: $said"
    echo "$wrong"
    echo "format: $(wc -l <<<"$wrong") files are laid out in another way; ./dev format changes them"
    return 1
}
