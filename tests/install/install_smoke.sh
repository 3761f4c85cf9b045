#!/usr/bin/env bash
# Installs the build into a scratch prefix, then builds and runs a consumer program twice
# (once with pkg-config flags, once through find_package(VelcoraDDB)) and the README's example.
set -euo pipefail
build_dir=$1
source_dir=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

cmake --install "$build_dir" --prefix "$scratch/prefix" >/dev/null
export PKG_CONFIG_PATH="$scratch/prefix/lib/pkgconfig:$scratch/prefix/lib/x86_64-linux-gnu/pkgconfig"
libdir=$(pkg-config --variable=libdir velcora_ddb)

# pkg-config
g++ -std=c++17 "$source_dir/tests/install/consumer.cpp" -o "$scratch/consumer" \
    $(pkg-config --cflags --libs velcora_ddb) -Wl,-rpath,"$libdir"
"$scratch/consumer" "$scratch/out_pc.ddb"

# CMake package
mkdir -p "$scratch/cmake_project"
sed "s|@CONSUMER_SOURCE@|$source_dir/tests/install/consumer.cpp|" \
    "$source_dir/tests/install/CMakeLists.txt.in" > "$scratch/cmake_project/CMakeLists.txt"
cmake -S "$scratch/cmake_project" -B "$scratch/cmake_build" -G Ninja \
      -DCMAKE_PREFIX_PATH="$scratch/prefix" -DCMAKE_BUILD_RPATH="$libdir" >/dev/null
cmake --build "$scratch/cmake_build" >/dev/null
"$scratch/cmake_build/consumer_cmake" "$scratch/out_cmake.ddb"
# The README's example opens a device of the installed copy (found beside the library).
sed -n '/<!-- example: open a device -->/,/^```$/p' "$source_dir/README.md" | sed '1,2d;$d' > "$scratch/example.cpp"
g++ -std=c++17 "$scratch/example.cpp" -o "$scratch/example" $(pkg-config --cflags --libs velcora_ddb) -Wl,-rpath,"$libdir"
env -u VELCORA_ROOTDIR "$scratch/example" > "$scratch/example.out"
grep -q "^  element .*: [0-9]* ports$" "$scratch/example.out"
echo "installed package: pkg-config and find_package consumers and the README example built and ran"
