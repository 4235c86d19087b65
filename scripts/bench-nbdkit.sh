#!/usr/bin/env bash
# Sequential write and read of 512 MiB through nbdcopy: nbdkit-qvi-plugin over a fixed
# AES-256 image next to nbdkit's own file plugin over a raw file of the same size, on the
# same file system (build/release/scratch, removed at the end), from the optimised build
# without sanitizers. Prints both speeds and their ratio for each direction.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-packages.sh >&2
cmake --preset release >/dev/null
cmake --build --preset release -j "$(nproc)" --target ctellimg nbdkit-qvi-plugin >/dev/null
tool=$PWD/build/release/bin/ctellimg
plugin=$PWD/build/release/lib/nbdkit-qvi-plugin.so
scratch=$PWD/build/release/scratch
rm -rf "$scratch"
mkdir -p "$scratch"
servers=()
trap 'for pid in "${servers[@]}"; do kill "$pid" 2>/dev/null; done; rm -rf "$scratch"' EXIT

mib=512
printf 'bench password\n' >"$scratch/password"
head -c $((mib << 20)) /dev/urandom >"$scratch/source.bin"
head -c $((mib << 20)) /dev/zero >"$scratch/raw.img"
"$tool" create "$scratch/bench.qvi" --capacity "$mib MB" --fixed <"$scratch/password" >/dev/null

# serve SOCKET ARGS...: nbdkit in the background until the end of the run.
serve() {
  local socket=$1
  shift
  nbdkit -f -U "$socket" "$@" &
  servers+=("$!")
  for _ in $(seq 200); do
    [ -S "$socket" ] && return 0
    sleep 0.05
  done
  echo "nbdkit did not start: $*" >&2
  return 1
}
serve "$scratch/qvi.sock" "$plugin" file="$scratch/bench.qvi" password=+"$scratch/password"
serve "$scratch/file.sock" file "$scratch/raw.img"

# speed FROM TO: MiB/s of one nbdcopy with a flush at the end. Each copy starts with nothing
# left to write back from the set-up or the copy before, which the system would otherwise
# write during it and count against whichever copy comes first.
speed() {
  local start end
  sync
  start=$(date +%s.%N)
  nbdcopy --flush "$1" "$2"
  end=$(date +%s.%N)
  awk -v mib="$mib" -v start="$start" -v end="$end" 'BEGIN {print mib / (end - start)}'
}

qvi="nbd+unix:///?socket=$scratch/qvi.sock"
file="nbd+unix:///?socket=$scratch/file.sock"
qvi_write=$(speed "$scratch/source.bin" "$qvi")
file_write=$(speed "$scratch/source.bin" "$file")
qvi_read=$(speed "$qvi" null:)
file_read=$(speed "$file" null:)

printf '%-44s %10s %10s %7s\n' "nbdcopy, $mib MiB sequential" "qvi MiB/s" "file MiB/s" "ratio"
printf '%-44s %10.1f %10.1f %7.2f\n' "write (fixed AES-256 image vs raw file)" "$qvi_write" \
  "$file_write" "$(awk -v a="$qvi_write" -v b="$file_write" 'BEGIN {print a / b}')"
printf '%-44s %10.1f %10.1f %7.2f\n' "read" "$qvi_read" "$file_read" \
  "$(awk -v a="$qvi_read" -v b="$file_read" 'BEGIN {print a / b}')"
