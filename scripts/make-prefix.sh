#!/usr/bin/env bash
# Makes a Wine prefix for tests and tours: make-prefix.sh FOLDER
# Nothing of the user's own prefix or registry is touched.
set -euo pipefail
prefix=$(realpath -m "${1:?usage: make-prefix.sh FOLDER}")
export WINEPREFIX=$prefix LC_ALL=C.UTF-8 WINEDEBUG=-all
[ -e "$prefix/.ready" ] && exit 0
rm -rf "$prefix"
mkdir -p "$prefix"
run() { wine "$@" </dev/null >/dev/null 2>&1; }
WINEDLLOVERRIDES="mscoree=d;mshtml=d" wineboot -i </dev/null >/dev/null 2>&1
# Tahoma lies in a folder that this Wine does not search by itself.
run reg add 'HKCU\Software\Wine\Fonts' /v Path /d 'Z:\usr\share\wine\fonts' /f
# Exact window rectangles and captions without a window manager.
run reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f
# A crash ends the process with its code instead of opening a debugger.
run reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Debugger /d '' /f
wineserver -k || true
wineserver -w || true
touch "$prefix/.ready"
