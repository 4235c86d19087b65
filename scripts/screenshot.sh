#!/usr/bin/env bash
# Renders a window or dialog of the Windows program to a PNG file, headless under Wine's
# null graphics driver (in-process capture: the window and its controls are painted into
# the window's own device context and copied from there).
#
#   bash scripts/screenshot.sh --list                 the scenes there are
#   bash scripts/screenshot.sh SCENE OUTPUT.png       one scene into OUTPUT.png
#
# Scenes come from a screenshot program: an executable that lists its scenes and calls
# RunScreenshotTool (tools/screenshot/screenshot_tool.h). The default is the test
# template's program; choose another with --program TARGET.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/wine-common.sh

program=ui_test_scenes
if [ "${1:-}" = "--program" ]; then
  program=$2
  shift 2
fi
if [ "$#" -eq 0 ] || { [ "$1" != "--list" ] && [ "$#" -ne 2 ]; }; then
  echo "usage: $0 [--program TARGET] --list | SCENE OUTPUT.png" >&2
  exit 1
fi

bash scripts/install-packages.sh >&2
cmake --preset windows >/dev/null
cmake --build --preset windows --target "$program" >/dev/null

export WINEPREFIX=$(default_wine_prefix)
exe=build/windows/bin/$program.exe
if [ "$1" = "--list" ]; then
  scripts/wine-run.sh "$exe" --list | tr -d '\r'
  exit 0
fi

# The Windows program sees the Unix file system as drive Z:.
output=$(realpath -m "$2")
mkdir -p "$(dirname "$output")"
scripts/wine-run.sh "$exe" "$1" "Z:$output" >/dev/null
echo "$output"
