# Fails when a public header is missing from the umbrella header LZRB_Core.h (the macro-only
# headers LZRB_Export.h and LZRB_NamedContainer.h come in through the headers that use them).
# INCLUDE_DIRS: the source header folder (holding LZRB_Core.h) and the folder of the generated
# headers, as they end up side by side once installed.
list(GET INCLUDE_DIRS 0 umbrella_dir)
file(READ "${umbrella_dir}/LZRB_Core.h" umbrella)
foreach(dir IN LISTS INCLUDE_DIRS)
    file(GLOB headers RELATIVE "${dir}" "${dir}/*.h")
    foreach(header IN LISTS headers)
        if(NOT header MATCHES "^LZRB_(Core|Export)\\.h$" AND NOT umbrella MATCHES "#include \"${header}\"")
            message(FATAL_ERROR "LZRB_Core.h does not include ${header}")
        endif()
    endforeach()
endforeach()
