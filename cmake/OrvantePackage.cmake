# The Debian package, made by cpack from a build with the prefix /usr (preset "package").

# What is read beside the programs: guides and examples.
install(
    FILES README.md CHANGELOG.md docs/users_guide.md docs/schema_dialect.md
    DESTINATION "${CMAKE_INSTALL_DOCDIR}"
    COMPONENT programs
)
install(
    FILES cmake/package_doc_base.txt
    RENAME orvante-reference
    DESTINATION "${CMAKE_INSTALL_DATADIR}/doc-base"
    COMPONENT programs
)
install(DIRECTORY examples DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT programs)

if(NOT PROJECT_IS_TOP_LEVEL)
    return()
endif()

set(ORVANTE_PACKAGE_MAINTAINER "ORVANTE developers <orvante@example.org>" CACHE STRING "Maintainer in the Debian package")
set(ORVANTE_PACKAGE_REVISION 1 CACHE STRING "Revision of the Debian package")

# Everything that the packaging script needs; cpack runs it without our variables.
set(ORVANTE_PACKAGE_STRIP "${CMAKE_STRIP}")
configure_file(
    "${CMAKE_CURRENT_LIST_DIR}/OrvantePackageFiles.cmake.in"
    "${PROJECT_BINARY_DIR}/OrvantePackageFiles.cmake"
    @ONLY
)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orvante)
set(CPACK_PACKAGE_VENDOR "ORVANTE developers")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "setup program of a framework for river hydraulics and sediment transport")
string(
    CONCAT CPACK_PACKAGE_DESCRIPTION
    "orvante_setup checks the command file of a river model, made of\n"
    "one-dimensional chains, two-dimensional planes, subsurface domains and\n"
    "their couplings, and stores it in an HDF5 file for the solvers.\n"
    "\n"
    "The package holds the programs, the schema of the command file, manuals\n"
    "and example models, and the libraries and headers for those who build\n"
    "solvers."
)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE
)
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_BINARY_DIR}/OrvantePackageFiles.cmake")

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE "${ORVANTE_PACKAGE_REVISION}")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${ORVANTE_PACKAGE_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "g++, cmake, nlohmann-json3-dev, libtclap-dev, libhdf5-dev, hdf5-tools, python3-h5py")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

include(CPack)
