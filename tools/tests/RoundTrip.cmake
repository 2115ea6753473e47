# Compresses a text and decompresses the blob again (cmake -P), once through
# files given as arguments with -o and once through standard input and
# output, and checks that the text comes back byte for byte and that the
# blob is one.
# Arguments: TOOL, INPUT, WORK_DIR.
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
set(ENV{TEMP} "${WORK_DIR}")
include("${CMAKE_CURRENT_LIST_DIR}/ToolEnvironment.cmake")

function(run)
  execute_process(COMMAND "${TOOL}" ${ARGN} RESULT_VARIABLE result ERROR_VARIABLE errors)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "vekzol ${ARGN}: exit status ${result}\n${errors}")
  endif()
endfunction()

function(expect_same first second)
  execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files "${first}" "${second}"
    RESULT_VARIABLE different)
  if(different)
    message(FATAL_ERROR "${first} differs from ${second}")
  endif()
endfunction()

run(compress "${INPUT}" -o "${WORK_DIR}/blob")
file(READ "${WORK_DIR}/blob" header LIMIT 20)
if(NOT header MATCHES "^zlib:v=1230:d=[0-9]")
  message(FATAL_ERROR "the blob begins with [${header}]")
endif()
run(decompress "${WORK_DIR}/blob" -o "${WORK_DIR}/text")
expect_same("${INPUT}" "${WORK_DIR}/text")

execute_process(COMMAND "${TOOL}" compress INPUT_FILE "${INPUT}"
  OUTPUT_FILE "${WORK_DIR}/piped-blob" RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "compress from standard input: exit status ${result}")
endif()
expect_same("${WORK_DIR}/blob" "${WORK_DIR}/piped-blob")
execute_process(COMMAND "${TOOL}" decompress - INPUT_FILE "${WORK_DIR}/piped-blob"
  OUTPUT_FILE "${WORK_DIR}/piped-text" RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "decompress from standard input: exit status ${result}")
endif()
expect_same("${INPUT}" "${WORK_DIR}/piped-text")
