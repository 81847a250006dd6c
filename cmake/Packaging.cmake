# What a release ships beyond the library's own install rules: the user guide and its
# examples, an uninstall target, and the distribution packages (CPack: a Debian package and a
# .tar.gz). CPack packs everything the build installs, the zrb tool and its man page included.
include(GNUInstallDirs)

set(LZRB_DOC_DIR "${CMAKE_INSTALL_DATAROOTDIR}/doc/lzrb_core")
install(FILES "${PROJECT_SOURCE_DIR}/docs/guide.md" DESTINATION ${LZRB_DOC_DIR})
install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples/guide/" DESTINATION "${LZRB_DOC_DIR}/examples")

if(PROJECT_IS_TOP_LEVEL)
    add_custom_target(uninstall
        COMMAND ${CMAKE_COMMAND} -DMANIFEST=${CMAKE_BINARY_DIR}/install_manifest.txt
                -P ${PROJECT_SOURCE_DIR}/cmake/Uninstall.cmake
        COMMENT "Removing the files of the last install of this build" VERBATIM)

    set(CPACK_PACKAGE_NAME lzrb-core)
    set(CPACK_PACKAGE_VENDOR "LZRB_Core developers")
    set(CPACK_PACKAGE_CONTACT "LZRB_Core developers")
    set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION} (shared library, headers, tools)")
    set(CPACK_GENERATOR DEB TGZ)
    set(CPACK_STRIP_FILES ON)
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_SECTION libdevel)
    # Dependencies come from the binaries themselves; the package's own library is found in
    # its staging tree when the zrb tool links it.
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "usr/${CMAKE_INSTALL_LIBDIR}")
    set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
    set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
    include(CPack)
endif()
