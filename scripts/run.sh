#!/usr/bin/env bash
# Runs the product: Cryptelle's program ctell.exe under Wine, with the reference device host
# installed and started as the service "pdevhost", and a small demo image made on the first
# run. Installs and builds what is missing first (only what is run); a second run starts
# the program within seconds.
#
#   bash scripts/run.sh                  start Cryptelle; Ctrl+C ends what this script started
#   bash scripts/run.sh --shot FILE.png  start it with the demo disk mounted, write a PNG of
#                                        the screen once the main window shows, and end
#   bash scripts/run.sh ctellimg ARGS    the command-line image tool (native, optimised)
#
# With a display ($DISPLAY) the window opens there. Without one the script starts a virtual
# display with a window manager and serves it to a browser (noVNC) and to VNC viewers on
# this machine's loopback address (CRYPTELLE_LISTEN=0.0.0.0 serves every interface).
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/wine-common.sh

run_dir=$repo_root/build/run
prefix=$run_dir/wineprefix
demo_image='C:\demo\demo.qvi'
demo_password='Cryptelle demo'
listen=${CRYPTELLE_LISTEN:-127.0.0.1}

say() { printf 'run: %s\n' "$*" >&2; }

# Builds the given targets of a preset, showing the build's progress lines; on a failure
# the end of the build's log follows.
build_targets() {
  local preset=$1 log=$run_dir/build-$1.log
  shift
  mkdir -p "$run_dir"
  # A configured build re-configures itself when a build file changes.
  if [ ! -f "build/$preset/CMakeCache.txt" ]; then
    say "configuring the $preset build (the first time this also builds OpenSSL: minutes)"
    cmake --preset "$preset" >"$log" 2>&1 || { tail -n 30 "$log" >&2; return 1; }
  fi
  say "building $* ($preset)"
  if ! cmake --build --preset "$preset" -j "$(nproc)" --target "$@" 2>&1 | tee -a "$log" |
    { grep --line-buffered -E '^\[[0-9]+/[0-9]+\]' | cut -c1-100 >&2 || true; }; then
    tail -n 30 "$log" >&2
    return 1
  fi
}

if [ "${1:-}" = "ctellimg" ]; then
  shift
  bash scripts/install-packages.sh >&2
  build_targets release ctellimg
  exec build/release/bin/ctellimg "$@"
fi

shot=
if [ "${1:-}" = "--shot" ]; then
  [ "$#" -eq 2 ] || { echo "usage: $0 [--shot FILE.png | ctellimg ARGS...]" >&2; exit 2; }
  shot=$(realpath -m "$2")
elif [ "$#" -ne 0 ]; then
  echo "usage: $0 [--shot FILE.png | ctellimg ARGS...]" >&2
  exit 2
fi

bash scripts/install-packages.sh run >&2
build_targets windows ctell pdevhost ctellimg
bin=$repo_root/build/windows/bin

# Everything this script starts is listed here and ended on exit, Ctrl+C included.
started=()
finish() {
  trap - EXIT INT TERM
  WINEPREFIX=$prefix "$wine_server" -k >/dev/null 2>&1 || true
  local pid
  for pid in "${started[@]}"; do kill "$pid" 2>/dev/null || true; done
  wait 2>/dev/null || true
}
trap finish EXIT
trap 'exit 130' INT TERM

# The display: the caller's, or a virtual one with a window manager.
free_port() {
  python3 -c 'import socket,sys
for port in range(int(sys.argv[1]), int(sys.argv[1]) + 100):
    s = socket.socket()
    try:
        s.bind(("", port)); print(port); break
    except OSError: pass
    finally: s.close()' "$1"
}
if [ -z "$shot" ] && [ -n "${DISPLAY:-}" ] && xdotool getdisplaygeometry >/dev/null 2>&1; then
  served=
else
  # Xvfb picks a display number no other server holds and writes it to the pipe once it
  # accepts connections.
  mkdir -p "$run_dir"
  exec {display_fd}<> <(:)
  Xvfb -displayfd "$display_fd" -screen 0 1280x800x24 -nolisten tcp >"$run_dir/xvfb.log" 2>&1 &
  started+=($!)
  read -r -t 30 -u "$display_fd" number || { say "the virtual display did not start"; cat "$run_dir/xvfb.log" >&2; exit 1; }
  exec {display_fd}<&-
  export DISPLAY=:$number
  openbox >"$run_dir/openbox.log" 2>&1 &
  started+=($!)
  served=yes
fi

# The Wine prefix of the product: the X11 driver, the service running, the demo image.
export WINEPREFIX=$prefix
# The template's null driver becomes X11 in the prefix's registry file while no server
# runs, so the very first boot already draws on the display (a prefix left behind by an
# interrupted run is mended the same way).
if ! grep -q '"Graphics"="x11"' "$prefix/user.reg" 2>/dev/null; then
  wine_session_stop "$prefix"
  "$wine_server" -w >/dev/null 2>&1 || true
  [ -f "$prefix/.ready" ] || wine_fresh_prefix "$prefix"
  sed -i 's/^"Graphics"="null"$/"Graphics"="x11"/' "$prefix/user.reg"
  grep -q '"Graphics"="x11"' "$prefix/user.reg" || { say "could not choose Wine's X11 driver"; exit 1; }
fi
# The reference device host maps a mounted disk's letter to a scratch folder of its own; it
# ends with the wineserver at the end of a run without dismounting, so the letters and
# folders it left are released before it starts again: the mount dialog then offers the
# same free letters every run instead of one fewer each time.
for drive in "$prefix"/dosdevices/?:; do
  case $(readlink "$drive") in */Temp/pdevhost/*) rm -f "$drive" ;; esac
done
rm -rf "$prefix"/drive_c/users/*/Temp/pdevhost
wine_session_ensure "$prefix" 3600
bash scripts/devhost-service.sh install "$bin/pdevhost.exe" >/dev/null
bash scripts/devhost-service.sh start "$bin/pdevhost.exe" >/dev/null
demo_file=$prefix/drive_c/demo/demo.qvi
if [ ! -f "$demo_file" ]; then
  mkdir -p "$(dirname "$demo_file")"
  printf '%s\n' "$demo_password" |
    "$wine_loader" "$bin/ctellimg.exe" create "$demo_image" --capacity "64 MB" >/dev/null
fi

if [ -n "$served" ] && [ -z "$shot" ]; then
  vnc_port=$(free_port 5900)
  web_port=$(free_port 6080)
  x11vnc -display "$DISPLAY" -rfbport "$vnc_port" -listen "$listen" -forever -shared -nopw \
    -quiet >"$run_dir/x11vnc.log" 2>&1 &
  started+=($!)
  websockify --web /usr/share/novnc "$listen:$web_port" "localhost:$vnc_port" \
    >"$run_dir/websockify.log" 2>&1 &
  started+=($!)
  say "no display here: Cryptelle runs on a virtual one. Open it in a browser at"
  say "  http://$listen:$web_port/vnc.html?autoconnect=1&resize=remote"
  say "or with a VNC viewer at $listen:$vnc_port"
fi

# Waits up to $2 seconds for a visible top-level window whose title is exactly $1.
wait_for_window() {
  local _
  for _ in $(seq $(($2 * 10))); do
    xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | head -1 | grep . && return 0
    sleep 0.1
  done
  return 1
}

# Waits up to $2 seconds until the window $1 holds the keyboard focus.
wait_for_focus() {
  local _
  for _ in $(seq $(($2 * 10))); do
    [ "$(xdotool getwindowfocus 2>/dev/null)" = "$1" ] && return 0
    sleep 0.1
  done
  return 1
}

# Names the visible windows, for a failure's report.
visible_windows() {
  xdotool search --onlyvisible --name . 2>/dev/null | while read -r id; do
    printf '"%s" ' "$(xdotool getwindowname "$id" 2>/dev/null)"
  done
}

# Mounts the demo disk the way a user does: the mount dialog, the password typed, Enter.
# Every wait is bounded: a program still running 30 seconds after Enter (a message box
# instead of the mounted disk) is a failure.
mount_demo() {
  local pid dialog _
  "$wine_loader" "$bin/ctell.exe" /mount "$demo_image" &
  pid=$!
  started+=("$pid")
  dialog=$(wait_for_window 'Mount Virtual Disk Image' 60) || {
    say "the mount dialog did not open; visible: $(visible_windows)"
    return 1
  }
  # Keys typed before the window manager has given the dialog the keyboard focus are lost
  # (the password then arrives without its first letters).
  xdotool windowactivate "$dialog" 2>/dev/null || true
  wait_for_focus "$dialog" 10 || {
    say "the mount dialog did not get the keyboard focus"
    return 1
  }
  xdotool type --delay 30 "$demo_password"
  xdotool key Return
  for _ in $(seq 300); do
    # The one-shot mount ends with the exit code -1 whatever its outcome.
    kill -0 "$pid" 2>/dev/null || { wait "$pid" || true; return 0; }
    sleep 0.1
  done
  say "ctell.exe /mount is still running; visible: $(visible_windows)"
  return 1
}

if [ -n "$shot" ]; then
  mount_demo || {
    import -window root "${shot%.png}.failed.png" || true
    say "the demo disk was not mounted; the screen is in ${shot%.png}.failed.png"
    exit 1
  }
fi

say "the demo image is $demo_image, its password \"$demo_password\""
"$wine_loader" "$bin/ctell.exe" &
started+=($!)
if [ -n "$shot" ]; then
  wait_for_window Cryptelle 60 >/dev/null || { say "the main window did not open"; exit 1; }
  sleep 2
  mkdir -p "$(dirname "$shot")"
  import -window root "$shot"
  say "wrote $shot"
  exit 0
fi
say "Cryptelle is running; close its window or press Ctrl+C to end"
wait "${started[-1]}" || true
