#!/usr/bin/env bash
# Builds the help file "ctell.chm" from help/ (the project, its topics, contents and index)
# and the pictures of docs/screenshots/ that the topics show.
#
#   bash scripts/build-help.sh OUTPUT.chm
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/wine-common.sh"

[ "$#" -eq 1 ] || { echo "usage: $0 OUTPUT.chm" >&2; exit 2; }
output=$(realpath -m "$1")
compiler=$(bash "$repo_root/scripts/build-help-compiler.sh")

staging=$(mktemp -d)
trap 'rm -rf "$staging"' EXIT
cp -r "$repo_root/help/." "$staging/"
rm -rf "$staging/compiler"
mkdir -p "$staging/images"
for picture in $(grep -oh 'src="\.\./images/[^"]*"' "$repo_root"/help/topics/*.html | sort -u |
  sed 's|src="\.\./images/||; s|"$||'); do
  [ -f "$repo_root/docs/screenshots/$picture" ] || {
    echo "build-help: a topic shows docs/screenshots/$picture, which does not exist" >&2
    exit 1
  }
  cp "$repo_root/docs/screenshots/$picture" "$staging/images/"
done
(cd "$staging" && "$compiler" ctell.hhp ctell.chm >compile.log 2>&1) || {
  cat "$staging/compile.log" >&2
  exit 1
}
mkdir -p "$(dirname "$output")"
mv "$staging/ctell.chm" "$output"
