#!/usr/bin/env bash
# What can be seen of the DLLs without running them: the four exports, the type library, and that
# they need nothing but the system. inspect.sh OBJDUMP FOLDER
set -euo pipefail
fail() {
  echo "inspect: $1" >&2
  exit 1
}
for library in QuorAccQueries QuorDataLib; do
  told=$("$1" -p "$2/$library.dll")
  for name in DllCanUnloadNow DllGetClassObject DllRegisterServer DllUnregisterServer; do
    grep -qE "\[ *[0-9]+\] $name\$" <<<"$told" || fail "$library.dll does not export $name"
  done
  strange=$(sed -n 's/.*DLL Name: //p' <<<"$told" | grep -viE '^(advapi32|kernel32|msvcrt|odbc32|ole32|oleaut32|user32|shell32)\.dll$' || true)
  [[ -z $strange ]] || fail "$library.dll needs $strange"
  grep -q 'MSFT' "$2/$library.dll" || fail "$library.dll has no type library"
  "$1" -h "$2/$library.dll" | grep -q '\.rsrc' || fail "$library.dll has no resources"
done
