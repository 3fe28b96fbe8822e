"""Arguments and results of operations: structures, strings and arrays."""

import ctypes
import os
import struct
from ctypes import byref

_free = ctypes.CDLL(None).free
_free.argtypes = [ctypes.c_void_p]
_free.restype = None

_BSTR_PREFIX = 8  # bytes of a string's block before its first character; the last 4 hold the length


class Structure(ctypes.Structure):
    """A structure of the component. It behaves like the tuple of its members; any sequence can replace it."""

    @classmethod
    def of(cls, value):
        """Returns value itself, or a structure made from a sequence. A colour without alpha is opaque."""
        if isinstance(value, cls):
            return value
        result = cls()
        members = list(value)
        names = [field[0] for field in cls._fields_]
        if names == ["m"] and len(members) == 4:  # a matrix as a sequence of columns
            members = [members]
        if names[-1] == "alpha" and len(members) == 3:
            members.append(255 if cls._fields_[-1][1] is ctypes.c_uint8 else 1)
        if len(members) != len(names):
            raise ValueError(f"{cls.__name__} has {len(names)} members, not {len(members)}")
        for (name, kind), member in zip(cls._fields_, members):
            setattr(result, name, _member(kind, member))
        return result

    @classmethod
    def copy_of(cls, value):
        """Returns a copy, for an operation that changes the structure."""
        return cls.from_buffer_copy(cls.of(value))

    @classmethod
    def pointer_to(cls, value):
        """Returns a pointer argument; None is a null pointer."""
        return None if value is None else byref(cls.of(value))

    def __iter__(self):
        return (getattr(self, field[0]) for field in self._fields_)

    def __len__(self):
        return len(self._fields_)

    def __getitem__(self, index):
        return tuple(self)[index]

    def __eq__(self, other):
        if isinstance(other, Structure):
            return type(self) is type(other) and bytes(self) == bytes(other)
        return tuple(self) == tuple(other) if isinstance(other, (tuple, list)) else NotImplemented

    __hash__ = None

    def __repr__(self):
        members = ", ".join(f"{field[0]}={_shown(getattr(self, field[0]))}" for field in self._fields_)
        return f"{type(self).__name__}({members})"


def _member(kind, value):
    if issubclass(kind, ctypes.Array):
        return kind(*(_member(kind._type_, item) for item in value))
    return kind.of(value) if issubclass(kind, Structure) else value


def _shown(value):
    return f"[{', '.join(_shown(item) for item in value)}]" if isinstance(value, ctypes.Array) else repr(value)


class _NoArray:
    """A null pointer for a missing array."""

    _as_parameter_ = None

    def __len__(self):
        return 0


def array_of(kind, values, length=0):
    """Returns an array of numbers or structures from a buffer of the same layout or a sequence; None is null.

    length: number of items that the operation reads; 0 if the length of values decides.
    """
    if values is None and length == 0:
        return _NoArray()
    result = _from_buffer(kind, values)
    if result is None:
        if issubclass(kind, Structure):
            if len(getattr(values, "shape", ())) > 2:  # rows of structures, such as a picture without alpha
                values = values.reshape(-1, values.shape[-1])
            items = [kind.of(item) for item in values]
        else:
            items = list(values)
        result = (kind * len(items))(*items)
    if length and len(result) != length:
        raise ValueError(f"{length} items are required, not {len(result)}")
    return result


def _from_buffer(kind, values):
    """Returns a copy of a buffer whose items are the members of kind, or an array of kind itself; else None."""
    try:
        view = memoryview(values)
    except TypeError:
        return None
    scalar = kind._fields_[0][1] if issubclass(kind, Structure) else kind
    if isinstance(values, ctypes.Array) and values._type_ is kind:
        return values
    if view.format not in (scalar._type_, "<" + scalar._type_):
        return None
    if issubclass(kind, Structure):
        members = len(kind._fields_)
        if ctypes.sizeof(scalar) * members != ctypes.sizeof(kind) or view.ndim > 1 and view.shape[-1] != members:
            return None
    count, rest = divmod(view.nbytes, ctypes.sizeof(kind))
    if rest:
        raise ValueError(f"{view.nbytes} bytes are not a multiple of the size of {kind.__name__}")
    return (kind * count).from_buffer_copy(view if view.c_contiguous else view.tobytes())


class Text:
    """A BSTR that exists during a call; None is the null string."""

    def __init__(self, text):
        self._as_parameter_ = None
        if text is None:
            return
        if isinstance(text, os.PathLike):
            text = os.fspath(text)
        units = text.encode("utf-16-le", "surrogatepass")
        self._block = ctypes.create_string_buffer(_BSTR_PREFIX + len(units) + 2)
        struct.pack_into(f"<4xI{len(units)}s", self._block, 0, len(units), units)
        self._as_parameter_ = ctypes.addressof(self._block) + _BSTR_PREFIX


def take_text(pointer):
    """Returns the text of a BSTR that an operation returned, and frees the BSTR."""
    if not pointer:
        return ""
    length = ctypes.c_uint32.from_address(pointer - 4).value
    text = ctypes.string_at(pointer, length).decode("utf-16-le", "surrogatepass")
    _free(pointer - _BSTR_PREFIX)
    return text
