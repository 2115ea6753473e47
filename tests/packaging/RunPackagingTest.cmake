# Runs one packaging test (cmake -P). Arguments: VEKZOL_BINARY_DIR,
# VEKZOL_SOURCE_DIR, WORK_DIR, MODE (find_package | add_subdirectory),
# CXX_COMPILER, BUILD_TYPE.

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT result EQUAL 0)
    string(REPLACE ";" " " command "${ARGN}")
    message(FATAL_ERROR "failed (${result}): ${command}\n${out}\n${err}")
  endif()
  set(last_output "${out}" PARENT_SCOPE)
endfunction()

# The consumer prints this line when it ran to its end.
set(expected "consumer: 2 vertices, edge R-1 from PRC-1 to PRC-2")

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
if(NOT BUILD_TYPE)
  set(BUILD_TYPE Release)
endif()

if(MODE STREQUAL "find_package")
  set(prefix "${WORK_DIR}/prefix")
  run(${CMAKE_COMMAND} --install "${VEKZOL_BINARY_DIR}" --prefix "${prefix}")

  # The installed shared library carries its SONAME link.
  file(GLOB sonames "${prefix}/lib*/libVEKZOLBase.so.1")
  if(NOT sonames)
    message(FATAL_ERROR "no libVEKZOLBase.so.1 below ${prefix}")
  endif()

  run(${CMAKE_COMMAND} -S "${VEKZOL_SOURCE_DIR}/tests/packaging/consumer" -B "${WORK_DIR}/build"
      -DCMAKE_BUILD_TYPE=${BUILD_TYPE} -DCMAKE_CXX_COMPILER=${CXX_COMPILER}
      -DCMAKE_PREFIX_PATH=${prefix})
  run(${CMAKE_COMMAND} --build "${WORK_DIR}/build")
  run("${WORK_DIR}/build/consumer")
  if(NOT last_output MATCHES "${expected}")
    message(FATAL_ERROR "find_package consumer printed: ${last_output}")
  endif()

  # pkg-config users: compile and link with the flags of vekzolbase.pc.
  find_program(PKG_CONFIG pkg-config)
  if(PKG_CONFIG)
    file(GLOB pc_dirs "${prefix}/lib*/pkgconfig")
    set(ENV{PKG_CONFIG_PATH} "${pc_dirs}")
    run(${PKG_CONFIG} --cflags --libs vekzolbase)
    string(STRIP "${last_output}" flags)
    separate_arguments(flags UNIX_COMMAND "${flags}")
    run(${CXX_COMPILER} -std=c++17 "${VEKZOL_SOURCE_DIR}/tests/packaging/consumer/main.cpp"
        ${flags} -o "${WORK_DIR}/consumer-pc")
    file(GLOB lib_dirs "${prefix}/lib*")
    set(ENV{LD_LIBRARY_PATH} "${lib_dirs}")
    run("${WORK_DIR}/consumer-pc")
    if(NOT last_output MATCHES "${expected}")
      message(FATAL_ERROR "pkg-config consumer printed: ${last_output}")
    endif()
  endif()
elseif(MODE STREQUAL "add_subdirectory")
  run(${CMAKE_COMMAND} -S "${VEKZOL_SOURCE_DIR}/tests/packaging/subdirectory" -B "${WORK_DIR}/build"
      -DCMAKE_BUILD_TYPE=${BUILD_TYPE} -DCMAKE_CXX_COMPILER=${CXX_COMPILER}
      -DVEKZOL_SOURCE_DIR=${VEKZOL_SOURCE_DIR})
  run(${CMAKE_COMMAND} --build "${WORK_DIR}/build")
  run("${WORK_DIR}/build/consumer")
  if(NOT last_output MATCHES "${expected}")
    message(FATAL_ERROR "add_subdirectory consumer printed: ${last_output}")
  endif()
else()
  message(FATAL_ERROR "unknown MODE '${MODE}'")
endif()
