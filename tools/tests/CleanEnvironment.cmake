# Included by the tool's test scripts (cmake -P) before they run the tool:
# the library's switches and the batch session base's variables come from
# the environment, and the caller's must not leak in. They are unset rather
# than blanked, since the tool itself asks whether VEK_ZOL_LOG_ENABLED is set.
include("${CMAKE_CURRENT_LIST_DIR}/../../cmake/VEKZOLTestSwitches.cmake")
foreach(variable IN LISTS VEKZOL_TEST_SWITCHES VEKZOL_TEST_DIRECTORY_VARIABLES)
  unset(ENV{${variable}})
endforeach()
