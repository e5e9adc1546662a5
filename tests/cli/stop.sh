#!/bin/bash
# A conversion that is ended at ten points: by signals that let the command clean up, and by one that does not.
# stop.sh COMMAND
set -u
zentor=$1
here=$(mktemp -d)
trap 'rm -rf "$here"' EXIT
cd "$here" || exit 1
mkdir in out tmp
export TMPDIR=$here/tmp
failures=0
fail() {
  echo "$*" >&2
  failures=$((failures + 1))
}

{
  printf 'HIERARCHY\nROOT a\n{\nCHANNELS 3 Xposition Yposition Zrotation\n}\nFrames: 1\nFrame Time: 0.01\n'
  awk 'BEGIN { for (k = 0; k < 150000; ++k) print "1.25123456 -3.1234567 " k / 1000 }'
} >in/run.bvh
begin=$(date +%s%N)
"$zentor" convert in/run.bvh -o out/whole.vkjson --quiet || fail "the conversion fails anyway"
whole=$(($(date +%s%N) - begin))
stopped=0
for signal in INT TERM HUP KILL; do
  status=$((128 + $(kill -l $signal)))
  for point in 1 2 3 4 5 6 7 8 9 10; do
    rm -rf out/* tmp/*
    echo before >out/old.vkjson
    # A shell's background commands ignore SIGINT, and what was ignored from the beginning stays so.
    env --default-signal=INT "$zentor" convert in/run.bvh -o out/old.vkjson --force --quiet 2>err.txt &
    sleep "$(awk -v whole="$whole" -v point="$point" 'BEGIN { print whole / 1e9 * (point - 0.5) / 10 }')"
    kill -s $signal $! 2>/dev/null
    wait $! 2>/dev/null
    got=$?
    [ $got = 0 ] || [ $got = $status ] || fail "$signal at $point: status $got $(cat err.txt)"
    [ $got = 0 ] || stopped=$((stopped + 1))
    [ -z "$(ls tmp)" ] || fail "$signal at $point: $(ls tmp) in the folder for temporary files"
    others=$(find out -type f ! -name old.vkjson | wc -l)
    if [ $signal = KILL ]; then
      [ "$others" -le 1 ] || fail "$signal at $point: $(ls out)"
      size=$(stat -c %s out/old.vkjson)
      [ "$size" = 7 ] || "$zentor" info out/old.vkjson >/dev/null || fail "$signal at $point: half a document"
    elif [ $got = 0 ]; then
      [ "$others" = 0 ] || fail "$signal at $point, too late: $(ls out)"
    else
      [ "$(ls out)" = old.vkjson ] || fail "$signal at $point: $(ls out)"
      # The output may have been in its place already.
      [ "$(cat out/old.vkjson 2>/dev/null | head -c 7)" = before ] || "$zentor" info out/old.vkjson >/dev/null ||
        fail "$signal at $point: half a document"
    fi
  done
done
[ $stopped -ge 10 ] || fail "only $stopped of 40 conversions were ended"
[ $failures = 0 ] && echo "all as expected, $stopped of 40 ended"
exit $((failures != 0))
