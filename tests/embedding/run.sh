#!/usr/bin/env bash
# run.sh EMBEDDING QUORACC: what the example prints of a sample company adds up to what the books say
# its customers owe.
set -euo pipefail
embedding=$1
quoracc=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

"$quoracc" company create "$folder/company.db" --sample >/dev/null
owed=$("$quoracc" sql "SELECT SUM(CustBalance) FROM CustBalance_View" --company "$folder/company.db" \
  --format csv | tail -n 1 | tr -d '\r')
"$embedding" "$folder/company.db" >"$folder/rows"
printed=$(awk '{ units += $NF * 10000 } END { printf "%.4f", units / 10000 }' "$folder/rows")
echo "$(wc -l <"$folder/rows") rows, printed $printed, owed $owed"
[[ $printed == "$owed" && $owed != 0.0000 ]]
