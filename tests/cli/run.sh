#!/bin/bash
# The command as a person uses it. Arguments: the command, with what runs it before it.
set -u
zentor=("$@")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
failures=0

# expect STATUS STDOUT STDERR ARGUMENT...: runs the command and compares; an output beginning with "~" is a pattern.
expect() {
  local status=$1 out=$2 err=$3
  shift 3
  "${zentor[@]}" "$@" >out.txt 2>err.txt </dev/null
  local got=$?
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

expect 0 "csv      Comma Seperated Value
tsv      Tab Seperated Value
txt      Tab Seperated Value
vkjson   Vektra JSON" "" formats
expect 0 '[{"extension":"csv","displayName":"Comma Seperated Value"},{"extension":"tsv","displayName":"Tab Seperated Value"},{"extension":"txt","displayName":"Tab Seperated Value"},{"extension":"vkjson","displayName":"Vektra JSON"}]' "" --json formats
expect 0 "~^zentor [0-9]+\.[0-9]+\.[0-9]+$" "" --version
expect 0 "~convert.*formats|formats.*convert" "" --help

expect 0 "~^table\.vkjson \([0-9]+ bytes\)$" "" convert table.csv --no-validate
cp table.vkjson expected
expect 0 "~^take\.2\.vkjson " "" convert --no-validate take.2.csv
expect 0 "" "" --quiet convert --no-validate table.csv -o folder/out.vkjson
cmp folder/out.vkjson expected || fail "-o FILE"
expect 0 '~^\{"version":"vkjson2.0.0",.*\}\]\}\]\}$' "" convert table.csv -o - --no-validate
cmp out.txt expected || fail "-o -: not the document's bytes"
expect 0 '~^\{"input":"table.csv","output":"folder/json.vkjson","bytes":[0-9]+\}$' "" \
  convert table.csv -o folder/json.vkjson --no-validate --json
cd folder
expect 0 "~^größe.vkjson" "" convert '../accent é/größe.csv' --no-validate --locale de_DE
cd ..
cmp folder/größe.vkjson expected || fail "accented path"

# An existing output stays unless --force replaces it; then it is replaced whole.
echo mine >mine.vkjson
expect 1 "" "zentor: mine.vkjson exists already; --force replaces it" convert table.csv -o mine.vkjson --no-validate
[ "$(cat mine.vkjson)" = mine ] || fail "existing output was touched"
expect 1 "" "zentor: error 25: File Format Not Supported." convert table.unknown -o mine.vkjson --force --no-validate
[ "$(cat mine.vkjson)" = mine ] || fail "a failed conversion touched the output"
expect 0 "~^mine" "" convert table.csv -o mine.vkjson --force --no-validate
cmp mine.vkjson expected || fail "--force"

expect 1 "" 'zentor: error 4: File not exist at input path:"missing.csv".' convert missing.csv --no-validate
expect 1 "" "zentor: error 58: VKJSON output directory does not exists." convert table.csv -o no/out.vkjson --no-validate
expect 1 "" "zentor: folder is not a file" convert table.csv -o folder --force --no-validate
expect 1 "" 'zentor: error 7: "File_IO::Create", Cannot create file.' convert table.csv -o table.csv --force --no-validate
cmp table.csv take.2.csv || fail "an input was overwritten"
expect 0 "~^table" "" convert table.vkjson -o table.vkjson --force --no-validate
cmp table.vkjson expected || fail "a document saved onto itself changed"

# A reader that goes away, or a full disk, is a failure that leaves nothing behind.
mkdir temporary
for k in $(seq 1 4000); do echo "$k,row"; done >long.csv
TMPDIR=$work/temporary "${zentor[@]}" convert long.csv -o - --no-validate 2>/dev/null | head -c 1 >/dev/null
[ -z "$(find temporary -name 'ZTT*')" ] || fail "left over after a broken pipe: $(ls temporary)"
"${zentor[@]}" formats >/dev/full 2>err.txt && fail "a full disk was not noticed"

expect 2 "" "~." convert
expect 2 "" "~." convert table.csv
expect 2 "" "~." nonsense
expect 2 "" "~." formats --nonsense
expect 2 "" "~." convert a b c --no-validate

[ -z "$(find . -name '*.part')" ] || fail "left over: $(find . -name '*.part')"
[ $failures = 0 ] && echo "all as expected"
exit $((failures != 0))
