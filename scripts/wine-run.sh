#!/usr/bin/env bash
# Runs a Windows executable under Wine: the emulator of the Windows build. A program that
# hangs is killed after CRYPTELLE_WINE_TIMEOUT seconds (default 300), so it fails instead
# of stalling the run; a crash ends at once because the prefix has no debugger.
set -uo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/wine-common.sh"

export WINEPREFIX=${WINEPREFIX:-$(default_wine_prefix)}
[ -f "$WINEPREFIX/.ready" ] || wine_fresh_prefix "$WINEPREFIX" || exit 1

run() {
  local start=$EPOCHREALTIME
  timeout --kill-after=5 "${CRYPTELLE_WINE_TIMEOUT:-300}" "$wine_loader" "$@"
  status=$?
  elapsed_ms=$(((${EPOCHREALTIME/./} - ${start/./}) / 1000))
}

run "$@"
# Wine needs well over 25 ms to load even a missing program (about 36 ms here, 97 ms for
# the shortest test); a failure sooner than that is Wine's own start failing, seen once in
# thousands of runs without a word of output, so the program is started once more.
if [ "$status" -ne 0 ] && [ "$status" -ne 124 ] && [ "$elapsed_ms" -lt 25 ]; then
  echo "wine-run: Wine ended with status $status after $elapsed_ms ms, before $(basename "$1") ran; starting it again" >&2
  run "$@"
fi
# Name the failure in the test log: 124 is the time-out, others come from the program or Wine.
[ "$status" -eq 0 ] || echo "wine-run: $(basename "$1") exited with status $status" >&2
exit "$status"
