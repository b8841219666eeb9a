#!/usr/bin/env bash
# Makes a small library of real, tagged sound files: make-sample-library.sh FOLDER
#
# Tones of one to three seconds in every format that the decoder libraries read
# and free tools (or scripts/write_rare_audio.py) write, in folders by artist
# and album, with names in several scripts, and what else stands about in real
# folders: a damaged file, a misnamed one, a text, hidden files.
# A second run finds the stamp and does nothing.
set -euo pipefail

# What it needs, as Debian's packages; printed by: make-sample-library.sh --packages
packages=(sox libsox-fmt-all flac lame ffmpeg vorbis-tools opus-tools wavpack speex python3)
if [ "${1:-}" = --packages ]; then
    printf '%s\n' "${packages[@]}"
    exit 0
fi

target=${1:?usage: make-sample-library.sh FOLDER}
for tool in sox flac lame ffmpeg oggenc opusenc wavpack speexenc python3; do
    command -v "$tool" >/dev/null || {
        echo "make-sample-library: $tool is missing; the packages are: ${packages[*]}" >&2
        exit 1
    }
done

scripts=$(cd "$(dirname "$0")" && pwd)
# A changed recipe makes the library anew.
recipe=$(cat "$scripts/make-sample-library.sh" "$scripts/write_rare_audio.py" | sha256sum | cut -c1-16)
stamp=$target/.made-$recipe
[ -e "$stamp" ] && exit 0

# Two at once: the second waits and finds it done.
mkdir -p "$(dirname "$target")"
exec 9>"$target.lock"
flock 9
[ -e "$stamp" ] && exit 0

export LC_ALL=C.UTF-8
rm -rf "$target"
mkdir -p "$target"
cd "$target"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

rare() { python3 "$scripts/write_rare_audio.py" "$@"; }
convert() { ffmpeg -nostdin -hide_banner -loglevel error -y "$@"; }
quiet_sox() { sox -V1 -R "$@"; }

base=$work/base.wav
wide=$work/wide.wav
noise=$work/noise.wav
mono=$work/mono.wav

make_sources() {
    quiet_sox -n -r 44100 -c 2 -b 16 "$base" synth 2 sine 440 sine 660 gain -6
    quiet_sox -n -r 96000 -c 2 -b 24 "$wide" synth 1 sine 440 sine 660 gain -6
    # Rising and falling, so that a variable bit rate varies.
    quiet_sox -n -r 44100 -c 2 -b 16 "$noise" synth 3 pinknoise fade t 1.5 3 1.4 gain -6
    quiet_sox -n -r 22050 -c 1 -b 16 "$mono" synth 2 sine 330 gain -6
}

make_wave_files() {
    local out="Åse Lindqvist/Våren – uncompressed"
    mkdir -p "$out"
    convert -i "$base" -metadata artist="Åse Lindqvist" -metadata title="Första ljuset" \
        -metadata album="Våren" -metadata track=1 -metadata date=2019 -metadata genre=Folk \
        "$out/01 - Första ljuset.wav"
    quiet_sox "$base" -b 8 "$out/02 - Åtta bitar.wav"
    quiet_sox "$wide" -b 24 "$out/03 - Tjugofyra bitar.wav"
    quiet_sox "$base" -b 32 -e floating-point "$out/04 - Flyttal.wav"
    quiet_sox -n -r 48000 -c 6 -b 24 "$out/05 - Sex kanaler.wav" synth 1 sine 300 gain -6
    quiet_sox "$base" -e ms-adpcm "$out/06 - ADPCM.wav"
    quiet_sox "$base" -e ima-adpcm "$out/07 - IMA ADPCM.wav"
    quiet_sox "$base" -e a-law "$out/08 - A-lag.wav"
    quiet_sox "$base" -e u-law "$out/09 - My-lag.wav"
    convert -i "$base" -rf64 always "$out/10 - RF64.wav"
    convert -i "$base" "$out/11 - Wave64.w64"
}

make_other_uncompressed() {
    local out="Чайка/Ночной поезд"
    mkdir -p "$out"
    convert -i "$base" -write_id3v2 1 -metadata artist="Чайка" -metadata title="Перрон" \
        -metadata album="Ночной поезд" -metadata track=1/4 "$out/01 - Перрон.aiff"
    quiet_sox "$wide" -b 24 "$out/02 - Вагон.aif"
    convert -i "$base" -c:a pcm_f32be -f aiff "$out/03 - Мост.aifc"
    quiet_sox "$base" "$out/04 - Река.au"
    quiet_sox "$base" -t au "$out/05 - Лес.snd"
    convert -i "$base" -metadata artist="Чайка" -metadata title="Поле" "$out/06 - Поле.caf"
    convert -i "$base" -c:a alac "$out/07 - Город.caf"
}

make_mp3_files() {
    local out="Quarry Choir/Limestone" file
    mkdir -p "$out"
    lame --quiet -b 192 --cbr --add-id3v2 --tt "Blast" --ta "Quarry Choir" --tl "Limestone" \
        --tn 1/9 --ty 2007 --tg Ambient --tc "First pit" "$base" "$out/01 - Blast.mp3"
    lame --quiet -V 2 --id3v2-only --tt "Dust" --ta "Quarry Choir" --tl "Limestone" --tn 2/9 \
        --tv "TBPM=96" --tv "TCOM=A. Mason" "$noise" "$out/02 - Dust.mp3"
    convert -i "$noise" -c:a libmp3lame -q:a 2 -write_xing 0 -id3v2_version 4 \
        -metadata title="Rubble" "$out/03 - Rubble.mp3"
    lame --quiet -b 128 --cbr -t --id3v1-only --tt "Chisel" --ta "Quarry Choir" --tn 4 \
        "$base" "$out/04 - Chisel.mp3"
    lame --quiet -b 48 --cbr "$mono" "$out/05 - Echo.mp3"
    file="$out/06 - Two Voices.mp3"
    lame --quiet --abr 160 -T "$base" "$work/plain.mp3"
    rare id3v2 "$work/plain.mp3" "$file"
    rare apev2 "$work/plain.mp3" "$out/07 - Old Tag.mp3"
    convert -i "$base" -c:a mp2 -b:a 192k "$out/08 - Layer Two.mp2"
    rare mp1 "$out/09 - Layer One.mp1"
    convert -i "$base" -c:a aac -b:a 128k -f adts "$out/10 - Raw.aac"
}

make_flac_files() {
    local out="夜の庭/月光"
    mkdir -p "$out"
    flac --totally-silent -f -8 -T "ARTIST=夜の庭" -T "ARTIST=Second Voice" -T "TITLE=月光" -T "ALBUM=月光" \
        -T TRACKNUMBER=1 -T TRACKTOTAL=3 -T DATE=2021-03-05 -T RATING=80 -T "GENRE=Ambient" \
        -T "ALBUMARTIST=夜の庭" -T DISCNUMBER=1 -T DISCTOTAL=2 -T COMPILATION=1 \
        -T "REPLAYGAIN_TRACK_GAIN=-3.20 dB" -T REPLAYGAIN_TRACK_PEAK=0.501 \
        -o "$out/01 - 月光.flac" "$base"
    flac --totally-silent -f -5 -T "TITLE=雨" -o "$out/02 - 雨.flac" "$wide"
    flac --totally-silent -f --ogg -T "TITLE=風" -o "$out/03 - 風.oga" "$base"
    wavpack -q -y -w "Artist=夜の庭" -w "Title=雪" -w "Rating=3" -w "Track=4/9" \
        "$base" -o "$out/04 - 雪.wv"
    quiet_sox "$base" -b 32 -e floating-point "$work/float.wav"
    wavpack -q -y "$work/float.wav" -o "$out/05 - 霧.wv"
    wavpack -q -y -b256 "$base" -o "$out/06 - 霜.wv"
    convert -i "$base" -c:a tta -metadata title="虹" "$out/07 - 虹.tta"
    rare ape "$out/08 - 星.ape"
    rare dsf "$out/09 - 空.dsf"
    rare dff "$out/10 - 海.dff"
}

make_ogg_files() {
    local out="DJ 🎵 Emoji/Ünïcödé ☀"
    mkdir -p "$out"
    oggenc -Q -q 5 -a "DJ 🎵 Emoji" -t "Sun ☀" -l "Ünïcödé ☀" -N 1 -c RATING=4 \
        -c "COMMENT=bright" -c BPM=120 -o "$out/01 - Sun ☀.ogg" "$base"
    opusenc --quiet --bitrate 96 --artist "DJ 🎵 Emoji" --artist "Guest" --title "Moon 🌙" \
        --comment R128_TRACK_GAIN=-2560 "$base" "$out/02 - Moon 🌙.opus"
    quiet_sox "$base" -r 16000 -c 1 "$work/speech.wav"
    speexenc --quiet --title "Talk" "$work/speech.wav" "$out/03 - Talk.spx" 2>/dev/null
    rare mpc "$out/04 - Dense.mpc"
}

make_container_files() {
    local out="Lía Ñandú/Canción de cuna"
    mkdir -p "$out"
    convert -i "$base" -c:a aac -b:a 160k -metadata artist="Lía Ñandú" -metadata title="Luna" \
        -metadata album="Canción de cuna" -metadata track=1/5 -metadata date=2015 \
        "$out/01 - Luna.m4a"
    convert -i "$base" -c:a alac -metadata title="Sueño" "$out/02 - Sueño.m4a"
    convert -i "$base" -c:a aac -b:a 64k -f ipod -metadata title="Capítulo" "$out/03 - Capítulo.m4b"
    convert -i "$base" -c:a aac -b:a 128k "$out/04 - Noche.mp4"
    convert -i "$base" -c:a wmav2 -b:a 128k -metadata artist="Lía Ñandú" \
        -metadata title="Estrella" -metadata track=5 "$out/05 - Estrella.wma"
    convert -i "$base" -c:a wmav1 -b:a 64k -f asf "$out/06 - Nube.asf"
}

# What any real folder holds besides.
make_strays() {
    mkdir -p "Damaged & Odd" ".hidden folder"
    head -c 20000 "$base" | tail -c 19000 >"Damaged & Odd/headless.wav"
    head -c 3000 /dev/zero >"Damaged & Odd/silence without a header.mp3"
    : >"Damaged & Odd/empty.flac"
    printf 'Liner notes: recorded in an empty quarry.\n' >"Damaged & Odd/notes.txt"
    printf 'This is no music.\n' >"Damaged & Odd/a text named.mp3"
    lame --quiet -b 96 --cbr "$base" "Damaged & Odd/an MP3 named.flac"
    cp "$base" "Damaged & Odd/a wave named.mp3"
    cp "$base" ".hidden folder/inside.wav"
    cp "$base" ".hidden.wav"
    cp "$base" "Damaged & Odd/UPPER CASE.WAV"
}

make_sources
# Two groups at a time: each tool uses one core.
make_wave_files &
first=$!
make_other_uncompressed
make_ogg_files
wait "$first"
make_mp3_files &
first=$!
make_flac_files
wait "$first"
make_container_files &
first=$!
make_strays
wait "$first"
touch ".made-$recipe"
