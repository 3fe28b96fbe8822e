"""Interactive 3-D drawing on OpenGL: hosts of the component in Python.

    context = gllib.Context()
    context.initialize(0)            # 0: a window of its own; else the id of an X11 window
    context.create_viewer(True, True)
    context.attach_painter(MyPainter())

Operations have the names of the component's, in snake_case; what an operation gives by pointers it returns. A failure
raises an exception of gllib.errors. Sequences take the place of points and colours. Each Python object holds references
to an object of the component, and gives them back at its end or by close(). Any thread may call any operation; painters,
gauges and captures are called on the context's draw thread. At the interpreter's exit all drawing ends.
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
