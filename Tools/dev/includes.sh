# shellcheck shell=bash
# ./dev includes

dev_includes() {
    need python3
    python3 -B Tools/dev/check_includes.py --self-test
    python3 -B Tools/dev/check_includes.py
    python3 -B Tools/dev/check_mirror.py --self-test
    python3 -B Tools/dev/check_mirror.py
}
