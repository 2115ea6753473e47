#!/usr/bin/env bash
# Builds the release packages with CPack.
#
#   scripts/build-packages.sh            the Debian packages libvekzolbase<major>,
#                                        libvekzolbase-dev and vekzol, built with
#                                        Debian's hardening flags, in
#                                        build/packages/packages/
#   scripts/build-packages.sh --windows  the Windows zip (DLL, import library,
#                                        headers, CMake package) from the
#                                        mingw-w64 cross build, in
#                                        build/windows/packages/
#
# VEKZOL_BUILD_DIR names another build directory. The file names of the
# packages made are printed last, one per line.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
jobs="$(nproc 2>/dev/null || echo 2)"

if [ "${1:-}" = "--windows" ]; then
  "$root/scripts/install-deps.sh" --windows
  build="${VEKZOL_BUILD_DIR:-$root/build/windows}"
  cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DVEKZOL_WARNINGS_AS_ERRORS=ON \
    -DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchain-mingw-w64-x86_64.cmake" >/dev/null
  cmake --build "$build" -j "$jobs" --target VEKZOLBase
  generator=ZIP
else
  "$root/scripts/install-deps.sh" --packages
  build="${VEKZOL_BUILD_DIR:-$root/build/packages}"
  # The compiler and linker flags of Debian's own packages, all hardening
  # on; -g keeps the build tree's library readable by the ABI check (the
  # packaged files are stripped).
  export DEB_BUILD_MAINT_OPTIONS=hardening=+all
  eval "$(cd "$root" && dpkg-buildflags --export=sh)"
  export CXXFLAGS="$CXXFLAGS $CPPFLAGS"
  cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
    -DVEKZOL_DEBIAN_PACKAGES=ON -DVEKZOL_BUILD_TESTS=OFF -DVEKZOL_BUILD_EXAMPLES=OFF \
    -DVEKZOL_WARNINGS_AS_ERRORS=ON -DCMAKE_SKIP_INSTALL_RPATH=ON \
    -DCMAKE_STRIP="$root/packaging/debian/strip.sh" >/dev/null
  cmake --build "$build" -j "$jobs"
  generator=DEB
fi

rm -rf "$build/packages"
(cd "$build" && cpack -G "$generator" >/dev/null)
find "$build/packages" -maxdepth 1 -type f \( -name '*.deb' -o -name '*.zip' \) | sort
