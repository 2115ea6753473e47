#!/usr/bin/env bash
# Builds the library and its command-line tool and runs the main job on the
# bundled example models: `vekzol compare --check-names --roots` of two
# states of a small assembly line, which prints what to add, remove, move
# and rename to turn the old state into the new one.
#
#   scripts/run-example.sh [OLD.json NEW.json]
#
# Exits 0 when the comparison ran (whether or not the models differ) and 2
# when it failed; vekzol itself exits 1 for models that differ.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
"$root/scripts/install-deps.sh"

build="$root/build/release"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DVEKZOL_BUILD_TESTS=OFF
cmake --build "$build" -j "$(nproc 2>/dev/null || echo 2)" --target vekzol

old="${1:-$root/examples/models/line-old.json}"
new="${2:-$root/examples/models/line-new.json}"
status=0
"$build/tools/vekzol" compare --check-names --roots "$old" "$new" || status=$?
case $status in
  0) echo "(vekzol: the models are the same)" ;;
  1) echo "(vekzol: the models differ)" ;;
  *) exit "$status" ;;
esac
