#!/usr/bin/env bash
# run.sh CMAKE BUILD EMBEDDING OPTION...: installs BUILD, configures the consumer with the options,
# and runs its programs and the installed one.
set -euo pipefail
cmake=$1
build=$2
embedding=$3
shift 3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
prefix=$folder/prefix

"$cmake" --install "$build" --prefix "$prefix" >/dev/null
"$cmake" -S "$(dirname "$0")/consumer" -B "$folder/build" -D CMAKE_PREFIX_PATH="$prefix" "$@" >/dev/null
"$cmake" --build "$folder/build" >/dev/null

"$folder/build/component"
"$prefix/bin/quoracc" --version
"$embedding/run.sh" "$folder/build/embedding" "$prefix/bin/quoracc"
