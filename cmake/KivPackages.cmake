# `cpack -G DEB` in a build that is configured with -DCMAKE_INSTALL_PREFIX=/usr: three packages of Debian. `./dev package`
# does all of it.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kivifcschemapset)
# CPack puts a summary of the project before each description, unless it is the one that CPack makes up.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_NAME} built using CMake")
set(CPACK_PACKAGE_VENDOR "The maintainers of KivIfcSchemaPset")
set(CPACK_PACKAGE_CONTACT "The maintainers of KivIfcSchemaPset <maintainers@kivifcschemapset.invalid>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development tool)
# The libraries and their development files are of one build; other libraries are found by their own packages.
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
    ${PROJECT_BINARY_DIR}/Source/Host ${PROJECT_BINARY_DIR}/Source/Format/Ifc/Def ${PROJECT_BINARY_DIR}/Source/Kit)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(kivDebianLibrary libkivifcschemapset${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(kivDebianVersion "= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
set(kivDebianAbout "KivIfcSchemaPset reads IFC schemas from EXPRESS text, and reads, checks\nand writes the definitions of property sets and quantity sets.")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${kivDebianLibrary})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "IFC schemas and property-set definitions - shared libraries\n${kivDebianAbout}\n\nThis package has what programs that use it need to run.")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/triggers)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libkivifcschemapset-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${kivDebianLibrary} (${kivDebianVersion}), libexpat1-dev")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "IFC schemas and property-set definitions - development files\n${kivDebianAbout}\n\nThis package has the headers, a CMake package and a pkg-config file.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME kivifc)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION utils)
# Our libraries are in the program itself, so it does not depend on the package that has them.
set(CPACK_COMPONENT_TOOL_DESCRIPTION
    "IFC schemas and property-set definitions - command-line program\n${kivDebianAbout}\n\nThis package has kivifc, for a prompt and for continuous integration.")

# The history of the packages is written by hand; its last entry is the package that is made.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/debian/changelog)
file(STRINGS ${PROJECT_SOURCE_DIR}/cmake/debian/changelog kivDebianEntry LIMIT_COUNT 1)
if(NOT kivDebianEntry MATCHES "\\(${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}\\)")
    message(FATAL_ERROR "cmake/debian/changelog has no entry of ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}: ${kivDebianEntry}")
endif()

# What Debian wants of a package beyond what `cmake --install` installs is added before each package is made.
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_BINARY_DIR}/KivDebianFiles.cmake)
configure_file(${PROJECT_SOURCE_DIR}/cmake/debian/KivDebianFiles.cmake.in ${PROJECT_BINARY_DIR}/KivDebianFiles.cmake @ONLY)
set(CPACK_OUTPUT_FILE_PREFIX ${PROJECT_BINARY_DIR}/packages)
include(CPack)
