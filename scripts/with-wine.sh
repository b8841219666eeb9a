#!/usr/bin/env bash
# Runs a command with a Wine prefix, a virtual display and a warm server of its
# own: with-wine.sh COMMAND [ARGUMENT...]
#
# Everything lies under build/, the home folder of the Windows side included:
# the user's own prefix, registry and folders are never touched. The prefix is
# made once; TONEQUARRY_PREFIX names another folder for it.
set -euo pipefail
root=$(realpath "$(dirname "$0")/..")
[ $# -gt 0 ] || { echo "usage: with-wine.sh COMMAND [ARGUMENT...]" >&2; exit 2; }

WINEPREFIX=$(realpath -m "${TONEQUARRY_PREFIX:-$root/build/wine}")
export WINEPREFIX
export HOME=$WINEPREFIX-home XDG_DATA_HOME=$WINEPREFIX-home/.local/share
export LC_ALL=C.UTF-8 WINEDEBUG=${WINEDEBUG:--all} WINEARCH=win64
# Away from UTC: there a time in UTC would pass for one of the place.
export TZ=TST-5:30
# No menu entries and file types on the desktop of whoever runs the tests.
export WINEDLLOVERRIDES="winemenubuilder.exe=d;mscoree=d;mshtml=d"
mkdir -p "$HOME" "$(dirname "$WINEPREFIX")"

"$root/scripts/make-prefix.sh" "$WINEPREFIX"

display_pid=
stop() {
    wineserver -k >/dev/null 2>&1 || true
    [ -z "$display_pid" ] || kill "$display_pid" 2>/dev/null || true
}
trap stop EXIT

# A display of our own even where there is one: tests move the pointer.
if [ "${TONEQUARRY_USE_DISPLAY:-}" != 1 ]; then
    display_file=$(mktemp)
    Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$display_file" >/dev/null 2>&1 &
    display_pid=$!
    for _ in $(seq 100); do
        [ -s "$display_file" ] && break
        sleep 0.1
    done
    [ -s "$display_file" ] || { echo "the virtual display did not start" >&2; exit 1; }
    DISPLAY=:$(tr -d '\n' <"$display_file")
    export DISPLAY
    rm -f "$display_file"
fi

# With the default server each start costs seconds; kept warm, hundredths.
wineserver -p >/dev/null 2>&1
wine cmd /c exit </dev/null >/dev/null 2>&1
"$@"
