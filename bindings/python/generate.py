#!/usr/bin/python3
"""Writes gllib/interfaces.py: all declarations of GLLib.idl, with docstrings from the public headers.

    generate.py GLLib.idl HEADER_FOLDER OUTPUT
"""

import sys
from pathlib import Path

import idl
import naming
from docstrings import Docstrings

SCALARS = {
    "long": "c_int32",  # 32 bits on all systems
    "int": "c_int32",
    "unsigned long": "c_uint32",
    "unsigned int": "c_uint32",
    "unsigned short": "c_uint16",
    "unsigned char": "c_uint8",
    "ULONG_PTR": "c_size_t",
    "float": "c_float",
    "double": "c_double",
}
# Arrays whose length is another argument. Python counts the arrays it passes; callers state the length of results.
COUNTED_IN = {
    ("IGLBitmap", "SetPixels"): ("aSize", "aArray"),
    ("IGLPixmap", "SetPixels"): ("aSize", "aArray"),
    ("IGLPixmap", "ScaleColor256"): ("aSize", "aArray"),
    ("IGLCanvas14_4", "TexImage2D"): ("nDataBytes", "pbyPixels"),
    ("IGLCanvas14_4", "Build2DMipmaps"): ("nDataBytes", "pbyPixels"),
    ("IGLCanvas14_4", "TexGeniv"): ("nCount", "pnValue"),
    ("IGLCanvas14_4", "TexGendv"): ("nCount", "pdValue"),
}
COUNTED_OUT = {
    ("IGLCanvas14_4", "GenTextures"): ("nTextures", "pnTextureIDs"),
    ("IGLCanvas13_1", "GetTransparentTriangles"): ("lCount", "arTriangles"),
}
# Operations that classes.py wraps for Python. Here their arguments are those of the interface.
PLAIN = {("IGLContext", "Select"), ("IGLPixmap", "AccessPixmapData")}
# Operations that return an object without a reference. All others that return one pass a reference.
LENDING = {"CreateViewer", "CreateLight", "CreateRasterFont", "CreateTrueTypeFont"}
ANSWERING_YES_OR_NO = ("Is", "Are", "Has", "GetShowAxes", "GetPixel")
CALLED_BY_THE_COMPONENT = {"IGLPainter", "IGLViewerGauge", "IGLCapture"}


class Generator:
    def __init__(self, library, comments):
        self.library = library
        self.docs = Docstrings(library, comments)
        self.comments = comments
        self.lines = []
        self.names = []

    def write(self, *lines):
        self.lines += lines

    def ctype(self, kind):
        """Returns the ctypes type of an argument or a structure's member."""
        if kind.endswith("*") or kind == "BSTR":
            return "c_void_p"
        if kind in self.library.structures:
            return naming.class_name(kind)
        return "c_int32" if kind in self.library.enumerations else SCALARS[kind]

    def structure(self, name, members):
        cls = naming.class_name(name)
        self.names.append(cls)
        self.write("", "", f"class {cls}(Structure):", f'    """{self.docs.of_type(name, "    ")}"""', "")
        fields = []
        for kind, member, lengths in members:
            fields.append(f'("{naming.field_name(member)}", {" * ".join([self.ctype(kind), *map(str, lengths[::-1])])})')
        self.write("    _fields_ = [", *[f"        {text}," for text in fields], "    ]")

    def enumeration(self, cls, kind, doc, values):
        self.names.append(cls)
        self.write("", "", f"class {cls}(enum.{kind}):", f'    """{doc}"""', "")
        for name, value in values:
            comment = self.docs.of_value(name)
            if comment:
                self.write(f"    #: {comment}")
            self.write(f"    {naming.enumerator_name(name)} = {value}")

    def interface(self, interface):
        """Writes the table of an interface: names and argument types in slot order."""
        self.write("", f"{interface.name} = Interface(", f'    "{interface.name}",', f'    "{interface.identifier}",', "    [")
        for operation in interface.operations:
            types = ", ".join(self.ctype(argument.type) for argument in operation.arguments)
            self.write(f'        ("{operation.name}", [{types}]),')
        self.write("    ],", ")")

    def operation(self, interface, face, slot, operation):
        key = (interface.name, operation.name)
        plain = key in PLAIN
        counted_in, counted_out = COUNTED_IN.get(key), COUNTED_OUT.get(key)
        parameters, before, call, results, names = [], [], [], [], {}
        for argument in operation.arguments:
            target = argument.type.rstrip("*")
            name = naming.argument_name(argument.name, target)
            names[argument.name] = name
            stars = argument.type.count("*")
            value = name
            if counted_in and argument.name == counted_in[0]:
                value = f"len({names.setdefault(counted_in[1], naming.argument_name(counted_in[1]))})"
            elif counted_in and argument.name == counted_in[1]:
                parameters.append(name)
                item = naming.class_name(target) if target in self.library.structures else SCALARS[target]
                before.append(f"{name} = array_of({item}, {name})")
            elif counted_out and argument.name == counted_out[1]:
                item = naming.class_name(target) if target in self.library.structures else SCALARS[target]
                before.append(f"{name} = ({item} * max({names[counted_out[0]]}, 0))()")
                results.append(f"list({name})")
            elif plain:
                parameters.append(name)
            elif argument.length:
                parameters.append(name)
                value = f"array_of({naming.class_name(target)}, {name}, {argument.length})"
            elif target in self.library.structures and stars == 1:
                cls = naming.class_name(target)
                if argument.is_in:
                    parameters.append(name)
                if argument.is_in and argument.is_out:
                    before.append(f"{name} = {cls}.copy_of({name})")
                elif argument.is_in:
                    value = f"{cls}.pointer_to({name})"
                else:
                    before.append(f"{name} = {cls}()")
                if argument.is_out:
                    results.append(name)
                    value = f"byref({name})"
            elif target in self.library.structures:
                parameters.append(name)
                value = f"{naming.class_name(target)}.of({name})"
            elif target in self.library.interfaces or target == "IUnknown":
                if argument.is_in:
                    parameters.append(name)
                    value = f"pointer_of({target}, {name})"
                else:
                    before.append(f"{name} = c_void_p()")
                    results.append(f"object_of({target}, {name}.value, {operation.name not in LENDING})")
                    value = f"byref({name})"
            elif target == "BSTR" and argument.is_out:
                before.append(f"{name} = c_void_p()")
                results.append(f"take_text({name}.value)")
                value = f"byref({name})"
            elif target == "BSTR":
                parameters.append(name)
                value = f"Text({name})"
            elif argument.is_out:
                before.append(f"{name} = {self.ctype(target)}()")
                result = f"{name}.value"
                if target in self.library.enumerations:
                    result = f"{naming.class_name(target)}({result})"
                elif target == "long" and operation.name.startswith(ANSWERING_YES_OR_NO):
                    result = f"bool({result})"
                results.append(result)
                value = f"byref({name})"
            else:
                parameters.append(name)
            call.append(value)
        title = ("_" if plain else "") + naming.snake_case(operation.name)
        doc = self.docs.of_operation(interface.name, operation.name, names, " " * 8)
        self.write("", f"    def {title}({', '.join(['self', *parameters])}):")
        if doc:
            self.write(f'        """{doc}"""')
        self.write(*[f"        {line}" for line in before])
        self.write(f"        self._call({', '.join([str(face), str(slot), *call])})")
        if results:
            self.write(f"        return {', '.join(results)}")

    def coclass(self, name, identifier, interfaces):
        cls = naming.class_name(name)
        self.names.append(cls)
        self.write("", "", "@class_of_interface", f"class {cls}(Object):")
        self.write(f'    """{self.docs.of_class(interfaces, "    ")}"""', "")
        self.write(f'    CLASS_ID = identifier("{identifier}")')
        self.write(f"    INTERFACES = ({', '.join(interfaces)},)")
        for face, interface in enumerate(interfaces):
            for slot, operation in enumerate(self.library.interfaces[interface].operations, start=3):
                self.operation(self.library.interfaces[interface], face, slot, operation)

    def module(self):
        self.write(
            '"""Structures, enumerations, interfaces and classes of the component.',
            "",
            "Generated from GLLib.idl by bindings/python/generate.py; do not edit. Docstrings are those of the public headers.",
            '"""',
            "",
            "import enum",
            "from ctypes import byref, c_double, c_float, c_int32, c_size_t, c_uint8, c_uint16, c_uint32, c_void_p",
            "",
            "from gllib._objects import IUnknown, Interface, Object, class_of_interface, identifier, object_of, pointer_of",
            "from gllib._values import Structure, Text, array_of, take_text",
        )
        for name, members in self.library.structures.items():
            self.structure(name, members)
        for name, values in self.library.enumerations.items():
            kind = "IntFlag" if name in self.comments.flags else "IntEnum"
            self.enumeration(naming.class_name(name), kind, self.docs.of_type(name, "    ") or naming.class_name(name), values)
        styles = list(self.comments.constants.items())
        self.enumeration("FontStyle", "IntFlag", "Style bits of a font.", styles)
        self.write("", "")
        for interface in self.library.interfaces.values():
            self.interface(interface)
        for name, (identifier, interfaces) in self.library.classes.items():
            self.coclass(name, identifier, interfaces)
        called = [name for name in self.library.interfaces if name in CALLED_BY_THE_COMPONENT]
        if len(called) != len(CALLED_BY_THE_COMPONENT):
            raise ValueError("an interface that hosts implement is missing")
        self.write("", "", "__all__ = [", *[f'    "{name}",' for name in self.names], "]")
        return "\n".join(self.lines) + "\n"


def main(source, headers, output):
    text = Generator(idl.read_library(source), idl.read_comments(headers)).module()
    compile(text, output, "exec")
    Path(output).write_text(text)


if __name__ == "__main__":
    main(*sys.argv[1:])
