#!/bin/sh
# Builds the host with clang for the MSVC ABI, links it with lld-link against MinGW's import libraries and runs it.
# Arguments: source folder, build folder with zentor.dll and libzentor.dll.a, command that runs Windows programs.
set -eu
source=$1 build=$2 runner=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
clang++ --target=x86_64-pc-windows-msvc -std=c++20 -O1 -Wall -Wextra -Werror -ffreestanding -fno-exceptions -fno-rtti \
  -fno-stack-protector -mno-stack-arg-probe -I "$source/include" -c "$source/tests/msvc/host.cpp" -o "$work/host.obj"
lld-link /nologo /nodefaultlib /subsystem:console /entry:hostMain "/out:$work/host.exe" "$work/host.obj" \
  "$build/libzentor.dll.a" /usr/x86_64-w64-mingw32/lib/libkernel32.a
cp "$build/zentor.dll" "$work/"
printf 'a,b\n1,x\n2,y\n' >"$work/table.csv"
cp "$work/table.csv" "$work/table.unknown"
printf 'HIERARCHY\nROOT a\n{\nOFFSET 0 0 0\nCHANNELS 3 Xposition Yposition Zposition\n}\n' >"$work/walk.bvh"
printf 'MOTION\nFrames: 4\nFrame Time: 0.04\n1 2 9\n1 2 0\n1 2 -1.5\n1 2 9\n' >>"$work/walk.bvh"
cd "$work"
"$runner" ./host.exe
test -s saved.vkjson
