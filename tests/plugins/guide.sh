#!/bin/bash
# Does what the guide for plug-in authors says, with the code and the commands that stand in it. Arguments: build
# folder, what runs programs before them.
set -u
# shellcheck source=tests/plugins/command.sh
. "$(dirname "$0")/command.sh" "$@"

take_guide plugins.md
sed -n 's/^    \(zentor_add_plugin(steps .*\)/\1/p' "$project/docs/plugins.md" >>CMakeLists.txt
make_plugin . build
# Without a prefix it goes where the library that was found has its plug-ins.
DESTDIR=$work/stage cmake --install build >../log 2>&1 || fail "$(<../log)"
[ -e "$work/stage$plugins/pulse$suffix" ] || fail "installed elsewhere: $(<../log)"
expect 0 'pulse[^ ]* \(org.example.pulse\)' plugins

do_guide 8

mkdir plain
cp plain.cpp plain/
sed 's/pulse/plain/g' pulse.json >plain/plain.json
sed '/steps/d; s/pulse/plain/g' CMakeLists.txt >plain/CMakeLists.txt
make_plugin plain plain/build
printf 'PLAIN\n' >a.plain
expect 0 'found "Found"' tree a.plain
exit $((failures != 0))
