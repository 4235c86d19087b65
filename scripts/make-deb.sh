#!/usr/bin/env bash
# Builds the Debian package cryptelle-tools (ctellimg, nbdkit-qvi-plugin.so and their man
# pages) from the optimised build without sanitizers (the "release" preset), into
# build/release/. Install it with: apt install ./build/release/cryptelle-tools_*.deb
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-packages.sh >&2
build=build/release
cmake --preset release -DCMAKE_INSTALL_PREFIX=/usr >/dev/null
cmake --build --preset release -j "$(nproc)" --target ctellimg nbdkit-qvi-plugin >/dev/null

stage=$build/deb-root
rm -rf "$stage"
DESTDIR=$PWD/$stage cmake --install "$build" --strip >/dev/null
gzip -9n "$stage"/usr/share/man/man1/*.1

version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
architecture=$(dpkg --print-architecture)

# The packages that own the shared libraries the two programs load (dpkg knows a library
# by the path its package ships, /lib or /usr/lib).
owner() {
  dpkg -S "$1" 2>/dev/null || dpkg -S "${1#/usr}" 2>/dev/null || dpkg -S "/usr$1" 2>/dev/null || true
}
libraries=$(
  for binary in "$stage"/usr/bin/ctellimg "$stage"/usr/lib/*/nbdkit/plugins/*.so; do
    ldd "$binary" | awk '/=> \// {print $3}'
  done | sort -u
)
depends=$(for library in $libraries; do owner "$library"; done | cut -d: -f1 | sort -u |
  paste -sd, - | sed 's/,/, /g')

mkdir -p "$stage/DEBIAN" "$stage/usr/share/doc/cryptelle-tools"
cat >"$stage/DEBIAN/control" <<CONTROL
Package: cryptelle-tools
Version: $version-1
Architecture: $architecture
Maintainer: Pellmora <support@pellmora.invalid>
Section: utils
Priority: optional
Depends: $depends
Recommends: nbdkit, libnbd-bin
Installed-Size: $(du -sk "$stage/usr" | cut -f1)
Description: Cryptelle encrypted disk images on Linux
 ctellimg creates, inspects, checks, re-keys and clears encrypted .qvi disk
 images; nbdkit-qvi-plugin serves the disk inside an image over NBD, so that
 nbdcopy, nbdfuse or the kernel's NBD client reach it and its file system
 can be mounted.
CONTROL
cat >"$stage/usr/share/doc/cryptelle-tools/copyright" <<COPYRIGHT
Cryptelle tools
Copyright: Pellmora
COPYRIGHT

package=$build/cryptelle-tools_${version}-1_${architecture}.deb
dpkg-deb --root-owner-group --build "$stage" "$package" >/dev/null
echo "$package"
