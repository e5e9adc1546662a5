#!/usr/bin/env bash
# Runs all programs of the benchmark in one go and prints their medians and ratios.
# Usage: run.sh BUILD_DIR [--peers]
#   BUILD_DIR    the folder with the bench_* programs
#   --peers      also measures DuckDB and Polars, installed with npm into BUILD_DIR/peers
#   BENCH_DIR    where tables and documents go (default /dev/shm): a file system in memory
#   BENCH_ROWS   rows of the whole table (default 1000000)
set -euo pipefail

if [[ $# -lt 1 || $# -gt 2 || ${2:---peers} != --peers ]]; then
    echo "usage: $0 BUILD_DIR [--peers]" >&2
    exit 2
fi
source_dir=$(cd "$(dirname "$0")" && pwd)
build_dir=$(cd "$1" && pwd)
peers=$(($# == 2))
rows=${BENCH_ROWS:-1000000}
runs=5
columns=9

work=$(mktemp -d "${BENCH_DIR:-/dev/shm}/zentor-bench.XXXXXX")
trap 'rm -rf "$work"' EXIT
export TMPDIR=$work LC_ALL=C

. "$source_dir/common.sh"

if ((peers)); then
    # The programs are copied because imports are looked up from the folder of the importing file.
    mkdir -p "$build_dir/peers"
    npm install --prefix "$build_dir/peers" --no-save --no-package-lock --no-audit --no-fund --loglevel=error \
        @duckdb/node-api@1.5.6-r.1 nodejs-polars@0.24.1 || fail "npm could not install the peers"
    cp "$source_dir"/*.mjs "$build_dir/peers/"
else
    echo "DuckDB and Polars: skipped (--peers measures them)"
fi

# Empty without the file.
median_if_measured() { if [[ -e $work/$1 ]]; then median "$1"; fi; }

sizes=(tenth whole)
declare -A size_rows=([tenth]=$((rows / 10)) [whole]=$rows)
for size in "${sizes[@]}"; do
    "$build_dir/bench_table_generator" "${size_rows[$size]}" "$work/$size.csv" || fail "failed: bench_table_generator"
done

# The programs take turns, so that a change of the machine's pace meets all of them.
for ((run = 1; run <= runs; ++run)); do
    for size in "${sizes[@]}"; do
        input=$work/$size.csv
        warm_bytes=$(($(wc -c <"$input") * 40))  # as much as a document takes
        # The outputs of the first run are compared; the copy is made after the timed call.
        copy=()
        if ((run == 1)); then copy=("$work/zentor.vkjson"); fi
        measure "$size.zentor" "$build_dir/bench_convert" time "$input" "${copy[@]}"
        measure "$size.bare" "$build_dir/bench_bare_write" "$(median "$size.zentor.document_bytes")" "$work/bare"
        rm "$work/bare"
        measure "$size.rapidjson" "$build_dir/bench_rapidjson_writer" "$input" "$work/rapidjson.vkjson"
        if ((run == 1)); then
            cmp "$work/zentor.vkjson" "$work/rapidjson.vkjson" || fail "$size: zentor and RapidJSON differ"
            rm "$work/zentor.vkjson"
        fi
        if ((peers)); then
            measure "$size.duckdb" node "$build_dir/peers/duckdb_table.mjs" "$input" "$work/duckdb.vkjson"
            if ((run == 1)); then
                tr -d '\n' <"$work/duckdb.vkjson" | cmp - "$work/rapidjson.vkjson" || fail "$size: DuckDB differs"
            fi
            rm "$work/duckdb.vkjson"
            measure "$size.polars" node "$build_dir/peers/polars_table.mjs" "$input" "$work/polars.ndjson"
            rm "$work/polars.ndjson"
        fi
        rm "$work/rapidjson.vkjson"
    done
done
echo "The documents of zentor and RapidJSON are the same, byte for byte."

for size in "${sizes[@]}"; do
    input_bytes=$(wc -c <"$work/$size.csv")
    awk -v rows="${size_rows[$size]}" -v columns=$columns -v runs=$runs -v input="$input_bytes" \
        -v document="$(median "$size.zentor.document_bytes")" 'BEGIN {
            printf "\n%d rows x %d columns, %.1f MB to %.1f MB, medians of %d\n",
                rows, columns, input / 1e6, document / 1e6, runs
            printf "%-20s %9s %9s %14s %10s\n", "program", "wall s", "CPU s", "to bare write", "to zentor" }'
    for program in bare zentor rapidjson duckdb polars; do
        wall=$(median_if_measured "$size.$program.wall_seconds")
        if [[ -z $wall ]]; then continue; fi
        label=$program
        if [[ $program == polars ]]; then label="polars (NDJSON)"; fi
        awk -v label="$label" -v wall="$wall" -v cpu="$(median "$size.$program.cpu_seconds")" \
            -v bare="$(median "$size.bare.wall_seconds")" -v zentor="$(median "$size.zentor.wall_seconds")" 'BEGIN {
                printf "%-20s %9.3f %9.3f %14.2f %10.2f\n", label, wall, cpu, wall / bare, wall / zentor }'
    done
    awk -v before="$(median "$size.zentor.peak_kib_before")" -v after="$(median "$size.zentor.peak_kib_after")" \
        -v input="$input_bytes" 'BEGIN {
            printf "zentor peak memory: %d KiB, %d KiB above the start, %.2f x input\n",
                after, after - before, (after - before) * 1024 / input }'
done

# The bare write is there as well because a large file in memory can cost more for each byte than a small one.
echo
for program in zentor bare; do
    awk -v program=$program -v tenth="$(median "tenth.$program.wall_seconds")" \
        -v whole="$(median "whole.$program.wall_seconds")" -v tenth_cells=$((size_rows[tenth] * columns)) \
        -v whole_cells=$((size_rows[whole] * columns)) 'BEGIN {
            tenth *= 1e9 / tenth_cells
            whole *= 1e9 / whole_cells
            printf "%s per cell: %.1f ns (tenth), %.1f ns (whole), whole to tenth %.3f\n",
                program, tenth, whole, whole / tenth }'
done
