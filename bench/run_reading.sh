#!/usr/bin/env bash
# Measures how documents are opened and queried, next to other readers of JSON, and prints medians and ratios.
# Usage: run_reading.sh BUILD_DIR
#   BUILD_DIR      the folder with the bench_* programs
#   BENCH_DIR      where documents go (default /dev/shm): a file system in memory
#   BENCH_SAMPLES  samples of the large document (default 6000000, at least 60000)
#   BENCH_NODES    nodes of the documents of static nodes (default 1000000)
# Figures that have a bound are printed with it, and with "met" or "MISSED".
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

generate() {
    "$build_dir/bench_document_generator" "${@:2}" "$work/$1.vkjson" || fail "failed: bench_document_generator"
}
declare -A group_sizes=([grouped]=9 [thousands]=1000 [flat]=$nodes)
generate whole samples "$samples"
generate tenth samples $((samples / 10))
for document in "${!group_sizes[@]}"; do generate "$document" nodes "$nodes" "${group_sizes[$document]}"; done

documents=(whole tenth flat grouped)
peers=(rapidjson simdjson brackets copy)
# The programs take turns, so that a change of the machine's pace meets all of them.
for ((run = 1; run <= runs; ++run)); do
    for document in "${documents[@]}"; do
        input=$work/$document.vkjson
        warm_bytes=$(($(wc -c <"$input") * 2))
        measure "$document.zentor" "$build_dir/bench_open_document" "$input"
        measure "$document.zentor" "$build_dir/bench_open_document" "$input" memory
        for peer in "${peers[@]}"; do measure "$document.$peer" "$build_dir/bench_read_json" "$peer" "$input"; done
    done
    measure whole.samples "$build_dir/bench_query_samples" "$work/whole.vkjson" "$samples"
    measure tenth.samples "$build_dir/bench_query_samples" "$work/tenth.vkjson" $((samples / 10))
    for document in "${!group_sizes[@]}"; do
        measure "$document.query" "$build_dir/bench_query_static" "$work/$document.vkjson" "$nodes" \
            "${group_sizes[$document]}"
    done
done

# To RapidJSON: of samples nothing but their end is looked for, an outline is read whole.
declare -A bounds=([whole]=0.02 [tenth]=0.2 [flat]=1.0 [grouped]=1.0)
for document in "${documents[@]}"; do
    bytes=$(wc -c <"$work/$document.vkjson")
    awk -v document="$document" -v bytes="$bytes" -v runs=$runs 'BEGIN {
        printf "\n%s: %.1f MB, medians of %d; the last columns are zentor to the program\n%-12s %9s %9s %9s %9s\n",
            document, bytes / 1e6, runs, "program", "wall s", "CPU s", "wall", "CPU" }'
    for program in zentor "${peers[@]}"; do
        wall=$(median "$document.$program.wall_seconds")
        cpu=$(median "$document.$program.cpu_seconds")
        wall_ratio=$(ratio "$(median "$document.zentor.wall_seconds")" "$wall")
        bound=
        [[ $program != rapidjson ]] || bound=${bounds[$document]}
        printf '%-12s %9.4f %9.4f %9.4f %9.4f%s\n' "$program" "$wall" "$cpu" "$wall_ratio" \
            "$(ratio "$(median "$document.zentor.cpu_seconds")" "$cpu")" \
            "${bound:+  bound $bound: $(within "$wall_ratio" "$bound")}"
    done
    for figure in "peak 64" "kept 32"; do
        read -r name per_node <<<"$figure"
        kib=$(median "$document.zentor.${name}_kib")
        bound=$((1024 + per_node * nodes / 1024))
        [[ $document != whole && $document != tenth ]] || bound=1024
        echo "zentor's private memory, $name: $kib KiB; bound $bound KiB: $(within "$kib" $bound)"
    done
done

echo
wall_ratio=$(ratio "$(median whole.zentor.wall_seconds)" "$(median tenth.zentor.wall_seconds)")
printf 'opening ten times the samples takes %.2f times as long; bound 1.2: %s\n' "$wall_ratio" "$(within "$wall_ratio" 1.2)"

# sample_query FIGURE LABEL DECIMALS WORDS VERDICT: a line for one query and what there is to say of its bound.
sample_query() {
    printf "%-34s %12.$3f %12.$3f %9.2f  %s %s\n" "$2" "$(median "tenth.samples.$1")" \
        "$(median "whole.samples.$1")" "$(ratio "$(median "whole.samples.$1")" "$(median "tenth.samples.$1")")" "$4" "$5"
}
echo
printf '%-34s %12s %12s %9s\n' "queries of samples, microseconds" tenth whole "to tenth"
for kind in number array; do
    single=${kind}_single_microseconds neighbours=${kind}_neighbours_microseconds texts=${kind}_texts_per_second
    sample_query $single "one of a node of ${kind}s" 2 "bound 5:" "$(within "$(median whole.samples.$single)" 5)"
    sample_query $neighbours "1,000 neighbours" 1 "bound 300:" "$(within "$(median whole.samples.$neighbours)" 300)"
    sample_query $texts "all: number texts a second" 0 "at least 6000000:" \
        "$(within 6000000 "$(median whole.samples.$texts)")"
done

echo
echo "queries among $nodes static nodes, microseconds by number of siblings"
printf '%-24s %9s %9s %9s\n' "query" "${group_sizes[grouped]}" "${group_sizes[thousands]}" "${group_sizes[flat]}"
for query in static_data_by_index static_data_by_name child_info_by_index child_info_by_name; do
    printf '%-24s' "$query"
    for document in grouped thousands flat; do
        printf ' %9.2f' "$(median "$document.query.${query}_microseconds")"
    done
    bound=4
    [[ $query != *by_name ]] || bound=6
    echo "  bound of the last $bound: $(within "$(median "flat.query.${query}_microseconds")" $bound)"
done
