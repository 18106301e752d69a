# shellcheck shell=bash
# ./dev package [--accept]: the packages, and a host that uses them in every way; --accept keeps the lists of
# exported symbols and installed files.

dev_package() {
    need "${packages[@]}" make pkg-config binutils dpkg-dev lintian clang abigail-tools git
    Tests/Consumer/run "$@"
}
