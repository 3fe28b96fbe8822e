"""Finds and loads the component's module, and creates objects."""

import ctypes
import os
import threading

from gllib.errors import error_of

SONAME = "libgllib.so.1"

_lock = threading.Lock()
_loaded = None
_CLASS_FACTORY = bytes.fromhex("0100000000000000C000000000000046")


class _Library:
    def __init__(self, path):
        self.path = path
        library = ctypes.CDLL(path)
        self.get_class_object = library.DllGetClassObject
        self.get_class_object.argtypes = [ctypes.c_char_p, ctypes.c_char_p, ctypes.c_void_p]
        self.get_class_object.restype = ctypes.c_int32
        self.can_unload_now = library.DllCanUnloadNow
        self.can_unload_now.argtypes = []
        self.can_unload_now.restype = ctypes.c_int32


def load(path=None):
    """Loads the component's module. Creating the first object does this automatically.

    path: the module's file. Default: the environment variable GLLIB_MODULE, or libgllib.so.1 in the search path of
    the system's loader. A later call loads nothing.

    Raises OSError if the module cannot be loaded, and RuntimeError if a later call names another file.
    """
    global _loaded
    with _lock:
        wanted = os.fspath(path) if path else os.environ.get("GLLIB_MODULE") or SONAME
        if _loaded is None:
            _loaded = _Library(wanted)
        elif path and wanted != _loaded.path:
            raise RuntimeError(f"{_loaded.path} is loaded already")
        return _loaded


def loaded():
    """Returns the module, or None if it is not loaded yet."""
    return _loaded


def create(class_id, identifier):
    """Creates an object of a class. Returns a counted pointer to the interface."""
    library = load()
    factory, made = ctypes.c_void_p(), ctypes.c_void_p()
    result = library.get_class_object(class_id, _CLASS_FACTORY, ctypes.byref(factory))
    if result < 0:
        raise error_of(result, "DllGetClassObject")
    try:
        result = _slot(factory, 3, ctypes.c_int32, ctypes.c_void_p, ctypes.c_char_p, ctypes.c_void_p)(
            factory, None, identifier, ctypes.byref(made)
        )
    finally:
        _slot(factory, 2, ctypes.c_uint32)(factory)
    if result < 0:
        raise error_of(result, "CreateInstance")
    return made.value


def _slot(pointer, index, result, *arguments):
    table = ctypes.c_void_p.from_address(pointer.value).value
    address = ctypes.c_void_p.from_address(table + index * ctypes.sizeof(ctypes.c_void_p)).value
    return ctypes.CFUNCTYPE(result, ctypes.c_void_p, *arguments)(address)
