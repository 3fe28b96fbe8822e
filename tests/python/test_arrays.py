"""Lists from NumPy arrays, and pixmaps as NumPy arrays."""

import gc
import unittest

import gllib
import numpy
from scene import Drawing, Scene, references

CORNERS = [(-20, -20, 0), (20, -20, 0), (20, 20, 0), (-20, 20, 0)]
COLORS = [(1, 0, 0), (0, 1, 0), (0, 0, 1), (1, 1, 0)]
TRIANGLES = [(0, 1, 2), (0, 2, 3)]


class Lists(unittest.TestCase):
    def picture_of(self, draw):
        painter = Drawing(draw)
        with Scene(painter) as scene:
            picture = scene.picture().array().copy()
            scene.context.detach_painter()
            painter.raise_pending()
        return picture

    def by_vertices(self, canvas, *_):
        canvas.begin_draw_triangles()
        for triangle in TRIANGLES:
            for corner in triangle:
                canvas.set_vertex_color(COLORS[corner])
                canvas.vertex3d(*CORNERS[corner])
        canvas.end_draw_vertices()

    def test_arrays_of_all_kinds_draw_what_single_vertices_draw(self):
        expected = self.picture_of(self.by_vertices)
        self.assertGreater((expected[..., :3] > 0).any(axis=-1).sum(), 6000)
        record = numpy.zeros(4, [("p", "f8", 3), ("gap", "i4"), ("c", "f4", 4)])
        record["p"], record["c"][:, :3], record["c"][:, 3] = CORNERS, COLORS, 1
        wide = numpy.zeros((4, 6))
        wide[:, ::2] = CORNERS
        bytes_ = (numpy.array(COLORS) * 255).astype("uint8")
        for vertices, colors, indices, options in (
            (CORNERS, COLORS, TRIANGLES, {}),
            (record["p"], record["c"], numpy.array(TRIANGLES, "uint16"), {}),
            (wide[:, ::2], bytes_, numpy.array(TRIANGLES, "int64"), {}),
            (numpy.array(CORNERS, ">f4")[:, :2], numpy.array(COLORS, "f4"), numpy.array(TRIANGLES, "u1").ravel(), {}),
            (numpy.array(CORNERS, "i4")[[0, 1, 2, 0, 2, 3]], numpy.array(COLORS)[[0, 1, 2, 0, 2, 3]], None, {}),
            (CORNERS, COLORS, None, {"mode": gllib.Primitive.TRIANGLE_FAN}),
        ):
            for compiled in (False, True):
                def draw(canvas, *_):
                    if compiled:
                        canvas.draw_compiled_list(canvas.compile_arrays(vertices, None, colors, indices, **options))
                    else:
                        canvas.draw_arrays(vertices, None, colors, indices, **options)

                numpy.testing.assert_array_equal(self.picture_of(draw), expected)

    def test_normals_are_lit(self):
        def draw(canvas, *_):
            canvas.set_vertex_color((1, 1, 1))
            canvas.draw_arrays(CORNERS, normals=[(0, 0, 1)] * 2 + [(1, 0, 0)] * 2, indices=TRIANGLES)

        painter = Drawing(draw)
        with Scene(painter) as scene:
            scene.context.enable_lighting(True)
            light = scene.context.create_light()
            light.set_as_spotlight(False)
            light.enable(True)
            picture = scene.picture().array()
            self.assertGreater(int(picture[135, 100, 0]), int(picture[65, 100, 0]) + 50)
            scene.context.raise_pending()

    def test_wrong_arrays_are_refused_and_leave_no_list(self):
        wrong = [
            ((CORNERS[0],), {}), ((numpy.zeros((4, 4)),), {}), ((CORNERS, [(0, 0, 1)]), {}), ((CORNERS, None, [(1, 1)] * 4), {}),
            ((CORNERS, None, None, [0, 1, 4]), {}), ((CORNERS, None, None, [-1, 0, 1]), {}),
            ((CORNERS, None, None, [0.0, 1.0]), {}), ((CORNERS,), {"texture_coords": [(0, 0)] * 3}),
            ((CORNERS,), {"mode": "lines"}), ((CORNERS,), {"mode": 10}),
        ]
        refused = []

        def draw(canvas, *_):
            refused.clear()
            before = canvas.compile_arrays(CORNERS)
            for arguments, options in wrong:
                with self.assertRaises(ValueError):
                    canvas.compile_arrays(*arguments, **options)
                refused.append(arguments)
            after = canvas.compile_arrays(CORNERS)
            kept = [number for number in range(before, after + 1) if canvas.is_compiled_list(number)]
            self.assertEqual(kept, [before, after], "the list of a refused array is deleted")
            for number in kept:
                canvas.delete_compiled_list(number)

        self.picture_of(draw)
        self.assertEqual(len(refused), len(wrong))


class Pixmaps(unittest.TestCase):
    def test_array_is_a_view_of_the_pixels_top_row_first(self):
        pixmap = gllib.Pixmap()
        pixmap.initialize(3, 2, (1, 2, 3, 4))
        pixmap.set_pixel(2, 0, (9, 8, 7, 6))
        array = pixmap.array()
        self.assertEqual(array.shape, (2, 3, 4))
        self.assertEqual(array[0, 2].tolist(), [9, 8, 7, 6])
        array[1, 0] = (50, 60, 70, 80)
        self.assertEqual(pixmap.get_pixel(0, 1), (50, 60, 70, 80))
        pixmap.make_negative(False)
        self.assertEqual(array[1, 0].tolist(), [205, 195, 185, 80])

    def test_array_pins_the_pixels(self):
        pixmap = gllib.Pixmap()
        with self.assertRaises(gllib.BadValue):
            pixmap.array()
        pixmap.initialize(4, 4, (7, 7, 7, 7))
        part = pixmap.array()[1:3, :, 0]
        for move in (lambda: pixmap.initialize(400, 400), lambda: pixmap.load_image_file("x"),
                     lambda: pixmap.keep().initialize(400, 400), lambda: gllib.Capture().request(pixmap)):
            with self.assertRaises(BufferError):
                move()
        again = pixmap.keep()
        pixmap.close()
        self.assertEqual(references(again), 2, "one reference of the array")
        self.assertEqual(part.tolist(), [[7] * 4] * 2)
        del part
        gc.collect()
        self.assertEqual(references(again), 1)
        again.initialize(400, 400)
