#!/usr/bin/env bash
# shared.sh CMAKE SOURCE: the component as shared libraries, and a user of it. What they show is what
# the headers declare, nothing else.
set -euo pipefail
cmake=$1
source=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

"$cmake" -S "$source" -B "$folder/shared" -G Ninja -D BUILD_SHARED_LIBS=ON -D QUORACC_HOST=OFF \
  -D QUORACC_TESTS=OFF -D CMAKE_BUILD_TYPE=Debug -D CMAKE_CXX_FLAGS="-O0 -g0" >/dev/null
"$cmake" --build "$folder/shared" >/dev/null
"$cmake" --install "$folder/shared" --prefix "$folder/prefix" >/dev/null
"$cmake" -S "$source/tests/install/consumer" -B "$folder/consumer" -G Ninja -D WITH_HOST=OFF \
  -D CMAKE_PREFIX_PATH="$folder/prefix" >/dev/null
"$cmake" --build "$folder/consumer" >/dev/null
"$folder/consumer/component" "$folder/consumer/libplugin.so"

shown=$(nm -DC --defined-only "$folder"/prefix/lib*/libquoracc_*.so | sed -n 's/^[0-9a-f]* . //p')
[[ $shown == *QuorAccQueries::CCustomerQueries* ]]
! grep -vE '^((non-virtual |virtual )?thunk|typeinfo|typeinfo name|vtable|VTT|guard variable|TLS (init|wrapper) function) (to|for) Quor|^Quor' <<<"$shown"
