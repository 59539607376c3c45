#!/usr/bin/env python3
"""Checks that the component exports just what it promises.

usage: check_exports.py MODULE           check the built module (with nm)
       check_exports.py --self-test MODULE   prove that a missing and a surplus name are found
Exit status 1 when a fault is found.
"""
import re
import subprocess
import sys

ENTRY_POINTS = ["LibraryRegister2", "QueryInterface2", "CreateInstance", "DestroyInstance",
                "GetComponentVersion"]
CLASSES = ["CStopDlgBase", "CStopDlgCore", "CStopOnlyDlgCore", "CQView", "CCoreView", "CWinMgr", "WINRECT", "CSizerBar"]
HELPERS = ["AfxGetProfileString", "AfxGetProfileInt", "AfxGetProfileStruct",
           "AfxWriteProfileString", "AfxWriteProfileInt", "AfxWriteProfileStruct",
           "AfxIsFileExist", "AfxGetModuleDirectory", "AfxFindSubMenu", "AfxMakeShortString"]


def exported(module):
    """The demangled names of all symbols that the module defines for others."""
    lines = subprocess.run(["nm", "-DC", "--defined-only", module], check=True, text=True,
                           capture_output=True).stdout.splitlines()
    return [line.split(maxsplit=2)[2] for line in lines if line.strip()]


def promised(name):
    name = re.sub(r"^(typeinfo( name)? for|vtable for|non-virtual thunk to|virtual thunk to) ", "", name)
    base = re.split(r"[\[(]", name)[0]
    return base in ENTRY_POINTS or base in HELPERS or base.split("::")[0] in CLASSES


def faults(names):
    found = [f"exported without a promise: {name}" for name in names if not promised(name)]
    bases = {re.split(r"[\[(]", name)[0] for name in names}
    for wanted in ENTRY_POINTS + HELPERS:
        if wanted not in bases:
            found.append(f"not exported: {wanted}")
    for wanted in CLASSES:
        if not any(base.startswith(wanted + "::") for base in bases):
            found.append(f"no member of the class is exported: {wanted}")
    return found


def self_test(names):
    found = []
    if not faults(names + ["COSTrace::Open(IViewSender*)"]):
        found.append("a surplus export was not found")
    if not faults([name for name in names if name != "CreateInstance"]):
        found.append("a missing entry point was not found")
    if not faults([name for name in names if not name.startswith("CWinMgr::")]):
        found.append("a missing class was not found")
    return found


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    names = exported(sys.argv[-1])
    found = self_test(names) if sys.argv[1] == "--self-test" else faults(names)
    print("\n".join(found) if found else f"exports: {len(names)} names, no fault")
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
