#!/usr/bin/env bash
# Runs one Windows program under Wine: the emulator of the Windows cross
# build (cmake/toolchain-mingw-w64-x86_64.cmake), so CTest starts every test
# program through it.
#
#   scripts/wine-run.sh program.exe [arguments...]
#   scripts/wine-run.sh --keep-server   make the prefix ready and start a Wine
#                                       server that stays until --stop-server
#   scripts/wine-run.sh --stop-server
#
# Without a kept server, each program starts one or joins the running one,
# which quits a few seconds after its last program: a program that starts
# while it quits can fail before it runs, so the test runs keep one server
# for their whole length.
#
# - WINEPREFIX: a private prefix, by default ~/.cache/vekzol-wine. It is made
#   on first use (that takes some seconds), under a lock, so parallel tests
#   can share it.
# - Wine builds a program's TEMP and TMP from the prefix's registry and
#   ignores the Unix ones. The tests give each program a TEMP of its own, so
#   the prefix's registry loses its TEMP and TMP values, and the Unix TEMP,
#   TMP and VEKZOL_TEST_TEMP reach the program as Windows paths
#   (/a/b becomes Z:\a\b), as do the Unix folders in WINEPATH.
# - The locale is pinned to C.UTF-8, which Wine takes as English (United
#   States) with the ANSI code page 1252, whatever the caller's own locale.
# - WINEDEBUG=-all keeps Wine's own diagnostics out of the programs' output.
set -euo pipefail

loader="${VEKZOL_WINE_LOADER:-/usr/lib/wine/wine64}"
if [ ! -x "$loader" ]; then
  echo "wine-run.sh: no Wine loader at $loader (scripts/install-deps.sh --windows installs it)" >&2
  exit 127
fi

wineserver="$(dirname "$loader")/wineserver"

export WINEDEBUG=-all
export WINEPREFIX="${WINEPREFIX:-${XDG_CACHE_HOME:-$HOME/.cache}/vekzol-wine}"
export LC_ALL=C.UTF-8
unset DISPLAY WAYLAND_DISPLAY

# A Unix path as Wine's drive Z: shows it.
windows_path() {
  local path="$1"
  case "$path" in
    /*) path="Z:${path//\//\\}" ;;
  esac
  printf '%s' "$path"
}

# The prefix is ready when its marker names the Wine version in use: a new
# Wine version updates the prefix and would bring the registry values back.
version="$("$loader" --version 2>/dev/null || echo unknown)"
marker="$WINEPREFIX/.vekzol-prefix-ready"
if [ "$(cat "$marker" 2>/dev/null || true)" != "$version" ]; then
  mkdir -p "$(dirname "$WINEPREFIX")"
  (
    flock 9
    if [ "$(cat "$marker" 2>/dev/null || true)" != "$version" ]; then
      # No Mono or Gecko: nothing here needs them, and asking for them
      # would only cost time.
      WINEDLLOVERRIDES="mscoree,mshtml=" "$loader" wineboot --init >/dev/null 2>&1 || true
      for key in 'HKCU\Environment' \
        'HKLM\System\CurrentControlSet\Control\Session Manager\Environment'; do
        for name in TEMP TMP; do
          "$loader" reg delete "$key" /v "$name" /f >/dev/null 2>&1 || true
        done
      done
      # Let the server write the registry back before anyone else starts.
      "$wineserver" -w || true
      printf '%s' "$version" >"$marker"
    fi
  ) 9>"$WINEPREFIX.lock"
fi

case "${1:-}" in
  --keep-server)
    "$wineserver" -p
    # Wine's own background programs (services and devices) start with the
    # first program and stay as long as the server. Started here, apart from
    # any test, they hold none of a test runner's output pipes open.
    "$loader" wineboot </dev/null >/dev/null 2>&1 || true
    exit 0
    ;;
  --stop-server) exec "$wineserver" -k ;;
esac

# Wine passes a Unix variable NAME that it manages itself as WINENAME.
for name in TEMP TMP; do
  if [ -n "${!name+set}" ]; then
    export "WINE$name=$(windows_path "${!name}")"
  fi
done
if [ -n "${VEKZOL_TEST_TEMP+set}" ]; then
  export VEKZOL_TEST_TEMP="$(windows_path "$VEKZOL_TEST_TEMP")"
fi
# WINEPATH (folders added to PATH, where Windows looks for DLLs), separated
# by ';', may name Unix folders too.
if [ -n "${WINEPATH:-}" ]; then
  converted=()
  IFS=';' read -r -a folders <<<"$WINEPATH"
  for folder in "${folders[@]}"; do
    converted+=("$(windows_path "$folder")")
  done
  WINEPATH="$(IFS=';'; printf '%s' "${converted[*]}")"
  export WINEPATH
fi

exec "$loader" "$@"
