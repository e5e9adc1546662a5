#!/bin/bash
# The command as a person uses it. Arguments: the command, with what runs it before it.
set -u
zentor=("$@")
here=$(realpath "$(dirname "$0")")
# shellcheck source=tests/wine.sh
. "$here/../wine.sh"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
failures=0

# expect STATUS STDOUT STDERR ARGUMENT...: runs the command and compares; an output beginning with "~" is a pattern.
expect() {
  local status=$1 out=$2 err=$3
  shift 3
  local got
  for _ in 1 2 3; do
    "${zentor[@]}" "$@" >out.txt 2>err.txt </dev/null
    got=$?
    # Only Wine's own failures are tried again.
    [ ${#zentor[@]} = 2 ] && wine_failed "$status$out$err" $got out.txt err.txt || break
  done
  [ $got = "$status" ] || fail "$*: status $got, expected $status"
  matches out.txt "$out" || fail "$*: standard output: $(head -c 300 out.txt)"
  matches err.txt "$err" || fail "$*: standard error: $(head -c 300 err.txt)"
}

matches() {
  local text
  text=$(tr -d '\r' <"$1")
  case $2 in
    "~"*) [[ $text =~ ${2:1} ]] ;;
    *) [ "$text" = "$2" ] ;;
  esac
}

fail() {
  echo "failed: $*"
  failures=$((failures + 1))
}

printf 'a,b\n1,x\n2,y\n' >table.csv
cp table.csv take.2.csv
cp table.csv table.unknown
mkdir folder 'accent é'
cp table.csv 'accent é/größe.csv'

expect 0 "bvh      Biovision Hierarchy
csv      Comma Seperated Value
json     JSON
tsv      Tab Seperated Value
txt      Tab Seperated Value
vkjson   Vektra JSON" "" formats
expect 0 '[{"extension":"bvh","displayName":"Biovision Hierarchy"},{"extension":"csv","displayName":"Comma Seperated Value"},{"extension":"json","displayName":"JSON"},{"extension":"tsv","displayName":"Tab Seperated Value"},{"extension":"txt","displayName":"Tab Seperated Value"},{"extension":"vkjson","displayName":"Vektra JSON"}]' "" --json formats
expect 0 "~^zentor [0-9]+\.[0-9]+\.[0-9]+$" "" --version
expect 0 "~convert.*formats|formats.*convert" "" --help

# What the library itself says on standard output is no result.
cp table.csv unreadable.csv
chmod 000 unreadable.csv
if [ ! -r unreadable.csv ]; then
  expect 1 "" "~^zentor: error " convert unreadable.csv -o -
  expect 1 "" "~^zentor: error " info unreadable.csv --json
fi
rm -f unreadable.csv

expect 0 "~^table\.vkjson \([0-9]+ bytes\)$" "" convert table.csv
cp table.vkjson expected
expect 0 "~^take\.2\.vkjson " "" convert take.2.csv
expect 0 "" "" --quiet convert table.csv -o folder/out.vkjson
cmp folder/out.vkjson expected || fail "-o FILE"
expect 0 '~^\{"version":"vkjson2.0.0",.*\}\]\}\]\}$' "" convert table.csv -o -
cmp out.txt expected || fail "-o -: not the document's bytes"
expect 0 '~^\{"input":"table.csv","output":"folder/json.vkjson","bytes":[0-9]+,"notices":\[\]\}$' "" \
  convert table.csv -o folder/json.vkjson --json
cd folder
expect 0 "~^größe.vkjson" "" convert '../accent é/größe.csv' --locale de_DE
cd ..
cmp folder/größe.vkjson expected || fail "accented path"

# An existing output stays unless --force replaces it; then it is replaced whole.
echo mine >mine.vkjson
expect 1 "" "zentor: mine.vkjson exists already; --force replaces it" convert table.csv -o mine.vkjson
[ "$(cat mine.vkjson)" = mine ] || fail "existing output was touched"
expect 1 "" "zentor: error 25: File Format Not Supported." convert table.unknown -o mine.vkjson --force
[ "$(cat mine.vkjson)" = mine ] || fail "a failed conversion touched the output"
expect 0 "~^mine" "" convert table.csv -o mine.vkjson --force
cmp mine.vkjson expected || fail "--force"

expect 1 "" 'zentor: error 4: File not exist at input path:"missing.csv".' convert missing.csv
expect 1 "" "zentor: error 58: VKJSON output directory does not exists." convert table.csv -o no/out.vkjson
expect 0 "~^folder.table.vkjson " "" convert table.csv -o folder --force
expect 1 "" 'zentor: error 7: "File_IO::Create", Cannot create file.' convert table.csv -o table.csv --force
cmp table.csv take.2.csv || fail "an input was overwritten"
expect 0 "~^table" "" convert table.vkjson -o table.vkjson --force
cmp table.vkjson expected || fail "a document saved onto itself changed"

# What is replaced keeps its permissions, a link leads to where it led, and a file that is protected stays.
if [ ${#zentor[@]} = 1 ]; then
  chmod 600 mine.vkjson
  expect 0 "~^mine" "" convert table.csv -o mine.vkjson --force
  [ "$(stat -c %a mine.vkjson)" = 600 ] || fail "permissions of a replaced file: $(stat -c %a mine.vkjson)"
  ln -s mine.vkjson link.vkjson
  expect 0 "~^link" "" convert table.csv -o link.vkjson --force
  [ -L link.vkjson ] && cmp mine.vkjson expected || fail "a link"
  if [ "$(id -u)" != 0 ]; then
    echo mine >mine.vkjson && chmod 400 mine.vkjson
    expect 1 "" "~error 7" convert table.csv -o mine.vkjson --force
    [ "$(cat mine.vkjson)" = mine ] || fail "a protected file was replaced"
  fi
  # A document is made where it belongs; other folders need no room for it.
  TMPDIR=/nowhere expect 0 "~^mine2" "" convert table.csv -o mine2.vkjson
  TMPDIR=/nowhere expect 0 "~^mine2" "" convert table.csv -o mine2.vkjson --force --no-validate
  cmp mine2.vkjson expected || fail "without a folder for temporary files"
fi

# The language of messages; a locale that is not there is English.
expect 1 "" "zentor: error 25: このファイル形式はサポートされていません。" --locale ja_JP convert table.unknown -o unknown.vkjson
expect 1 "" "zentor: error 4: Am angegebenen Pfad ist keine Datei vorhanden: \"größe.none\"" info größe.none --locale de_DE
expect 1 "" "zentor: error 25: File Format Not Supported." convert table.unknown --locale de_XX -o unknown.vkjson

# On a terminal, which is a console for Windows programs, texts of all languages come out as they are.
on_terminal() {
  script -qc "$(printf '%q ' "${zentor[@]}") $2" typescript >/dev/null </dev/null
  grep -q "$1" typescript || fail "on a terminal: $2: $(head -c 600 typescript)"
}
printf 'größe,名前\n1,2\n' >names.csv
if script -qc true typescript >/dev/null 2>&1; then
  on_terminal '\[1\] group data2 "名前"' 'tree names.csv'
  on_terminal '"größe"' 'convert names.csv -o -'
  on_terminal 'error 4: 入力パスにファイルが存在しません："größe.none"' 'info größe.none --locale ja_JP'
else
  echo "no terminals here: not tried on one"
fi

# A document that cannot be read back is no result, unless nobody asks.
printf 'a\n"x\n' >quote.csv
expect 1 "" "zentor: quote.csv:2: a text has a quotation mark, which the format cannot hold as it is; --faithful keeps it, --no-validate writes it raw, --as series reads quoted cells" convert quote.csv
[ ! -e quote.vkjson ] || fail "a document that cannot be read was kept"
expect 0 "~^quote.vkjson " "zentor: quote.csv: 1 cells are in quotation marks, which became part of them, --as series finds out by itself (first: line 2)
zentor: quote.csv: 1 texts have quotation marks, backslashes or control characters, which the format cannot hold as they are (first: line 2)" convert quote.csv --no-validate

# Texts go into a document as they are, which JSON forbids for some of them; a document's own escapes are fine.
printf '{"a":1,"b":"C:\\\\temp"}' >backslash.json
expect 1 "" "~^zentor: backslash.json:1: a text has a backslash, .*--faithful" convert backslash.json
printf '[{"two\\nlines":1}]' >control.json
expect 1 "" "~^zentor: control.json:1: a text has a control character, .*--faithful" convert control.json -o -
printf '{"a":"x\\"y"}' >quotes.json
expect 1 "" "~^zentor: quotes.json:1: a text has a quotation mark, .*--faithful" convert quotes.json
printf 'a\nC:\\data\n' >backslash.csv
expect 1 "" "~^zentor: backslash.csv:2: a text has a backslash" convert backslash.csv
[ ! -e backslash.vkjson ] && [ ! -e quotes.vkjson ] || fail "a document that is not valid was kept"
expect 0 "" "" convert backslash.json --no-validate --quiet
expect 0 "~^copy.vkjson " "" convert backslash.vkjson -o copy.vkjson

# JSON, and documents under its name.
printf '{"rate":50,"unit":"Hz","on":true,"none":null,"axes":["x",1.5]}' >sensor.json
expect 0 "sensor.vkjson (1258 bytes)" "zentor: sensor.json: 1 null values were left out (first: line 1)" convert sensor.json
expect 0 '[0] static matchName0 "rate"
[1] static matchName1 "unit"
[2] static matchName2 "on"
[3] group matchName3 "axes"
  [3][0] static matchName4 "0"
  [3][1] static matchName5 "1"' "" tree sensor.json
printf '{"a": 1, }' >comma.json
expect 1 "" "zentor: error 1506: File Cannot be converted. (at byte 9) [comma.json:1]" convert comma.json
[ ! -e comma.vkjson ] || fail "a text that is no JSON left a document"
cp sensor.vkjson named.json
expect 0 "named.vkjson (1258 bytes)" "" convert named.json
cmp sensor.vkjson named.vkjson || fail "a document under another name was changed"

# What a document is, as text and as JSON; a table gives what its document gives.
. "$here/documents.sh"
expect 0 "version:               vkjson2.0.0
creator:               by hand
time mode:             timecode, 29.97002997002997 frames per second (30000/1001), drop frame
groups:                2
static nodes:          4
dynamic nodes:         3
samples:               17
video:                 a.mov frame 3
video:                 b.mov at 00:00:01;00" "" info timecode.vkjson
expect 0 '{"version":"vkjson2.0.0","creator":"by hand","timeMode":"timecode","frameRate":{"value":30000,"scale":1001},"framesPerSecond":29.97002997002997,"dropFrame":true,"groups":2,"staticNodes":4,"dynamicNodes":3,"samples":17,"videoSync":[{"fileName":"a.mov","frameNumber":3},{"fileName":"b.mov","timeString":"00:00:01;00"}]}' "" info timecode.vkjson --json
expect 0 '{"version":"vkjson2.0.0","creator":"by hand","timeMode":"utc","precisionLength":3,"isGMT":true,"groups":0,"staticNodes":0,"dynamicNodes":0,"samples":0,"videoSync":[{"fileName":"c.mov","timeString":"2024-02-29T12:00:00.500Z"}]}' "" info utc.vkjson --json
expect 0 "~time mode: +utc, 3 decimals of a second, GMT" "" info utc.vkjson
for document in table.csv table.vkjson; do
  expect 0 '{"version":"vkjson2.0.0","creator":"com.orvane.sensor.csv","timeMode":"none","groups":2,"staticNodes":4,"dynamicNodes":0,"samples":0,"videoSync":[]}' "" --json info $document
done

# The outline; in text no control character of a document gets through.
shown='\u001b[31m\u000a'$'\xef\xbf\xbd'
json='\u001B[31m\n'$'\xef\xbf\xbd'
expect 0 "[0] group g \"A group\"
  [0][0] static n \"Number\"
  [0][1] static s \"$shown\"
  [0][2] static b
  [0][3] static a \"Array\"
  [0][4] group e
[1] dynamic dn 5 samples
[2] dynamic ds \"No samples\" 0 samples
[3] dynamic da 12 samples" "" tree timecode.vkjson
children='[{"path":"[0][0]","index":0,"type":"static","matchName":"n","displayName":"Number"},{"path":"[0][1]","index":1,"type":"static","matchName":"s","displayName":"'$json'"},{"path":"[0][2]","index":2,"type":"static","matchName":"b","displayName":""},{"path":"[0][3]","index":3,"type":"static","matchName":"a","displayName":"Array"},{"path":"[0][4]","index":4,"type":"group","matchName":"e","displayName":"","children":[]}]'
outline='[{"path":"[0]","index":0,"type":"group","matchName":"g","displayName":"A group","children":'$children'},{"path":"[1]","index":1,"type":"dynamic","matchName":"dn","displayName":"","sampleCount":5},{"path":"[2]","index":2,"type":"dynamic","matchName":"ds","displayName":"No samples","sampleCount":0},{"path":"[3]","index":3,"type":"dynamic","matchName":"da","displayName":"","sampleCount":12}]'
# status|data path|standard output|standard error
while IFS='|' read -r status path out err; do
  # shellcheck disable=SC2086 # no path, no argument
  expect "$status" "$out" "$err" tree timecode.vkjson --json $path
done <<EOF
0||$outline
0|["dataOutline"]|$outline
0|["dataOutline"][0]|$children
0|[0][4]|[]
1|[0][0]||{"error":{"code":33,"message":"Leaf node is not a group node.","input":"timecode.vkjson"}}
1|["none"]||{"error":{"code":33,"message":"No node found with match name : none.","input":"timecode.vkjson"}}
1|[4]||~"code":33,"message":"Invalid node index
1|[0||~"code":45,"message":"Missing \]
EOF

# Each kind and type of node in full.
while IFS='|' read -r path out; do
  expect 0 "$out" "" get timecode.vkjson "$path" --json
done <<EOF
["dataOutline"]|{"type":"group","matchName":"dataOutline","displayName":"","children":4}
[0]|{"type":"group","matchName":"g","displayName":"A group","children":5}
[0][0]|{"type":"static","matchName":"n","displayName":"Number","dataType":{"type":"number",$number},"value":2.25}
[0]["s"]|{"type":"static","matchName":"s","displayName":"$json","dataType":{"type":"string",$text},"value":"$json"}
["g"][2]|{"type":"static","matchName":"b","displayName":"","dataType":{"type":"boolean"},"value":true}
["g"]["a"]|{"type":"static","matchName":"a","displayName":"Array","dataType":{"type":"numberArray",$array},"value":[-0.1,1e+21]}
["dn"]|{"type":"dynamic","matchName":"dn","displayName":"","sampleSetID":"sn","interpolation":"linear","hasExpectedFrequencyB":true,"sampleCount":5,"expectedMaxInterSampleDuration":"00:00:00;02","dataType":{"type":"numberString",$number}}
[2]|{"type":"dynamic","matchName":"ds","displayName":"No samples","sampleSetID":"ss","interpolation":"hold","hasExpectedFrequencyB":false,"sampleCount":0,"dataType":{"type":"paddedString",$text}}
[3]|{"type":"dynamic","matchName":"da","displayName":"","sampleSetID":"sa","interpolation":"linear","hasExpectedFrequencyB":false,"sampleCount":12,"dataType":{"type":"numberStringArray",$array}}
EOF
expect 0 "kind:                  static
match name:            s
display name:          $shown
data type:             string
longest, bytes:        4
digits of the length:  1
event marker:          yes
value:                 \"$shown\"" "" get timecode.vkjson '[0][1]'
expect 0 "~range: +y: -1\.5 to 2\.25, legal -100 to 1e\+21.*value: +-0\.1 1e\+21$" "" get timecode.vkjson '[0][3]'
expect 0 "~interpolation: +linear.samples: +5.longest interval: +00:00:00;02" "" get timecode.vkjson '[1]'
expect 1 "" '{"error":{"code":33,"message":"No node found with match name : none.","input":"timecode.vkjson"}}' get timecode.vkjson '["none"]' --json

# Every document is looked at; a message of a document shows no control characters either.
head -c 100 timecode.vkjson >cut.vkjson
: >empty.vkjson
printf '{"version":"vkjson2.0.0","%s":1}' "$control" >key.vkjson
expect 0 "timecode.vkjson: ok
table.csv: ok" "" validate timecode.vkjson table.csv
expect 1 "~^cut\.vkjson: error 32: [^
]* \(at byte 94\)
timecode\.vkjson: ok
empty\.vkjson: error 54: [^
]*[^)]
key\.vkjson: error 32: [^
]*\\\\u001b\[31m\\\\u000a[^
]* \(at byte 25\)
no\.vkjson: error 4: [^
]*[^)]$" "" validate cut.vkjson timecode.vkjson empty.vkjson key.vkjson no.vkjson
expect 0 '[{"document":"timecode.vkjson","ok":true},{"document":"table.csv","ok":true}]' "" \
  validate timecode.vkjson table.csv --json
expect 1 '~^\[\{"document":"cut\.vkjson","ok":false,"code":32,"message":"[^"]+","offset":94\},\{"document":"empty\.vkjson","ok":false,"code":54,"message":"[^"]+"\},\{"document":"timecode\.vkjson","ok":true\}\]$' "" \
  validate --json cut.vkjson empty.vkjson timecode.vkjson
for arguments in "info cut.vkjson" "tree cut.vkjson" "get cut.vkjson [0]"; do
  # shellcheck disable=SC2086 # a command and its arguments
  expect 1 "" "~^zentor: error 32: .* \(at byte 94\)$" $arguments
done
expect 1 "" "~^zentor: error 32: .*\\\\u001b\[31m\\\\u000a" info key.vkjson

. "$here/samples.sh"
. "$here/convert.sh"

# A reader that goes away, or a full disk, is a failure that leaves nothing behind.
mkdir temporary
for k in $(seq 1 4000); do echo "$k,row"; done >long.csv
TMPDIR=$work/temporary "${zentor[@]}" convert long.csv -o - 2>err.txt | head -c 1 >/dev/null
[ ${#zentor[@]} = 2 ] || [ ! -s err.txt ] || fail "a closed pipe: $(cat err.txt)"
[ -z "$(find temporary -name 'ZTT*')" ] || fail "left over after a broken pipe: $(ls temporary)"
for command in formats "tree long.csv" "tree long.csv --json"; do
  # shellcheck disable=SC2086 # a command and its arguments
  "${zentor[@]}" $command >/dev/full 2>err.txt && fail "$command: a full disk was not noticed"
  grep -qF "standard output cannot be written" err.txt || fail "$command: $(head -c 300 err.txt)"
done

# A long output comes in pieces that make one whole.
nodes=$(seq 0 3998 | awk '{ printf "%s{\"path\":\"[0][%d]\",\"index\":%d,\"type\":\"static\",\"matchName\":\"data%d\",\"displayName\":\"1 %d\"}", $1 ? "," : "", $1, $1, $1 + 1, $1 }')
expect 0 "[$nodes]" "" tree long.csv '[0]' --json

expect 2 "" "~." convert
expect 2 "" "~." get table.csv
expect 2 "" "~." tree table.csv '[0]' more
expect 2 "" "~." validate
expect 2 "" "~." nonsense
expect 2 "" "~." formats --nonsense
expect 1 "" "zentor: error 4: File not exist at input path:\"a\". [a]" convert a b c

[ -z "$(find . -name 'ZTT*')" ] || fail "left over: $(find . -name 'ZTT*')"
[ $failures = 0 ] && echo "all as expected"
exit $((failures != 0))
