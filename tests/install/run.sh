#!/bin/bash
# The README's host example, built and run as an outside project does: against an installed library, found by CMake and
# by pkg-config. Arguments: source folder, build folder.
set -eu
source=$1 build=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$build" --prefix "$work/prefix" >/dev/null
mkdir "$work/host"
awk '/^```cpp$/ {inside = 1; next} /^```$/ {inside = 0} inside' "$source/README.md" >"$work/host/host.cpp"
cat >"$work/host/CMakeLists.txt" <<'END'
cmake_minimum_required(VERSION 3.25)
project(host LANGUAGES CXX)
find_package(zentor 0.1 REQUIRED)
add_executable(host host.cpp)
target_link_libraries(host PRIVATE zentor::zentor)
END
cmake -G Ninja -S "$work/host" -B "$work/host/build" -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/host/build" >/dev/null
table="$source/resources/recordings/greenhouse.csv"
[ "$("$work/host/build/host" "$table" "$work/by-cmake.vkjson" "[1][0]")" = 12.25 ]

export PKG_CONFIG_PATH="$work/prefix/lib/pkgconfig"
g++ -std=c++17 "$work/host/host.cpp" $(pkg-config --cflags --libs zentor) -Wl,-rpath,"$work/prefix/lib" -o "$work/plain"
[ "$("$work/plain" "$table" "$work/by-pkgconfig.vkjson" "[1][0]")" = 12.25 ]
"$work/prefix/bin/zentor" convert "$table" -o "$work/by-command.vkjson"
cmp "$work/by-cmake.vkjson" "$work/by-command.vkjson"
cmp "$work/by-pkgconfig.vkjson" "$work/by-command.vkjson"
! "$work/plain" "$work/missing.csv" "$work/none.vkjson" "[0]"
