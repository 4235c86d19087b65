#!/usr/bin/env bash
# Builds the fuzz targets (clang, libFuzzer, ASan + UBSan) and runs each for a bounded
# time, starting from the seed corpora in tests/fuzz/corpus. The working corpora live in
# the build tree, so the committed seeds stay as they are. A crash or leak fails the script.
# Usage: scripts/fuzz.sh [seconds per target, default 20]
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-20}
targets=(header_fuzz records_fuzz open_fuzz settings_file_fuzz)

cmake --preset fuzz >/dev/null
cmake --build --preset fuzz -j "$(nproc)" --target "${targets[@]}" >/dev/null
for target in "${targets[@]}"; do
  seeds=tests/fuzz/corpus/${target%_fuzz}
  corpus=build/fuzz/corpus/$target
  mkdir -p "$corpus"
  echo "fuzzing $target for ${seconds}s"
  set +o pipefail
  build/fuzz/bin/$target -max_total_time="$seconds" -max_len=65536 -print_final_stats=1 \
    -artifact_prefix=build/fuzz/ "$corpus" "$seeds" 2>&1 |
    { grep -E '^(stat::number_of_executed_units|stat::peak_rss_mb|==[0-9]+==ERROR|SUMMARY)' || true; }
  status=${PIPESTATUS[0]}
  set -o pipefail
  if [ "$status" -ne 0 ]; then
    echo "$target failed (exit $status); the failing input is in build/fuzz/"
    exit 1
  fi
done
