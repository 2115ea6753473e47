# Runs one packaging test (cmake -P). Arguments: VEKZOL_BINARY_DIR,
# VEKZOL_SOURCE_DIR, WORK_DIR, MODE (find_package | archive |
# add_subdirectory; archive: the consumer of find_package built against the
# unpacked release zip, which needs CPACK_COMMAND),
# CXX_COMPILER, BUILD_TYPE; for a cross build also TOOLCHAIN_FILE and
# EMULATOR (runs the consumers); TARGET_WINDOWS for a Windows
# target (a DLL with its import library instead of a SONAME, and the folder
# of the DLL on WINEPATH when a consumer runs).

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

set(toolchain_argument)
if(TOOLCHAIN_FILE)
  set(toolchain_argument "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN_FILE}")
endif()
set(exe_suffix "")
if(TARGET_WINDOWS)
  set(exe_suffix ".exe")
endif()

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
if(NOT BUILD_TYPE)
  set(BUILD_TYPE Release)
endif()

if(MODE STREQUAL "find_package" OR MODE STREQUAL "archive")
  set(prefix "${WORK_DIR}/prefix")
  if(MODE STREQUAL "archive")
    # The release zip as CPack makes it, unpacked as its user would: its
    # files must be exactly those of an install.
    run(${CPACK_COMMAND} -G ZIP --config "${VEKZOL_BINARY_DIR}/CPackConfig.cmake"
        -B "${WORK_DIR}/archive")
    file(GLOB archive "${WORK_DIR}/archive/*.zip")
    list(LENGTH archive count)
    if(NOT count EQUAL 1)
      message(FATAL_ERROR "cpack made ${count} zip files: ${archive}")
    endif()
    file(MAKE_DIRECTORY "${WORK_DIR}/unpacked")
    run(${CMAKE_COMMAND} -E chdir "${WORK_DIR}/unpacked" ${CMAKE_COMMAND} -E tar xf "${archive}")
    get_filename_component(folder "${archive}" NAME_WLE)
    set(prefix "${WORK_DIR}/unpacked/${folder}")
    run(${CMAKE_COMMAND} --install "${VEKZOL_BINARY_DIR}" --prefix "${WORK_DIR}/installed"
        --component runtime)
    run(${CMAKE_COMMAND} --install "${VEKZOL_BINARY_DIR}" --prefix "${WORK_DIR}/installed"
        --component development)
    file(GLOB_RECURSE archived RELATIVE "${prefix}" "${prefix}/*")
    file(GLOB_RECURSE installed RELATIVE "${WORK_DIR}/installed" "${WORK_DIR}/installed/*")
    list(SORT archived)
    list(SORT installed)
    if(NOT archived STREQUAL installed)
      message(FATAL_ERROR "the zip holds:\n${archived}\nan install gives:\n${installed}")
    endif()
  else()
    run(${CMAKE_COMMAND} --install "${VEKZOL_BINARY_DIR}" --prefix "${prefix}")
  endif()

  if(TARGET_WINDOWS)
    # The DLL goes to bin, its import library to lib.
    foreach(file bin/VEKZOLBase.dll lib/libVEKZOLBase.dll.a)
      if(NOT EXISTS "${prefix}/${file}")
        message(FATAL_ERROR "no ${file} below ${prefix}")
      endif()
    endforeach()
    set(ENV{WINEPATH} "${prefix}/bin")
  else()
    # The installed shared library carries its SONAME link, named after the
    # major version.
    file(GLOB sonames "${prefix}/lib*/libVEKZOLBase.so.${SOVERSION}")
    if(NOT sonames)
      message(FATAL_ERROR "no libVEKZOLBase.so.${SOVERSION} below ${prefix}")
    endif()
  endif()

  set(package_argument)
  if(TOOLCHAIN_FILE)
    # A cross build looks for packages below the target's root only, so the
    # consumer is shown the package's folder itself.
    set(package_argument "-DVEKZOLBase_DIR=${prefix}/lib/cmake/VEKZOLBase")
  endif()
  run(${CMAKE_COMMAND} -S "${VEKZOL_SOURCE_DIR}/tests/packaging/consumer" -B "${WORK_DIR}/build"
      -DCMAKE_BUILD_TYPE=${BUILD_TYPE} -DCMAKE_CXX_COMPILER=${CXX_COMPILER}
      -DCMAKE_PREFIX_PATH=${prefix} ${toolchain_argument} ${package_argument})
  run(${CMAKE_COMMAND} --build "${WORK_DIR}/build")
  run(${EMULATOR} "${WORK_DIR}/build/consumer${exe_suffix}")
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
    set(link_flags)
    if(TARGET_WINDOWS)
      # The GCC runtime goes into the program, as the toolchain puts it into
      # CMake's programs. A plain -static would refuse the library's import
      # library, so the thread library is named on its own.
      set(link_flags -static-libgcc -static-libstdc++
          -Wl,-Bstatic,--whole-archive -lwinpthread -Wl,--no-whole-archive,-Bdynamic)
    endif()
    run(${CXX_COMPILER} -std=c++17 "${VEKZOL_SOURCE_DIR}/tests/packaging/consumer/main.cpp"
        ${flags} ${link_flags} -o "${WORK_DIR}/consumer-pc${exe_suffix}")
    file(GLOB lib_dirs "${prefix}/lib*")
    set(ENV{LD_LIBRARY_PATH} "${lib_dirs}")
    run(${EMULATOR} "${WORK_DIR}/consumer-pc${exe_suffix}")
    if(NOT last_output MATCHES "${expected}")
      message(FATAL_ERROR "pkg-config consumer printed: ${last_output}")
    endif()
  endif()
elseif(MODE STREQUAL "add_subdirectory")
  run(${CMAKE_COMMAND} -S "${VEKZOL_SOURCE_DIR}/tests/packaging/subdirectory" -B "${WORK_DIR}/build"
      -DCMAKE_BUILD_TYPE=${BUILD_TYPE} -DCMAKE_CXX_COMPILER=${CXX_COMPILER}
      -DVEKZOL_SOURCE_DIR=${VEKZOL_SOURCE_DIR} ${toolchain_argument})
  run(${CMAKE_COMMAND} --build "${WORK_DIR}/build")
  if(TARGET_WINDOWS)
    set(ENV{WINEPATH} "${WORK_DIR}/build/vekzolbase/src")
  endif()
  run(${EMULATOR} "${WORK_DIR}/build/consumer${exe_suffix}")
  if(NOT last_output MATCHES "${expected}")
    message(FATAL_ERROR "add_subdirectory consumer printed: ${last_output}")
  endif()
else()
  message(FATAL_ERROR "unknown MODE '${MODE}'")
endif()
