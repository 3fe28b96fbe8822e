"""A host in Python: values, errors, picking, references, and exit of the interpreter. Headless display."""

import copy
import gc
import pathlib
import pickle
import subprocess
import sys
import textwrap
import threading
import unittest

import gllib
import numpy
from scene import Drawing, Scene, references, square


class Values(unittest.TestCase):
    def test_sequences_convert_to_structures(self):
        coord = gllib.Coord()
        coord.set_origin((1, 2, 3))
        self.assertEqual(coord.get_origin(), (1, 2, 3))
        self.assertEqual(coord.point_lcs_to_pcs([1, 0, 0]), (2, 2, 3))
        columns = [(1, 0, 0, 0), (0, 1, 0, 0), (0, 0, 1, 0), (4, 5, 6, 1)]
        coord.set_matrix16d(columns)
        self.assertEqual([list(column) for column in coord.get_matrix16d().m], [list(column) for column in columns])
        attributes = gllib.DrawAttr()
        attributes.set_color((0.25, 0.5, 1))
        self.assertEqual(attributes.get_color(), (0.25, 0.5, 1, 1))
        attributes.enable_draw_mode(gllib.DrawMode.SHOW_BACK, True)
        self.assertIs(attributes.is_draw_mode_enabled(gllib.DrawMode.SHOW_BACK), True)
        with self.assertRaises(ValueError):
            coord.set_origin((1, 2))

    def test_text_is_converted_both_ways(self):
        context = gllib.Context()
        for face in ("DejaVu Sans", "", "Grüße", "10 €"):
            font = context.create_raster_font(face, 0, 400, 0, 16, 0)
            self.assertEqual(font.get_face(), face)

    def test_buffers_and_sequences_fill_arrays(self):
        pixmap = gllib.Pixmap()
        pixmap.initialize(2, 1)
        for pixels in (bytes([1, 2, 3, 4, 5, 6, 7, 8]), [(1, 2, 3, 4), gllib.Rgba4b(5, 6, 7, 8)]):
            pixmap.initialize(2, 1)
            pixmap.set_pixels(pixels)
            self.assertEqual([pixmap.get_pixel(x, 0) for x in (0, 1)], [(1, 2, 3, 4), (5, 6, 7, 8)])
        pixmap.scale_color256([2.0] * 256)
        self.assertEqual(pixmap.get_pixel(0, 0), (2, 4, 6, 4))
        for wrong in (b"\0" * 5, numpy.zeros((2, 2, 2), "u1")):
            with self.assertRaises(ValueError):
                pixmap.set_pixels(wrong)
        for pixels in (numpy.full((1, 2, 3), 9, "u1"), numpy.full((2, 3), 9, "u1")):
            pixmap.set_pixels(pixels)
            self.assertEqual([pixmap.get_pixel(x, 0) for x in (0, 1)], [(9, 9, 9, 255)] * 2, "without alpha")
        with self.assertRaises(gllib.Failed):
            pixmap.load_image_file(pathlib.Path("/no/such/file"))

    def test_a_picture_is_copied_from_array_to_array(self):
        source, copy = gllib.Pixmap(), gllib.Pixmap()
        for pixmap in (source, copy):
            pixmap.initialize(5, 3)
        source.array()[:] = numpy.arange(60).reshape(3, 5, 4)
        copy.set_pixels(source.array())
        numpy.testing.assert_array_equal(copy.array(), source.array())


class Failures(unittest.TestCase):
    def test_results_become_exceptions(self):
        context, fog, empty = gllib.Context(), gllib.Fog(), gllib.Collection()
        viewer = context.create_viewer(True, False)
        for error, hresult, operation in (
            (gllib.BadState, 0x800400C9, context.trigger_draw_thread),
            (gllib.BadValue, 0x800400C8, lambda: fog.set_fog_density(-1)),
            (gllib.InvalidArgument, 0x80070057, lambda: fog.set_fog_color(None)),
            (gllib.Failed, 0x80004005, empty.get_first),
            (gllib.NoInterface, 0x80004002, lambda: viewer.query(gllib.Fog)),
        ):
            with self.assertRaises(error) as caught:
                operation()
            self.assertEqual(caught.exception.hresult, hresult)
        with self.assertRaisesRegex(gllib.GLError, "IGLFog::SetFogDensity"):
            fog.set_fog_density(-1)

    def test_objects_of_another_class_and_closed_ones_are_refused(self):
        context, painter = gllib.Context(), gllib.Painter()
        for wrong in (gllib.Fog(), painter, 17, "viewer"):
            with self.assertRaises(TypeError):
                context.destroy_viewer(wrong)
        with self.assertRaisesRegex(TypeError, "IGLContext::SetViewport"):
            context.set_viewport(0, 0, "640", 480)
        context.close()
        with self.assertRaises(ReferenceError):
            context.create_light()
        self.assertEqual(context, context)
        self.assertNotEqual(context, gllib.Context())

    def test_copies_are_refused(self):
        for value in (gllib.Context(), gllib.Painter()):
            for duplicate in (copy.copy, copy.deepcopy, pickle.dumps):
                with self.assertRaisesRegex(TypeError, "cannot be copied"):
                    duplicate(value)


class References(unittest.TestCase):
    def test_lent_and_counted_objects_hold_one_reference_each(self):
        context = gllib.Context()
        viewer, light, font = context.create_viewer(1, 1), context.create_light(), context.create_system_font()
        context.set_default_font(font)
        made = [viewer, light, font, context.create_raster_font("", 0, 0, 0, 0, 0),
                context.create_true_type_font("", 0, 0, 0, 0), context.create_internal_font("HAND")]
        self.assertEqual([references(value) for value in made], [2] * 6, "one reference of the context, one of the host")
        canvas, attributes, material = context.get_canvas(), gllib.DrawAttr(), gllib.Material()
        canvas.set_draw_attributes(attributes)
        canvas.set_material(material)
        everything = gllib.Collection()
        everything.add(attributes)
        for again in (context.get_fog, context.get_canvas, context.get_default_font, viewer.get_coord, light.get_coord,
                      canvas.get_draw_attributes, canvas.get_material, lambda: everything.get_first()[1]):
            first = again()
            before = references(first)
            second = again()
            self.assertEqual(references(first), before + 1, again)
            self.assertEqual(first, second)
            del second
            self.assertEqual(references(first), before, again)

    def test_the_end_of_an_object_releases_its_references(self):
        coord = gllib.Coord()
        with gllib.Context() as context:
            light = context.create_light()
            light.attach_coord(coord)
            self.assertEqual(references(coord), 2)
            context.destroy_light(light)
            del light
            self.assertEqual(references(coord), 1)
        self.assertEqual(references(coord), 1)

    def test_the_component_keeps_a_painter_alive(self):
        scene = Scene(Drawing(lambda canvas, *_: square(canvas, (1, 0, 0))))
        gc.collect()
        with scene:
            self.assertEqual(scene.picture().get_pixel(100, 100), (255, 0, 0, 255))
            ended = threading.Event()
            painter = Drawing(lambda *_: None)
            painter.guard = type("Guard", (), {"__del__": lambda self: ended.set()})()
            scene.context.attach_painter(painter)
            scene.context.suspend_draw_thread()  # it holds further references while it draws
            self.assertEqual(references(painter), 1)
            scene.context.resume_draw_thread()
            del painter
            self.assertFalse(ended.is_set())
            scene.context.detach_painter()
            self.assertTrue(ended.wait(60))  # the draw thread may release the last reference

    def test_collections_hold_objects_of_both_kinds(self):
        context, gauges, all_ = gllib.Context(), [gllib.Gauge(), gllib.Gauge()], gllib.Collection()
        viewer = context.create_viewer(True, True)
        for gauge in gauges:
            viewer.add_gauge(gauge)
        viewer.enum_gauges(all_)
        self.assertEqual(set(map(id, all_)), set(map(id, gauges)), "a gauge is returned as the same object")
        self.assertEqual([references(gauge) for gauge in gauges], [2, 2])
        context.enum_viewers(all_)
        self.assertEqual(list(all_.members(gllib.Viewer)), [viewer])
        self.assertTrue(all_.has(viewer))
        self.assertEqual(len(all_), 1)


class Picking(unittest.TestCase):
    def test_finds_parts_at_a_point_and_in_a_box(self):
        def draw(canvas, *_):
            for number, x in ((7, -25), (8, 25), (9, 25)):
                canvas.set_test_id(number)
                square(canvas, (1, 1, 1), x=x)

        with Scene(Drawing(draw)) as scene:
            select = scene.context.select
            self.assertEqual(select(scene.viewer, (-0.5, 0)), [7])
            self.assertEqual(sorted(select(scene.viewer, (0.5, 0))), [8, 9])
            self.assertEqual(len(select(scene.viewer, (0.5, 0), closest=True)), 1)
            self.assertEqual(sorted(set(select(scene.viewer, (-1, -1), (1, 1)))), [7, 8, 9])
            self.assertEqual(select(scene.viewer, (-1, -1), (-0.5, 1), enclosed=True), [], "it crosses the edge")
            self.assertEqual(select(scene.viewer, (0, 0)), [])
            other = gllib.Context().create_viewer(True, True)
            with self.assertRaises(gllib.InvalidArgument):
                select(other, (0, 0))


class Exit(unittest.TestCase):
    def run_host(self, end):
        """A host that exits while its painter draws. The process must end."""
        program = textwrap.dedent("""
            import gllib, sys, threading
            drawn = threading.Event()
            class Painter(gllib.Painter):
                def draw(self, canvas, context, viewer):
                    drawn.set()
                    self.sum = sum(range(2000000))
            context = gllib.Context()
            context.initialize(0)
            context.set_draw_thread_pars(0, 5, 5)
            context.create_viewer(True, True)
            painter = Painter()
            context.attach_painter(painter)
            drawn.wait(30)
            """)
        return subprocess.run([sys.executable, "-c", program + end], capture_output=True, text=True, timeout=120)

    def test_the_interpreter_ends_while_contexts_draw(self):
        for end in ("", "painter.context = context", "del context", "sys.exit(0)"):
            result = self.run_host(end)
            self.assertEqual((result.returncode, result.stderr), (0, ""), end)

    def test_painters_keep_their_objects_until_drawing_has_ended(self):
        end = """
            class Attributed(Painter):
                def draw(self, canvas, context, viewer):
                    super().draw(canvas, context, viewer)
                    canvas.set_draw_attributes(look)
            look = gllib.DrawAttr()
            context = gllib.Context()
            context.initialize(0)
            context.create_viewer(True, True)
            drawn.clear()
            context.attach_painter(Attributed())
            drawn.wait(30)
            """
        result = self.run_host(textwrap.dedent(end))
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def test_the_interpreter_ends_while_daemon_threads_use_contexts(self):
        select = "context.select(viewer, (0, 0))"
        create = "c = gllib.Context(); c.initialize(0); c.create_viewer(True, True); c.attach_painter(Painter()); c.close()"
        for work in (select, create):
            end = f"""
                Painter.draw = lambda *_: drawn.set()
                viewer = context.create_viewer(True, True)
                def work():
                    try:
                        while True:
                            {work}
                    except (gllib.BadState, ReferenceError, RuntimeError):
                        pass  # contexts end with the interpreter
                for _ in range(3):
                    threading.Thread(target=work, daemon=True).start()
                drawn.clear()
                drawn.wait(30)
                """
            for _ in range(5):
                result = self.run_host(textwrap.dedent(end))
                self.assertEqual((result.returncode, result.stderr), (0, ""), work)

    def test_an_exception_that_is_not_raised_is_printed(self):
        end = "Painter.draw = lambda *_: 1 / 0\ncontext.attach_painter(p := Painter())\nimport time\n" \
              "while p.error is None: time.sleep(0.01)"
        result = self.run_host(end)
        self.assertEqual(result.returncode, 0)
        self.assertIn("ZeroDivisionError", result.stderr)
