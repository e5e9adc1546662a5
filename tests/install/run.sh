#!/bin/bash
# The README's host example, built and run as an outside project does: against an installed library, found by CMake and
# by pkg-config; and a plug-in for a library that stands elsewhere than usual. Arguments: source folder, build folder.
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
"$work/prefix/bin/zentor" samples "$table" --as series 'air temperature' --to 2026-04-01T00:00:00Z | grep -q '12.25$'
for file in man/man1/zentor.1 bash-completion/completions/zentor zsh/site-functions/_zentor \
  fish/vendor_completions.d/zentor.fish; do
  grep -q keep "$work/prefix/share/$file"
done
cmp "$work/by-cmake.vkjson" "$work/by-command.vkjson"
cmp "$work/by-pkgconfig.vkjson" "$work/by-command.vkjson"
! "$work/plain" "$work/missing.csv" "$work/none.vkjson" "[0]"

# The documented build needs nothing that tests need. With the library in a folder of this machine's kind, and all of it
# moved after it was installed, plug-ins find their place.
for file in README.md docs/plugins.md; do
  grep -q '^    cmake --preset release && cmake --build --preset release && cmake --install build/release --prefix' "$source/$file"
done
libraries=lib/$(g++ -print-multiarch)
cmake --preset release -S "$source" -B "$work/release" -DGOOGLETEST_SOURCE=/nowhere -DCMAKE_SKIP_RPATH=ON \
  -DCMAKE_INSTALL_LIBDIR=$libraries >/dev/null
cp -PR "$build"/libzentor.so* "$build/zentor" "$build/manual" "$work/release/"
cp -R "$build/plugins" "$work/release/"
cmake --install "$work/release" --prefix "$work/first" >/dev/null
mv "$work/first" "$work/moved"
mkdir "$work/plugin"
cp "$source"/tests/plugins/{two.json,two.cpp,needs_left_out.cpp} "$work/plugin/"
cat >"$work/plugin/CMakeLists.txt" <<'END'
cmake_minimum_required(VERSION 3.25)
project(two LANGUAGES CXX)
find_package(zentor 0.1 REQUIRED)
zentor_add_plugin(two SOURCES two.cpp MANIFEST two.json)
zentor_add_plugin(incomplete SOURCES two.cpp needs_left_out.cpp MANIFEST two.json NO_INSTALL)
set_target_properties(incomplete PROPERTIES EXCLUDE_FROM_ALL ON)
file(WRITE ${CMAKE_BINARY_DIR}/folder "${zentor_PLUGIN_DIR}")
END
cmake -G Ninja -S "$work/plugin" -B "$work/plugin/build" -DCMAKE_PREFIX_PATH="$work/moved" >/dev/null
cmake --build "$work/plugin/build" >/dev/null
plugins=$work/moved/$libraries/zentor-plugins
[ "$(<"$work/plugin/build/folder")" = "$plugins" ]
DESTDIR=$work/stage cmake --install "$work/plugin/build" >/dev/null
[ -e "$work/stage$plugins/two.so" ]
cmake --install "$work/plugin/build" --prefix "$work/moved" >/dev/null
[ "$(PKG_CONFIG_PATH=$work/moved/$libraries/pkgconfig pkg-config --variable=plugindir zentor)" -ef "$plugins" ]
LD_LIBRARY_PATH=$work/moved/$libraries "$work/moved/bin/zentor" plugins --load |
  grep -qF "$plugins/two.so (org.test.two.first): loaded"
# What nobody has is missed when the module is linked.
! cmake --build "$work/plugin/build" --target incomplete >"$work/log"
grep -q 'undefined reference to .ZentorLeftOut' "$work/log"
