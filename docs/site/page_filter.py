"""Doxygen's input filter: converts a Markdown page of the repository to a page of the site.

Headings get anchors; links to files of the repository become links to the pages that show them. A link to a file
without a page is an error.
"""

import os
import re
import sys
from pathlib import Path

import layout


def _target(page, link, shown):
    """Returns the target of a page's link on the site."""
    name, _, anchor = link.partition("#")
    path = Path(os.path.normpath(page.parent / name)) if name else page
    if str(path) in layout.PAGES:
        label = layout.PAGES[str(path)]
        return f"{label}.html" + (f"#{label}-{anchor}" if anchor else "")
    if str(path) in layout.FOLDERS:
        return layout.FOLDERS[str(path)]
    if path.parts[0] == "examples" and (layout.ROOT / path).is_dir():
        return f"examples_page.html#{layout.slug(str(path).replace('/', '-'))}"
    if str(path) in shown:
        return f"{layout.source_label(path)}.html"
    raise SystemExit(f"{page}: no page of the site contains {link}")


def _line(page, line, shown):
    label = layout.PAGES[str(page)]
    if found := re.match(r"(#+) (.*)", line):
        anchor = label if found[1] == "#" else f"{label}-{layout.slug(found[2])}"
        return line if label == "index" and found[1] == "#" else f"{line} {{#{anchor}}}"
    line = re.sub(r"!\[([^\]]*)\]\(([^)]*)\)", lambda image: f"![{image[1]}]({Path(image[2]).name})", line)

    def link(found):
        address = found[2] if re.match(r"https?:", found[2]) else _target(page, found[2], shown)
        text = re.sub(r"`([^`]*)`", r"<code>\1</code>", found[1])
        return f'<a href="{address}">{text}</a>'

    return re.sub(r"(?<!!)\[([^\]]*)\]\(([^)\s]*)\)", link, line)


def filtered(page, text, shown):
    """Returns the text of a page for the site. page: its path from the root; shown: the files that have a page."""
    lines, fenced = [], False
    for line in text.splitlines():
        if line.startswith("```"):
            fenced = not fenced
        is_code = fenced or line.startswith(("    ", "```"))
        lines.append(line if is_code else _line(page, line, shown))
    return "\n".join(lines) + "\n"


if __name__ == "__main__":
    path, listing = Path(sys.argv[2]), Path(sys.argv[1])
    files = set(listing.read_text().split("\n"))
    sys.stdout.write(filtered(path.resolve().relative_to(layout.ROOT), path.read_text(), files))
