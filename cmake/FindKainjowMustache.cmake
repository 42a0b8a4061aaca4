# The header-only template library: target KainjowMustache::KainjowMustache.

find_path(KAINJOW_MUSTACHE_INCLUDE_DIR kainjow/mustache.hpp)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(KainjowMustache REQUIRED_VARS KAINJOW_MUSTACHE_INCLUDE_DIR)

if(KainjowMustache_FOUND AND NOT TARGET KainjowMustache::KainjowMustache)
    add_library(KainjowMustache::KainjowMustache INTERFACE IMPORTED)
    target_include_directories(KainjowMustache::KainjowMustache SYSTEM INTERFACE "${KAINJOW_MUSTACHE_INCLUDE_DIR}")
endif()
mark_as_advanced(KAINJOW_MUSTACHE_INCLUDE_DIR)
