"""Exceptions of failed operations: one for each HRESULT of the component."""

S_OK = 0
E_NOINTERFACE = 0x80004002
E_POINTER = 0x80004003
E_FAIL = 0x80004005
E_OUTOFMEMORY = 0x8007000E
E_INVALIDARG = 0x80070057
E_GL_BADVALUE = 0x800400C8
E_GL_BADSTATE = 0x800400C9


class GLError(Exception):
    """An operation failed. hresult is its result as an unsigned number, operation its name."""

    meaning = "failed"

    def __init__(self, hresult, operation):
        self.hresult = hresult & 0xFFFFFFFF
        self.operation = operation
        super().__init__(f"{operation}: {self.meaning} (0x{self.hresult:08X})")


class Failed(GLError):
    """E_FAIL: a creation or look-up failed, or an iteration has reached its end."""


class BadValue(GLError, ValueError):
    """E_GL_BADVALUE: the operation rejects a value; the previous setting remains."""

    meaning = "the value is refused"


class BadState(GLError, RuntimeError):
    """E_GL_BADSTATE: an object that the operation needs does not exist, or no longer exists."""

    meaning = "not possible in this state"


class InvalidArgument(GLError, ValueError):
    """E_INVALIDARG: a required value is None, or an object has another owner."""

    meaning = "invalid argument"


class NoInterface(GLError, TypeError):
    """E_NOINTERFACE: the object does not have the interface."""

    meaning = "the object does not have this interface"


class OutOfMemory(GLError, MemoryError):
    """E_OUTOFMEMORY: not enough memory; nothing was changed."""

    meaning = "out of memory"


_CLASSES = {
    E_NOINTERFACE: NoInterface,
    E_FAIL: Failed,
    E_OUTOFMEMORY: OutOfMemory,
    E_INVALIDARG: InvalidArgument,
    E_POINTER: InvalidArgument,
    E_GL_BADVALUE: BadValue,
    E_GL_BADSTATE: BadState,
}


def error_of(hresult, operation):
    """Returns the exception for a failure."""
    return _CLASSES.get(hresult & 0xFFFFFFFF, GLError)(hresult, operation)
