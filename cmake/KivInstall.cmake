# `cmake --install`: the libraries, their headers, kivifc and a CMake package (find_package(KivIfcSchemaPset)).

get_property(kivSharedLibraries GLOBAL PROPERTY KIV_SHARED_LIBRARIES)
install(TARGETS ${kivSharedLibraries} EXPORT KivIfcSchemaPsetTargets)
add_library(KivHeaders INTERFACE)
target_sources(KivHeaders INTERFACE FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR}/Source ${PROJECT_BINARY_DIR}/generated)
foreach(header IN LISTS kivPublicHeaders)
    target_sources(KivHeaders INTERFACE FILE_SET HEADERS FILES ${PROJECT_SOURCE_DIR}/Source/${header})
endforeach()
target_sources(KivHeaders INTERFACE FILE_SET HEADERS FILES ${PROJECT_BINARY_DIR}/generated/Base/Export.h)
install(TARGETS KivHeaders FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kiv)
install(EXPORT KivIfcSchemaPsetTargets NAMESPACE kiv:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KivIfcSchemaPset
        FILE KivIfcSchemaPsetTargets.cmake)

include(CMakePackageConfigHelpers)
write_basic_package_version_file(KivIfcSchemaPsetConfigVersion.cmake COMPATIBILITY SameMinorVersion)
file(WRITE ${PROJECT_BINARY_DIR}/KivIfcSchemaPsetConfig.cmake
     "include(\${CMAKE_CURRENT_LIST_DIR}/KivIfcSchemaPsetTargets.cmake)\n")
install(FILES ${PROJECT_BINARY_DIR}/KivIfcSchemaPsetConfig.cmake
              ${PROJECT_BINARY_DIR}/KivIfcSchemaPsetConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KivIfcSchemaPset)
