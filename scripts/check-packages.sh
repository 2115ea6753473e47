#!/usr/bin/env bash
# Checks the Debian packages as a user gets them, on this machine (needs
# root, and none of the packages installed before):
#
#   scripts/check-packages.sh [PACKAGE_DIR]   default: build/packages/packages
#
#  1. lintian finds nothing, pedantic and informational tags included (the
#     packages carry no override);
#  2. `apt-get install ./*.deb` installs them with what they depend on;
#  3. the consumer of tests/packaging builds against the installed package
#     with find_package and with pkg-config, and both programs run;
#  4. the installed `vekzol compare` on the bundled models prints the
#     tool tests' expected report and exits 1 (the models differ), and
#     `man vekzol` shows the manual page;
#  5. `apt-get purge` removes them again, and no file or directory below
#     /usr, /etc or /var/lib/dpkg/info is left that was not there before.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
packages_dir="$(cd "${1:-$root/build/packages/packages}" && pwd)"
"$root/scripts/install-deps.sh" --packages

fail() {
  echo "check-packages: $*" >&2
  exit 1
}

mapfile -t debs < <(find "$packages_dir" -maxdepth 1 -name '*.deb' | sort)
[ ${#debs[@]} -eq 3 ] || fail "expected 3 packages in $packages_dir, found ${#debs[@]}"
names=()
for deb in "${debs[@]}"; do
  names+=("$(dpkg-deb -f "$deb" Package)")
done
for name in "${names[@]}"; do
  if dpkg-query -W -f='${Status}' "$name" 2>/dev/null | grep -q 'installed'; then
    fail "$name is installed already; remove it first (this check installs and removes it)"
  fi
done

echo "== lintian"
lintian --pedantic --display-info --fail-on error,warning,info,pedantic \
  "${debs[@]}"
echo "lintian: no tag on ${names[*]}"

work="$(mktemp -d)"
snapshot() {
  find /usr /etc /var/lib/dpkg/info -xdev 2>/dev/null | sort
}
snapshot >"$work/before"
cleanup() {
  # Leave the machine as it was, even when a step failed.
  DEBIAN_FRONTEND=noninteractive apt-get purge -y -qq "${names[@]}" >/dev/null 2>&1 || true
  rm -rf "$work"
}
trap cleanup EXIT

echo "== apt-get install ${debs[*]##*/}"
DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${debs[@]}" >/dev/null
dpkg-query -W -f='${Package} ${Version} ${Status}\n' "${names[@]}"

expected_line="consumer: 2 vertices, edge R-1 from PRC-1 to PRC-2"
echo "== consumer with find_package"
cmake -S "$root/tests/packaging/consumer" -B "$work/consumer" -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$work/consumer" >/dev/null
output="$("$work/consumer/consumer")"
grep -qxF "$expected_line" <<<"$output" || fail "find_package consumer printed: $output"
echo "$output"

echo "== consumer with pkg-config"
# shellcheck disable=SC2046 # pkg-config's flags are separate words
g++ -std=c++17 -o "$work/consumer-pc" "$root/tests/packaging/consumer/main.cpp" \
  $(pkg-config --cflags --libs vekzolbase)
output="$("$work/consumer-pc")"
grep -qxF "$expected_line" <<<"$output" || fail "pkg-config consumer printed: $output"
echo "$output"

echo "== vekzol compare on the bundled models"
[ "$(command -v vekzol)" = /usr/bin/vekzol ] || fail "vekzol is not /usr/bin/vekzol"
status=0
vekzol compare --check-names --roots "$root/examples/models/line-old.json" \
  "$root/examples/models/line-new.json" >"$work/compare.txt" || status=$?
[ "$status" -eq 1 ] || fail "vekzol compare exited $status, not 1"
cmp "$work/compare.txt" "$root/tools/tests/expected/line-compare.txt" ||
  fail "vekzol compare printed another report than tools/tests/expected/line-compare.txt"
echo "vekzol compare: exit 1, the expected report ($(wc -l <"$work/compare.txt") lines)"
man -P cat vekzol 2>/dev/null | grep -q "vekzol" || fail "man vekzol shows no page"
echo "man vekzol: the page is there"

echo "== apt-get purge ${names[*]}"
DEBIAN_FRONTEND=noninteractive apt-get purge -y -qq "${names[@]}" >/dev/null
snapshot >"$work/after"
if ! diff "$work/before" "$work/after" >"$work/left"; then
  cat "$work/left" >&2
  fail "the packages left files behind, or removed others (above: < gone, > new)"
fi
if ldconfig -p | grep -q libVEKZOLBase; then
  fail "the dynamic linker's cache still lists libVEKZOLBase"
fi
echo "purged: nothing left behind"
