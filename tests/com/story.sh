#!/usr/bin/env bash
# The whole story in one script, in both engine types: registered at its beginning and removed at its
# end, with the rows that the command line prints. story.sh RUN PREFIX SCRIPTS
set -euo pipefail
run=("$1" "$2")
scripts=$3
company='Société ü.db'
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp QuorAccQueries.dll QuorDataLib.dll "$scripts/story.vbs" "$work"
cd "$work"
quoracc() { "${run[@]}" "$OLDPWD/quoracc.exe" "$@" | tr -d '\r'; }

fail() {
  echo "story: $1" >&2
  exit 1
}
rows() { awk -F, '{ printf "%d %s %.4f\n", $1, $2, $3 }' | sort; }

quoracc company create "$company" --sample >/dev/null
for engine in 0 1; do
  dialect=server
  ((engine == 0)) || dialect=desktop
  "${run[@]}" cscript //nologo story.vbs "$company" "$engine" register | tr -d '\r' >said
  quoracc call CCustomerQueries.OpenCustAgingTransactions AllTransactions=true AsOfDate=2025-06-30 \
    --company "$company" --engine "$dialect" --format jsonl >printed
  sed -nE 's/^.*"InvoiDate":"([^"]*)".*"InInvoiId":([0-9]+).*"Balance":"([^"]*)".*$/\2,\1,\3/p' \
    printed | rows >wanted
  sed -n 's/^aging,//p' said | rows >met
  [[ -s wanted ]] || fail "the command line has printed no rows"
  diff wanted met >/dev/null || fail "the script has read other rows than the command line prints"
  cost=$(quoracc call CInventoryHelper.GetAvgCostRange ItemID=1 AtDate=2025-06-30 \
    --company "$company" --engine "$dialect" --format json | sed -E 's/.*"value":"([^"]*)".*/\1/')
  while read -r line; do
    grep -qxF "$line" said || fail "not said in engine type $engine: $line; but $(grep -v ^aging, said)"
  done <<SAID
types: Long Date Currency
average cost: Currency $(sed -E 's/\.?0+$//' <<<"$cost")
inventory account: Long 1200
accounts: 1, first 1200
due date: 2025-04-14
recurring: True 3 2025-03-21 2025-04-21
tax code: 1400 GST 5
unknown member: 438
missing argument: 450
wrong type: 13
overflow: 6
after closing: 3704
objects held: 1
objects held of the host: 1
SAID
  grep -q '^error 80040E14: Syntax error' said || fail "the error of a wrong condition is not told"
done
for key in 'HKCR\QuorAccQueries.CQueries' 'HKCR\QuorDataLib.Application'; do
  ! "${run[@]}" reg query "$key" >/dev/null 2>&1 || fail "$key is left in the registry"
done
