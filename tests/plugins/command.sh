# For tests that use the installed command with plug-ins. Sourced with: build folder, what runs programs before them.
# Gives the project's folder, $project; a folder of its own, $work, to be in $work/in; zentor, plugins (the folder),
# suffix (of modules), failures; and:
#   fail TEXT...                          says what failed
#   run ARGUMENT...                       runs the command: its status is $got, its output and errors together $text
#   expect STATUS PATTERN ARGUMENT...     runs it, with this result
#   take_guide FILE                       writes down the files and the commands that a guide in docs shows
#   do_guide COUNT                        does the commands, so many, and compares what they print
#   make_plugin SOURCE FOLDER             makes a plug-in as an outside project does, and installs it
# shellcheck source=tests/wine.sh
. "$(dirname "${BASH_SOURCE[0]}")/../wine.sh"
project=$(realpath "$(dirname "${BASH_SOURCE[0]}")/../..")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$1" --prefix "$work/prefix" >/dev/null || exit 1
export TMPDIR=$work/tmp TMP=$work/tmp TEMP=$work/tmp
mkdir "$TMPDIR" "$work/in"
cd "$work/in" || exit 1
if [ -e ../prefix/bin/zentor.exe ]; then
  zentor=("${@:2}" "$work/prefix/bin/zentor.exe") plugins=$work/prefix/bin/zentor-plugins suffix=.dll
else
  zentor=("$work/prefix/bin/zentor") plugins=$work/prefix/lib/zentor-plugins suffix=.so
fi
mkdir -p "$plugins"
failures=0
fail() {
  echo "failed: $*"
  failures=$((failures + 1))
}

run() {
  for _ in 1 2 3; do
    # Into a file: Wine's server holds a pipe open for a while after the program.
    "${zentor[@]}" "$@" >"$work/output" 2>&1 </dev/null
    got=$?
    # Only Wine's own failures are tried again. The command always says something here.
    [ $suffix = .dll ] && wine_failed something $got "$work/output" || break
  done
  text=$(<"$work/output")
  text=${text//$'\r'/}
}

expect() {
  local status=$1 pattern=$2
  shift 2
  run "$@"
  [ $got = "$status" ] || fail "$*: status $got, expected $status: $text"
  [[ $text =~ $pattern ]] || fail "$*: $text"
  for left in "$TMPDIR"/ZTT*; do
    [ ! -e "$left" ] || fail "$*: left behind $left"
    rm -f "$left"
  done
}

# Blocks after a line with nothing but a file's name are that file; those of a console are kept in the file "console".
take_guide() {
  awk '/^`[^` ]+`:$/ {name = substr($0, 2, length($0) - 3)}
       /^```/ {inside = !inside; if (/^```console$/) name = "console"; if (!inside) name = ""; next}
       inside && name != "" {print > name}' "$project/docs/$1"
}

# Each command of the consoles, with what it prints.
do_guide() {
  zentor() {
    run "$@"
    echo "$text"
  }
  grep '^\$ ' console >commands
  [ "$(wc -l <commands)" = "$1" ] || fail "the guide has other commands"
  local line
  while IFS= read -r line; do
    echo "$line"
    eval "${line#* }"
  done <commands >said
  # Wine may put what comes from standard error behind what came after it from standard output.
  if [ "$suffix" = .dll ]; then for file in console said; do sort -o $file $file; done; fi
  diff console said || fail "other output than in the guide"
}

make_plugin() {
  local options=(-DCMAKE_BUILD_TYPE=Release -Dzentor_DIR="$work/prefix/lib/cmake/zentor")
  [ "$suffix" = .so ] || options+=(-DCMAKE_TOOLCHAIN_FILE="$project/cmake/mingw-w64.cmake")
  {
    CXXFLAGS="-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror ${CXXFLAGS:-}" \
      cmake -G Ninja -S "$1" -B "$2" "${options[@]}" &&
      cmake --build "$2" && cmake --install "$2" --prefix "$work/prefix"
  } >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
}
