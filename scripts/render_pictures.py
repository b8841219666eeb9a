#!/usr/bin/env python3
"""Renders SVGs into icons and strips: render_pictures.py PICTURES RENDERED HELP

What the program does with a picture decides how it is written:
- The state icons and the sort arrows go into image lists of 24 bits with a mask
  of one bit, which copy a pixel's colour as it stands; tick boxes and the legend
  are drawn with their alpha. Half covered pixels are kept out of the mask.
- Button and star strips are 8 bits a pixel over a mask of whole pixels. A pixel
  at an edge is blended here, with the colour that lies behind it on the screen.
"""
import copy
import hashlib
import pathlib
import struct
import subprocess
import sys
import xml.etree.ElementTree as xml
import zlib

SVG = "http://www.w3.org/2000/svg"
xml.register_namespace("", SVG)

# Icon file: the SVGs and the sizes that each is rendered at.
ICONS = {
    "program": [("program-small", 16), ("program", 32), ("program", 48)],
    "sort-descending": [("sort-descending", 16)],
    "sort-ascending": [("sort-ascending", 16)],
    "state-recursive": [("state-recursive", 16)],
    "state-folder-only": [("state-folder-only", 16)],
    "state-child-selected": [("state-child-selected", 16)],
    "state-has-files": [("state-has-files", 16)],
    "state-none": [("state-none", 16)],
    "ticked": [("ticked", 16)],
}
# Only ever shown through a mask, on column headers from F0F0F0 to white.
HEADER_ICONS = {"sort-ascending", "sort-descending"}
HEADER = (0xF8, 0xF8, 0xF8)

BUTTONS = ["convert", "list", "refresh", "reset", "filter"]
FRAME = (45, 49)
CAPTION_BASELINE = 44
# The form's gradient behind the buttons, and the button face behind Help.
FORM = (0xF1, 0xF1, 0xF1)
BUTTON_FACE = (0xF0, 0xF0, 0xF0)

STARS = 5
STAR_STRIP = (80, 33)
LOWER_BAND = STAR_STRIP[1] // 2 + 2
# Between a white row and a selected one.
ROW = (0xF4, 0xF9, 0xFB)

# Pixels less covered than this stay the background's.
LEAST_ALPHA = 20

# Pictures of the help page: the SVG and the size, twice that of the screen so
# that they are sharp where the page is scaled.
HELP_PICTURES = {name: 32 for name in (
    "state-none", "state-child-selected", "state-has-files", "state-recursive",
    "state-folder-only", "ticked", "sort-ascending", "sort-descending")}
HELP_PICTURES["program"] = 96


class Image:
    """Rows of (red, green, blue, alpha), alpha not multiplied in."""

    def __init__(self, width, height, rows):
        self.width, self.height, self.rows = width, height, rows


def read_png(data):
    """Reads what rsvg-convert writes: 8 bits, RGBA, not interlaced."""
    position, packed, header = 8, b"", None
    while position < len(data):
        size, kind = struct.unpack_from(">I4s", data, position)
        body = data[position + 8:position + 8 + size]
        position += size + 12
        if kind == b"IHDR":
            header = struct.unpack(">IIBBBBB", body)
        elif kind == b"IDAT":
            packed += body
    width, height = header[:2]
    if header[2:] != (8, 6, 0, 0, 0):
        raise ValueError(f"unexpected kind of PNG: {header}")
    return Image(width, height, unfilter(zlib.decompress(packed), width, height))


def unfilter(data, width, height):
    stride, rows, previous = width * 4, [], bytearray(width * 4)
    for y in range(height):
        start = y * (stride + 1)
        kind, line = data[start], bytearray(data[start + 1:start + 1 + stride])
        for i in range(stride):
            left = line[i - 4] if i >= 4 else 0
            above = previous[i]
            corner = previous[i - 4] if i >= 4 else 0
            line[i] = (line[i] + (0, left, above, (left + above) // 2,
                                  paeth(left, above, corner))[kind]) & 255
        rows.append([tuple(line[x * 4:x * 4 + 4]) for x in range(width)])
        previous = line
    return rows


def paeth(left, above, corner):
    guess = left + above - corner
    distances = (abs(guess - left), abs(guess - above), abs(guess - corner))
    return (left, above, corner)[distances.index(min(distances))]


def write_png(path, image):
    raw = b"".join(b"\0" + bytes(value for pixel in row for value in pixel) for row in image.rows)

    def chunk(kind, body):
        return (struct.pack(">I", len(body)) + kind + body +
                struct.pack(">I", zlib.crc32(kind + body)))

    header = struct.pack(">IIBBBBB", image.width, image.height, 8, 6, 0, 0, 0)
    path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
                     chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b""))


def render(svg, width, height):
    result = subprocess.run(["rsvg-convert", "--width", str(width), "--height", str(height)],
                            input=xml.tostring(svg), stdout=subprocess.PIPE, check=True)
    return read_png(result.stdout)


def blend(pixel, behind):
    alpha = pixel[3]
    return tuple((pixel[i] * alpha + behind[i] * (255 - alpha) + 127) // 255 for i in range(3))


def flattened(image, behind):
    """Each pixel either wholly there, blended with what lies behind, or not at all."""
    return Image(image.width, image.height, [
        [blend(p, behind) + (255,) if p[3] >= LEAST_ALPHA else (0, 0, 0, 0) for p in row]
        for row in image.rows])


def icon_image(image):
    """One image of an .ico: 32 bits a pixel with alpha, and the mask of one bit."""
    header = struct.pack("<IiiHHIIiiII", 40, image.width, image.height * 2, 1, 32,
                         0, 0, 0, 0, 0, 0)
    colours, mask = b"", b""
    for row in reversed(image.rows):
        colours += b"".join(bytes((b, g, r, a)) if a else bytes(4) for r, g, b, a in row)
        bits = "".join("1" if pixel[3] < 128 else "0" for pixel in row)
        bits += "0" * (-len(bits) % 32)
        mask += int(bits, 2).to_bytes(len(bits) // 8, "big")
    return header + colours + mask


def write_icon(path, images):
    bodies = [icon_image(image) for image in images]
    offset = 6 + 16 * len(images)
    directory = struct.pack("<HHH", 0, 1, len(images))
    for image, body in zip(images, bodies):
        directory += struct.pack("<BBBBHHII", image.width, image.height, 0, 0, 1, 32,
                                 len(body), offset)
        offset += len(body)
    path.write_bytes(directory + b"".join(bodies))


def palette_for(rows):
    """At most 256 colours, and for each colour of the rows the index of its own or of
    one close to it. Where colours have to share, the most frequent one stays exact."""
    counts = {}
    for row in rows:
        for colour in row:
            counts[colour] = counts.get(colour, 0) + 1
    fixed = [(0, 0, 0), (255, 255, 255)]
    for step in (1, 2, 3, 4, 6, 8, 12, 16):
        buckets = {}
        for colour in sorted(counts, key=lambda c: (-counts[c], c)):
            if colour not in fixed:
                buckets.setdefault(tuple(v // step for v in colour), []).append(colour)
        if len(buckets) <= 254:
            break
    palette = fixed + [members[0] for members in buckets.values()]
    index = {colour: i for i, colour in enumerate(fixed)}
    for i, members in enumerate(buckets.values(), len(fixed)):
        index.update((colour, i) for colour in members)
    return palette, index


def write_bitmap(path, rows):
    """8 bits a pixel, the bottom row first, a full palette."""
    palette, index = palette_for(rows)
    width, height = len(rows[0]), len(rows)
    padding = bytes(-width % 4)
    pixels = b"".join(bytes(index[c] for c in row) + padding for row in reversed(rows))
    colours = b"".join(bytes((b, g, r, 0)) for r, g, b in palette).ljust(1024, b"\0")
    offset = 14 + 40 + len(colours)
    header = struct.pack("<2sIHHI", b"BM", offset + len(pixels), 0, 0, offset)
    header += struct.pack("<IiiHHIIiiII", 40, width, height, 1, 8, 0, len(pixels), 0, 0, 256, 0)
    path.write_bytes(header + colours + pixels)


def colours_and_mask(image, behind):
    """Picture: black where nothing is drawn. Mask: white there, black elsewhere."""
    flat = flattened(image, behind)
    return ([[p[:3] for p in row] for row in flat.rows],
            [[(0, 0, 0) if p[3] else (255, 255, 255) for p in row] for row in flat.rows])


def tag(name):
    return f"{{{SVG}}}{name}"


def element(name, parent=None, **attributes):
    made = xml.Element(tag(name), {k: str(v) for k, v in attributes.items()})
    if parent is not None:
        parent.append(made)
    return made


class Sources:
    def __init__(self, folder):
        self.folder = folder
        frames = self.read("button-frames")
        self.frames = {g.get("id"): list(g) for g in frames if g.get("id")}
        letters = self.read("letters").find(tag("g"))
        self.letter_style = dict(letters.attrib)
        self.letters = {letter.get("id"): letter for letter in letters}

    def read(self, name):
        return xml.parse(self.folder / f"{name}.svg").getroot()

    def caption(self, text):
        """The words under a button's picture, in the middle of the frame."""
        group, x = element("g", **self.letter_style), 0
        for letter in text:
            glyph = element("g", group, transform=f"translate({x})")
            glyph.append(element("path", d=self.letters[letter].get("d")))
            x += int(self.letters[letter].get("data-advance"))
        left = (FRAME[0] - x + 1) // 2
        group.set("transform", f"translate({left} {CAPTION_BASELINE - 8})")
        return group

    def button_strip(self, name):
        """The frames side by side: normal, pressed, hot, focus."""
        source = self.read(f"button-{name}")
        width, height = FRAME
        strip = element("svg", width=width * 4, height=height)
        for position, look in enumerate(("normal", "pressed", "hot", "focus")):
            frame = element("svg", strip, x=position * width, y=0, width=width, height=height)
            frame.extend(copy.deepcopy(self.frames.get(look, [])))
            if look == "focus":
                continue
            shift = 1 if look == "pressed" else 0
            picture = element("g", frame, transform=f"translate({shift} {shift})")
            picture.extend(copy.deepcopy(list(source)))
            picture.append(self.caption(source.get("data-caption")))
        return strip


def write_button(path, svg, size, behind):
    picture, mask = colours_and_mask(render(svg, *size), behind)
    write_bitmap(path, picture + mask)


def star_strip(sources):
    rows = [[(0, 0, 0, 0)] * STAR_STRIP[0] for _ in range(STAR_STRIP[1])]
    for name, top in (("star-lit", 0), ("star-unlit", LOWER_BAND)):
        star = render(sources.read(name), 16, 16)
        for y in range(min(16, STAR_STRIP[1] - top)):
            rows[top + y] = star.rows[y] * STARS
    return Image(*STAR_STRIP, rows)


def render_all(sources, target):
    for name, parts in ICONS.items():
        images = [render(sources.read(svg), size, size) for svg, size in parts]
        if name in HEADER_ICONS:
            images = [flattened(image, HEADER) for image in images]
        write_icon(target / f"{name}.ico", images)
    for name in BUTTONS:
        write_button(target / f"button-{name}.bmp", sources.button_strip(name),
                     (FRAME[0] * 4, FRAME[1]), FORM)
    write_button(target / "button-help.bmp", sources.read("button-help"), (68, 17), BUTTON_FACE)
    picture, mask = colours_and_mask(star_strip(sources), ROW)
    write_bitmap(target / "stars.bmp", picture)
    write_bitmap(target / "stars-mask.bmp", mask)


def render_help(sources, target):
    for name, size in HELP_PICTURES.items():
        write_png(target / f"{name}.png", render(sources.read(name), size, size))
    for name in BUTTONS:
        strip = render(sources.button_strip(name), FRAME[0] * 8, FRAME[1] * 2)
        rows = [row[:FRAME[0] * 2] for row in strip.rows]
        write_png(target / f"button-{name}.png", Image(FRAME[0] * 2, FRAME[1] * 2, rows))


def write_digest(folder, target):
    """What was rendered, so that a test sees an SVG that was changed and not rendered."""
    lines = [f"{hashlib.sha256(path.read_bytes()).hexdigest()}  {path.name}\n"
             for path in sorted(folder.glob("*.svg"))]
    (target / "sources.sha256").write_text("".join(lines), encoding="utf-8")


def main():
    pictures, rendered, help_folder = map(pathlib.Path, sys.argv[1:])
    sources = Sources(pictures)
    render_all(sources, rendered)
    render_help(sources, help_folder)
    write_digest(pictures, rendered)


if __name__ == "__main__":
    main()
