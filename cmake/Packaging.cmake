# What a release ships beyond the library's own install rules: the user guide and its
# examples, and an uninstall target.
include(GNUInstallDirs)

set(LZRB_DOC_DIR "${CMAKE_INSTALL_DATAROOTDIR}/doc/lzrb_core")
install(FILES "${PROJECT_SOURCE_DIR}/docs/guide.md" DESTINATION ${LZRB_DOC_DIR})
install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples/guide/" DESTINATION "${LZRB_DOC_DIR}/examples")

if(PROJECT_IS_TOP_LEVEL)
    add_custom_target(uninstall
        COMMAND ${CMAKE_COMMAND} -DMANIFEST=${CMAKE_BINARY_DIR}/install_manifest.txt
                -P ${PROJECT_SOURCE_DIR}/cmake/Uninstall.cmake
        COMMENT "Removing the files of the last install of this build" VERBATIM)
endif()
