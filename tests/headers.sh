#!/bin/bash
# The headers as others compile them: each by itself, and a plug-in that uses what there is in converter.h, as C++14, 17
# and 20, with each compiler; the headers for C hosts as C11, too. Nothing may warn. Arguments: source folder, build
# folder.
set -u
source=$(realpath "$1") build=$(realpath "$2")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
shopt -s extglob
# Each twice, and nothing before it: it guards itself and includes what it needs.
for header in "$source"/include/zentor/*.h "$build"/sdk/zentor/plugin/*.h; do
  name=$(basename "$header" .h)
  printf '#include <%s>\n' "zentor/${header##*/zentor/}" "zentor/${header##*/zentor/}" | tee "$name.c" >"$name.cpp"
done
cp "$source/tests/plugins/wrappers.cpp" .

failures=0
# compile COMPILER OPTION... SOURCE...
compile() {
  # Where the headers stand as they are installed.
  "$@" -fsyntax-only -I "$build/sdk" -I "$source/include" -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror &&
    return
  echo "failed: $*"
  failures=$((failures + 1))
}

# The other C++ family, without its library: what needs none as its compiler takes it, everything else with the library
# of MinGW, whose headers take clang for one of theirs then.
msvc=(clang++ --target=x86_64-pc-windows-msvc)
mingw=$(x86_64-w64-mingw32-g++-posix -print-file-name=include/c++)
mingw_library=(-fno-ms-compatibility -U_MSC_VER -D__MINGW32__ -D_UCRT -nostdinc++ -isystem "$mingw"
  -isystem "$mingw/x86_64-w64-mingw32" -isystem /usr/x86_64-w64-mingw32/include)
for standard in 14 17 20; do
  options=("-std=c++$standard" -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual)
  later='@()'
  if [ $standard = 14 ]; then later='@(time_code|time_form|utc_time)'; fi  # which need C++17
  compile g++ "${options[@]}" ./!($later).cpp
  compile clang++ "${options[@]}" ./!($later).cpp
  compile "${msvc[@]}" "${options[@]}" -ffreestanding {error_codes,zentor,shared_object,nodes,plugin}.cpp
  compile "${msvc[@]}" "${options[@]}" "${mingw_library[@]}" ./!(records|$later).cpp
done
for compiler in gcc clang x86_64-w64-mingw32-gcc-posix "clang --target=x86_64-pc-windows-msvc"; do
  # shellcheck disable=SC2086 # words of a command
  compile $compiler -std=c11 {error_codes,zentor,c_interfaces}.c
done
exit $((failures != 0))
