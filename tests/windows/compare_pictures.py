#!/usr/bin/env python3
"""Checks that "render" draws the same picture on Windows as natively, but for the pixels of text.

usage: compare_pictures.py NATIVE WINDOWS RECORDING...
WINDOWS is started by wine. Where text stands, both programs say themselves: their SVG pictures have the
place and length of each text. What the status line holds in boxes as wide as their texts is left out.
"""
import pathlib
import re
import struct
import subprocess
import sys
import tempfile
import zlib

PICTURES = [["--size", "900x400"], ["--table", "run-time", "--size", "700x300"]]
OVERHANG = 4  # pixels that glyphs may reach out of their cells


def render(program, arguments, recording, output):
    done = subprocess.run(program + ["render", recording.name, "-o", str(output), *arguments],
                          cwd=recording.parent, capture_output=True, text=True, timeout=120)
    return done.returncode, done.stderr


def pixels(path):
    """Width, and the rows of a PNG picture of 8-bit RGB."""
    data, at, packed = path.read_bytes(), 8, b""
    while at < len(data):
        length, kind = struct.unpack(">I4s", data[at:at + 8])
        body = data[at + 8:at + 8 + length]
        if kind == b"IHDR":
            width, height, depth, colour = struct.unpack(">IIBB", body[:10])
            assert (depth, colour) == (8, 2), "a picture of another kind than expected"
        if kind == b"IDAT":
            packed += body
        at += length + 12
    raw, rows, before = zlib.decompress(packed), [], bytes(3 * width)
    for y in range(height):
        line = raw[y * (3 * width + 1):(y + 1) * (3 * width + 1)]
        before = unfilter(line[0], bytearray(line[1:]), before)
        rows.append(before)
    return width, rows


def unfilter(kind, row, above):
    for i in range(len(row)):
        left, up, corner = (row[i - 3] if i >= 3 else 0), above[i], (above[i - 3] if i >= 3 else 0)
        nearest = min((left, up, corner), key=lambda each: abs(left + up - corner - each))
        row[i] = (row[i] + (0, left, up, (left + up) // 2, nearest)[kind]) & 255
    return bytes(row)


def text_cells(svg):
    """The rows of the status line, and the rectangles that texts below it may touch."""
    text = svg.read_text(encoding="utf-8")
    status = int(re.search(r'<g transform="translate\(0 (\d+)\)">', text)[1])
    body = text[text.index("<g transform="):]
    cells = []
    for x, y, size, length in re.findall(r'<text x="(-?\d+)" y="(-?\d+)"[^>]* font-size="(\d+)"[^>]*'
                                         r' textLength="(\d+)"', body):
        x, y, size, length = int(x), int(y) + status, int(size), int(length)
        cells.append((x - OVERHANG, y - size - OVERHANG, x + length + OVERHANG, y + size // 2 + OVERHANG))
    return status, cells


def shapes(svg):
    """What the picture has below the status line beside its texts."""
    text = svg.read_text(encoding="utf-8")
    return [line for line in text[text.index("<g transform="):].splitlines() if not line.startswith("<text")]


def differences(native, windows):
    (width, ours), (other, theirs) = pixels(native.with_suffix(".png")), pixels(windows.with_suffix(".png"))
    if (width, len(ours)) != (other, len(theirs)):
        return f"{width} x {len(ours)} and {other} x {len(theirs)} pixels"
    status, cells = text_cells(native.with_suffix(".svg"))
    cells += text_cells(windows.with_suffix(".svg"))[1]
    for y in range(status, len(ours)):
        if ours[y] == theirs[y]:
            continue
        masked = bytearray(width)
        for left, top, right, bottom in cells:
            if top <= y < bottom:
                for x in range(max(left, 0), min(right, width)):
                    masked[x] = 1
        for x in range(width):
            if not masked[x] and ours[y][3 * x:3 * x + 3] != theirs[y][3 * x:3 * x + 3]:
                return f"pixel {x}, {y}"
    if shapes(native.with_suffix(".svg")) != shapes(windows.with_suffix(".svg")):
        return "the shapes of the SVG pictures"
    return None


def main():
    native, windows = [str(pathlib.Path(sys.argv[1]).resolve())], ["wine", str(pathlib.Path(sys.argv[2]).resolve())]
    recordings = [pathlib.Path(each).resolve() for each in sys.argv[3:]]
    if not recordings:
        sys.exit(__doc__)
    faults = []
    with tempfile.TemporaryDirectory() as name:
        ours, theirs = pathlib.Path(name) / "native", pathlib.Path(name) / "windows"
        for recording in recordings:
            for arguments in PICTURES:
                answers = [(render(native, arguments, recording, ours.with_suffix(kind)),
                            render(windows, arguments, recording, theirs.with_suffix(kind)))
                           for kind in (".png", ".svg")]
                what = f"{recording.name}: {' '.join(arguments)}"
                drawn = all(code == 0 for pair in answers for code, _ in pair)
                difference = differences(ours, theirs) if drawn else answers
                faults += [f"{what}: {difference}"] if difference else []
    pictures = len(recordings) * len(PICTURES)
    print("\n".join(faults) if faults else f"{pictures} pictures: no difference beside text")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
