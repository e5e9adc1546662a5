#!/bin/bash
# Does what the guide for plug-in authors says, with the code and the commands that stand in it. Arguments: source
# folder, build folder, what runs programs before them.
set -u
source=$(realpath "$1") build=$(realpath "$2")
# shellcheck source=tests/plugins/command.sh
. "$(dirname "$0")/command.sh" "$build" "${@:3}"

# Blocks after a line with nothing but a file's name are that file; those of a console are kept in the file "console".
awk '/^`[^` ]+`:$/ {name = substr($0, 2, length($0) - 3)}
     /^```/ {inside = !inside; if (/^```console$/) name = "console"; if (!inside) name = ""; next}
     inside && name != "" {print > name}' "$source/docs/plugins.md"
options=(-DCMAKE_BUILD_TYPE=Release -Dzentor_DIR="$work/prefix/lib/cmake/zentor")
export CXXFLAGS="-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror ${CXXFLAGS:-}"
[ "$suffix" = .so ] || options+=(-DCMAKE_TOOLCHAIN_FILE="$source/cmake/mingw-w64.cmake")

# make_plugin FOLDER: configured, built and installed.
make_plugin() {
  {
    cmake -G Ninja -S "$1" -B "$1/build" "${options[@]}" && cmake --build "$1/build" &&
      cmake --install "$1/build" --prefix "$work/prefix"
  } >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
}
make_plugin .
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
make_plugin plain
printf 'PLAIN\n' >a.plain
expect 0 'found "Found"' tree a.plain
exit $((failures != 0))
