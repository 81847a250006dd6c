# Removes every file that an install of this build recorded in MANIFEST (install_manifest.txt
# for `cmake --install`). Folders are left in place, as install does not record them.
if(NOT EXISTS "${MANIFEST}")
    message(FATAL_ERROR "${MANIFEST} not found: nothing was installed from this build")
endif()
file(STRINGS "${MANIFEST}" installed)
foreach(file IN LISTS installed)
    if(IS_SYMLINK "${file}" OR EXISTS "${file}")
        message(STATUS "Removing ${file}")
        file(REMOVE "${file}")
    else()
        message(STATUS "Already gone: ${file}")
    endif()
endforeach()
