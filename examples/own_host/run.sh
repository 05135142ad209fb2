#!/usr/bin/env bash
# run.sh PROGRAM SOURCE: the example prints what its data says, and stays as short as its page says.
set -euo pipefail
diff - <("$1") <<'END'
2025-03-24  582
2025-03-28  100
QuorAccQueries.CCustomerQueries.OpenCustBalance: this host has no answer to SELECT
END
(($(wc -l <"$2") < 200))
