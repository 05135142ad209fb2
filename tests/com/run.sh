#!/usr/bin/env bash
# Runs a program by Wine in a registry of its own: run.sh PREFIX PROGRAM [ARGUMENT]...
set -euo pipefail
export LC_ALL=C.UTF-8 WINEPREFIX=$1 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
shift
[[ -e $WINEPREFIX/system.reg ]] || wine wineboot --init >/dev/null 2>&1
output=$(mktemp)
trap 'rm -f "$output"' EXIT
# One time in a hundred Wine does not start the program, and says so in its place.
for _ in 1 2 3; do
  status=0
  # What Wine says of a missing 32-bit side is no output of the program.
  wine "$@" >"$output" 2> >(grep -vE 'wine32|multiarch|dpkg --add|apt-get|^$' >&2) || status=$?
  grep -q '^Application could not be started' "$output" || break
done
cat "$output"
exit "$status"
