#!/usr/bin/env python3
"""Checks that what Windows' command line cannot read is answered by one clear message each.

usage: check_messages.py PROGRAM   (PROGRAM is started by wine)
"""
import pathlib
import subprocess
import sys
import tempfile

# What the content begins with, and what the message must name.
FILES = {"linux.dat": (b"\x17\x08\x44tracing" + bytes(100), ("linux.dat", "trace-cmd")),
         "log.zst": (b"\x28\xb5\x2f\xfd" + bytes(100), ("log.zst", "zstd", "decompress it first")),
         "ctf/metadata": (b"/* CTF 1.8 */\ntrace { major = 1; minor = 8; byte_order = le; };\n"
                          b"stream { event.header := struct { integer { size = 8; } id; }; };\n"
                          b"event { name = \"a\"; id = 1; };\n", ("ctf", "kvxostrace-ctf"))}


def check(program, name, content, words, folder):
    path = pathlib.Path(folder, name)
    path.parent.mkdir(exist_ok=True)
    path.write_bytes(content)
    if path.parent != pathlib.Path(folder):  # a folder with something to read
        path.with_name("stream").write_bytes(b"\x01")
        name = path.parent.name
    done = subprocess.run(["wine", program, "info", name], cwd=folder, capture_output=True, text=True, timeout=120)
    said = done.stderr.strip()
    right = done.returncode == 3 and not done.stdout and len(said.splitlines()) == 1
    return [] if right and all(word in said for word in words) else [f"{name}: {done.returncode}: {said!r}"]


def main():
    program = str(pathlib.Path(sys.argv[1]).resolve())
    faults = []
    with tempfile.TemporaryDirectory() as folder:
        for name, (content, words) in FILES.items():
            faults += check(program, name, content, words, folder)
    print("\n".join(faults) if faults else "messages: one each")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
