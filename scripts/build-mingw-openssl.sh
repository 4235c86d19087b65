#!/usr/bin/env bash
# Builds a static MinGW-w64 libcrypto from Debian's openssl source package.
# Debian ships no MinGW OpenSSL, so the Windows build makes its own. The result is cached
# outside the source tree, keyed by the tarball's hash, the configure options and the
# compiler version: a second run with the same inputs costs only the key computation.
# Prints the installation prefix on its last line of standard output.
set -euo pipefail

cache_root=${CRYPTELLE_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/cryptelle}
cc=x86_64-w64-mingw32-gcc-posix
# The random generator takes its entropy from BCryptGenRandom, as OpenSSL's own Windows
# builds with Visual C++ do. Without the define a MinGW build uses the old CryptoAPI, which
# loads and unloads its provider libraries twice when the generator is first seeded: 4 to 9
# ms under Wine on every start of the program before its window appears, against about 1 ms.
options=(mingw64 --cross-compile-prefix=x86_64-w64-mingw32- -DUSE_BCRYPTGENRANDOM
  no-shared no-tests no-module
  no-dso no-engine no-legacy no-autoload-config no-ui-console no-async
  no-comp no-ct no-ocsp no-srp no-cms no-ts no-dgram no-sock
  no-idea no-seed no-mdc2 no-rmd160 no-whirlpool no-camellia no-aria no-sm2 no-sm3 no-sm4
  no-siphash no-scrypt no-gost no-ec2m)

src_dir=$cache_root/openssl-src
mkdir -p "$src_dir"

# Fetch the upstream tarball of Debian's openssl source package (hash-checked by apt).
# apt runs with a private source list and state so the machine's apt setup is untouched.
tarball=$(ls "$src_dir"/openssl_*.orig.tar.gz 2>/dev/null | head -n 1 || true)
if [ -z "$tarball" ]; then
  apt_dir=$cache_root/apt
  mkdir -p "$apt_dir/lists/partial" "$apt_dir/cache/archives/partial"
  sources=/etc/apt/sources.list.d/debian.sources
  if [ -f "$sources" ]; then
    sed 's/^Types: deb$/Types: deb-src/' "$sources" >"$apt_dir/deb-src.sources"
  else
    grep -h '^deb ' /etc/apt/sources.list | sed 's/^deb /deb-src /' >"$apt_dir/deb-src.list"
  fi
  apt_opts=(-o "Dir::Etc::SourceList=/dev/null" -o "Dir::Etc::SourceParts=$apt_dir"
    -o "Dir::State::Lists=$apt_dir/lists" -o "Dir::Cache=$apt_dir/cache"
    -o "APT::Sandbox::User=root" -o "Debug::NoLocking=1")
  apt-get "${apt_opts[@]}" update -qq
  (cd "$src_dir" && apt-get "${apt_opts[@]}" source --download-only --tar-only openssl >/dev/null)
  tarball=$(ls "$src_dir"/openssl_*.orig.tar.gz | head -n 1)
fi

key=$( {
  sha256sum "$tarball" | cut -d' ' -f1
  printf '%s\n' "${options[@]}"
  "$cc" --version | head -n 1
} | sha256sum | cut -c1-16)
prefix=$cache_root/openssl-mingw-$key

if [ ! -f "$prefix/lib/libcrypto.a" ]; then
  work=$(mktemp -d "$cache_root/openssl-build.XXXXXX")
  trap 'rm -rf "$work"' EXIT
  tar -xzf "$tarball" -C "$work" --strip-components=1
  (
    cd "$work"
    CC=gcc-posix CXX=g++-posix ./Configure "${options[@]}" --prefix="$prefix" >/dev/null
    make -s -j"$(nproc)" build_generated >/dev/null
    make -s -j"$(nproc)" libcrypto.a >/dev/null
  )
  stage=$prefix.tmp
  rm -rf "$stage"
  mkdir -p "$stage/lib" "$stage/include"
  cp "$work/libcrypto.a" "$stage/lib/"
  cp -r "$work/include/openssl" "$stage/include/"
  rm -rf "$prefix"
  mv "$stage" "$prefix"
fi
echo "$prefix"
