#!/bin/bash
# Does what the guide for plug-in authors says, with the code and the commands that stand in it. Arguments: build
# folder, what runs programs before them.
set -u
# shellcheck source=tests/plugins/command.sh
. "$(dirname "$0")/command.sh" "$@"

# Blocks after a line with nothing but a file's name are that file; those of a console are kept in the file "console".
awk '/^`[^` ]+`:$/ {name = substr($0, 2, length($0) - 3)}
     /^```/ {inside = !inside; if (/^```console$/) name = "console"; if (!inside) name = ""; next}
     inside && name != "" {print > name}' "$project/docs/plugins.md"
make_plugin . build
# Without a prefix it goes where the library that was found has its plug-ins.
DESTDIR=$work/stage cmake --install build >../log 2>&1 || fail "$(<../log)"
[ -e "$work/stage$plugins/pulse$suffix" ] || fail "installed elsewhere: $(<../log)"
expect 0 'pulse[^ ]* \(org.example.pulse\)' plugins

# Each command of the consoles, with what it printed.
zentor() {
  run "$@"
  echo "$text"
}
grep '^\$ ' console >commands
[ "$(wc -l <commands)" = 5 ] || fail "the guide has other commands"
while IFS= read -r line; do
  echo "$line"
  eval "${line#* }"
done <commands >said
diff console said || fail "other output than in the guide"

mkdir plain
cp plain.cpp plain/
sed 's/pulse/plain/g' pulse.json >plain/plain.json
sed 's/pulse/plain/g' CMakeLists.txt >plain/CMakeLists.txt
make_plugin plain plain/build
printf 'PLAIN\n' >a.plain
expect 0 'found "Found"' tree a.plain
exit $((failures != 0))
