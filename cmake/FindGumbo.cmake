# gumbo, which reads HTML: the target Gumbo::gumbo. A static library is taken before a shared one.
find_path(GUMBO_INCLUDE_DIR gumbo.h)
find_library(GUMBO_LIBRARY NAMES libgumbo.a gumbo)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Gumbo
    REQUIRED_VARS GUMBO_LIBRARY GUMBO_INCLUDE_DIR
    REASON_FAILURE_MESSAGE "Debian has it in libgumbo-dev")
if(Gumbo_FOUND AND NOT TARGET Gumbo::gumbo)
    add_library(Gumbo::gumbo UNKNOWN IMPORTED)
    set_target_properties(Gumbo::gumbo PROPERTIES
        IMPORTED_LOCATION "${GUMBO_LIBRARY}" INTERFACE_INCLUDE_DIRECTORIES "${GUMBO_INCLUDE_DIR}")
endif()
