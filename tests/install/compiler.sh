#!/usr/bin/env bash
# compiler.sh CMAKE FILE: a compiler that is too old is told so, any other is not.
set -euo pipefail
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cat >"$folder/check.cmake" <<END
include($2)
quoracc_check_compiler(reason)
message("[\${reason}]")
END
check() {
  "$cmake" -D CMAKE_CXX_COMPILER_ID="$1" -D CMAKE_CXX_COMPILER_VERSION="$2" -P "$folder/check.cmake" 2>&1
}
cmake=$1
[[ $(check GNU 10.2) == *"GNU 11 or newer, and this is 10.2"* ]]
[[ $(check Clang 15.0.7) == *"Clang 16 or newer"* ]]
[[ $(check GNU 12.2) == "[]" && $(check Clang 19.1) == "[]" && $(check Intel 1) == "[]" ]]
