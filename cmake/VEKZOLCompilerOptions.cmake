# Compiler settings shared by the library, its tests, benchmarks and
# examples.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

# Applies the project's warning set to one target.
function(vekzol_set_warnings target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4)
    if(VEKZOL_WARNINGS_AS_ERRORS)
      target_compile_options(${target} PRIVATE /WX)
    endif()
  else()
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic)
    if(VEKZOL_WARNINGS_AS_ERRORS)
      target_compile_options(${target} PRIVATE -Werror)
    endif()
  endif()
endfunction()

if(NOT MSVC)
  # Floating-point results must be those of the written order of operations
  # on every platform: no fused multiply-add contraction.
  add_compile_options(-ffp-contract=off)
endif()

if(VEKZOL_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=address,undefined)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # The sanitizers' instrumentation confuses GCC's flow analysis, which then
    # reports uninitialised reads inside the standard library (<regex>,
    # <functional>). The plain build keeps the warning.
    add_compile_options(-Wno-maybe-uninitialized)
  endif()
endif()

if(VEKZOL_FUZZ)
  # Coverage feedback for libFuzzer in every object, with the sanitizers
  # that turn a bad read into a finding. Needs clang.
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "VEKZOL_FUZZ needs clang (CMAKE_CXX_COMPILER=clang++)")
  endif()
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer
    -fno-sanitize-recover=all)
  add_link_options(-fsanitize=address,undefined)
endif()

if(WIN32 AND VEKZOL_IS_TOP_LEVEL AND NOT CMAKE_RUNTIME_OUTPUT_DIRECTORY)
  # Windows finds the DLLs of a program beside it: the DLL, the tests and
  # the examples all go to one folder of the build tree.
  set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
endif()
