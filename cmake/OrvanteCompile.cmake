# How every target of the project is compiled.

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Kind of build" FORCE)
endif()

set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Warnings stand on a target of their own, so that no installed target carries them to its users.
add_library(orvante_warnings INTERFACE)
target_compile_options(
    orvante_warnings
    INTERFACE
        -Wall
        -Wextra
        -Wpedantic
        -Wshadow
        -Wconversion
        -Wsign-conversion
        -Wnon-virtual-dtor
        -Wold-style-cast
        -Wcast-qual
        -Woverloaded-virtual
        $<$<BOOL:${ORVANTE_WARNINGS_AS_ERRORS}>:-Werror>
)

# __FILE__ is shown to users in assertion texts: it must not name the machine of the build.
add_library(orvante_compile INTERFACE)
target_compile_features(orvante_compile INTERFACE cxx_std_17)
target_compile_options(orvante_compile INTERFACE "-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=")
if(ORVANTE_LIBFUZZER) # the fuzzer goes by the branches that it sees taken, those of the libraries above all
    target_compile_options(orvante_compile INTERFACE -fsanitize=fuzzer-no-link)
endif()
target_link_libraries(orvante_compile INTERFACE orvante_warnings)

# Settings that hold for every target of the project, its programs and tests included.
function(orvante_target target)
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:orvante_compile>)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF CXX_STANDARD 17 CXX_STANDARD_REQUIRED ON)
endfunction()

# A library of one folder: orvante_library(name HEADERS ... SOURCES ... LINKS ...) makes orvante::name.
function(orvante_library name)
    cmake_parse_arguments(PARSE_ARGV 1 LIB "" "" "HEADERS;SOURCES;LINKS")
    set(target orvante_${name})
    if(LIB_SOURCES)
        add_library(${target} STATIC ${LIB_SOURCES} ${LIB_HEADERS})
        orvante_target(${target})
        set(scope PUBLIC)
    else()
        add_library(${target} INTERFACE)
        set(scope INTERFACE)
    endif()
    add_library(orvante::${name} ALIAS ${target})
    set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
    target_compile_features(${target} ${scope} cxx_std_17)
    target_include_directories(
        ${target}
        ${scope}
            "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>"
            "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/orvante>"
    )
    target_link_libraries(${target} ${scope} ${LIB_LINKS})
    foreach(header IN LISTS LIB_HEADERS)
        cmake_path(GET header PARENT_PATH folder)
        install(FILES "${header}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/orvante/${name}/${folder}" COMPONENT development)
    endforeach()
endfunction()
