#!/usr/bin/env bash
# Builds the library and runs its main job on the bundled example model:
# the example host program builds a graph from examples/data/model.txt and
# prints its trace lines and every vertex with its parents and children.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
"$root/scripts/install-deps.sh"

build="$root/build/release"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DVEKZOL_BUILD_TESTS=OFF
cmake --build "$build" -j "$(nproc 2>/dev/null || echo 2)" --target graph_from_lists
"$build/examples/graph_from_lists" "${1:-$root/examples/data/model.txt}"
