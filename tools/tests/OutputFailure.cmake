# Runs the vekzol tool once with an -o file that cannot be written, and
# checks that the run fails cleanly: exit status 2, nothing on standard
# output, one message on standard error that names the file and the cause,
# the file exactly as it was (its old bytes, or still absent), and nothing
# else left in its directory (no "<file>.vekzol-tmp").
#
# Arguments (-D):
#   TOOL, DATA_DIR (the working directory), WORK_DIR (made afresh)
#   ARGS        the tool's arguments, separated by "|"; @WORK@ stands for
#               WORK_DIR
#   OUTPUT      the -o file (@WORK@ as above); its directory is watched
#   PRESET      ON: the file holds "previous\n" before the run
#   AS_DIRECTORY ON: the file is a directory holding one file "inside"
#   FAULT       a value for the tool's test seam VEKZOL_TOOL_TESTING_FAULT
#               ("write:ENOSPC", ...): the disk that fills on demand
#   FILE_LIMIT  a file size limit in blocks (ulimit -f) for the run, with
#               SIGXFSZ ignored so that the write fails with EFBIG
#   IMMUTABLE   ON: the file's directory is made immutable (chattr +i), the
#               one way to refuse root a new file in a directory of an
#               ordinary file system; the test prints "SKIPPED:" and passes
#               where chattr cannot do it
#   STDERR      expected standard error (@WORK@ as above)

# A directory left immutable by an interrupted run could not be removed.
find_program(CHATTR chattr)
if(CHATTR AND EXISTS "${WORK_DIR}")
  execute_process(COMMAND "${CHATTR}" -R -i "${WORK_DIR}" OUTPUT_QUIET ERROR_QUIET)
endif()
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")

set(ENV{TEMP} "${WORK_DIR}")
include("${CMAKE_CURRENT_LIST_DIR}/ToolEnvironment.cmake")
unset(ENV{VEKZOL_TOOL_TESTING_FAULT})
if(DEFINED FAULT)
  set(ENV{VEKZOL_TOOL_TESTING_FAULT} "${FAULT}")
endif()

string(REPLACE "@WORK@" "${WORK_DIR}" arguments "${ARGS}")
string(REPLACE "|" ";" arguments "${arguments}")
string(REPLACE "@WORK@" "${WORK_DIR}" output "${OUTPUT}")
string(REPLACE "@WORK@" "${WORK_DIR}" STDERR "${STDERR}")
get_filename_component(directory "${output}" DIRECTORY)
file(MAKE_DIRECTORY "${directory}")
if(PRESET)
  file(WRITE "${output}" "previous\n")
endif()
if(AS_DIRECTORY)
  file(WRITE "${output}/inside" "inside\n")
endif()

# What the file's directory holds before the run, names and bytes.
function(snapshot variable)
  file(GLOB_RECURSE entries LIST_DIRECTORIES true RELATIVE "${directory}" "${directory}/*")
  list(SORT entries)
  set(state "")
  foreach(entry IN LISTS entries)
    if(IS_DIRECTORY "${directory}/${entry}")
      string(APPEND state "${entry}/\n")
    else()
      file(SHA256 "${directory}/${entry}" hash)
      string(APPEND state "${entry} ${hash}\n")
    endif()
  endforeach()
  set(${variable} "${state}" PARENT_SCOPE)
endfunction()
snapshot(before)

if(IMMUTABLE)
  set(locked FALSE)
  if(CHATTR)
    execute_process(COMMAND "${CHATTR}" +i "${directory}" RESULT_VARIABLE chattr_result
      OUTPUT_QUIET ERROR_QUIET)
    if(chattr_result EQUAL 0)
      set(locked TRUE)
    endif()
  endif()
  if(NOT locked)
    message("SKIPPED: chattr +i cannot make ${directory} immutable here")
    return()
  endif()
endif()

set(command "${TOOL}" ${arguments})
if(DEFINED FILE_LIMIT)
  # The limit applies to the tool's own process; SIGXFSZ would end it before
  # the write could report the error.
  set(command sh -c "ulimit -f ${FILE_LIMIT} && trap '' XFSZ && exec \"$0\" \"$@\"" ${command})
endif()
execute_process(COMMAND ${command}
  WORKING_DIRECTORY "${DATA_DIR}"
  RESULT_VARIABLE result OUTPUT_VARIABLE stdout ERROR_VARIABLE stderr)

if(IMMUTABLE)
  execute_process(COMMAND "${CHATTR}" -i "${directory}" OUTPUT_QUIET ERROR_QUIET)
endif()
snapshot(after)

set(failures "")
if(NOT "${result}" STREQUAL "2")
  string(APPEND failures "exit status ${result}, expected 2\n")
endif()
if(NOT stdout STREQUAL "")
  string(APPEND failures "standard output:\n[${stdout}]\nexpected none\n")
endif()
if(NOT stderr STREQUAL STDERR)
  string(APPEND failures "standard error:\n[${stderr}]\nexpected:\n[${STDERR}]\n")
endif()
if(NOT after STREQUAL before)
  string(APPEND failures "the directory of ${output} changed; before:\n${before}after:\n${after}")
endif()
if(PRESET)
  file(READ "${output}" content)
  if(NOT content STREQUAL "previous\n")
    string(APPEND failures "${output} was changed:\n[${content}]\n")
  endif()
elseif(NOT AS_DIRECTORY AND EXISTS "${output}")
  string(APPEND failures "${output} was made\n")
endif()
if(EXISTS "${output}.vekzol-tmp")
  string(APPEND failures "${output}.vekzol-tmp was left behind\n")
endif()
if(failures)
  message(FATAL_ERROR "vekzol ${arguments}\n${failures}")
endif()
