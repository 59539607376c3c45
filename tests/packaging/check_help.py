#!/usr/bin/env python3
"""Checks the built help pages: every link resolves, every page can be reached, nothing is fetched.

usage: check_help.py HELP_FOLDER
       check_help.py --self-test
Exit status 1 when something is wrong.
"""
import html.parser
import pathlib
import sys
import tempfile

EMPTY = {"meta", "link", "br", "img", "hr"}
FETCHING = {"script", "iframe", "object", "embed", "form"}


class Page(html.parser.HTMLParser):
    def __init__(self, text):
        super().__init__()
        self.links, self.ids, self.faults, self.open = [], set(), [], []
        self.title = False
        self.feed(text)
        self.faults += [f"<{tag}> is not closed" for tag in self.open]

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        if tag in FETCHING:
            self.faults.append(f"<{tag}> has no place in a help page")
        self.title |= tag == "title"
        self.ids.add(values.get("id"))
        self.links += [values[key] for key in ("href", "src") if key in values]
        if tag not in EMPTY:
            self.open.append(tag)

    def handle_endtag(self, tag):
        if not self.open or self.open[-1] != tag:
            self.faults.append(f"</{tag}> closes nothing that is open")
        elif self.open:
            self.open.pop()


def link_faults(link, pages, folder, name):
    if ":" in link:
        return [f"{name}: {link} leaves the help book"]
    target, _, anchor = link.partition("#")
    if not (folder / (target or name)).is_file():
        return [f"{name}: {link} leads nowhere"]
    if anchor and anchor not in pages[target or name].ids:
        return [f"{name}: {link} has no such place"]
    return []


def check(folder):
    pages = {path.name: Page(path.read_text(encoding="utf-8")) for path in sorted(folder.glob("*.html"))}
    faults = [] if "index.html" in pages else ["there is no index"]
    for name, page in pages.items():
        faults += [f"{name}: {fault}" for fault in page.faults]
        if not page.title:
            faults.append(f"{name}: has no title")
        if "help.css" not in page.links:
            faults.append(f"{name}: has no style")
        for link in page.links:
            faults += link_faults(link, pages, folder, name)
        for other in set(pages) - {link.partition("#")[0] for link in page.links}:
            faults.append(f"{name}: {other} cannot be reached from here")
    for style in folder.glob("*.css"):
        if "url(" in style.read_text(encoding="utf-8") or "@import" in style.read_text(encoding="utf-8"):
            faults.append(f"{style.name}: fetches something")
    return faults


def self_test():
    good = ('<title>x</title><link rel="stylesheet" href="help.css"><h2 id="here">x</h2>'
            '<a href="index.html#here">x</a>')
    for text, wrong in ((good, False), (good + '<a href="gone.html">x</a>', True),
                        (good + '<a href="#gone">x</a>', True), (good + "<b>", True),
                        (good + '<a href="https://x">x</a>', True), (good + "<script></script>", True),
                        (good.replace("<title>x</title>", ""), True)):
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            (folder / "index.html").write_text(text, encoding="utf-8")
            (folder / "help.css").write_text("body { margin: 0 }", encoding="utf-8")
            assert bool(check(folder)) == wrong, text


def main():
    if sys.argv[1:] == ["--self-test"]:
        self_test()
        print("help: what is wrong in a page is found")
        return
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    faults = check(pathlib.Path(sys.argv[1]))
    print("\n".join(faults) if faults else "help: every page is whole and every link resolves")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
