"""A headless context with one viewer, for tests. One unit is two pixels, and the middle is 0, 0."""

import gllib

SIZE = 200


class Scene:
    """Releases its context at the end of the block."""

    def __init__(self, painter=None):
        self.context = gllib.Context()
        self.context.initialize(0)
        self.context.set_viewport(0, 0, SIZE, SIZE)
        self.context.enable_lighting(False)
        self.context.set_draw_thread_pars(0, 5, 5)
        self.viewer = self.context.create_viewer(True, True)
        self.capture = gllib.Capture()
        self.context.attach_capture(self.capture)
        if painter is not None:
            self.context.attach_painter(painter)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.viewer.close()
        self.context.close()

    def picture(self):
        """Returns a picture of a frame that begins after the call."""
        return self.capture.request().result(timeout=60)

    def wait_for_frames(self, count=2):
        for _ in range(count):
            self.picture()


class Drawing(gllib.Painter):
    """Calls a function to draw. Counts its calls and keeps the function's last result."""

    def __init__(self, function):
        self.function = function
        self.calls = 0
        self.result = None

    def draw(self, canvas, context, viewer):
        self.calls += 1
        self.result = self.function(canvas, context, viewer)


def square(canvas, color, x=0, y=0, half=10):
    """Draws a square of one colour."""
    canvas.set_vertex_color(color)
    canvas.begin_draw_quads()
    for dx, dy in ((-half, -half), (half, -half), (half, half), (-half, half)):
        canvas.vertex2d(x + dx, y + dy)
    canvas.end_draw_vertices()


def references(value):
    """Returns the reference count of an object of the component, or of one written in Python."""
    if isinstance(value, gllib.Object):
        pointer, functions = value._bind(0)
        functions[1](pointer)
        return functions[2](pointer)
    return value._references
