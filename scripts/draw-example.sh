#!/usr/bin/env bash
# Draws the change of the bundled example models, the picture of the
# README: `vekzol compare --check-names --roots --format svg` of
# examples/models/line-old.json and line-new.json into docs/line-change.svg.
# Builds the tool first when the build has none (or an older one).
#
#   scripts/draw-example.sh [--build DIR] [--output SVG]
#
#   --build DIR   the build folder (default: build/release, as
#                 scripts/run-example.sh uses it)
#   --output SVG  the drawing (default: docs/line-change.svg)
#
# The drawing is a function of the models and Graphviz's version alone
# (the tool lays out text with Graphviz's own font metrics, not the
# machine's fonts), so the file changes only when one of them does.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"

build="$root/build/release"
output="$root/docs/line-change.svg"
while [ $# -gt 0 ]; do
  case "$1" in
    --build) build="${2:?--build needs a directory}"; shift 2 ;;
    --output) output="${2:?--output needs a file}"; shift 2 ;;
    *) echo "usage: $0 [--build DIR] [--output SVG]" >&2; exit 2 ;;
  esac
done

"$root/scripts/install-deps.sh"
if [ ! -f "$build/CMakeCache.txt" ]; then
  cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DVEKZOL_BUILD_TESTS=OFF
fi
cmake --build "$build" -j "$(nproc 2>/dev/null || echo 2)" --target vekzol

# Exit status 1 is "the models differ".
status=0
"$build/tools/vekzol" compare --check-names --roots --format svg \
  "$root/examples/models/line-old.json" "$root/examples/models/line-new.json" \
  -o "$output" || status=$?
if [ "$status" -ne 1 ]; then
  echo "draw-example.sh: vekzol exited with status $status" >&2
  exit 2
fi
echo "wrote $output"
