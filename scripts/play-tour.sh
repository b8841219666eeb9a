#!/usr/bin/env bash
# Plays the main job in the real program with real mouse and keys, and leaves a
# picture of each step: play-tour.sh PROGRAM PICTURES RECEIVED
#
# Runs within with-wine.sh, on its display of 1280 by 1024, with the sample library
# as drive M and the recording converter beside PROGRAM. Fails if the converter
# does not receive the files that were ticked.
set -euo pipefail
program=$1 pictures=$2 received=$3
rm -rf "$pictures"
mkdir -p "$pictures"
rm -f "$received"
TONEQUARRY_RECORD=$(winepath -w "$received")
export TONEQUARRY_RECORD
program_id=

# The window whose title begins so, once there is one.
window() {
    local found
    for _ in $(seq 100); do
        found=$(xdotool search --onlyvisible --name "^$1" 2>/dev/null | tail -1) || true
        [ -n "$found" ] && { echo "$found"; return; }
        sleep 0.1
    done
    echo "no window named $1" >&2
    return 1
}
pause() { sleep "${1:-1}"; }
picture() { import -window root "$pictures/$1.png"; echo "  $1"; }
click() { xdotool mousemove "$1" "$2" click "${3:-1}"; pause "${4:-1}"; }
keys() { local key; for key in "$@"; do xdotool key "$key"; sleep 0.1; done; }
# The close box of the maximised window.
close_x=1269 close_y=9
# Rows of the tree, from 0: their pictures and their names.
tree_y() { echo $((87 + 18 * $1)); }
tick() { click "$((29 + 19 * $2))" "$(tree_y "$1")"; }
open() { click "$((80 + 19 * $2))" "$(tree_y "$1")" 1 2; }
start() {
    wine "$program" </dev/null >/dev/null 2>&1 &
    program_id=$!
    window "Tonequarry" >/dev/null
    pause 3
}
finish() {
    click "$close_x" "$close_y"
    for _ in $(seq 100); do
        kill -0 "$program_id" 2>/dev/null || return 0
        sleep 0.1
    done
    echo "the program did not close" >&2
    return 1
}

list_x=446 first_file_y=108 header_y=86
start
picture 01-start
open 1 0
picture 02-the-drive-opened
open 5 1
open 6 2
picture 03-files-with-their-tags
tick 5 1
picture 04-a-folder-ticked-with-its-sub-folders
open 6 2
click "$list_x" "$first_file_y"
picture 05-a-file-left-out
click 735 "$header_y"
picture 06-sorted-by-size
click 735 "$header_y" 3 3
picture 07-the-columns-to-choose-from
keys Down Down Down Down Down Down Down Down Return
pause 3
picture 08-a-column-added
click 75 45 1 4
picture 09-everything-that-will-be-converted
keys Escape
pause 2
click 218 45 1 3
picture 10-the-filter
keys Escape
pause 2
click 28 45 1 5
picture 11-after-the-conversion
finish
start
picture 12-started-again
finish

count=$(wc -l <"$received")
[ "$count" -eq 9 ] || { echo "the converter received $count files instead of 9" >&2; exit 1; }
echo "The converter received the 9 files that stayed ticked; the pictures are in $pictures"
