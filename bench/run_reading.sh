#!/usr/bin/env bash
# Measures how documents are opened and queried, next to other readers of JSON, and prints medians and ratios.
# Usage: run_reading.sh BUILD_DIR
#   BUILD_DIR      the folder with the bench_* programs
#   BENCH_DIR      where documents go (default /dev/shm): a file system in memory
#   BENCH_SAMPLES  samples of the large document (default 6000000)
#   BENCH_NODES    nodes of the documents of static nodes (default 1000000)
set -euo pipefail

[[ $# = 1 ]] || { echo "usage: $0 BUILD_DIR" >&2; exit 2; }
source_dir=$(cd "$(dirname "$0")" && pwd)
build_dir=$(cd "$1" && pwd)
samples=${BENCH_SAMPLES:-6000000}
nodes=${BENCH_NODES:-1000000}
runs=5

work=$(mktemp -d "${BENCH_DIR:-/dev/shm}/zentor-bench.XXXXXX")
trap 'rm -rf "$work"' EXIT
export TMPDIR=$work LC_ALL=C
. "$source_dir/common.sh"

generate() { "$build_dir/bench_document_generator" "$1" "$2" "$work/$3.vkjson" || fail "failed: bench_document_generator"; }
generate samples "$samples" whole
generate samples $((samples / 10)) tenth
generate flat "$nodes" flat
generate grouped "$nodes" grouped

peers=(rapidjson simdjson brackets copy)
# The programs take turns, so that a change of the machine's pace meets all of them.
for ((run = 1; run <= runs; ++run)); do
    for document in whole tenth flat grouped; do
        input=$work/$document.vkjson
        warm_bytes=$(($(wc -c <"$input") * 2))
        measure "$document.zentor" "$build_dir/bench_open_document" "$input"
        measure "$document.zentor" "$build_dir/bench_open_document" "$input" memory
        for peer in "${peers[@]}"; do measure "$document.$peer" "$build_dir/bench_read_json" "$peer" "$input"; done
    done
    for document in flat grouped; do
        measure "$document.query" "$build_dir/bench_query_static" "$work/$document.vkjson" $document "$nodes"
    done
done

for document in whole tenth flat grouped; do
    bytes=$(wc -c <"$work/$document.vkjson")
    # All but the samples; in documents of static nodes that is everything.
    outline=$bytes
    [[ $document != whole && $document != tenth ]] ||
        outline=$(($(tail -c 65536 "$work/$document.vkjson" | sed 's/.*"dataOutline"//' | wc -c)))
    awk -v document=$document -v bytes="$bytes" -v runs=$runs 'BEGIN {
        printf "\n%s: %.1f MB, medians of %d\n%-12s %9s %9s %16s\n",
            document, bytes / 1e6, runs, "program", "wall s", "CPU s", "zentor to it" }'
    for program in zentor "${peers[@]}"; do
        awk -v program=$program -v wall="$(median $document.$program.wall_seconds)" \
            -v cpu="$(median $document.$program.cpu_seconds)" -v zentor="$(median $document.zentor.wall_seconds)" \
            'BEGIN { printf "%-12s %9.3f %9.3f %16.2f\n", program, wall, cpu, zentor / wall }'
    done
    awk -v kib="$(median $document.zentor.private_kib)" -v outline="$outline" 'BEGIN {
        printf "zentor private memory: %.1f MB; outline %.1f MB; 32 MB + 8 x outline would be %.1f MB\n",
            kib / 1024, outline / 1048576, 32 + 8 * outline / 1048576 }'
done
echo
for document in flat grouped; do
    echo "static query, $document: $(median $document.query.index_microseconds) us by index," \
        "$(median $document.query.name_microseconds) us by match name"
done
