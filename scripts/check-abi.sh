#!/usr/bin/env bash
# Checks the exported binary interface of a built libVEKZOLBase against the
# one recorded for a release, or records it for a release.
#
#   scripts/check-abi.sh [--baseline FILE] [--headers DIR] LIBRARY
#   scripts/check-abi.sh --record [--output FILE] [--headers DIR] LIBRARY
#
# LIBRARY is a shared library built with debug information (-g), or an ABI
# file written by --record. Only the types of the public headers (include/,
# or DIR) count. The baseline is abi/libVEKZOLBase-X.Y.Z.abi of the latest
# release X.Y.Z not above the project version of CMakeLists.txt, unless
# --baseline names one. --record writes abi/libVEKZOLBase-<project version>.abi
# (or FILE) from LIBRARY.
#
# Exit status: 0 when LIBRARY keeps the interface, only adds to it, or
# changes it under a new SONAME (a raised major version); 1 when it changes
# or removes any of it under the same SONAME; 2 when the check itself
# cannot run.
set -euo pipefail
# Any other failure is the check failing to run, not a verdict.
trap 'echo "check-abi: failed at line $LINENO" >&2; exit 2' ERR

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
usage="usage: $0 [--baseline FILE | --record [--output FILE]] [--headers DIR] LIBRARY"

mode=check baseline='' output='' headers=$root/include
while (($# > 1)); do
  case $1 in
    --baseline) baseline=$2; shift 2 ;;
    --record) mode=record; shift ;;
    --output) output=$2; shift 2 ;;
    --headers) headers=$(cd "$2" && pwd) || exit 2; shift 2 ;;
    *) echo "$usage" >&2; exit 2 ;;
  esac
done
if (($# != 1)) || [[ $1 == -* ]]; then
  echo "$usage" >&2
  exit 2
fi
library=$1
[[ -f $library ]] || { echo "check-abi: $library: no such file" >&2; exit 2; }

project_version=$(sed -n '/^project(/,/)/s/.*VERSION \([0-9][0-9.]*\).*/\1/p' "$root/CMakeLists.txt")

# Template instances of the standard library that the library happens to
# export (std::deque<CString>::_M_push_back_aux, placement new, ...) are not
# in its interface: a host has its own copy of each, so they may come
# and go. They are matched by symbol: std::, __gnu_cxx:: and the operators
# new and delete.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
suppressions=$work/std-templates.suppr
cat > "$suppressions" <<'EOF'
[suppress_function]
  symbol_name_regexp = ^_ZZ?N?K?(St|S[abiosd]|9__gnu_cxx)|^_Z(nw|na|dl|da)
[suppress_variable]
  symbol_name_regexp = ^_ZZ?N?K?(St|S[abiosd]|9__gnu_cxx)|^_Z(nw|na|dl|da)
EOF

if [[ $mode == record ]]; then
  output=${output:-$root/abi/libVEKZOLBase-$project_version.abi}
  # The types reachable from the exported symbols, of the public headers
  # only; nothing that depends on the build machine (the paths of the
  # library and of its build directory), type ids from the types themselves.
  # Source locations stay, as file names: reading the headers back needs
  # them. The translation units are named relative to the tree above the
  # headers.
  abidw --headers-dir "$headers" --drop-private-types --exported-interfaces-only \
    --drop-undefined-syms --no-corpus-path --no-comp-dir-path --short-locs --type-id-style hash \
    --suppressions "$suppressions" "$library" |
    sed "s|path='$(dirname "$headers")/|path='|" > "$work/record.abi"
  mv "$work/record.abi" "$output"
  echo "check-abi: recorded the binary interface of $library in $output"
  exit 0
fi

# The SONAME of an ABI file (the abi-corpus element's attribute) or of an ELF
# shared library.
soname_of() {
  if [[ $1 == *.abi ]]; then
    head -n 1 "$1" | sed -n "s/.* soname='\([^']*\)'.*/\1/p"
  else
    readelf -d "$1" | sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p'
  fi
}

if [[ -z $baseline ]]; then
  # The recorded releases in version order; the last one not above the
  # project version wins.
  for file in $(printf '%s\n' "$root"/abi/libVEKZOLBase-*.abi | sort -V); do
    version=$(basename "$file" .abi)
    version=${version##*-}
    if [[ $(printf '%s\n' "$version" "$project_version" | sort -V | tail -n 1) == "$project_version" ]]; then
      baseline=$file
    fi
  done
  [[ -f $baseline ]] || { echo "check-abi: no release at or below $project_version in $root/abi" >&2; exit 2; }
fi
release=$(basename "$baseline" .abi)
release=${release##*-}

options=(--drop-private-types --exported-interfaces-only --suppressions "$suppressions")
if [[ $library != *.abi ]]; then
  # Without debug information abidiff would only compare symbol names.
  if ! readelf -S --wide "$library" | grep ' \.debug_info ' > /dev/null; then
    echo "check-abi: $library has no debug information; build it with -g" >&2
    exit 2
  fi
  options+=(--headers-dir2 "$headers")
fi
status=0
report=$(abidiff "${options[@]}" "$baseline" "$library" 2>&1) || status=$?

if ((status & 3)); then
  echo "$report" >&2
  echo "check-abi: abidiff could not compare $library with $baseline (exit status $status)" >&2
  exit 2
fi

old_soname=$(soname_of "$baseline")
new_soname=$(soname_of "$library")
if [[ $old_soname != "$new_soname" ]]; then
  grep 'summary:' <<<"$report" || true
  echo "check-abi: the major version moved from ${old_soname##*.so.} to ${new_soname##*.so.}" \
    "($old_soname -> $new_soname), so the changes to the binary interface of release $release are declared"
  exit 0
fi

# abidiff flags only removals as incompatible (8); a function or type that
# changed under the same name breaks the hosts built against it just as well.
if ((status & 8)) || grep 'summary:' <<<"$report" | grep -E ' [1-9][0-9]* (Removed|Changed)' > /dev/null; then
  echo "$report"
  echo "check-abi: $new_soname breaks the binary interface of release $release without a new" \
    "SONAME; restore the interface, or raise the major version"
  exit 1
fi
if ((status & 4)); then
  echo "$report"
  echo "check-abi: $new_soname adds to the binary interface of release $release without" \
    "breaking it; the next release is a minor one"
  exit 0
fi
echo "check-abi: $new_soname keeps the binary interface of release $release"
