#!/usr/bin/env bash
# Installs what is missing, builds everything and runs the whole test suite.
#   scripts/test.sh              optimised build in build/
#   scripts/test.sh --sanitize   address + undefined-behaviour build in build-asan/
# Tests are switched on explicitly (build/ may have been configured by scripts/sample.sh), and
# a run that finds no test fails.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
source scripts/launcher.sh
dir=build
extra=()
if [ "${1:-}" = "--sanitize" ]; then
  dir=build-asan
  extra=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DVXLOCFMT_SANITIZE=address,undefined -DVXLOCFMT_BENCH=OFF)
  export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
  export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
fi
cmake -S . -B "$dir" "${project_cmake_args[@]}" -DVXLOCFMT_TESTS=ON "${extra[@]}" >/dev/null
cmake --build "$dir" -j"$(nproc)"
cd "$dir"
ctest --output-on-failure --no-tests=error -j"$(nproc)"
