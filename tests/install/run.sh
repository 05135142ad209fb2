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
consumer=$(dirname "$0")/consumer

"$cmake" --install "$build" --prefix "$prefix" >/dev/null
"$cmake" -S "$consumer" -B "$folder/build" -D CMAKE_PREFIX_PATH="$prefix" "$@" >/dev/null
"$cmake" --build "$folder/build" >/dev/null

# The plugin has a copy of the component of its own, on purpose.
ASAN_OPTIONS="${ASAN_OPTIONS:+$ASAN_OPTIONS:}detect_odr_violation=0" \
  "$folder/build/component" "$folder/build/libplugin.so"
"$prefix/bin/quoracc" --version
"$embedding/run.sh" "$folder/build/embedding" "$prefix/bin/quoracc"

for file in man/man1/quoracc.1 bash-completion/completions/quoracc zsh/site-functions/_quoracc \
  fish/vendor_completions.d/quoracc.fish doc/QuorAccQueries/README.md \
  doc/QuorAccQueries/docs/company.md QuorAccQueries/schema/ledger.sql; do
  [[ -s $prefix/share/$file ]] || { echo "share/$file is missing" >&2; exit 1; }
done

# With the other compiler, the component alone; sanitizers do not mix compilers.
if [[ $* != *-fsanitize* ]] && command -v clang++-19 >/dev/null; then
  "$cmake" -S "$consumer" -B "$folder/clang" -D CMAKE_PREFIX_PATH="$prefix" -D WITH_HOST=OFF \
    -D CMAKE_CXX_COMPILER=clang++-19 >/dev/null
  "$cmake" --build "$folder/clang" >/dev/null
  "$folder/clang/component" "$folder/clang/libplugin.so" >/dev/null
fi
