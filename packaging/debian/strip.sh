#!/bin/sh
# The strip that the Debian packages' install runs (CMAKE_STRIP of
# scripts/build-packages.sh): as Debian strips its own packages, it also drops
# the compiler's .comment and the .note section, which nothing reads at run
# time. Shared libraries keep only the symbols needed to link against them.
set -e
for file in "$@"; do :; done
case "$(file -b "$file")" in
  *"shared object"*) exec strip --remove-section=.comment --remove-section=.note --strip-unneeded "$@" ;;
  *) exec strip --remove-section=.comment --remove-section=.note "$@" ;;
esac
