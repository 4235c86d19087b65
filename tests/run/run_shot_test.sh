#!/usr/bin/env bash
# The README's run command on a machine without a display: run.sh --shot starts the program
# on a virtual display with the demo disk mounted through the mount dialog and writes a PNG
# of the screen once the main window shows (run.sh fails when it does not).
#
#   bash run_shot_test.sh OUTPUT.png
set -euo pipefail
output=$1
rm -f "$output"
# Bounded below the test's own time limit, so that a stall ends with run.sh's report.
env -u DISPLAY timeout 240 bash "$(dirname "${BASH_SOURCE[0]}")/../../scripts/run.sh" --shot "$output"
[ "$(head -c 8 "$output" | od -An -tx1 | tr -d ' \n')" = "89504e470d0a1a0a" ] || {
  echo "run_shot_test: $output is not a PNG file" >&2
  exit 1
}
size=$(stat -c %s "$output")
[ "$size" -gt 4096 ] || { echo "run_shot_test: $output holds only $size bytes" >&2; exit 1; }
echo "run_shot_test: $output, $size bytes"
