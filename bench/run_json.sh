#!/usr/bin/env bash
# Measures how JSON is converted, next to a bare write, RapidJSON and jq, and prints medians and ratios.
# Usage: run_json.sh BUILD_DIR
#   BUILD_DIR       the folder with the bench_* programs
#   BENCH_DIR       where recordings and documents go (default /dev/shm): a file system in memory
#   BENCH_VEHICLES  vehicles of the whole recording (default 26000)
# Figures that have a bound are printed with it, and with "met" or "MISSED".
set -euo pipefail

[[ $# = 1 ]] || { echo "usage: $0 BUILD_DIR" >&2; exit 2; }
source_dir=$(cd "$(dirname "$0")" && pwd)
build_dir=$(cd "$1" && pwd)
vehicles=${BENCH_VEHICLES:-26000}
runs=5

work=$(mktemp -d "${BENCH_DIR:-/dev/shm}/zentor-bench.XXXXXX")
trap 'rm -rf "$work"' EXIT
export TMPDIR=$work LC_ALL=C
. "$source_dir/common.sh"

command -v jq >/dev/null || fail "jq is missing"

sizes=(tenth whole)
declare -A size_vehicles=([tenth]=$((vehicles / 10)) [whole]=$vehicles)
for size in "${sizes[@]}"; do
    "$build_dir/bench_json_generator" "${size_vehicles[$size]}" "$work/$size.json" ||
        fail "failed: bench_json_generator"
done

# The programs take turns, so that a change of the machine's pace meets all of them.
for ((run = 1; run <= runs; ++run)); do
    for size in "${sizes[@]}"; do
        input=$work/$size.json
        warm_bytes=$(($(wc -c <"$input") * 24))  # as much as a document takes
        # The documents of the first run are compared; the copy is made after the timed call.
        copy=()
        if ((run == 1)); then copy=("$work/zentor.vkjson"); fi
        measure "$size.zentor" "$build_dir/bench_convert" time "$input" "${copy[@]}"
        measure "$size.bare" "$build_dir/bench_bare_write" "$(median "$size.zentor.document_bytes")" "$work/bare"
        rm "$work/bare"
        measure "$size.rapidjson" "$build_dir/bench_rapidjson_document" "$input" "$work/rapidjson.vkjson"
        if ((run == 1)); then
            cmp "$work/zentor.vkjson" "$work/rapidjson.vkjson" || fail "$size: zentor and RapidJSON differ"
            rm "$work/zentor.vkjson"
        fi
        rm "$work/rapidjson.vkjson"
        measure_process "$size.jq" jq . "$input"
        rm "$work/output"  # so that the next turn's does not go over pages that are already there
    done
done
echo "The documents of zentor and RapidJSON are the same, byte for byte."

declare -A labels=([bare]="bare write" [zentor]=zentor [rapidjson]=rapidjson [jq]="jq .")
declare -A bounds=([rapidjson]=4 [jq]=10)
for size in "${sizes[@]}"; do
    input_bytes=$(wc -c <"$work/$size.json")
    awk -v size="$size" -v vehicles="${size_vehicles[$size]}" -v nodes="$(median "$size.rapidjson.nodes")" \
        -v runs=$runs -v input="$input_bytes" -v document="$(median "$size.zentor.document_bytes")" 'BEGIN {
            printf "\n%s: %d vehicles, %d nodes, %.1f MB to %.1f MB, medians of %d\n",
                size, vehicles, nodes, input / 1e6, document / 1e6, runs
            printf "%-12s %9s %9s %20s %15s\n", "program", "wall s", "CPU s", "wall to bare write", "CPU to zentor" }'
    bare=$(median "$size.bare.wall_seconds")
    zentor=$(median "$size.zentor.cpu_seconds")
    for program in bare zentor rapidjson jq; do
        wall=$(median "$size.$program.wall_seconds")
        cpu=$(median "$size.$program.cpu_seconds")
        cpu_ratio=$(ratio "$cpu" "$zentor")
        bound=
        [[ $size != whole ]] || bound=${bounds[$program]:-}
        printf '%-12s %9.3f %9.3f %20.2f %15.2f%s\n' "${labels[$program]}" "$wall" "$cpu" "$(ratio "$wall" "$bare")" \
            "$cpu_ratio" "${bound:+  at least $bound: $(within "$bound" "$cpu_ratio")}"
    done
    # Above the start: what the process had taken before the call does not count.
    before=$(median "$size.zentor.peak_kib_before")
    after=$(median "$size.zentor.peak_kib_after")
    above=$(((after - before) * 1024))
    bound=$((input_bytes * 5 + 32000000))
    awk -v after="$after" -v above=$above -v input="$input_bytes" -v bound=$bound \
        -v met="$(within $above $bound)" 'BEGIN {
            printf "zentor peak memory: %d KiB, %.1f MB above the start, %.2f x input; at most %.1f MB: %s\n",
                after, above / 1e6, above / input, bound / 1e6, met }'
done

# The bare write is there as well because a large file in memory can cost more for each byte than a small one.
echo
for program in zentor bare; do
    awk -v program="${labels[$program]}" -v tenth="$(median "tenth.$program.wall_seconds")" \
        -v whole="$(median "whole.$program.wall_seconds")" -v tenth_nodes="$(median tenth.rapidjson.nodes)" \
        -v whole_nodes="$(median whole.rapidjson.nodes)" 'BEGIN {
            tenth *= 1e9 / tenth_nodes
            whole *= 1e9 / whole_nodes
            printf "%s per node: %.1f ns (tenth), %.1f ns (whole), whole to tenth %.3f\n",
                program, tenth, whole, whole / tenth }'
done
