# The HDF5 C library: target OrvanteHdf5::hdf5, static where that is possible.
#
# Debian's shared library pulls in a network client and its dependencies, which costs several milliseconds at every start
# of a program that otherwise runs for a few. ORVANTE_STATIC_HDF5 = AUTO (static if it links, else shared), ON, OFF.

set(ORVANTE_STATIC_HDF5 "AUTO" CACHE STRING "Link the HDF5 library statically: AUTO, ON or OFF")
set_property(CACHE ORVANTE_STATIC_HDF5 PROPERTY STRINGS AUTO ON OFF)

find_package(HDF5 QUIET COMPONENTS C)

function(orvante_try_static_hdf5)
    foreach(folder IN LISTS HDF5_LIBRARY_DIRS)
        list(APPEND hints "${folder}")
    endforeach()
    foreach(library IN LISTS HDF5_C_LIBRARIES)
        if(IS_ABSOLUTE "${library}")
            cmake_path(GET library PARENT_PATH folder)
            list(APPEND hints "${folder}")
        endif()
    endforeach()
    find_library(ORVANTE_HDF5_STATIC_LIBRARY libhdf5.a HINTS ${hints})
    find_library(ORVANTE_SZ_LIBRARY NAMES libsz.a sz)
    find_library(ORVANTE_AEC_LIBRARY NAMES libaec.a aec)
    find_library(ORVANTE_Z_LIBRARY NAMES libz.a z)
    mark_as_advanced(ORVANTE_HDF5_STATIC_LIBRARY ORVANTE_SZ_LIBRARY ORVANTE_AEC_LIBRARY ORVANTE_Z_LIBRARY)
    if(NOT ORVANTE_HDF5_STATIC_LIBRARY)
        return()
    endif()
    set(libraries "${ORVANTE_HDF5_STATIC_LIBRARY}")
    foreach(dependency IN ITEMS "${ORVANTE_SZ_LIBRARY}" "${ORVANTE_AEC_LIBRARY}" "${ORVANTE_Z_LIBRARY}")
        if(dependency)
            list(APPEND libraries "${dependency}")
        endif()
    endforeach()
    list(APPEND libraries ${CMAKE_DL_LIBS} m)
    include(CheckCSourceCompiles)
    set(CMAKE_REQUIRED_INCLUDES ${HDF5_C_INCLUDE_DIRS})
    set(CMAKE_REQUIRED_LIBRARIES ${libraries})
    check_c_source_compiles(
        "#include <hdf5.h>
        int main(void) { return H5Fclose(H5Fcreate(\"x\", H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT)) < 0; }"
        ORVANTE_HDF5_LINKS_STATICALLY
    )
    if(ORVANTE_HDF5_LINKS_STATICALLY)
        set(ORVANTE_HDF5_STATIC_LIBRARIES "${libraries}" PARENT_SCOPE)
    endif()
endfunction()

set(ORVANTE_HDF5_STATIC_LIBRARIES "")
if(HDF5_FOUND AND NOT ORVANTE_STATIC_HDF5 STREQUAL "OFF")
    orvante_try_static_hdf5()
    if(ORVANTE_STATIC_HDF5 STREQUAL "ON" AND NOT ORVANTE_HDF5_STATIC_LIBRARIES)
        message(FATAL_ERROR "ORVANTE_STATIC_HDF5=ON, but no static HDF5 library links: install one or set it to AUTO.")
    endif()
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(
    OrvanteHdf5
    REQUIRED_VARS HDF5_C_INCLUDE_DIRS
    VERSION_VAR HDF5_VERSION
)

if(OrvanteHdf5_FOUND AND NOT TARGET OrvanteHdf5::hdf5)
    add_library(OrvanteHdf5::hdf5 INTERFACE IMPORTED)
    target_include_directories(OrvanteHdf5::hdf5 SYSTEM INTERFACE ${HDF5_C_INCLUDE_DIRS})
    if(ORVANTE_HDF5_STATIC_LIBRARIES)
        target_link_libraries(OrvanteHdf5::hdf5 INTERFACE ${ORVANTE_HDF5_STATIC_LIBRARIES})
        message(STATUS "HDF5 ${HDF5_VERSION}: linked statically")
    else()
        target_link_libraries(OrvanteHdf5::hdf5 INTERFACE ${HDF5_C_LIBRARIES})
        message(STATUS "HDF5 ${HDF5_VERSION}: linked as a shared library")
    endif()
endif()
