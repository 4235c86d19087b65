#!/usr/bin/env bash
# The installer in a Wine prefix of its own: a silent install into a chosen folder puts
# every file, the Start-menu shortcut, the .qvi association and the device host service in
# place, and opening an image in the shell opens the mount dialog on it; a silent uninstall
# then leaves no file, key or value of the product behind, and a user's image kept in the
# program's folder is untouched.
#
#   bash installer_test.sh Cryptelle-<version>-setup.exe window_probe.exe
set -uo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/wine-common.sh"

setup=$1
probe=$2
work=$(mktemp -d)
prefix=$work/prefix
trap 'WINEPREFIX=$prefix "$wine_server" -k >/dev/null 2>&1; rm -rf "$work"' EXIT
wine_fresh_prefix "$prefix" || exit 1
export WINEPREFIX=$prefix
"$wine_server" -p30 </dev/null >/dev/null 2>&1
"$wine_loader" wineboot </dev/null >/dev/null 2>&1

failures=0
check() { # description, command...
  local what=$1
  shift
  if "$@"; then echo "ok: $what"; else echo "FAILED: $what"; failures=$((failures + 1)); fi
}
reg_value() { # key, value name ("" for the default value)
  local args=(/v "$2")
  [ -n "$2" ] || args=(/ve)
  "$wine_loader" reg query "$1" "${args[@]}" 2>/dev/null | tr -d '\r' |
    sed -n 's/^ *[^ ]*\( *\)REG_[A-Z_]* *//p' | head -1
}
absent() { ! "$@"; }
reg_exists() { "$wine_loader" reg query "$1" >/dev/null 2>&1; }
reg_value_exists() { "$wine_loader" reg query "$1" /v "$2" >/dev/null 2>&1; }

# The folder has no space: Wine quotes such an argument, and /D= must stand unquoted.
folder='C:\Pellmora\Cryptelle'
unix_folder="$prefix/drive_c/Pellmora/Cryptelle"
shortcut="$prefix/drive_c/ProgramData/Microsoft/Windows/Start Menu/Programs/Cryptelle/Cryptelle.lnk"
files=(ctell.exe ctell.chm ctellimg.exe ctellmon.exe pdevhost.exe uninstall.exe)

timeout 120 "$wine_loader" "$setup" /S "/D=$folder" </dev/null >/dev/null 2>&1
check "the installer ends with 0" test $? -eq 0
for file in "${files[@]}"; do
  check "$file is installed" test -s "$unix_folder/$file"
done
check "the Start-menu shortcut exists" test -s "$shortcut"
check ".qvi names the image class" test "$(reg_value 'HKLM\Software\Classes\.qvi' '')" = "Cryptelle.Image"
check "the association opens images with ctell.exe /mount" test \
  "$(reg_value 'HKLM\Software\Classes\Cryptelle.Image\shell\open\command' '')" = \
  "\"$folder\\ctell.exe\" /mount \"%1\""
check "the image icon is the program's image icon" test \
  "$(reg_value 'HKLM\Software\Classes\Cryptelle.Image\DefaultIcon' '')" = "$folder\\ctell.exe,-165"
check "the uninstaller is registered" reg_exists 'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Cryptelle'
check "the device host service is registered" reg_exists 'HKLM\System\CurrentControlSet\Services\pdevhost'

# Opening an image the way the file manager does: the association's command starts the mount
# dialog alone, on that image.
mkdir -p "$prefix/drive_c/Images"
head -c 8192 /dev/urandom >"$prefix/drive_c/Images/Work.qvi"
"$wine_loader" start 'C:\Images\Work.qvi' </dev/null >/dev/null 2>&1
# 1005 is the dialog's image path field.
shown=$(timeout 60 "$wine_loader" "$probe" "Mount Virtual Disk Image" 1005 </dev/null 2>/dev/null | tr -d '\r')
check "opening an image shows the mount dialog on it (its path field: \"$shown\")" \
  test "$shown" = 'C:\Images\Work.qvi'

# What the program leaves behind when it runs: its settings and the monitor's autostart.
"$wine_loader" reg add 'HKCU\Software\Pellmora\Cryptelle\1.0' /v EnableMonitor /t REG_DWORD /d 1 /f >/dev/null 2>&1
"$wine_loader" reg add 'HKCU\Software\Microsoft\Windows\CurrentVersion\Run' /v PellmoraCryptelleMonitor \
  /d "\"$folder\\ctellmon.exe\"" /f >/dev/null 2>&1
head -c 1048576 /dev/urandom >"$unix_folder/kept.qvi"
kept_hash=$(sha256sum <"$unix_folder/kept.qvi")

# The uninstaller runs from a copy of itself in the temporary folder; wait for its end.
timeout 120 "$wine_loader" "$unix_folder/uninstall.exe" /S </dev/null >/dev/null 2>&1
for _ in $(seq 600); do
  [ -e "$unix_folder/uninstall.exe" ] || break
  sleep 0.1
done
"$wine_server" -w
for file in "${files[@]}"; do
  check "$file is removed" test ! -e "$unix_folder/$file"
done
check "only the user's image is left in the folder" test "$(ls -A "$unix_folder")" = "kept.qvi"
check "the user's image is untouched" test "$(sha256sum <"$unix_folder/kept.qvi")" = "$kept_hash"
check "the Start-menu folder is removed" test ! -e "$(dirname "$shortcut")"
check "the .qvi association is removed" absent reg_exists 'HKLM\Software\Classes\.qvi'
check "the image class is removed" absent reg_exists 'HKLM\Software\Classes\Cryptelle.Image'
check "the uninstall entry is removed" absent reg_exists 'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Cryptelle'
check "the settings are removed" absent reg_exists 'HKCU\Software\Pellmora'
check "the monitor's autostart is removed" absent reg_value_exists 'HKCU\Software\Microsoft\Windows\CurrentVersion\Run' PellmoraCryptelleMonitor
check "the device host service is removed" absent reg_exists 'HKLM\System\CurrentControlSet\Services\pdevhost'

echo "$failures failed"
[ "$failures" -eq 0 ]
