"""The interfaces of the package and of the type library, compared with the public headers and the module."""

import ctypes
import enum
import inspect
import os
import re
import unittest
from pathlib import Path

import gllib
from gllib import interfaces

SOURCE = Path(os.environ["GLLIB_SOURCE_DIR"])
HEADERS = SOURCE / "src/component/include/gllib"
SIZES = {"long": 4, "LONG": 4, "int": 4, "ULONG": 4, "unsigned int": 4, "std::uint16_t": 2, "float": 4, "double": 8}

# Values of existing hosts. The type library gives the order of the operations.
LAST_SLOTS = {
    "IGLContext": 42, "IGLContext2": 5, "IGLContext12": 4, "IGLContext14_2": 3, "IGLContext14_3": 6,
    "IGLViewer": 41, "IGLViewer2": 4, "IGLCanvas": 50, "IGLCanvas2": 7, "IGLCanvas3": 4, "IGLCanvas13_1": 13,
    "IGLCanvas14_2": 4, "IGLCanvas14_4": 16, "IGLDrawAttr": 29, "IGLMaterial": 15, "IGLLight": 28, "IGLFog": 13,
    "IGLCollection": 13, "IGLFont": 17, "IGLBitmap": 11, "IGLPixmap": 19, "IGLTexture1D": 6, "IGLTexture2D": 6,
    "IGLCoord": 23, "IGLPainter": 3, "IGLViewerGauge": 5, "IGLCapture": 8,
}


def text_of(file):
    """Returns the text of a header or of the type library, without its comments."""
    return re.sub(r"//[^\n]*", "", file.read_text())


def header_interfaces():
    """Returns the operations of each interface with their argument types, in the order of the headers."""
    found = {}
    for header in HEADERS.glob("IGL*.h"):
        text = text_of(header)
        for name, body in re.findall(r"struct (IGL\w+) : IUnknown \{(.*?)\n\};", text, re.S):
            found[name] = [
                (operation, [" ".join(part.split()) for part in arguments.split(",") if part.strip()])
                for operation, arguments in re.findall(r"virtual HRESULT (\w+)\(([^)]*)\)", body)
            ]
    return found


def pieces(text, mark):
    """Returns the parts of a text between marks, with types in the names and notation of the type library."""
    for name, type_ in ((r"\bLONG\b|std::int32_t", "long"), (r"\bULONG\b", "unsigned long"),
                        ("std::uint16_t", "unsigned short"), ("std::uint8_t", "unsigned char")):
        text = re.sub(name, type_, text)
    parts = (re.sub(r"\s*\*\s*", "*", " ".join(part.split())) for part in text.split(mark))
    return [part for part in parts if part]


def types_in(text):
    """Returns structures and enumerations, which headers and type library write in the same way."""
    return {name: pieces(body, ";" if ";" in body else ",")
            for name, body in re.findall(r"(?:struct|enum) (\w+)(?: : int)? \{([^{}]*)\}", text)}


class Interfaces(unittest.TestCase):
    def test_the_type_library_declares_the_same_as_the_headers(self):
        library = text_of(SOURCE / "src/component/GLLib.idl")
        found = types_in(library)
        for name, body in re.findall(r"interface (IGL\w+) : IUnknown \{([^}]*)\}", library):
            found[name] = []
            for kind, operation, arguments in re.findall(r"(?:\[prop(get|put)\] )?HRESULT (\w+)\(([^;]*)\);", body):
                # Without directions; an array counts as a pointer.
                arguments = re.sub(r"(\w+)\[\d\]", r"* \1", re.sub(r"\[[a-z, ]+\]", "", arguments))
                found[name].append((kind + "_" * bool(kind) + operation, pieces(arguments, ",")))
        self.assertEqual(len(found), 27 + 7 + 12, "interfaces, structures and enumerations")
        declared = {name: [(operation, pieces(",".join(arguments), ",")) for operation, arguments in operations]
                    for name, operations in header_interfaces().items()}
        for header in [HEADERS / "GLTypes.h", *HEADERS.glob("IGL*.h")]:
            declared.update(types_in(text_of(header)))
        self.maxDiff = None
        self.assertEqual(found, declared)
        # The build for Windows reads the identifiers from the comments of GLClasses.h.
        classes = re.findall(r"uuid\(([-0-9A-F]{36})\)[^\]]*\]\s+coclass (\w+)", library)
        self.assertEqual(len(classes), 14)
        for identifier, name in classes:
            self.assertIn(f"/// {{{identifier}}}\ninline constexpr CLSID CLSID_{name} =", (HEADERS / "GLClasses.h").read_text())

    def test_operations_have_the_slots_of_the_headers(self):
        headers = header_interfaces()
        self.assertEqual(headers.keys(), LAST_SLOTS.keys())
        for name, operations in headers.items():
            table = getattr(interfaces, name)
            self.assertEqual([o[0] for o in table.operations[3:]], [o[0] for o in operations], name)
        for name, slot in LAST_SLOTS.items():
            self.assertEqual(getattr(interfaces, name).slot(headers[name][-1][0]), slot, name)

    def test_arguments_are_as_wide_as_in_the_headers(self):
        for name, operations in header_interfaces().items():
            for operation, arguments in operations:
                types = getattr(interfaces, name).operations[getattr(interfaces, name).slot(operation)][1]
                self.assertEqual(len(types), len(arguments), operation)
                for kind, argument in zip(types, arguments):
                    written = argument.rsplit(" ", 1)[0]
                    size = 8 if "*" in argument or written in ("BSTR", "ULONG_PTR") else SIZES.get(written, 4)
                    self.assertEqual(ctypes.sizeof(kind), size, f"{operation}: {argument}")
                    self.assertEqual(written in ("float", "double"), kind in (ctypes.c_float, ctypes.c_double), argument)

    def test_all_classes_have_their_interfaces(self):
        classes = [getattr(gllib, name) for name in gllib.__all__]
        classes = [c for c in classes if inspect.isclass(c) and issubclass(c, gllib.Object) and c.CLASS_ID]
        self.assertEqual(len(classes), 14)
        for cls in classes:
            with cls() as value:
                for face, interface in enumerate(cls.INTERFACES):
                    self.assertTrue(value._bind(face)[0], interface)

    def test_enumerations_have_the_values_of_the_headers(self):
        values = {}
        for header in HEADERS.glob("IGL*.h"):
            values.update(re.findall(r"\b(GL[A-Z]{1,4}_\w+) =\s+(\d+)", text_of(header)))
        package = sorted(int(v) for n in gllib.__all__ if isinstance(e := getattr(gllib, n), enum.EnumMeta)
                         and e is not gllib.Primitive for v in e)
        self.assertEqual(package, sorted(map(int, values.values())))
        self.assertEqual(gllib.DrawMode.SHOW_FRONT | gllib.DrawMode.SHOW_BACK, 48)

    def test_operations_have_the_comments_of_the_headers(self):
        self.assertIn("waits for the draw thread", gllib.Context.select.__doc__.lower())
        self.assertIn("non-zero", gllib.Fog.enable.__doc__)
        bare = [f"{cls.__name__}.{name}" for cls in vars(gllib).values()
                if inspect.isclass(cls) and issubclass(cls, gllib.Object)
                for name, value in vars(cls).items() if inspect.isfunction(value) and name[0] != "_" and not value.__doc__]
        self.assertEqual(bare, [])
