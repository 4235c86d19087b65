#!/usr/bin/env bash
# Runs a Windows executable under Wine: the emulator of the Windows build. A program that
# hangs is killed after CRYPTELLE_WINE_TIMEOUT seconds (default 300), so it fails instead
# of stalling the run; a crash ends at once because the prefix has no debugger.
set -uo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/wine-common.sh"

export WINEPREFIX=${WINEPREFIX:-$(default_wine_prefix)}
[ -f "$WINEPREFIX/.ready" ] || wine_fresh_prefix "$WINEPREFIX" || exit 1

# What the program or Wine printed on standard error, kept to tell a start that failed in
# silence from a program that ran and failed.
errors=$(mktemp)
trap 'rm -f "$errors"' EXIT

run() {
  local start=$EPOCHREALTIME
  # Standard output goes out as it is; standard error through a copy.
  {
    timeout --kill-after=5 "${CRYPTELLE_WINE_TIMEOUT:-300}" "$wine_loader" "$@" 2>&1 1>&3 3>&- |
      tee "$errors" >&2
    status=${PIPESTATUS[0]}
  } 3>&1
  elapsed_ms=$(((${EPOCHREALTIME/./} - ${start/./}) / 1000))
}

run "$@"
# Wine's own start failed, seen once in thousands of runs: a failure within 25 ms without a
# word on standard error (Wine loads even a missing program in about 36 ms here, the
# shortest test takes 97 ms). The program is started once more then. A program that ran
# and failed, however fast (a crash at its first instruction ends in under 20 ms), has
# printed something, Wine's crash report at least, and is never run again.
if [ "$status" -ne 0 ] && [ "$status" -ne 124 ] && [ "$elapsed_ms" -lt 25 ] && [ ! -s "$errors" ]; then
  echo "wine-run: Wine ended with status $status after $elapsed_ms ms, before $(basename "$1") ran; starting it again" >&2
  run "$@"
fi
# Name the failure in the test log: 124 is the time-out, others come from the program or Wine.
[ "$status" -eq 0 ] || echo "wine-run: $(basename "$1") exited with status $status" >&2
exit "$status"
