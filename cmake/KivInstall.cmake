# `cmake --install`: the libraries, their headers, kivifc and a CMake package (find_package(KivIfcSchemaPset)).

get_property(kivSharedLibraries GLOBAL PROPERTY KIV_SHARED_LIBRARIES)
install(TARGETS ${kivSharedLibraries} EXPORT KivIfcSchemaPsetTargets)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/Source/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kiv
        FILES_MATCHING PATTERN "*.h"
        # Parts of their modules that no public header includes.
        REGEX "/(KivXml(Document|Lines|Parser|Serializer|Text)|IfcDefXmlNodes|IfcSchemaAttributeSearch)\\.h$" EXCLUDE)
install(EXPORT KivIfcSchemaPsetTargets NAMESPACE kiv:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KivIfcSchemaPset
        FILE KivIfcSchemaPsetTargets.cmake)

include(CMakePackageConfigHelpers)
write_basic_package_version_file(KivIfcSchemaPsetConfigVersion.cmake COMPATIBILITY SameMinorVersion)
file(WRITE ${PROJECT_BINARY_DIR}/KivIfcSchemaPsetConfig.cmake
     "include(\${CMAKE_CURRENT_LIST_DIR}/KivIfcSchemaPsetTargets.cmake)\n")
install(FILES ${PROJECT_BINARY_DIR}/KivIfcSchemaPsetConfig.cmake
              ${PROJECT_BINARY_DIR}/KivIfcSchemaPsetConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KivIfcSchemaPset)
