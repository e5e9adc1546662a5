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

# measure_process KEY COMMAND...: likewise for a program that does not measure itself: the times of its whole life.
measure_process() {
    local key=$1 TIMEFORMAT='%R %U %S' wall user system
    shift
    warm_memory
    { time "$@" >"$work/output" 2>&1; } 2>"$work/figures" || fail "failed: $*: $(tail -n 3 "$work/output")"
    read -r wall user system <"$work/figures"
    echo "$wall" >>"$work/$key.wall_seconds"
    awk -v user="$user" -v system_time="$system" 'BEGIN { print user + system_time }' >>"$work/$key.cpu_seconds"
}

median() {
    sort -g "$work/$1" | awk '{ values[NR] = $1 } END { print values[int((NR + 1) / 2)] }'
}

# within FIGURE BOUND: whether an upper bound is met.
within() { awk -v figure="$1" -v bound="$2" 'BEGIN { print figure <= bound ? "met" : "MISSED" }'; }
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.6f", a / b }'; }
