# How fuzz targets are made.

option(KIV_FUZZER "Build the fuzz targets for libFuzzer (Clang), not to replay what is kept" OFF)
add_custom_target(kiv_fuzz)

# kiv_add_fuzz(NAME SOURCES... LINK TARGETS...)
#
# The program kiv_fuzz_NAME: with KIV_FUZZER a fuzzer, else a program that runs the files and folders it is given, and a
# test that runs it over Corpus/NAME.
function(kiv_add_fuzz name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINK")
    set(program kiv_fuzz_${name})
    add_executable(${program} ${arg_UNPARSED_ARGUMENTS} FuzzTarget.h)
    target_link_libraries(${program} PRIVATE KivFlags ${arg_LINK})
    add_dependencies(kiv_fuzz ${program})
    if(KIV_FUZZER)
        target_sources(${program} PRIVATE FuzzerEntry.cpp)
        target_link_options(${program} PRIVATE -fsanitize=fuzzer)
        return()
    endif()
    target_sources(${program} PRIVATE ReplayEntry.cpp)
    add_test(NAME Fuzz.${name} COMMAND ${program} ${CMAKE_CURRENT_SOURCE_DIR}/Corpus/${name})
    set_tests_properties(Fuzz.${name} PROPERTIES TIMEOUT 600)
endfunction()
