# What all of the project's targets are compiled with.
add_library(kiv_options INTERFACE)
target_include_directories(kiv_options INTERFACE ${PROJECT_SOURCE_DIR})
if(MSVC)
    target_compile_options(kiv_options INTERFACE /W4 /WX /permissive- /utf-8)
else()
    target_compile_options(kiv_options INTERFACE
        -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor
        -Wold-style-cast -Wcast-qual -Woverloaded-virtual -Werror)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        # GCC 12 sees overlaps in `"literal" + std::string(…)` that are not there.
        target_compile_options(kiv_options INTERFACE -Wno-restrict)
    endif()
    if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # Where several files are compiled as one, GCC takes each of them for a header, in which a class may have no part
        # of a type without a name elsewhere.
        target_compile_options(kiv_options INTERFACE -Wno-subobject-linkage)
    endif()
endif()
if(KIV_SANITIZE)
    add_compile_options(-fsanitize=${KIV_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${KIV_SANITIZE})
    if(KIV_SANITIZE_NOT)
        add_compile_options(-fno-sanitize=${KIV_SANITIZE_NOT})
    endif()
endif()
# What is fuzzed counts how often each branch is taken: the folders up to builder/ and utilities/, with KIV_FUZZ_COUNTS_ALL the
# others, too. Neither tests nor windows do: it takes half as long again to compile.
set(counted_branches "")
if(KIV_FUZZ)
    set(counted_branches -fsanitize=fuzzer-no-link)
endif()

# Most of the time to compile goes into headers of the standard library, of Qt and of GoogleTest, so these are compiled once
# for many units. ccache keeps no objects that were made with such headers.
set(pch ON)
if(CMAKE_CXX_COMPILER_LAUNCHER MATCHES "ccache")
    set(pch OFF)
endif()
set(KIV_PCH ${pch} CACHE BOOL "Compile headers of libraries once for many units")
if(KIV_PCH AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC no longer takes such a header for the system's when it optimises, and warns of the library's own copying of text.
    # Builds with ccache keep these warnings.
    target_compile_options(kiv_options INTERFACE -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
endif()

# kiv_headers(NAME USES … HEADERS …): a library that holds compiled headers for other targets to use.
function(kiv_headers name)
    if(NOT KIV_PCH)
        return()
    endif()
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "HEADERS;USES")
    file(CONFIGURE OUTPUT ${name}.cpp CONTENT "") # the headers need a unit to stand before
    add_library(${name} OBJECT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
    target_link_libraries(${name} PRIVATE kiv_options ${ARG_USES})
    target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
endfunction()

# kiv_use_headers(TARGET NAME): compiles a target with the headers of a kiv_headers library.
function(kiv_use_headers target name)
    if(KIV_PCH)
        target_precompile_headers(${target} REUSE_FROM ${name})
    endif()
endfunction()

# kiv_standard_headers(NAME): the standard library's headers for each kiv_library that comes after, compiled with the options
# of this place, which have to be those of the libraries.
macro(kiv_standard_headers name)
    kiv_headers(${name}
        HEADERS <algorithm> <array> <functional> <map> <memory> <optional> <string> <string_view> <vector>)
    if(TARGET ${name})
        target_compile_options(${name} PRIVATE ${counted_branches})
    endif()
    set(KIV_STANDARD_HEADERS ${name})
endmacro()

# kiv_library(NAME SOURCES … USES … [HEADERS …]): one folder as one static library, kiv_NAME, compiled with the headers of the
# kiv_headers library, or with those of the standard library.
function(kiv_library name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "HEADERS" "SOURCES;USES")
    add_library(kiv_${name} STATIC ${ARG_SOURCES})
    target_link_libraries(kiv_${name} PUBLIC kiv_options ${ARG_USES})
    if(NOT ARG_HEADERS)
        set(ARG_HEADERS ${KIV_STANDARD_HEADERS})
        target_compile_options(kiv_${name} PRIVATE ${counted_branches})
    endif()
    kiv_use_headers(kiv_${name} ${ARG_HEADERS})
endfunction()

# kiv_whole_program(TARGET): optimised as one program with the libraries that are.
function(kiv_whole_program target)
    if(KIV_HAS_IPO)
        set_target_properties(${target} PROPERTIES INTERPROCEDURAL_OPTIMIZATION_RELEASE ON)
    endif()
endfunction()

# kiv_build_tool(TARGET): runs once, in the build, so it takes those libraries as they have been compiled.
function(kiv_build_tool target)
    if(KIV_HAS_IPO AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_link_options(${target} PRIVATE -fno-lto)
    endif()
endfunction()
