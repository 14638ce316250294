#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (address + undefined, no recovery) and runs each for a
# bounded time on its committed corpus. A finding stops the run with a non-zero status and
# leaves the reproducer in build-fuzz/findings/<target>/.
#   scripts/fuzz.sh [seconds per target]     (default 60; long local runs: 3600)
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
scripts/install-deps.sh
for p in clang libclang-rt-14-dev; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || {
    [ "$(id -u)" -ne 0 ] && sudo=sudo || sudo=""
    $sudo apt-get install -y -qq "$p"
  }
done
CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DVXLOCFMT_FUZZ=ON -DVXLOCFMT_TESTS=OFF -DVXLOCFMT_WERROR=ON \
  -DVXLOCFMT_BENCH=OFF -DVXLOCFMT_SANITIZE=address,undefined -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build-fuzz -j"$(nproc)"
for target in build-fuzz/bin/*_fuzz; do
  name=$(basename "$target")
  work=build-fuzz/work/$name findings=build-fuzz/findings/$name
  mkdir -p "$work" "$findings"
  echo "== $name: ${seconds}s"
  "$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=4096 -print_final_stats=1 \
    -artifact_prefix="$findings/" "$work" "fuzz/corpus/$name" 2>&1 |
    grep -E 'stat::number_of_executed_units|ERROR|fuzz check failed|SUMMARY' || true
  if ls "$findings"/* >/dev/null 2>&1; then
    echo "$name: finding(s) in $findings"; exit 1
  fi
done
