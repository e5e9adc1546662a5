#!/bin/bash
# The NMEA plug-in, built as an outside project builds its own, and used through the command. Arguments: build folder,
# what runs programs before them.
set -u
# shellcheck source=tests/plugins/command.sh
. "$(dirname "$0")/command.sh" "$@"
make_plugin "$project/plugins/nmea" "$work/build"

# sentence BODY: with its checksum and line end.
sentence() {
  local sum=0 i
  for ((i = 0; i < ${#1}; ++i)); do printf -v code %d "'${1:i:1}"; sum=$((sum ^ code)); done
  printf '$%s*%02X\r\n' "$1" $sum
}

# samples FILE NAME PATTERN ARGUMENT..., fact FILE NAME PATTERN: what a node of the document has.
samples() { expect 0 "$3" samples "$1" "[\"track\"][\"$2\"]" "${@:4}"; }
fact() { expect 0 "value: +$3" get "$1" "[\"receiver\"][\"$2\"]"; }

log=$project/resources/recordings/harbour.nmea
expect 0 'nmea[^ ]* \(org.zentor.nmea\).*NMEA 0183 log, version 1.*extensions: nmea.*at byte 0: "\$GP".*"\$GN"' plugins
expect 0 '^harbour.vkjson' convert "$log" -o harbour.vkjson
expect 0 'creator: +org.zentor.nmea
time mode: +utc, 2 decimals of a second, GMT
groups: +2
static nodes: +8
dynamic nodes: +13
samples: +2554
time span: +2026-06-20T23:58:20.00Z to 2026-06-21T00:01:39.00Z' info harbour.vkjson
# By hand: 32.4914 minutes are 0.541523333 degrees.
samples harbour.vkjson latitude '^2026-06-20T23:59:58.00Z +53.54152333
2026-06-20T23:59:59.00Z +53.54154333
2026-06-21T00:00:00.00Z +53.541565
2026-06-21T00:00:01.00Z +53.54158667$' --from 2026-06-20T23:59:58Z --to 2026-06-21T00:00:01.0059Z
samples harbour.vkjson longitude '^2026-06-21T00:00:01.00Z +9.96274167$' --at 2026-06-21T00:00:01.50Z
samples harbour.vkjson fixQuality '^2026-06-20T23:59:49.00Z +GPS fix
2026-06-20T23:59:50.00Z +differential fix$' --from 2026-06-20T23:59:49.00Z --to 2026-06-20T23:59:50.00Z
fact harbour.vkjson talkers '"GP"'
fact harbour.vkjson checksums true
fact harbour.vkjson sentences 800
fact harbour.vkjson otherSentences 20
fact harbour.vkjson damagedLines 0
fact harbour.vkjson duration 199

# The same in other clothes.
same() {
  expect 0 '' convert "$1" -o same.vkjson --force
  cmp same.vkjson harbour.vkjson || fail "$1: another document"
}
sed 's/\r$//' "$log" >lf.nmea
tr -d '\n' <"$log" >cr.nmea
{ printf '\xEF\xBB\xBF'; cat "$log"; } >mark.NMEA
{ printf '\r\n\r\n'; sed 's/\r$/ \r\n\r/' "$log"; } >blank.nmea
sed 's/^/\\s:bridge,c:1781913600*5A\\/' "$log" >tags.nmea
cp "$log" logbuch-größe.log
for file in lf.nmea cr.nmea mark.NMEA blank.nmea tags.nmea logbuch-größe.log; do same $file; done

# Damage costs no more than what is damaged.
damage() {
  expect 0 '' convert "$1" -o damaged.vkjson --force
  fact damaged.vkjson damagedLines "$2"
  samples damaged.vkjson latitude '53.54161' --at 2026-06-21T00:00:02.00Z
  expect 0 "latitude \"Latitude \(degrees\)\" $3 samples.*status \"Receiver status\" $4 samples" tree damaged.vkjson
}
sed '403s/5332/5333/' "$log" >digit.nmea
sed '403d' "$log" >missing.nmea
head -c -4 "$log" >cut.nmea
{ sed -n 1,403p "$log"; head -c 300000 /dev/zero | tr '\0' 'x'; printf '\n'; sed '1,403d' "$log"; } >long.nmea
{ sed -n 1,403p "$log"; head -c 300000 /dev/zero; sed '1,404d' "$log"; } >zeros.nmea
sed '403s/\*5/*4/' "$log" >sum.nmea
sed '403s/\*..//' "$log" >nosum.nmea
sed 's/\*..\r$/\r/; 403s/,A,/,X,/; 404s/M,41/M,4a/; 408s/.,N,/.,Q,/; 411s/,9.5,/,-9.5,/; 412s/5332/5360/; 416s/N,.*,E/N,,/' \
  "$log" >fields.nmea
sed 's/\*..\r$/\r/' "$log" >unsummed.nmea
while read -r file damaged latitudes statuses; do damage $file.nmea $damaged $latitudes $statuses; done <<'END'
digit 1 197 199
missing 0 197 199
cut 1 197 200
long 1 197 200
zeros 1 197 200
sum 1 197 199
nosum 1 197 199
fields 6 195 198
unsummed 0 197 200
END
fact damaged.vkjson checksums false

# Times and places of all kinds, worked out by hand.
{
  sentence GPVTG,1.0,T,,M,1.0,N,1.9,K                          # before any epoch
  sentence GNGGA,235958.5,0830.0,S,01059.9999999,W,4,12,0.8,-3.25,M,-20.1,M,,  # of the day before the first date
  sentence GNGSA,M,2,1,,,,,,,,,,,,3.0,2.0,1.0                  # its epoch's second HDOP
  sentence GLRMC,000001.125,A,0000.0,N,18000.000000000000,E,0,360,010126,,,A
  sentence GNRMC,000001.125,A,0100.0,N,00000.0,E,5,5,010126,,,A  # the same time: the first counts
  sentence GNVTG,77.5,T,,M,3.5,N,6.5,K,A
  sentence GNGGA,000000.75,0100.0,N,00000.0,E,1,3,,,M,,M,,     # out of order, not the next day
  sentence GNRMC,000000.5,A,0100.0,N,00000.0,E,5,5,010126,,,A  # the same with a date
  sentence GNGGA,000001.125,0100.0,N,00000.0,E,1,3,,,M,,M,,    # no later than the one before
  sentence PUBX,00,1
  sentence PGRMC,000002,A
  sentence AIVDM,1
  printf '!AIVDM,1,1,,A,14eG;o@034o8sd<L9i:a;WF>062D,0*7D\r\n'
  sentence GNGGA,130000,,,,,0,0,,,M,,M,,
  sentence GNGGA,000003,9000.0,N,00000.0,E,9,3,,,M,,M,,        # the next day
  sentence GNVTG,1.0,T,,M,1.0,N,1.9,K,N                        # not to be used
  sentence GNRMC,000004,V,4500.0,N,00000.0,E,5,5,010180,,,N    # nor this, with its date
  sentence GNZDA,235960,02,01,2026,00,00
  sentence GNVTG,270,270,10,18.5                               # of the oldest kind
  sentence GNGGA,000001,,,,,5,3,,-0.0,M,,M,,
} >small.nmea
expect 0 'small.vkjson' convert small.nmea -o small.vkjson
samples small.vkjson latitude '^2025-12-31T23:59:58.500Z +-8.5
2026-01-01T00:00:01.125Z +0
2026-01-02T00:00:03.000Z +90$'
samples small.vkjson longitude '^2025-12-31T23:59:58.500Z +-10.99999999833
2026-01-01T00:00:01.125Z +180
2026-01-02T00:00:03.000Z +0$'
samples small.vkjson course '^2026-01-01T00:00:01.125Z +360
2026-01-03T00:00:00.000Z +270$'
samples small.vkjson speed '^2026-01-01T00:00:01.125Z +0
2026-01-03T00:00:00.000Z +10$'
samples small.vkjson hdop '^2025-12-31T23:59:58.500Z +0.8$'
samples small.vkjson altitude '^2025-12-31T23:59:58.500Z +-3.25
2026-01-03T00:00:01.000Z +0$'
samples small.vkjson fixMode '^2025-12-31T23:59:58.500Z +2D fix$'
samples small.vkjson status '^2026-01-01T00:00:01.125Z +valid
2026-01-02T00:00:04.000Z +warning$'
fact small.vkjson talkers '"AI GL GN GP P"'
fact small.vkjson epochsOutOfOrder 3
fact small.vkjson otherSentences 4
expect 0 'range: +-8.5 to 90, legal -90 to 90' get small.vkjson '["track"]["latitude"]'
{
  sentence GPGGA,235959,0200.0,N,00000.0,E,1,3,,,M,,M,,
  sentence GPRMC,235958,A,0100.0,N,00000.0,E,5,5,311299,,
} >old.nmea
samples old.nmea latitude '^1999-12-31T23:59:59Z +2$'
fact old.nmea epochsOutOfOrder 1

# Refused, saying why, with the line of the first damaged one or the end.
refuse() {  # FILE LINE REASON ARGUMENT...
  expect 1 "^zentor: $1:$2: $3.* \(error 1506\)$" convert "$1" -o none.vkjson "${@:4}"
  [ ! -e none.vkjson ] || fail "$1: kept"
}
head -12 "$log" >nowhere.nmea
sed '/RMC/d' "$log" >undated.nmea
sed '/RMC/!d; s/,5332.*,E,/,,,,,/; s/\*..\r$/\r/' "$log" >unplaced.nmea
sed 's/,N,/,n,/' "$log" >lower.nmea
printf 'Latitude\n53.5\n' >text.nmea
cp text.nmea text.csv
: >empty.nmea
refuse nowhere.nmea 12 'the log has no position: no RMC or GGA sentence with one'
refuse unplaced.nmea 200 'the log has no position'
refuse undated.nmea 620 'the log has no date: no RMC or ZDA sentence with one; --set date=2026-06-20 says on which day it begins'
refuse lower.nmea 13 'the log has no position: .*; lines that are no sound sentences: '
refuse text.csv 1 'this is no NMEA 0183 log' --as nmea
for date in yesterday 2026-02-30 2026-06-20T12:00:00Z ''; do
  expect 1 "undated.nmea: the parameter date is \"$date\"; it is a day such as 2026-06-20 \(error 1506\)" \
    convert undated.nmea --set "date=$date" -o none.vkjson
done
expect 1 'error 25: ' convert text.nmea
expect 1 'error 25: ' convert empty.nmea

# A day for a log without one, which runs past midnight; the log's own dates come first.
expect 0 '^undated.vkjson' convert undated.nmea --set date=2024-02-28 -o undated.vkjson
samples undated.vkjson latitude '^2024-02-28T23:59:59.00Z +53.54154333
2024-02-29T00:00:00.00Z +53.541565$' --from 2024-02-28T23:59:59Z --to 2024-02-29T00:00:00Z
expect 0 'harbour.nmea: the log has dates of its own, the parameter date was not used' \
  convert "$log" --set date=2024-02-28 -o dated.vkjson
cmp dated.vkjson harbour.vkjson || fail 'a day for a log with dates: another document'

# Cut in the middle of its first line, and called otherwise: found by its content when it is asked for.
for name in torn.log torn.txt torn.csv torn; do
  tail -c +30 "$log" >$name
  expect 0 "$name: lines that are no sound sentences, left out: 1 \(first: line 1\)" convert $name --as nmea -o torn.vkjson --force
  samples torn.vkjson latitude '53.54154333' --at 2026-06-20T23:59:59.00Z
done
tail -c +30 "$log" >torn.nmea
expect 0 '2026-06-20T23:58:20.00Z to 2026-06-21T00:01:39.00Z' info torn.nmea
sed 's/^/x/' torn.nmea >none.nmea
expect 1 'error 25: ' convert none.nmea
exit $((failures != 0))
