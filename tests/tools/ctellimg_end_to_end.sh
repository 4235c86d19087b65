#!/usr/bin/env bash
# Drives the built ctellimg through every command on real image files: create, info, show,
# check, passwd, check with the new and the old password, clear, check again; for each
# cipher and key length, fixed and dynamic, and split into several volume files.
# Usage: ctellimg_end_to_end.sh PATH_TO_CTELLIMG
set -u

tool=$1
work=$(mktemp -d "${TMPDIR:-/tmp}/ctellimg-e2e.XXXXXX")
trap 'rm -rf "$work"' EXIT
failures=0
checks=0

fail() {
  echo "FAIL: $*" >&2
  failures=$((failures + 1))
}

# run NAME EXPECTED_EXIT STDIN ARGS...: runs the tool with STDIN as its input; keeps the
# output in $work/NAME.out and $work/NAME.err.
run() {
  local name=$1 expected=$2 input=$3
  shift 3
  printf '%s' "$input" | "$tool" "$@" >"$work/$name.out" 2>"$work/$name.err"
  local status=$?
  checks=$((checks + 1))
  if [ "$status" -ne "$expected" ]; then
    fail "$name: ctellimg $* exited $status, expected $expected"
    sed 's/^/    /' "$work/$name.err" >&2
  fi
}

# field NAME KEY: one field of the JSON object that step NAME printed.
field() {
  python3 -c 'import json, sys; print(json.load(open(sys.argv[1]))[sys.argv[2]])' \
    "$work/$1.out" "$2" 2>/dev/null || echo "<no field $2>"
}

expect_field() {
  local name=$1 key=$2 expected=$3
  local actual
  actual=$(field "$name" "$key")
  checks=$((checks + 1))
  [ "$actual" = "$expected" ] || fail "$name: $key is '$actual', expected '$expected'"
}

expect_text() {
  local name=$1 stream=$2 text=$3
  checks=$((checks + 1))
  grep -qF -- "$text" "$work/$name.$stream" || fail "$name: $stream lacks '$text'"
}

# refused NAME TEXT: step NAME printed nothing on standard output and exactly TEXT (one
# or more whole lines) on standard error.
refused() {
  local name=$1 text=$2
  checks=$((checks + 1))
  [ ! -s "$work/$name.out" ] || fail "$name: printed on standard output: $(cat "$work/$name.out")"
  printf '%s\n' "$text" | cmp -s - "$work/$name.err" ||
    fail "$name: standard error was
$(cat "$work/$name.err")
expected
$text"
}

# The messages of the failures that a test provokes, exactly as the tool words them.
wrong_password() {
  printf 'Cannot open %s.\nPassword is wrong or the virtual disk image file is not valid or is corrupted.\nError code: 4005000B' "$1"
}
operation_failed() {
  printf 'Operation failed.\nError code: %s\n\nPlease contact technical support if the problem persists.' "$1"
}

# The usage text, which a wrong command line prints on standard error after its reason.
run help 0 "" --help
expect_text help out "ctellimg passwd IMAGE"
usage=$(cat "$work/help.out")

# cycle ALGORITHM INDEX BITS FIXED(0/1) CAPACITY_TEXT CAPACITY_BYTES [create options...]
cycle() {
  local algorithm=$1 index=$2 bits=$3 fixed=$4 text=$5 bytes=$6
  shift 6
  local tag="$algorithm-$bits-$fixed"
  local image="$work/$tag.qvi"
  local fixedOption=()
  [ "$fixed" = 1 ] && fixedOption=(--fixed)

  run "$tag-create" 0 $'first pw\n' create "$image" --capacity "$text" "${fixedOption[@]}" \
    --algorithm "$algorithm" --key-bits "$bits" "$@"
  expect_text "$tag-create" out "Created $image"

  run "$tag-info" 0 "" info "$image" --json
  expect_field "$tag-info" algorithm "$index"
  expect_field "$tag-info" keyLength $((bits / 8))
  expect_field "$tag-info" mode 1
  local identity
  identity=$(field "$tag-info" identityBlock)
  checks=$((checks + 1))
  [[ "$identity" =~ ^[0-9a-f]{128}$ ]] || fail "$tag-info: identity block '$identity'"

  run "$tag-show" 0 $'first pw\n' show "$image" --json
  expect_field "$tag-show" capacity "$bytes"
  expect_field "$tag-show" algorithm "$index"
  expect_field "$tag-show" keyLength $((bits / 8))
  expect_field "$tag-show" mode 1
  # Bit 0: fixed image; bit 4: the show opened it read-only.
  checks=$((checks + 1))
  [ $(( $(field "$tag-show" flags) & 17 )) -eq $(( fixed + 16 )) ] ||
    fail "$tag-show: flags $(field "$tag-show" flags)"
  local identifier
  identifier=$(field "$tag-show" imageIdentifier)

  run "$tag-check" 0 $'first pw\n' check "$image" --data --json
  expect_field "$tag-check" ok True
  expect_field "$tag-check" dataRead True
  local read
  read=$(field "$tag-check" bytesRead)
  checks=$((checks + 1))
  if [ "$fixed" = 1 ]; then
    [ "$read" -ge "$bytes" ] || fail "$tag-check: read $read bytes of a $bytes-byte fixed image"
    expect_field "$tag-check" tableBlocks 0
  else
    [ "$read" -gt 0 ] && [ "$read" -lt "$bytes" ] || fail "$tag-check: read $read bytes"
    [ "$(field "$tag-check" tableBlocks)" -ge 1 ] || fail "$tag-check: no table block checked"
  fi

  run "$tag-passwd" 0 $'first pw\nsecond pw\n' passwd "$image"
  expect_text "$tag-passwd" out "password has been successfuly changed"

  run "$tag-check-new" 0 $'second pw\n' check "$image"
  expect_text "$tag-check-new" out "is sound"
  run "$tag-check-old" 1 $'first pw\n' check "$image"
  refused "$tag-check-old" "$(wrong_password "$image")"

  run "$tag-clear" 0 $'second pw\n' clear "$image" --yes
  expect_text "$tag-clear" out "Virtual disk image has been cleared."
  run "$tag-check-cleared" 0 $'second pw\n' check "$image" --data --json
  expect_field "$tag-check-cleared" ok True
  run "$tag-show-cleared" 0 $'second pw\n' show "$image" --json
  expect_field "$tag-show-cleared" capacity "$bytes"
  checks=$((checks + 1))
  [ "$(field "$tag-show-cleared" imageIdentifier)" != "$identifier" ] ||
    fail "$tag: clearing kept the image identifier"
  run "$tag-info-cleared" 0 "" info "$image" --json
  expect_field "$tag-info-cleared" identityBlock "$identity"
}

for fixed in 0 1; do
  cycle aes 0 128 "$fixed" "4 MB" 4194304
  cycle aes 0 192 "$fixed" "5.5 MB" 5242880
  cycle aes 0 256 "$fixed" "8 MB" 8388608
  cycle blowfish 1 128 "$fixed" "6 MB" 6291456
  cycle blowfish 1 448 "$fixed" "4 MB" 4194304
  cycle cast 2 64 "$fixed" "4 MB" 4194304
  cycle cast 2 128 "$fixed" "8M" 8388608
done
expect_text "aes-192-0-create" err "Capacity adjusted to 5 MB"

# Split into volume files of at most 2 MiB: an 8 MB fixed image needs at least 3.
split="$work/split/disk.qvi"
mkdir -p "$work/split"
run split-create 0 $'split pw\n' create "$split" --capacity "8 MB" --fixed --split 2097152
volumes=$(ls "$work/split" | wc -l)
checks=$((checks + 1))
[ "$volumes" -ge 3 ] || fail "split: $volumes volume files"
for file in "$work"/split/*; do
  size=$(stat -c %s "$file")
  checks=$((checks + 1))
  [ "$size" -le 2097152 ] || fail "split: $file has $size bytes"
done
run split-show 0 $'split pw\n' show "$split" --json
expect_field split-show volumeSizeLimit 2097152
run split-check 0 $'split pw\n' check "$split" --data --json
expect_field split-check volumes "$volumes"
run split-passwd 0 $'split pw\nnew split pw\n' passwd "$split"
run split-check-new 0 $'new split pw\n' check "$split" --data --json
expect_field split-check-new volumes "$volumes"
run split-check-old 1 $'split pw\n' check "$split"
refused split-check-old "$(wrong_password "$split")"
run split-clear 0 $'new split pw\n' clear "$split" --yes
run split-check-cleared 0 $'new split pw\n' check "$split" --data --json
run split-create-again 1 $'x\n' create "$split" --capacity "8 MB"
refused split-create-again "Cannot create $split.
A file of that name exists already; delete it first to replace it."
rm "$work/split/disk-2.qvi"
run split-missing 1 $'new split pw\n' check "$split"
refused split-missing "Cannot open $split.
Virtual disk image volume file is missing.
Error code: 4005000C"

# The file-system limit: one volume file while it fits.
run fat-create 0 $'pw\n' create "$work/fat.qvi" --capacity "4 MB" --fat
run fat-show 0 $'pw\n' show "$work/fat.qvi" --json
expect_field fat-show volumeSizeLimit 18446744073709551615

# A damaged allocation table block that the open does not load: show still works, check
# finds it. An 8 MB dynamic image has three table blocks behind the descriptor's and the
# information record's units; the last one is stream unit 4, after the 4096-byte header.
run table-create 0 $'pw\n' create "$work/table.qvi" --capacity "8 MB"
run table-check 0 $'pw\n' check "$work/table.qvi" --json
expect_field table-check tableBlocks 3
python3 -c '
import sys
with open(sys.argv[1], "r+b") as f:
    f.seek(4096 + 4 * 4096 + 100)
    byte = f.read(1)[0]
    f.seek(4096 + 4 * 4096 + 100)
    f.write(bytes([byte ^ 1]))' "$work/table.qvi"
run table-show-damaged 0 $'pw\n' show "$work/table.qvi" --json
run table-check-damaged 1 $'pw\n' check "$work/table.qvi"
refused table-check-damaged "$(operation_failed 40050013)"

# Refusals: each with its exit status and exactly its message.
run split-too-small 1 $'pw\n' create "$work/small.qvi" --capacity "4 MB" --split 5000
refused split-too-small "$(operation_failed 40050002)"
checks=$((checks + 1))
[ ! -e "$work/small.qvi" ] || fail "a refused creation left a file behind"
run empty-password 1 $'\n' create "$work/empty.qvi" --capacity "4 MB"
refused empty-password "Please enter the password."
run no-password 1 "" create "$work/none.qvi" --capacity "4 MB"
refused no-password "No password on standard input: give each password as one line."
run no-capacity 2 "" create "$work/x.qvi"
refused no-capacity "ctellimg: create needs --capacity
$usage"
run bad-capacity 2 "" create "$work/x.qvi" --capacity "64"
refused bad-capacity "ctellimg: cannot read the capacity \"64\": give a number and MB, GB or TB, such as \"64 MB\" or \"1.5 TB\"
$usage"
run bad-key 2 "" create "$work/x.qvi" --capacity "4 MB" --algorithm cast --key-bits 256
refused bad-key "ctellimg: CAST takes a key of 40 to 128 bits in steps of 8
$usage"
run unknown-command 2 "" mount "$work/x.qvi"
refused unknown-command "ctellimg: unknown command: mount
$usage"
run clear-unconfirmed 2 $'pw\n' clear "$work/fat.qvi"
refused clear-unconfirmed \
  "clear wipes the image's contents: give --yes when standard input is not a terminal."
checks=$((checks + 1))
[ ! -e "$work/empty.qvi" ] && [ ! -e "$work/none.qvi" ] && [ ! -e "$work/x.qvi" ] ||
  fail "a refused creation left a file behind"
run missing-info 1 "" info "$work/nothing.qvi" --json
refused missing-info "$(operation_failed 4000000F)"
head -c 8192 /dev/zero >"$work/zeros.qvi"
run foreign-info 1 "" info "$work/zeros.qvi"
refused foreign-info "$(wrong_password "$work/zeros.qvi")"

echo "$checks checks, $failures failures"
[ "$failures" -eq 0 ]
