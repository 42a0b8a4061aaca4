# Where highfive/H5Easy.hpp comes from: variable ORVANTE_HIGHFIVE_INCLUDE_DIR, used by the target orvante::highfive.
#
# ORVANTE_HIGHFIVE = auto      an installed HighFive if CMake finds one, else the stand-in
#                    system    an installed HighFive, or an error
#                    fetch     HighFive's release archive, downloaded and checked by hash
#                    standin   compat/highfive

set(ORVANTE_HIGHFIVE "auto" CACHE STRING "HighFive: auto, system, fetch or standin")
set_property(CACHE ORVANTE_HIGHFIVE PROPERTY STRINGS auto system fetch standin)
set(ORVANTE_HIGHFIVE_URL
    "https://github.com/BlueBrain/HighFive/archive/refs/tags/v2.9.0.tar.gz"
    CACHE STRING "Release archive for ORVANTE_HIGHFIVE=fetch"
)
set(ORVANTE_HIGHFIVE_SHA256
    "6301def8ceb9f4d7a595988612db288b448a3c0546f6c83417dab38c64994d7e"
    CACHE STRING "SHA-256 of the release archive for ORVANTE_HIGHFIVE=fetch"
)
mark_as_advanced(ORVANTE_HIGHFIVE_URL ORVANTE_HIGHFIVE_SHA256)

function(orvante_fetch_highfive)
    include(FetchContent)
    # Headers are all that is used: SOURCE_SUBDIR names a folder without a CMakeLists.txt, so HighFive's own build,
    # with its searches for optional libraries, is left alone.
    FetchContent_Declare(
        highfive
        URL "${ORVANTE_HIGHFIVE_URL}"
        URL_HASH "SHA256=${ORVANTE_HIGHFIVE_SHA256}"
        SOURCE_SUBDIR include
    )
    FetchContent_MakeAvailable(highfive)
    set(ORVANTE_HIGHFIVE_INCLUDE_DIR "${highfive_SOURCE_DIR}/include" PARENT_SCOPE)
endfunction()

set(ORVANTE_HIGHFIVE_INCLUDE_DIR "")
set(ORVANTE_HIGHFIVE_FOUND_PACKAGE OFF)
if(ORVANTE_HIGHFIVE STREQUAL "auto")
    find_package(HighFive 2 CONFIG QUIET)
elseif(ORVANTE_HIGHFIVE STREQUAL "system")
    find_package(HighFive 2 CONFIG REQUIRED)
elseif(ORVANTE_HIGHFIVE STREQUAL "fetch")
    orvante_fetch_highfive()
elseif(NOT ORVANTE_HIGHFIVE STREQUAL "standin")
    message(FATAL_ERROR "ORVANTE_HIGHFIVE is '${ORVANTE_HIGHFIVE}': choose auto, system, fetch or standin.")
endif()

if(HighFive_FOUND)
    set(ORVANTE_HIGHFIVE_FOUND_PACKAGE ON)
    message(STATUS "HighFive: installed version ${HighFive_VERSION}")
elseif(ORVANTE_HIGHFIVE_INCLUDE_DIR)
    message(STATUS "HighFive: fetched")
else()
    set(ORVANTE_HIGHFIVE_INCLUDE_DIR "${PROJECT_SOURCE_DIR}/compat")
    message(STATUS "HighFive: stand-in of this tree")
endif()
