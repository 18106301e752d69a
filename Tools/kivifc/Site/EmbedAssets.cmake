# cmake -DFILES=FILE;FILE -DOUTPUT=FILE -P EmbedAssets.cmake
#
# Writes a C++ source that has the bytes of the files in it, each under its name without the folder.
cmake_minimum_required(VERSION 3.25)
set(arrays "")
set(rows "")
set(number 0)
foreach(file IN LISTS FILES)
    get_filename_component(name ${file} NAME)
    file(READ ${file} bytes HEX)
    string(REGEX REPLACE "(................................)" "\\1\n" bytes "${bytes}")
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${bytes}")
    string(APPEND arrays "constexpr char asset${number}[] = {\n${bytes}'\\0'};\n")
    string(APPEND rows "    {\"${name}\", {asset${number}, sizeof asset${number} - 1}},\n")
    math(EXPR number "${number} + 1")
endforeach()
file(WRITE ${OUTPUT} "#include \"kivifc/Site/Assets.h\"

#include <array>

// Written by EmbedAssets.cmake.
namespace kiv::kivifc::site {

namespace {

${arrays}
constexpr std::array<Asset, ${number}> Assets{{
${rows}}};

} // namespace

std::span<const Asset> getAssets() {
    return Assets;
}

} // namespace kiv::kivifc::site
")
