#!/usr/bin/env bash
# Makes a document of more than 4 GiB, opens it natively and under Wine, and compares samples at the start, in the
# middle and at the end of each node with what was written. Prints how many were compared, and fails when one differs.
# Then the command converts a table whose document is as large, natively and under Wine, without a folder for temporary
# files; the two have to be the same.
# Usage: large_document.sh NATIVE_BUILD_DIR WINDOWS_BUILD_DIR
#   NATIVE_BUILD_DIR, WINDOWS_BUILD_DIR   the build folders of the presets, with the bench_* programs
#   BENCH_DIR      where the document goes (default TMPDIR, else /var/tmp): a disk
#   BENCH_SAMPLES  samples of the document (default 60000000)
#   BENCH_ROWS     rows of the table (default 1800000)
set -euo pipefail

[[ $# = 2 ]] || { echo "usage: $0 NATIVE_BUILD_DIR WINDOWS_BUILD_DIR" >&2; exit 2; }
root=$(cd "$(dirname "$0")/.." && pwd)
native=$(cd "$1" && pwd)/bench
windows=$(cd "$2" && pwd)
samples=${BENCH_SAMPLES:-60000000}
rows=${BENCH_ROWS:-1800000}
folder=${BENCH_DIR:-${TMPDIR:-/var/tmp}}

fail() {
    echo "$*" >&2
    exit 1
}

# A sample takes 74 bytes, a row 2,800 in the document and 70 in the table.
needed=$((samples * 74 / 1000000 + 100))
converted=$((rows * (2 * 2800 + 70) / 1000000 + 100))
needed=$((needed > converted ? needed : converted))
available=$(($(df --output=avail -B 1000000 "$folder" | tail -n 1)))
echo "free space in $folder: $available MB, needed: $needed MB"
((available >= needed)) || fail "set BENCH_DIR to a folder with more free space"

work=$(mktemp -d "$folder/zentor-large.XXXXXX")
trap 'rm -rf "$work"' EXIT
"$native/bench_document_generator" samples "$samples" "$work/large.vkjson" || fail "failed: bench_document_generator"
bytes=$(wc -c <"$work/large.vkjson")
echo "document: $bytes bytes"
[[ -n ${BENCH_SAMPLES:-} ]] || ((bytes > 4 << 30)) || fail "the document is not larger than 4 GiB"

# check NAME COMMAND...
check() {
    local name=$1 compared
    shift
    compared=$("$@") || fail "failed: $name"
    compared=${compared%$'\r'}
    [[ $compared =~ ^samples_compared\ [1-9][0-9]*$ ]] || fail "failed: $name: $compared"
    echo "$name: ${compared#* } samples are what was written"
    [[ $(ls "$work") == "$kept" ]] || fail "$name left temporary files behind"
}

kept=$(ls "$work")
export TMPDIR=$work
check native "$native/bench_check_samples" "$work/large.vkjson" "$samples"
check Wine "$root/scripts/wine" "$windows/bench_check_samples.exe" "$work/large.vkjson" "$samples"

rm "$work/large.vkjson"
"$native/bench_table_generator" "$rows" "$work/table.csv" || fail "failed: bench_table_generator"
# convert NAME COMMAND...
convert() {
    local name=$1
    shift
    (cd "$work" && TMPDIR=/nowhere "$@" convert table.csv -o "$name.vkjson" --quiet) || fail "failed: convert, $name"
    bytes=$(wc -c <"$work/$name.vkjson")
    [[ -n ${BENCH_ROWS:-} ]] || ((bytes > 4 << 30)) || fail "the document of the table is not larger than 4 GiB"
    echo "$name: the command made $bytes bytes"
}
convert native "$native/../zentor"
convert Wine "$root/scripts/wine" "$windows/zentor.exe"
cmp "$work/native.vkjson" "$work/Wine.vkjson" || fail "the platforms made different documents"
