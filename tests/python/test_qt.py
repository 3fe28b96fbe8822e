"""The PyQt example that picks. Qt sends it mouse events and reads the screen. Needs Xvfb."""

import os
import subprocess
import sys
import time
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(os.environ["GLLIB_SOURCE_DIR"]) / "bindings/python/examples"))


class Picking(unittest.TestCase):
    """Uses a separate X server. The component keeps its display, so no other test runs in this process."""

    @classmethod
    def setUpClass(cls):
        reader, writer = os.pipe()
        command = ["Xvfb", "-displayfd", str(writer), "-screen", "0", "1000x800x24", "-nolisten", "tcp"]
        cls.server = subprocess.Popen(command, pass_fds=[writer], stderr=subprocess.DEVNULL)
        cls.addClassCleanup(cls.server.wait)
        cls.addClassCleanup(cls.server.terminate)
        os.close(writer)
        with os.fdopen(reader) as number:
            os.environ["DISPLAY"] = ":" + number.readline().strip()
        os.environ.update(GLLIB_DISPLAY="x11", QT_QPA_PLATFORM="xcb")
        from PyQt5.QtWidgets import QApplication

        cls.application = QApplication(["test"])
        import picking_qt

        cls.example = picking_qt

    def settle(self, condition):
        """Runs the event loop until a condition is true, for at most a minute."""
        end = time.monotonic() + 60
        while not condition() and time.monotonic() < end:
            self.application.processEvents()
            time.sleep(0.01)
        self.assertTrue(condition())

    def pixel(self, scene, place):
        """Returns the pixel of the screen at a place of the widget."""
        color = self.application.primaryScreen().grabWindow(int(scene.winId())).toImage().pixelColor(place)
        return color.red(), color.green(), color.blue()

    def test_a_click_names_and_marks_the_part_and_a_drag_turns_the_model(self):
        from PyQt5.QtCore import QEvent, QPoint, Qt
        from PyQt5.QtGui import QMouseEvent
        from PyQt5.QtTest import QTest

        window = self.example.Window()
        window.show()
        scene = window.scene
        self.settle(lambda: window.isVisible() and scene.width() >= 600)
        middle = QPoint(scene.width() // 2, scene.height() // 2)
        self.settle(lambda: min(self.pixel(scene, middle)) > 90)  # the grey hub
        QTest.mouseClick(scene, Qt.LeftButton, pos=middle)
        self.assertEqual(window.statusBar().currentMessage(), "hub")
        self.settle(lambda: self.pixel(scene, middle)[0] > 2 * self.pixel(scene, middle)[1])
        found = {scene.pick(QPoint(x, y)) for x in range(20, scene.width(), 30) for y in range(20, scene.height(), 40)}
        self.assertEqual(found, {None, 0, 1, 2, 3})
        QTest.mouseClick(scene, Qt.LeftButton, pos=QPoint(5, 5))
        self.assertEqual(window.statusBar().currentMessage(), "nothing")
        before = scene.eye.get_matrix6d()
        QTest.mousePress(scene, Qt.LeftButton, pos=middle)
        moved = QMouseEvent(QEvent.MouseMove, middle + QPoint(40, 10), Qt.NoButton, Qt.LeftButton, Qt.NoModifier)
        self.application.sendEvent(scene, moved)  # QTest moves only the cursor, without a button
        QTest.mouseRelease(scene, Qt.LeftButton, pos=middle + QPoint(40, 10))
        self.assertEqual(window.statusBar().currentMessage(), "nothing", "a drag is not a click")
        self.assertNotEqual(scene.eye.get_matrix6d(), before)
        window.close()
        scene.model.raise_pending()
