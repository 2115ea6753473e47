# Cross build for 64-bit Windows with Debian's mingw-w64 (posix thread
# model): g++-mingw-w64-x86-64-posix, libz-mingw-w64-dev.
#
#   cmake -S . -B build-win \
#     -DCMAKE_TOOLCHAIN_FILE=cmake/toolchain-mingw-w64-x86_64.cmake
#
# The result is VEKZOLBase.dll with its import library libVEKZOLBase.dll.a.
# The GCC runtime (libgcc, libstdc++, winpthread) and zlib are linked
# statically, so the DLL and the test programs need no runtime DLL beside
# them. Test programs run under Wine through scripts/wine-run.sh, the
# emulator that CTest puts in front of each of them.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)

set(VEKZOL_MINGW_TRIPLET x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${VEKZOL_MINGW_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${VEKZOL_MINGW_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${VEKZOL_MINGW_TRIPLET}-windres)

# Libraries, headers and packages come from the target's root only; build
# tools from the host.
set(CMAKE_FIND_ROOT_PATH /usr/${VEKZOL_MINGW_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# zlib is linked from libz.a, so no zlib1.dll has to travel with the DLL.
set(ZLIB_USE_STATIC_LIBS ON)

# The GCC runtime goes into every module; -static also takes winpthread's
# static archive. A host therefore deploys VEKZOLBase.dll alone.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static-libgcc -static-libstdc++ -static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static-libgcc -static-libstdc++ -static")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static-libgcc -static-libstdc++ -static")

# CTest starts every test program through Wine. GoogleTest comes from
# Debian's sources, built with this toolchain.
get_filename_component(VEKZOL_TOOLCHAIN_ROOT "${CMAKE_CURRENT_LIST_DIR}/.." ABSOLUTE)
set(CMAKE_CROSSCOMPILING_EMULATOR "${VEKZOL_TOOLCHAIN_ROOT}/scripts/wine-run.sh")
set(VEKZOL_GTEST_SOURCE_DIR /usr/src/googletest CACHE PATH
  "GoogleTest sources, built with the project when cross-compiling")
