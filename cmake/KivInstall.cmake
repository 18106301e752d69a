# `cmake --install`, in three components: runtime (what programs need to run), development (what they need to be built:
# headers, a CMake package and a pkg-config file) and tool (kivifc).

include(CMakePackageConfigHelpers)
set(kivCMakeFolder ${CMAKE_INSTALL_LIBDIR}/cmake/KivIfcSchemaPset)
get_property(kivLibraries GLOBAL PROPERTY KIV_LIBRARIES)

install(TARGETS ${kivLibraries} EXPORT KivIfcSchemaPsetTargets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)

add_library(KivHeaders INTERFACE)
target_sources(KivHeaders INTERFACE FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR}/Source ${kivGeneratedFolder})
foreach(header IN LISTS kivPublicHeaders)
    target_sources(KivHeaders INTERFACE FILE_SET HEADERS FILES ${PROJECT_SOURCE_DIR}/Source/${header})
endforeach()
target_sources(KivHeaders INTERFACE FILE_SET HEADERS FILES ${kivGeneratedFolder}/Base/Export.h
                                                           ${kivGeneratedFolder}/Version.h)
install(TARGETS KivHeaders FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kiv COMPONENT development)

# find_package(KivIfcSchemaPset). While the first number of the version is 0, the second one says what fits together.
set(kivCompatibility SameMajorVersion)
if(PROJECT_VERSION_MAJOR EQUAL 0)
    set(kivCompatibility SameMinorVersion)
endif()
set(kivIsStatic ON)
if(BUILD_SHARED_LIBS)
    set(kivIsStatic OFF)
endif()
write_basic_package_version_file(${PROJECT_BINARY_DIR}/KivIfcSchemaPsetConfigVersion.cmake
                                 COMPATIBILITY ${kivCompatibility})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/KivIfcSchemaPsetConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/KivIfcSchemaPsetConfig.cmake
                              INSTALL_DESTINATION ${kivCMakeFolder}
                              NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
install(EXPORT KivIfcSchemaPsetTargets NAMESPACE kiv:: DESTINATION ${kivCMakeFolder} COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/KivIfcSchemaPsetConfig.cmake
              ${PROJECT_BINARY_DIR}/KivIfcSchemaPsetConfigVersion.cmake
        DESTINATION ${kivCMakeFolder} COMPONENT development)

# pkg-config. The prefix is found from where the file is, so that a tree may be moved.
set(kivPkgConfigFolder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
cmake_path(IS_ABSOLUTE kivPkgConfigFolder isAbsolute)
set(kivPkgConfigPrefix ${CMAKE_INSTALL_PREFIX})
if(NOT isAbsolute)
    file(RELATIVE_PATH kivPkgConfigUp /${kivPkgConfigFolder} /)
    string(REGEX REPLACE "/$" "" kivPkgConfigUp "${kivPkgConfigUp}")
    cmake_path(SET kivPkgConfigPrefix "\${pcfiledir}/${kivPkgConfigUp}")
endif()
cmake_path(APPEND kivPkgConfigLibs "\${prefix}" "${CMAKE_INSTALL_LIBDIR}")
cmake_path(APPEND kivPkgConfigIncludes "\${prefix}" "${CMAKE_INSTALL_INCLUDEDIR}")
# The kit has a file of its own.
list(REMOVE_ITEM kivLibraries KivIfcKit)
list(REVERSE kivLibraries)
list(TRANSFORM kivLibraries PREPEND -l OUTPUT_VARIABLE kivPkgConfigLinks)
list(JOIN kivPkgConfigLinks " " kivPkgConfigLinks)
set(kivPkgConfigFlags "")
set(kivPkgConfigRequires "Requires.private: expat")
set(kivPkgConfigThreads "Libs.private: -pthread")
if(kivIsStatic)
    # There is no shared library to name what it needs, so every host needs it.
    set(kivPkgConfigFlags " -DKIV_STATIC_DEFINE")
    set(kivPkgConfigRequires "Requires: expat")
    string(APPEND kivPkgConfigLinks " -pthread")
    set(kivPkgConfigThreads "")
endif()
configure_file(${PROJECT_SOURCE_DIR}/cmake/KivIfcSchemaPset.pc.in ${PROJECT_BINARY_DIR}/KivIfcSchemaPset.pc @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/cmake/KivIfcKit.pc.in ${PROJECT_BINARY_DIR}/KivIfcKit.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/KivIfcSchemaPset.pc ${PROJECT_BINARY_DIR}/KivIfcKit.pc
        DESTINATION ${kivPkgConfigFolder} COMPONENT development)
