# Programs, libraries, headers and the CMake package `orvante`.

include(CMakePackageConfigHelpers)

set(ORVANTE_PACKAGE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/orvante")

# The targets are exported in two sets, so that jsv can be used without the libraries of the rest.
install(
    TARGETS orvante_jsv
    EXPORT orvante-jsv
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    COMPONENT development
)
install(
    TARGETS orvante_highfive orvante_api orvante_dataio orvante_h5io orvante_schema orvante_app
    EXPORT orvante-setup
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    COMPONENT development
)
install(TARGETS orvante_setup jsv orvante_reference RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT programs)

foreach(set IN ITEMS jsv setup)
    install(
        EXPORT orvante-${set}
        NAMESPACE orvante::
        FILE orvante-${set}-targets.cmake
        DESTINATION "${ORVANTE_PACKAGE_DIR}"
        COMPONENT development
    )
endforeach()

configure_package_config_file(
    "${CMAKE_CURRENT_LIST_DIR}/orvanteConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/orvanteConfig.cmake"
    INSTALL_DESTINATION "${ORVANTE_PACKAGE_DIR}"
    NO_SET_AND_CHECK_MACRO
)
write_basic_package_version_file(
    "${PROJECT_BINARY_DIR}/orvanteConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion
)
install(
    FILES
        "${PROJECT_BINARY_DIR}/orvanteConfig.cmake"
        "${PROJECT_BINARY_DIR}/orvanteConfigVersion.cmake"
        "${CMAKE_CURRENT_LIST_DIR}/FindTCLAP.cmake"
        "${CMAKE_CURRENT_LIST_DIR}/FindOrvanteHdf5.cmake"
    DESTINATION "${ORVANTE_PACKAGE_DIR}"
    COMPONENT development
)
