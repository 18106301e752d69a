# Compile settings of every target, and the one way in which targets are made.

# Flags that all of our own code is compiled with; never handed on to users of the installed package.
add_library(KivFlags INTERFACE)
target_compile_options(KivFlags INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor
                                          $<$<BOOL:${KIV_WERROR}>:-Werror>)
# Nobody replaces single functions of our libraries by his own, so the compiler may inline exported ones.
target_compile_options(KivFlags INTERFACE -fno-semantic-interposition)
# GCC stops inlining at a growth that suits large programs; ours are small functions in small libraries. With these, and with
# calls of other libraries that go straight there, a schema loads a tenth faster; the library grows by a fifth.
set(kivReleaseFlags $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:--param=inline-unit-growth=150;--param=max-inline-insns-auto=80;-fno-plt>)
target_compile_options(KivFlags INTERFACE "${kivReleaseFlags}")
target_link_options(KivFlags INTERFACE "${kivReleaseFlags}")
if(KIV_SANITIZE)
    target_compile_options(KivFlags INTERFACE -fsanitize=${KIV_SANITIZE} -fno-omit-frame-pointer
                                              -fno-sanitize-recover=all)
    target_link_options(KivFlags INTERFACE -fsanitize=${KIV_SANITIZE})
endif()

# kiv_add_shared(NAME SOURCES... [LINK TARGETS...])
#
# The sources are compiled once, into the object library NAMEObjects; NAME is the shared library made of it.
# Tests that look behind the exported classes link the objects instead of the library.
function(kiv_add_shared name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINK;LINK_PRIVATE")
    add_library(${name}Objects OBJECT ${arg_UNPARSED_ARGUMENTS})
    target_include_directories(${name}Objects PUBLIC $<BUILD_INTERFACE:${kivIncludeFolder}>
                                                     $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/Source>)
    target_link_libraries(${name}Objects PUBLIC ${arg_LINK} PRIVATE KivFlags ${arg_LINK_PRIVATE})

    add_library(${name} SHARED)
    add_library(kiv::${name} ALIAS ${name})
    target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${kivIncludeFolder}>
                                              $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/Source>
                                              $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    target_link_libraries(${name} PUBLIC ${arg_LINK} PRIVATE KivFlags ${arg_LINK_PRIVATE} ${name}Objects)
    target_compile_features(${name} PUBLIC cxx_std_20)
    set_target_properties(${name} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
                                             INSTALL_RPATH "$ORIGIN")
    set_property(GLOBAL APPEND PROPERTY KIV_SHARED_LIBRARIES ${name})
endfunction()

# kiv_add_test(NAME SOURCES... LINK TARGETS...): one GoogleTest program, each of its tests known to CTest.
function(kiv_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINK;DEFINITIONS")
    add_executable(${name} ${arg_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PRIVATE KivFlags ${arg_LINK} GTest::gmock GTest::gtest_main)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/Tests)
    target_compile_definitions(${name} PRIVATE ${arg_DEFINITIONS})
    # GCC 12 sees faults in the joining of strings that are not there (its bug 105651); tests join many.
    target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-array-bounds -Wno-restrict -Wno-stringop-overflow>)
    # To compile tests takes much longer than to run them; what they test is compiled apart and optimised.
    target_compile_options(${name} PRIVATE $<$<CONFIG:Debug>:-O0>)
    # Most of the time that a test takes to compile goes into these two headers.
    target_precompile_headers(${name} PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 600)
endfunction()
