# Compile settings of every target, and the one way in which targets are made.

# Flags that all of our own code is compiled with; never handed on to users of the installed package.
add_library(KivFlags INTERFACE)
if(PROJECT_IS_TOP_LEVEL)
    target_compile_options(KivFlags INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor
                                              $<$<BOOL:${KIV_WERROR}>:-Werror>)
endif()
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

# Settings of a target that are part of how our libraries are made, whatever the settings of the whole build are.
function(kiv_library_settings target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
                                               POSITION_INDEPENDENT_CODE ON)
    target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${kivIncludeFolder}>)
    if(NOT BUILD_SHARED_LIBS)
        target_compile_definitions(${target} PUBLIC KIV_STATIC_DEFINE)
    endif()
endfunction()

# kiv_large_units(TARGET [COUNT]): with KIV_LARGE_UNITS, COUNT of its sources, or 16, are compiled as one. Most of the time
# that a source takes goes into headers that its neighbours include too.
function(kiv_large_units target)
    set(count 16)
    if(ARGC GREATER 1)
        set(count ${ARGV1})
    endif()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ${KIV_LARGE_UNITS} UNITY_BUILD_BATCH_SIZE ${count})
endfunction()

# Only names of namespace kiv leave a shared library: GCC and Clang mark more as visible, the parts of the standard library
# that are instantiated with exported classes for one.
function(kiv_exports_limit target)
    if(NOT BUILD_SHARED_LIBS OR WIN32 OR APPLE)
        return()
    endif()
    target_link_options(${target} PRIVATE LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/KivExports.map)
    set_target_properties(${target} PROPERTIES LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/KivExports.map)
endfunction()

# kiv_add_library(NAME SOURCES... [MEASURED] [LINK TARGETS...] [LINK_PRIVATE TARGETS...])
#
# MEASURED: what a release takes is kept to the instruction. Which functions the compiler inlines depends on what it sees at
# once, so each of these sources is compiled alone there.
#
# The sources are compiled once, into the object library NAMEObjects; NAME is the library made of it, also known as
# kiv::NAME. Tests of what is not exported link the objects instead of the library. NAMEStatic is an archive of the same
# objects, not installed, for a program of ours that is to start without looking for our libraries.
function(kiv_add_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "MEASURED" "" "LINK;LINK_PRIVATE")
    add_library(${name}Objects OBJECT ${arg_UNPARSED_ARGUMENTS})
    kiv_library_settings(${name}Objects)
    target_include_directories(${name}Objects PUBLIC ${PROJECT_SOURCE_DIR}/Source)
    target_link_libraries(${name}Objects PUBLIC ${arg_LINK} PRIVATE KivFlags ${arg_LINK_PRIVATE})
    if(NOT arg_MEASURED OR NOT CMAKE_BUILD_TYPE STREQUAL Release)
        kiv_large_units(${name}Objects)
    endif()

    add_library(${name} $<TARGET_OBJECTS:${name}Objects>)
    add_library(kiv::${name} ALIAS ${name})
    kiv_library_settings(${name})
    kiv_exports_limit(${name})
    target_link_libraries(${name} PUBLIC ${arg_LINK} PRIVATE $<BUILD_INTERFACE:KivFlags> ${arg_LINK_PRIVATE})
    target_include_directories(${name} PUBLIC $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX VERSION ${PROJECT_VERSION}
                                             SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
                                             INSTALL_RPATH "$ORIGIN")
    set_property(GLOBAL APPEND PROPERTY KIV_LIBRARIES ${name})
    kiv_add_static(${name})
endfunction()

# kiv_add_static(NAME): the target NAMEStatic, in the scope of kiv_add_library.
function(kiv_add_static name)
    if(NOT BUILD_SHARED_LIBS)
        add_library(${name}Static ALIAS ${name})
        return()
    endif()
    add_library(${name}Static STATIC EXCLUDE_FROM_ALL $<TARGET_OBJECTS:${name}Objects>)
    kiv_library_settings(${name}Static)
    set_target_properties(${name}Static PROPERTIES LINKER_LANGUAGE CXX)
    foreach(other IN LISTS arg_LINK)
        if(TARGET ${other}Static)
            set(other ${other}Static)
        endif()
        target_link_libraries(${name}Static PUBLIC ${other})
    endforeach()
    target_link_libraries(${name}Static PRIVATE ${arg_LINK_PRIVATE})
endfunction()

# The compiler's options for tests.
function(kiv_test_options target)
    # GCC 12 sees faults in the joining of strings that are not there (its bug 105651); tests join many.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-array-bounds -Wno-restrict -Wno-stringop-overflow>)
    # To compile tests takes much longer than to run them; what they test is compiled apart and optimised. With -g1, a
    # backtrace names their functions and lines; to look at their variables needs -g.
    target_compile_options(${target} PRIVATE $<$<CONFIG:Debug>:-O0> $<$<CONFIG:Debug>:-g1>)
endfunction()

# kiv_add_test(NAME SOURCES... LINK TARGETS...): one GoogleTest program, each of its tests known to CTest.
function(kiv_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINK;DEFINITIONS")
    add_executable(${name} ${arg_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PRIVATE KivFlags ${arg_LINK} GTest::gmock GTest::gtest_main)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/Tests)
    target_compile_definitions(${name} PRIVATE ${arg_DEFINITIONS})
    kiv_test_options(${name})
    # Most of the time that a test takes to compile goes into GoogleTest's headers.
    if(kiv_counted IN_LIST arg_LINK)
        target_precompile_headers(${name} REUSE_FROM kiv_counted_test_headers)
    else()
        target_precompile_headers(${name} REUSE_FROM kiv_test_headers)
    endif()
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 600)
endfunction()
