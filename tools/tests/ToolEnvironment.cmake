# Included by the tool's test scripts (cmake -P) before they run the tool.
# The library's switches and the batch session base's variables come from
# the environment, and the caller's must not leak in: they are unset rather
# than blanked, since the tool itself asks whether VEK_ZOL_LOG_ENABLED is set.
# Then the test's own variables, when the script was given ENV
# ("NAME=value" entries separated by "|"), are set.
include("${CMAKE_CURRENT_LIST_DIR}/../../cmake/VEKZOLTestSwitches.cmake")
foreach(variable IN LISTS VEKZOL_TEST_SWITCHES VEKZOL_TEST_DIRECTORY_VARIABLES)
  unset(ENV{${variable}})
endforeach()
if(DEFINED ENV AND NOT ENV STREQUAL "")
  string(REPLACE "|" ";" environment "${ENV}")
  foreach(assignment IN LISTS environment)
    string(REGEX MATCH "^([^=]+)=(.*)$" matched "${assignment}")
    set(ENV{${CMAKE_MATCH_1}} "${CMAKE_MATCH_2}")
  endforeach()
endif()
