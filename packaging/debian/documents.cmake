# What a .deb must hold beside the programs. CPack's own changelog and copyright would be none that Debian's tools take.
include(GNUInstallDirs)
set(debian ${CMAKE_CURRENT_LIST_DIR})
set(made ${PROJECT_BINARY_DIR}/debian)
set(KIV_DEBIAN_VERSION ${PROJECT_VERSION}-1)
execute_process(
    COMMAND date --utc --rfc-email --date "${KIV_RELEASE_DATE} 12:00"
    OUTPUT_VARIABLE KIV_RELEASE_TIME OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
configure_file(${debian}/changelog.in ${made}/changelog.Debian @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${made}/changelog COPYONLY)
foreach(file changelog changelog.Debian)
    add_custom_command(
        OUTPUT ${made}/${file}.gz
        COMMAND gzip -9nkf ${made}/${file}
        DEPENDS ${made}/${file}
        VERBATIM)
    list(APPEND packed ${made}/${file}.gz)
endforeach()
add_custom_target(kiv_debian_documents ALL DEPENDS ${packed})
install(FILES ${packed} ${debian}/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES ${debian}/lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME kiv)
