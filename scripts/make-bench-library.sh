#!/usr/bin/env bash
# Makes trees of empty audio files for the benchmarks: make-bench-library.sh FOLDER
# FOLDER/small: 10,000 files in 800 folders; FOLDER/large: 100,000 in 8,000.
set -euo pipefail
target=${1:?usage: make-bench-library.sh FOLDER}
stamp=$target/.made-1
[ -e "$stamp" ] && exit 0
rm -rf "$target"
mkdir -p "$target"
python3 - "$target" <<'PYTHON'
import os, sys

def make(root, artists, albums, files):
    """`artists` folders with `albums` sub-folders each; `files` files in all."""
    folders = []
    for artist in range(artists):
        top = f"{root}/Artist {artist:04}"
        os.makedirs(top)
        folders.append(top)
        for album in range(albums - 1):
            folders.append(f"{top}/Album {album:02} - Collected Recordings")
            os.mkdir(folders[-1])
    for number in range(files):
        name = f"{number % 13 + 1:02} - Title of the piece {number:06}.flac"
        open(f"{folders[number % len(folders)]}/{name}", "wb").close()

make(sys.argv[1] + "/small", 100, 8, 10_000)
make(sys.argv[1] + "/large", 1_000, 8, 100_000)
PYTHON
touch "$stamp"
