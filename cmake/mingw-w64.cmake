# Toolchain: 64-bit Windows programs by Debian's mingw-w64, each a single file.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_SYSTEM_VERSION 10)

set(kiv_triplet x86_64-w64-mingw32)
# The variant with POSIX threads: the other one has no std::thread and no std::filesystem worth the name.
set(CMAKE_C_COMPILER ${kiv_triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${kiv_triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${kiv_triplet}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${kiv_triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The folder of Qt for Windows, when there is one; its tools come from the system's own Qt.
if(KIV_QT_WINDOWS)
    list(APPEND CMAKE_FIND_ROOT_PATH ${KIV_QT_WINDOWS})
    list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES KIV_QT_WINDOWS)
    set(QT_HOST_PATH /usr CACHE PATH "")
    set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake CACHE PATH "")
endif()

set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_EXE_LINKER_FLAGS_RELEASE_INIT -s)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine-run)
