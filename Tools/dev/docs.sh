# shellcheck shell=bash
# ./dev docs: the API reference, in build/docs/html. A warning of doxygen is an error.

dev_docs() {
    need cmake ninja-build g++ libexpat1-dev doxygen
    # The headers as hosts see them, those that CMake makes included.
    mkdir -p build/docs
    cmake -S . -B build/docs -G Ninja -DKIV_BUILD_TOOLS=OFF -DKIV_BUILD_EXAMPLES=OFF -DKIV_BUILD_TESTS=OFF \
        -DKIV_INSTALL=OFF >build/docs/docs.log 2>&1 && KIV_VERSION=$(project_version) doxygen Docs/Doxyfile >>build/docs/docs.log 2>&1 || {
        cat build/docs/docs.log >&2
        return 1
    }
    echo "docs: build/docs/html/index.html"
}

project_version() { sed -n 's/^project(.* VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt; }
