#!/usr/bin/env bash
# The picture gallery: every scene of docs/gallery.list rendered by its screenshot program
# under Wine, at 96 DPI into docs/screenshots/ and at 144 DPI into docs/screenshots/144dpi/,
# and the page docs/gallery.md that shows them in the order a user meets them.
#
#   bash scripts/gallery.sh               build the screenshot programs, remake every picture
#                                         and the page
#   bash scripts/gallery.sh --check DIR   render every scene with the built programs into
#                                         DIR, in the running Wine session (the test run's
#                                         check that no scene rots)
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/wine-common.sh

list=docs/gallery.list
entries() { grep -v '^#' "$list" | awk 'NF'; }

# Renders every scene with the prefix $1 into the folder $2.
render_all() {
  local prefix=$1 folder=$2 program scene caption
  mkdir -p "$folder"
  while read -r program scene caption; do
    WINEPREFIX=$prefix scripts/wine-run.sh "build/windows/bin/$program.exe" "$scene" \
      "Z:$(realpath -m "$folder/$scene.png")" >/dev/null </dev/null
    [ -s "$folder/$scene.png" ] || { echo "gallery: $program made no picture of $scene" >&2; return 1; }
  done < <(entries)
}

if [ "${1:-}" = "--check" ]; then
  render_all "${WINEPREFIX:-$(default_wine_prefix)}" "$2"
  exit 0
fi

bash scripts/install-packages.sh >&2
cmake --preset windows >/dev/null
mapfile -t programs < <(entries | awk '{print $1}' | sort -u)
cmake --build --preset windows -j "$(nproc)" --target "${programs[@]}" >/dev/null

prefix=$(default_wine_prefix)
wine_session_ensure "$prefix"
render_all "$prefix" docs/screenshots

# The same at 144 DPI (150 %): a prefix of its own whose desktop reports that resolution.
large_prefix=$repo_root/build/windows/wineprefix-144dpi
wine_session_ensure "$large_prefix"
WINEPREFIX=$large_prefix "$wine_loader" reg add 'HKCU\Control Panel\Desktop' /v LogPixels \
  /t REG_DWORD /d 144 /f >/dev/null 2>&1
render_all "$large_prefix" docs/screenshots/144dpi

{
  echo "# Cryptelle in pictures"
  echo
  echo "Every window and message of the program in the order a user meets it, made by"
  echo "\`bash scripts/gallery.sh\` from the screenshot scenes listed in \`docs/gallery.list\`."
  echo "The same pictures at 144 DPI (150 %) are in [screenshots/144dpi](screenshots/144dpi/)."
  while read -r program scene caption; do
    echo
    echo "![$scene](screenshots/$scene.png)"
    echo
    echo "$caption"
  done < <(entries)
} >docs/gallery.md
echo "gallery: $(entries | wc -l) pictures at 96 and 144 DPI; page docs/gallery.md"
