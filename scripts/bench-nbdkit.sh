#!/usr/bin/env bash
# Sequential write and read of 512 MiB through nbdcopy: nbdkit-qvi-plugin over a fixed
# AES-256 image next to nbdkit's own file plugin over a raw file of the same size, on the
# same file system (build/release/scratch, removed at the end), from the optimised build
# without sanitizers. Prints both speeds and their ratio for each direction in each of
# BENCH_ROUNDS rounds (default 5), then the median ratio of each direction.
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
rounds=${BENCH_ROUNDS:-5}  # the machine may be busy: each round alternates the two servers
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

# ratio A B: A / B.
ratio() {
  awk -v a="$1" -v b="$2" 'BEGIN {print a / b}'
}

# median VALUES...: the middle one (of an even count, the upper middle).
median() {
  printf '%s\n' "$@" | sort -g | awk '{v[NR] = $1} END {print v[int(NR / 2) + 1]}'
}

qvi="nbd+unix:///?socket=$scratch/qvi.sock"
file="nbd+unix:///?socket=$scratch/file.sock"
printf '%-44s %10s %10s %7s\n' "nbdcopy, $mib MiB sequential" "qvi MiB/s" "file MiB/s" "ratio"
write_ratios=()
read_ratios=()
for round in $(seq "$rounds"); do
  qvi_write=$(speed "$scratch/source.bin" "$qvi")
  file_write=$(speed "$scratch/source.bin" "$file")
  qvi_read=$(speed "$qvi" null:)
  file_read=$(speed "$file" null:)
  write_ratios+=("$(ratio "$qvi_write" "$file_write")")
  read_ratios+=("$(ratio "$qvi_read" "$file_read")")
  printf '%-44s %10.1f %10.1f %7.2f\n' "write $round (fixed AES-256 image vs raw file)" \
    "$qvi_write" "$file_write" "${write_ratios[-1]}"
  printf '%-44s %10.1f %10.1f %7.2f\n' "read $round" "$qvi_read" "$file_read" "${read_ratios[-1]}"
done
printf '%-44s %10s %10s %7.2f\n' "write, median ratio of $rounds rounds" "" "" \
  "$(median "${write_ratios[@]}")"
printf '%-44s %10s %10s %7.2f\n' "read, median ratio of $rounds rounds" "" "" \
  "$(median "${read_ratios[@]}")"
