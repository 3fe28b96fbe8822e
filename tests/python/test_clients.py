"""Painters, gauges and captures: arguments, exceptions and pictures. Headless display."""

import concurrent.futures
import ctypes
import gc
import threading
import unittest

import gllib
from scene import SIZE, Drawing, Scene, square

RED, GREEN = (255, 0, 0, 255), (0, 255, 0, 255)


class Painters(unittest.TestCase):
    def test_arguments_are_valid_until_draw_returns(self):
        seen = []

        def draw(canvas, context, viewer):
            seen[:] = [canvas, context, viewer, viewer.keep(), threading.get_ident()]
            return context == scene.context, viewer == scene.viewer, canvas == context.get_canvas()

        with Scene() as scene:
            painter = Drawing(draw)
            scene.context.attach_painter(painter)
            scene.wait_for_frames()
            scene.context.detach_painter()
            self.assertEqual(painter.result, (True, True, True))
            self.assertNotEqual(seen[4], threading.get_ident())
            for lent in seen[:3]:
                with self.assertRaises(ReferenceError):
                    lent.address
            self.assertEqual(seen[3], scene.viewer)
            seen.clear()

    def test_an_exception_is_kept_until_it_is_raised(self):
        def draw(*_):
            raise KeyError("first" if painter.calls == 1 else "later")

        with Scene() as scene, Scene() as other:
            painter = Drawing(draw)
            scene.context.attach_painter(painter)
            scene.wait_for_frames()
            self.assertGreater(painter.calls, 1, "the context continues to draw")
            other.context.raise_pending()
            self.assertEqual(painter.error.args, ("first",))
            with self.assertRaisesRegex(KeyError, "first"):
                scene.context.raise_pending()
            scene.wait_for_frames()
            with self.assertRaisesRegex(KeyError, "later"):
                painter.raise_pending()
            scene.context.detach_painter()
            painter.report_error = lambda: None  # drops later exceptions

    def test_an_exception_ends_open_lists_and_stacks(self):
        def draw(canvas, *_):
            found = []
            # The open list, and the depths of the model-view, projection and attribute stacks.
            for name in (0x0B33, 0x0BA3, 0x0BA4, 0x0BB0):
                number = ctypes.c_int(-1)
                opengl.glGetIntegerv(name, ctypes.byref(number))
                found.append(number.value)
            states.append(found)
            if len(states) < 5:
                canvas.push_depth_attribute()
                canvas.push_modelview_matrix(True)
                canvas.push_light_attribute()
                canvas.push_modelview_matrix(False)
                canvas.push_projection_matrix(True)
                canvas.begin_compile_list()
                canvas.push_modelview_matrix(True)
                canvas.begin_draw_triangles()
                canvas.vertex2d(0, 0)
                raise RuntimeError
            square(canvas, (0, 1, 0))

        states, opengl = [], ctypes.CDLL("libOpenGL.so.0")
        with Scene(painter := Drawing(draw)) as scene:
            while len(states) < 5:
                scene.wait_for_frames()
            self.assertEqual(scene.picture().get_pixel(100, 100), GREEN)
            scene.context.detach_painter()
            self.assertEqual(states[0][0], 0)
            self.assertEqual([state for state in states if state != states[0]], [])
            with self.assertRaises(RuntimeError):
                painter.raise_pending()

    def test_an_exception_does_not_keep_the_context(self):
        def draw(canvas, context, viewer):
            raise RuntimeError(context)

        painter = Drawing(draw)
        with Scene(painter) as scene:
            scene.wait_for_frames()
            fog = scene.context.get_fog()
        gc.collect()
        self.assertEqual(painter._references, 0, "the context has ended and released its painter")
        fog.close()
        with self.assertRaises(RuntimeError):
            painter.raise_pending()


class Gauges(unittest.TestCase):
    def test_are_drawn_over_the_scene_while_visible(self):
        class Bar(gllib.Gauge):
            def draw(self, canvas, context):
                canvas.push_depth_attribute()
                square(canvas, (1, 0, 0), half=0.5)
                canvas.pop_depth_attribute()

        with Scene(Drawing(lambda canvas, *_: square(canvas, (0, 1, 0)))) as scene:
            gauge = Bar()
            scene.viewer.add_gauge(gauge)
            scene.viewer.show_gauges(True)
            self.assertEqual(scene.picture().get_pixel(100, 100), RED)
            gauge.visible = False
            self.assertEqual(scene.picture().get_pixel(100, 100), GREEN)
            scene.context.raise_pending()


class Captures(unittest.TestCase):
    def test_zoom_of_a_part_with_a_background(self):
        with Scene(Drawing(lambda canvas, *_: square(canvas, (1, 0, 0)))) as scene:
            request = {"x": 90, "y": 70, "width": 20, "height": 20, "zoom": 2, "background": (0, 1, 0)}
            picture = scene.capture.request(**request).result(timeout=60)
            self.assertEqual((picture.get_width(), picture.get_height()), (40, 40))
            self.assertEqual([picture.get_pixel(20, y) for y in (2, 38)], [GREEN, RED])
            mine = gllib.Pixmap()
            self.assertIs(scene.capture.request(mine).result(timeout=60), mine)
            self.assertEqual(mine.get_width(), SIZE)

    def test_failed_and_cancelled_requests_end_the_wait(self):
        class Listening(gllib.Capture):
            def on_data(self, success):
                answers.append(success)
                raise LookupError

        answers, capture = [], Listening()
        replaced, waiting = capture.request(), capture.request(x=SIZE + 1)
        self.assertTrue(replaced.cancelled())
        with Scene() as scene:
            scene.context.attach_capture(capture)
            with self.assertRaises(gllib.Failed):
                waiting.result(timeout=60)
            self.assertEqual(answers, [False])
            with self.assertRaises(LookupError):
                scene.context.raise_pending()
            scene.context.suspend_draw_thread()
            withdrawn, late = capture.request(), None
            self.assertTrue(withdrawn.cancel())
            scene.context.resume_draw_thread()
            scene.context.suspend_draw_thread()
            late = capture.request()
        with self.assertRaises(concurrent.futures.CancelledError):
            late.result(timeout=60)

    def test_a_request_is_served_after_the_host_has_closed_its_pixmap(self):
        with Scene() as scene:
            scene.context.suspend_draw_thread()
            requests = []
            for _ in range(2):
                with gllib.Pixmap() as pixmap:
                    requests.append(scene.capture.request(pixmap))
            scene.context.resume_draw_thread()
            self.assertTrue(requests[0].cancelled(), "replaced")
            self.assertIs(requests[1].result(timeout=60), pixmap)
            scene.context.raise_pending()
