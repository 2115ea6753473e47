# Runs `vekzol decompress` on a blob whose header asks for a text of
# 2,000,000,000 bytes, with the process's address space limited (ulimit -v)
# far below that: the one block for the text cannot be had, the allocation
# raises, and the tool must say that memory ran out, exit with status 2 and
# write nothing to standard output. Everything else the run needs fits
# easily within the limit, so the failure is always the same allocation.
#
# Arguments (-D): TOOL, WORK_DIR (made afresh), LIMIT_KB (the ulimit -v).
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
include("${CMAKE_CURRENT_LIST_DIR}/ToolEnvironment.cmake")
set(ENV{TEMP} "${WORK_DIR}")

# A payload of c bytes may inflate to at most about 1032 c: 2,000,000 bytes
# make the size in the header plausible, so the block is asked for.
string(REPEAT "x" 2000000 payload)
set(blob "${WORK_DIR}/huge.blob")
file(WRITE "${blob}" "zlib:v=1230:d=2000000000:c=2000000:${payload}")

execute_process(
  COMMAND sh -c "ulimit -v ${LIMIT_KB} && exec \"$0\" decompress \"$1\"" "${TOOL}" "${blob}"
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)

set(failures "")
if(NOT "${result}" STREQUAL "2")
  string(APPEND failures "exit status ${result}, expected 2\n")
endif()
if(NOT output STREQUAL "")
  string(APPEND failures "standard output is not empty\n")
endif()
if(NOT errors STREQUAL "vekzol: out of memory\n")
  string(APPEND failures "standard error:\n[${errors}]\nexpected:\n[vekzol: out of memory\n]\n")
endif()
if(failures)
  message(FATAL_ERROR "${failures}")
endif()
