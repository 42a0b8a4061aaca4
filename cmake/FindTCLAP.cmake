# The header-only command-line library: target TCLAP::TCLAP.
#
# Its Debian package brings a pkg-config file but no CMake package.

find_package(PkgConfig QUIET)
if(PkgConfig_FOUND)
    pkg_check_modules(PC_TCLAP QUIET tclap)
endif()
find_path(TCLAP_INCLUDE_DIR tclap/CmdLine.h HINTS ${PC_TCLAP_INCLUDE_DIRS})
set(TCLAP_VERSION "${PC_TCLAP_VERSION}")

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(TCLAP REQUIRED_VARS TCLAP_INCLUDE_DIR VERSION_VAR TCLAP_VERSION)

if(TCLAP_FOUND AND NOT TARGET TCLAP::TCLAP)
    add_library(TCLAP::TCLAP INTERFACE IMPORTED)
    target_include_directories(TCLAP::TCLAP SYSTEM INTERFACE "${TCLAP_INCLUDE_DIR}")
endif()
mark_as_advanced(TCLAP_INCLUDE_DIR)
