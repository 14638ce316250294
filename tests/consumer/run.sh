#!/usr/bin/env bash
# Installs a build into a scratch prefix, then builds the consumer twice, with
# find_package(vxlocfmt) and with the flags `pkg-config --cflags --libs vxlocfmt` prints, and runs
# each from outside the installed tree: the host runtime must find the installed extension on its
# own. Arguments: the build folder, the source folder.
set -euo pipefail
build=$1 source=$2
unset VXLOCFMT_LIBRARY
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix
cmake --install "$build" --prefix "$prefix" >/dev/null
expected=$(printf '21 décembre 2022\n    1.234,50\n23000')

mkdir -p "$work/consumer"
cp "$source/tests/consumer/main.cpp" "$work/consumer/"
cp "$source/tests/consumer/CMakeLists.txt.in" "$work/consumer/CMakeLists.txt"
cmake -S "$work/consumer" -B "$work/consumer/build" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$work/consumer/build" >/dev/null
out=$("$work/consumer/build/consumer")
echo "find_package: $out"
[ "$out" = "$expected" ]

export PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name vxlocfmt.pc)")
pc_prefix=$(pkg-config --variable=prefix vxlocfmt)
[ "$(cd "$pc_prefix" && pwd -P)" = "$(cd "$prefix" && pwd -P)" ] || { echo "pkg-config prefix $pc_prefix"; exit 1; }
# shellcheck disable=SC2046  # the flags are words
c++ -std=c++20 -o "$work/consumer/by-pkg-config" "$work/consumer/main.cpp" $(pkg-config --cflags --libs vxlocfmt)
out=$("$work/consumer/by-pkg-config")
echo "pkg-config: $out"
[ "$out" = "$expected" ]
