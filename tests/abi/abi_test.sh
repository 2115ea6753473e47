#!/usr/bin/env bash
# One test of scripts/check-abi.sh: runs it on one case and checks its exit
# status and its verdict (the last line it prints).
#
#   abi_test.sh CASE SOURCE_DIR WORK_DIR CXX
#
# The tiny.* cases build the small library of tiny/ in two variants with
# CXX, record the first as the baseline of release 1.0.0 and check the
# second against it. The releases.* cases check the recorded files under
# SOURCE_DIR/abi. Everything is made in WORK_DIR/CASE, removed at the end.
set -euo pipefail

case_name=$1 source_dir=$2 work_dir=$3 cxx=$4
check=$source_dir/scripts/check-abi.sh
tiny=$source_dir/tests/abi/tiny
work=$work_dir/$case_name
rm -rf "$work"
mkdir -p "$work"
trap 'rm -rf "$work"' EXIT

# build NAME SONAME [FLAGS...]: the small library, with debug information
# unless FLAGS say otherwise.
build() {
  local name=$1 soname=$2
  shift 2
  "$cxx" -shared -fPIC -O0 "$@" -Wl,-soname,"$soname" \
    -o "$work/$name.so" "$tiny/Tiny.cpp"
}

# baseline [FLAGS...]: the small library of release 1.0.0, recorded.
baseline() {
  build released libtiny.so.1 -g "$@"
  "$check" --record --headers "$tiny/include" --output "$work/libtiny-1.0.0.abi" \
    "$work/released.so" > /dev/null
}

# expect STATUS VERDICT ARGS...: check-abi.sh ARGS exits with STATUS and
# prints VERDICT last.
expect() {
  local expected_status=$1 expected_verdict=$2 status=0 output
  shift 2
  output=$("$check" "$@" 2>&1) || status=$?
  if [[ $status != "$expected_status" || $(tail -n 1 <<<"$output") != "$expected_verdict" ]]; then
    printf '%s\n' "$output"
    echo "FAILED: expected exit status $expected_status and the verdict" >&2
    echo "  $expected_verdict" >&2
    echo "got exit status $status" >&2
    exit 1
  fi
  printf '%s\n' "$output"
}

# expect_tiny STATUS VERDICT: the second variant (checked.so) against the
# recorded baseline.
expect_tiny() {
  expect "$1" "$2" --headers "$tiny/include" --baseline "$work/libtiny-1.0.0.abi" \
    "$work/checked.so"
}

breaks="check-abi: libtiny.so.1 breaks the binary interface of release 1.0.0 without a new SONAME; restore the interface, or raise the major version"
keeps="check-abi: libtiny.so.1 keeps the binary interface of release 1.0.0"

case $case_name in
  tiny.unchanged)
    baseline
    build checked libtiny.so.1 -g
    expect_tiny 0 "$keeps"
    ;;
  tiny.std_instances_dropped)
    # Only the implementation changed: the vector's template instances that
    # the baseline exported are gone, which no host can depend on.
    baseline
    build checked libtiny.so.1 -g -DTINY_PLAIN_SUM
    expect_tiny 0 "$keeps"
    ;;
  tiny.layout_changed)
    baseline
    build checked libtiny.so.1 -g -DTINY_LAYOUT_CHANGED
    expect_tiny 1 "$breaks"
    ;;
  tiny.function_removed)
    baseline -DTINY_FUNCTION_ADDED
    build checked libtiny.so.1 -g
    expect_tiny 1 "$breaks"
    ;;
  tiny.function_added)
    baseline
    build checked libtiny.so.1 -g -DTINY_FUNCTION_ADDED
    expect_tiny 0 "check-abi: libtiny.so.1 adds to the binary interface of release 1.0.0 without breaking it; the next release is a minor one"
    ;;
  tiny.soname_raised)
    baseline
    build checked libtiny.so.2 -g -DTINY_LAYOUT_CHANGED
    expect_tiny 0 "check-abi: the major version moved from 1 to 2 (libtiny.so.1 -> libtiny.so.2), so the changes to the binary interface of release 1.0.0 are declared"
    ;;
  tiny.no_debug_info)
    baseline
    build checked libtiny.so.1
    expect_tiny 2 "check-abi: $work/checked.so has no debug information; build it with -g"
    ;;
  releases.1.0.0_to_2.0.0)
    expect 0 "check-abi: the major version moved from 1 to 2 (libVEKZOLBase.so.1 -> libVEKZOLBase.so.2), so the changes to the binary interface of release 1.0.0 are declared" \
      --baseline "$source_dir/abi/libVEKZOLBase-1.0.0.abi" "$source_dir/abi/libVEKZOLBase-2.0.0.abi"
    ;;
  releases.latest)
    # The latest recorded release, checked against the baseline chosen from
    # the project version: itself.
    latest=$(printf '%s\n' "$source_dir"/abi/libVEKZOLBase-*.abi | sort -V | tail -n 1)
    version=$(basename "$latest" .abi)
    version=${version##*-}
    expect 0 "check-abi: $(head -n 1 "$latest" | sed -n "s/.* soname='\([^']*\)'.*/\1/p") keeps the binary interface of release $version" \
      "$latest"
    ;;
  *)
    echo "abi_test.sh: unknown case $case_name" >&2
    exit 2
    ;;
esac
