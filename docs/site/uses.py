"""Finds the uses of the public headers' declarations in the guide and the examples.

In C++ the type of a call's receiver is looked up among the file's declarations. A name of several interfaces counts
only if the receiver's type is known. In Python a call counts by its name, if only one interface has the name.
"""

import json
import re
import sys
from collections import defaultdict

import layout

sys.path.insert(0, str(layout.ROOT / "bindings/python"))
import idl  # noqa: E402
import naming  # noqa: E402

CPP_DECLARATIONS = (
    r"\b(IGL\w+)\s*[*&]+\s*(?:const\s+)?(\w+)",  # IGLViewer* viewer, IGLContext& aContext
    r"\bGLPtr<(IGL\w+)>&?\s+(\w+)",
    r"\b(\w+)\s*=\s*GLCreate<(IGL\w+)>",
)


def _receivers(text):
    """Returns the type of each name that a C++ file declares; None for a name with several types."""
    types = {}
    for pattern in CPP_DECLARATIONS:
        for first, second in re.findall(pattern, text):
            kind, name = (second, first) if second.startswith("IGL") else (first, second)
            types[name] = kind if types.get(name, kind) == kind else None
    return types


def _python_lines(path, text):
    """Returns the lines of a Python file or of a notebook's cells. A notebook's lines all count as its first."""
    if path.suffix != ".ipynb":
        return list(enumerate(text.splitlines(), 1))
    cells = json.loads(text)["cells"]
    return [(1, line) for cell in cells if cell["cell_type"] == "code" for line in cell["source"]]


def _code_of(page):
    """Returns the lines of a page; lines outside C++ blocks are empty."""
    lines, is_code = [], False
    for line in (layout.ROOT / page).read_text().splitlines():
        is_code = line == "```cpp" or (is_code and line != "```")
        lines.append(line if is_code and line != "```cpp" else "")
    return "\n".join(lines)


class Uses:
    """Finds the places of all uses: (interface, operation) or (None, name of a class or function): [(file, line)]."""

    def __init__(self, names):
        """names: the classes and functions of the headers, without the interfaces' operations."""
        library = idl.read_library(layout.ROOT / "src/component/GLLib.idl")
        self._owners = defaultdict(set)  # operation: its interfaces
        self._snake = defaultdict(set)
        self._bases = {}
        for name, interface in library.interfaces.items():
            for operation in interface.operations:
                self._owners[operation.name].add(name)
                self._snake[naming.snake_case(operation.name)].add((name, operation.name))
        for _, faces in library.classes.values():  # a pointer to IGLCanvas3 is a pointer to the same object
            for face in faces:
                self._bases[face] = set(faces)
        self._names = names
        self.places = defaultdict(list)
        self._read_cpp(layout.GUIDE, _code_of(layout.GUIDE))
        for path in layout.example_sources():
            text = (layout.ROOT / path).read_text()
            if path.suffix in (".py", ".ipynb"):
                self._read_python(path, text)
            else:
                self._read_cpp(path, text)

    def _add(self, key, path, line):
        if all(file != path for file, _ in self.places[key]):
            self.places[key].append((path, line))

    def _read_cpp(self, path, text):
        types = _receivers(text)
        header = (layout.ROOT / path).with_suffix(".h")
        if path.suffix == ".cpp" and header.exists():
            types = {**_receivers(header.read_text()), **types}
        for number, line in enumerate(text.splitlines(), 1):
            code = line.split("//")[0]
            for receiver, name in re.findall(r"(\w+)(?:\.Get\(\))?(?:->|\.)(\w+)\(", code):
                owners = self._owners.get(name, set())
                kind = types.get(receiver)
                if kind in self._bases:
                    owners = owners & self._bases[kind]
                if len(owners) == 1:
                    self._add((next(iter(owners)), name), path, number)
            for name in re.findall(r"HRESULT (\w+)\(.*\boverride\b", code):  # operations that a host implements
                owners = self._owners.get(name, set())
                if len(owners) == 1 or name == "Draw":
                    self._add(("IGLPainter" if name == "Draw" else next(iter(owners)), name), path, number)
            for name in set(re.findall(r"\bGL[A-Z]\w+", code)) & self._names:
                self._add((None, name), path, number)

    def _read_python(self, path, text):
        for number, line in _python_lines(path, text):
            for name in re.findall(r"\.(\w+)\(", line.split("#")[0]):
                owners = self._snake.get(name, set())
                if len(owners) == 1:
                    self._add(next(iter(owners)), path, number)
