# shellcheck shell=bash
# ./dev includes

dev_includes() {
    need python3
    python3 Tools/dev/check_includes.py --self-test
    python3 Tools/dev/check_includes.py
}
