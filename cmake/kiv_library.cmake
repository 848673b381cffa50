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
endif()
if(KIV_SANITIZE)
    target_compile_options(kiv_options INTERFACE
        -fsanitize=${KIV_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(kiv_options INTERFACE -fsanitize=${KIV_SANITIZE})
endif()
if(KIV_FUZZ)
    # Each branch counts how often it is taken; tests/fuzz alone looks at that.
    target_compile_options(kiv_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# kiv_library(NAME SOURCES … USES …): one folder as one static library, kiv_NAME.
function(kiv_library name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;USES")
    add_library(kiv_${name} STATIC ${ARG_SOURCES})
    target_link_libraries(kiv_${name} PUBLIC kiv_options ${ARG_USES})
endfunction()
