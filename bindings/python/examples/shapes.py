"""Makes shapes as arrays of vertices, normals and triangles, for Canvas.compile_arrays() and Canvas.draw_arrays()."""

import numpy as np


def grid(points, normals):
    """Returns vertices, normals and triangles of a grid. points and normals: shape (rows, columns, 3)."""
    rows, columns = points.shape[:2]
    corner = (np.arange(rows - 1)[:, None] * columns + np.arange(columns - 1)).reshape(-1, 1)
    triangles = np.concatenate([corner + [0, 1, columns + 1], corner + [0, columns + 1, columns]])
    flat = [np.ascontiguousarray(array, "float32").reshape(-1, 3) for array in (points, normals)]
    return *flat, triangles.astype("uint32")


def ball(radius, steps=48):
    """Returns a sphere around the origin."""
    u = np.linspace(0, 2 * np.pi, 2 * steps)
    v = np.linspace(-np.pi / 2, np.pi / 2, steps)[:, None]
    normals = np.stack(np.broadcast_arrays(np.cos(v) * np.cos(u), np.cos(v) * np.sin(u), np.sin(v)), -1)
    return grid(radius * normals, normals)


def ring(radius, thickness, steps=48):
    """Returns a torus around the z axis."""
    u = np.linspace(0, 2 * np.pi, 2 * steps)
    v = np.linspace(0, 2 * np.pi, steps)[:, None]
    normals = np.stack(np.broadcast_arrays(np.cos(v) * np.cos(u), np.cos(v) * np.sin(u), np.sin(v)), -1)
    centres = np.stack([np.cos(u), np.sin(u), 0 * u], -1)
    return grid(radius * centres + thickness * normals, normals)


def wave(size, height, steps=96):
    """Returns a rippled square, facing +z, with a colour for each vertex."""
    x, y = np.meshgrid(np.linspace(-size, size, steps), np.linspace(-size, size, steps))
    r = np.hypot(x, y)
    z = height * np.cos(6 * r / size)
    slope = -6 * height / size * np.sin(6 * r / size) / np.maximum(r, 1e-9)
    normals = np.stack([-slope * x, -slope * y, np.ones_like(x)], -1)
    warm = (z / height + 1)[..., None] / 2
    colors = warm * [1.0, 0.75, 0.3] + (1 - warm) * [0.15, 0.3, 0.6]
    return *grid(np.stack([x, y, z], -1), normals), colors.reshape(-1, 3).astype("float32")
