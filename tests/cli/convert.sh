# Conversions: what is refused, kept and told, and several of them. Read by run.sh.
# shellcheck shell=bash disable=SC2154

# Refused with its cause, line and remedy; faithful it converts, is JSON for another parser, and nothing is said.
while IFS='|' read -r name text place cause; do
  # shellcheck disable=SC2059 # escapes are meant
  printf "$text" >"loss.$name"
  expect 1 "" "~^zentor: $place: $cause; --faithful [a-z]" convert "loss.$name" -o loss.vkjson
  [ ! -e loss.vkjson ] || fail "loss.$name: a refused document was kept"
  expect 0 "~^loss.vkjson " "" convert "loss.$name" -o loss.vkjson --faithful
  python3 -c 'import json; json.load(open("loss.vkjson", encoding="utf-8"))' || fail "loss.$name: no JSON"
  expect 0 "loss.vkjson: ok" "" validate loss.vkjson
  rm loss.vkjson
done <<'EOF'
csv|a,b\n1,x\n\n2,5" pipe\n|loss.csv:4|a text has a quotation mark, which the format cannot hold as it is
csv|a,b\r\n1,x\r\n2,C:\\new\r\n|loss.csv:3|a text has a backslash, which the format cannot hold as it is
tsv|a\tb\n\n1\tx\x01\n|loss.tsv:3|a text has a control character, which the format cannot hold as it is
csv|a,b"\n1,2\n|loss.csv:1|a text has a quotation mark, which the format cannot hold as it is
csv|n\n1\n9.9e-10\n|loss.csv:3|a number loses zeros of its exponent and becomes another one
json|{"a":\n"\\u00e9\\""}|loss.json:2|a text has a quotation mark, which the format cannot hold as it is
json|[1,\n2,\n1.5e+20]|loss.json:3|a number loses zeros of its exponent and becomes another one
bvh|HIERARCHY\nROOT a"b\n{ OFFSET 0 0 0 CHANNELS 1 Xrotation }\nMOTION\nFrames: 1\nFrame Time: 0.04\n1\n|loss.bvh:2|a text has a quotation mark, which the format cannot hold as it is
bvh|HIERARCHY\nROOT a\n{ OFFSET 0 0\n 1.5e-10 CHANNELS 1 Xrotation }\nMOTION\nFrames: 1\nFrame Time: 0.04\n1\n|loss.bvh:4|a number loses zeros of its exponent and becomes another one
EOF
printf 'a\n22 \xb0C\n' >degrees.csv
expect 1 "" "~^zentor: degrees.csv:2: a text has bytes that are no UTF-8; --faithful reads them" convert degrees.csv
expect 0 "~^degrees.vkjson " "zentor: degrees.csv: 1 texts have bytes that are no UTF-8, which were taken for Windows-1252 (first: line 2)" convert degrees.csv --faithful
expect 0 '~"value":"22 °C"' "" get degrees.vkjson '[0][0]' --json
printf 'n\n1\n9.9e-10\n' >tiny.csv
expect 0 '~"value":9.9e-10' "" get tiny.csv '[0][1]' --json --faithful

# A table whose document would grow with the square of its names.
{ seq -s, 1 3000; for _ in $(seq 3000); do echo 1; done; } >square.csv
expect 1 "" "~^zentor: square.csv:2: the document would be more than 1000 times as large as its input; --force" convert square.csv -o -

# What was changed or left out is told, with the first place, and kept quiet when asked.
# name|text|notices
while IFS='|' read -r name text notices; do
  # shellcheck disable=SC2059 # escapes are meant
  printf "$text" >"told.$name"
  expected=$(tr ';' '\n' <<<"$notices" | sed "/./s/^/zentor: told.$name: /")
  expect 0 "~^told.vkjson " "$expected" convert "told.$name" -o told.vkjson --force --no-validate
  expect 0 "" "" convert "told.$name" -o told.vkjson --force --no-validate --quiet
done <<'EOF'
csv|a,b\n1,2\n3,\n,\n|3 empty cells became 0 (first: line 3)
csv|a,b,c\nx,2\nx,4,5\nx,6,7,8\n|1 empty cells became 0 (first: line 2);1 rows have fewer cells than the header (first: line 2);1 rows have cells beyond the header, which were left out (first: line 4)
csv|a;b\n1;2\n3;4\n|the cells seem to be separated by something else, --as series finds out by itself (first: line 1)
csv|a;b\n1,5;2\n3,5;4\n|2 rows have cells beyond the header, which were left out (first: line 2);the cells seem to be separated by something else, --as series finds out by itself (first: line 1);2 cells look like numbers with a decimal comma (first: line 2)
tsv|a\tb\n1,5\tx\n2\ty\n|1 cells look like numbers with a decimal comma, --as series finds out by itself (first: line 2)
csv|Report of May\na,b\n1,2\n3,4\n|3 rows have cells beyond the header, which were left out (first: line 2);the first line looks like a title, not like the names of columns, --as series finds out by itself (first: line 1)
csv|1,2\n3,4\n|the first line has numbers where the names of columns are expected, --as series finds out by itself (first: line 1)
csv|$GPGGA,1,2\n$GPGGA,3,4\n|this looks like a file of another format, not like a table (first: line 1)
csv|n\n0.30000000000000004\n1234567890.12345678\n1\n|2 numbers have been rounded (first: line 2)
csv|n\n1.5e20\n9.9e-10\n|2 numbers have lost zeros of their exponents and become others (first: line 2)
json|{"a":null,\n"b":[null,1]}|2 null values were left out (first: line 1)
bvh|HIERARCHY\nROOT a\n{ OFFSET 0 0 0 CHANNELS 2 Xrotation Xscale\nEnd Site { OFFSET 1 1 1 } }\nMOTION\nFrames: 9\nFrame Time: 0.0171\n1 1\n2 2\n|1 channels that are no positions or rotations were left out (first: line 3);1 end sites were left out (first: line 4);7 declared frames are not there (first: line 10);the frame time is not that of any known rate, the nearest one was taken (first: line 7)
EOF

# Several inputs, one folder; results in the order of the inputs, whatever the number of jobs.
mkdir several other
for k in 1 2 3 4 5 6 7; do printf 'a\n%s\n' $k >"many$k.csv"; done
cp many1.csv other/many1.csv
printf '{' >broken.json
slash=/
[ ${#zentor[@]} = 2 ] && slash='\'
results=$(for k in 1 2 3 4 5 6 7; do echo "several${slash}many$k.vkjson (449 bytes)"; done)
expect 0 "$results" "" convert many?.csv -o several
expect 0 "$results" "" convert many?.csv -o several --force --jobs 3
# Where shells leave wildcards to programs, the command knows them.
[ ${#zentor[@]} != 2 ] || expect 0 "$results" "" convert 'many?.csv' -o several --force
expect 1 "~^several.many1.vkjson [^
]*$" '~^zentor: error 1506: .*\[broken.json:1\]$' convert many1.csv broken.json many2.csv -o several --force
expect 1 "~^several.many1.vkjson .*
several.many2.vkjson [^
]*$" '~^zentor: error 1506: .*\[broken.json:1\]$' convert many1.csv broken.json many2.csv -o several --force --keep-going --jobs 2
expect 1 '~^\{"input":"many1.csv",.*\}$' '~^\{"error":\{"code":1506,"message":"[^"]*","input":"broken.json","line":1,"offset":1\}\}$' \
  convert many1.csv broken.json -o several --force --json
expect 2 "" "zentor: several inputs need a folder that is there as output, not none" convert many1.csv many2.csv -o none
expect 2 "" "~^zentor: many1.csv and other/many1.csv would both become " convert many1.csv other/many1.csv -o several --force
expect 2 "" "~^zentor: many1.csv and other/many1.csv would both become " convert many1.csv other/many1.csv
[ ! -e many1.vkjson ] || fail "something was converted before the names were compared"

# Standard input.
"${zentor[@]}" convert - --format csv -o piped.vkjson <many3.csv >out.txt 2>err.txt || fail "standard input: $(cat err.txt)"
cmp piped.vkjson several/many3.vkjson || fail "standard input became something else"
expect 2 "" "zentor: standard input needs --format, such as --format csv" convert - -o x.vkjson
expect 2 "" "~^zentor: standard input has no name" convert - --format csv
expect 2 "" "zentor: --format is for standard input" convert many1.csv --format csv
expect 2 "" "zentor: standard input cannot be one of several inputs" convert many1.csv -

# Wrong commands.
expect 2 "" 'zentor: there is no command "convrt"; did you mean "convert"?' convrt many1.csv
expect 2 "" '~^zentor: there is no command "xyzzy"; there are .*convert' xyzzy

# A converter by name, whatever the extension; parameters that nobody knows.
printf 'a\tb\n1\t2\n' >tabs.log
expect 1 "" "zentor: error 25: File Format Not Supported." convert tabs.log
expect 0 "~^tabs.vkjson " "" convert tabs.log --as tsv
expect 0 "~creator: +com.orvane.sensor.tsv" "" info tabs.log --as com.orvane.sensor.tsv
expect 2 "" '~^zentor: there is no converter "xyz"' convert tabs.log --as xyz
expect 2 "" "zentor: --set takes KEY=VALUE, not rate" convert tabs.log --as tsv --set rate
expect 1 "" '~^zentor: error 1506: The converter com.orvane.sensor.tsv has no parameter "rate"' convert tabs.log -o x.vkjson --as tsv --set rate=5
[ ! -e x.vkjson ] || fail "something was converted with a parameter that is none"

# Help with examples and statuses; the manual page and the completions say the same.
expect 0 "~Usage: zentor convert \[OPTION\]\.\.\. INPUT\.\.\..*--faithful.*Examples:.*zentor convert run\.csv.*Exit status:" "" help convert
expect 0 "~Commands:.*convert.*validate.*Exit status:" "" help
expect 2 "" "~convrt" help convrt
expect 0 "~^\.TH ZENTOR 1.*\.SS zentor convert .*keep\\\\-going.*\.SH EXIT STATUS" "" help --man
for shell in bash zsh fish; do
  expect 0 "~keep-going" "" help --completion $shell
  tr -d '\r' <out.txt >completions
  if command -v $shell >/dev/null; then $shell -n completions || fail "the completions for $shell"; fi
done

# Nodes by their display names, else by match names; who there is, when nobody is called so.
printf '{"axes":{"x":1,"y/z":2,"y":{"z":3,"u":4}},"same":[5,6],"":7,"twice":{"a":8,"a":9}}' >names.json
# node|value or error
while IFS='|' read -r node value; do
  if [[ $value == *[a-z]* ]]; then
    expect 1 "" "~$value" get names.json "$node"
  else
    expect 0 "~value: +$value\$" "" get names.json "$node"
  fi
done <<'EOF'
axes/x|1
axes/y/u|4
same/1|6
matchName6/matchName7|5
axes/y/z|^zentor: 2 nodes are called "axes/y/z": \[0\]\[1\], \[0\]\[2\]\[0\]$
twice/a|^zentor: 2 nodes are called "twice/a": \[3\]\[0\], \[3\]\[1\]$
axes/w|^zentor: no node is called "axes/w"; in \[0\] there are "x", "y/z", "y"$
nobody|^zentor: no node is called "nobody"; there are "axes", "same", "matchName9", "twice"$
EOF
expect 0 '[0][2][0] static matchName4 "z"
[0][2][1] static matchName5 "u"' "" tree names.json axes/y
