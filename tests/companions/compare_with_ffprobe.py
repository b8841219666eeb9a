#!/usr/bin/env python3
"""Compares what a list shows of real sound files with what ffprobe says of them.

usage: compare_with_ffprobe.py INSPECT LIBRARY [EMULATOR]
       compare_with_ffprobe.py --self-test

INSPECT is the console program with its decoders beside it, LIBRARY the folder
of scripts/make-sample-library.sh, EMULATOR what runs a Windows program. Length,
bit rate, channels, sample rate and sample size are compared, format by format.
It fails when they differ by more than RULES allow, when a format of RULES or an
extension that a decoder offers was met by no file, and when no file was met.
The reasons for the rules stand in companions/README.md.
"""
import dataclasses
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile


@dataclasses.dataclass(frozen=True)
class Rule:
    """What ffprobe's answer is for one format, and how far ours may be from it."""
    length: str = "stream"           # or "packets": the sum of what its packets last
    above_ms: tuple = (-1.0, 1.0)    # ours minus ffprobe's
    rate: tuple = ("packets",)       # one of: packets, stream; or between packets and whole file
    rate_factor: int = 1             # what ffprobe's sample rate is to be multiplied with
    packet_head: int = 0             # bytes that ffprobe itself puts before each packet
    bits: int = 0                    # the sample size where ffprobe has another view of it
    lossless: bool = None            # where ffprobe's table of codecs has another view of it


RATE_TOLERANCE = 0.001

PLAIN = Rule()
FRAMES = Rule(length="packets")
MP3 = Rule(length="packets", rate=("packets", "stream"))
PAGES = Rule(rate=("between",))
DSD = Rule(rate=("stream",), rate_factor=8, bits=1, lossless=True)

RULES = {
    (".wav", "pcm_s16le"): PLAIN,
    (".wav", "pcm_u8"): PLAIN,
    (".wav", "pcm_s24le"): PLAIN,
    (".wav", "pcm_f32le"): PLAIN,
    (".wav", "pcm_alaw"): PLAIN,
    (".wav", "pcm_mulaw"): PLAIN,
    (".wav", "adpcm_ms"): PLAIN,
    (".wav", "adpcm_ima_wav"): PLAIN,
    (".wave", "pcm_s16le"): PLAIN,
    (".bwf", "pcm_s16le"): PLAIN,
    (".rf64", "pcm_s16le"): PLAIN,
    (".w64", "pcm_s16le"): PLAIN,
    (".aiff", "pcm_s16be"): PLAIN,
    (".aif", "pcm_s24be"): PLAIN,
    (".aifc", "pcm_f32be"): PLAIN,
    (".au", "pcm_s16be"): PLAIN,
    (".snd", "pcm_s16be"): PLAIN,
    (".caf", "pcm_s16be"): PLAIN,
    (".caf", "alac"): PLAIN,
    (".mp3", "mp3"): MP3,
    (".flac", "mp3"): MP3,  # a wrong name
    (".mp2", "mp2"): FRAMES,
    (".mp1", "mp1"): FRAMES,
    (".aac", "aac"): FRAMES,
    (".flac", "flac"): PLAIN,
    (".oga", "flac"): PAGES,
    (".ogg", "vorbis"): PAGES,
    (".opus", "opus"): dataclasses.replace(PAGES, above_ms=(-7.0, -6.0)),
    (".spx", "speex"): dataclasses.replace(PAGES, above_ms=(-10.0, -8.0)),
    (".m4a", "aac"): FRAMES,
    (".m4b", "aac"): FRAMES,
    (".mp4", "aac"): FRAMES,
    (".m4a", "alac"): PLAIN,
    (".wma", "wmav2"): PLAIN,
    (".asf", "wmav1"): PLAIN,
    (".wv", "wavpack"): PLAIN,
    (".ape", "ape"): Rule(rate=("between",), packet_head=8),
    (".tta", "tta"): PLAIN,
    (".mpc", "musepack8"): Rule(above_ms=(0.0, 1000 * 73728 / 44100), rate=("between",)),
    (".dsf", "dsd_lsbf_planar"): DSD,
    (".dff", "dsd_msbf"): DSD,
}
# Lossless or not, as the file was made: a sample size may be shown.
EITHER_QUALITY = {"wavpack"}
# What ffprobe reads and we refuse: the content belongs to the other library.
REFUSED = {(".mp3", "pcm_s16le")}
# Content of the library under the further names that it may have.
FURTHER_NAMES = {".wave": ".wav", ".bwf": ".wav", ".rf64": "RF64.wav"}

BITS_OF_FORMAT = {"u8": 8, "s16": 16, "s32": 32, "flt": 32, "s64": 64, "dbl": 64}


@dataclasses.dataclass
class Ours:
    length: float = 0    # milliseconds
    rate: float = 0      # bits per second
    columns: dict = dataclasses.field(default_factory=dict)

    def number(self, column):
        return int(re.sub(r"\D", "", self.columns.get(column, "")) or 0)


@dataclasses.dataclass
class Theirs:
    codec: str
    channels: int
    sample_rate: int
    bits: int
    is_float: bool
    stream_ms: float
    packets_ms: float
    stream_rate: float
    packet_bytes: int
    packet_count: int
    file_bytes: int


def run(command):
    return subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, check=False)


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def read_ours(inspect, files):
    """Runs `inspect properties` once; answers what it prints, by path."""
    printed = run(inspect + ["properties"] + [windows_path(file) for file in files])
    found = {}
    for line in printed.stdout.decode("utf-8").replace("\r", "").split("\n"):
        numbers = re.match(r"  sorted by: .*length (-?\d+) ms, bit rate (-?\d+) bit/s", line)
        cell = re.match(r"  (Channels|Sample Rate|Sample Size|Length|Bit Rate) +(.*)", line)
        if line.startswith("Z:"):
            current = found[line[2:].replace("\\", "/")] = Ours()
        elif numbers:
            current.length, current.rate = int(numbers[1]), int(numbers[2])
        elif cell:
            current.columns[cell[1]] = cell[2]
    return found


def read_theirs(file):
    """What ffprobe says, or None if it reads no sound."""
    answer = json.loads(run(["ffprobe", "-v", "quiet", "-of", "json", "-select_streams", "a:0",
                             "-show_streams", "-show_packets", file]).stdout or b"{}")
    streams = answer.get("streams") or []
    if not streams or int(streams[0].get("sample_rate", 0)) == 0:
        return None
    stream = streams[0]
    packets = answer.get("packets", [])
    kind = stream.get("sample_fmt", "").rstrip("p")
    bits = int(stream.get("bits_per_raw_sample", 0)) or BITS_OF_FORMAT.get(kind, 0)
    return Theirs(
        codec=stream["codec_name"], channels=stream["channels"],
        sample_rate=int(stream["sample_rate"]), bits=bits, is_float=kind in ("flt", "dbl"),
        stream_ms=1000 * float(stream.get("duration", 0)),
        packets_ms=1000 * sum(float(packet.get("duration_time", 0)) for packet in packets),
        stream_rate=float(stream.get("bit_rate", 0)),
        packet_bytes=sum(int(packet["size"]) for packet in packets), packet_count=len(packets),
        file_bytes=os.path.getsize(file))


def lossless_codecs():
    """By codec: whether ffprobe's table calls it lossless; codecs that can be both left out."""
    table = {}
    for line in run(["ffprobe", "-v", "quiet", "-codecs"]).stdout.decode().split("\n"):
        match = re.match(r" ..A.([L.])([S.]) (\S+) ", line)
        if match and match[1] != match[2]:
            table[match[3]] = match[2] == "S"
    return table


def check_rate(ours, theirs, rule, length):
    packet_bytes = theirs.packet_bytes - rule.packet_head * theirs.packet_count
    if rule.rate == ("between",):
        return packet_bytes <= ours.rate * ours.length / 8000 <= theirs.file_bytes
    from_packets = packet_bytes * 8000 / length
    expected = {"packets": from_packets, "stream": theirs.stream_rate}
    return any(abs(ours.rate - expected[source]) <= RATE_TOLERANCE * expected[source]
               for source in rule.rate)


def check_sample_size(extension, ours, theirs, rule, lossless):
    shown = ours.columns.get("Sample Size", "")
    is_lossless = rule.lossless if rule.lossless is not None else lossless.get(theirs.codec)
    if theirs.codec not in EITHER_QUALITY and bool(shown) != (is_lossless or extension == ".wav"):
        return False
    if not shown:
        return True
    is_float = theirs.is_float and not rule.bits
    return shown == f"{rule.bits or theirs.bits} bit" + (" floating point" if is_float else "")


def compare(extension, ours, theirs, rule, lossless):
    """Names what differs."""
    length = theirs.stream_ms if rule.length == "stream" else theirs.packets_ms
    low, high = rule.above_ms
    seconds = ours.length // 1000
    checks = {
        "length": low <= ours.length - length <= high,
        "length as text": ours.columns.get("Length") == f"{seconds // 60}:{seconds % 60:02}",
        "bit rate": ours.length > 0 and length > 0 and check_rate(ours, theirs, rule, length),
        "bit rate as text": ours.number("Bit Rate") == ours.rate // 1000,
        "channels": ours.number("Channels") == theirs.channels,
        "sample rate": ours.number("Sample Rate") == theirs.sample_rate * rule.rate_factor,
        "sample size": check_sample_size(extension, ours, theirs, rule, lossless),
    }
    return [name for name, passed in checks.items() if not passed]


def self_test():
    """A true row passes; each wrong value in it is named."""
    theirs = Theirs("pcm_s16le", 2, 44100, 16, False, 2000.0, 2000.0, 1411200, 352800, 87, 352844)
    true = {"Length": "0:02", "Bit Rate": "1,411 kbps", "Channels": "2",
            "Sample Rate": "44,100 Hz", "Sample Size": "16 bit"}
    cases = [
        ([], 2000, 1411200, {}),
        (["length"], 2002, 1411200, {}),
        (["length"], 1998, 1411200, {"Length": "0:01"}),
        (["length as text"], 2000, 1411200, {"Length": "0:20"}),
        (["bit rate"], 2000, 1410000 - 1200 + 500, {"Bit Rate": "1,409 kbps"}),
        (["bit rate as text"], 2000, 1411200, {"Bit Rate": "1,412 kbps"}),
        (["channels"], 2000, 1411200, {"Channels": "1"}),
        (["sample rate"], 2000, 1411200, {"Sample Rate": "44,101 Hz"}),
        (["sample size"], 2000, 1411200, {"Sample Size": "24 bit"}),
        (["sample size"], 2000, 1411200, {"Sample Size": "16 bit floating point"}),
        (["sample size"], 2000, 1411200, {"Sample Size": ""}),
    ]
    wrong = 0
    for expected, length, rate, changed in cases:
        found = compare(".flac", Ours(length, rate, true | changed), theirs, PLAIN,
                        {"pcm_s16le": True})
        if found != expected:
            print(f"self-test: {expected} expected, {found} found")
            wrong += 1
    return wrong == 0


def offered_extensions(inspect):
    printed = run(inspect + ["decoders"]).stdout.decode("utf-8")
    return set(re.findall(r"^  type +(\.\S+)", printed, re.MULTILINE))


def sample_files(library, further):
    """The files of the library, and links to some under their further names."""
    files = sorted(path for path in library.rglob("*")
                   if path.is_file() and not path.name.startswith(".made-"))
    for extension, ending in FURTHER_NAMES.items():
        source = next((path for path in files if path.name.endswith(ending)), None)
        if source:
            shutil.copy(source, further / ("further name" + extension))
    return files + sorted(further.iterdir())


def compare_library(inspect, files):
    """Answers the (extension, codec) pairs compared, and how many problems were met."""
    lossless = lossless_codecs()
    ours_by_path = read_ours(inspect, files)
    compared, problems = {}, 0
    for file in files:
        extension = file.suffix.lower()
        ours = ours_by_path.get(str(file), Ours())
        theirs = read_theirs(file)
        key = (extension, theirs.codec if theirs else None)
        is_read = "Channels" in ours.columns
        if not is_read and (theirs is None and file.parent.name.startswith("Damaged")
                            or key in REFUSED):
            continue
        if not is_read or theirs is None or key not in RULES:
            found = ["only one of us reads it" if is_read != bool(theirs) else "no rule for it"]
        else:
            compared[key] = compared.get(key, 0) + 1
            found = compare(extension, ours, theirs, RULES[key], lossless)
        if found:
            problems += 1
            print(f"{file}: {', '.join(found)}\n  ours   {ours}\n  theirs {theirs}")
    return compared, problems


def main(arguments):
    if arguments == ["--self-test"]:
        return self_test()
    program, library, *emulator = arguments
    inspect = emulator + [program]
    settings = "HKCU\\Software\\Brindlefen\\Tonequarry"
    # No decoder of other tests, and sample rates to the last digit.
    run(emulator + ["reg", "delete", settings + "\\DecoderCache64", "/f"])
    run(emulator + ["reg", "add", settings + "\\Ref", "/v", "UnitsFreq", "/t", "REG_DWORD", "/d",
                    "1", "/f"])
    try:
        with tempfile.TemporaryDirectory() as further:
            files = sample_files(pathlib.Path(library), pathlib.Path(further))
            compared, problems = compare_library(inspect, files)
            offered = offered_extensions(inspect)
    finally:
        run(emulator + ["reg", "delete", settings + "\\Ref", "/v", "UnitsFreq", "/f"])
    for key in sorted(RULES.keys() - compared.keys()):
        print(f"no file of the format {key} was compared")
        problems += 1
    for extension in sorted(offered - {extension for extension, _ in compared}):
        print(f"no file of the type {extension}, which a decoder offers, was compared")
        problems += 1
    for (extension, codec), count in sorted(compared.items()):
        print(f"{extension:6} {codec:16} {count}")
    print(f"{sum(compared.values())} files of {len(compared)} formats compared, "
          f"{problems} problems")
    return problems == 0 and bool(compared) and bool(offered)


if __name__ == "__main__":
    sys.exit(0 if main(sys.argv[1:]) else 1)
