# Fails when a public header is missing from the umbrella header LZRB_Core.h (the macro-only
# headers LZRB_Export.h and LZRB_NamedContainer.h come in through the headers that use them).
file(GLOB headers RELATIVE "${INCLUDE_DIR}" "${INCLUDE_DIR}/*.h")
file(READ "${INCLUDE_DIR}/LZRB_Core.h" umbrella)
foreach(header IN LISTS headers)
    if(NOT header MATCHES "^LZRB_(Core|Export)\\.h$" AND NOT umbrella MATCHES "#include \"${header}\"")
        message(FATAL_ERROR "LZRB_Core.h does not include ${header}")
    endif()
endforeach()
