#!/usr/bin/env python3
"""Writes the corpus of the bitmap file reader: small files, named ok-* if they are valid, else bad-*."""

import pathlib
import struct

FOLDER = pathlib.Path(__file__).parent / "corpus" / "bitmapfile"


def row_bytes(bits, width):
    return (bits * width + 31) // 32 * 4


def bitmap(width=3, height=2, bits=24, colors=None, pixels=None, offset=None, kind=b"BM", header=40,
           compression=0):
    """Returns a file with the given header fields. The default pixels are a fixed pattern."""
    if colors is None:
        colors = 1 << bits if bits <= 8 else 0
    table = b"".join(bytes((i, 255 - i, i ^ 0x55, 0)) for i in range(colors))
    if pixels is None:
        pixels = bytes(i * 37 & 255 for i in range(row_bytes(bits, max(width, 1)) * abs(height)))
    if offset is None:
        offset = 54 + len(table)
    file = kind + struct.pack("<IHHI", 54 + len(table) + len(pixels), 0, 0, offset & 0xFFFFFFFF)
    info = struct.pack("<IiiHHIIiiII", header, width, height, 1, bits, compression, 0, 2835, 2835, 0, 0)
    return file + info + table + pixels


def write(name, data):
    (FOLDER / f"{name}.bmp").write_bytes(data)


def good():
    for bits in (1, 4, 8, 16, 24, 32):
        for width in (1, 2, 3, 7, 9, 33):
            write(f"ok-{bits}-bit-width-{width}", bitmap(width, 2, bits))
        write(f"ok-{bits}-bit-top-down", bitmap(5, -3, bits))
    for bits in (2, 15, 64, 65535):
        write(f"ok-unknown-depth-{bits}", bitmap(1, 1, bits))
    write("ok-gap-before-pixels", bitmap(offset=100, pixels=bytes(200)))
    write("ok-bytes-behind-pixels", bitmap() + b"behind")
    write("ok-one-colour-used", bitmap(8, 1, 1, 1, bytes(4)))
    write("ok-table-of-300", bitmap(2, 1, 8, 0, bytes(300 * 4) + bytes(4), 54 + 300 * 4))
    write("ok-last-colour-cut", bitmap(1, 1, 8, 0, bytes(3) + bytes(4), 57))
    write("ok-compression-not-read", bitmap(4, 2, 8, compression=1))
    write("ok-header-size-not-read", bitmap(header=0xFFFFFFFF))


def bad():
    whole = bitmap(3, 2, 4)
    for size in (0, 1, 13, 14, 53, 54, 100, len(whole) - 1):
        write(f"bad-cut-at-{size}", whole[:size])
    write("bad-kind", bitmap(kind=b"MB"))
    for offset in (0, 14, 53, 0x7FFFFFFF, 0xFFFFFFFF):
        write(f"bad-offset-{offset}", bitmap(offset=offset))
    for width in (0, -1, -2**31, 2**31 - 1):
        write(f"bad-width-{width}", bitmap(width, pixels=bytes(32)))
    for height in (0, -2**31, 2**31 - 1, -2**31 + 1):
        write(f"bad-height-{height}", bitmap(height=height, pixels=bytes(32)))
    write("bad-no-depth", bitmap(bits=0))
    write("bad-65536-squared", bitmap(65536, 65536, 1, pixels=bytes(32)))
    write("bad-gigabyte-not-there", bitmap(16384, 16384, 32, pixels=bytes(32)))
    write("bad-largest-of-all", bitmap(2**31 - 1, -2**31 + 1, 65535, pixels=bytes(32)))
    for bits, index in ((1, 0x80), (4, 0x20), (8, 2)):
        write(f"bad-{bits}-bit-index", bitmap(1, 1, bits, 1, bytes((index, 0, 0, 0))))
    write("bad-no-table", bitmap(1, 1, 8, 0, bytes(4)))
    write("bad-index-in-last-row", bitmap(2, 2, 8, 2, bytes((0, 1, 0, 0, 1, 2, 0, 0))))


FOLDER.mkdir(parents=True, exist_ok=True)
good()
bad()
