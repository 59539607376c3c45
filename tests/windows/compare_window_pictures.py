#!/usr/bin/env python3
"""Checks that both windows of the component draw the same on both back-ends, to the pixel.

usage: compare_window_pictures.py NATIVE WINDOWS RECORDING
NATIVE and WINDOWS are window_pictures of the two builds, WINDOWS started by wine. They mask texts out, and
each fails where the screen does not show what was drawn.
"""
import os
import pathlib
import subprocess
import sys
import tempfile

from compare_pictures import pixels


def main():
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    recording, faults = pathlib.Path(sys.argv[3]).resolve(), []
    with tempfile.TemporaryDirectory() as name:
        folders = []
        for starter, program in (([], sys.argv[1]), (["wine"], sys.argv[2])):
            program = pathlib.Path(program).resolve()
            folder = pathlib.Path(name) / program.suffix.lstrip(".")
            folder = folder / "pictures"
            folder.mkdir(parents=True)
            folders.append(folder)
            environment = dict(os.environ, KVX_BIN_DIR=str(program.parent))
            done = subprocess.run([*starter, program, recording, folder], env=environment, timeout=300,
                                  capture_output=True, text=True)
            if done.returncode != 0:
                faults.append(f"{program.name}: {done.stdout[-2000:]}{done.stderr[-500:]}")
        for picture in ("trace.png", "analyze.png") if not faults else ():
            (width, ours), (other, theirs) = (pixels(folder / picture) for folder in folders)
            if (width, len(ours)) != (other, len(theirs)):
                faults.append(f"{picture}: {width} x {len(ours)} and {other} x {len(theirs)} pixels")
                continue
            different = [(x, y) for y in range(len(ours)) if ours[y] != theirs[y] for x in range(width)
                         if ours[y][3 * x:3 * x + 3] != theirs[y][3 * x:3 * x + 3]]
            if different:
                faults.append(f"{picture}: {len(different)} pixels, the first at {different[0]}")
            if len({bytes(row) for row in ours}) < 20:
                faults.append(f"{picture}: next to nothing is drawn")
    print("\n".join(faults) if faults else "both windows: no difference")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
