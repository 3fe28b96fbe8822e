"""Shows a model in a PyQt window. A click names and highlights the part under the mouse; a drag turns the model.

    python3 picking_qt.py

Needs python3-pyqt5 and python3-numpy, and an X11 display (under Wayland: QT_QPA_PLATFORM=xcb).
"""

import sys

import gllib
from PyQt5.QtCore import QPoint, QSize, Qt
from PyQt5.QtWidgets import QApplication, QMainWindow, QWidget

import shapes

PARTS = [  # name, colour, place, (vertices, normals, triangles)
    ("ring", (0.85, 0.55, 0.20), (0, 0, 0), shapes.ring(2.2, 0.45)),
    ("hub", (0.70, 0.72, 0.75), (0, 0, 0), shapes.ball(0.9)),
    ("left ball", (0.25, 0.55, 0.80), (-2.2, 0, 1.1), shapes.ball(0.6)),
    ("right ball", (0.40, 0.70, 0.35), (2.2, 0, 1.1), shapes.ball(0.6)),
]


class Model(gllib.Painter):
    """Draws each part from one list. The draw thread owns all attributes except marked."""

    def __init__(self):
        self.marked = None
        self.lists = [0] * len(PARTS)

    def draw(self, canvas, context, viewer):
        for number, (_, color, place, (vertices, normals, triangles)) in enumerate(PARTS):
            if not canvas.is_compiled_list(self.lists[number]):  # a new rendering context has no lists
                self.lists[number] = canvas.compile_arrays(vertices, normals, None, triangles)
            canvas.set_test_id(number + 1)
            canvas.set_vertex_color((1, 0.2, 0.2) if number == self.marked else color)
            canvas.push_modelview_matrix(False)
            canvas.translate(place)
            canvas.draw_compiled_list(self.lists[number])
            canvas.pop_modelview_matrix()


class Scene(QWidget):
    """A native window in which a context draws."""

    def __init__(self, picked):
        super().__init__()
        self.setAttribute(Qt.WA_NativeWindow)
        self.setAttribute(Qt.WA_PaintOnScreen)  # Qt paints nothing here
        self.setAttribute(Qt.WA_NoSystemBackground)
        self.picked = picked
        self.last = QPoint()
        self.moved = False

        window = int(self.winId())
        QApplication.sync()  # the component's own connection finds the window only if the server knows it
        self.model = Model()
        self.context = gllib.Context()
        self.context.initialize(window)
        self.context.set_background_color((0.13, 0.15, 0.18))
        self.viewer = self.context.create_viewer(True, False)
        self.eye = self.viewer.get_coord()
        self.eye.set_origin3d(0, 0, 14)
        self.eye.rotate_rad(0.7, (1, 0, 0), (0, 0, -14))
        light = self.context.create_light()
        light.attach_coord(self.eye)
        light.set_as_spotlight(False)
        light.enable(True)
        self.context.attach_painter(self.model)
        self.context.set_controlled_draw_thread(True, 0xFFFFFFFF)  # frames on demand

    def pixels(self, size):
        return size * self.devicePixelRatioF()

    def pick(self, place):
        """Returns the number of the part at a position in the widget; None if there is none."""
        point = (2 * place.x() / self.width() - 1, 1 - 2 * place.y() / self.height())
        found = self.context.select(self.viewer, point, closest=True)
        return found[0] - 1 if found else None

    def show_changes(self):
        self.context.trigger_draw_thread()
        self.context.raise_pending()  # an exception of an earlier draw

    def resizeEvent(self, event):
        size = self.pixels(event.size())
        self.context.set_viewport(0, 0, size.width(), size.height())
        self.show_changes()

    def mousePressEvent(self, event):
        self.last, self.moved = event.pos(), False

    def mouseMoveEvent(self, event):
        step, self.last, self.moved = event.pos() - self.last, event.pos(), True
        self.eye.rotate_rad(-0.01 * step.x(), (0, 1, 0), (0, 0, -14))
        self.eye.rotate_rad(-0.01 * step.y(), (1, 0, 0), (0, 0, -14))
        self.show_changes()

    def mouseReleaseEvent(self, event):
        if not self.moved:
            self.model.marked = self.pick(event.pos())
            self.picked(PARTS[self.model.marked][0] if self.model.marked is not None else "nothing")
            self.show_changes()

    def paintEngine(self):
        return None

    def sizeHint(self):
        return QSize(640, 480)


class Window(QMainWindow):
    def __init__(self):
        super().__init__()
        self.setWindowTitle("Picking")
        self.scene = Scene(self.statusBar().showMessage)
        self.setCentralWidget(self.scene)
        self.statusBar().showMessage("Click a part; drag to turn")

    def closeEvent(self, event):
        self.scene.context.close()  # before Qt destroys its window
        super().closeEvent(event)


def main():
    application = QApplication(sys.argv)
    window = Window()
    window.show()
    return application.exec_()


if __name__ == "__main__":
    sys.exit(main())
