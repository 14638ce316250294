#!/usr/bin/env bash
# Installs what is missing, builds the library and the CLI, and formats a few values.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
cmake -S . -B build -G Ninja -DVXLOCFMT_TESTS=OFF -DVXLOCFMT_BENCH=OFF >/dev/null
cmake --build build -j"$(nproc)" --target vxlocfmt vxlocfmt_cli
set -x
build/bin/vxlocfmt list formats | head -5
build/bin/vxlocfmt format NLDATE20. 23000 -l fr_FR --status || true
printf '0\n23000\n-1000\n.A\n' | build/bin/vxlocfmt format NLDATEW. -l de_DE --status || true
