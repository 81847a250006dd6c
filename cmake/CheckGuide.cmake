# Keeps the user guide honest. Installs the build BINARY_DIR into a scratch prefix below
# WORK_DIR, builds the guide's examples (SOURCE_DIR/examples/guide) against that prefix with
# find_package, runs each, and compares with docs/guide.md: each example's code block must
# equal its file and each output block the program's output. Finally the install is removed
# again through its manifest, which must leave no file behind.
# Also given: GENERATOR, CXX (compiler) and CXX_FLAGS for the examples' build.
set(prefix "${WORK_DIR}/prefix")
set(build "${WORK_DIR}/build")
set(run "${WORK_DIR}/run")
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${run}")

function(run_step what)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output
        ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${what} failed (${result}):\n${output}")
    endif()
endfunction()

# Only the rules without a component of their own: their manifest gets its own name, so the
# build's install_manifest.txt (what `uninstall` removes) stays as it was.
run_step("Install" ${CMAKE_COMMAND} --install "${BINARY_DIR}" --prefix "${prefix}"
    --component Unspecified)
set(manifest "${BINARY_DIR}/install_manifest_Unspecified.txt")
run_step("Configuring the examples" ${CMAKE_COMMAND} -S "${SOURCE_DIR}/examples/guide"
    -B "${build}" -G "${GENERATOR}" "-DCMAKE_PREFIX_PATH=${prefix}"
    "-DCMAKE_CXX_COMPILER=${CXX}" "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
file(STRINGS "${build}/CMakeCache.txt" found REGEX "^LZRB_Core_DIR:")
if(NOT found MATCHES "=${prefix}/")
    message(FATAL_ERROR "The examples found another LZRB_Core: ${found}")
endif()
run_step("Building the examples" ${CMAKE_COMMAND} --build "${build}" --parallel 2)

# The fenced block that follows the marker line "<!-- ${marker} -->" in the guide, or
# "(missing)".
file(READ "${SOURCE_DIR}/docs/guide.md" guide)
function(guide_block marker out)
    string(FIND "${guide}" "<!-- ${marker} -->\n```" at)
    if(at EQUAL -1)
        set(${out} "(missing)" PARENT_SCOPE)
        return()
    endif()
    string(SUBSTRING "${guide}" ${at} -1 rest)
    string(FIND "${rest}" "\n" end_of_marker)
    math(EXPR skip "${end_of_marker} + 1")
    string(SUBSTRING "${rest}" ${skip} -1 rest)
    string(FIND "${rest}" "\n" end_of_fence)
    math(EXPR skip "${end_of_fence} + 1")
    string(SUBSTRING "${rest}" ${skip} -1 rest)
    string(FIND "${rest}" "\n```" close)
    math(EXPR length "${close} + 1")
    string(SUBSTRING "${rest}" 0 ${length} block)
    set(${out} "${block}" PARENT_SCOPE)
endfunction()

set(problems "")
file(GLOB sources RELATIVE "${SOURCE_DIR}/examples/guide" "${SOURCE_DIR}/examples/guide/*.cpp")
foreach(source IN LISTS sources)
    get_filename_component(name "${source}" NAME_WE)
    file(READ "${SOURCE_DIR}/examples/guide/${source}" code)
    guide_block("example: ${source}" shown)
    if(NOT shown STREQUAL code)
        string(APPEND problems "\nThe guide does not show ${source} as it is")
    endif()
    execute_process(COMMAND "${build}/${name}" WORKING_DIRECTORY "${run}"
        RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
    if(NOT result EQUAL 0)
        string(APPEND problems "\n${name} failed (${result}): ${errors}")
    endif()
    guide_block("output: ${name}" expected)
    if(NOT expected STREQUAL "(missing)" AND NOT expected STREQUAL output)
        string(APPEND problems "\n${name} printed:\n${output}the guide shows:\n${expected}")
    endif()
endforeach()
file(GLOB left_behind "${run}/*")
if(left_behind)
    string(APPEND problems "\nThe examples left files behind: ${left_behind}")
endif()
if(problems)
    message(FATAL_ERROR "${problems}")
endif()

run_step("Uninstall" ${CMAKE_COMMAND} "-DMANIFEST=${manifest}"
    -P "${CMAKE_CURRENT_LIST_DIR}/Uninstall.cmake")
file(GLOB_RECURSE left_behind "${prefix}/*")
if(left_behind)
    message(FATAL_ERROR "Uninstall left files behind: ${left_behind}")
endif()
file(REMOVE_RECURSE "${WORK_DIR}")
message(STATUS "${sources}: built against the installed package, shown and run as the guide says")
