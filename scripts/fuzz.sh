#!/usr/bin/env bash
# Builds the libFuzzer targets with clang, AddressSanitizer and
# UndefinedBehaviorSanitizer, and runs each on its seed corpus for a bounded
# time, one after the other: blob compression (seeds in fuzz/corpus), then
# the vekzol tool's model reader (seeds in fuzz/model-corpus). Any finding
# fails the run and leaves the input in the build folder.
#
#   scripts/fuzz.sh [SECONDS]     per target, default 60
#
# VEKZOL_BUILD_DIR names another build directory (default build/fuzz).
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
seconds="${1:-60}"

"$root/scripts/install-deps.sh" --fuzz
build="${VEKZOL_BUILD_DIR:-$root/build/fuzz}"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ \
  -DVEKZOL_FUZZ=ON -DVEKZOL_BUILD_TESTS=OFF -DVEKZOL_BUILD_EXAMPLES=OFF -DVEKZOL_INSTALL=OFF \
  -DVEKZOL_WARNINGS_AS_ERRORS=ON
cmake --build "$build" -j "$(nproc 2>/dev/null || echo 2)" --target blob_decompression_fuzz \
  --target model_reader_fuzz

# The corpus grows in the build folder; the checked-in seeds stay as they are.
work="$build/fuzz-run"
mkdir -p "$work/corpus" "$work/model-corpus" "$work/temp"
cd "$work"
# Trace lines of refused blobs and of every graph built would fill the
# disk: the log is off. The dump of decompressed texts stays off.
run() {
  env VEK_ZOL_LOG_ENABLED=FALSE VEK_ZOL_DUMP_DECOMPRESSED_BLOBS= TEMP="$work/temp" \
    ASAN_OPTIONS="detect_leaks=1:abort_on_error=1" UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1" \
    "$@"
}
echo "== blob_decompression_fuzz, $seconds s =="
run "$build/fuzz/blob_decompression_fuzz" -max_total_time="$seconds" -max_len=65536 \
  -dict="$root/fuzz/blob.dict" \
  -print_final_stats=1 "$work/corpus" "$root/fuzz/corpus"
echo "== model_reader_fuzz, $seconds s =="
run "$build/fuzz/model_reader_fuzz" -max_total_time="$seconds" -max_len=65536 \
  -dict="$root/fuzz/model.dict" \
  -print_final_stats=1 "$work/model-corpus" "$root/fuzz/model-corpus"
