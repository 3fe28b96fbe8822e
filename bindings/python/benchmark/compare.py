#!/usr/bin/python3
"""Lists from arrays in Python beside lists vertex by vertex in C++: the same 69,000 triangles, turn and turn about.

    compare.py LIST_HOST [ROUNDS]      LIST_HOST: the program of ListHost.cpp

Prints the times of the compilation and of a frame for both, and the ratio of the frame times: medians, and the fastest
tenth, which other programs disturb less.
"""

import statistics
import subprocess
import sys
import tempfile
from pathlib import Path

import numpy

FRAMES = 200
ROWS, COLUMNS = 186, 186  # a ball of 2 * 186 * 186 triangles, of which 69,000 are taken


def write_mesh(path):
    u = numpy.linspace(0, 2 * numpy.pi, COLUMNS + 1)
    v = numpy.linspace(-numpy.pi / 2, numpy.pi / 2, ROWS + 1)[:, None]
    points = numpy.stack(
        numpy.broadcast_arrays(numpy.cos(v) * numpy.cos(u), numpy.cos(v) * numpy.sin(u), numpy.sin(v)), -1
    ).reshape(-1, 3)
    corner = (numpy.arange(ROWS)[:, None] * (COLUMNS + 1) + numpy.arange(COLUMNS)).reshape(-1, 1)
    width = COLUMNS + 1
    triangles = numpy.concatenate([corner + [0, 1, width + 1], corner + [0, width + 1, width]])[:69000]
    with open(path, "wb") as file:
        numpy.array([len(points), len(triangles)], "u4").tofile(file)
        points.astype("f4").tofile(file)
        triangles.astype("u4").tofile(file)


def main(program, rounds=5):
    hosts = {"C++": [program], "Python": [sys.executable, str(Path(__file__).with_name("list_host.py"))]}
    compilations, frames = {name: [] for name in hosts}, {name: [] for name in hosts}
    with tempfile.NamedTemporaryFile() as mesh:
        write_mesh(mesh.name)
        for _ in range(int(rounds)):
            for name, command in hosts.items():
                output = subprocess.run([*command, mesh.name, str(FRAMES)], check=True, capture_output=True, text=True)
                first, *rest = map(float, output.stdout.split())
                compilations[name].append(first)
                frames[name] += rest
    middle = {name: statistics.median(times) for name, times in frames.items()}
    fast = {name: statistics.quantiles(times, n=10)[0] for name, times in frames.items()}
    for name, times in compilations.items():
        print(f"{name}: compiled in {statistics.median(times):.1f} ms (fastest {min(times):.1f}), ", end="")
        print(f"a frame takes {middle[name]:.2f} ms (fastest tenth {fast[name]:.2f})")
    ratios = [times["Python"] / times["C++"] for times in (middle, fast)]
    print(f"frame time, Python to C++: {ratios[0]:.3f} (fastest tenth {ratios[1]:.3f})")


if __name__ == "__main__":
    main(*sys.argv[1:])
