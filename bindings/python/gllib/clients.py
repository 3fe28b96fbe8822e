"""Objects that hosts implement: painters, gauges and captures.

The component calls them on a context's draw thread. An object lives as long as the component holds a reference. An
exception never reaches the component: the object stores the first one until raise_pending() raises it.
"""

import concurrent.futures
import ctypes
import functools
import threading
from ctypes import POINTER, c_float, c_int32, c_void_p

from gllib import _objects, _opengl, interfaces
from gllib._objects import IUnknown, clients, held_clients
from gllib.errors import E_FAIL, E_NOINTERFACE, S_OK, Failed

_INT_MAX = 0x7FFFFFFF
# Code that holds it allocates nothing: garbage collection could end a context and wait for its draw thread.
_count_lock = threading.RLock()


def _signed(hresult):
    return hresult - 0x100000000 if hresult & 0x80000000 else hresult


def _write(kind, pointer, value):
    kind.from_address(pointer).value = value


class _Client:
    """An object with one interface. Its methods have the names of the interface's operations."""

    INTERFACE = IUnknown
    _error = None
    _context = None

    def __new__(cls, *arguments, **options):
        self = super().__new__(cls)
        self._block = (c_void_p * 1)(_table_of(cls.INTERFACE))
        self._references = 0
        self.address = ctypes.addressof(self._block)
        clients[self.address] = self
        return self

    @property
    def error(self):
        """The first exception since the last raise_pending(), or None."""
        return self._error

    def raise_pending(self):
        """Raises the first exception of a method that the component called, and clears it."""
        error, self._error = self._error, None
        if error is not None:
            raise error

    def report_error(self):
        """Prints a pending exception to stderr, and clears it."""
        error, self._error = self._error, None
        if error is not None:
            _objects.report(self, error)

    def _fail(self, error):
        if self._error is None:
            self._error = error

    def _released(self):
        """Called after the component has released its last reference."""

    def __del__(self):
        self.report_error()

    def __reduce__(self):
        _objects.refuse_copy(self)


def _client(this):
    return held_clients.get(this) or clients.get(this)


def _query_interface(this, identifier, found):
    client = _client(this)
    wanted = ctypes.string_at(identifier, 16)
    if client is None or wanted not in (IUnknown.identifier, client.INTERFACE.identifier):
        _write(c_void_p, found, None)
        return _signed(E_NOINTERFACE)
    _add_ref(this)
    _write(c_void_p, found, this)
    return S_OK


def _add_ref(this):
    client = _client(this)
    with _count_lock:
        client._references += 1
        held_clients[this] = client
        return client._references


def _release(this):
    with _count_lock:
        client = held_clients[this]
        client._references -= 1
        left = client._references
        if left == 0:
            del held_clients[this]
    if left == 0:
        try:
            client._released()
        except BaseException as error:
            client._fail(error)
    return left


def _operation(name):
    def enter(this, *arguments):
        client = _client(this)
        try:
            getattr(client, "_on_" + name)(*arguments)
            return S_OK
        except BaseException as error:  # no exception may reach the component, not even SystemExit
            client._fail(error)
            return _signed(E_FAIL)

    return enter


_KEPT = []  # keeps the callbacks in the tables alive


@functools.lru_cache(maxsize=None)
def _table_of(interface):
    """Returns the address of the function table that all objects of an interface share."""
    functions = [_query_interface, _add_ref, _release]
    functions += [_operation(name) for name, _ in interface.operations[3:]]
    prototypes = list(interface.prototypes)
    prototypes[0] = ctypes.CFUNCTYPE(c_int32, c_void_p, c_void_p, c_void_p)  # the identifier contains zero bytes
    entries = [prototype(function) for prototype, function in zip(prototypes, functions)]
    table = (c_void_p * len(entries))(*(ctypes.cast(entry, c_void_p).value for entry in entries))
    _KEPT.append((entries, table))
    return ctypes.addressof(table)


class _Lent:
    """Objects that are lent to a method during a call.

    After an exception it ends open primitives and lists, and pops GL's stacks.
    """

    def __init__(self, **pointers):
        self._depths = _opengl.stack_depths()
        self._objects = [_objects._classes[getattr(interfaces, face)]._borrow(at) for face, at in pointers.items()]

    def __enter__(self):
        return self._objects

    def __exit__(self, kind, *_):
        try:
            if kind is not None:
                self._objects[0].abandon()
                _opengl.restore_stacks(self._depths)
        finally:
            for lent in self._objects:
                lent.close()


class Painter(_Client):
    """Draws the model of the host. Attach it by Context.attach_painter(), which keeps it alive."""

    INTERFACE = interfaces.IGLPainter

    def draw(self, canvas, context, viewer):
        """Draws the model into one viewer, on the draw thread. Subclasses override it.

        The three objects are valid until draw returns; keep() returns one that stays valid. A painter that keeps its
        context forms a cycle, so neither is ever destroyed. At the end both matrix stacks and the attribute stack must
        have the same depth as at the start. After an exception the package restores them.
        """
        raise NotImplementedError

    def _on_Draw(self, canvas, context, viewer):
        self._context = context
        with _Lent(IGLCanvas=canvas, IGLContext=context, IGLViewer=viewer) as lent:
            self.draw(*lent)


class Gauge(_Client):
    """Draws over a viewer's scene: scales, legends, cross-hairs. Add it by Viewer.add_gauge()."""

    INTERFACE = interfaces.IGLViewerGauge
    visible = True  #: whether the gauge is drawn

    def draw(self, canvas, context):
        """Draws the gauge, on the draw thread. Subclasses override it. x and y run from -1 to 1 over the viewer."""
        raise NotImplementedError

    def _on_Draw(self, canvas, context):
        self._context = context
        with _Lent(IGLCanvas=canvas, IGLContext=context) as lent:
            self.draw(*lent)

    def _on_Show(self, show):
        self.visible = show != 0

    def _on_IsVisible(self, visible):
        _write(c_int32, visible, int(bool(self.visible)))


class _Request:
    def __init__(self, target, rectangle, zoom, background):
        self.target = target
        self.pixmap = target.keep()  # the host may close the target
        self.rectangle = rectangle
        self.zoom = zoom
        self.background = background
        self.future = concurrent.futures.Future()

    def begin(self):
        """Returns whether the request is still active. After this call its future cannot be cancelled."""
        wanted = self.future.set_running_or_notify_cancel()
        if not wanted:
            self.pixmap.unlock()
        return wanted

    def give_up(self):
        self.pixmap.unlock()
        if not self.future.cancel():
            self.future.set_exception(concurrent.futures.CancelledError())


class Capture(_Client):
    """Takes pictures of a context, one per request(). Attach it by Context.attach_capture()."""

    INTERFACE = interfaces.IGLCapture

    def __init__(self):
        self._lock = threading.RLock()
        self._waiting = None
        self._serving = None

    def request(self, target=None, *, x=0, y=0, width=_INT_MAX, height=_INT_MAX, zoom=1.0, background=(0, 0, 0, 1)):
        """Requests a picture of the next frame. Replaces a request that the draw thread has not served yet.

        target: the pixmap to write into, without an array in use; None creates a new one.
        x, y, width, height: the part of the window, in pixels from its top left; cut at its edges.
        zoom: size of the picture relative to the window; a whole number.
        background: the clear colour of the picture.

        Returns a concurrent.futures.Future whose result is the pixmap. It raises Failed if the capture fails. It is
        cancelled if another request replaces this one or the context releases the capture. A context that draws on
        demand needs trigger_draw_thread().
        """
        if target is None:
            target = _objects._classes[interfaces.IGLPixmap]()
        request = _Request(target, (x, y, width, height), zoom, interfaces.Rgba.of(background))
        target.lock()
        with self._lock:
            replaced, self._waiting = self._waiting, request
        if replaced is not None:
            replaced.give_up()
        return request.future

    def on_data(self, success):
        """Called on the draw thread after each attempt, before the future of the request has its result."""

    def _released(self):
        with self._lock:
            requests, self._waiting, self._serving = (self._serving, self._waiting), None, None
        for request in requests:
            if request is not None:
                request.give_up()

    def _on_IsEnabled(self, enabled):
        with self._lock:
            self._serving, self._waiting = self._waiting, None
            if self._serving is not None and not self._serving.begin():
                self._serving = None
        _write(c_int32, enabled, int(self._serving is not None))

    def _on_GetPixmap(self, pixmap):
        pointer, functions = self._serving.pixmap._bind(0)
        functions[1](pointer)
        _write(c_void_p, pixmap, pointer)

    def _on_GetPixelZoom(self, zoom):
        _write(c_float, zoom, self._serving.zoom)

    def _on_GetRectangle(self, *places):
        for place, value in zip(places, self._serving.rectangle):
            _write(c_int32, place, value)

    def _on_GetBackgroundColor(self, color):
        ctypes.cast(color, POINTER(interfaces.Rgba))[0] = self._serving.background

    def _on_OnData(self, success):
        served, self._serving = self._serving, None
        served.pixmap.unlock()
        try:
            self.on_data(success != 0)
        finally:
            if success:
                served.future.set_result(served.target)
            else:
                served.future.set_exception(Failed(E_FAIL, "Capture"))
