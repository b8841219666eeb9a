#!/usr/bin/env python3
"""Writes sound files and tags for which no free tool is at hand.

    write_rare_audio.py id3v2 SOURCE.mp3 TARGET   the frames behind an ID3v2.4 tag
    write_rare_audio.py apev2 SOURCE.mp3 TARGET   the frames before an APEv2 tag
    write_rare_audio.py mp1|ape|mpc|dsf|dff TARGET

The formats are those of their published descriptions. The audio is silence, or
filler where a real encoder would be needed: headers and tags are what counts.
"""
import struct
import sys
import zlib


def synchsafe(value):
    return bytes((value >> shift) & 0x7F for shift in (21, 14, 7, 0))


def frame(name, body):
    return name.encode() + synchsafe(len(body)) + b"\0\0" + body


def text_frame(name, *values):
    return frame(name, b"\3" + "\0".join(values).encode())


def id3v2(frames):
    body = b"".join(frames) + bytes(64)
    return b"ID3\4\0\0" + synchsafe(len(body)) + body


def rated_tag():
    picture = b"\x89PNG\r\n\x1a\n" + bytes(300)
    return id3v2([
        text_frame("TPE1", "Quarry Choir", "Гость"),
        text_frame("TIT2", "Two Voices"),
        text_frame("TALB", "Limestone"),
        text_frame("TPE2", "Quarry Choir"),
        text_frame("TRCK", "6/9"),
        text_frame("TPOS", "1/2"),
        text_frame("TDRC", "2007-05-01"),
        text_frame("TCMP", "1"),
        text_frame("TPUB", "Stone Records"),
        text_frame("TENC", "A person"),
        text_frame("TSSE", "an encoder"),
        text_frame("TXXX", "STYLE", "Echo"),
        text_frame("TXXX", "TrueSpinResult", "passed"),
        frame("COMM", b"\3eng\0" + "First line\r\nsecond line".encode()),
        frame("POPM", b"someone@example.org\0" + bytes([196]) + struct.pack(">I", 12)),
        frame("APIC", b"\0image/png\0\3\0" + picture),
    ])


def apev2(items):
    body = b""
    for key, values in items:
        value = "\0".join(values).encode()
        body += struct.pack("<II", len(value), 0) + key.encode() + b"\0" + value
    size = len(body) + 32

    def block(flags):
        return b"APETAGEX" + struct.pack("<IIII", 2000, size, len(items), flags) + bytes(8)

    return block(0xA0000000) + body + block(0x80000000)


def old_tag():
    return apev2([
        ("Artist", ["Quarry Choir", "Stonemason"]),
        ("Title", ["Old Tag"]),
        ("Track", ["7/9"]),
        ("Rating", ["60"]),
        ("Year", ["1998"]),
    ])


def mp1():
    """Layer I, 44.1 kHz, stereo, 192 kbit/s: no bits allotted is silence."""
    frames = b""
    spare = 0
    for _ in range(230):
        # 12 x 192000 / 44100 slots, padded often enough to keep the bit rate.
        spare += 12 * 192000 % 44100
        padded = spare >= 44100
        spare -= 44100 if padded else 0
        header = bytes([0xFF, 0xFF, 0x60 | (2 if padded else 0), 0])
        slots = 12 * 192000 // 44100 + (1 if padded else 0)
        frames += header + bytes(slots * 4 - 4)
    return frames


def ape():
    """Monkey's Audio 3.99: descriptor and header, 16 bit, 44.1 kHz, stereo, 2 s."""
    samples = 88200
    first_frame = 52 + 24 + 8 + 44
    seek_table = struct.pack("<II", first_frame, first_frame + 4000)
    descriptor = b"MAC " + struct.pack("<HHIIIIIII", 3990, 0, 52, 24, 8, 44, 5000, 0, 0)
    descriptor += bytes(52 - len(descriptor))
    header = struct.pack("<HHIIIHHI", 2000, 0, 73728, samples - 73728, 2, 16, 2, 44100)
    tag = apev2([("Title", ["星"]), ("Artist", ["夜の庭"]), ("Rating", ["0.5"])])
    return descriptor + header + seek_table + bytes(44 + 5000) + tag


def variable_length(value):
    out = [value & 0x7F]
    while value > 0x7F:
        value >>= 7
        out.append(0x80 | (value & 0x7F))
    return bytes(reversed(out))


def mpc():
    """Musepack, stream version 8, 44.1 kHz, stereo, 2 s."""

    def packet(key, body):
        return key + variable_length(len(body) + 3) + body

    header = bytes([8]) + variable_length(88200) + variable_length(0)
    header += struct.pack(">H", 0 << 13 | 30 << 8 | (2 - 1) << 4 | 3)
    header = struct.pack(">I", zlib.crc32(header)) + header
    audio = bytes(100)
    stream = b"MPCK" + packet(b"SH", header) + packet(b"AP", audio) * 400 + packet(b"SE", b"")
    return stream + apev2([("Title", ["Dense"]), ("Comment", ["packed"])])


DSD_RATE = 2822400
DSD_SILENCE = b"\x69"


def dsf():
    blocks = 87  # of 4096 bytes for each channel: about a second
    samples = blocks * 4096 * 8
    data = DSD_SILENCE * (blocks * 4096 * 2)
    tag = id3v2([text_frame("TIT2", "空"), text_frame("TPE1", "夜の庭")])
    body = b"fmt " + struct.pack("<QIIIIIIQII", 52, 1, 0, 2, 2, DSD_RATE, 1, samples, 4096, 0)
    body += b"data" + struct.pack("<Q", 12 + len(data)) + data
    offset = 28 + len(body)
    return b"DSD " + struct.pack("<QQQ", 28, offset + len(tag), offset) + body + tag


def dff():
    def chunk(name, body):
        return name + struct.pack(">Q", len(body)) + body + (b"\0" if len(body) % 2 else b"")

    prop = b"SND " + chunk(b"FS  ", struct.pack(">I", DSD_RATE))
    prop += chunk(b"CHNL", struct.pack(">H", 2) + b"SLFTSRGT")
    prop += chunk(b"CMPR", b"DSD " + bytes([14]) + b"not compressed\0")
    body = b"DSD " + chunk(b"FVER", b"\1\5\0\0") + chunk(b"PROP", prop)
    body += chunk(b"DSD ", DSD_SILENCE * (DSD_RATE // 8 * 2))
    return b"FRM8" + struct.pack(">Q", len(body)) + body


def main(arguments):
    kind = arguments[0]
    if kind in ("id3v2", "apev2"):
        with open(arguments[1], "rb") as source:
            frames = source.read()
        content = rated_tag() + frames if kind == "id3v2" else frames + old_tag()
    else:
        content = {"mp1": mp1, "ape": ape, "mpc": mpc, "dsf": dsf, "dff": dff}[kind]()
    with open(arguments[-1], "wb") as target:
        target.write(content)


if __name__ == "__main__":
    main(sys.argv[1:])
