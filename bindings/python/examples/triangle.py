"""Draws a triangle, takes a picture of the next frame, and prints the colour in its middle: 255 102 0."""
import gllib

class Triangle(gllib.Painter):
    def draw(self, canvas, context, viewer):
        canvas.set_vertex_color((1.0, 0.4, 0.0))
        canvas.begin_draw_triangles()
        for x, y in (-40, -40), (40, -40), (0, 40):
            canvas.vertex2d(x, y)
        canvas.end_draw_vertices()

with gllib.Context() as context:
    context.initialize(0)  # 0: no parent; else the id of an X11 window
    context.set_viewport(0, 0, 640, 480)
    context.enable_lighting(False)
    context.create_viewer(True, True)
    context.attach_painter(Triangle())
    snapshot = gllib.Capture()
    context.attach_capture(snapshot)
    print(*snapshot.request().result(timeout=30).get_pixel(320, 240)[:3])
