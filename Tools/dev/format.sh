# shellcheck shell=bash
# ./dev format

dev_format() {
    need clang-format
    sources '*.h' '*.cpp' | xargs clang-format -i
}
