#!/usr/bin/env python3
"""Checks that the command line built for Windows answers what the native one answers, to the byte.

usage: compare_command_line.py NATIVE WINDOWS RECORDING...
WINDOWS is started by wine. Each command reads each recording through the same relative name.
"""
import pathlib
import re
import subprocess
import sys
import tempfile

# FILE: the recording once more.
COMMANDS = [["info"], ["events"], ["analyze"], ["analyze", "--table", "jobs"], ["check"],
            ["explain", "--task", "1", "--worst", "3"], ["compare", "FILE"], ["export", "--to", "csv"],
            ["export", "--to", "perfetto"], ["export", "--to", "btf"], ["export", "--to", "itron"]]


def run(program, arguments, folder):
    done = subprocess.run(program + arguments, cwd=folder, capture_output=True, timeout=300)
    # A console writes both line ends; what goes to a file or a pipe must not. BTF tells when it was written.
    return done.returncode, re.sub(rb"#creationDate .*", b"", done.stdout), done.stderr.replace(b"\r\n", b"\n")


def main():
    native, windows = [str(pathlib.Path(sys.argv[1]).resolve())], ["wine", str(pathlib.Path(sys.argv[2]).resolve())]
    recordings = [pathlib.Path(each).resolve() for each in sys.argv[3:]]
    if not recordings:
        sys.exit(__doc__)
    faults = []
    for recording in recordings:
        for command in COMMANDS:
            arguments = [command[0], recording.name,
                         *(recording.name if each == "FILE" else each for each in command[1:])]
            ours, theirs = (run(program, arguments, recording.parent) for program in (native, windows))
            if ours != theirs:
                faults.append(f"{recording}: {' '.join(command)}: {ours[0]} and {theirs[0]}, "
                              f"{len(ours[1])} and {len(theirs[1])} bytes; {theirs[2][:200]!r}")
    for command in (["formats"], ["--version"]):
        if run(native, command, ".") != run(windows, command, "."):
            faults.append(" ".join(command))
    with tempfile.TemporaryDirectory() as folder:
        for name, program in (("native.log", native), ("windows.log", windows)):
            run(program, ["generate", "--events", "20000", "-o", name], folder)
        written = [(pathlib.Path(folder) / name) for name in ("native.log", "windows.log")]
        if not all(each.exists() for each in written) or len({each.read_bytes() for each in written}) != 1:
            faults.append("generate")
    print("\n".join(faults) if faults else f"{len(recordings)} recordings: no difference")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
