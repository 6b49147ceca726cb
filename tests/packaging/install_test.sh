#!/usr/bin/env bash
# Installs the library, builds the first programs against the installed tree with CMake and with pkg-config, runs them,
# and does it all again after the tree has moved.
# Usage: install_test.sh CMAKE BUILD EXAMPLES FOLDER CC CXX PKG_CONFIG with_host|without_host
set -euo pipefail
cmake=$1 build=$2 examples=$3 folder=$4 cc=$5 cxx=$6 pkgConfig=$7 host=$8

rm -rf "$folder"
mkdir -p "$folder"
"$cmake" --install "$build" --prefix "$folder/first" >"$folder/install.log"

# A CMake project as a user would write it.
mkdir "$folder/consumer"
cp "$examples"/first_program.c "$examples"/first_program.cpp "$folder/consumer"
cat >"$folder/consumer/CMakeLists.txt" <<'PROJECT'
cmake_minimum_required(VERSION 3.16)
project(consumer C CXX)
set(CMAKE_CXX_STANDARD 17)
find_package(kesto_road 0.1 REQUIRED)
add_executable(first_c first_program.c)
target_link_libraries(first_c PRIVATE kesto::kesto_road m)
add_executable(first_cpp first_program.cpp)
target_link_libraries(first_cpp PRIVATE kesto::kesto_road)
PROJECT

check() { # PROGRAM: runs it; its figures have a test of their own
    "$1" | grep -q '^station     +K0+252\.3' || { echo "$1 does not answer" && exit 1; }
    ldd "$1" | grep -F "libkesto_road.so.0 => $prefix/" >/dev/null || { echo "$1 uses another library" && exit 1; }
}

consume() { # builds and runs everything against $prefix
    local out="$prefix.consumer" flags
    "$cmake" -S "$folder/consumer" -B "$out" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
        -DCMAKE_C_COMPILER="$cc" -DCMAKE_CXX_COMPILER="$cxx" >"$out.log"
    "$cmake" --build "$out" >>"$out.log" || { cat "$out.log" && exit 1; }
    check "$out/first_c"
    check "$out/first_cpp"

    local module
    module=$(find "$prefix" -name kesto_road.pc)
    export PKG_CONFIG_PATH=${module%/*}
    flags=$("$pkgConfig" --cflags --libs kesto_road)
    [[ $("$pkgConfig" --modversion kesto_road) == 0.* ]]
    # shellcheck disable=SC2086 # the flags are words
    "$cc" -std=c99 "$examples/first_program.c" -o "$out/pc_c" $flags -lm -Wl,-rpath,"$PKG_CONFIG_PATH/.."
    # shellcheck disable=SC2086
    "$cxx" -std=c++17 "$examples/first_program.cpp" -o "$out/pc_cpp" $flags -Wl,-rpath,"$PKG_CONFIG_PATH/.."
    check "$out/pc_c"
    check "$out/pc_cpp"
    if [[ $host == with_host ]]; then "$prefix/bin/kesto-road" --version | grep -q '^kesto-road 0\.'; fi
}

prefix=$folder/first
consume
mv "$folder/first" "$folder/moved"
prefix=$folder/moved
consume

# Nothing that is installed may point back into the build tree or at the first place.
if grep -rlF -e "$build" -e "$folder/first" "$folder/moved" --include='*.cmake' --include='*.pc' --include='*.h'; then
    echo "installed files name this machine's folders" && exit 1
fi
