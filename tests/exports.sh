#!/bin/bash
# The library exports five functions and nothing else; the DLL needs system libraries only. Argument: the library.
set -eu
expected="CreateZentor_1 DestroyZentor_1 GetLastException_1 GetLocalizedErrorMsg_1 GetSupportedFormats_1"
case $1 in
  *.dll)
    dump=$(x86_64-w64-mingw32-objdump -p "$1")
    exported=$(sed -n 's/^[[:space:]]*\[ *[0-9]*\] \([A-Za-z_0-9]*\)$/\1/p' <<<"$dump")
    imported=$(sed -n 's/.*DLL Name: //p' <<<"$dump" | tr 'A-Z\n' 'a-z ')
    echo "imports: $imported"
    for name in $imported; do
      case $name in kernel32.dll | msvcrt.dll | user32.dll | advapi32.dll | shell32.dll | api-ms-win-*) ;; *) exit 1 ;; esac
    done
    ;;
  *) exported=$(nm -D --defined-only "$1" | awk '{print $NF}') ;;
esac
exported=$(sort <<<"$exported" | tr '\n' ' ')
echo "exports: $exported"
[ "$exported" = "$expected " ]
