#!/usr/bin/env bash
# readme.sh README SOURCE: the C++ block of the README is the source, to the letter.
set -euo pipefail
awk '/^```cpp$/ { inside = 1; next } /^```$/ { inside = 0 } inside' "$1" | diff - "$2"
