"""Doxygen's input filter for the public headers: adds to each declaration the examples that use it.

Line numbers do not change: the filter adds text at the end of the comment's last line.
"""

import re
import sys
from pathlib import Path

import layout

SHOWN = 8  # examples per declaration; small ones come first

OPERATION = re.compile(r"\s+virtual HRESULT (\w+)\(")
FREE = re.compile(r"(?:(?:class|struct|enum class) |.*?\b)(GL[A-Z]\w+)(?:\(| \{| final| :)")


def declared_names():
    """Returns the classes and free functions of the public headers, without interfaces and macros."""
    names = set()
    for folder in layout.HEADERS:
        for header in sorted((layout.ROOT / folder).glob("*.h")):
            lines = header.read_text().splitlines()
            names |= {name for _, (interface, name) in _declarations(lines) if interface is None}
    return names


def _declarations(lines):
    """Returns (index of the comment's last line, (interface or None, name)) of each documented declaration."""
    interface = None
    for index, line in enumerate(lines):
        if found := re.match(r"struct (IGL\w+) : ", line):
            interface = found[1]
        elif line.startswith("};"):
            interface = None
        if index == 0 or not lines[index - 1].lstrip().startswith("/// "):
            continue
        if interface and (found := OPERATION.match(line)):
            yield index - 1, (interface, found[1])
        elif not line.startswith((" ", "#", "/")):
            if line.startswith("template"):
                line = lines[index + 1]
            if found := FREE.match(line):
                yield index - 1, (None, found[1])


def filtered(text, places):
    """Returns the text of a header with the places of uses added. places: as in Uses."""
    lines = text.splitlines()
    for index, key in _declarations(lines):
        if found := places.get("::".join(filter(None, key))):
            lines[index] += " @usedby{" + r"\, ".join(text.replace(",", r"\,") for text in found) + "}"
    return "\n".join(lines) + "\n"


def link(path, line):
    """Returns a link to a line of an example or to a section of the guide, for a Doxygen comment."""
    if path == layout.GUIDE:
        before = (layout.ROOT / path).read_text().splitlines()[:line]
        heading = next(text[3:] for text in reversed(before) if text.startswith("## "))
        return f'<a href="host_guide.html#host_guide-{layout.slug(heading)}">Guide: {heading}</a>'
    return f'<a href="{layout.source_label(path)}.html#l{line:05}">{layout.source_title(path)}</a>'


if __name__ == "__main__":
    places = {}
    for entry in Path(sys.argv[1]).read_text().splitlines():
        key, *links = entry.split("\t")
        places[key] = links
    sys.stdout.write(filtered(Path(sys.argv[2]).read_text(), places))
