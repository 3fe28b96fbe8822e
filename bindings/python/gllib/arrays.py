"""Draws NumPy arrays by OpenGL's vertex arrays, in the rendering context of the calling painter."""

from gllib import _opengl

_CLIENT_VERTEX_ARRAY_BIT = 2
_VERTEX_ARRAY, _NORMAL_ARRAY, _COLOR_ARRAY, _TEXTURE_COORD_ARRAY = 0x8074, 0x8075, 0x8076, 0x8078
_TYPES = {"float32": 0x1406, "float64": 0x140A, "uint8": 0x1401, "uint16": 0x1403, "uint32": 0x1405}


def _rows(name, values, widths, kinds):
    """Returns values as an array that OpenGL can read. Copies only if OpenGL cannot read its type or its strides."""
    import numpy

    array = numpy.asarray(values)
    if array.ndim != 2 or array.shape[1] not in widths:
        raise ValueError(f"{name}: shape (n, {' or '.join(map(str, widths))}) is required, not {array.shape}")
    if array.dtype.name not in kinds or not array.dtype.isnative:
        array = array.astype("float32" if array.dtype.kind == "f" and array.dtype.itemsize <= 4 else "float64")
    row, column = array.strides
    if len(array) and (column != array.itemsize or row < column * array.shape[1]):
        array = numpy.ascontiguousarray(array)
    return array


def _numbers(indices, count):
    import numpy

    array = numpy.asarray(indices)
    if array.size == 0:
        return numpy.empty(0, "uint32")
    if array.dtype.kind not in "iu":
        raise ValueError(f"indices: integers are required, not {array.dtype}")
    if array.min() < 0 or array.max() >= count:
        raise ValueError(f"indices: from {array.min()} to {array.max()}, but there are {count} vertices")
    if array.dtype.name not in ("uint8", "uint16", "uint32") or not array.dtype.isnative:
        array = array.astype("uint32")
    return numpy.ascontiguousarray(array).reshape(-1)


def draw(mode, vertices, normals, colors, texture_coords, indices):
    """See Canvas.draw_arrays."""
    reals = ("float32", "float64")
    points = _rows("vertices", vertices, (2, 3), reals)
    given = [(_VERTEX_ARRAY, "glVertexPointer", points)]
    if normals is not None:
        given.append((_NORMAL_ARRAY, "glNormalPointer", _rows("normals", normals, (3,), reals)))
    if colors is not None:
        given.append((_COLOR_ARRAY, "glColorPointer", _rows("colors", colors, (3, 4), (*reals, "uint8"))))
    if texture_coords is not None:
        rows = _rows("texture_coords", texture_coords, (2,), reals)
        given.append((_TEXTURE_COORD_ARRAY, "glTexCoordPointer", rows))
    for _, name, array in given:
        if len(array) != len(points):
            raise ValueError(f"{len(points)} vertices, but {len(array)} rows for {name}")
    numbers = None if indices is None else _numbers(indices, len(points))
    if len(points) == 0:
        return

    gl = _opengl.functions()
    gl.glPushClientAttrib(_CLIENT_VERTEX_ARRAY_BIT)
    for kind in (_NORMAL_ARRAY, _COLOR_ARRAY, _TEXTURE_COORD_ARRAY):
        gl.glDisableClientState(kind)
    for kind, name, array in given:
        size = () if kind == _NORMAL_ARRAY else (array.shape[1],)
        gl.glEnableClientState(kind)
        getattr(gl, name)(*size, _TYPES[array.dtype.name], array.strides[0], array.ctypes.data)
    if numbers is None:
        gl.glDrawArrays(mode, 0, len(points))
    elif len(numbers):
        gl.glDrawElements(mode, len(numbers), _TYPES[numbers.dtype.name], numbers.ctypes.data)
    gl.glPopClientAttrib()
