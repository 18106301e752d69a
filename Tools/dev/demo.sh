# shellcheck shell=bash
# ./dev demo

dev_demo() {
    build release
    exec Examples/demo.sh build/release/Tools/kivifc/kivifc
}
