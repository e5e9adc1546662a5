#!/usr/bin/env bash
# Measures how JSON is converted, next to RapidJSON and jq, and prints medians and ratios.
# Usage: run_json.sh BUILD_DIR
#   BUILD_DIR      the folder with the bench_* programs
#   BENCH_DIR      where texts and documents go (default /dev/shm): a file system in memory
#   BENCH_RECORDS  records of the whole text (default 230000)
# Figures that have a bound are printed with it, and with "met" or "MISSED".
set -euo pipefail

[[ $# = 1 ]] || { echo "usage: $0 BUILD_DIR" >&2; exit 2; }
source_dir=$(cd "$(dirname "$0")" && pwd)
build_dir=$(cd "$1" && pwd)
records=${BENCH_RECORDS:-230000}
runs=5

work=$(mktemp -d "${BENCH_DIR:-/dev/shm}/zentor-bench.XXXXXX")
trap 'rm -rf "$work"' EXIT
export TMPDIR=$work LC_ALL=C
. "$source_dir/common.sh"

command -v jq >/dev/null || fail "jq is missing"

sizes=(tenth whole)
declare -A size_records=([tenth]=$((records / 10)) [whole]=$records)
for size in "${sizes[@]}"; do
    "$build_dir/bench_json_generator" "${size_records[$size]}" "$work/$size.json" || fail "failed: bench_json_generator"
done

# The programs take turns, so that a change of the machine's pace meets all of them.
for ((run = 1; run <= runs; ++run)); do
    for size in "${sizes[@]}"; do
        input=$work/$size.json
        warm_bytes=$(($(wc -c <"$input") * 22))  # as much as a document takes
        # The outputs of the first run are compared; the copy is made after the timed call.
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
    done
done
echo "The documents of zentor and RapidJSON are the same, byte for byte."

declare -A bounds=([rapidjson]=4 [jq]=10)
for size in "${sizes[@]}"; do
    input=$work/$size.json
    values=$(jq '[..] | length' "$input")
    awk -v records="${size_records[$size]}" -v values="$values" -v runs=$runs -v input="$(wc -c <"$input")" \
        -v document="$(median "$size.zentor.document_bytes")" 'BEGIN {
            printf "\n%d records of %d values, %.1f MB to %.1f MB, medians of %d\n",
                records, values, input / 1e6, document / 1e6, runs
            printf "%-12s %9s %9s %16s\n", "program", "wall s", "CPU s", "CPU to zentor" }'
    zentor=$(median "$size.zentor.cpu_seconds")
    for program in bare zentor rapidjson jq; do
        cpu=$(median "$size.$program.cpu_seconds")
        cpu_ratio=$(ratio "$cpu" "$zentor")
        bound=
        [[ $size != whole ]] || bound=${bounds[$program]:-}
        printf '%-12s %9.3f %9.3f %16.2f%s\n' "$program" "$(median "$size.$program.wall_seconds")" "$cpu" \
            "$cpu_ratio" "${bound:+  at least $bound: $(within "$bound" "$cpu_ratio")}"
    done
    # The mapped text counts.
    peak=$(median "$size.zentor.peak_kib_after")
    bound=$(awk -v input="$(wc -c <"$input")" 'BEGIN { print (5 * input + 32e6) / 1024 }')
    printf 'zentor peak memory: %d KiB, at most %.0f: %s\n' "$peak" "$bound" "$(within "$peak" "$bound")"
done

echo
awk -v tenth="$(median tenth.zentor.wall_seconds)" -v whole="$(median whole.zentor.wall_seconds)" \
    -v tenth_records="${size_records[tenth]}" -v whole_records="${size_records[whole]}" 'BEGIN {
        tenth *= 1e9 / tenth_records
        whole *= 1e9 / whole_records
        printf "zentor per record: %.0f ns (tenth), %.0f ns (whole), whole to tenth %.3f\n", tenth, whole, whole / tenth }'
