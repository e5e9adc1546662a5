#!/usr/bin/env bash
# Measures how motion captures are converted, next to Assimp, and prints medians and ratios.
# Usage: run_captures.sh BUILD_DIR
#   BUILD_DIR      the folder with the bench_* programs
#   BENCH_DIR      where captures and documents go (default /dev/shm): a file system in memory
#   BENCH_FRAMES   frames of the whole capture (default 100000)
#   BENCH_EXPORTS  how often Assimp exports the whole capture (default 3, at most 5): it takes long
# Figures that have a bound are printed with it, and with "met" or "MISSED".
set -euo pipefail

[[ $# = 1 ]] || { echo "usage: $0 BUILD_DIR" >&2; exit 2; }
source_dir=$(cd "$(dirname "$0")" && pwd)
build_dir=$(cd "$1" && pwd)
frames=${BENCH_FRAMES:-100000}
exports=${BENCH_EXPORTS:-3}
joints=60
runs=5

work=$(mktemp -d "${BENCH_DIR:-/dev/shm}/zentor-bench.XXXXXX")
trap 'rm -rf "$work"' EXIT
export TMPDIR=$work LC_ALL=C
. "$source_dir/common.sh"

command -v assimp >/dev/null || fail "assimp is missing"

# generate NAME FRAMES
generate() {
    "$build_dir/bench_capture_generator" $joints "$2" "$work/$1.bvh" || fail "failed: bench_capture_generator"
}
sizes=(tenth whole)
declare -A size_frames=([tenth]=$((frames / 10)) [whole]=$frames)
for size in "${sizes[@]}"; do generate "$size" "${size_frames[$size]}"; done

# The programs take turns, so that a change of the machine's pace meets all of them.
for ((run = 1; run <= runs; ++run)); do
    for size in "${sizes[@]}"; do
        input=$work/$size.bvh
        warm_bytes=$(($(wc -c <"$input") * 6))  # more than a document and its temporary files take
        # The documents of the first run are checked; the copy is made after the timed call.
        copy=()
        if ((run == 1)); then copy=("$work/zentor.vkjson"); fi
        measure "$size.zentor" "$build_dir/bench_convert" time "$input" "${copy[@]}"
        if ((run == 1)); then
            "$build_dir/bench_check_capture" "$work/zentor.vkjson" "$input" >/dev/null || fail "$size: wrong document"
            rm "$work/zentor.vkjson"
        fi
        measure "$size.zentor" "$build_dir/bench_convert" memory "$input"
        measure_process "$size.info" assimp info "$input"
        if [[ $size == whole ]] && ((run <= exports)); then
            measure_process "$size.export" assimp export "$input" "$work/export.json" -fassjson
            rm "$work/export.json"
        fi
    done
done

# Memory for ten times the frames is compared from half the capture on: shorter ones do not fill what there is for
# samples in memory, and the document of ten whole ones would be too large.
declare -A memory_frames=([half]=$((frames / 2)) [fivefold]=$((frames * 5)))
warm_bytes=0
for size in half fivefold; do
    generate $size "${memory_frames[$size]}"
    measure $size.zentor "$build_dir/bench_convert" memory "$work/$size.bvh"
    rm "$work/$size.bvh"
done

declare -A labels=([zentor]=zentor [info]="assimp info" [export]="assimp export")
declare -A bounds=([info]=2 [export]=6)
for size in "${sizes[@]}"; do
    awk -v size="$size" -v frames="${size_frames[$size]}" -v joints=$joints -v runs=$runs \
        -v input="$(wc -c <"$work/$size.bvh")" -v document="$(median "$size.zentor.document_bytes")" 'BEGIN {
            printf "\n%s: %d frames of %d joints, %.1f MB to %.1f MB, medians of %d\n",
                size, frames, joints, input / 1e6, document / 1e6, runs
            printf "%-14s %9s %9s %10s\n", "program", "wall s", "CPU s", "to zentor" }'
    zentor=$(median "$size.zentor.wall_seconds")
    for program in zentor info export; do
        [[ -e $work/$size.$program.wall_seconds ]] || continue
        wall=$(median "$size.$program.wall_seconds")
        wall_ratio=$(ratio "$wall" "$zentor")
        bound=
        [[ $size != whole ]] || bound=${bounds[$program]:-}
        printf '%-14s %9.3f %9.3f %10.2f%s\n' "${labels[$program]}" "$wall" \
            "$(median "$size.$program.cpu_seconds")" "$wall_ratio" \
            "${bound:+  at least $bound: $(within "$bound" "$wall_ratio")}"
    done
done
((exports == 0)) || echo "assimp export: of $exports"

echo
printf '%-38s %9s %9s %9s %9s %18s\n' "zentor memory, KiB" tenth whole half fivefold "fivefold to half"
# memory FIGURE LABEL: the peak at four sizes, with the bounds: 256 MB, and 3 % more for ten times the frames.
memory() {
    local whole growth
    whole=$(median "whole.zentor.$1")
    growth=$(ratio "$(median "fivefold.zentor.$1")" "$(median "half.zentor.$1")")
    printf '%-38s %9d %9d %9d %9d %18.3f\n  whole, bound 250000: %s; fivefold to half, bound 1.03: %s\n' "$2" \
        "$(median "tenth.zentor.$1")" "$whole" "$(median "half.zentor.$1")" "$(median "fivefold.zentor.$1")" "$growth" \
        "$(within "$whole" 250000)" "$(within "$growth" 1.03)"
}
memory peak_kib "resident, with mapped files"
memory private_kib "private"

echo
awk -v tenth="$(median tenth.zentor.wall_seconds)" -v whole="$(median whole.zentor.wall_seconds)" \
    -v joints=$joints -v tenth_frames="${size_frames[tenth]}" -v whole_frames="${size_frames[whole]}" 'BEGIN {
        numbers = 3 * joints + 3
        tenth *= 1e9 / (tenth_frames * numbers)
        whole *= 1e9 / (whole_frames * numbers)
        printf "zentor per number: %.1f ns (tenth), %.1f ns (whole), whole to tenth %.3f\n", tenth, whole, whole / tenth }'
