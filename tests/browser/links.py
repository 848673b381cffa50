"""Finds what a page points to and whether it is there, as a browser reading files from disk would."""

import html.parser
import pathlib
import re
import urllib.parse

ADDRESSES = {"href", "src", "background", "action"}
# Addresses that are no file: outside, built by script, or "*", what a mail link holds until it is pointed at.
NO_FILE = re.compile(r"[a-z][a-z+.-]*:|//|\*$|$", re.IGNORECASE)
SWAPPED = re.compile(r"\.src='([^']*)'")
WRITTEN_OUT = re.compile(r"<%.*?%>", re.DOTALL)


class _Page(html.parser.HTMLParser):
    def __init__(self):
        super().__init__()
        self.base = ""
        self.found = []
        self.anchors = set()

    def handle_starttag(self, tag, attrs):
        values = {name: value or "" for name, value in attrs}
        if tag == "base":
            self.base = values.get("href", "")
            return
        for name, value in values.items():
            if name in ADDRESSES:
                self.found.append(value)
            elif name in ("id", "name"):
                self.anchors.add(value)
            elif name.startswith("on"):
                self.found += SWAPPED.findall(value)
        if tag == "option":
            self.found.append(values.get("value", ""))
        if tag == "meta" and values.get("http-equiv", "").lower() == "refresh":
            self.found.append(values["content"].partition("URL=")[2])


def read_page(path):
    """The addresses of a page as written, its base, and the names inside it that a "#" may go to."""
    page = _Page()
    page.feed(WRITTEN_OUT.sub("", path.read_text("cp1252")))
    return page


def targets(path):
    """The files that a page points to: address as written, path, name behind "#"."""
    page = read_page(path)
    for address in page.found:
        if NO_FILE.match(address):
            continue
        parts = urllib.parse.urlsplit(address)
        place = urllib.parse.unquote(parts.path, encoding="cp1252")
        folder = path.parent / page.base
        target = folder / place if place else path
        if target.is_dir():
            target = target / "index.htm"  # what a server shows of a folder
        yield address, pathlib.Path(target).resolve(), parts.fragment


def missing_targets(path):
    """Every address of a page that leads nowhere; names of files are taken as written."""
    missing = []
    for address, target, fragment in targets(path):
        if not target.is_file():
            missing.append(address)
        elif fragment and fragment not in read_page(target).anchors:
            missing.append(address)
    return missing
