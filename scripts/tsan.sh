#!/usr/bin/env bash
# Builds the concurrency test under ThreadSanitizer and runs it: several threads, each with its
# own call record, through one instance.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
cmake --preset tsan >/dev/null
cmake --build build-tsan -j"$(nproc)" --target test_threads vxlocfmt
TSAN_OPTIONS=halt_on_error=1:second_deadlock_stack=1 build-tsan/bin/test_threads
