# Runs the example host program on the bundled model (cmake -P) and compares
# its output with the expected text. Time stamps and the trace file's path
# differ from run to run and are replaced by placeholders first.
# Arguments: EXAMPLE, MODEL, EXPECTED, WORK_DIR; EMULATOR (runs the example
# of a cross build) and TARGET_WINDOWS (the trace file's path is joined
# with a backslash there).
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
set(ENV{TEMP} "${WORK_DIR}")
execute_process(COMMAND ${EMULATOR} "${EXAMPLE}" "${MODEL}"
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "example failed (${result}):\n${output}\n${errors}")
endif()

# execute_process gives "\n" for the "\r\n" that a Windows program writes
# to its text-mode output, so only the path separator differs.
if(TARGET_WINDOWS)
  set(separator "\\\\")
else()
  set(separator "/")
endif()

string(REPLACE "${MODEL}" "<model>" output "${output}")
string(REGEX REPLACE "\\(([^)]*)${separator}VZOL_Traces_[A-Za-z0-9_]+\\.log\\)" "(<trace file>)" output "${output}")
string(REGEX REPLACE "Log created: [A-Za-z0-9_]+" "Log created: <stamp>" output "${output}")
string(REGEX REPLACE "\n  [A-Z][a-z][a-z] [0-9][0-9] [0-9][0-9]:[0-9][0-9]:[0-9][0-9]\t" "\n  <time>\t" output "${output}")

file(READ "${EXPECTED}" expected)
if(NOT output STREQUAL expected)
  file(WRITE "${WORK_DIR}/actual.txt" "${output}")
  message(FATAL_ERROR "example output differs from ${EXPECTED}; see ${WORK_DIR}/actual.txt:\n${output}")
endif()
