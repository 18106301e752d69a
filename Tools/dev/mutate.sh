# shellcheck shell=bash
# ./dev mutate [OPTIONS] [FILE]

dev_mutate() {
    need "${packages[@]}" git python3 lld
    python3 Tools/dev/mutate.py "$@"
}
