#!/usr/bin/env bash
# Installs the Debian packages that building, testing and benchmarking the
# library need, when they are missing. Needs root (apt-get) only when
# something is missing.
#
#   scripts/install-deps.sh            the native (Linux) build, with the
#                                      vekzol tool's JSON and argument
#                                      libraries
#   scripts/install-deps.sh --windows  the 64-bit Windows build: the
#                                      mingw-w64 cross compiler, zlib for it,
#                                      GoogleTest sources and Wine to run the
#                                      tests
#   scripts/install-deps.sh --packages  the release packages: the native
#                                      build of the library and the tool,
#                                      Debian's packaging tools, lintian and
#                                      the ABI check's abigail-tools
#   scripts/install-deps.sh --fuzz     the libFuzzer build: clang and its
#                                      fuzzer and sanitizer runtimes, and
#                                      the vekzol tool's JSON and argument
#                                      libraries (the model reader's target
#                                      links the tool's library)
set -euo pipefail

if [ "${1:-}" = "--fuzz" ]; then
  packages=(cmake make clang libclang-rt-dev zlib1g-dev libsimdjson-dev nlohmann-json3-dev
    libcli11-dev)
  # The tool's library hashes change files with OpenSSL's libcrypto.
  packages+=(libssl-dev)
  # The tool's library lays drawings out with Graphviz's libgvc, found
  # through pkg-config.
  packages+=(pkg-config libgraphviz-dev)
elif [ "${1:-}" = "--packages" ]; then
  # The release packages (scripts/build-packages.sh, check-packages.sh): the
  # tool's build, Debian's packaging tools and lintian, the ABI check's
  # libabigail, pkg-config for the installed package's consumer.
  packages=(cmake make g++ pkg-config zlib1g-dev libsimdjson-dev nlohmann-json3-dev libcli11-dev
    libssl-dev libgraphviz-dev dpkg-dev file lintian abigail-tools)
elif [ "${1:-}" = "--windows" ]; then
  packages=(cmake make pkg-config g++-mingw-w64-x86-64-posix libz-mingw-w64-dev googletest wine64)
else
  packages=(cmake make g++ pkg-config googletest libgtest-dev libgmock-dev libbenchmark-dev zlib1g-dev
    libsimdjson-dev nlohmann-json3-dev libcli11-dev)
  # The end-to-end benchmark bench/compare-models.sh: GNU time for its
  # measures, networkx for the script it compares with, gnuplot for its plot.
  packages+=(time python3-networkx gnuplot-nox)
  # The tool's change files (diff, apply): SHA-256 from OpenSSL's
  # libcrypto; the test of `diff --format json-patch` applies the patch with
  # python3-jsonpatch, an implementation of its own.
  packages+=(libssl-dev python3-jsonpatch)
  # The tool's drawings (compare/show --format dot|svg|html): Graphviz's
  # libgvc lays them out; the HTML report's test opens it in headless
  # Chromium, driven through its DevTools protocol from python3.
  packages+=(libgraphviz-dev chromium python3-websocket)
  # The tests of the ABI check compare small libraries with libabigail.
  packages+=(abigail-tools)
fi

missing=()
for package in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$package")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "Installing missing packages: ${missing[*]}"
if [ "$(id -u)" -ne 0 ]; then
  echo "error: installing packages needs root; run as root or install: ${missing[*]}" >&2
  exit 1
fi
export DEBIAN_FRONTEND=noninteractive
apt-get update -qq
apt-get install -y -qq --no-install-recommends "${missing[@]}"
