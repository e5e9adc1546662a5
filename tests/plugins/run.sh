#!/bin/bash
# What plug-in modules can do wrong, each in a process of its own: the command of an installed library. Arguments: build
# folder, folder with the modules, what runs programs before them.
set -u
build=$(realpath "$1") modules=$(realpath "$2")
# shellcheck source=tests/plugins/command.sh
. "$(dirname "$0")/command.sh" "$build" "${@:3}"

# use MODULE...: these are the plug-ins from now on.
use() {
  rm -rf "${plugins:?}"/*
  local name
  for name in "$@"; do cp "$modules/$name$suffix" "$plugins/"; done
}

# convert BEHAVIOUR STATUS PATTERN: an input that asks the module for one.
convert() {
  printf 'HOSTILE\n' >"$1.hostile"
  rm -f out.vkjson
  expect "$2" "^$3\$" convert "$1.hostile" -o out.vkjson
  [ "$2" = 0 ] || [ ! -e out.vkjson ] || fail "$1: a document was kept"
}

by='using converter Hostile with id org.test.hostile.converter'
use hostile
convert good 0 'out.vkjson \([0-9]* bytes\)'
expect 0 'g "Group".*n "Number".*t "Text".*b "Truth".*a "Array".*d "Track" 3 samples, 1970-01-01T00:00:00.0Z' tree out.vkjson
expect 0 '^1970-01-01T00:00:00.5Z  0.5
1970-01-01T00:00:01.0Z  1$' samples good.hostile '["g"]["d"]' --from 1/2
for behaviour in release_too_often writes_twice keeps_root; do
  cp out.vkjson good.vkjson
  convert $behaviour 0 'out.vkjson \([0-9]* bytes\)'
  cmp out.vkjson good.vkjson || fail "$behaviour: another document"
done
convert check_says_no 1 'zentor: error 25: File Format Not Supported.'
convert check_fails 1 "zentor: error 88: Error in Plugin Check File Format of converter Hostile with id org.test.hostile.converter. \(at byte 7\)"
convert check_throws 1 "zentor: error 1023: Error in Plugin Check File Format of .*"
convert session_fails 1 "zentor: error 99: Initialize Session Failed of converter Hostile with id org.test.hostile.converter. \(at byte 1\)"
convert session_throws 1 "zentor: error 1023: Initialize Session Failed of .*"
convert convert_fails 1 "zentor: error 4711: Conversion to VKJSON $by failed. \(at byte 12\)"
convert convert_throws 1 "zentor: error 1023: Conversion to VKJSON $by failed."
for behaviour in convert_says_no convert_lies convert_denies half_written; do
  convert $behaviour 1 "zentor: error 1506: Conversion to VKJSON $by failed."
done
while read -r behaviour code; do
  convert "$behaviour" 1 "zentor: error $code: Conversion to VKJSON $by failed."
done <<'END'
foreign_pointer 2016
null_pointer 2002
other_stream 2014
other_kind 2016
same_name 2003
not_attached 2001
no_result 2027
new_version 2029
old_version 2030
no_creator 1505
second_root 2003
bad_name 2022
too_deep 2003
empty_array 2002
loose_samples 2001
late_node 2003
END

# As a host that has the library installed: in_threads PROGRAM ARGUMENT...
in_threads() {
  cp "$build/tests/plugins/$1"* ../prefix/bin/
  local programs=(../prefix/bin/"$1"*) got
  if [ $suffix = .dll ]; then programs=("${zentor[@]:0:${#zentor[@]}-1}" "${programs[@]}"); fi
  for _ in 1 2 3; do
    LD_LIBRARY_PATH=../prefix/lib "${programs[@]}" "${@:2}" >threads.txt 2>&1
    got=$?
    grep -q 'wine client error' threads.txt || break
  done
  [ $got = 0 ] || fail "$1: status $got: $(head -c 2000 threads.txt)"
}
in_threads plugin_threads good.hostile release_too_often.hostile keeps_root.hostile ! convert_fails.hostile \
  half_written.hostile
in_threads plugin_lifetimes good.hostile good.vkjson

# How a converter is chosen: by extension, whatever its case, or by signature; built-in ones come first.
printf 'nothing\n' >named.HoStIlE
expect 0 '^' convert named.HoStIlE -o named.vkjson
printf 'HOSTILE\n' >unnamed.log
expect 0 '^' convert unnamed.log -o unnamed.vkjson
printf 'HOSTIL\n' >other.log
expect 0 '^' convert other.log -o other.vkjson
printf 'HO' >short.log
expect 1 '^zentor: error 25: ' convert short.log
printf 'HOSTILE\n1\n' >table.csv
expect 0 '"HOSTILE"' tree table.csv
use hostile forced
expect 0 '"Group"' tree table.csv
expect 0 'hostile  Hostile' formats
printf 'a\n1\n' >plain.csv
expect 0 '"a"' tree plain.csv
use forced
expect 1 '^zentor: error 25: ' tree unnamed.log
use forced_fails
expect 0 '"HOSTILE"' tree table.csv

# Modules that do not get as far as that; none keeps another from its work.
use no_initialize
convert good 1 "zentor: error 1021: Plugin \".*no_initialize$suffix\" not loaded."
while read -r module identifier; do
  use "$module"
  convert good 1 "zentor: error 1500: Initialization of plugin with id $identifier failed.( \(at byte 5\))?"
done <<'END'
table_version table_version
table_size table_size
no_entries no_entries
initialize_fails initialize_fails
initialize_throws initialize_throws
END
use table_version no_initialize initialize_throws broken_manifest hostile
printf 'no module\n' >"$plugins/text$suffix"
head -c 3000 "$modules/hostile$suffix" >"$plugins/cut$suffix"
: >"$plugins/empty$suffix"
mkdir -p "$plugins/folder/deeper" "$plugins/.hidden"
cp "$modules/forced$suffix" "$plugins/folder/deeper/"
cp "$modules/forced$suffix" "$plugins/.hidden/"
convert good 0 'out.vkjson \([0-9]* bytes\)'
expect 0 '"Group"' tree table.csv
expect 0 'zentor-plugins:.*broken_manifest[^ ]* \(broken_manifest\): error 1504: Schema violation of Property: identifier\..*deeper.forced[^ ]* \(forced\).*before built-in formats.*hostile[^ ]* \(hostile\).*Hostile, version 1.5.*extensions: hostile.*at byte 1: "OST"' plugins
expect 0 '"identifier":"broken_manifest","problem":\{"code":1504,"message":"Schema violation of Property: identifier."\},"converters":\[\]' plugins --json
[ "$("${zentor[@]}" plugins | grep -c zentor-plugins)" = 7 ] || fail "other modules than expected: $("${zentor[@]}" plugins)"
expect 0 'Feind' --locale de_DE plugins
exit $((failures != 0))
