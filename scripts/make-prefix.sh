#!/usr/bin/env bash
# Makes a Wine prefix for tests and tours: make-prefix.sh FOLDER
# Nothing of the user's own prefix or registry is touched.
set -euo pipefail
prefix=$(realpath -m "${1:?usage: make-prefix.sh FOLDER}")
export WINEPREFIX=$prefix LC_ALL=C.UTF-8 WINEDEBUG=-all
# The Windows side's documents, music and so on are links to folders of this home.
export HOME=$prefix-home XDG_DATA_HOME=$prefix-home/.local/share
# No menu entries and file types on the desktop of whoever runs it.
export WINEDLLOVERRIDES="winemenubuilder.exe=d;mscoree=d;mshtml=d"
[ -e "$prefix/.ready" ] && exit 0
rm -rf "$prefix"
mkdir -p "$prefix" "$HOME"
run() { wine "$@" </dev/null >/dev/null 2>&1; }
wineboot -i </dev/null >/dev/null 2>&1
# Tahoma lies in a folder that this Wine does not search by itself.
run reg add 'HKCU\Software\Wine\Fonts' /v Path /d 'Z:\usr\share\wine\fonts' /f
# Exact window rectangles and captions without a window manager.
run reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f
# A crash ends the process with its code instead of opening a debugger.
run reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Debugger /d '' /f
"$(dirname "$0")/prefix-drives.sh" "$prefix"
wineserver -k || true
wineserver -w || true
touch "$prefix/.ready"
