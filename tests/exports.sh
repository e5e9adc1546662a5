#!/bin/bash
# The library exports five functions and nothing else; the DLL needs system libraries only. Argument: the library.
set -eu
expected="CreateZentor_1 DestroyZentor_1 GetLastException_1 GetLocalizedErrorMsg_1 GetSupportedFormats_1"
case $1 in
  *.dll)
    dump=$(x86_64-w64-mingw32-objdump -p "$1")
    header=$(realpath "$(dirname "$0")/../include/zentor/zentor.h")
    python3 - "$1" "$header" <<'END' || { echo "no version resource, or another version" >&2; exit 1; }
import re, sys
version = re.search('define ZENTOR_VERSION "(.*)"', open(sys.argv[2]).read())[1]
resource = "".join(name + "\0" for name in ("ProductVersion", version)).encode("utf-16-le")
sys.exit(resource.replace(b"\0\0", b"") not in open(sys.argv[1], "rb").read().replace(b"\0\0", b""))
END
    exported=$(sed -n 's/^[[:space:]]*\[ *[0-9]*\] \([A-Za-z_0-9]*\)$/\1/p' <<<"$dump")
    imported=$(sed -n 's/.*DLL Name: //p' <<<"$dump" | tr 'A-Z\n' 'a-z ')
    echo "imports: $imported"
    for name in $imported; do
      case $name in kernel32.dll | msvcrt.dll | user32.dll | advapi32.dll | shell32.dll | api-ms-win-*) ;; *) exit 1 ;; esac
    done
    ;;
  *)
    # Functions of a version, so that programs that need a newer library are told so; and that version's own symbol.
    exported=$(nm -D --defined-only "$1" | awk '$NF !~ /^ZENTOR_0/ { sub("@@ZENTOR_0$", "", $NF); print $NF }')
    readelf -d "$1" | grep -q 'SONAME.*\[libzentor.so.0\]' || { echo "another SONAME" >&2; exit 1; }
    ;;
esac
exported=$(sort <<<"$exported" | tr '\n' ' ')
echo "exports: $exported"
[ "$exported" = "$expected " ]
