# A short tour of the zrb tool over the sample files in this folder:
#   cmake -DZRB=/path/to/zrb -P tour.cmake      (run from this folder)
# Each step prints its command and what it is for on one heading line, then the command's
# output. The tour stops at the first command that does not succeed.
if(NOT ZRB)
    message(FATAL_ERROR "Tell the tour where the tool is: cmake -DZRB=/path/to/zrb -P tour.cmake")
endif()

function(step purpose)
    string(JOIN " " shown ${ARGN})
    execute_process(COMMAND ${CMAKE_COMMAND} -E echo "")
    execute_process(COMMAND ${CMAKE_COMMAND} -E echo "$ zrb ${shown}    # ${purpose}")
    execute_process(COMMAND ${ZRB} ${ARGN} RESULT_VARIABLE status)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "'zrb ${shown}' ended with ${status}")
    endif()
endfunction()

step("CRC-32 of a file; these nine digits give its check value" crc digits.txt)
step("several CRCs: by name, by alias, by selector" crc -a CRC-16/ARC -a xmodem -a 0x5003 digits.txt)
step("check files against a list of CRCs" crc --check tour.crc)
step("every catalogue CRC against its check value" crc --self-test)
step("a date in another calendar" date --from gregorian --to persian 2024-03-20)
step("the same day in all five calendars" date 2024-03-20)
step("what a bitmap's header says" bmp info flag.bmp)
step("one pixel: colour and palette index" bmp pixel flag.bmp 4 1)
step("a delimiter-separated file checked" csv check planets.csv --fields 3)
step("two of its columns" csv cut planets.csv --fields 3 -k 1,3)
