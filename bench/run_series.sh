#!/usr/bin/env bash
# Measures tables read as recordings: zentor convert --as series, its document read back, next to the readers of DuckDB
# and Polars, which end with the table in memory.
# Usage: run_series.sh BUILD_DIR [--peers]
#   BUILD_DIR    the folder with the command, the plug-ins and the bench_* programs
#   --peers      also measures DuckDB and Polars, installed with npm into BUILD_DIR/bench/peers
#   BENCH_DIR    where tables and documents go (default /dev/shm): a file system in memory
#   BENCH_ROWS   rows of the tables (default 1000000)
set -euo pipefail

if [[ $# -lt 1 || $# -gt 2 || ${2:---peers} != --peers ]]; then
    echo "usage: $0 BUILD_DIR [--peers]" >&2
    exit 2
fi
source_dir=$(cd "$(dirname "$0")" && pwd)
command_dir=$(cd "$1" && pwd)
build_dir=$command_dir/bench
rows=${BENCH_ROWS:-1000000}
runs=5

work=$(mktemp -d "${BENCH_DIR:-/dev/shm}/zentor-bench.XXXXXX")
trap 'rm -rf "$work"' EXIT
export TMPDIR=$work LC_ALL=C ZENTOR_PLUGIN_PATH=$command_dir/plugins/series

. "$source_dir/common.sh"

peers=()
if (($# == 2)); then
    mkdir -p "$build_dir/peers"
    npm install --prefix "$build_dir/peers" --no-save --no-package-lock --no-audit --no-fund --loglevel=error \
        @duckdb/node-api@1.5.6-r.1 nodejs-polars@0.24.1 || fail "npm could not install the peers"
    cp "$source_dir"/*.mjs "$build_dir/peers/"
    peers=(duckdb polars duckdb-all polars-all)
else
    echo "DuckDB and Polars: skipped (--peers measures them)"
fi

# The log of a vehicle with short cells; and the same rows with times and decimals as loggers write them.
"$build_dir/bench_table_generator" "$rows" "$work/short.csv" || fail "failed: bench_table_generator"
awk -F, 'BEGIN { OFS = "," }
    NR == 1 { print; next }
    { seconds = int($1); day = 1 + int(seconds / 86400); rest = seconds % 86400
      $1 = sprintf("2026-06-%02dT%02d:%02d:%06.3fZ", day, rest / 3600, rest / 60 % 60, rest % 60 + $1 - seconds)
      for (k = 2; k <= 7; ++k) $k = sprintf("%.6f", $k)
      print }' "$work/short.csv" >"$work/long.csv"

for ((run = 1; run <= runs; ++run)); do
    for table in short long; do
        warm_bytes=$(($(wc -c <"$work/$table.csv") * 12))
        for program in "${peers[@]}" zentor raw; do
            rm -f "$work/document.vkjson"
            case $program in
                zentor) measure_process "$table.zentor" "$command_dir/zentor" convert "$work/$table.csv" --as series \
                    -o "$work/document.vkjson" --force --quiet ;;
                raw) measure_process "$table.raw" "$command_dir/zentor" convert "$work/$table.csv" --as series \
                    -o "$work/document.vkjson" --force --quiet --no-validate ;;
                *) measure "$table.$program" node "$build_dir/peers/read_table.mjs" "$program" "$work/$table.csv" ;;
            esac
            if [[ $program == raw ]]; then document_bytes=$(wc -c <"$work/document.vkjson"); fi
        done
        echo "$document_bytes" >"$work/$table.bytes"
    done
done

for table in short long; do
    input=$(wc -c <"$work/$table.csv")
    awk -v rows="$rows" -v table=$table -v input="$input" -v document="$(<"$work/$table.bytes")" -v runs=$runs 'BEGIN {
        printf "\n%s cells: %d rows, %.1f MB to %.1f MB, medians of %d\n", table, rows, input / 1e6, document / 1e6, runs
        printf "%-28s %8s %8s %14s %10s %10s\n", "program", "wall s", "CPU s", "rows a second", "MB/s", "to zentor" }'
    for program in zentor raw "${peers[@]}"; do
        label=$program
        if [[ $program == zentor ]]; then label="zentor, read back"; fi
        if [[ $program == raw ]]; then label="zentor --no-validate"; fi
        awk -v label="$label" -v wall="$(median "$table.$program.wall_seconds")" -v rows="$rows" -v input="$input" \
            -v cpu="$(median "$table.$program.cpu_seconds")" -v zentor="$(median "$table.zentor.wall_seconds")" 'BEGIN {
            printf "%-28s %8.3f %8.3f %14.0f %10.1f %10.2f\n",
                label, wall, cpu, rows / wall, input / wall / 1e6, wall / zentor }'
    done
done
