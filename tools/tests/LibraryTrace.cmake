# Runs `vekzol compare --check-names --roots` on the example models once
# (cmake -P), with TEMP, TMP and TMPDIR all naming one fresh, empty
# directory, and checks which trace file of the library the run leaves
# there and what the tool says about it on standard error. One process per
# case: the library reads its switches from the environment once.
#
# Arguments (-D):
#   TOOL, EXAMPLES_DIR, WORK_DIR (made afresh)
#   EXPECTED_STDOUT  the expected report (a file)
#   OPTIONS          the tool's options before the command, separated by
#                    "|" (may be empty)
#   ENV              extra environment, "NAME=value" separated by "|"
#   TRACE            what the temporary directory and standard error hold
#                    afterwards:
#                    none:   nothing, and nothing on standard error
#                    silent: one trace file, nothing on standard error
#                    named:  one trace file, and standard error is exactly
#                            "vekzol: trace written to <its path>\n"
file(REMOVE_RECURSE "${WORK_DIR}")
set(temp_dir "${WORK_DIR}/temp")
file(MAKE_DIRECTORY "${temp_dir}")

# Every variable that may name the temporary directory names the fresh one;
# the caller's switches must not leak in, and the test's own come last.
foreach(variable TEMP TMP TMPDIR)
  set(ENV{${variable}} "${temp_dir}")
endforeach()
include("${CMAKE_CURRENT_LIST_DIR}/ToolEnvironment.cmake")

string(REPLACE "|" ";" options "${OPTIONS}")
execute_process(COMMAND "${TOOL}" ${options} compare --check-names --roots
    "${EXAMPLES_DIR}/line-old.json" "${EXAMPLES_DIR}/line-new.json"
  WORKING_DIRECTORY "${WORK_DIR}"
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)

set(failures "")
if(NOT result STREQUAL "1")
  string(APPEND failures "exit status ${result}, expected 1\n")
endif()
# The report alone: with JBM_RQT_IN set, a trace that is on would add its
# lines here too.
file(READ "${EXPECTED_STDOUT}" expected_output)
if(NOT output STREQUAL expected_output)
  file(WRITE "${WORK_DIR}/actual-stdout.txt" "${output}")
  string(APPEND failures
    "standard output differs from ${EXPECTED_STDOUT}; see ${WORK_DIR}/actual-stdout.txt\n")
endif()

file(GLOB left_behind LIST_DIRECTORIES true RELATIVE "${temp_dir}" "${temp_dir}/*")
list(LENGTH left_behind left_count)
set(expected_errors "")
if(TRACE STREQUAL "none")
  if(NOT left_count EQUAL 0)
    string(APPEND failures "${temp_dir} should stay empty, holds: ${left_behind}\n")
  endif()
elseif(TRACE STREQUAL "silent" OR TRACE STREQUAL "named")
  if(NOT left_count EQUAL 1 OR NOT left_behind MATCHES "^VZOL_Traces_[^/]+\\.log$")
    string(APPEND failures "${temp_dir} should hold one trace file, holds: ${left_behind}\n")
  else()
    file(READ "${temp_dir}/${left_behind}" trace)
    string(FIND "${trace}" "Info:\t Build Graph -->" found)
    if(found EQUAL -1)
      string(APPEND failures "the trace file has no line of the graphs being built:\n${trace}\n")
    endif()
    if(TRACE STREQUAL "named")
      set(expected_errors "vekzol: trace written to ${temp_dir}/${left_behind}\n")
    endif()
  endif()
else()
  message(FATAL_ERROR "TRACE must be none, silent or named, not \"${TRACE}\"")
endif()
if(NOT errors STREQUAL expected_errors)
  string(APPEND failures "standard error:\n[${errors}]\nexpected:\n[${expected_errors}]\n")
endif()

if(failures)
  message(FATAL_ERROR "vekzol ${options} compare (${ENV})\n${failures}")
endif()
