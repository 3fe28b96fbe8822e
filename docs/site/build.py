"""Builds the documentation site by Doxygen, and checks its links. A warning of Doxygen is an error.

usage: build.py DOXYGEN FOLDER      FOLDER holds the configured Doxyfile; the site is written to FOLDER/html
"""

import json
import re
import shutil
import subprocess
import sys
from pathlib import Path

import check_links
import header_filter
import layout
import uses


def linked_files():
    """Returns the linked files of the repository other than pages, pictures and examples."""
    found = {}
    for page in layout.PAGES:
        text = re.sub(r"^```.*?^```", "", (layout.ROOT / page).read_text(), flags=re.DOTALL | re.MULTILINE)
        for name in re.findall(r"(?<!!)\[[^\]]*\]\(([^)#\s:]+)", text):
            path = ((layout.ROOT / page).parent / name).resolve()
            if path.is_file():
                path = path.relative_to(layout.ROOT)
                if str(path) not in layout.PAGES:
                    found[path] = None
    return [path for path in found if path not in layout.example_sources()]


def summary(path):
    """Returns the first sentence of a source's first comment or docstring, without the file name; may be empty."""
    text = (layout.ROOT / path).read_text()
    if path.suffix == ".ipynb":
        return "a notebook"
    found = re.match(r'"""(.*?)(?:\n\n|""")', text, re.DOTALL) or re.match(r"((?:// ?[^\n]*\n)+)", text)
    if not found:
        return ""
    words = " ".join(re.sub(r"^//+ ?", "", found[1], flags=re.MULTILINE).split())
    words = re.sub(r"^@file\s*", "", words)
    sentence = re.split(r"(?<=[.:])\s", re.sub(r"^[\w/.-]+: ", "", words))[0].rstrip(".:")
    return re.sub(r"([<>#@\\&%\"])", r"\\\1", sentence)


def shown_file(path, folder):
    """Returns the file that a source's page includes. Notebooks and manual pages are converted to plain text."""
    if path.suffix == ".ipynb":
        cells = json.loads((layout.ROOT / path).read_text())["cells"]
        shown = folder / "shown" / f"{path.name}.py"
        parts = [
            "".join(cell["source"] if cell["cell_type"] == "code" else ["# " + line for line in cell["source"]])
            for cell in cells
        ]
        shown.write_text("\n\n".join(parts) + "\n")
        return shown
    if path.suffix == ".1" and shutil.which("groff"):
        shown = folder / "shown" / f"{path.name}.txt"
        shown.write_bytes(
            subprocess.run(
                ["groff", "-man", "-Tutf8", "-P-cbou", str(layout.ROOT / path)], check=True, stdout=subprocess.PIPE
            ).stdout
        )
        return shown
    return layout.ROOT / path


def source_page(path, folder):
    command = "include{lineno}" if path.suffix in layout.EXAMPLE_SUFFIXES else "verbinclude"
    return f"/** @page {layout.source_label(path)} {layout.source_title(path)}\n@{command} {shown_file(path, folder)}\n*/\n"


def examples_page(others):
    """Writes the list of all examples, folder by folder."""
    lines = ["/** @page examples_page Examples"]
    lines += ["Each operation in the reference names the examples that use it. The @ref gallery shows what they draw.", ""]
    last = None
    for path in layout.example_sources():
        if path.parent != last:
            last = path.parent
            lines += ["", f"@section {layout.slug(str(last).replace('/', '-'))} {last}", ""]
        text = summary(path)
        lines.append(f"- @subpage {layout.source_label(path)} \"{path.name}\"" + (f": {text}" if text else ""))
    lines += ["", "@section other-files Other files", ""]
    lines += [f'- @subpage {layout.source_label(path)} "{path}"' for path in others]
    return "\n".join(lines) + "\n*/\n"


def repair(html):
    """Repairs links of Doxygen 1.9 to anchors that do not exist.

    Enumerators without a comment have no anchor; their links go to the enumeration, whose anchor is the first part of
    theirs. Links to members of a namespace name the file's page; they go to the namespace's page. Links to a missing
    list of nested classes are removed.
    """
    anchors = {}
    for path in html.glob("*.html"):
        text = path.read_text(encoding="utf-8")
        anchors[path.name] = set(re.findall(r'(?:id|name)="([^"]*)"', text))
        if "nested-classes" not in anchors[path.name] and "#nested-classes" in text:
            text = re.sub(r'<a href="#nested-classes">\w+</a>(?: &#124;\n)?', "", text)
            path.write_text(text, encoding="utf-8")

    def link(found):
        page, anchor = found[1], found[2]
        if anchor in anchors.get(page, ()):
            return found[0]
        if anchor[:33] in anchors.get(page, ()):
            return f"{page}#{anchor[:33]}"
        namespaces = [name for name in anchors if name.startswith("namespace") and anchor in anchors[name]]
        return f"{namespaces[0]}#{anchor}" if namespaces else found[0]

    for path in html.rglob("*.js"):
        if not path.name.startswith("navtreeindex"):
            text = path.read_text(encoding="utf-8")
            path.write_text(re.sub(r"([\w-]+\.html)#(\w+)", link, text), encoding="utf-8")


def main(doxygen, folder):
    folder = Path(folder)
    shutil.rmtree(folder / "html", ignore_errors=True)
    (folder / "shown").mkdir(exist_ok=True)
    sources, others = layout.example_sources(), linked_files()
    (folder / "shown/files").write_text("\n".join(map(str, sources + others)))
    pages = [examples_page(others)] + [source_page(path, folder) for path in sources + others]
    (folder / "shown/pages.dox").write_text("\n".join(pages))

    found = uses.Uses(header_filter.declared_names()).places
    with open(folder / "shown/uses", "w", encoding="utf-8") as out:
        for key, places in found.items():
            links = [header_filter.link(*place) for place in places[: header_filter.SHOWN]]
            out.write("\t".join(["::".join(filter(None, key)), *links]) + "\n")

    pages = [str(layout.ROOT / page) for page in layout.PAGES] + [str(folder / "shown/pages.dox")]
    settings = [f'@INCLUDE = "{folder / "Doxyfile"}"'] + [f'INPUT += "{page}"' for page in pages]
    (folder / "shown/Doxyfile").write_text("\n".join(settings) + "\n")
    result = subprocess.run([doxygen, str(folder / "shown/Doxyfile")], check=False).returncode
    repair(folder / "html")
    return result or check_links.main(folder / "html")


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
