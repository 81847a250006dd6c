# Fails when the shared library LIBRARY exports code of the standard library (namespace std,
# its type information or virtual tables): such code belongs to every module that uses it,
# and exporting it would let one module's copy replace another's. NM is the toolchain's nm.
execute_process(COMMAND "${NM}" -D -C --defined-only "${LIBRARY}"
    OUTPUT_VARIABLE symbols RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${NM} could not read ${LIBRARY}")
endif()
string(REGEX MATCHALL "[^\n]+" lines "${symbols}")
list(LENGTH lines exported)
set(leaked "")
foreach(line IN LISTS lines)
    if(line MATCHES "^[0-9a-f]* +[A-Za-z] +((typeinfo|typeinfo name|vtable|VTT) for )?std::")
        string(APPEND leaked "\n  ${line}")
    endif()
endforeach()
if(leaked)
    message(FATAL_ERROR "${LIBRARY} exports standard-library code:${leaked}")
endif()
message(STATUS "${exported} symbols exported, none of them from namespace std")
