#!/usr/bin/python3
"""Compares a list compiled from arrays in Python with one compiled vertex by vertex in C++. Both have the same 69,000
triangles, and their runs alternate.

    compare.py LIST_HOST [ROUNDS]      LIST_HOST: the program of ListHost.cpp

Prints medians for both, and their ratios. The compilation is measured by the clock and by the CPU time of its thread. A
frame is measured by the clock, also for the fastest tenth of the frames, and by the CPU time of the process. Other
programs disturb the last two less.
"""

import statistics
import subprocess
import sys
import tempfile
from pathlib import Path

import numpy

FRAMES = 100
ROWS, COLUMNS = 186, 186  # a sphere of 2 * 186 * 186 triangles; 69,000 of them are used


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
    totals, frames = {name: [] for name in hosts}, {name: [] for name in hosts}
    with tempfile.NamedTemporaryFile() as mesh:
        write_mesh(mesh.name)
        for _ in range(int(rounds)):
            for name, command in hosts.items():
                output = subprocess.run([*command, mesh.name, str(FRAMES)], check=True, capture_output=True, text=True)
                times = [float(word) for word in output.stdout.split()]
                totals[name].append(times[:3])
                frames[name] += times[3:]
    print(f"{'ms':8}{'compilation':>12}{'its thread':>12}{'frame':>8}{'fastest tenth':>15}{'CPU time':>11}")
    rows = {}
    for name in hosts:
        wall, thread, processor = (statistics.median(column) for column in zip(*totals[name]))
        fast = statistics.quantiles(frames[name], n=10)[0]
        rows[name] = wall, thread, statistics.median(frames[name]), fast, processor
    rows["ratio"] = [python / cpp for python, cpp in zip(rows["Python"], rows["C++"])]
    for name, row in rows.items():
        print(f"{name:8}" + "".join(f"{value:{width}.2f}" for value, width in zip(row, (12, 12, 8, 15, 11))))


if __name__ == "__main__":
    main(*sys.argv[1:])
