#!/bin/bash
# The same modules, built by clang for the MSVC ABI, without any C++ runtime, and linked by lld-link. Arguments: source
# folder, build folder, command that runs Windows programs.
set -eu
source=$1 build=$2 runner=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
compile() {
  clang++ --target=x86_64-pc-windows-msvc -std=c++20 -O1 -Wall -Wextra -Werror -ffreestanding -fno-exceptions -fno-rtti \
    -fno-stack-protector -mno-stack-arg-probe -I "$build/sdk" -I "$source/include" "${@:2}" \
    -c "$source/tests/plugins/hostile.cpp" -o "$work/$1.obj"
}
echo 'extern "C" int _fltused = 0;  // the linker asks for it wherever a double occurs' >"$work/float.cpp"
clang++ --target=x86_64-pc-windows-msvc -c "$work/float.cpp" -o "$work/float.obj"
compile hostile
compile no_initialize -DNO_INITIALIZE
mkdir "$work/modules"
for script in "$build"/tests/plugins/*.rc; do
  name=$(basename "$script" .rc)
  object=$work/hostile.obj
  [ "$name" != no_initialize ] || object=$work/no_initialize.obj
  x86_64-w64-mingw32-windres -O coff "$script" "$work/$name.o"
  lld-link /nologo /nodefaultlib /dll /noentry "/out:$work/modules/$name.dll" "$object" "$work/float.obj" "$work/$name.o"
done
"$source/tests/plugins/run.sh" "$build" "$work/modules" "$runner"
