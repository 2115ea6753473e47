# The limits of a model file: makes one input at or past a limit in
# WORK_DIR, runs the tool there once and checks its exit status and both
# outputs byte for byte.
#
# Arguments (-D):
#   TOOL, WORK_DIR (made afresh)
#   CASE      nesting-at-limit: a value 1024 levels deep (read);
#             nesting-past-limit: a value 1025 levels deep;
#             nesting-past-limit-in-entry: the same inside an object entry,
#             on the second line;
#             syntax-error-at-deepest-level: a list at level 1024 that
#             starts with a comma;
#             too-large: a sparse file one byte larger than the largest
#             model file (4294967296 bytes), which must be refused without
#             being read
#   TRUNCATE  the truncate program (too-large only)
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
foreach(variable VEK_ZOL_LOG_ENABLED VEK_ZOL_LOG_VERBOSE JBM_RQT_IN VEK_ZOL_TIMERS_ENABLED)
  unset(ENV{${variable}})
endforeach()
set(ENV{TEMP} "${WORK_DIR}")

# `count` opening brackets, `inner`, and the closing ones.
function(nested result count open inner close)
  string(REPEAT "${open}" ${count} opening)
  string(REPEAT "${close}" ${count} closing)
  set(${result} "${opening}${inner}${closing}" PARENT_SCOPE)
endfunction()

set(expected_stdout "")
if(CASE STREQUAL "nesting-at-limit")
  # The top-level object is level 1, its member "x" level 2, and 1022
  # arrays put the number at level 1024.
  set(model "nesting.json")
  nested(deep 1022 "[" "1" "]")
  file(WRITE "${WORK_DIR}/${model}" "{\"x\":${deep},\"objects\":[{\"id\":\"deep\"}]}")
  set(expected_exit 0)
  set(expected_stdout "Graph: nesting.json\n\n\tNb Vertices: 1\n\tNb Edges: 0\n\n\ndeep\n\n\n")
  set(expected_stderr "")
elseif(CASE STREQUAL "nesting-past-limit")
  # One array more: the number, at column 1029, is at level 1025.
  set(model "nesting.json")
  nested(deep 1023 "[" "1" "]")
  file(WRITE "${WORK_DIR}/${model}" "{\"x\":${deep},\"objects\":[{\"id\":\"deep\"}]}")
  set(expected_exit 2)
  set(expected_stderr "vekzol: nesting.json:1:1029: a value nested 1025 levels deep; a model file may nest values at most 1024 levels deep\n")
elseif(CASE STREQUAL "nesting-past-limit-in-entry")
  # Levels 1 to 3: the top-level object, "objects", the entry; 1021 arrays
  # from column 24 on, then the empty object at level 1025, column 1045.
  set(model "nesting.json")
  nested(deep 1021 "[" "{}" "]")
  file(WRITE "${WORK_DIR}/${model}" "{\"objects\": [\n  {\"id\": \"A\", \"extra\": ${deep}}]}\n")
  set(expected_exit 2)
  set(expected_stderr "vekzol: nesting.json:2:1045: a value nested 1025 levels deep; a model file may nest values at most 1024 levels deep\n")
elseif(CASE STREQUAL "syntax-error-at-deepest-level")
  # A list at level 1024 whose first member is missing: a syntax error at
  # the comma, column 1029, not a value nested too deep.
  set(model "nesting.json")
  nested(deep 1023 "[" "," "]")
  file(WRITE "${WORK_DIR}/${model}" "{\"x\":${deep}}")
  set(expected_exit 2)
  set(expected_stderr "vekzol: nesting.json:1:1029: invalid JSON: syntax error while parsing value - unexpected ','; expected '[', '{', or a literal\n")
elseif(CASE STREQUAL "too-large")
  set(model "large.json")
  execute_process(COMMAND "${TRUNCATE}" -s 4294967296 "${WORK_DIR}/${model}" RESULT_VARIABLE made)
  if(NOT made EQUAL 0)
    message(FATAL_ERROR "cannot make the sparse file ${WORK_DIR}/${model}")
  endif()
  set(expected_exit 2)
  set(expected_stderr "vekzol: large.json: the file has 4294967296 bytes, more than the 4294967295 bytes a model file may have\n")
else()
  message(FATAL_ERROR "unknown CASE \"${CASE}\"")
endif()

execute_process(COMMAND "${TOOL}" dump "${model}"
  WORKING_DIRECTORY "${WORK_DIR}"
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
# The sparse file takes no room on disk, but another program might read it.
file(REMOVE "${WORK_DIR}/large.json")

set(failures "")
if(NOT "${result}" STREQUAL "${expected_exit}")
  string(APPEND failures "exit status ${result}, expected ${expected_exit}\n")
endif()
if(NOT output STREQUAL expected_stdout)
  string(APPEND failures "standard output:\n[${output}]\nexpected:\n[${expected_stdout}]\n")
endif()
if(NOT errors STREQUAL expected_stderr)
  string(APPEND failures "standard error:\n[${errors}]\nexpected:\n[${expected_stderr}]\n")
endif()
if(failures)
  message(FATAL_ERROR "vekzol dump ${model} (${CASE})\n${failures}")
endif()
