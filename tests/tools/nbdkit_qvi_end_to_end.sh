#!/usr/bin/env bash
# Serves images through nbdkit-qvi-plugin.so and reaches their disks with libnbd's tools:
# random unaligned writes and reads against a shadow file (fixed and dynamic, AES, Blowfish
# and CAST, a split image), unaligned writes sharing units over several connections at
# once, --readonly, ctellimg's data check after the server stops, a FAT
# file system that outlives a restart, an ext4 file system that the kernel mounts through
# nbdfuse (where root, FUSE and loop devices allow), a clean close on SIGINT and SIGTERM, a killed server,
# and every start-up failure with the program's text and code in the log and the image
# unchanged.
# Usage: nbdkit_qvi_end_to_end.sh PATH_TO_CTELLIMG PATH_TO_PLUGIN
set -u

tool=$1
plugin=$2
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d "${TMPDIR:-/tmp}/nbdkit-qvi-e2e.XXXXXX")
failures=0
checks=0
server=

cleanup() {
  # A failed kernel-mount check may leave its mounts behind: they go before the files.
  umount -l "$work/fs" "$work/fuse" 2>/dev/null
  [ -n "$server" ] && kill -KILL "$server" 2>/dev/null
  rm -rf "$work"
}
trap cleanup EXIT

fail() {
  echo "FAIL: $*" >&2
  failures=$((failures + 1))
}

check() {
  checks=$((checks + 1))
  "$@"
}

# The libnbd Python binding lives in the system's Python, whatever python3 is first.
python=python3
[ -x /usr/bin/python3 ] && python=/usr/bin/python3

# A plugin built with AddressSanitizer needs its runtime loaded before nbdkit starts.
# nbdkit's own allocations are not this project's: leak reports are off.
server_env=()
asan=$(ldd "$plugin" | awk '/libasan/ {print $3}')
[ -n "$asan" ] && server_env=(LD_PRELOAD="$asan" ASAN_OPTIONS=detect_leaks=0:abort_on_error=0)

socket=$work/nbd.sock
uri="nbd+unix:///?socket=$socket"

# serve LOG ARGS...: starts nbdkit in the foreground (background job) with its log in LOG;
# returns 0 once it accepts connections, 1 when it ended instead (start-up failed).
serve() {
  local log=$1
  shift
  rm -f "$socket"
  env "${server_env[@]}" nbdkit -f -U "$socket" "$plugin" "$@" 2>"$log" &
  server=$!
  for _ in $(seq 200); do
    if ! kill -0 "$server" 2>/dev/null; then
      wait "$server"
      server=
      return 1
    fi
    [ -S "$socket" ] && return 0
    sleep 0.05
  done
  fail "nbdkit did not start: $(cat "$log")"
  return 1
}

# stop SIGNAL: stops the server with SIGNAL and expects a clean exit.
stop() {
  kill -"$1" "$server"
  local status=0
  for _ in $(seq 200); do
    kill -0 "$server" 2>/dev/null || break
    sleep 0.05
  done
  if kill -0 "$server" 2>/dev/null; then
    fail "nbdkit did not end on SIG$1"
    kill -KILL "$server"
  fi
  wait "$server" || status=$?
  server=
  check [ "$status" -eq 0 ] || fail "nbdkit ended with status $status on SIG$1"
}

sanitizer_clean() {
  check true
  ! grep -q "Sanitizer" "$1" || fail "sanitizer report in $1: $(grep -A5 Sanitizer "$1")"
}

volume_hash() {
  local image=$1 base=${1%.qvi}
  cat "$image" "$base"-[0-9]*.qvi 2>/dev/null | sha256sum
}

descriptor_flags() {
  "$tool" show "$1" --json <"$work/password" |
    "$python" -c 'import json, sys; print(json.load(sys.stdin)["flags"])'
}

printf 'correct horse\n' >"$work/password"

# create NAME ARGS...: a new image under $work with the test password.
create() {
  local name=$1
  shift
  "$tool" create "$work/$name" "$@" <"$work/password" >/dev/null ||
    fail "ctellimg create $name $*"
}

# exercise NAME SIGNAL SEED: random I/O through the server, a stop with SIGNAL, the data
# check, and a read-only serve that must show the same bytes and refuse writes.
exercise() {
  local name=$1 signal=$2 seed=$3 image=$work/$1
  local capacity
  capacity=$("$tool" show "$image" --json <"$work/password" |
    "$python" -c 'import json, sys; print(json.load(sys.stdin)["capacity"])')
  truncate -s "$capacity" "$work/$name.shadow"
  serve "$work/$name.log" file="$image" password=+"$work/password" || {
    fail "$name: serving failed: $(cat "$work/$name.log")"
    return
  }
  check "$python" "$here/nbd_shadow_io.py" "$socket" "$work/$name.shadow" write "$seed" ||
    fail "$name: random I/O"
  check "$python" "$here/nbd_shadow_io.py" "$socket" "$work/$name.shadow" parallel "$seed" ||
    fail "$name: parallel writes over several connections"
  stop "$signal"
  sanitizer_clean "$work/$name.log"
  check "$tool" check "$image" --data <"$work/password" >/dev/null ||
    fail "$name: ctellimg check --data"
  check [ $(($(descriptor_flags "$image") & 0x80000000)) -eq 0 ] ||
    fail "$name: the in-use mark is still set after SIG$signal"

  serve "$work/$name.ro.log" file="$image" password=+"$work/password" --readonly || {
    fail "$name: serving read-only failed: $(cat "$work/$name.ro.log")"
    return
  }
  local before
  before=$(volume_hash "$image")
  check "$python" "$here/nbd_shadow_io.py" "$socket" "$work/$name.shadow" verify ||
    fail "$name: read-only verification"
  check nbdcopy "$uri" "$work/$name.out" || fail "$name: nbdcopy out"
  check cmp -s "$work/$name.out" "$work/$name.shadow" ||
    fail "$name: the copied disk differs from the shadow"
  stop INT
  check [ "$(volume_hash "$image")" = "$before" ] || fail "$name: a read-only serve changed it"
  rm -f "$work/$name.out"
}

create aes-dynamic-split.qvi --capacity "12 MB" --split $((3 * 1048576 + 4096))
exercise aes-dynamic-split.qvi TERM 1
check [ -e "$work/aes-dynamic-split-3.qvi" ] || fail "the split image has fewer than 4 files"
create blowfish-fixed.qvi --capacity "8 MB" --fixed --algorithm blowfish --key-bits 128
exercise blowfish-fixed.qvi INT 2
create cast-dynamic.qvi --capacity "8 MB" --algorithm cast --key-bits 128
exercise cast-dynamic.qvi TERM 3

# nbdkit forks to run a command (as it does to go into the background); the forked
# process must not keep the image locked from the server.
check env "${server_env[@]}" nbdkit -U - "$plugin" file="$work/cast-dynamic.qvi" \
  password=+"$work/password" --run "nbdcopy \"\$uri\" $work/run.raw" 2>"$work/run.log" ||
  fail "nbdkit --run: $(cat "$work/run.log")"
check cmp -s "$work/run.raw" "$work/cast-dynamic.qvi.shadow" || fail "nbdkit --run copied other bytes"
rm -f "$work/run.raw"

# A killed server leaves the in-use mark; the next open accepts the image all the same.
image=$work/cast-dynamic.qvi
serve "$work/kill.log" file="$image" password=+"$work/password" &&
  printf 'after a crash' | nbdcopy - "$uri" 2>/dev/null
check [ -n "$server" ] || fail "serving for the crash failed"
if [ -n "$server" ]; then
  kill -KILL "$server"
  wait "$server" 2>/dev/null
  server=
fi
check [ $(($(descriptor_flags "$image") & 0x80000000)) -ne 0 ] ||
  fail "a killed writable server left no in-use mark"
check "$tool" check "$image" --data <"$work/password" >/dev/null ||
  fail "the image of a killed server does not pass the check"

# A FAT file system made through the plugin holds its files after a restart: the disk is
# copied out, formatted and filled with mtools, and copied back in.
image=$work/fat.qvi
create fat.qvi --capacity "16 MB"
head -c 300000 /dev/urandom >"$work/payload.bin"
printf 'hello from the encrypted disk\n' >"$work/hello.txt"
if serve "$work/fat.log" file="$image" password=+"$work/password"; then
  nbdcopy "$uri" "$work/fat.raw" && mkfs.fat -n QVIDISK "$work/fat.raw" >/dev/null &&
    MTOOLS_SKIP_CHECK=1 mcopy -i "$work/fat.raw" "$work/payload.bin" "$work/hello.txt" ::/ &&
    nbdcopy "$work/fat.raw" "$uri" || fail "formatting through the plugin"
  stop TERM
fi
rm -f "$work/fat.raw"
if serve "$work/fat2.log" file="$image" password=+"$work/password" --readonly; then
  mkdir "$work/back"
  nbdcopy "$uri" "$work/fat.raw" &&
    MTOOLS_SKIP_CHECK=1 mcopy -i "$work/fat.raw" ::/payload.bin ::/hello.txt "$work/back/" ||
    fail "reading the file system back"
  stop TERM
fi
check cmp -s "$work/payload.bin" "$work/back/payload.bin" || fail "payload.bin differs"
check cmp -s "$work/hello.txt" "$work/back/hello.txt" || fail "hello.txt differs"
check "$tool" check "$image" --data <"$work/password" >/dev/null || fail "fat.qvi check"

# The kernel mounts the disk: nbdfuse shows the served disk as a file, a loop device carries
# an ext4 file system made on it, and the files written there are back after a restart,
# mounted read-only. It needs root, FUSE and loop devices, and a machine that lets them
# mount; without them it says why it is skipped.
mount_skip=
[ "$(id -u)" -eq 0 ] || mount_skip="not root"
[ -c /dev/fuse ] || mount_skip="no /dev/fuse"
command -v nbdfuse >/dev/null || mount_skip="no nbdfuse"
grep -qw ext4 /proc/filesystems || mount_skip="no ext4 in the kernel"
losetup -f >/dev/null 2>&1 || mount_skip="no free loop device"
mkdir "$work/fuse" "$work/fs" "$work/back-ext4"

# through_fuse [-r] COMMAND...: runs COMMAND while nbdfuse shows the served disk as
# $work/fuse/nbd (read-only with -r), then takes the FUSE mount down again.
through_fuse() {
  local options=() fuse status=1
  [ "$1" = "-r" ] && { options=(-r); shift; }
  nbdfuse "${options[@]}" "$work/fuse" "$uri" &
  fuse=$!
  for _ in $(seq 100); do
    [ -e "$work/fuse/nbd" ] && break
    sleep 0.1
  done
  [ -e "$work/fuse/nbd" ] && "$@" && status=0
  # An nbdfuse that never mounted is ended instead.
  umount "$work/fuse" 2>/dev/null || kill "$fuse" 2>/dev/null
  wait "$fuse"
  return "$status"
}

# Whether this machine lets nbdfuse and a loop device mount a disk, tried with nbdkit's own
# memory plugin, so that only the machine is probed here.
probe_ext4() {
  mkfs.ext4 -q -F "$work/fuse/nbd" && mount -o loop "$work/fuse/nbd" "$work/fs" && umount "$work/fs"
}
kernel_mount_works() {
  local probe works=1
  rm -f "$socket"
  nbdkit -f -U "$socket" memory 16M 2>/dev/null &
  probe=$!
  for _ in $(seq 100); do
    [ -S "$socket" ] && break
    sleep 0.05
  done
  through_fuse probe_ext4 2>/dev/null && works=0
  kill "$probe" 2>/dev/null
  wait "$probe" 2>/dev/null
  return "$works"
}
[ -n "$mount_skip" ] || kernel_mount_works || mount_skip="this machine refuses the mount"

fill_ext4() {
  mkfs.ext4 -q -F "$work/fuse/nbd" && mount -o loop "$work/fuse/nbd" "$work/fs" &&
    cp "$work/payload.bin" "$work/hello.txt" "$work/fs/" && umount "$work/fs"
}

read_ext4() {
  mount -o loop,ro "$work/fuse/nbd" "$work/fs" &&
    cp "$work/fs/payload.bin" "$work/fs/hello.txt" "$work/back-ext4/" && umount "$work/fs"
}

if [ -n "$mount_skip" ]; then
  echo "skipped: the kernel mount through nbdfuse ($mount_skip)"
else
  image=$work/ext4.qvi
  create ext4.qvi --capacity "32 MB"
  if serve "$work/ext4.log" file="$image" password=+"$work/password"; then
    through_fuse fill_ext4 || fail "an ext4 file system made and filled through the plugin"
    stop TERM
  fi
  if serve "$work/ext4-2.log" file="$image" password=+"$work/password" --readonly; then
    through_fuse -r read_ext4 || fail "the ext4 file system mounted again, read-only"
    stop TERM
  fi
  check cmp -s "$work/payload.bin" "$work/back-ext4/payload.bin" || fail "ext4: payload.bin differs"
  check cmp -s "$work/hello.txt" "$work/back-ext4/hello.txt" || fail "ext4: hello.txt differs"
  check "$tool" check "$image" --data <"$work/password" >/dev/null || fail "ext4.qvi check"
fi

# refused NAME IMAGE PASSWORD_FILE: the server does not start; its log holds every line
# of ctellimg's report for the same open (the program's text and the code), and the
# image's volume files are unchanged.
refused() {
  local name=$1 image=$2 password=$3
  local before
  before=$(volume_hash "$image")
  "$tool" check "$image" <"$password" >/dev/null 2>"$work/$name.expected"
  if serve "$work/$name.log" file="$image" password=+"$password"; then
    fail "$name: the server started"
    stop TERM
    return
  fi
  check true
  while IFS= read -r line; do
    [ -z "$line" ] && continue
    check grep -qF -- "$line" "$work/$name.log" || fail "$name: the log lacks '$line'"
  done <"$work/$name.expected"
  check grep -q "Error code: 400" "$work/$name.log" || fail "$name: no error code in the log"
  check [ "$(volume_hash "$image")" = "$before" ] || fail "$name: the image changed"
}

printf 'wrong horse\n' >"$work/wrong"
refused wrong-password "$work/blowfish-fixed.qvi" "$work/wrong"
grep -q "4005000B" "$work/wrong-password.log" || fail "wrong password: not 4005000B"
head -c 65536 /dev/urandom >"$work/foreign.qvi"
refused foreign "$work/foreign.qvi" "$work/password"
cp "$work/cast-dynamic.qvi" "$work/damaged.qvi"
# One byte of the descriptor's unit, behind the volume header.
printf '\xff' | dd of="$work/damaged.qvi" bs=1 seek=4200 conv=notrunc status=none
refused damaged "$work/damaged.qvi" "$work/password"
grep -q "40050013" "$work/damaged.log" || fail "damaged: not 40050013"
refused missing-image "$work/absent.qvi" "$work/password"
grep -q "4000000F" "$work/missing-image.log" || fail "missing image: not 4000000F"
mv "$work/aes-dynamic-split-2.qvi" "$work/aside.qvi"
refused missing-volume "$work/aes-dynamic-split.qvi" "$work/password"
grep -q "4005000C" "$work/missing-volume.log" || fail "missing volume: not 4005000C"
mv "$work/aside.qvi" "$work/aes-dynamic-split-2.qvi"

# An image that one server holds cannot be served by a second one.
image=$work/blowfish-fixed.qvi
if serve "$work/holder.log" file="$image" password=+"$work/password"; then
  holder=$server
  holder_socket=$socket
  socket=$work/second.sock
  before=$(volume_hash "$image")
  "$tool" check "$image" <"$work/password" >/dev/null 2>"$work/in-use.expected"
  if serve "$work/in-use.log" file="$image" password=+"$work/password"; then
    fail "in use: a second server started"
    stop TERM
  fi
  check grep -q "Error code: 40000008" "$work/in-use.log" || fail "in use: no 40000008 in the log"
  check grep -qF "$(head -1 "$work/in-use.expected")" "$work/in-use.log" ||
    fail "in use: the log lacks the program's text"
  check [ "$(volume_hash "$image")" = "$before" ] || fail "in use: the image changed"
  server=$holder
  socket=$holder_socket
  stop TERM
fi

echo "$checks checks, $failures failed"
[ "$failures" -eq 0 ]
