#!/usr/bin/env python3
"""Installs the build under a prefix and as a package, and runs what was installed, without a display.

usage: check_install.py prefix BUILD_FOLDER
       check_install.py package BUILD_FOLDER
Exit status 1 when something is wrong, 77 when the tools that make packages are not there.
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

EXPECTED = (
    "bin/kvxostrace",
    "lib/kvxostrace/libKvxOSTrace.so",
    "lib/kvxostrace/libKvxOSTraceExtRes.so",
    "lib/kvxostrace/libKvxDebugger.so",
    "share/kvxostrace/help/index.html",
    "share/kvxostrace/help/keys.html",
    "share/kvxostrace/help/help.css",
    "share/applications/kvxostrace.desktop",
    "share/icons/hicolor/scalable/apps/kvxostrace.svg",
    "share/mime/packages/kvxostrace.xml",
    "share/man/man1/kvxostrace.1.gz",
    "share/bash-completion/completions/kvxostrace",
    "lib/kvxostrace/kvxostrace-ctf",
    "lib/kvxostrace/libKvxPlatform.so",
    "bin/kvxview",
)
DEVELOPMENT = ("include/kvxostrace/platform/windows/Wnd.h", "include/kvxostrace/host/Component.h",
               "include/kvxostrace/framework/CoreView.h", "lib/cmake/KvxOSTrace/KvxOSTraceConfig.cmake")
NO_PLACE = re.compile(r"(^|/)(test_|bench_)|gtest|gmock|benchmark|\.(a|h|cmake)$")


CTF_METADATA = """/* CTF 1.8 */
typealias integer { size = 8; align = 8; signed = false; } := uint8_t;
trace { major = 1; minor = 8; byte_order = le; };
stream { event.header := struct { uint8_t id; }; };
event { name = tick; id = 7; };
"""


def run(*command, **options):
    done = subprocess.run(command, capture_output=True, **options)
    if done.returncode != 0:
        raise RuntimeError(f"{' '.join(map(str, command))}: status {done.returncode}\n"
                           f"{done.stdout.decode()}{done.stderr.decode()}")
    return done.stdout


def files_below(folder):
    return sorted(str(path.relative_to(folder)) for path in folder.rglob("*") if not path.is_dir())


def check_files(folder):
    files = files_below(folder)
    faults = [f"{name} is not installed" for name in EXPECTED if name not in files]
    return faults + [f"{name} is installed" for name in files if NO_PLACE.search(name)]


def check_program(prefix, work):
    """The installed program, as a user without a display has it."""
    program = prefix / "bin" / "kvxostrace"
    environment = {key: value for key, value in os.environ.items()
                   if key not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")}
    environment.update(HOME=str(work), XDG_CONFIG_HOME=str(work / "config"))
    options = {"env": environment, "cwd": work}

    if not run(program, "--version", **options).startswith(b"kvxostrace "):
        return ["--version does not say what it is"]
    run(program, "generate", "--events", "500", "-o", "run.log", **options)
    picture = run(program, "render", "run.log", "-o", "-", "--size", "640x480", **options)
    faults = [] if picture.startswith(b"\x89PNG") and len(picture) > 2000 else ["render gives no picture"]
    (work / "ctf").mkdir(exist_ok=True)
    (work / "ctf" / "metadata").write_text(CTF_METADATA)
    (work / "ctf" / "channel0").write_bytes(b"\x07\x07")
    if b'"records": 2' not in run(program, "info", "--json", "ctf", **options):
        faults.append("a CTF trace is not read")
    run(program, "run.log", **options)
    if not (work / "run.log.png").is_file():
        faults.append("without a display there is no picture")
    if run(program, "keys", "--html", **options) != (prefix / EXPECTED[5]).read_bytes():
        faults.append("the help page of the keys is not that of this program")
    return faults


def check_prefix(build, work):
    run("cmake", "--install", build, "--prefix", work / "any where", "--component", "runtime")
    faults = check_files(work / "any where") + check_program(work / "any where", work)
    stage = work / "stage"
    run("cmake", "--install", build, "--prefix", "/usr", "--component", "runtime", env={**os.environ, "DESTDIR": str(stage)})
    outside = [name for name in files_below(stage) if not name.startswith("usr/")]
    return faults + [f"{name} lies outside of the prefix" for name in outside] + check_files(stage / "usr")


def check_package(build, work):
    run("cpack", "-G", "DEB", "-B", work / "out", cwd=build)
    package = next((work / "out").glob("kvxostrace_*.deb"))
    headers = next((work / "out").glob("kvxostrace-dev_*.deb"))
    faults = []
    depends = run("dpkg-deb", "-f", package, "Depends").decode()
    for name in ("libqt6widgets6", "libbabeltrace2-0", "libc6", "fonts-liberation", "libqt6svg6"):
        if not re.search(rf"(^|, ){re.escape(name)}( |,|$)", depends):
            faults.append(f"the package does not depend on {name}: {depends}")
    for line in run("dpkg-deb", "-c", package).decode().splitlines():
        if not re.match(r".{10} root/root .* \./usr/", line) or re.match(r".{5}w|.{8}w", line):
            faults.append(f"wrong owner, place or mode: {line}")
    run("dpkg-deb", "-x", package, work / "root")
    prefix = work / "root" / "usr"
    if b".symtab" in run("readelf", "-SW", prefix / EXPECTED[1]):
        faults.append("the modules are not stripped")
    development = run("dpkg-deb", "-c", headers).decode()
    for name in DEVELOPMENT:
        if not re.search(rf" \./usr/{re.escape(name)}\n", development):
            faults.append(f"{name} is not in the package of headers")
    return faults + check_files(prefix) + check_program(prefix, work)


def main():
    checks = {"prefix": check_prefix, "package": check_package}
    if len(sys.argv) != 3 or sys.argv[1] not in checks:
        sys.exit(__doc__)
    if sys.argv[1] == "package" and not all(map(shutil.which, ("cpack", "dpkg-deb", "dpkg-shlibdeps"))):
        print("skipped: the tools that make Debian packages are not installed")
        sys.exit(1 if "KVX_MUST_RUN" in os.environ else 77)
    with tempfile.TemporaryDirectory() as work:
        try:
            faults = checks[sys.argv[1]](pathlib.Path(sys.argv[2]).resolve(), pathlib.Path(work))
        except RuntimeError as failure:
            faults = [str(failure)]
    print("\n".join(faults) if faults else f"{sys.argv[1]}: everything is in its place and runs")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
