# What a cross build for Windows takes from Debian's packages for Linux: headers that are the same everywhere, and
# GoogleTest's sources; and from source packages, those of gumbo and pugixml. find_package finds them in place of what the
# packages themselves announce, which would put all of /usr/include before the compiler's own headers.
set(kiv_headers ${PROJECT_BINARY_DIR}/headers)
file(MAKE_DIRECTORY ${kiv_headers})
foreach(folder boost CLI nlohmann stb)
    if(NOT EXISTS /usr/include/${folder})
        message(FATAL_ERROR "Missing: /usr/include/${folder}; Debian has it in libboost-dev, libcli11-dev, nlohmann-json3-dev, libstb-dev")
    endif()
    file(CREATE_LINK /usr/include/${folder} ${kiv_headers}/${folder} SYMBOLIC)
endforeach()
set(STB_IMAGE_DIR ${kiv_headers}/stb CACHE PATH "Folder of stb_image.h")
set(BOOST_DIR ${kiv_headers} CACHE PATH "Folder that holds Boost's")

foreach(package CLI11 nlohmann_json)
    file(WRITE ${CMAKE_FIND_PACKAGE_REDIRECTS_DIR}/${package}Config.cmake
        "if(NOT TARGET ${package}::${package})\n"
        "    add_library(${package}::${package} INTERFACE IMPORTED)\n"
        "    target_include_directories(${package}::${package} INTERFACE \"${kiv_headers}\")\n"
        "endif()\n")
endforeach()
file(WRITE ${CMAKE_FIND_PACKAGE_REDIRECTS_DIR}/GTestConfig.cmake
    "if(NOT TARGET GTest::gtest)\n"
    "    block()\n"
    "        set(CMAKE_INTERPROCEDURAL_OPTIMIZATION_RELEASE OFF)\n"
    "        add_compile_options(-O0) # quick to compile, as the tests themselves are\n"
    "        add_subdirectory(/usr/src/googletest \"${PROJECT_BINARY_DIR}/googletest\" EXCLUDE_FROM_ALL)\n"
    "    endblock()\n"
    "endif()\n")

# The .c files that libgumbo-dev was made of.
set(KIV_GUMBO_SOURCE "" CACHE PATH "Folder of gumbo's .c files; empty: what packaging/windows/fetch-gumbo fetches")
set(gumbo_source ${KIV_GUMBO_SOURCE})
if(NOT gumbo_source)
    execute_process(COMMAND ${PROJECT_SOURCE_DIR}/packaging/windows/fetch-gumbo
        OUTPUT_VARIABLE gumbo_source OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_VARIABLE gumbo_error)
endif()
if(EXISTS ${gumbo_source}/gumbo.h)
    enable_language(C)
    file(GLOB gumbo_files CONFIGURE_DEPENDS ${gumbo_source}/*.c)
    add_library(gumbo STATIC EXCLUDE_FROM_ALL ${gumbo_files})
    target_include_directories(gumbo SYSTEM PUBLIC ${gumbo_source})
    target_compile_options(gumbo PRIVATE -std=gnu99 -w)
    set_target_properties(gumbo PROPERTIES INTERPROCEDURAL_OPTIMIZATION OFF)
    add_library(Gumbo::gumbo ALIAS gumbo)
    file(WRITE ${CMAKE_FIND_PACKAGE_REDIRECTS_DIR}/GumboConfig.cmake "")
else()
    message(STATUS "gumbo's sources could not be fetched: ${gumbo_error}")
endif()

# The unit that libpugixml-dev was made of.
set(KIV_PUGIXML_SOURCE "" CACHE PATH "Folder of pugixml.cpp; empty: what packaging/windows/fetch-pugixml fetches")
set(pugixml_source ${KIV_PUGIXML_SOURCE})
if(NOT pugixml_source)
    execute_process(COMMAND ${PROJECT_SOURCE_DIR}/packaging/windows/fetch-pugixml
        OUTPUT_VARIABLE pugixml_source OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_VARIABLE pugixml_error)
endif()
if(EXISTS ${pugixml_source}/pugixml.cpp)
    add_library(pugixml STATIC EXCLUDE_FROM_ALL ${pugixml_source}/pugixml.cpp)
    target_include_directories(pugixml SYSTEM PUBLIC ${pugixml_source})
    target_compile_options(pugixml PRIVATE -w)
    add_library(pugixml::static ALIAS pugixml)
    file(WRITE ${CMAKE_FIND_PACKAGE_REDIRECTS_DIR}/pugixmlConfig.cmake "")
else()
    message(STATUS "pugixml's sources could not be fetched: ${pugixml_error}")
endif()
