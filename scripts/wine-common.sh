# Shared Wine set-up, sourced by the scripts that run Windows executables.
#
# A template prefix is made once per Wine version (null graphics driver, no debugger on a
# crash, Wine's own fonts installed) and cached; every test run clones it into the build
# tree, hard-linking the bulk of the tree but copying the registry files that wineserver
# rewrites.

repo_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cache_root=${CRYPTELLE_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/cryptelle}
wine_loader=/usr/lib/wine/wine64
wine_server=/usr/lib/wine/wineserver64
[ -x "$wine_server" ] || wine_server=/usr/lib/wine/wineserver

export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d"
export WINEARCH=win64

# The per-build prefix used when the caller has not chosen one.
default_wine_prefix() { echo "$repo_root/build/windows/wineprefix"; }

# Prints the template prefix's path, creating it first if needed.
wine_template() {
  local version template
  version=$("$wine_loader" --version 2>/dev/null | tr -c 'A-Za-z0-9.\n' '_')
  # The number after the version changes whenever the template's making changes.
  template=$cache_root/wine-template-$version-2
  if [ ! -f "$template/.ready" ]; then
    local staging=$template.tmp
    rm -rf "$staging"
    mkdir -p "$staging"
    (
      export WINEPREFIX=$staging
      "$wine_loader" wineboot -i >/dev/null 2>&1
      "$wine_loader" reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null 2>&1
      "$wine_loader" reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >/dev/null 2>&1
      "$wine_loader" reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Debugger /d '' /f >/dev/null 2>&1
      "$wine_loader" reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Auto /d 0 /f >/dev/null 2>&1
      # Debian keeps Wine's own fonts (Tahoma, Marlett for the caption buttons, MS Sans Serif)
      # where this Wine does not look for them; in the Fonts folder every program finds them.
      cp /usr/share/wine/fonts/* "$staging/drive_c/windows/Fonts/"
      "$wine_server" -k >/dev/null 2>&1 || true
      "$wine_server" -w >/dev/null 2>&1 || true
    )
    grep -q '"Graphics"="null"' "$staging/user.reg" || { echo "wine template: driver not set" >&2; return 1; }
    touch "$staging/.ready"
    rm -rf "$template"
    mv "$staging" "$template"
  fi
  echo "$template"
}

# Replaces the prefix at $1 with a fresh clone of the template.
wine_fresh_prefix() {
  local prefix=$1 template
  template=$(wine_template) || return 1
  wine_session_stop "$prefix"
  rm -rf "$prefix"
  mkdir -p "$(dirname "$prefix")"
  cp -al "$template" "$prefix"
  local reg
  for reg in "$prefix"/*.reg; do
    rm -f "$reg"
    cp "$template/$(basename "$reg")" "$reg"
  done
}

# Starts a persistent wineserver for the prefix at $1, and boots it, before tests run:
# otherwise each test pays for Wine's start-up and its helpers inherit ctest's pipes.
wine_session_start() {
  export WINEPREFIX=$1
  "$wine_server" -p
  "$wine_loader" wineboot >/dev/null 2>&1
}

# Makes sure a wineserver runs for the prefix at $1 (kept if one already does), detached
# from the caller's output: programs and services started in the prefix then never hold a
# caller's pipe open, which ctest would wait for. A server started here ends $2 seconds
# (default 60) after its last program.
wine_session_ensure() {
  export WINEPREFIX=$1
  [ -f "$WINEPREFIX/.ready" ] || wine_fresh_prefix "$WINEPREFIX" || return 1
  "$wine_server" -p"${2:-60}" </dev/null >/dev/null 2>&1 || true
  "$wine_loader" wineboot </dev/null >/dev/null 2>&1
}

# Ends the wineserver of the prefix at $1, or of the session's prefix when none is given
# (without a prefix the server of the default one would be asked, and this one would run on).
wine_session_stop() {
  WINEPREFIX=${1:-${WINEPREFIX:?no prefix to stop}} "$wine_server" -k >/dev/null 2>&1 || true
}
