#!/usr/bin/env python3
"""Checks that every path which the documents name exists.

usage: check_documents.py ROOT
A path is a text in backquotes or a link target with a slash in it that begins with a folder or a file
of the project. Exit status 1 when one is missing.
"""
import pathlib
import re
import sys

PATTERN = re.compile(r"`([\w.\-/<>*]+/[\w.\-/<>*]*)`|\]\(([^)#:]+)\)")
TOP_FOLDERS = ("src/", "tests/", "docs/", "bench/", "fuzz/", "scripts/", "cmake/", ".ci/")


def missing_paths(root):
    missing = []
    documents = sorted(root.glob("*.md")) + sorted((root / "docs").glob("*.md"))
    if not documents:
        return ["no documents found"]
    for document in documents:
        for match in PATTERN.finditer(document.read_text(encoding="utf-8")):
            name = match.group(1) or match.group(2)
            base = root if match.group(1) else document.parent
            if match.group(1) and not name.startswith(TOP_FOLDERS):
                continue
            found = list(base.glob(re.sub(r"<\w+>", "*", name.rstrip("/"))))
            if not found:
                missing.append(f"{document.relative_to(root)}: {name} does not exist")
    return missing


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    missing = missing_paths(pathlib.Path(sys.argv[1]))
    print("\n".join(missing) if missing else "documents: every path exists")
    sys.exit(1 if missing else 0)


if __name__ == "__main__":
    main()
