#!/usr/bin/env bash
# The component on a script's own objects. own_host.sh RUN PREFIX SCRIPTS
set -euo pipefail
run=("$1" "$2")
"${run[@]}" regsvr32 /s QuorAccQueries.dll
trap '"${run[@]}" regsvr32 /s /u QuorAccQueries.dll' EXIT
said=$(cd "$3" && "${run[@]}" cscript //nologo own_host.vbs | tr -d '\r')
while read -r line; do
  grep -qxF "$line" <<<"$said" || { echo "own_host: not said: $line; but $said" >&2; exit 1; }
done <<'SAID'
rows: 125.5
connection: True
parameters: Variant() Long Date, mode 4
balance: Currency 125.5
cache allowed: True
retry: 125.5, reports 1
continue: True
leave: True, reports 3
objects held: 1
SAID
# Wine's script engine keeps an error's text to itself; its number arrives.
grep -q '^raise: 1001 ' <<<"$said" || { echo "own_host: no error raised; but $said" >&2; exit 1; }
