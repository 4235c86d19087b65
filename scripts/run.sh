#!/usr/bin/env bash
# Builds everything and runs the product's demonstration, natively and as the Windows
# program under Wine. Installs what it needs first; safe to run again and again.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/wine-common.sh
jobs=$(nproc)

bash scripts/install-packages.sh >&2
for preset in linux windows; do
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset" -j "$jobs" >/dev/null
done

echo "--- native (Linux) ---"
build/linux/bin/crypto_demo
echo
echo "--- Windows program under Wine ---"
scripts/wine-run.sh build/windows/bin/crypto_demo.exe
