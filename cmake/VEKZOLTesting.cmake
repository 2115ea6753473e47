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

# vekzol_add_test(NAME <target> SOURCES <files...> [LINK_SHARED]
#                 [ENVIRONMENT <VAR=value>...])
#
# Each executable is one CTest test. ENVIRONMENT adds variables to its
# process: the way to test behaviour that reads the environment once per
# process.
function(vekzol_add_test)
  if(NOT VEKZOL_BUILD_TESTS)
    return()
  endif()
  cmake_parse_arguments(ARG "LINK_SHARED" "NAME" "SOURCES;ENVIRONMENT" ${ARGN})
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
