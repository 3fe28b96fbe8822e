"""Interfaces as tables of functions, and the objects of the component behind them.

An Object holds one reference for each of its interfaces that was used, from its first use to close() or to the end of
the Python object. Calls release the interpreter's lock, so that the draw thread can call painters meanwhile.
"""

import atexit
import ctypes
import gc
import os
import sys
import threading
import time
import traceback
import uuid
import weakref
from ctypes import c_char_p, c_int32, c_uint32, c_void_p

from gllib import _library
from gllib.errors import error_of

_WORD = ctypes.sizeof(c_void_p)


def identifier(text):
    """Returns the 16 bytes of an identifier."""
    return uuid.UUID(text).bytes_le


class Interface:
    """An interface: its identifier and its operations in slot order, those of IUnknown first."""

    def __init__(self, name, text, operations):
        self.name = name
        self.identifier = identifier(text)
        self.operations = [
            ("QueryInterface", [c_char_p, c_void_p]),
            ("AddRef", []),
            ("Release", []),
            *operations,
        ]
        self.prototypes = [
            ctypes.CFUNCTYPE(c_uint32 if slot in (1, 2) else c_int32, c_void_p, *types)
            for slot, (_, types) in enumerate(self.operations)
        ]
        self._tables = {}

    def slot(self, operation):
        """Returns the slot of an operation; QueryInterface is 0."""
        return [name for name, _ in self.operations].index(operation)

    def functions(self, pointer):
        """Returns the functions of a pointer to this interface. Objects of one class share them."""
        table = c_void_p.from_address(pointer).value
        found = self._tables.get(table)
        if found is None:
            addresses = (c_void_p * len(self.operations)).from_address(table)
            found = tuple(prototype(address) for prototype, address in zip(self.prototypes, addresses))
            self._tables[table] = found
        return found

    def __repr__(self):
        return f"<interface {self.name}>"


IUnknown = Interface("IUnknown", "00000000-0000-0000-C000-000000000046", [])

# Objects to release before the interpreter ends. Keyed by id(), because two of them can be equal.
_alive = weakref.WeakValueDictionary()
_calls = []  # a pair for each operation of a context that is running: the thread and the id() of the object
_LONGEST_CALL = 10.0  # seconds; initialize() waits as long for a rendering context
_ending = False
# Objects implemented in Python, by the address passed to the component: all objects, and those that it references.
clients = weakref.WeakValueDictionary()
held_clients = {}
_classes = {}


def class_of_interface(cls):
    """Registers cls as the class of objects that operations return as its first interface."""
    _classes[cls.INTERFACES[0]] = cls
    return cls


@class_of_interface
class Object:
    """An object of the component. An object without a registered class has only IUnknown; see query()."""

    CLASS_ID = None
    DRAWS = False  # whether the class has a draw thread
    INTERFACES = (IUnknown,)
    _faces = ()
    _owned = ()

    def __init__(self):
        if self.CLASS_ID is None:
            raise TypeError("objects of this class are returned by operations; they cannot be created")
        self._take(_library.create(self.CLASS_ID, self.INTERFACES[0].identifier), True)

    @classmethod
    def _wrap(cls, pointer, counted):
        """Returns an object for a pointer. counted: the pointer has a reference, which the object then owns."""
        result = cls.__new__(cls)
        if not counted:
            cls.INTERFACES[0].functions(pointer)[1](pointer)
        result._take(pointer, True)
        return result

    @classmethod
    def _borrow(cls, pointer):
        """Returns an object for a pointer without a reference. It is valid until close()."""
        result = cls.__new__(cls)
        result._take(pointer, False)
        return result

    def _take(self, pointer, owns):
        functions = self.INTERFACES[0].functions(pointer)
        self._faces = [(pointer, functions)] + [None] * (len(self.INTERFACES) - 1)
        self._owned = []
        if owns:
            self._owned.append((pointer, functions))
            _alive[id(self)] = self

    def _bind(self, face):
        """Returns pointer and functions of an interface. The first use queries the object for it."""
        if not self._faces:
            raise ReferenceError(
                f"this {type(self).__name__} is closed. Arguments of draw() are valid until it returns; "
                "keep() returns an object that stays valid"
            )
        bound = self._faces[face]
        if bound is None:
            interface = self.INTERFACES[face]
            pointer = self._query(interface)
            bound = self._faces[face] = (pointer, interface.functions(pointer))
            self._owned.append(bound)
        return bound

    def _query(self, interface):
        pointer, functions = self._bind(0)
        found = c_void_p()
        result = functions[0](pointer, interface.identifier, ctypes.byref(found))
        if result < 0:
            raise error_of(result, "QueryInterface")
        return found.value

    def _call(self, face, slot, *arguments):
        pointer, functions = (self._faces and self._faces[face]) or self._bind(face)
        try:
            result = functions[slot](pointer, *arguments)
        except ctypes.ArgumentError as error:
            raise TypeError(f"{self._name_of(face, slot)}: {error} (argument 1 is the object)") from None
        if result < 0:
            raise error_of(result, self._name_of(face, slot))

    def _name_of(self, face, slot):
        return f"{self.INTERFACES[face].name}::{self.INTERFACES[face].operations[slot][0]}"

    @property
    def address(self):
        """Returns the address of the object's first interface, which identifies it."""
        return self._bind(0)[0]

    def query(self, cls):
        """Returns the same object as another class, with one more reference, or raises NoInterface."""
        return cls._wrap(self._query(cls.INTERFACES[0]), True)

    def keep(self):
        """Returns the same object with its own reference, for use after the call that lent it."""
        return type(self)._wrap(self.address, False)

    def close(self):
        """Releases all references now. Releasing the last reference of a context ends its drawing."""
        owned, self._owned, self._faces = self._owned, (), ()
        for pointer, functions in owned:
            functions[2](pointer)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def __del__(self):
        self.close()

    def __reduce__(self):
        refuse_copy(self)

    def __eq__(self, other):
        if not isinstance(other, Object):
            return NotImplemented
        return self is other or bool(self._faces and other._faces) and self.address == other.address

    def __hash__(self):
        return hash(self.address)

    def __repr__(self):
        state = f"at 0x{self._faces[0][0]:x}" if self._faces else "closed"
        return f"<gllib.{type(self).__name__} {state}>"


def pointer_of(interface, value):
    """Returns the pointer of an object as an argument; None is a null pointer."""
    if value is None:
        return None
    if isinstance(value, Object):
        if interface is IUnknown:
            return value.address
        if interface in value.INTERFACES:
            return value._bind(value.INTERFACES.index(interface))[0]
    elif clients.get(getattr(value, "address", None)) is value and interface in (value.INTERFACE, IUnknown):
        return value.address
    raise TypeError(f"{value!r} has no {interface.name}")


def object_of(interface, pointer, counted):
    """Returns the object for a pointer that an operation returned; None for a null pointer."""
    if not pointer:
        return None
    client = clients.get(pointer)
    if client is None:
        return _classes[interface]._wrap(pointer, counted)
    if counted:
        interface.functions(pointer)[2](pointer)
    return client


def refuse_copy(value):
    """Raises TypeError. A copy of the members of an object would release references that it does not hold."""
    raise TypeError(f"{value!r} cannot be copied or pickled")


def report(client, error):
    """Prints an exception that was never taken by raise_pending()."""
    print(f"gllib: an exception in {type(client).__qualname__} was not raised by raise_pending():", file=sys.stderr)
    traceback.print_exception(type(error), error, error.__traceback__, file=sys.stderr)


def values_of(objects):
    """Returns the values of a dictionary of weak references. Other threads may change it meanwhile."""
    return [value for reference in objects.valuerefs() if (value := reference()) is not None]


class running:
    """Marks an operation of a context as running on this thread, for the length of a block."""

    def __init__(self, value):
        self._call = (threading.get_ident(), id(value))

    def __enter__(self):
        _calls.append(self._call)

    def __exit__(self, *_):
        _calls.remove(self._call)


def wait_for_others(value=None):
    """Waits until no other thread runs an operation of a context, or of any context."""
    value_id = None if value is None else id(value)
    end = time.monotonic() + _LONGEST_CALL
    while any(thread != threading.get_ident() and value_id in (None, at) for thread, at in list(_calls)):
        if time.monotonic() > end:
            return
        time.sleep(0.001)


def _forget_threads_of_the_parent():
    _calls[:] = [call for call in _calls if call[0] == threading.get_ident()]


if hasattr(os, "register_at_fork"):
    os.register_at_fork(after_in_child=_forget_threads_of_the_parent)


def ending():
    """Returns whether the interpreter's exit has begun to close the objects."""
    return _ending


@atexit.register
def _end():
    """Ends all drawing while the interpreter still runs: a draw thread that called a painter later would never
    return. Contexts end first, because their painters use the other objects."""
    global _ending
    _ending = True
    while drawing := [value for value in values_of(_alive) if value.DRAWS and value._owned]:
        for value in drawing:  # a painter may keep its context once more meanwhile
            value.close()
    wait_for_others()
    for value in values_of(_alive):
        value.close()
    gc.collect()
    library = _library.loaded()
    if library is not None:
        library.can_unload_now()  # waits for contexts that a draw thread released last
    for client in values_of(clients):
        client.report_error()
