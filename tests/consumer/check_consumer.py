#!/usr/bin/env python3
"""Installs the build under a prefix, builds the consumer from that prefix alone, and runs it.

usage: check_consumer.py BUILD_FOLDER [COMPILER_FLAGS]
Exit status 1 when something is wrong.
"""
import os
import pathlib
import subprocess
import sys
import tempfile


def run(*command, **options):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options)
    if done.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}: status {done.returncode}\n{done.stdout}")


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    build, flags = sys.argv[1], "".join(sys.argv[2:])
    source = pathlib.Path(__file__).resolve().parent
    with tempfile.TemporaryDirectory() as folder:
        work = pathlib.Path(folder)
        prefix = work / "prefix"
        run("cmake", "--install", build, "--prefix", prefix)
        run("cmake", "-G", "Ninja", "-S", source, "-B", work / "build", f"-DCMAKE_PREFIX_PATH={prefix}",
            f"-DCMAKE_CXX_FLAGS={flags}", "-DCMAKE_BUILD_TYPE=Release")
        run("cmake", "--build", work / "build")
        run(work / "build" / "consumer", prefix / "lib/kvxostrace/KvxOSTraceExtRes.dll", work / "profile.ini",
            env={**os.environ, "QT_QPA_PLATFORM": "offscreen"})
    print("the consumer builds from the installed prefix and everything in it holds")


if __name__ == "__main__":
    main()
