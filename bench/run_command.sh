#!/usr/bin/env bash
# Measures the command as people run it, from its start to its end: a table converted and read back, without reading
# back, and one value fetched from the document. Prints medians and ratios.
# Usage: run_command.sh BUILD_DIR
#   BUILD_DIR    the folder with the command, and the bench_* programs in its folder bench
#   BENCH_DIR    where files go (default /dev/shm): a file system in memory, with 9 GB free
#   BENCH_ROWS   rows of the large table (default 1000000)
# Figures that have a bound are printed with it, and with "met" or "MISSED".
set -euo pipefail

[[ $# = 1 ]] || { echo "usage: $0 BUILD_DIR" >&2; exit 2; }
source_dir=$(cd "$(dirname "$0")" && pwd)
command=$(cd "$1" && pwd)/zentor
build_dir=$(cd "$1/bench" && pwd)
rows=${BENCH_ROWS:-1000000}
runs=5

work=$(mktemp -d "${BENCH_DIR:-/dev/shm}/zentor-bench.XXXXXX")
trap 'rm -rf "$work"' EXIT
export TMPDIR=$work LC_ALL=C
. "$source_dir/common.sh"

declare -A size_rows=([whole]=$rows [tenth]=$((rows / 10)))
for ((run = 1; run <= runs; ++run)); do
    for size in tenth whole; do
        table=$work/$size.csv document=$work/$size.vkjson
        [[ -f $table ]] || "$build_dir/bench_table_generator" "${size_rows[$size]}" "$table" ||
            fail "failed: bench_table_generator"
        # A conversion has its document twice for a moment.
        warm_bytes=$(($(wc -c <"$table") * 80))
        measure "$size.converted" "$build_dir/bench_run_program" "$command" convert "$table" -o "$document" --no-validate
        rm "$document"
        measure "$size.read_back" "$build_dir/bench_run_program" "$command" convert "$table" -o "$document"
        warm_bytes=1000000
        measure "$size.get" "$build_dir/bench_run_program" "$command" get "$document" "[3][$run]"
        measure "$size.sax" "$build_dir/bench_read_json" rapidjson "$document"
        rm "$document"
    done
done

for size in tenth whole; do
    input_kib=$(($(wc -c <"$work/$size.csv") / 1024))
    echo
    echo "$size: ${size_rows[$size]} rows, $((input_kib / 1024)) MiB; medians of $runs"
    printf '%-34s %9s %9s %11s\n' "" "wall s" "CPU s" "peak MiB"
    for program in converted read_back get; do
        printf '%-34s %9.3f %9.3f %11.1f\n' "$program" "$(median "$size.$program.wall_seconds")" \
            "$(median "$size.$program.cpu_seconds")" "$(ratio "$(median "$size.$program.peak_kib")" 1024)"
    done
    printf '%-34s %9.3f %9.3f\n' "RapidJSON's SAX pass" "$(median "$size.sax.wall_seconds")" \
        "$(median "$size.sax.cpu_seconds")"
    to_converted=$(ratio "$(median "$size.read_back.wall_seconds")" "$(median "$size.converted.wall_seconds")")
    to_sax=$(ratio "$(median "$size.get.wall_seconds")" "$(median "$size.sax.wall_seconds")")
    memory=$(($(median "$size.read_back.peak_kib")))
    bound=$((input_kib + 600 * 1024))
    printf 'reading back to not: %.2f; bound 2.5: %s\n' "$to_converted" "$(within "$to_converted" 2.5)"
    printf 'get to the SAX pass: %.2f; bound 1.2: %s\n' "$to_sax" "$(within "$to_sax" 1.2)"
    echo "peak with reading back: $memory KiB; bound input + 600 MiB: $bound KiB: $(within "$memory" "$bound")"
done
