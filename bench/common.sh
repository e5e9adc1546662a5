# What the benchmark scripts share: series of figures and their medians. Needs $work and $build_dir.

fail() {
    echo "$*" >&2
    exit 1
}

# The system hands out memory that has been idle more slowly than memory that was in use a moment ago, by up to twice.
# So that every program finds it alike, $warm_bytes are written and removed before each of them.
warm_memory() {
    "$build_dir/bench_bare_write" "$warm_bytes" "$work/warm" >/dev/null || fail "failed: bench_bare_write"
    rm "$work/warm"
}

# measure KEY COMMAND...: runs the command and adds its figures to the series KEY.NAME.
measure() {
    local key=$1 name value
    shift
    warm_memory
    "$@" >"$work/figures" || fail "failed: $*"
    while read -r name value; do echo "$value" >>"$work/$key.$name"; done <"$work/figures"
}

median() {
    sort -g "$work/$1" | awk '{ values[NR] = $1 } END { print values[int((NR + 1) / 2)] }'
}
