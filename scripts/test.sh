#!/usr/bin/env bash
# Builds the library with every test and runs the whole suite.
#
#   scripts/test.sh              Release build in build/test, warnings as errors
#   scripts/test.sh --sanitize   the same under AddressSanitizer and
#                                UndefinedBehaviorSanitizer, in build/sanitize
#   scripts/test.sh --windows    the 64-bit Windows build (VEKZOLBase.dll) with
#                                mingw-w64, in build/windows, every test run
#                                under Wine
#
# VEKZOL_BUILD_DIR names another build directory.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"

jobs="$(nproc 2>/dev/null || echo 2)"
label_filter=()
case "${1:-}" in
  --sanitize)
    "$root/scripts/install-deps.sh"
    build="${VEKZOL_BUILD_DIR:-$root/build/sanitize}"
    cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
      -DVEKZOL_WARNINGS_AS_ERRORS=ON -DVEKZOL_SANITIZE=ON
    export ASAN_OPTIONS="halt_on_error=1:detect_leaks=1:abort_on_error=1"
    export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1"
    # The packaging tests build consumers without the sanitizer runtime; they
    # run in the plain build.
    label_filter=(-LE packaging)
    ;;
  --windows)
    "$root/scripts/install-deps.sh" --windows
    build="${VEKZOL_BUILD_DIR:-$root/build/windows}"
    cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DVEKZOL_WARNINGS_AS_ERRORS=ON \
      -DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchain-mingw-w64-x86_64.cmake"
    ;;
  *)
    "$root/scripts/install-deps.sh"
    build="${VEKZOL_BUILD_DIR:-$root/build/test}"
    cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DVEKZOL_WARNINGS_AS_ERRORS=ON
    ;;
esac
cmake --build "$build" -j "$jobs"
if [ "${1:-}" = "--windows" ]; then
  # One Wine server for the whole run (see scripts/wine-run.sh).
  "$root/scripts/wine-run.sh" --keep-server
  trap '"$root/scripts/wine-run.sh" --stop-server || true' EXIT
fi
cd "$build"
ctest --output-on-failure -j "$jobs" "${label_filter[@]}"
