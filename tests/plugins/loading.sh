#!/bin/bash
# What the command says of folders and modules that are not as they should be, and of loading them. Arguments: build
# folder, folder with the modules, "sanitized" or "plain", what runs programs before them.
set -u
build=$(realpath "$1") modules=$(realpath "$2") kind=$3
# shellcheck source=tests/plugins/command.sh
. "$(dirname "$0")/command.sh" "$build" "${@:4}"

# use MODULE...: these are the plug-ins from now on.
use() {
  rm -rf "${plugins:?}"/*
  local name
  for name in "$@"; do cp "$modules/$name$suffix" "$plugins/"; done
}

# Loading: the system's words, the module's, and a status.
use two hostile
expect 0 "hostile$suffix \(hostile\)"$'\n.*'"two$suffix \(two\)"$'\n' plugins
expect 0 "hostile$suffix \(hostile\): loaded"$'\n.*'"two$suffix \(two\): loaded"$'\n' plugins --load
expect 0 '"identifier":"two",.*"load":\{"code":0,"message":"","diagnosis":""\}' plugins --load --json
cannot="error 1021: Can't load module."
refused='error 1500: Initialization of plugin with id [a-z_]* failed.'
while IFS='|' read -r module report diagnosis; do
  use two "$module"
  expect 0 "two\): loaded|$module$suffix \($module\)"$'\n' plugins
  expect 1 "$module$suffix \($module\): $report"$'\n'"  $diagnosis"$'\n.*two\): loaded' plugins --load
done <<END
no_initialize|$cannot|it exports no function InitializePlugin
initialize_fails|$refused|InitializePlugin reported code 77 with the details 5 and 6
initialize_throws|$refused|InitializePlugin reported code 1023 with the details -1 and -1
table_size|$refused|InitializePlugin changed size or version of the table of entry points
no_entries|$refused|InitializePlugin set no InitializeSession
END
use missing_library
missing=$([ $suffix = .dll ] && echo '[^ ].*' || echo '.*left_out.*: cannot open shared object file.*')
expect 1 "$cannot"$'\n'"  $missing"$'\n' plugins --load
if [ $suffix = .so ]; then
  use undefined_symbol
  expect 1 "$cannot"$'\n''  .*undefined symbol: ZentorLeftOut'$'\n' plugins --load
fi
use broken_manifest
expect 0 'error 1504' plugins
expect 1 'error 1504' plugins --load

# A module that has several converters is told which one is asked about; what a text holds comes back.
use two
printf 'second\n' >a.two
expect 0 'creator: +org.test.two.second' info a.two
printf 'say "first"\\ [\t\xfc' >b.two
expect 0 'creator: +org.test.two.first' info b.two
expect 0 'b.vkjson' convert b.two
expect 0 '"value":"say \\"first\\"\\\\ \[\\tü"' get b.vkjson '["text"]' --json
expect 0 '^\[\{"time":"2026-06-01T06:30:00.5Z","value":"say \\"first\\"\\\\ \[\\tü"\},\{"time":"2026-06-01T06:30:00.5Z","value":"x"\}\]$' samples b.vkjson '["notes"]' --json
# What is not escaped is written, and not read back.
printf 'raw "quote"' >quote.two
expect 0 'quote.vkjson' convert quote.two --no-validate
expect 1 'error 32: ' tree quote.vkjson
expect 1 'error 32: ' convert quote.two -o other.vkjson
printf 'raw C:\\data' >path.two
expect 1 'path.two: a text has a backslash, .*--faithful' convert path.two
expect 0 'path.vkjson' convert path.two --faithful
expect 0 'raw C:..data' get path.vkjson '[0]' --json
printf 'raw \t' >tab.two
expect 1 'tab.two: a text has a control character, .*--faithful' convert tab.two

# Parameters of the manifest reach the converter, its notices the user; any input is its own when it is asked for.
printf 'x' >plain.csv
expect 0 'zentor: plain.csv: told .* \(first: line 2\)' convert plain.csv --as first --set suffix=1 --set suffix==2 --set told=
expect 0 '"value":"x=2"' get plain.vkjson '["text"]' --json
expect 0 '"notices":\[\{"kind":1000,"message":"told .*","count":3,"line":2\}\]' convert plain.csv --as first --set told=1 --force --json
expect 1 'The converter org.test.two.second has no parameter "told"' convert plain.csv --as second --set told=1 --force
expect 1 'The converter org.test.two.first has no parameter "suff"' convert plain.csv --as org.test.two.first --set suff=1 --force

# The words of an exception are for those who ask for them.
printf 'throw no rows\nin it' >thrown.two
expect 1 '^zentor: error 1023: Conversion to VKJSON using converter [^\n]* failed.$' convert thrown.two
export ZENTOR_TRACE=1
expect 1 'zentor: trace: no rows in it'$'\n''zentor: error 1023: ' convert thrown.two
unset ZENTOR_TRACE

# Modules for other machines, and damaged ones. patch FILE OFFSET BYTES
patch() { printf "$3" | dd of="$1" bs=1 seek="$2" conv=notrunc status=none; }
# u FILE OFFSET SIZE: a number in a file.
u() { od -An -t "u$3" -j "$2" -N "$3" "$1" | tr -d ' '; }
other='error 1021: Plugin "[^"]*", built for another kind of machine, not loaded.'
use hostile two
if [ $suffix = .dll ]; then
  patch "$plugins/hostile.dll" $(($(u "$plugins/hostile.dll" 60 4) + 4)) '\x64\xaa'
else
  patch "$plugins/hostile.so" 18 '\xb7\x00'
fi
expect 0 "hostile$suffix \(hostile\): $other" plugins
expect 1 "hostile$suffix \(hostile\): $other"$'\n.*two\): loaded' plugins --load
printf 'HOSTILE\n' >good.hostile
expect 1 'error 25: ' convert good.hostile
expect 0 'a.vkjson' convert a.two
if [ $suffix = .so ] && command -v clang >/dev/null; then
  # Of 32 bits, and of the other byte order; an object file with the type of a module is all that is looked at.
  printf '#define TEXT(name) __attribute__((section(".zt.txt." name), used)) static const char
    TEXT("ZTPLUGINUIDS") a[] = "{}"; TEXT("MODULE_IDENTIFIER") b[] = "%s";' other >other.c
  for target in i386-linux-gnu arm-linux-gnueabi mips-linux-gnu powerpc64-linux-gnu; do
    clang --target=$target -c other.c -o "$plugins/$target.so" || fail "no module for $target"
    case $target in mips* | power*) type='\x00\x03' ;; *) type='\x03\x00' ;; esac
    patch "$plugins/$target.so" 16 "$type"
    expect 0 "$target.so \(other\): $other" plugins
  done
fi
if [ $suffix = .so ]; then
  # An identifier with its zero cuts no message short.
  use initialize_fails
  printf 'initialize_fails\0' >identifier
  objcopy --update-section .zt.txt.MODULE_IDENTIFIER=identifier "$plugins/initialize_fails.so" 2>/dev/null
  expect 1 'Initialization of plugin with id initialize_fails failed\.' convert good.hostile
  # A text of more bytes than the file.
  use hostile
  headers=$(u "$plugins/hostile.so" 40 8)
  number=$(readelf -SW "$plugins/hostile.so" | awk -F'[][ ]+' '/ZTPLUGINUIDS/ {print $2}')
  patch "$plugins/hostile.so" $((headers + number * 64 + 32)) '\xff\xff\xff\x00'  # its size
  expect 0 'hostile.so \(\): error 1021: Plugin "[^"]*hostile.so", damaged, not loaded.' plugins
fi

# What the manifest hardly means.
use two odd
expect 0 "odd$suffix \(odd\): error 1504: Schema violation of Property: extension\."$'\n.*Odd, version 1\n' plugins
expect 0 "odd\): error 1504: Schema violation of Property: extension\.: loaded" plugins --load

# Folders of the environment come first; links to where one has been lead nowhere.
use two
mkdir -p ../mine/deep
cp "$modules/hostile$suffix" ../mine/deep/
for link in 1 2 3 4 5 6 7 8 9; do ln -s . "../mine/deep/again$link" && ln -s ../deep "../mine/deep/back$link"; done
mine=$(cd ../mine && pwd)
separator=: none=/nowhere
if [ $suffix = .dll ]; then mine=Z:${mine//\//\\} separator=';' none='Z:\nowhere'; fi
export ZENTOR_PLUGIN_PATH=$mine$separator${separator}here$separator$none
literally() { sed 's/[.[\*^$()+?{|\\]/\\&/g' <<<"$1"; }
expect 0 "^$(literally "$mine"):"$'\n'"$(literally "$mine").deep.hostile$suffix \(hostile\)"$'\n.*Hostile.*\nhere:\nhere: error 12: "ZENTOR_PLUGIN_PATH": not absolute, Cannot convert path.\n'"$(literally "$none"): none"$'\n.*zentor-plugins:\n.*two'"$suffix"' \(two\)' plugins
[ "$(grep -c "hostile$suffix" <<<"$text")" = 1 ] || fail "the module is listed more than once: $text"
expect 0 '"folder":"[^"]*zentor-plugins","folders":\[\{"path":"[^"]*mine","problems":\[\]\},\{"path":"here","problems":\[\{"path":"here","code":12,' plugins --json
expect 0 'good.vkjson' convert good.hostile
unset ZENTOR_PLUGIN_PATH

# A manifest that there is no memory for is a failure like others. (Sanitizers and Wine want more than can be spared.)
if [ $suffix = .so ] && [ "$kind" = plain ]; then
  use two
  { printf '{"converter":['; yes 0, | head -n 4000000 | tr -d '\n'; printf '0]}'; } >manifest
  objcopy --update-section .zt.txt.ZTPLUGINUIDS=manifest "$plugins/two.so" 2>/dev/null  # it makes room
  expect 0 'two.so \(two\): error 1504' plugins
  for kib in 80000 120000; do  # too little for the parser's stack, and for the values
    got=$(ulimit -v "$kib"; "${zentor[@]}" plugins 2>&1)
    [[ $got = 'zentor: error 34: '* ]] || fail "without memory: $got"
  done
fi
exit $((failures != 0))
