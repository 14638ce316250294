#!/usr/bin/env bash
# A newcomer's first hour, as CI checks it: clone the committed HEAD into a fresh folder, run the
# README's set-up commands in the README's order (the sample, then the whole test suite), then
# build Release from scratch, install it and build and run a program against the installed tree
# with pkg-config and with find_package (tests/consumer/run.sh).
#   scripts/fresh-clone.sh            clone into build-fresh/ (removed first)
# ccache, when installed, is shared with the developer's own build/: paths are taken relative to
# the clone's root so a clone compiles to the same cache entries as the working tree.
set -euo pipefail
source_dir=$(cd "$(dirname "$0")/.." && pwd)
clone=$source_dir/build-fresh
rm -rf "$clone"
git clone -q "$source_dir" "$clone"
cd "$clone"
export CCACHE_BASEDIR=$clone CCACHE_NOHASHDIR=1

# The README's commands, read from the README, in its order.
mapfile -t commands < <(sed -n '/^## Set-up/,/^## /p' README.md | grep -E '^    scripts/[a-z-]+\.sh$' | sed 's/^    //')
[ "${commands[*]}" = "scripts/sample.sh scripts/test.sh" ] ||
  { echo "fresh-clone: the README's set-up commands changed: ${commands[*]}" >&2; exit 1; }
for command in "${commands[@]}"; do
  echo "== fresh clone: $command"
  "$command"
done

echo "== fresh clone: Release from scratch, installed, consumed"
launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
cmake -S . -B build-release -G Ninja -DCMAKE_BUILD_TYPE=Release -DVXLOCFMT_WERROR=ON -DVXLOCFMT_TESTS=OFF \
  -DVXLOCFMT_BENCH=OFF "${launcher[@]}" >/dev/null
cmake --build build-release -j"$(nproc)"
tests/consumer/run.sh build-release .
cd "$source_dir"
rm -rf "$clone"
