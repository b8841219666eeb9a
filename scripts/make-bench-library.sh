#!/usr/bin/env bash
# Makes trees of files for the benchmarks: make-bench-library.sh FOLDER [SAMPLES]
# Empty ones: FOLDER/small, 10,000 files in 800 folders; FOLDER/large, 100,000 in
# 8,000. And FOLDER/wide: 10,000 files without contents in one folder, 1 to 20 MB
# large.
# Sound files under 2,000 names, in folders of ten files of one kind: in
# FOLDER/sounds such as people own, three to four minutes long, with all tags and,
# where the format has room for one, a cover; with SAMPLES, a library of
# make-sample-library.sh, in FOLDER/short its sounds of a second or two.
# FOLDER/songs holds what FOLDER/sounds is linked to: 180 MB, made in half a minute.
set -euo pipefail
target=${1:?usage: make-bench-library.sh FOLDER [SAMPLES]}
samples=${2:-}
export LC_ALL=C.UTF-8
mkdir -p "$target"
target=$(realpath "$target")
[ -z "$samples" ] || samples=$(realpath "$samples")

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

convert() { ffmpeg -nostdin -hide_banner -loglevel error -y "$@"; }

# Four minutes of sound that is no mere tone, and pieces of it; a cover.
make_song_sources() {
    sox -V1 -R -n -r 44100 -c 2 -b 16 "$work/240.wav" synth 240 pinknoise \
        synth 240 sine mix 220-440 sine mix 330-660 tremolo 2 40 gain -8
    sox -V1 "$work/240.wav" "$work/200.wav" trim 20 200
    local picture=(-f lavfi -i "mandelbrot=size=600x600:maxiter=300" -vf noise=alls=8 -frames:v 1)
    convert "${picture[@]}" -q:v 5 "$work/cover.jpg"
    convert "${picture[@]}" -q:v 3 "$work/large.jpg"
    local verse="And the quarry lies under the evening, grey on grey, stone by stone."
    for _ in $(seq 24); do printf '%s\n' "$verse"; done >"$work/lyrics.txt"
}

# The tags of one song, as arguments: `name=value` behind each `before`.
song_tags() {
    local before=$1 names=$2 tag value
    local -A values=(
        [artist]="The Northern Quarry Ensemble" [album_artist]="Northern Quarry"
        [title]="Limestone Variations, No. 4" [album]="Collected Recordings (Remastered)"
        [track]=4/12 [disc]=1/2 [date]=2011-09-16 [genre]=Classical
        [composer]="A. Mason" [comment]="Recorded live in the old quarry hall"
        [publisher]="Northern Stone Records" [copyright]="2011 Northern Stone Records"
        [encoded_by]="The archive" [performer]="A. Mason, B. Carver" [isrc]=SEAAA1100042
        [TBPM]=96 [bpm]=96 [compilation]=0 [lyrics]="$(cat "$work/lyrics.txt")"
        [replaygain_track_gain]="-6.20 dB" [replaygain_track_peak]=0.988
        [replaygain_album_gain]="-5.90 dB" [replaygain_album_peak]=0.991)
    for tag in $names; do
        value=${values[$tag]}
        # The comments of Ogg and FLAC have names of their own.
        [ "$before" = -metadata ] || case $tag in
            album_artist) tag=albumartist ;;
            track) tag=tracknumber value=${value%/*} ;;
            disc) tag=discnumber value=${value%/*} ;;
        esac
        arguments+=("$before" "$tag=$value")
    done
}

common="artist album_artist title album track disc date genre composer comment publisher
    copyright encoded_by performer isrc lyrics replaygain_track_gain replaygain_track_peak
    replaygain_album_gain replaygain_album_peak"

make_lossy_songs() {
    local arguments=()
    song_tags -metadata "$common TBPM compilation"
    local mp3=(-i "$work/cover.jpg" -map 0 -map 1 -c:v copy -disposition:v attached_pic)
    convert -i "$work/240.wav" "${mp3[@]}" -c:a libmp3lame -b:a 320k -compression_level 9 \
        "${arguments[@]}" "$songs/constant.mp3"
    convert -i "$work/200.wav" "${mp3[@]}" -c:a libmp3lame -q:a 2 -compression_level 9 \
        -id3v2_version 3 -write_id3v1 1 "${arguments[@]}" "$songs/variable.mp3"
    convert -i "$work/200.wav" "${mp3[@]}" -c:a aac -b:a 192k -aac_coder fast \
        "${arguments[@]}" "$songs/aac.m4a"
    convert -i "$work/200.wav" -c:a wmav2 -b:a 192k "${arguments[@]}" "$songs/windows.wma"
    arguments=()
    song_tags -c "$common bpm compilation"
    oggenc -Q -q 5 "${arguments[@]}" -o "$songs/vorbis.ogg" "$work/200.wav"
    add_vorbis_cover "$songs/vorbis.ogg"
    arguments=()
    song_tags --comment "$common bpm"
    opusenc --quiet --bitrate 128 --comp 2 --picture "3||||$work/cover.jpg" \
        "${arguments[@]}" "$work/200.wav" "$songs/opus.opus"
}

make_lossless_songs() {
    local arguments=()
    song_tags -T "$common bpm compilation"
    flac --totally-silent -f -3 --picture "3||||$work/cover.jpg" "${arguments[@]}" \
        -o "$songs/cover.flac" "$work/200.wav"
    flac --totally-silent -f -3 --picture "3||||$work/large.jpg" "${arguments[@]}" \
        -o "$songs/large cover.flac" "$work/200.wav"
    arguments=()
    song_tags -metadata "$common compilation"
    local cover=(-i "$work/cover.jpg" -map 0 -map 1 -c:v copy -disposition:v attached_pic)
    convert -i "$work/200.wav" "${cover[@]}" -c:a alac "${arguments[@]}" "$songs/alac.m4a"
    convert -i "$work/200.wav" "${cover[@]}" -write_id3v2 1 "${arguments[@]}" "$songs/cover.aiff"
    convert -i "$work/200.wav" "${arguments[@]}" "$songs/plain.wav"
    arguments=()
    song_tags -w "$common"
    wavpack -q -y -f "${arguments[@]}" \
        --write-binary-tag "Cover Art (Front)=@$work/cover.jpg" \
        "$work/200.wav" -o "$songs/packed.wv"
}

# No tool puts the picture of a FLAC file into a comment.
add_vorbis_cover() {
    python3 - "$work/cover.jpg" >"$work/picture.txt" <<'PYTHON'
import base64, struct, sys

picture = open(sys.argv[1], "rb").read()
mime = b"image/jpeg"
block = struct.pack(">II", 3, len(mime)) + mime
block += struct.pack(">IIIIII", 0, 600, 600, 24, 0, len(picture)) + picture
print("METADATA_BLOCK_PICTURE=" + base64.b64encode(block).decode())
PYTHON
    vorbiscomment -R -a -c "$work/picture.txt" "$1"
}

make_songs() {
    local songs=$target/songs work lossless
    local stamp=$songs/.made-1
    [ -e "$stamp" ] && return
    rm -rf "$songs"
    mkdir -p "$songs"
    work=$(mktemp -d)
    make_song_sources
    # Each tool uses one core.
    make_lossless_songs &
    lossless=$!
    make_lossy_songs
    wait "$lossless"
    rm -rf "$work"
    touch "$stamp"
}

# link_sounds SOURCES NAME. Linked rather than copied: a name costs nothing, and
# the disk plays no part.
link_sounds() {
    local stamp
    stamp=$target/.$2-3-$(basename "$(echo "$1"/.made-*)")
    [ -e "$stamp" ] && return
    rm -rf "${target:?}/$2" "$target/.$2"-*
    python3 - "$target/$2" "$1" <<'PYTHON'
import os, sys

root, sources = sys.argv[1:]
sounds = sorted(os.path.join(folder, name) for folder, _, names in os.walk(sources)
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
make_songs
link_sounds "$target/songs" sounds
[ -z "$samples" ] || link_sounds "$samples" short
