#!/usr/bin/env python3
"""Checks from the include lines that every folder under src/ includes only what it may.

usage: check_layers.py SRC           check the tree
       check_layers.py --self-test   prove that a seeded fault of each kind is found
Exit status 1 when a fault is found (each printed as file:line: reason).
"""
import pathlib
import re
import sys
import tempfile

BASE = ["platform", "host", "utils"]
VIEW = BASE + ["trace", "display", "framework", "toolbar"]
MODELS = ["display/model", "analyze/model", "traceview/model"]
WORKBENCH = ["platform", "host", "hosting", "workbench"]
CORE = ["trace"] + MODELS

# folder -> folders it may include (besides itself); the longest matching folder counts.
ALLOWED = {
    "platform": [],
    "platform/os": [],
    "platform/none": ["platform"],
    "platform/qt": ["platform"],
    "platform/win32": ["platform"],
    "host": ["platform"],
    "utils": ["platform", "host"],
    "hosting": ["platform", "host"],
    "trace": ["platform", "host"] + MODELS,
    "trace/dialogs": BASE + ["trace"],
    "display/model": ["platform", "host", "trace"],
    "traceview/model": ["platform", "host", "trace"] + MODELS,
    "analyze/model": ["platform", "host", "trace"] + MODELS,
    "display": BASE + ["trace"],
    "framework": BASE,
    "toolbar": BASE + ["framework"],
    "traceview": VIEW + ["analyze/model"],
    "analyze": VIEW + ["traceview/model"],
    "sink": VIEW + ["traceview", "analyze"],
    "component": VIEW + ["traceview", "analyze", "sink"],
    "viewer": BASE + ["hosting", "framework", "trace/dialogs", "workbench/service", "workbench/formats"],
    "resources": ["platform", "host"],
    "workbench/service": ["platform", "host"],
    "workbench/kernels": ["platform", "host", "workbench/service"],
    # A program of its own: what it shares with the readers is the form of its messages.
    "workbench/ctf_reader": ["platform", "workbench/formats", "workbench/kernels"],
    "workbench/formats": ["platform", "host", "workbench/service", "workbench/kernels"],
    "workbench/timing": ["platform", "host", "workbench/service", "analyze/model"],
    "workbench/exports": ["platform", "host", "workbench/service"],
    "workbench/simulation": ["platform"],
    "workbench/target": ["host", "platform", "workbench/service", "workbench/simulation"],
    "workbench/cli": WORKBENCH + CORE + ["resources"],
    "workbench/picture": WORKBENCH + VIEW + CORE + ["traceview", "analyze"],
    "workbench/desktop": WORKBENCH,
    "workbench/desktop/timing": WORKBENCH + ["analyze/model"],
    "workbench/debuglib": ["platform", "host"],
    "workbench": WORKBENCH,
}
# What nobody but these may include, although a parent folder is allowed.
PRIVATE = {each: {each} for each in ("platform/qt", "platform/win32")}
# Where the system may be named: which one it is, is chosen by the build and by these.
MAY_NAME_SYSTEM = ("platform",)
SYSTEM = re.compile(r"^\s*#\s*(?:if|ifdef|ifndef|elif)\b.*\b(?:_WIN32|_WIN64|WIN32|__MINGW\w+|__linux__|__linux|__unix__|__APPLE__)\b")
SYSTEM_HEADERS = re.compile(r"(?:windows|io|direct|unistd|dlfcn|spawn|fcntl|pwd|sys/\w+)\.h$")
# A program that exists for one system.
ONE_SYSTEM = ("platform/os", "platform/win32", "workbench/ctf_reader", "workbench/desktop")
MAY_SEE_TOOLKIT = ("platform/qt", "workbench/desktop", "workbench/picture", "workbench")
NO_TOOLKIT = ("workbench/service", "workbench/kernels", "workbench/formats", "workbench/exports",
              "workbench/simulation", "workbench/timing", "workbench/target", "workbench/cli")

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def within(path, folder):
    return path == folder or path.startswith(folder + "/")


def owner(folder):
    """The longest entry of the table that holds the folder."""
    found = [name for name in ALLOWED if within(folder, name)]
    return max(found, key=len) if found else None


def check_include(mine, target):
    """The reason why mine may not include target, or None."""
    if re.match(r"Q[A-Z]|Qt", target):
        if any(within(mine, f) for f in NO_TOOLKIT) or not any(within(mine, f) for f in MAY_SEE_TOOLKIT):
            return f"{mine} may not see the toolkit ({target})"
        return None
    if "/" not in target:
        return None
    theirs = owner(target.rsplit("/", 1)[0])
    if theirs is None or theirs == mine:
        return None
    if theirs in PRIVATE and mine not in PRIVATE[theirs]:
        return f"{mine} may not include {theirs} ({target})"
    if any(within(theirs, allowed) for allowed in ALLOWED[mine]):
        return None
    if within(theirs, mine):
        return None  # a folder may use its own sub-folders
    return f"{mine} may not include {theirs} ({target})"


def check_system(folder, line, include):
    """The reason why a line above the platform may not name a system, or None."""
    if SYSTEM.match(line) and not any(within(folder, f) for f in MAY_NAME_SYSTEM):
        return f"{folder} may not depend on the system"
    if include and SYSTEM_HEADERS.match(include.group(2)) and not any(within(folder, f) for f in ONE_SYSTEM):
        return f"{folder} may not use the system itself ({include.group(2)}): platform/os does"
    return None


def check(src):
    faults = []
    files = sorted(p for p in src.rglob("*") if p.suffix in (".h", ".cpp"))
    if not files:
        return [f"{src}: no source files found"]
    for path in files:
        folder = path.parent.relative_to(src).as_posix()
        mine = owner(folder)
        if mine is None:
            faults.append(f"{path}: folder {folder} is not in the table of layers")
            continue
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            match = INCLUDE.match(line)
            reason = check_include(mine, match.group(2)) if match else None
            reason = reason or check_system(folder, line, match)
            if reason:
                faults.append(f"{path}:{number}: {reason}")
    return faults


def self_test():
    seeds = {
        "platform/Window.h": "#include <QWidget>",
        "host/Host.h": '#include "trace/OSTrace.h"',
        "trace/OSTrace.cpp": '#include "traceview/TraceView.h"',
        "traceview/View.cpp": '#include "analyze/AnalyzeView.h"',
        "workbench/desktop/Main.cpp": '#include "sink/OSTraceDataCommandSink.h"',
        "workbench/formats/itron/Log.cpp": "#include <QString>",
        "framework/Frame.cpp": '#include "platform/qt/Convert.h"',
        "workbench/service/Clock.cpp": "#ifdef _WIN32",
        "workbench/formats/text/File.cpp": "#include <sys/mman.h>",
        "elsewhere/Stray.cpp": "",
    }
    missed = []
    for name, line in seeds.items():
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / name
            path.parent.mkdir(parents=True)
            path.write_text(line + "\n", encoding="utf-8")
            if not check(pathlib.Path(folder)):
                missed.append(f"seeded fault not found: {name}: {line}")
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "traceview/View.cpp"
        path.parent.mkdir(parents=True)
        path.write_text('#include <vector>\n#include "trace/OSTrace.h"\n', encoding="utf-8")
        missed += [f"false alarm: {fault}" for fault in check(pathlib.Path(folder))]
    return missed


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    faults = self_test() if sys.argv[1] == "--self-test" else check(pathlib.Path(sys.argv[1]))
    print("\n".join(faults) if faults else "layers: no fault")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
