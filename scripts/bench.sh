#!/usr/bin/env bash
# Runs the benchmarks: an optimised native build without sanitizers (Google Benchmark),
# then the Windows build under Wine (timer loop). Each prints ours vs. OpenSSL as ratios.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/wine-common.sh
jobs=$(nproc)

bash scripts/install-packages.sh >&2
cmake --preset bench >/dev/null
cmake --build --preset bench -j "$jobs" --target cipher_bench >/dev/null
echo "=== native ==="
build/bench/bin/cipher_bench --benchmark_color=false "$@"

cmake --preset windows >/dev/null
cmake --build --preset windows -j "$jobs" --target cipher_bench >/dev/null
echo
echo "=== Windows build under Wine ==="
scripts/wine-run.sh build/windows/bin/cipher_bench.exe
