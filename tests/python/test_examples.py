"""The Python examples that need no display: output and pictures."""

import base64
import os
import subprocess
import sys
import unittest
from pathlib import Path

import nbclient
import nbformat
import numpy
from PyQt5.QtGui import QImage

EXAMPLES = Path(os.environ["GLLIB_SOURCE_DIR"]) / "bindings/python/examples"


def pixels_of(data):
    """Returns the pixels of a PNG file, as rows of red, green and blue."""
    image = QImage.fromData(data).convertToFormat(QImage.Format_RGB888)
    rows = numpy.frombuffer(image.constBits().asarray(image.sizeInBytes()), "u1").reshape(image.height(), -1)
    return rows[:, : 3 * image.width()].reshape(image.height(), image.width(), 3).copy()


class Examples(unittest.TestCase):
    def test_triangle_prints_the_colour_in_its_middle(self):
        program = EXAMPLES / "triangle.py"
        result = subprocess.run([sys.executable, "-B", program], capture_output=True, text=True, timeout=120)
        self.assertEqual((result.stdout, result.stderr), ("255 102 0\n", ""))

    def test_notebook_shows_two_pictures_of_its_surface(self):
        notebook = nbformat.read(EXAMPLES / "picture.ipynb", 4)
        nbclient.NotebookClient(notebook, timeout=120, resources={"metadata": {"path": str(EXAMPLES)}}).execute()
        outputs = [output for cell in notebook.cells for output in cell.get("outputs", [])]
        files = [base64.b64decode(o.data["image/png"]) for o in outputs if "image/png" in o.get("data", {})]
        pictures = [pixels_of(file) for file in files]
        self.assertEqual([picture.shape for picture in pictures], [(800, 1280, 3)] * 2)
        for picture in pictures:
            surface = (picture != 255).any(axis=-1)
            self.assertTrue(0.15 < surface.mean() < 0.8, surface.mean())
            self.assertGreater(len(numpy.unique(picture[surface][:, 0])), 50, "it is shaded")
        self.assertTrue((pictures[0] != pictures[1]).any())
