"""Compiles a mesh into a list from arrays, and draws it. ListHost.cpp does the same in C++.

    list_host.py MESH FRAMES

Prints milliseconds: the time of the compilation, the CPU time of its thread, the CPU time of the process per frame, and
then the time of each frame.
"""

import sys
import threading
import time

import gllib
import numpy


class MeshPainter(gllib.Painter):
    def __init__(self, points, triangles, frames):
        self.points, self.triangles, self.frames = points, triangles, frames
        self.list = 0
        self.starts = []
        self.done = threading.Event()

    def draw(self, canvas, context, viewer):
        start, thread, process = time.perf_counter(), time.thread_time(), time.process_time()
        if self.list == 0:
            self.list = canvas.compile_arrays(self.points, self.points, None, self.triangles)
            self.compilation = time.perf_counter() - start, time.thread_time() - thread
        canvas.draw_compiled_list(self.list)
        if len(self.starts) <= self.frames:
            self.starts.append(start)
            if len(self.starts) == 2:
                self.process_start = process
        elif not self.done.is_set():
            self.process_time = process - self.process_start
            self.done.set()


def main(path, frames):
    with open(path, "rb") as file:
        counts = numpy.fromfile(file, "u4", 2)
        points = numpy.fromfile(file, "f4", 3 * counts[0]).reshape(-1, 3)
        triangles = numpy.fromfile(file, "u4", 3 * counts[1]).reshape(-1, 3)
    painter = MeshPainter(points, triangles, int(frames))
    with gllib.Context() as context:
        context.initialize(0)
        context.set_viewport(0, 0, 640, 480)
        context.create_viewer(True, False).get_coord().set_origin3d(0, 0, 5)
        context.create_light().enable(True)
        context.set_controlled_draw_thread(True, 0)  # frames without pauses
        context.attach_painter(painter)
        painter.done.wait()
    painter.raise_pending()
    print(1000 * painter.compilation[0], 1000 * painter.compilation[1], 1000 * painter.process_time / painter.frames)
    for before, after in zip(painter.starts[1:], painter.starts[2:]):  # the first frame compiles
        print(1000 * (after - before))


if __name__ == "__main__":
    main(*sys.argv[1:])
