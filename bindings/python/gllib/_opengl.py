"""The OpenGL functions that the package calls. They act on the current rendering context of the calling thread."""

import ctypes
from ctypes import POINTER, byref, c_int32, c_uint32, c_void_p

_MODELVIEW, _PROJECTION, _TEXTURE = 0x1700, 0x1701, 0x1702
_ATTRIBUTE_DEPTH = 0x0BB0
_MATRIX_DEPTHS = {_MODELVIEW: 0x0BA3, _PROJECTION: 0x0BA4, _TEXTURE: 0x0BA5}

_gl = None


def functions():
    """Returns the library."""
    global _gl
    if _gl is None:
        try:
            library = ctypes.CDLL("libOpenGL.so.0")
        except OSError:
            library = ctypes.CDLL("libGL.so.1")
        for name, types in {
            "glPushClientAttrib": [c_uint32],
            "glPopClientAttrib": [],
            "glEnableClientState": [c_uint32],
            "glDisableClientState": [c_uint32],
            "glVertexPointer": [c_int32, c_uint32, c_int32, c_void_p],
            "glNormalPointer": [c_uint32, c_int32, c_void_p],
            "glColorPointer": [c_int32, c_uint32, c_int32, c_void_p],
            "glTexCoordPointer": [c_int32, c_uint32, c_int32, c_void_p],
            "glDrawArrays": [c_uint32, c_int32, c_int32],
            "glDrawElements": [c_uint32, c_int32, c_uint32, c_void_p],
            "glGetIntegerv": [c_uint32, POINTER(c_int32)],
            "glMatrixMode": [c_uint32],
            "glPopMatrix": [],
            "glPopAttrib": [],
        }.items():
            function = getattr(library, name)
            function.argtypes, function.restype = types, None
        _gl = library
    return _gl


def _integer(name):
    value = c_int32()
    functions().glGetIntegerv(name, byref(value))
    return value.value


def stack_depths():
    """Returns the depths of the attribute stack and of the matrix stacks."""
    return [_integer(name) for name in (_ATTRIBUTE_DEPTH, *_MATRIX_DEPTHS.values())]


def restore_stacks(depths):
    """Pops the stacks to depths returned by stack_depths(), and selects the model-view matrix."""
    attributes, *matrices = depths
    for _ in range(_integer(_ATTRIBUTE_DEPTH) - attributes):
        functions().glPopAttrib()
    for (mode, name), depth in zip(_MATRIX_DEPTHS.items(), matrices):
        functions().glMatrixMode(mode)
        for _ in range(_integer(name) - depth):
            functions().glPopMatrix()
    functions().glMatrixMode(_MODELVIEW)
