#!/usr/bin/env python3
"""Checks what the built modules and programs load: the system's libraries and each other.

usage: check_dependencies.py OBJDUMP FOLDER [FILE...]   (without files: all that there are to be)
"""
import pathlib
import re
import subprocess
import sys

SYSTEM = {"kernel32", "msvcrt", "user32", "gdi32", "comdlg32", "comctl32", "shell32", "ole32", "oleaut32",
          "advapi32", "version", "shcore", "imm32", "winmm", "dwmapi", "uxtheme"}
OURS = {"KvxOSTrace.dll": {"KvxPlatform.dll"}, "KvxOSTraceExtRes.dll": set(), "KvxPlatform.dll": set(),
        "kvxostrace.exe": {"KvxPlatform.dll"}, "kvxview.exe": {"KvxPlatform.dll"}}


def main():
    objdump, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    faults = []
    for name in sys.argv[3:] or OURS:
        ours = OURS[name]
        text = subprocess.run([objdump, "-p", folder / name], check=True, capture_output=True, text=True).stdout
        loaded = re.findall(r"DLL Name: (\S+)", text)
        if not loaded:
            faults.append(f"{name}: loads nothing at all")
        for each in loaded:
            if each not in ours and each.lower().removesuffix(".dll") not in SYSTEM:
                faults.append(f"{name}: needs {each}")
    print("\n".join(faults) if faults else "dependencies: the system's libraries only")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
