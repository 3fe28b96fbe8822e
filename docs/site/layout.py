"""Lists the files of the site and the page of each file."""

import re
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]

# The Markdown pages in the order of the navigation; README.md is the start page.
PAGES = {
    "README.md": "index",
    "docs/host-guide.md": "host_guide",
    "docs/gallery.md": "gallery",
    "docs/reference.md": "reference",
    "bindings/python/README.md": "python",
    "docs/decisions.md": "decisions",
    "docs/architecture.md": "architecture",
    "docs/platform.md": "platform",
    "docs/performance.md": "performance",
    "docs/testing.md": "testing",
    "SECURITY.md": "security",
}

GUIDE = Path("docs/host-guide.md")

# Folders that pages link to, and the page of their contents.
FOLDERS = {
    "examples": "examples_page.html",
    "bindings/python": "python.html",
    "bindings/python/examples": "examples_page.html#bindings-python-examples",
    "src/component/include/gllib": "files.html",
}

HEADERS = ("src/component/include/gllib", "src/platform/include/gllib")
EXAMPLE_SUFFIXES = {".cpp", ".h", ".py", ".ipynb"}


def example_sources():
    """Returns the sources of all examples, relative to the root: small ones first, then folder by folder."""
    found = [
        path.relative_to(ROOT)
        for folder in ("examples", "bindings/python/examples")
        for path in (ROOT / folder).rglob("*")
        if path.suffix in EXAMPLE_SUFFIXES and not any(part.startswith((".", "__")) for part in path.parts)
    ]
    return sorted(found, key=lambda path: (path.parts[0] != "examples", str(path.parent), str(path)))


def slug(heading):
    """Returns the anchor of a heading, as repository hosts form it."""
    return re.sub(r"[^\w\- ]", "", heading.strip().lower()).replace(" ", "-")


def source_title(path):
    """Returns the short name of a source file for navigation and links."""
    name = str(path).removeprefix("examples/")
    return re.sub("^bindings/python/examples/", "Python: ", name)


def source_label(path):
    """Returns the label of the page that shows a source file."""
    return "source_" + re.sub(r"\W", "_", str(path))
