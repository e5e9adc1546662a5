# The samples of the documents of documents.sh, and how far their times reach; read by run.sh.
# shellcheck shell=bash disable=SC2154 # variables of run.sh and documents.sh

# Each format, for each type of value.
while IFS='|' read -r node format out; do
  expect 0 "$(printf '%b' "$out")" "" samples shapes.vkjson "[\"$node\"]" --format "$format"
done <<'EOF'
n|text|00:00:01:00  1.5\n00:00:01:01  -2.25\n00:00:02:00  0.1
n|csv|time,value\n00:00:01:00,1.5\n00:00:01:01,-2.25\n00:00:02:00,0.1
n|json|[{"time":"00:00:01:00","value":1.5},{"time":"00:00:01:01","value":-2.25},{"time":"00:00:02:00","value":0.1}]
a|text|00:00:00:05  1 -2.5\n00:00:01:10  0 3.25
a|csv|time,x,"left, ""up"""\n00:00:00:05,1,-2.5\n00:00:01:10,0,3.25
a|json|[{"time":"00:00:00:05","value":[1,-2.5]},{"time":"00:00:01:10","value":[0,3.25]}]
b|text|00:00:03:00  -0.5 9.99
b|csv|time,value1,value2\n00:00:03:00,-0.5,9.99
s|text|00:00:01:00  plain\n00:00:01:01  a, b\n00:00:01:02  a"b\n00:00:01:03  c\\u000ad\n00:00:01:04  \n00:00:01:05  é\\u001b\xef\xbf\xbdfour
s|csv|time,value\n00:00:01:00,plain\n00:00:01:01,"a, b"\n00:00:01:02,"a""b"\n00:00:01:03,"c\nd"\n00:00:01:04,\n00:00:01:05,é\x1b\xfffour
s|json|[{"time":"00:00:01:00","value":"plain"},{"time":"00:00:01:01","value":"a, b"},{"time":"00:00:01:02","value":"a\\"b"},{"time":"00:00:01:03","value":"c\\nd"},{"time":"00:00:01:04","value":""},{"time":"00:00:01:05","value":"é\\u001B\xef\xbf\xbdfour"}]
EOF
expect 0 "00:00:01:00  1.5" "" samples shapes.vkjson '[0]' --to 1
expect 0 "00:00:01:00  1.5" "" --private-copy samples shapes.vkjson '[0]' --to 1
# Opening reads no samples; validating reads all of them.
expect 0 "~^version" "" info shapes.vkjson
expect 1 '~^shapes\.vkjson: error 39: Invalid sample value:"sampleSetID:w/sample\[1\]" \(at byte [0-9]+\)$' "" \
  validate shapes.vkjson
expect 0 '[{"time":"00:00:01:00","value":1.5}]' "" --json samples shapes.vkjson '["dataOutline"][0]' --to 1
expect 0 '[{"time":"00:00:01:00","value":1.5}]' "" samples shapes.vkjson '[0]' --at 1 --json --format json
expect 0 "~^time,value" "" samples shapes.vkjson '[0]' --format csv
[ "$(tr -cd '\r' <out.txt)" = "" ] || fail "csv: carriage returns"

# Which samples are chosen. Their values count them from 1 on.
# document|values|options
while IFS='|' read -r document values options; do
  # shellcheck disable=SC2086 # options and their values
  expect 0 "~." "" samples "$document.vkjson" '["n"]' $options
  got=$(tr -d '\r' <out.txt | sed 's/.*  //' | tr '\n' ' ')
  [ "$got" = "$values " ] || fail "$document $options: samples $got, expected $values"
done <<'EOF'
codes|1 2 3 4 5|
codes|2 3 4|--from 00:00:00:10 --to 00:00:01:00
codes|4 3 2|--from 00:00:01:00 --to 00:00:00:10
codes|2 3|--from 00:00:00:10 --to 00:00:00:10
codes|2 3 4 5|--from 0.4
codes|2 3 4 5|--from 0.4399
codes|4 5|--from 0.44
codes|1|--to 0.3999999999999999999999
codes|1 2 3|--to 2/5
codes|4 3 2|--from +1.02 --to 0.40
codes|1 2 3|--from -2 --to 0.999
codes|5 4 3 2 1|--from 99999999999999999999999 --to -99999999999999999999999.5
codes|3|--at 0.4
codes|3|--at 00:00:00:24
codes|3|--at 24999/25000
codes|4|--at 001.0399999999999999999
codes|4|--at 2.959999999999999999999
codes|5|--at 2.96
codes|5|--at 00:00:02;24
codes|5|--at 9999999999
fast|1|--at 0.00834166666666
fast|2|--at 0.0083416666666666666666666667
fast|2|--at 1001/120000
fast|3|--at 1.0009999999999999999
fast|4|--at 1.001
fast|3 4|--from 00:00:00:119 --to 00:00:01:000
dropping|1|--at 60.05999
dropping|2|--at 60.06
dropping|2|--from 00:01:00:02 --to 3003/50
moments|1 2 3 4 5 6|
moments|2 3 4 5|--from 2024-05-01T12:00:00.000Z --to 2024-05-01T12:00:01.000Z
moments|2 3 4 5|--from 2024-05-01T12:00:00Z --to 2024-05-01T12:00:01.0009Z
moments|3 4|--from 2024-05-01T12:00:00.001Z --to 2024-05-01T12:00:00.999Z
moments|4 3|--from 2024-05-01T12:00:00.999Z --to 2024-05-01T12:00:00.001Z
moments|3|--from 2024-05-01T12:00:00.250Z --to 2024-05-01T12:00:00.250Z
moments|3 4 5 6|--from 1714564800.2509
moments|4 5 6|--from 1714564800.251
moments|1 2|--to 1714564800.249
moments|1 2 3|--to 6858259201/4
moments|4 5|--from 5143694401/3 --to 1714564801
moments|2|--at 2024-05-01T12:00:00.249Z
moments|3|--at 1714564800.25
moments|1|--at 1714564799.999
moments|5|--at 2024-05-01T12:00:03.499Z
moments|5|--at 1714564802.75
moments|6|--at 99999999999.5
early|2 3|--from -1.5 --to -1.25
early|3 2|--from -1.2 --to -1.6
early|1|--at -7/4
early|2|--at -1.4999
early|1|--at -1.5001
early|4|--at -0.0
fine|1|--at 1714564800.0000000000019
fine|2 3|--from 2024-05-01T12:00:00.000000000002Z
fine|3|--from 5143694401/3 --to 1714564800.34
fine|2|--at 1714564800.333333333332
offsets|1 2|--to 2024-05-01T14:00:10+02:00
offsets|1 2 3|--from 1714564800.999
offsets|2 3|--from 1714564801
offsets|2|--at 2024-05-01T12:00:19+00:00
offsets|2|--at 2024-05-01T12:00:19.5+00:00
far|1|--to 2035-01-01T00:00:00.0Z
far|1|--at 2100000000.5
old|3|--from -5 --to 2040-01-01T00:00:00.0Z
old|3|--at 2040-01-01T00:00:00.0Z
EOF

# What is refused; nothing is written then.
# status|document|data path|standard error|options
reach="~^zentor: samples before 1901-.* or after 2038-.* cannot be asked for$"
while IFS='|' read -r status document path err options; do
  # shellcheck disable=SC2086 # options and their values
  expect "$status" "" "$err" samples "$document.vkjson" "$path" $options
done <<EOF
1|shapes|["g"]|~^zentor: error 33: |--at 1
1|shapes|["none"]|zentor: error 33: No node found with match name : none.|
1|shapes|["e"]|zentor: error 38: No dynamic sample data present for sample id : e.|--at 1
1|timecode|["ds"]|~^zentor: error 38: |--from 1
1|shapes|["w"]|~^zentor: error 39: .* \\(at byte [0-9]+\\)$|--format csv
1|shapes|["n"]|~^zentor: error 21: |--from 00:00:01:02 --to 1.9
1|shapes|["n"]|~^zentor: error 21: |--at 0.99
1|early|["n"]|~^zentor: error 21: |--at -1.8
1|moments|["n"]|zentor: error 21: no samples in this range|--from 1714564800.3 --to 1714564800.7
1|moments|["n"]|~"code":21,"message":"no samples in this range"|--from 1714564800.7 --to 1714564800.3 --json
1|moments|["n"]|~^zentor: error 21: |--from 99999999999
1|far|["n"]|$reach|
1|far|["n"]|$reach|--from 2020-01-01T00:00:00.0Z
1|far|["n"]|$reach|--at 9999999999
1|old|["n"]|$reach|--to 0.5
1|old|["n"]|$reach|--at 1899-12-31T00:00:00.5Z
1|missing|[0]|~^zentor: error 4: |
2|codes|["n"]|zentor: --from: expected seconds (1.5, 3/2, -2) or a time such as 00:00:00:00, not "1.5s"|--from 1.5s
2|moments|["n"]|zentor: --at: expected seconds (1.5, 3/2, -2) or a time such as 2024-05-01T11:59:59.900Z, not "2024-05-01T12:00Z"|--at 2024-05-01T12:00Z
2|moments|["n"]|~^zentor: --at: expected |--at 2024-05-01T12:00:00.Z
2|moments|["n"]|~^zentor: --to: expected |--to 2024-05-01T12:00:00.000+00:00
2|offsets|["n"]|~^zentor: --to: expected |--to 2024-05-01T12:00:00Z
2|codes|["n"]|~^zentor: --to: expected |--from 1 --to 00:00:60:00
2|fast|["n"]|~^zentor: --to: expected |--to 00:00:00:00
2|codes|["n"]|~^zentor: --at: expected |--at 1/0
2|codes|["n"]|~^zentor: --at: expected |--at 1/4294967296
2|codes|["n"]|~^zentor: --at: expected |--at 1.
2|codes|["n"]|~^zentor: --at: expected |--at .5
2|codes|["n"]|~^zentor: --at: expected |--at --1
2|codes|["n"]|~^zentor: --at: expected |--at 1e3
2|codes|["n"]|zentor: --json excludes --format csv|--json --format csv
2|codes|["n"]|~--at|--at 1 --to 2
2|codes|["n"]|~--at|--from 1 --at 2
2|codes|["n"]|~--format|--format xml
2|codes|["n"]|~.|--from
2|codes|["n"]|~.|[1]
EOF
expect 2 "" "~." samples codes.vkjson
expect 2 "" '~^zentor: --from: expected .*, not "\\u001b\[31m' samples codes.vkjson '[0]' --from "$control"
expect 2 "" '~^zentor: --from: expected .*, not ""$' samples codes.vkjson '[0]' --from ''

# How far the times of a document reach: from the earliest to the latest time of all nodes, not of the texts.
# document|pattern of the text|pattern of the JSON
while IFS='|' read -r document text json; do
  expect 0 "~$text" "" info "$document.vkjson"
  expect 0 "~$json" "" info "$document.vkjson" --json
done <<'EOF'
shapes|samples: +14.time span: +00:00:00:05 to 00:00:04:01|,"samples":14,"firstTime":"00:00:00:05","lastTime":"00:00:04:01","videoSync"
offsets|samples: +5.time span: +2024-05-01T14:00:00\+02:00 to 2024-05-01T13:00:05\+00:00|,"firstTime":"2024-05-01T14:00:00\+02:00","lastTime":"2024-05-01T13:00:05\+00:00"
EOF
expect 0 "[0] dynamic n 3 samples, 00:00:01:00 to 00:00:02:00
[1] dynamic a 2 samples, 00:00:00:05 to 00:00:01:10
[2] dynamic b 1 samples, 00:00:03:00 to 00:00:03:00
[3] dynamic s 6 samples, 00:00:01:00 to 00:00:01:05
[4] dynamic e 0 samples
[5] group g
[6] dynamic w 2 samples, 00:00:04:00 to 00:00:04:01" "" tree shapes.vkjson
expect 0 '[{"path":"[0]","index":0,"type":"dynamic","matchName":"n","displayName":"","sampleCount":3,"firstTime":"2024-05-01T14:00:00+02:00","lastTime":"2024-05-01T15:00:20+03:00"},{"path":"[1]","index":1,"type":"dynamic","matchName":"m","displayName":"","sampleCount":2,"firstTime":"2024-05-01T13:00:00+00:00","lastTime":"2024-05-01T13:00:05+00:00"}]' "" tree offsets.vkjson --json

# Many samples come in pieces that make one whole; a full disk is noticed on the way.
times=$(seq 0 3999 | awk '{ printf "00:%02d:%02d:%02d ", $1 / 1500, $1 / 25 % 60, $1 % 25 }')
# shellcheck disable=SC2046 # a sample each
document "$rate25" '[]' "$(list "$(sampled n 4000 "$(printf %s "$digit" | sed 's/Integer":1/Integer":4/')")")" \
  "$(list "$(samples n $(for time in $times; do echo "$time=\"9876\""; done))")" >long.vkjson
# shellcheck disable=SC2046
expect 0 "$(list $(for time in $times; do printf '{"time":"%s","value":9876} ' "$time"; done))" "" \
  samples long.vkjson '[0]' --json
for format in text csv json; do
  "${zentor[@]}" samples long.vkjson '[0]' --format $format >/dev/full 2>err.txt &&
    fail "samples: a full disk was not noticed"
  matches err.txt "zentor: standard output cannot be written" || fail "samples: $(head -c 300 err.txt)"
done

# A recording will do.
cat >walk.bvh <<'EOF'
HIERARCHY
ROOT Hip
{
  OFFSET 0 0 0
  CHANNELS 3 Xposition Yposition Zposition
  End Site
  {
    OFFSET 0 1 0
  }
}
MOTION
Frames: 3
Frame Time: 0.04
1 2 3
4 5 6
7 8 9
EOF
expect 0 "00:00:00:02  7 8 9
00:00:00:01  4 5 6" "" samples walk.bvh '[0]["node2"]' --from 0.1 --to 0.04
expect 0 "~dynamic nodes: +1.samples: +3.time span: +00:00:00:00 to 00:00:00:02" "" info walk.bvh
sed 's/^4 5 6/4 5,5 6/' walk.bvh >comma.bvh
sed 's/0[.]04/0.001/' walk.bvh >quick.bvh
expect 1 "" "zentor: error 1506: File Cannot be converted. (at byte 159) [comma.bvh:15]" convert comma.bvh
expect 1 "" "zentor: error 1508: Internal converter failure (at byte 146) [quick.bvh:13]" convert quick.bvh
[ ! -e comma.vkjson ] && [ ! -e quick.vkjson ] || fail "captures that cannot be converted left a document"
