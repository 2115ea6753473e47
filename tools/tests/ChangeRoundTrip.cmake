# Carries a change from one model to another and back (cmake -P).
# MODE apply: `diff` writes the change, `apply` must turn OLD into a model
# whose content is NEW's (`compare --content` finds no difference, `diff`
# of the two writes an empty change), `apply --reverse` must turn that
# result, and NEW itself, back into OLD's content. MODE patch: the change
# is written as a JSON Patch and applied to OLD's file by another
# implementation (ApplyJsonPatch.py, python3-jsonpatch, run by PYTHON),
# whose result must have NEW's content; "SKIPPED:" when the module is
# missing.
#
# Arguments (-D): TOOL, WORK_DIR (made afresh), MODE, and either OLD and NEW
# (model files) or VERTICES, CHANGES, CONTENT_CHANGES, SEED and optionally
# ID_BYTES for `generate`, whose models must then also compare as the
# generator states and whose change must hold every kind of change.
# DIFFERENT: whether the two differ (ON, the default) or not.
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
set(ENV{TEMP} "${WORK_DIR}")
include("${CMAKE_CURRENT_LIST_DIR}/ToolEnvironment.cmake")
if(NOT DEFINED DIFFERENT)
  set(DIFFERENT ON)
endif()

# run(<expected exit status> <arguments>...): runs the tool quietly.
function(run expected)
  execute_process(COMMAND "${TOOL}" -q ${ARGN}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(NOT result STREQUAL "${expected}")
    message(FATAL_ERROR "vekzol ${ARGN}: exit status ${result}, expected ${expected}\n${errors}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

# same_content(<a> <b>): the two models' contents and graphs are the same.
function(same_content first second)
  run(0 compare --content "${first}" "${second}")
  if(NOT output MATCHES "Objects with changed content \\(0\\):\nRelations with changed content \\(0\\):\nOutcome: identical\n$")
    message(FATAL_ERROR "compare --content ${first} ${second}:\n${output}")
  endif()
  run(0 diff "${first}" "${second}" -o "${WORK_DIR}/none.json")
  file(READ "${WORK_DIR}/none.json" none)
  if(NOT none MATCHES "\"objectsRemoved\": \\[\\],\n  \"objectsAdded\": \\[\\],\n  \"objectsChanged\": \\[\\],\n  \"relationsRemoved\": \\[\\],\n  \"relationsAdded\": \\[\\],\n  \"relationsChanged\": \\[\\]\n}\n$")
    message(FATAL_ERROR "diff ${first} ${second} found a change:\n${none}")
  endif()
endfunction()

if(DEFINED VERTICES)
  set(OLD "${WORK_DIR}/old.json")
  set(NEW "${WORK_DIR}/new.json")
  set(id_option)
  if(DEFINED ID_BYTES)
    set(id_option --id-bytes ${ID_BYTES})
  endif()
  run(0 generate --vertices ${VERTICES} --changes ${CHANGES} --content-changes ${CONTENT_CHANGES}
    --seed ${SEED} ${id_option} --expected "${WORK_DIR}/expected.json" "${OLD}" "${NEW}")
  # The content changes leave the comparison as the generator states it.
  run(1 compare --check-names --roots --format json "${OLD}" "${NEW}"
    -o "${WORK_DIR}/compared.json")
  execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files "${WORK_DIR}/expected.json"
    "${WORK_DIR}/compared.json" RESULT_VARIABLE different)
  if(different)
    message(FATAL_ERROR "compare found other differences than the generator states")
  endif()
endif()

if(DIFFERENT)
  set(status 1)
else()
  set(status 0)
endif()
set(change "${WORK_DIR}/change.json")
if(MODE STREQUAL "patch")
  run(${status} diff --format json-patch "${OLD}" "${NEW}" -o "${WORK_DIR}/patch.json")
  execute_process(COMMAND "${PYTHON}" "${CMAKE_CURRENT_LIST_DIR}/ApplyJsonPatch.py" "${OLD}"
      "${WORK_DIR}/patch.json" "${WORK_DIR}/patched.json"
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(output MATCHES "SKIPPED:")
    message(STATUS "${output}")
    return()
  endif()
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "the JSON Patch did not apply: ${output}${errors}")
  endif()
  same_content("${WORK_DIR}/patched.json" "${NEW}")
  return()
endif()

run(${status} diff "${OLD}" "${NEW}" -o "${change}")

if(DEFINED VERTICES)
  # Every kind of change is there, or the round trip proves little.
  file(READ "${change}" text)
  foreach(pattern "\"objectsRemoved\": \\[\n    {" "\"objectsAdded\": \\[\n    {"
      "\"relationsRemoved\": \\[\n    {" "\"relationsAdded\": \\[\n    {"
      "\"field\": \"name\", \"old\"" "\"field\": \"refId\", \"old\"" "\"field\": \"sciid\", \"old\""
      "\"field\": \"type\", \"old\"" "\"field\": \"source\", \"old\""
      "\"attribute\": \"[a-z]+\", \"new\"" "\"attribute\": \"[a-z]+\", \"old\": [^,]+}"
      "\"attribute\": \"[a-z]+\", \"old\": [0-9]+, \"new\": \"" "\"old\": [0-9]+\\.[0-9]+, \"new\": [0-9]+\\.[0-9]+"
      "\"old\": (true|false), \"new\": (true|false)")
    if(NOT text MATCHES "${pattern}")
      message(FATAL_ERROR "the generated change has nothing like ${pattern}")
    endif()
  endforeach()
endif()

run(0 apply "${OLD}" "${change}" -o "${WORK_DIR}/applied.json")
same_content("${WORK_DIR}/applied.json" "${NEW}")
run(0 apply --reverse "${WORK_DIR}/applied.json" "${change}" -o "${WORK_DIR}/reversed.json")
same_content("${WORK_DIR}/reversed.json" "${OLD}")
run(0 apply --reverse "${NEW}" "${change}" -o "${WORK_DIR}/reversed-from-new.json")
same_content("${WORK_DIR}/reversed-from-new.json" "${OLD}")

