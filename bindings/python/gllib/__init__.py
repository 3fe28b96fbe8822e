"""Interactive 3-D drawing on OpenGL: hosts of the component in Python.

    context = gllib.Context()
    context.initialize(0)            # the id of an X11 window; 0: no parent
    context.create_viewer(True, True)
    context.attach_painter(MyPainter())

Operations have the component's names in snake_case. They return the values of output parameters. A failure raises an
exception of gllib.errors. Sequences can replace points and colours. Each Python object holds references to an object of
the component; close() or the end of the Python object releases them. Any thread may call any operation. The context's
draw thread calls painters, gauges and captures. At the interpreter's exit all drawing ends.
"""

from gllib import errors
from gllib._library import load
from gllib._objects import Object
from gllib.errors import BadState, BadValue, Failed, GLError, InvalidArgument, NoInterface, OutOfMemory
from gllib.interfaces import *  # noqa: F403
from gllib.interfaces import __all__ as _generated
from gllib.classes import *  # noqa: F403, E402
from gllib.clients import Capture, Gauge, Painter

__all__ = [
    *_generated,
    "BadState",
    "BadValue",
    "Capture",
    "Failed",
    "GLError",
    "Gauge",
    "InvalidArgument",
    "NoInterface",
    "Object",
    "OutOfMemory",
    "Painter",
    "Primitive",
    "errors",
    "load",
]
