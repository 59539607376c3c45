#!/usr/bin/env python3
"""Checks the desktop entry and the MIME types: complete, consistent, and modest in what they claim.

usage: check_desktop.py PACKAGING_FOLDER
Exit status 1 when something is wrong.
"""
import configparser
import pathlib
import re
import sys
import xml.etree.ElementTree as xml

NAMESPACE = "{http://www.freedesktop.org/standards/shared-mime-info}"
REGISTERED = {"Development", "Debugger", "Qt"}
LISTS = ("Categories", "Keywords", "MimeType")
USUAL_WEIGHT = 50

# What the content decides about a file that is called something.log.
KERNEL_LOGS = (
    "[1926099] dispatch to task 1.\n",
    "[1] task 1 CPU utilization 40%.\n[2] dispatch to task 1.\n",
    "[948934]:[1]: Processor 1 start.\n[949512]:[2]: dispatch to task 4.\n",
    "[8] enter to ena_int intno=2.\n",
    "[100]MAIN.dispatch()\n",
    "[100]MAIN.enterSVC(act_tsk,tskid=2.)\n",
)
OTHER_LOGS = (
    "[2026-11-24 23:00:01] server started\n[2026-11-24 23:00:02] worker enters the pool\n",
    "[    0.000000] Linux version 6.1.0\n",
    "dispatch to task 1.\n",
    '{"windows": []}\n',
    "",
)


def read_entry(path):
    parser = configparser.ConfigParser(interpolation=None, strict=True, delimiters=("=",))
    parser.optionxform = str
    parser.read_string(path.read_text(encoding="utf-8"))
    return parser["Desktop Entry"]


def check_entry(entry, folder, types):
    faults = [f"desktop entry: {key} is missing" for key in
              ("Type", "Name", "Comment", "Exec", "Icon", *LISTS) if not entry.get(key)]
    for key in LISTS:
        if not entry.get(key, ";").endswith(";"):
            faults.append(f"desktop entry: {key} does not end in a semicolon")
    if entry.get("Type") != "Application" or entry.get("Terminal") != "false":
        faults.append("desktop entry: not an application with a window")
    if not re.fullmatch(r"kvxostrace %[fFuU]", entry.get("Exec", "")):
        faults.append("desktop entry: Exec does not hand over the file")
    if not (folder / (entry.get("Icon", "") + ".svg")).is_file():
        faults.append("desktop entry: there is no such icon")
    for category in set(entry.get("Categories", "").split(";")) - {""} - REGISTERED:
        faults.append(f"desktop entry: {category} is not a known category")
    for name in set(entry.get("MimeType", "").split(";")) - {""} - set(types):
        faults.append(f"desktop entry: the type {name} is not defined")
    for name in set(types) - set(entry.get("MimeType", "").split(";")):
        faults.append(f"desktop entry: the type {name} is not opened")
    return faults


def matches(match, content):
    """Whether a magic match, and one of those inside it, is met."""
    first, _, last = match.get("offset").partition(":")
    value = match.get("value")
    found = content.find(value, int(first), int(last or first) + len(value))
    inner = match.findall(f"{NAMESPACE}match")
    return found >= 0 and (not inner or any(matches(each, content) for each in inner))


def check_types(types):
    faults = []
    for name, definition in types.items():
        if not definition.findtext(f"{NAMESPACE}comment"):
            faults.append(f"{name}: has no comment")
        for glob in definition.findall(f"{NAMESPACE}glob"):
            own = glob.get("pattern") == "*.kvxw"
            if not own and int(glob.get("weight", USUAL_WEIGHT)) >= USUAL_WEIGHT:
                faults.append(f"{name}: claims every {glob.get('pattern')}")
    log = types["text/x-itron-kernel-log"].findall(f"{NAMESPACE}magic/{NAMESPACE}match")
    for content in KERNEL_LOGS:
        if not any(matches(match, content) for match in log):
            faults.append(f"a kernel log is not known: {content!r}")
    for content in OTHER_LOGS:
        if any(matches(match, content) for match in log):
            faults.append(f"taken for a kernel log: {content!r}")
    return faults


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    folder = pathlib.Path(sys.argv[1])
    root = xml.parse(folder / "kvxostrace.xml").getroot()
    types = {each.get("type"): each for each in root.findall(f"{NAMESPACE}mime-type")}
    if xml.parse(folder / "kvxostrace.svg").getroot().tag != "{http://www.w3.org/2000/svg}svg":
        sys.exit("the icon is no picture")
    faults = check_entry(read_entry(folder / "kvxostrace.desktop"), folder, types) + check_types(types)
    print("\n".join(faults) if faults else "desktop: entry, types and icon are right")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
