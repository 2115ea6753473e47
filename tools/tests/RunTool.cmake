# Runs the vekzol tool once (cmake -P) and checks what it did: its exit
# status, its standard output and standard error byte for byte, and files
# it wrote or had to leave alone.
#
# Arguments (-D):
#   TOOL, DATA_DIR (the working directory), WORK_DIR (made afresh)
#   ARGS            the tool's arguments, separated by "|"; @WORK@ stands
#                   for WORK_DIR, @EXAMPLES@ for the example models
#   EXAMPLES_DIR
#   EXIT            the expected exit status
#   STDOUT_FILE     expected standard output (a file), or
#   STDOUT          expected standard output (text; "" for none)
#   STDERR          expected standard error (text; "" for none; @WORK@ as
#                   above), or STDERR_FILE (a file), or STDERR_REGEX, a
#                   pattern it must match
#   STDOUT_REGEX    a pattern standard output must match
#   INPUT_FILE      standard input
#   PRESET          a file made with the text "previous\n" before the run,
#                   which must be unchanged after it
#   WRITTEN, WRITTEN_EXPECTED  a file the run must have written, and its
#                   expected content
#   ENV             extra environment, "NAME=value" separated by "|"
# "<none>" as STDOUT or STDERR stands for an empty output.
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")

# The library's switches come from the environment: the caller's must not
# leak in. Its trace file, where a test turns the trace on, goes to the
# work directory.
set(ENV{TEMP} "${WORK_DIR}")
include("${CMAKE_CURRENT_LIST_DIR}/ToolEnvironment.cmake")

foreach(stream STDOUT STDERR)
  if(DEFINED ${stream} AND "${${stream}}" STREQUAL "<none>")
    set(${stream} "")
  endif()
endforeach()

string(REPLACE "@WORK@" "${WORK_DIR}" arguments "${ARGS}")
string(REPLACE "@EXAMPLES@" "${EXAMPLES_DIR}" arguments "${arguments}")
string(REPLACE "|" ";" arguments "${arguments}")

if(DEFINED PRESET)
  string(REPLACE "@WORK@" "${WORK_DIR}" PRESET "${PRESET}")
  file(WRITE "${PRESET}" "previous\n")
endif()

set(input_option)
if(DEFINED INPUT_FILE)
  set(input_option INPUT_FILE "${INPUT_FILE}")
endif()
execute_process(COMMAND "${TOOL}" ${arguments}
  WORKING_DIRECTORY "${DATA_DIR}"
  ${input_option}
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)

set(failures "")
if(NOT "${result}" STREQUAL "${EXIT}")
  string(APPEND failures "exit status ${result}, expected ${EXIT}\n")
endif()
string(REPLACE "${WORK_DIR}" "@WORK@" errors "${errors}")
if(DEFINED STDOUT_FILE)
  file(READ "${STDOUT_FILE}" expected_output)
  if(NOT output STREQUAL expected_output)
    file(WRITE "${WORK_DIR}/actual-stdout.txt" "${output}")
    string(APPEND failures "standard output differs from ${STDOUT_FILE}; see ${WORK_DIR}/actual-stdout.txt\n")
  endif()
elseif(DEFINED STDOUT)
  if(NOT output STREQUAL STDOUT)
    string(APPEND failures "standard output:\n[${output}]\nexpected:\n[${STDOUT}]\n")
  endif()
endif()
if(DEFINED STDOUT_REGEX AND NOT output MATCHES "${STDOUT_REGEX}")
  string(APPEND failures "standard output does not match ${STDOUT_REGEX}:\n[${output}]\n")
endif()
if(DEFINED STDERR_FILE)
  file(READ "${STDERR_FILE}" STDERR)
endif()
if(DEFINED STDERR)
  if(NOT errors STREQUAL STDERR)
    string(APPEND failures "standard error:\n[${errors}]\nexpected:\n[${STDERR}]\n")
  endif()
endif()
if(DEFINED STDERR_REGEX AND NOT errors MATCHES "${STDERR_REGEX}")
  string(APPEND failures "standard error does not match ${STDERR_REGEX}:\n[${errors}]\n")
endif()
if(DEFINED PRESET)
  file(READ "${PRESET}" preset_content)
  if(NOT preset_content STREQUAL "previous\n")
    string(APPEND failures "${PRESET} was changed:\n[${preset_content}]\n")
  endif()
  if(EXISTS "${PRESET}.vekzol-tmp")
    string(APPEND failures "${PRESET}.vekzol-tmp was left behind\n")
  endif()
endif()
if(DEFINED WRITTEN)
  string(REPLACE "@WORK@" "${WORK_DIR}" WRITTEN "${WRITTEN}")
  if(NOT EXISTS "${WRITTEN}")
    string(APPEND failures "${WRITTEN} was not written\n")
  else()
    execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files "${WRITTEN}" "${WRITTEN_EXPECTED}"
      RESULT_VARIABLE different)
    if(different)
      string(APPEND failures "${WRITTEN} differs from ${WRITTEN_EXPECTED}\n")
    endif()
  endif()
endif()
if(failures)
  message(FATAL_ERROR "vekzol ${arguments}\n${failures}stderr was:\n${errors}")
endif()
