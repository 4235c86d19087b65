#!/usr/bin/env bash
# Runs every test: formatting, the native build (ASan + UBSan) and the Windows build under
# Wine. Installs what it needs first; safe to run again and again.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/wine-common.sh
jobs=$(nproc)

step() { printf '\n=== %s ===\n' "$*"; }

step "dependencies"
# with the virtual display that the run command's test starts
bash scripts/install-packages.sh run

step "formatting"
bash scripts/check-format.sh

step "native build and tests (linux preset)"
cmake --preset linux >/dev/null
cmake --build --preset linux -j "$jobs"
ctest --preset linux -j "$jobs"

step "fuzz targets, bounded (fuzz preset)"
bash scripts/fuzz.sh 15

step "Windows build and tests under Wine (windows preset)"
cmake --preset windows >/dev/null
cmake --build --preset windows -j "$jobs"
prefix=$(default_wine_prefix)
wine_fresh_prefix "$prefix"
trap 'wine_session_stop "$prefix"' EXIT
wine_session_start "$prefix"
ctest --preset windows -j "$jobs"
