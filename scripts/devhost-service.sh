#!/usr/bin/env bash
# Installs the reference device host as the service "pdevhost" in the Wine prefix, or
# removes, starts or stops it there. The prefix is $WINEPREFIX, else the build's own.
#
#   bash scripts/devhost-service.sh install|uninstall|start|stop [path/to/pdevhost.exe]
#
# A service lives only as long as the prefix's wineserver. Installing and starting make
# sure one runs, detached from this script's output (under ctest a server started on the
# test's pipe would keep ctest waiting for as long as the service runs).
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/wine-common.sh"

action=${1:-}
exe=${2:-$repo_root/build/windows/bin/pdevhost.exe}
case "$action" in
  install | uninstall | start | stop) ;;
  *)
    echo "usage: $0 install|uninstall|start|stop [pdevhost.exe]" >&2
    exit 2
    ;;
esac
[ -f "$exe" ] || { echo "devhost-service: $exe not found; build the windows preset first" >&2; exit 1; }
prefix=${WINEPREFIX:-$(default_wine_prefix)}
case "$action" in install | start) wine_session_ensure "$prefix" ;; esac
export WINEPREFIX=$prefix
exec bash "$repo_root/scripts/wine-run.sh" "$exe" "--$action"
