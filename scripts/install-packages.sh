#!/usr/bin/env bash
# Installs the Debian packages both build targets need. Idempotent: a machine that
# already has every package skips apt entirely.
#
#   bash scripts/install-packages.sh          the build and test packages
#   bash scripts/install-packages.sh run      and the virtual display that run.sh serves
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
  mingw-w64 mingw-w64-tools libz-mingw-w64-dev wine wine64 fonts-wine xvfb
  # fetching and building the MinGW libcrypto
  dpkg-dev perl make ca-certificates
  # the help file (Free Pascal's CHM writer, built from its sources; chmls reads the file
  # back in the tests) and the installer
  fp-compiler fp-units-fcl fpc-source fp-utils nsis
)
if [ "${1:-}" = "run" ]; then
  # a virtual display with a window manager, served to a VNC viewer and a browser; window
  # lookup and the screen picture of run.sh --shot
  packages+=(xvfb openbox x11vnc novnc websockify xdotool imagemagick)
fi

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
