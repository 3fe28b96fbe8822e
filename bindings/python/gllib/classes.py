"""Classes whose operations take or give more than the interface's own arguments: contexts, canvases, pixmaps, walks."""

import ctypes
import enum
import threading
import weakref
from ctypes import byref, c_int32, c_uint32, c_void_p

from gllib import arrays, interfaces
from gllib._objects import Object, class_of_interface, clients, pointer_of
from gllib.errors import Failed


class Primitive(enum.IntEnum):
    """What the vertices of arrays make."""

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

    def select(self, viewer, point1, point2=None, closest=False, enclosed=False, room=10000):
        """Finds what the painter draws at a point or in a box of a viewer, by the identifiers of set_test_id().

        viewer: one of this context's viewers.
        point1, point2: two corners, x and y from -1 to 1 over what the viewer shows, y upward; with point1 alone one
        pixel. A third coordinate is ignored and may be missing.
        closest: only the one nearest to the eye.
        enclosed: only what does not reach over the box's edges.
        room: how many hits there is room for; when more things are hit, none are found.

        Returns the list of identifiers, in the order in which they were drawn. Waits for the draw thread: not to be called
        from a painter, nor with a lock that the painter takes. Raises BadState before initialize().
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
        """Raises the first exception of one of this context's painters, gauges and captures, once for each of them."""
        for client in list(clients.values()):
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
        """Closes the primitive and the list that an exception left open."""
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
        indices: numbers of vertices, of any shape; None takes the vertices in their order.
        texture_coords: shape (n, 2), or None.
        mode: what they make, a Primitive.

        Rows of a larger array, such as the fields of an interleaved one, are read where they are; float64, float32 and
        the unsigned integers need no copy. Belongs into a painter or gauge. After colours were drawn the current colour
        is undefined. Raises ValueError when shapes do not match or an index is too large.
        """
        arrays.draw(mode, vertices, normals, colors, texture_coords, indices)

    def compile_arrays(self, *arguments, **options):
        """Compiles a list from arrays and returns its number; the arguments are those of draw_arrays()."""
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
    """Who uses the store of one pixmap."""

    def __init__(self):
        self.block = None  # a weak reference to the block that arrays look at
        self.requests = []  # an item for each capture that is to write into it: draw threads take items off, with no lock


_uses = {}
_uses_lock = threading.RLock()


@class_of_interface
class Pixmap(interfaces.Pixmap):
    __doc__ = interfaces.Pixmap.__doc__

    def array(self):
        """The pixels as a NumPy array of shape (height, width, 4), without a copy: top row first, red, green, blue, alpha.

        Writing to it writes to the pixmap. It keeps the pixmap alive. While the array or a view of it exists, initialize(),
        load_image_file() and captures into the pixmap raise BufferError, since they can move the pixels. Raises
        BufferError while a capture is to write into the pixmap, and BadValue when the pixmap is empty.
        """
        import numpy

        with _uses_lock:
            use = self._use()
            if use.requests:
                raise BufferError("a capture is to write into this pixmap")
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
        """Refuses arrays until unlock(): a capture is to write into the pixmap."""
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
        """Walks through the members, upward from the lowest slot. cls: the class to see them as; None is Object."""
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
