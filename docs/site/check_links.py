"""Checks that each relative link in a folder of HTML pages leads to an existing file and anchor.

usage: check_links.py FOLDER      prints each broken link; exit status 1 if there are any
"""

import re
import sys
import urllib.parse
from html.parser import HTMLParser
from pathlib import Path


class Page(HTMLParser):
    """Collects the links and the anchors of one page."""

    def __init__(self, path):
        super().__init__()
        self.links, self.anchors = set(), set()
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name in ("href", "src") and value:
                self.links.add(value)
            if name == "id" or (tag == "a" and name == "name"):
                self.anchors.add(value)


class Script:
    """Collects the links of one script: strings that name a page."""

    def __init__(self, path):
        text = path.read_text(encoding="utf-8")
        self.links, self.anchors = set(re.findall(r"""["']((?:\.\./)?[\w-]+\.html(?:#[\w-]+)?)["']""", text)), set()


def dead_links(folder):
    """Returns (page, link) of each broken link, and the number of checked links."""
    pages = {path: Page(path) for path in sorted(folder.rglob("*.html"))}
    for path in sorted(folder.rglob("*.js")):  # scripts contain the navigation and the search
        if not path.name.startswith("navtreeindex"):  # pages use these to find themselves; readers do not follow them
            pages[path] = Script(path)
    dead, checked = [], 0
    for path, page in pages.items():
        for link in sorted(page.links):
            parts = urllib.parse.urlsplit(link)
            if parts.scheme in ("http", "https", "mailto", "javascript"):
                continue
            checked += 1
            target = (path.parent / urllib.parse.unquote(parts.path)).resolve() if parts.path else path
            anchor = urllib.parse.unquote(parts.fragment)
            if folder not in target.parents or not target.is_file() or (
                anchor and target in pages and anchor not in pages[target].anchors
            ):
                dead.append((path.name, link))
    return dead, checked


def main(folder):
    dead, checked = dead_links(Path(folder).resolve())
    for page, link in dead:
        print(f"{page}: dead link {link}", file=sys.stderr)
    if checked == 0:
        print(f"{folder}: no links", file=sys.stderr)
    return 1 if dead or checked == 0 else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
