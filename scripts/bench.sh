#!/usr/bin/env bash
# Runs the benchmarks: an optimised native build without sanitizers (Google Benchmark),
# then the Windows build under Wine (timer loop). The cipher benchmark prints ours vs.
# OpenSSL; the image benchmark prints creating and clearing a 1 GiB fixed AES-256 image vs.
# the disk's limit measured in the same run on the same file system (natively dd with
# oflag=direct and one fsync; under Wine unbuffered writes and one FlushFileBuffers), over
# three runs with their spread, and the change-password flow on a 64 MiB and a 1 GiB image
# (scratch files under build/bench/scratch, removed as it goes); under Wine the start-up
# benchmark prints ctell.exe's time to its first paint vs. a one-window program.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/wine-common.sh
jobs=$(nproc)

bash scripts/install-packages.sh >&2
cmake --preset bench >/dev/null
cmake --build --preset bench -j "$jobs" --target cipher_bench image_create_bench >/dev/null
scratch=build/bench/scratch
mkdir -p "$scratch"
echo "=== native ==="
build/bench/bin/cipher_bench --benchmark_color=false "$@"
echo
build/bench/bin/image_create_bench "$scratch"

cmake --preset windows >/dev/null
cmake --build --preset windows -j "$jobs" --target cipher_bench image_create_bench wizard_create_bench startup_bench >/dev/null
echo
echo "=== Windows build under Wine ==="
scripts/wine-run.sh build/windows/bin/cipher_bench.exe
echo
scripts/wine-run.sh build/windows/bin/image_create_bench.exe "$scratch"
echo
scripts/wine-run.sh build/windows/bin/wizard_create_bench.exe "$scratch"
echo
scripts/wine-run.sh build/windows/bin/startup_bench.exe

echo
echo "=== nbdkit plugin (native) ==="
bash scripts/bench-nbdkit.sh
