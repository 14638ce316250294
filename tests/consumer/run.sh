#!/usr/bin/env bash
# Installs the build into a scratch prefix, builds a consumer with find_package(vxlocfmt) and runs
# it from the installed tree. Arguments: the build folder, the source folder.
set -euo pipefail
build=$1 source=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$build" --prefix "$work/prefix" >/dev/null
mkdir -p "$work/consumer"
cp "$source/tests/consumer/main.cpp" "$work/consumer/"
cp "$source/tests/consumer/CMakeLists.txt.in" "$work/consumer/CMakeLists.txt"
cmake -S "$work/consumer" -B "$work/consumer/build" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/consumer/build" >/dev/null
cp "$work/consumer/build/consumer" "$work/prefix/bin/"
out=$("$work/prefix/bin/consumer")
echo "$out"
[ "$out" = "21 décembre 2022" ]
pkg-config --exists --print-errors vxlocfmt --with-path "$work/prefix/lib/pkgconfig" 2>/dev/null ||
  PKG_CONFIG_PATH="$work/prefix/lib/pkgconfig" pkg-config --cflags --libs vxlocfmt >/dev/null
