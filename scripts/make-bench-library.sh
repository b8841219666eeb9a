#!/usr/bin/env bash
# Makes trees of files for the benchmarks: make-bench-library.sh FOLDER [SAMPLES]
# Empty ones: FOLDER/small, 10,000 files in 800 folders; FOLDER/large, 100,000 in
# 8,000. With SAMPLES, a library of make-sample-library.sh, also FOLDER/sounds:
# its sound files under 2,000 names, in folders of ten files of one kind.
# And FOLDER/wide: 10,000 files without contents in one folder, 1 to 20 MB large.
set -euo pipefail
target=${1:?usage: make-bench-library.sh FOLDER [SAMPLES]}
samples=${2:-}
mkdir -p "$target"

make_empty() {
    local stamp=$target/.made-1
    [ -e "$stamp" ] && return
    rm -rf "$target/small" "$target/large"
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
}

# Linked rather than copied: a name costs nothing, and the disk plays no part.
make_sounds() {
    local stamp
    stamp=$target/.sounds-2-$(basename "$(echo "$samples"/.made-*)")
    [ -e "$stamp" ] && return
    rm -rf "$target/sounds" "$target"/.sounds-*
    python3 - "$target/sounds" "$samples" <<'PYTHON'
import os, sys

root, samples = sys.argv[1:]
sounds = sorted(os.path.join(folder, name) for folder, _, names in os.walk(samples)
                for name in names if not name.startswith(".") and not name.endswith(".txt"))
for number in range(2_000):
    album = number // 10
    folder = f"{root}/Album {album:03}"
    os.makedirs(folder, exist_ok=True)
    source = sounds[album % len(sounds)]
    os.link(source, f"{folder}/{number % 10 + 1:02} - Title{os.path.splitext(source)[1]}")
PYTHON
    touch "$stamp"
}

make_wide() {
    local stamp=$target/.wide-1
    [ -e "$stamp" ] && return
    rm -rf "$target/wide"
    python3 - "$target/wide" <<'PYTHON'
import os, sys

folder = sys.argv[1]
os.makedirs(folder)
for number in range(10_000):
    mixed = number * 7_919 % 10_000
    with open(f"{folder}/{mixed % 97 + 1:02} - Title of the piece {number:06}.tone", "wb") as file:
        file.truncate(1_000_000 + mixed * 1_900)
PYTHON
    touch "$stamp"
}

make_empty
make_wide
[ -z "$samples" ] || make_sounds
