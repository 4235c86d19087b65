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

# A virtual machine may hand freed memory back to its host at once (the kernel's free page
# reporting); a write that then gets such memory for the system's cache waits for the host
# to give it back, which made single runs of either side up to five times slower, in no
# fixed order. Where the setting can be changed (as root), freed memory stays with this
# machine for 10 s while the benchmarks run, and the setting is restored at the end.
reporting_delay=/sys/module/page_reporting/parameters/min_free_ms
if [[ -w $reporting_delay ]]; then
  saved_reporting_delay=$(cat "$reporting_delay")
  trap 'echo "$saved_reporting_delay" > "$reporting_delay"' EXIT
  echo 10000 > "$reporting_delay"
  echo "freed memory is reported to the host after 10 s during the benchmarks (was ${saved_reporting_delay} ms)"
fi

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
