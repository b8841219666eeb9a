#!/usr/bin/env python3
"""Writes the seeds of the tag block fuzzer.

usage: make_tag_block_seeds.py FOLDER

The files in corpus/tag_block come from here; run it again after a change.
"""
import pathlib
import struct
import sys


def text(value):
    return value.encode("utf-16-le") + b"\0\0"


def entry(name, value, data=b""):
    body = text(name) + text(value) + data
    return struct.pack("<i", 4 + len(body)) + body


def block(count, *entries):
    return struct.pack("<i", count) + b"".join(entries)


ARTIST = entry("Artist", "One\rTwo")
SEEDS = {
    "empty": block(0),
    "one": block(1, ARTIST),
    "several": block(4, ARTIST, entry("Track", "3/12"), entry("", ""), entry("artist", "x")),
    "payload": block(2, entry("Cover", "", bytes(range(7))), entry("Title", "\u4e2d")),
    "more-than-there-are": block(0x7FFFFFFF, ARTIST, entry("Title", "a")),
    "fewer-than-there-are": block(1, ARTIST, entry("Title", "a")),
    "no-room-for-a-value": block(2, struct.pack("<i", 8) + text("a"), ARTIST),
    "value-past-its-entry": block(2, struct.pack("<i", 9) + text("a") + text("bc"), ARTIST),
    "size-past-the-block": block(2, ARTIST, struct.pack("<i", 99) + text("a")),
    "negative-size": block(2, ARTIST, struct.pack("<i", -5) + text("a")),
    "name-without-end": block(1, struct.pack("<i", 10) + text("abc")[:-2]),
    "value-without-end": block(1, struct.pack("<i", 14) + text("a") + text("bcd")[:-2]),
}


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for name, content in SEEDS.items():
        (folder / name).write_bytes(content)


if __name__ == "__main__":
    main()
