# Test helpers. Unit tests link the library's objects (VEKZOLBase_objects)
# and may include internal headers from src/; API tests (LINK_SHARED) link
# the shared library the way a host does, so a missing export fails to link.
#
# Every test process gets a private TEMP directory, so trace files of
# parallel test processes never meet.

if(VEKZOL_BUILD_TESTS)
  enable_testing()
  if(CMAKE_CROSSCOMPILING AND VEKZOL_GTEST_SOURCE_DIR)
    # No GoogleTest package exists for the target: build it from its sources
    # (Debian's googletest package) with the same toolchain, outside the
    # warning set and the install rules of the library.
    set(BUILD_GMOCK ON CACHE BOOL "" FORCE)
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    add_subdirectory("${VEKZOL_GTEST_SOURCE_DIR}" "${PROJECT_BINARY_DIR}/googletest"
      EXCLUDE_FROM_ALL)
    foreach(library gtest gtest_main gmock gmock_main)
      add_library(GTest::${library} ALIAS ${library})
    endforeach()
  else()
    find_package(GTest REQUIRED)
  endif()
  set(VEKZOL_TEST_TEMP_ROOT "${PROJECT_BINARY_DIR}/test-temp")
endif()

# The library's own switches (VEKZOL_TEST_SWITCHES). A test registered with
# SWITCHES gets every one of them set and empty (which reads as off), so
# that the caller's own environment cannot leak in, except those it gives a
# value of its own. JBM_RQT_OUT and JBM_RQT_TEMP are not switches and not
# blanked: a variable set to empty ends the search of the batch session
# base, where an unset one lets it go on.
include(VEKZOLTestSwitches)

# vekzol_switch_environment(<out> [<SWITCH>=<value>...])
#
# Sets <out> to the environment entries of every switch of
# VEKZOL_TEST_SWITCHES: the value given for it, else empty. A name that is
# not in the list is an error, so the list stays the one place.
function(vekzol_switch_environment out)
  set(given_names "")
  foreach(entry IN LISTS ARGN)
    string(REGEX MATCH "^[^=]+" name "${entry}")
    if(NOT name IN_LIST VEKZOL_TEST_SWITCHES)
      message(FATAL_ERROR "vekzol_switch_environment: ${name} is not in VEKZOL_TEST_SWITCHES")
    endif()
    list(APPEND given_names "${name}")
  endforeach()
  set(entries "")
  foreach(switch IN LISTS VEKZOL_TEST_SWITCHES)
    if(NOT switch IN_LIST given_names)
      list(APPEND entries "${switch}=")
    endif()
  endforeach()
  list(APPEND entries ${ARGN})
  set(${out} "${entries}" PARENT_SCOPE)
endfunction()

# vekzol_add_test(NAME <target> SOURCES <files...> [LINK_SHARED]
#                 [SWITCHES [<SWITCH>=<value>...]] [ENVIRONMENT <VAR=value>...])
#
# Each executable is one CTest test. SWITCHES blanks the library's switches
# and sets those given (see VEKZOL_TEST_SWITCHES); ENVIRONMENT adds other
# variables to its process. Both are the way to test behaviour that reads
# the environment once per process.
function(vekzol_add_test)
  if(NOT VEKZOL_BUILD_TESTS)
    return()
  endif()
  cmake_parse_arguments(ARG "LINK_SHARED" "NAME" "SOURCES;ENVIRONMENT;SWITCHES" ${ARGN})
  if(DEFINED ARG_SWITCHES OR "SWITCHES" IN_LIST ARG_KEYWORDS_MISSING_VALUES)
    vekzol_switch_environment(switch_environment ${ARG_SWITCHES})
    set(ARG_ENVIRONMENT ${switch_environment} ${ARG_ENVIRONMENT})
  endif()
  add_executable(${ARG_NAME} ${ARG_SOURCES})
  if(ARG_LINK_SHARED)
    target_link_libraries(${ARG_NAME} PRIVATE VEKZOLBase::VEKZOLBase GTest::gtest GTest::gtest_main)
  else()
    target_link_libraries(${ARG_NAME} PRIVATE VEKZOLBase_objects GTest::gtest GTest::gmock GTest::gtest_main)
    target_include_directories(${ARG_NAME} PRIVATE ${PROJECT_SOURCE_DIR}/src)
  endif()
  vekzol_set_warnings(${ARG_NAME})

  # One CTest test per executable: its cases run in one process, one after
  # the other, with a TEMP of their own. Trace files are named by the second
  # they are created in, so two processes sharing a TEMP could overwrite each
  # other's file; separate executables never share one.
  set(temp_dir "${VEKZOL_TEST_TEMP_ROOT}/${ARG_NAME}")
  file(MAKE_DIRECTORY "${temp_dir}")
  add_test(NAME ${ARG_NAME} COMMAND ${ARG_NAME})
  set_tests_properties(${ARG_NAME} PROPERTIES
    ENVIRONMENT "TEMP=${temp_dir};VEKZOL_TEST_TEMP=${temp_dir};${ARG_ENVIRONMENT}")
endfunction()
