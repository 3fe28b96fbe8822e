"""Classes with operations adapted to Python: contexts, canvases, pixmaps and collections."""

import ctypes
import enum
import threading
import weakref
from ctypes import byref, c_int32, c_uint32, c_void_p

from gllib import arrays, interfaces
from gllib._objects import Object, class_of_interface, clients, ending, pointer_of, running, values_of, wait_for_others
from gllib.errors import Failed


class Primitive(enum.IntEnum):
    """Kind of primitive that the vertices of arrays form."""

    POINTS = 0
    LINES = 1
    LINE_LOOP = 2
    LINE_STRIP = 3
    TRIANGLES = 4
    TRIANGLE_STRIP = 5
    TRIANGLE_FAN = 6
    QUADS = 7
    QUAD_STRIP = 8
    POLYGON = 9


@class_of_interface
class Context(interfaces.Context):
    __doc__ = interfaces.Context.__doc__

    DRAWS = True

    def __init__(self):
        super().__init__()
        if ending():
            self.close()
            raise RuntimeError("a context cannot be created while the interpreter ends")

    def _call(self, face, slot, *arguments):
        with running(self):
            super()._call(face, slot, *arguments)

    def close(self):
        """Releases all references now. The last one ends the drawing.

        First waits for the operations of this object that other threads have begun, at most 10 s.
        """
        self._faces = ()  # refuses further operations
        wait_for_others(self)
        with running(self):
            super().close()

    def select(self, viewer, point1, point2=None, closest=False, enclosed=False, room=10000):
        """Returns the identifiers, set by set_test_id(), that the painter draws at a point or in a box of a viewer.

        viewer: one of this context's viewers.
        point1, point2: two corners, x and y from -1 to 1 over the visible part of the viewer, y upward. Without point2
        one pixel is tested. A third coordinate is optional and ignored.
        closest: only the identifier nearest to the eye.
        enclosed: only identifiers completely inside the box.
        room: capacity for hits; if there are more hits, the result is empty.

        Without enclosed the list has the order of drawing. The call waits for the draw thread: do not call it from a
        painter, or with a lock that the painter takes. Raises BadState before initialize().
        """
        first = interfaces.Point.copy_of(_corner(point1))
        second = interfaces.Point.copy_of(_corner(point1 if point2 is None else point2))
        count = c_int32(max(room, 1))
        found = (c_uint32 * count.value)()
        self._select(
            pointer_of(interfaces.IGLViewer, viewer), byref(first), byref(second), closest, enclosed, byref(count), found
        )
        return found[: count.value]

    def attach_capture(self, capture):
        super().attach_capture(capture)
        capture._context = self.address

    def raise_pending(self):
        """Raises the first pending exception of this context's painters, gauges and captures, and clears it."""
        for client in values_of(clients):
            if client.error is not None and client._context == self.address:
                client.raise_pending()

    attach_capture.__doc__ = interfaces.Context.attach_capture.__doc__


def _corner(point):
    members = tuple(point)
    return members if len(members) == 3 else (*members, 0)


@class_of_interface
class Canvas(interfaces.Canvas):
    __doc__ = interfaces.Canvas.__doc__

    _compiles = False

    def begin_compile_list(self):
        result = super().begin_compile_list()
        self._compiles = True
        return result

    def end_compile_list(self):
        self._compiles = False
        super().end_compile_list()

    def abandon(self):
        """Ends the primitive and the list that an exception left open."""
        self.end_draw_vertices()
        if self._compiles:
            self.end_compile_list()

    def draw_arrays(
        self, vertices, normals=None, colors=None, indices=None, *, texture_coords=None, mode=Primitive.TRIANGLES
    ):
        """Draws vertices from NumPy arrays, or anything that numpy.asarray() takes.

        vertices: shape (n, 2) or (n, 3).
        normals: shape (n, 3), or None for the current normal.
        colors: shape (n, 3) or (n, 4): reals from 0 to 1, or uint8 from 0 to 255; None for the current colour.
        indices: indices of vertices, in any shape; None draws the vertices in order.
        texture_coords: shape (n, 2), or None.
        mode: the Primitive that they form.

        Rows of a larger array, such as the fields of an interleaved one, are read in place; float64, float32 and
        unsigned integers need no copy. Call it in a painter or gauge. After an array with colours the current colour
        is undefined. Raises ValueError if shapes do not match, an index is too large, or mode is not
        a Primitive.
        """
        arrays.draw(Primitive(mode), vertices, normals, colors, texture_coords, indices)

    def compile_arrays(self, *arguments, **options):
        """Compiles a list from arrays and returns its key. The arguments are those of draw_arrays()."""
        number = self.begin_compile_list()
        try:
            self.draw_arrays(*arguments, **options)
        except BaseException:
            self.end_compile_list()
            self.delete_compiled_list(number)
            raise
        self.end_compile_list()
        return number

    begin_compile_list.__doc__ = interfaces.Canvas.begin_compile_list.__doc__
    end_compile_list.__doc__ = interfaces.Canvas.end_compile_list.__doc__


class _Use:
    """The users of the pixels of one pixmap."""

    def __init__(self):
        self.block = None  # weak reference to the block that arrays share
        self.requests = []  # one item per capture that will write into it; draw threads remove items without a lock


_uses = {}
_uses_lock = threading.RLock()


@class_of_interface
class Pixmap(interfaces.Pixmap):
    __doc__ = interfaces.Pixmap.__doc__

    def array(self):
        """Returns the pixels as a NumPy array of shape (height, width, 4), without a copy: top row first, RGBA.

        Writing to it writes to the pixmap. It keeps the pixmap alive. While the array or a view of it exists, initialize(),
        load_image_file() and captures into the pixmap raise BufferError, because they can move the pixels. Raises
        BufferError while a capture of the pixmap is pending, and BadValue if the pixmap is empty.
        """
        import numpy

        with _uses_lock:
            use = self._use()
            if use.requests:
                raise BufferError("a capture will write into this pixmap")
            block = use.block() if use.block is not None else None
            if block is None:
                size, pixels = c_int32(), c_void_p()
                self._access_pixmap_data(byref(size), byref(pixels))
                block = (ctypes.c_uint8 * (4 * size.value)).from_address(pixels.value)
                block.pixmap = self.keep()
                use.block = weakref.ref(block)
        shape = self.get_height(), self.get_width(), 4
        return numpy.frombuffer(block, numpy.uint8).reshape(shape)[::-1]

    def initialize(self, width, height, rgba=(0, 0, 0, 0)):
        self._refuse_if_in_use()
        super().initialize(width, height, rgba)

    def load_image_file(self, filename):
        self._refuse_if_in_use()
        super().load_image_file(filename)

    def lock(self):
        """Refuses arrays until unlock(), because a capture will write into the pixmap."""
        with _uses_lock:
            self._refuse_if_in_use()
            self._use().requests.append(None)

    def unlock(self):
        """Ends one lock()."""
        self._use().requests.pop()

    def _use(self):
        address = self.address
        use = _uses.get(address)
        if use is None:
            use = _uses[address] = _Use()
            weakref.finalize(self, _forget, address, use)
        return use

    def _refuse_if_in_use(self):
        with _uses_lock:
            use = _uses.get(self.address)
            if use is not None and use.block is not None and use.block() is not None:
                raise BufferError("an array of this pixmap is in use")

    initialize.__doc__ = interfaces.Pixmap.initialize.__doc__
    load_image_file.__doc__ = interfaces.Pixmap.load_image_file.__doc__


def _forget(address, use):
    with _uses_lock:
        if _uses.get(address) is use and not use.requests and (use.block is None or use.block() is None):
            del _uses[address]


@class_of_interface
class Collection(interfaces.Collection):
    __doc__ = interfaces.Collection.__doc__

    def members(self, cls=None):
        """Iterates over the members in slot order. cls: class of the results; None is Object."""
        step = self.get_first
        while True:
            try:
                position, member = step()
            except Failed:
                return
            yield member.query(cls) if cls is not None and isinstance(member, Object) else member
            step = lambda: self.get_next(position)  # noqa: E731

    def __iter__(self):
        return self.members()

    def __len__(self):
        return self.get_size()


__all__ = ["Canvas", "Collection", "Context", "Pixmap", "Primitive"]
