#!/bin/bash
# The plug-in for tables as recordings, as it is installed, through the command. Arguments: build folder, what runs
# programs before them.
set -u
# shellcheck source=tests/plugins/command.sh
. "$(dirname "$0")/command.sh" "$@"

# becomes NAME SAMPLES ARGUMENT...: the table on standard input becomes a document whose columns have these samples: a
# line for each, the column's match name, the time and the value.
becomes() {
  local name=$1 wanted=$2 column
  shift 2
  cat >"$name.csv"
  expect 0 '' convert "$name.csv" --as series "$@" -o table.vkjson --force
  run tree table.vkjson
  for column in $(grep -o 'dynamic column[0-9]*' <<<"$text" | cut -d' ' -f2); do
    run samples table.vkjson "[\"$column\"]"
    [ $got = 0 ] && sed "s/^/$column /; s/  */ /g" <<<"$text"
  done >samples.txt
  [ "$(<samples.txt)" = "$wanted" ] || fail "$name: $(<samples.txt)"
}
# fact NAME VALUE: what the document that was made last says about the table.
fact() { expect 0 "value: +$2" get table.vkjson "[\"about\"][\"$1\"]"; }
# refused NAME PATTERN ARGUMENT...: the table on standard input, and why.
refused() {
  local name=$1 pattern=$2
  shift 2
  cat >"$name.csv"
  expect 1 "^zentor: $name.csv$pattern \(error 1506\)" convert "$name.csv" --as series "$@" -o none.vkjson
  [ ! -e none.vkjson ] || fail "$name: a document was kept"
}

expect 0 'series[^ ]* \(org.zentor.series\)
  org.zentor.series: Table as recording, version 1
    parameters: time rate delimiter decimal header encoding dates' plugins

# What the documentation says.
mkdir guide
cd guide || exit 1
take_guide tables.md
do_guide 6
cd ..

# Dialects: one table in many clothes.
same='column1 2026-06-01T08:30:00.00Z 1.5
column1 2026-06-01T08:30:00.25Z -20
column2 2026-06-01T08:30:00.00Z north
column2 2026-06-01T08:30:00.25Z süd, ost'
becomes comma "$same" <<'END'
time,speed,direction
2026-06-01T08:30:00Z,1.5,north
2026-06-01T08:30:00.25Z,-20,"süd, ost"
END
fact delimiter '"comma"'
fact encoding '"UTF-8"'
fact timeColumn '"time"'
fact rows 2
becomes semicolon "$same" <<'END'
# exported by hand
Recorder 7;site "north"

Zeit;speed;direction
;m/s;
01.06.2026 08:30;1,5;north
01.06.2026 08:30:00,25;-20,0;süd, ost
END
fact delimiter '"semicolon"'
fact decimal '"comma"'
fact title '"Recorder 7;site .*north'
fact unit1 '"m/s"'
printf 's;V;-\nt;speed;direction\n1780302600;1,5;north\n1780302600,25;-20;süd, ost\n' | becomes units_first "$same"
printf '\xEF\xBB\xBFtimestamp\tspeed\tdirection\r\n1780302600000\t+1.5\tnorth\r\n1780302600250\t-2e1\tsüd, ost\r\n' |
  becomes tab "$same"
printf '# time speed direction\n20260601T083000Z   1.50 north\n 20260601T083000.25Z\t-20 "süd, ost"' | becomes blanks "$same"
shifted=$(sed 's/column2/column3/; s/column1/column2/' <<<"$same")
printf 'Date|Time|speed|direction\r2026/6/1|8:30:00 AM|1.5|north\r2026/6/1|8:30:00.250 AM|"-20"|süd, ost\r' |
  becomes pipe "$shifted"
fact timeColumn '"Date, Time"'
for encoding in UTF-16LE UTF-16BE UTF-16 WINDOWS-1252; do
  iconv -f UTF-8 -t $encoding comma.csv | becomes $encoding "$same"
done
fact encoding '"Windows-1252"'
iconv -f UTF-8 -t UTF-16BE comma.csv | becomes told "$same" --set encoding=utf-16be --set delimiter=, --set time=TIME --set header=1
becomes rate 'column0 1970-01-01T00:00:00.00Z 7
column0 1970-01-01T00:00:00.04Z 1234.5
column1 1970-01-01T00:00:00.00Z 1
column1 1970-01-01T00:00:00.02Z 2' --set rate=50 --set header=none <<'END'
7;1
;2
1.234,5;
END
becomes quotes 'column1 1970-01-01T00:00:00Z a "b" [c] \, d
column1 1970-01-01T00:00:02Z e
column2 1970-01-01T00:00:01Z x\u000ay' --locale de_DE <<'END'
"time", "the ""text""",more
0,"a ""b"" [c] \, d",
"1",,"x
y"
2, e,  
END
expect 0 'column1 "the .*"text.*" 2 samples' tree table.vkjson

# Times of all kinds, to the last digit.
times() {  # NAME HEADER CELL... -- TIME...
  local name=$1 header=$2 wanted='' k
  shift 2
  { echo "$header,v"; k=0; while [ "$1" != -- ]; do echo "$1,$((k++))"; shift; done; } >times.in
  shift
  k=0
  for time in "$@"; do wanted+="column1 $time $((k++))"$'\n'; done
  becomes "$name" "${wanted%?}" <times.in
}
times nanoseconds time 1700000000123456789 1700000000123456790 -- \
  2023-11-14T22:13:20.123456789Z 2023-11-14T22:13:20.123456790Z
times microseconds timestamp 1700000000123456 1700000000200000 -- 2023-11-14T22:13:20.123456Z 2023-11-14T22:13:20.200000Z
times milliseconds 'time (ms)' -1.5 0 1e3 86400000 -- 1969-12-31T23:59:59.9985Z 1970-01-01T00:00:00.0000Z \
  1970-01-01T00:00:01.0000Z 1970-01-02T00:00:00.0000Z
times suffix time_us 1 20 -- 1970-01-01T00:00:00.000001Z 1970-01-01T00:00:00.000020Z
times minutes 'elapsed [min]' 0.25 61 -- 1970-01-01T00:00:15Z 1970-01-01T01:01:00Z
times many t 0.100000000000 0.123456789000 -- 1970-01-01T00:00:00.100000000Z 1970-01-01T00:00:00.123456789Z
times zones time 2026-06-01T10:30:00+02:00 '2026-06-01 08:30:00.5 UTC' 20260601T083001Z 2026-06-01T06:30:02-0200 -- \
  2026-06-01T08:30:00.0Z 2026-06-01T08:30:00.5Z 2026-06-01T08:30:01.0Z 2026-06-01T08:30:02.0Z
times leap Date 28-Feb-2024 '29 February 2024' 'Mar 1 2024' -- 2024-02-28T00:00:00Z 2024-02-29T00:00:00Z \
  2024-03-01T00:00:00Z
times compact date 20240228 20240229 20240301 -- 2024-02-28T00:00:00Z 2024-02-29T00:00:00Z 2024-03-01T00:00:00Z
printf 'date,v\n0000-01-01,1\n9999-12-31T23:59:59.9,2\n' >far.csv
expect 0 '"v" 2 samples, 0000-01-01T00:00:00.0Z to 9999-12-31T23:59:59.9Z' tree far.csv --as series
times evening time '6/14/2026 11:59:59 PM' '6/15/2026 12:00:00 AM' -- 2026-06-14T23:59:59Z 2026-06-15T00:00:00Z
times second time 2016-12-31T23:59:60Z 2017-01-01T00:00:01Z -- 2017-01-01T00:00:00Z 2017-01-01T00:00:01Z
times rising time 01/02/2026 02/02/2026 01/03/2026 -- 2026-02-01T00:00:00Z 2026-02-02T00:00:00Z 2026-03-01T00:00:00Z
times midnight time 23:59:59.5 0:00:00.25 -- 1970-01-01T23:59:59.50Z 1970-01-02T00:00:00.25Z
times lap time 59:59.9 60:00:00.0 -- 1970-01-01T00:59:59.9Z 1970-01-03T12:00:00.0Z
# Days and months that only a later part of the table tells apart.
{ echo 'date,v'; for k in {1..30000}; do echo '01/02/2026 00:00:00,1'; done; echo '13/02/2026 00:00:00,2'; } >late.csv
expect 0 '30001 samples, 2026-02-01T00:00:00Z to 2026-02-13T00:00:00Z' tree late.csv --as series
expect 0 '^2026-02-13T00:00:00Z  2$' samples late.csv v --as series --from 2026-02-02T00:00:00Z

becomes dated 'column0 2026-06-01T00:00:00Z 1
column0 2026-06-01T00:00:01Z 2' <<'END'
1 2026-06-01T00:00:00Z
2 2026-06-01T00:00:01Z
END
becomes temperature 'column1 2026-06-01T00:00:00Z 20.5
column1 2026-06-02T00:00:00Z 21' <<'END'
when,T
2026-06-01,20.5
2026-06-02,21
END

# What is left out, and told.
becomes losses 'column1 1970-01-01T00:00:00Z 1
column1 1970-01-01T00:00:01Z 3
column1 1970-01-01T00:00:03Z 4' <<'END'
time,v
0,1
1,NaN
2,2,3
x,3
1,3
-1,3
# a remark
3,4,,
END
fact rowsLeftOut 3
fact rowsTooLong 1
fact rowsWithoutTime 1
fact rowsGoingBack 1
expect 0 'losses.csv: rows with more filled cells than there are columns, left out: 1 \(first: line 4\)
zentor: losses.csv: rows without a time that can be read, left out: 1 \(first: line 5\)
zentor: losses.csv: rows that go back in time, left out: 1 \(first: line 7\)
zentor: losses.csv: cells of "v" that say there is no number, left out: 1 \(first: line 3\)' convert losses.csv --as series -o t.vkjson
# A column with a text anywhere is one of texts, however late that comes.
{ echo 'time,v'; for k in {1..40000}; do echo "$k,1.0"; done; echo '40001,overflow'; } >mixed.csv
expect 0 '^1970-01-01T11:06:40Z  1.0
1970-01-01T11:06:41Z  overflow$' samples mixed.csv v --as series --from 1970-01-01T11:06:40Z

# Not guessed.
printf 'v\n1,5\n2,5\n' | refused comma ':1: the comma may part cells or stand before decimals; --set delimiter=comma.*'
printf 'time\tv\n0\t1,234\n1\t2,345\n' | refused groups ':2: "1,234" may have decimals.*--set decimal=comma or --set decimal=point says which'
printf 'time;a;b\n0;1,5;1.5\n' | refused marks ':2: decimals stand behind points in some cells, behind commas in others.*'
printf 'date,v\n01/02/2026,1\n03/02/2026,2\n' | refused days ': the dates can be read as day/month and as month/day; --set dates=dmy or --set dates=mdy says which'
printf 't,timestamp,v\n1,2,3\n2,3,4\n' | refused two ':2: the times may be in column "t" \(0\) or in column "timestamp" \(1\); --set time=0 or --set time=1 says which'
printf '1,5,3\n2,6,2\n3,7,4\n' | refused bare ':1: the times may be in column "column0" \(0\) or in column "column1" \(1\).*'
printf 'id,x\n1,2\n2,3\n' | refused none ':2: no column of times was found among "id" \(0\), "x" \(1\); --set time=NAME names one, --set rate=100 .*'
printf 'time,v\n0.0000000001,2\n' | refused fine ':2: a time has more than nine decimals of a second'
printf 'time,v\n0,"a\n1,2\n' | refused open ':2: a quotation mark is opened and never closed'
printf 'time,v\nx,1\n' | refused words ':.*'
printf 'time,v\n' | refused header ':.*'
printf '' | refused empty ': there are no rows'
while IFS='|' read -r set pattern; do
  printf 'time,v\n0,1\n1,2\n' | refused wrong "$pattern" --set "$set"
done <<'END'
rate=fast|: the parameter rate is "fast"; it can be .*
rate=0|: the parameter rate is "0".*
delimiter=two|: the parameter delimiter is "two"; it can be comma, .*
decimal=dot|: the parameter decimal is "dot"; it can be point or comma
header=0|: the parameter header is "0".*
header=9|:9: there is no header in line 9.*
encoding=ebcdic|: the parameter encoding is "ebcdic".*
dates=ymd|: the parameter dates is "ymd"; it can be dmy or mdy
time=w|: there is no column "w"; there are "time" \(0\), "v" \(1\)
time=2|: there is no column "2".*
END
printf 'time,v\n0,1\n' | refused both ': a column of times and a rate exclude each other.*' --set rate=5 --set time=0
expect 1 'error 1506: .*"color"' convert words.csv --as series --set color=red -o none.vkjson
expect 1 '"reason":"a time has more than nine decimals of a second","input":"fine.csv","line":2,"offset":7' \
  convert fine.csv --as series --json

# Hostile ones end in order, whatever their size, with little memory.
bounded() {  # NAME STATUS PATTERN
  local limit=400000
  if [ $suffix = .so ] && [ -z "${CXXFLAGS:-}" ]; then ulimit -v $limit; fi
  expect "$2" "$3" convert "$1.csv" --as series -o bounded.vkjson --force
}
{ printf 'time,v\n0,"'; head -c 40000000 /dev/zero | tr '\0' 'x'; } >quote.csv
{ printf 'time'; for k in {1..20}; do printf ',v%.0s' {1..50000}; done; printf '\n0\n'; } >wide.csv
{ printf 'time,v\n'; head -c 3000000 /dev/zero | tr '\0' '\n'; printf '0,1\n'; } >lines.csv
{ printf 'time,v\n0,1\n'; head -c 3000000 /dev/zero; } >zeros.csv
{ printf 'time,v\n0,1\n1,'; printf '\xFF\xC3\x00\xE9'; printf '\n'; } >bytes.csv
(bounded quote 1 'a row is longer than 16 MiB, or a quotation mark .* is not closed'; exit $failures) || failures=1
(bounded wide 1 'there are more than 65535 columns'; exit $failures) || failures=1
(bounded lines 0 'bounded.vkjson'; exit $failures) || failures=1
(bounded zeros 0 'bounded.vkjson'; exit $failures) || failures=1
(bounded bytes 0 'bounded.vkjson'; exit $failures) || failures=1

"${PYTHON:-/usr/bin/python3}" "$project/tests/plugins/series.py" "${zentor[@]}" || failures=1
exit $((failures != 0))
