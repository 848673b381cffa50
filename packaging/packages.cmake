# What goes into the packages, and how they are made: cpack in a build folder. A .deb on Debian; for Windows a .zip and an
# installer, both also when built on Debian.
install(DIRECTORY examples DESTINATION ${KIV_DOCUMENTS} PATTERN .gitignore EXCLUDE)

set(CPACK_PACKAGE_NAME kiv)
set(CPACK_PACKAGE_VENDOR kiv)
set(CPACK_PACKAGE_CONTACT "The kiv developers <kiv@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Builds and maintains static websites from folders of plain text")
set(CPACK_PACKAGE_DESCRIPTION
    "A page list and a page template become a section of pages, with navigation,
cross-references, tables and quizzes. kiv tells why a line looks as it does and
checks for dead links and missing pictures. It has a window; kiv-cli runs the
same commands in scripts.")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_INSTALL_DIRECTORY kiv)
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
if(TARGET kiv)
    set(CPACK_PACKAGE_EXECUTABLES kiv kiv)
endif()

if(WIN32)
    set(CPACK_GENERATOR ZIP NSIS)
    # The installer asks whether kiv is to stand on the path.
    set(CPACK_NSIS_MODIFY_PATH ON)
    set(CPACK_NSIS_ENABLE_UNINSTALL_BEFORE_INSTALL ON)
    set(CPACK_NSIS_INSTALL_ROOT "$PROGRAMFILES64")
    set(CPACK_NSIS_DISPLAY_NAME kiv)
    set(CPACK_NSIS_MUI_ICON ${PROJECT_SOURCE_DIR}/desktop/icons/kiv.ico)
    set(CPACK_NSIS_MUI_UNIICON ${PROJECT_SOURCE_DIR}/desktop/icons/kiv.ico)
    if(TARGET kiv)
        set(CPACK_NSIS_INSTALLED_ICON_NAME bin/kiv.exe)
        set(CPACK_NSIS_MUI_FINISHPAGE_RUN kiv.exe)
    endif()
    # A 64-bit installer: 32-bit ones do not run everywhere, Debian's wine64 among them.
    set(CPACK_NSIS_DEFINES "Target amd64-unicode")
    set(CPACK_NSIS_MENU_LINKS manual/index.htm "The manual" examples/museum/README.txt "The example site")
else()
    set(CPACK_GENERATOR DEB)
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
    set(CPACK_DEBIAN_PACKAGE_SECTION web)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PACKAGE_RECOMMENDS xdg-utils)
endif()
include(packaging/libraries.cmake)
if(EXISTS /etc/debian_version AND NOT WIN32)
    include(packaging/debian/documents.cmake)
else()
    install(FILES LICENSE CHANGELOG.md DESTINATION ${KIV_DOCUMENTS})
endif()
include(CPack)
