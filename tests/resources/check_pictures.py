#!/usr/bin/env python3
"""Fails when a committed icon or strip is not what the program can draw.

usage: check_pictures.py ROOT
       check_pictures.py --self-test

An icon must have its sizes in 32 bits, and a mask that agrees with its alpha. A
strip must have its size in 8 bits, be black wherever its mask is white, and show
its frames apart. Every picture must have been rendered from the SVGs as they are.
"""
import hashlib
import itertools
import pathlib
import struct
import sys

ICONS = {"program": [16, 32, 48]} | {name: [16] for name in (
    "sort-ascending", "sort-descending", "state-none", "state-child-selected",
    "state-has-files", "state-recursive", "state-folder-only", "ticked")}
STATES = ["state-none", "state-child-selected", "state-has-files", "state-recursive",
          "state-folder-only"]
BUTTONS = {"button-convert": (180, 98), "button-list": (180, 98), "button-refresh": (180, 98),
           "button-reset": (180, 98), "button-filter": (180, 98), "button-help": (68, 34)}
FRAMES = ("normal", "pressed", "hot", "focus")
STAR_SIZE = (80, 33)
BLACK, WHITE = (0, 0, 0), (255, 255, 255)
ROWS = {"white": WHITE, "selected": (0xE3, 0xF1, 0xF6), "band": (0xF0, 0xF0, 0xF0)}
# Of a picture of 16 by 16: pixels that differ by a third of the greys.
LEAST_DIFFERENCE = 10


class Broken(Exception):
    pass


def read_bitmap(data):
    """The rows of a .bmp, top first, as (red, green, blue)."""
    kind, size, _, _, offset = struct.unpack_from("<2sIHHI", data)
    header, width, height, planes, bits, packing = struct.unpack_from("<IiiHHI", data, 14)
    if kind != b"BM" or header != 40 or planes != 1 or packing != 0 or height <= 0:
        raise Broken("not a plain bitmap")
    if bits != 8:
        raise Broken(f"{bits} bits a pixel instead of 8")
    stride = (width + 3) // 4 * 4
    if size != len(data) or len(data) != offset + stride * height or offset != 54 + 1024:
        raise Broken("its sizes contradict each other")
    palette = [(data[i + 2], data[i + 1], data[i]) for i in range(54, offset, 4)]
    return [[palette[data[offset + y * stride + x]] for x in range(width)]
            for y in reversed(range(height))]


def read_icon(data):
    """(pixels as (red, green, blue, alpha), mask bits) of each image of an .ico."""
    reserved, kind, count = struct.unpack_from("<HHH", data)
    if (reserved, kind) != (0, 1):
        raise Broken("not an icon")
    images = []
    for i in range(count):
        width, height, _, _, _, bits, size, offset = struct.unpack_from("<BBBBHHII", data, 6 + i * 16)
        header, inner_width, inner_height, _, inner_bits = struct.unpack_from("<IiiHH", data, offset)
        if header != 40 or (inner_width, inner_height) != (width, height * 2) or width != height:
            raise Broken("its directory and an image contradict each other")
        if (bits, inner_bits) != (32, 32):
            raise Broken(f"{inner_bits} bits a pixel instead of 32")
        images.append(read_icon_image(data[offset + 40:offset + size], width, height))
    return images


def read_icon_image(body, width, height):
    stride = (width + 31) // 32 * 4
    if len(body) != width * height * 4 + stride * height:
        raise Broken("an image is cut short")
    pixels, mask = [], []
    for y in reversed(range(height)):
        row = [struct.unpack_from("BBBB", body, (y * width + x) * 4) for x in range(width)]
        pixels.append([(r, g, b, a) for b, g, r, a in row])
        line = width * height * 4 + y * stride
        mask.append([body[line + x // 8] >> (7 - x % 8) & 1 for x in range(width)])
    return pixels, mask


def check_icon(name, images, sizes):
    if [len(pixels) for pixels, _ in images] != sizes:
        yield f"{name}: its sizes are not {sizes}"
    for pixels, mask in images:
        size = len(pixels)
        flat = [p for row in pixels for p in row]
        if sum(p[3] == 255 for p in flat) < size:
            yield f"{name}, {size}: hardly a pixel is opaque"
        if all(p[3] == 255 for p in flat):
            yield f"{name}, {size}: no pixel is see-through"
        if any(bool(bit) != (p[3] < 128) for p, bit in zip(flat, itertools.chain(*mask))):
            yield f"{name}, {size}: mask and alpha contradict each other"


def check_arrow(name, pixels, points_up):
    widths = [sum(p[3] == 255 for p in row) for row in pixels]
    widths = [width for width in widths if width]
    if (widths[0] < widths[-1]) != points_up:
        yield f"{name}: points the wrong way"


def grey_on(pixels, behind):
    return [sum(p[i] * p[3] + behind[i] * (255 - p[3]) for i in range(3)) / 765
            for row in pixels for p in row]


def check_states(images):
    """They must differ without their colours, on each background."""
    for behind in ROWS:
        greys = {name: grey_on(images[name], ROWS[behind]) for name in STATES}
        for first, second in itertools.combinations(STATES, 2):
            different = sum(abs(a - b) > 85 for a, b in zip(greys[first], greys[second]))
            if different < LEAST_DIFFERENCE:
                yield f"{first} and {second} differ in {different} pixels on {behind}"


def check_mask(name, picture, mask):
    for y, (colours, bits) in enumerate(zip(picture, mask)):
        for x, (colour, bit) in enumerate(zip(colours, bits)):
            if bit not in (BLACK, WHITE):
                yield f"{name}: the mask is neither black nor white at {x},{y}"
                return
            if bit == WHITE and colour != BLACK:
                yield f"{name}: a colour where the mask is white at {x},{y}"
                return


def check_button(name, rows, size):
    if (len(rows[0]), len(rows)) != size:
        yield f"{name}: {len(rows[0])} by {len(rows)} instead of {size[0]} by {size[1]}"
        return
    half, width = len(rows) // 2, len(rows[0]) // 4
    picture, mask = rows[:half], rows[half:]
    yield from check_mask(name, picture, mask)
    frames = {}
    for i, look in enumerate(FRAMES):
        frames[look] = [[(c, m) for c, m in zip(p[i * width:(i + 1) * width],
                                                q[i * width:(i + 1) * width])]
                        for p, q in zip(picture, mask)]
        if all(m == WHITE for row in frames[look] for _, m in row):
            yield f"{name}: nothing in the {look} frame"
    for first, second in itertools.combinations(FRAMES[:3], 2):
        different = sum(a != b for a, b in zip(itertools.chain(*frames[first]),
                                               itertools.chain(*frames[second])))
        if different < width * half // 10:
            yield f"{name}: {first} and {second} look alike"
    middle = frames["focus"][half // 4:half * 3 // 4]
    if any(m != WHITE for row in middle for _, m in row[width // 4:width * 3 // 4]):
        yield f"{name}: the focus frame covers the picture"


def check_stars(picture, mask):
    for name, rows in (("stars", picture), ("stars-mask", mask)):
        if (len(rows[0]), len(rows)) != STAR_SIZE:
            yield f"{name}: not {STAR_SIZE[0]} by {STAR_SIZE[1]}"
            return
    yield from check_mask("stars", picture, mask)
    height, lower = STAR_SIZE[1] // 2, STAR_SIZE[1] // 2 + 2
    # What lies in one band only would light a star by halves or not at all.
    if mask[:STAR_SIZE[1] - lower] != mask[lower:]:
        yield "stars: the bands have different outlines"
    if any(bit != WHITE for row in mask[STAR_SIZE[1] - lower:lower] for bit in row):
        yield f"stars: something in rows {STAR_SIZE[1] - lower} to {lower - 1}, outside a band"
    star = STAR_SIZE[0] // 5
    for rows in (picture, mask):
        if any(row != row[:star] * 5 for row in rows):
            yield "stars: the five differ"
    lit = sum(sum(c) for row in picture[:height] for c in row)
    unlit = sum(sum(c) for row in picture[lower:] for c in row)
    if lit == 0 or unlit == 0 or picture[:STAR_SIZE[1] - lower] == picture[lower:]:
        yield "stars: lit and unlit ones look alike"


def check_digest(text, folder):
    """`text` names each SVG with the hash that it had when it was rendered."""
    noted = dict(reversed(line.split()) for line in text.splitlines())
    present = {path.name: hashlib.sha256(path.read_bytes()).hexdigest()
               for path in folder.glob("*.svg")}
    for name in sorted(noted.keys() | present.keys()):
        if noted.get(name) != present.get(name):
            yield f"{name}: changed since it was rendered; run scripts/render-pictures.sh"


def check_tree(root):
    rendered = root / "src/resources/rendered"
    read = {}

    def load(name, ending, reader):
        try:
            read[name] = reader((rendered / f"{name}.{ending}").read_bytes())
            return True
        except (OSError, Broken, struct.error, IndexError) as fault:
            problems.append(f"{name}.{ending}: {fault}")
            return False

    problems = []
    for name, sizes in ICONS.items():
        if load(name, "ico", read_icon):
            problems += check_icon(name, read[name], sizes)
    for name, points_up in (("sort-ascending", True), ("sort-descending", False)):
        if name in read:
            problems += check_arrow(name, read[name][0][0], points_up)
    if all(name in read for name in STATES):
        problems += check_states({name: read[name][0][0] for name in STATES})
    for name, size in BUTTONS.items():
        if load(name, "bmp", read_bitmap):
            problems += check_button(name, read[name], size)
    if load("stars", "bmp", read_bitmap) & load("stars-mask", "bmp", read_bitmap):
        problems += check_stars(read["stars"], read["stars-mask"])
    digest = (rendered / "sources.sha256").read_text(encoding="utf-8")
    problems += check_digest(digest, root / "src/resources/pictures")
    expected = {f"{name}.ico" for name in ICONS} | {f"{name}.bmp" for name in BUTTONS} | {
        "stars.bmp", "stars-mask.bmp", "sources.sha256"}
    problems += [f"{path.name}: no such picture is known" for path in sorted(rendered.iterdir())
                 if path.name not in expected]
    return len(read), problems


def self_test():
    """Each fault must be found in pictures that are right without it."""
    ink, tile = (9, 9, 9), (200, 220, 240)

    def button(edit):
        picture = [[BLACK] * 16 for _ in range(4)]
        mask = [[WHITE] * 16 for _ in range(4)]
        for x, colour in ((1, ink), (4, tile), (5, ink), (8, ink), (9, tile), (12, ink)):
            picture[1][x], mask[1][x] = colour, BLACK
        picture[1][12], mask[1][12], picture[0][12], mask[0][12] = BLACK, WHITE, ink, BLACK
        edit(picture, mask)
        return list(check_button("b", picture + mask, (16, 8)))

    def stars(edit):
        star = [BLACK, ink, ink] + [BLACK] * 13
        grey = [BLACK, tile, tile] + [BLACK] * 13
        hole = [WHITE, BLACK, BLACK] + [WHITE] * 13
        picture = [[BLACK] * 80 for _ in range(33)]
        mask = [[WHITE] * 80 for _ in range(33)]
        picture[3], picture[21], mask[3], mask[21] = star * 5, grey * 5, hole * 5, hole * 5
        edit(picture, mask)
        return list(check_stars(picture, mask))

    def icon(edit):
        pixels = [[(1, 2, 3, 255 if x < 8 else 0) for x in range(16)] for _ in range(16)]
        mask = [[int(x >= 8) for x in range(16)] for _ in range(16)]
        edit(pixels, mask)
        return list(check_icon("i", [(pixels, mask)], [16]))

    def arrow(points_up):
        rows = [[(0, 0, 0, 255)] * (y + 1) + [(0, 0, 0, 0)] * (3 - y) for y in range(4)]
        return list(check_arrow("a", rows[::1 if points_up else -1], True))

    def states(change):
        drawn = {name: [[(0, 0, 0, 255 if y == i else 0) for _ in range(16)] for y in range(16)]
                 for i, name in enumerate(STATES)}
        if change:
            drawn[STATES[1]] = [[(min(p[0] + 60, 255), p[1], p[2], p[3]) for p in row]
                                for row in drawn[STATES[0]]]
        return list(check_states(drawn))

    def put(rows, y, x, value):
        rows[y][x] = value

    def nothing(*_):
        pass

    cases = [
        ("a right strip", button(nothing), 0),
        ("a colour under a white mask", button(lambda p, m: put(p, 3, 0, ink)), 1),
        ("a grey mask", button(lambda p, m: put(m, 3, 0, tile)), 1),
        ("a focus frame over the picture", button(lambda p, m: put(m, 1, 13, BLACK)), 1),
        ("an empty frame", button(lambda p, m: (put(p, 1, 1, BLACK), put(m, 1, 1, WHITE))), 1),
        ("frames alike", button(lambda p, m: [put(r, 1, x, r[1][x + 4]) for r in (p, m)
                                              for x in range(4)]), 1),
        ("right stars", stars(nothing), 0),
        ("a mark between the bands", stars(lambda p, m: put(m, 16, 4, BLACK)), 2),
        ("bands of different outline", stars(lambda p, m: [put(m, 4, x, BLACK)
                                                           for x in range(0, 80, 16)]), 1),
        ("one star of its own", stars(lambda p, m: put(p, 3, 1, tile)), 1),
        ("lit like unlit", stars(lambda p, m: p.__setitem__(21, p[3])), 1),
        ("a right icon", icon(nothing), 0),
        ("an invisible icon", icon(lambda p, m: [put(p, y, x, (0, 0, 0, 0)) or put(m, y, x, 1)
                                                 for y in range(16) for x in range(16)]), 1),
        ("a mask of its own", icon(lambda p, m: put(m, 0, 0, 1)), 1),
        ("an arrow upwards", arrow(True), 0),
        ("an arrow downwards", arrow(False), 1),
        ("different states", states(False), 0),
        ("states told apart by colour", states(True), len(ROWS)),
    ]
    wrong = [(name, problems) for name, problems, count in cases if len(problems) != count]
    for name, problems in wrong:
        print(f"self-test: {name} was judged wrongly: {problems}")
    return not wrong


def main():
    if sys.argv[1:] == ["--self-test"]:
        sys.exit(0 if self_test() else 1)
    count, problems = check_tree(pathlib.Path(sys.argv[1]).resolve())
    print("\n".join(problems))
    print(f"{count} pictures read, {len(problems)} faults")
    sys.exit(1 if problems or count == 0 else 0)


if __name__ == "__main__":
    main()
