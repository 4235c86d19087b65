#!/usr/bin/env bash
# Installs the Debian packages both build targets need. Idempotent: a machine that
# already has every package skips apt entirely.
set -euo pipefail

packages=(
  # native build and tests
  build-essential cmake ninja-build pkg-config libssl-dev zlib1g-dev
  libgtest-dev libbenchmark-dev clang clang-format libclang-rt-14-dev
  # the artwork generator and the text checks (python3), the test locale (locales)
  python3 locales
  # the nbdkit plugin and its tests (nbdcopy, nbdinfo, nbdsh; FAT tools on the served disk)
  nbdkit nbdkit-plugin-dev libnbd-bin python3-libnbd dosfstools mtools
  # Windows build and its test runner
  mingw-w64 mingw-w64-tools libz-mingw-w64-dev wine wine64 xvfb
  # fetching and building the MinGW libcrypto
  dpkg-dev perl make ca-certificates
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "installing: ${missing[*]}"
sudo_cmd=()
[ "$(id -u)" -eq 0 ] || sudo_cmd=(sudo)
"${sudo_cmd[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq "${missing[@]}"
