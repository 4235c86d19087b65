#!/usr/bin/env bash
# Draws the artwork twice and requires byte-identical files, and every file non-empty.
set -euo pipefail
python=$1 script=$2 out=$3
rm -rf "$out"
"$python" "$script" "$out/first"
"$python" "$script" "$out/second"
count=0
for file in "$out"/first/*; do
  [ -s "$file" ] || { echo "empty: $file"; exit 1; }
  cmp "$file" "$out/second/$(basename "$file")"
  count=$((count + 1))
done
[ "$count" -eq 9 ] || { echo "expected 9 files, got $count"; exit 1; }
echo "9 artwork files drawn twice, identical"
