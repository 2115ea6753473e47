# Progress of a comparison of models over 100,000 elements: none with
# standard error on a pipe (as under CTest), none with --quiet, the phases
# on a terminal (through script(1), where it is found); --timings prints the
# phase times (cmake -P). Arguments: TOOL, WORK_DIR, SCRIPT (optional).
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
set(ENV{TEMP} "${WORK_DIR}")
foreach(variable VEK_ZOL_LOG_ENABLED VEK_ZOL_LOG_VERBOSE JBM_RQT_IN VEK_ZOL_TIMERS_ENABLED)
  unset(ENV{${variable}})
endforeach()

# 60,000 elements and about 63,000 relations per state.
execute_process(COMMAND "${TOOL}" generate --vertices 60000 "${WORK_DIR}/old.json"
    "${WORK_DIR}/new.json" RESULT_VARIABLE result ERROR_VARIABLE errors)
if(NOT result EQUAL 0 OR NOT errors STREQUAL "")
  message(FATAL_ERROR "generate: exit status ${result}\n${errors}")
endif()

execute_process(COMMAND "${TOOL}" compare "${WORK_DIR}/old.json" "${WORK_DIR}/new.json"
    -o "${WORK_DIR}/result.txt" RESULT_VARIABLE result ERROR_VARIABLE errors)
if(NOT result EQUAL 1)
  message(FATAL_ERROR "compare: exit status ${result}, expected 1\n${errors}")
endif()
if(NOT errors STREQUAL "")
  message(FATAL_ERROR "compare wrote to a pipe:\n${errors}")
endif()

execute_process(COMMAND "${TOOL}" compare --timings "${WORK_DIR}/old.json"
    "${WORK_DIR}/new.json" -o "${WORK_DIR}/result.txt" RESULT_VARIABLE result
    ERROR_VARIABLE errors)
foreach(phase "parse [^\n]*old.json" "parse [^\n]*new.json" "build" "compare" "total")
  if(NOT errors MATCHES "vekzol: time ${phase} +[0-9]+\\.[0-9][0-9][0-9] s\n")
    message(FATAL_ERROR "--timings has no time for ${phase}:\n${errors}")
  endif()
endforeach()
if(errors MATCHES "\\.\\.\\.")
  message(FATAL_ERROR "--timings showed progress in a pipe:\n${errors}")
endif()

# On a terminal: script(1) runs the tool on a pseudo-terminal and copies
# what it writes there.
if(SCRIPT)
  set(command "'${TOOL}' compare '${WORK_DIR}/old.json' '${WORK_DIR}/new.json' -o '${WORK_DIR}/result.txt'")
  execute_process(COMMAND "${SCRIPT}" -qec "${command}" /dev/null
    RESULT_VARIABLE result OUTPUT_VARIABLE terminal)
  foreach(line "vekzol: reading [^\n]*old.json ... 60000 objects, [0-9]+ relations, [0-9.]+ s"
      "vekzol: building graphs ... [0-9.]+ s" "vekzol: comparing ... [0-9.]+ s")
    if(NOT terminal MATCHES "${line}")
      message(FATAL_ERROR "no progress line \"${line}\" on a terminal:\n${terminal}")
    endif()
  endforeach()
  execute_process(COMMAND "${SCRIPT}" -qec "${command} --quiet" /dev/null
    RESULT_VARIABLE result OUTPUT_VARIABLE terminal)
  if(NOT terminal STREQUAL "")
    message(FATAL_ERROR "--quiet showed progress on a terminal:\n${terminal}")
  endif()
endif()
