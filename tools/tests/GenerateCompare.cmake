# Generates two related models with the comparison model generator, which
# states what their comparison must find, and checks that `vekzol compare`
# finds exactly that (cmake -P).
# Arguments: TOOL, WORK_DIR, VERTICES, CHANGES, SEED; optionally ID_BYTES,
# the length of the generated ids, which are then checked in both models.
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
set(ENV{TEMP} "${WORK_DIR}")
foreach(variable VEK_ZOL_LOG_ENABLED VEK_ZOL_LOG_VERBOSE JBM_RQT_IN VEK_ZOL_TIMERS_ENABLED)
  unset(ENV{${variable}})
endforeach()

set(id_option)
if(DEFINED ID_BYTES)
  set(id_option --id-bytes ${ID_BYTES})
endif()
execute_process(COMMAND "${TOOL}" generate --vertices ${VERTICES} --changes ${CHANGES}
    --seed ${SEED} ${id_option} --expected "${WORK_DIR}/expected.json" "${WORK_DIR}/old.json"
    "${WORK_DIR}/new.json"
  RESULT_VARIABLE result ERROR_VARIABLE errors)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "generate: exit status ${result}\n${errors}")
endif()

# Every id of both models, of objects, relations and relation ends, has the
# length asked for.
if(DEFINED ID_BYTES)
  foreach(model old new)
    file(STRINGS "${WORK_DIR}/${model}.json" lines REGEX "\"id\": ")
    list(LENGTH lines count)
    if(count LESS 1000)
      message(FATAL_ERROR "${model}.json holds ${count} entries with an id")
    endif()
    foreach(line IN LISTS lines)
      string(REGEX MATCHALL "\"(id|source|target)\": \"[^\"]*\"" fields "${line}")
      foreach(field IN LISTS fields)
        string(REGEX REPLACE "^\"[a-z]+\": \"(.*)\"$" "\\1" id "${field}")
        string(LENGTH "${id}" length)
        if(NOT length EQUAL ID_BYTES)
          message(FATAL_ERROR "${model}.json: an id of ${length} bytes, not ${ID_BYTES}: ${line}")
        endif()
      endforeach()
    endforeach()
  endforeach()
endif()

# Every kind of change must be there, or the check below proves little.
file(READ "${WORK_DIR}/expected.json" expected)
foreach(list verticesToBeAdded verticesToBeRemoved verticesToBeMoved verticesToChangeName
    edgesToBeAdded edgesToBeRemoved rootVerticesToAdd rootEdgesToAdd rootEdgesToRemove)
  if(NOT expected MATCHES "\"${list}\": \\[\n    \"")
    message(FATAL_ERROR "the generated change has an empty ${list}")
  endif()
endforeach()

execute_process(COMMAND "${TOOL}" compare --check-names --roots --format json
    "${WORK_DIR}/old.json" "${WORK_DIR}/new.json" -o "${WORK_DIR}/actual.json"
  RESULT_VARIABLE result ERROR_VARIABLE errors)
if(NOT result EQUAL 1)
  message(FATAL_ERROR "compare: exit status ${result}, expected 1\n${errors}")
endif()
if(NOT errors STREQUAL "")
  message(FATAL_ERROR "compare wrote to standard error:\n${errors}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files "${WORK_DIR}/expected.json"
    "${WORK_DIR}/actual.json" RESULT_VARIABLE different)
if(different)
  message(FATAL_ERROR "compare found other differences than the generator states: "
    "${WORK_DIR}/expected.json, ${WORK_DIR}/actual.json")
endif()

# A model compared with itself: no difference, exit status 0.
execute_process(COMMAND "${TOOL}" compare "${WORK_DIR}/new.json" "${WORK_DIR}/new.json"
  RESULT_VARIABLE result OUTPUT_VARIABLE output)
if(NOT result EQUAL 0 OR NOT output MATCHES "Outcome: identical\n$")
  message(FATAL_ERROR "compare of a model with itself: exit status ${result}\n${output}")
endif()
