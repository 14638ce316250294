#!/usr/bin/env bash
# Installs what is missing, builds the library and the CLI, and formats a few values.
# Shares build/ with scripts/test.sh: it only builds its two targets and leaves the cache's
# choices (tests, benchmarks) as they are, so either script works after the other.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
source scripts/launcher.sh
cmake -S . -B build "${project_cmake_args[@]}" >/dev/null
cmake --build build -j"$(nproc)" --target vxlocfmt vxlocfmt_cli
set -x
build/bin/vxlocfmt list formats | head -5
build/bin/vxlocfmt format NLDATE20. 23000 -l fr_FR --status || true
printf '0\n23000\n-1000\n.A\n' | build/bin/vxlocfmt format NLDATEW. -l de_DE --status || true
