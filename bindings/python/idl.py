"""Reads GLLib.idl and the comments of the public headers. Used by generate.py while the package is built."""

import re
from dataclasses import dataclass, field
from pathlib import Path


@dataclass
class Argument:
    name: str
    type: str  # as in the IDL, without array length
    length: int  # of an array with a fixed length; 0 for all others
    is_in: bool
    is_out: bool


@dataclass
class Operation:
    name: str
    arguments: list


@dataclass
class Interface:
    name: str
    identifier: str
    operations: list


@dataclass
class Library:
    structures: dict = field(default_factory=dict)  # name: [(type, name, array lengths)]
    enumerations: dict = field(default_factory=dict)  # name: [(name, value)]
    interfaces: dict = field(default_factory=dict)
    classes: dict = field(default_factory=dict)  # name: (identifier, [interface names])


def _argument(text):
    found = re.fullmatch(r"\[([a-z, ]+)\] ([\w ]+?)\s*(\**)\s*(\w+)(?:\[(\d)\])?", " ".join(text.split()))
    if not found:
        raise ValueError(f"unknown form of an argument: {text!r}")
    directions = found[1].replace(" ", "").split(",")
    stars = found[3] + ("*" if found[5] else "")
    return Argument(found[4], found[2] + stars, int(found[5] or 0), "in" in directions, "out" in directions)


def _operation(kind, name, arguments):
    prefix = {"get": "get_", "put": "put_", "": ""}[kind]
    pieces = [_argument(piece) for piece in re.split(r",(?![^\[]*\])", arguments) if piece.strip()]
    return Operation(prefix + name, pieces)


def read_library(path):
    """Reads the type library's source. An operation or argument with an unknown syntax is an error."""
    text = re.sub(r"//[^\n]*", "", Path(path).read_text())
    library = Library()
    for name, body in re.findall(r"typedef struct (\w+) \{([^}]*)\}", text):
        library.structures[name] = [
            (kind.strip(), member, [int(n) for n in re.findall(r"\d+", lengths)])
            for kind, member, lengths in re.findall(r"([\w ]+?) (\w+)((?:\[\d\])*);", body)
        ]
    for name, body in re.findall(r"typedef enum (\w+) \{([^}]*)\}", text):
        library.enumerations[name] = [(n, int(v)) for n, v in re.findall(r"(\w+) = (\d+)", body)]
    for identifier, name, body in re.findall(
        r"\[object, uuid\(([\w-]+)\)[^\]]*\]\s*interface (\w+) : IUnknown \{([^}]*)\}", text
    ):
        operations = re.findall(r"(?:\[prop(get|put)\] )?HRESULT (\w+)\(([^;]*)\);", body)
        if len(operations) != body.count(";"):
            raise ValueError(f"unknown form of an operation of {name}")
        library.interfaces[name] = Interface(name, identifier, [_operation(*o) for o in operations])
    for identifier, name, body in re.findall(r"\[uuid\(([\w-]+)\)[^\]]*\]\s*coclass (\w+) \{([^}]*)\}", text):
        library.classes[name] = (identifier, re.findall(r"interface (\w+);", body))
    return library


@dataclass
class Comments:
    types: dict = field(default_factory=dict)  # of interfaces, structures and enumerations
    operations: dict = field(default_factory=dict)  # of (interface, operation)
    values: dict = field(default_factory=dict)  # of enumerators and constants: the comment after them
    constants: dict = field(default_factory=dict)  # GLFS_ values, which the IDL does not contain
    flags: set = field(default_factory=set)  # enumerations whose values combine by |


def read_comments(folder):
    """Reads the comments of all headers in a folder."""
    comments = Comments()
    for header in sorted(Path(folder).glob("*.h")):
        current, block = None, []
        for line in header.read_text().splitlines():
            stripped = line.strip()
            if stripped.startswith("///") and not stripped.startswith("///<"):
                block.append(stripped[3:].removeprefix(" "))
                continue
            if found := re.match(r"(?:struct|enum) (\w+)(?: : \w+)? \{", stripped):
                current = found[1]
                comments.types[current] = block
            elif found := re.match(r"virtual HRESULT (\w+)\(", stripped):
                comments.operations[current, found[1]] = block
            elif found := re.match(r"constexpr (\w+) operator\|", stripped):
                comments.flags.add(found[1])
            elif found := re.match(r"inline constexpr int (GLFS_\w+) = (\d+);", stripped):
                comments.constants[found[1]] = int(found[2])
            block = []
        for name, text in re.findall(r"(\w+)(?: =\s+\d+)?[,;]?\s+///< (.*)", header.read_text()):
            comments.values[name] = text
    for name, text in re.findall(
        r"(GLFS_\w+) = \d+;\s+///< (.*)", Path(folder, "IGLFont.h").read_text()
    ):
        comments.values[name] = text
    return comments
