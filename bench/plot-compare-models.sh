#!/usr/bin/env bash
# Runs bench/compare-models.sh at 10^4, 10^5 and 10^6 elements with 11-byte
# and 40-byte ids and draws the processor time of the three programs
# against the number of elements, log-log, with gnuplot (Debian package
# gnuplot-nox) into docs/compare-models.svg. The run at 10^6 takes a few
# minutes, most of them networkx's.
#
#   bench/plot-compare-models.sh [--build DIR] [--rows FILE] [--plot-only]
#                                [--sizes "N..."] [--output SVG]
#
#   --build DIR   passed on to compare-models.sh (default: build/bench)
#   --rows FILE   keep the measured rows in FILE (appended to); with
#                 --plot-only, draw the rows saved there without running
#                 anything. Of several rows of one size and id length the
#                 last counts.
#   --sizes       the numbers of elements (default: "10000 100000 1000000")
#   --output SVG  the plot (default: docs/compare-models.svg); a name ending
#                 in .png gives a PNG image instead
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"

build="$root/build/bench"
rows=""
plot_only=0
sizes="10000 100000 1000000"
output="$root/docs/compare-models.svg"
while [ $# -gt 0 ]; do
  case "$1" in
    --build) build="${2:?--build needs a directory}"; shift 2 ;;
    --rows) rows="${2:?--rows needs a file}"; shift 2 ;;
    --plot-only) plot_only=1; shift ;;
    --sizes) sizes="${2:?--sizes needs numbers}"; shift 2 ;;
    --output) output="${2:?--output needs a file}"; shift 2 ;;
    *)
      sed -n '/^#   bench\/plot-compare-models.sh/,/^set -euo/p' "${BASH_SOURCE[0]}" |
        sed '$d; s/^# \{0,1\}//' >&2
      exit 2 ;;
  esac
done
if ! command -v gnuplot >/dev/null; then
  echo "plot-compare-models.sh: gnuplot is missing (Debian package gnuplot-nox)" >&2
  exit 1
fi

work="$(mktemp -d "${TMPDIR:-/tmp}/plot-compare-models.XXXXXX")"
trap 'rm -rf "$work"' EXIT
if [ -z "$rows" ]; then
  [ "$plot_only" -eq 0 ] || { echo "plot-compare-models.sh: --plot-only needs --rows FILE" >&2; exit 2; }
  rows="$work/rows.txt"
fi

if [ "$plot_only" -eq 0 ]; then
  for elements in $sizes; do
    for id_bytes in 11 40; do
      "$root/bench/compare-models.sh" "$elements" --id-bytes "$id_bytes" --build "$build" \
        --row "$rows"
      echo
    done
  done
fi

# One data file per id length, the last row of each size, by size.
for id_bytes in 11 40; do
  awk -v bytes="$id_bytes" '!/^#/ && NF >= 8 && $2 == bytes { last[$1] = $0 }
    END { for (n in last) print last[n] }' "$rows" | sort -n >"$work/ids-$id_bytes.txt"
  if [ ! -s "$work/ids-$id_bytes.txt" ]; then
    echo "plot-compare-models.sh: no rows with $id_bytes-byte ids in $rows" >&2
    exit 1
  fi
done

case "$output" in
  *.png) terminal='pngcairo size 960,640 enhanced font "Helvetica,11" background "white"' ;;
  *) terminal='svg size 960,640 dynamic enhanced font "Helvetica,12" background "white"' ;;
esac
mkdir -p "$(dirname "$output")"
gnuplot <<EOF
set terminal $terminal
set output "$output"
set title "Comparing two model files end to end: processor time (user + system)"
set xlabel "elements of the old state (objects; about as many relations; 2% of each kind of change)"
set ylabel "processor seconds, user + system"
set logscale xy
set format x "10^{%L}"
set format y "10^{%L}"
set grid xtics ytics mxtics mytics lc rgb "#dddddd"
set key top left box opaque
set autoscale xfix
set offsets graph 0.04, graph 0.04, 0, 0
set style line 1 lc rgb "#1f77b4" lw 2 pt 7 ps 0.9
set style line 2 lc rgb "#2ca02c" lw 2 pt 5 ps 0.9
set style line 3 lc rgb "#d62728" lw 2 pt 9 ps 1.1
# A processor time under the clock's 10 ms shows as 10 ms.
shown(t) = t < 0.01 ? 0.01 : t
plot "$work/ids-11.txt" using 1:(shown(\$7)) with linespoints ls 3 title "networkx script, 11-byte ids", \
     "$work/ids-40.txt" using 1:(shown(\$7)) with linespoints ls 3 dt 2 title "networkx script, 40-byte ids", \
     "$work/ids-11.txt" using 1:(shown(\$3)) with linespoints ls 1 title "vekzol compare, 11-byte ids", \
     "$work/ids-40.txt" using 1:(shown(\$3)) with linespoints ls 1 dt 2 title "vekzol compare, 40-byte ids", \
     "$work/ids-11.txt" using 1:(shown(\$5)) with linespoints ls 2 title "flat reference, 11-byte ids", \
     "$work/ids-40.txt" using 1:(shown(\$5)) with linespoints ls 2 dt 2 title "flat reference, 40-byte ids"
EOF
echo "plot-compare-models.sh: wrote $output"
