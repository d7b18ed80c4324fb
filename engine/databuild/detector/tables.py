"""Reads and writes the engine's table files (engine/tables/table_file.h)."""

import struct

import numpy

MAGIC = b"TVXTAB01"
HEADER = struct.Struct("<8sQQQ")
ENTRY = struct.Struct("<32sQQ")
ALIGNMENT = 16
MASK = (1 << 64) - 1


def _hash_text(data):
    value = 0xCBF29CE484222325
    for byte in data:
        value = ((value ^ byte) * 0x100000001B3) & MASK
    return value


def _hash_pair(a, b):
    value = a ^ ((b + 0x9E3779B97F4A7C15 + (a << 6) + (a >> 2)) & MASK)
    value ^= value >> 33
    value = (value * 0xFF51AFD7ED558CCD) & MASK
    return value ^ (value >> 33)


def checksum(data):
    """The checksum of a file's bytes after the header."""
    whole = len(data) // 32 * 32
    lanes = [1, 2, 3, 4]
    for words in struct.iter_unpack("<4Q", data[:whole]):
        for lane in range(4):
            value = ((lanes[lane] ^ words[lane]) * 0x9E3779B97F4A7C15) & MASK
            lanes[lane] = value ^ (value >> 29)
    tail = _hash_text(data[whole:])
    for lane in lanes:
        tail = _hash_pair(tail, lane)
    return tail


def read(path):
    """The sections of a file by name, as bytes. Raises ValueError when it is damaged."""
    with open(path, "rb") as file:
        data = file.read()
    magic, size, stored, count = HEADER.unpack_from(data)
    if magic != MAGIC or size != len(data):
        raise ValueError(f"damaged table file: {path}")
    sections = {}
    for i in range(count):
        name, offset, length = ENTRY.unpack_from(data, HEADER.size + i * ENTRY.size)
        sections[name.rstrip(b"\0").decode()] = data[offset:offset + length]
    return sections


def write(path, sections):
    """Writes sections (bytes or arrays by name) as the program databuild does."""
    body = bytearray(len(sections) * ENTRY.size)
    for i, name in enumerate(sorted(sections)):
        data = sections[name]
        data = data.tobytes() if isinstance(data, numpy.ndarray) else bytes(data)
        body += b"\0" * (-(HEADER.size + len(body)) % ALIGNMENT)
        ENTRY.pack_into(body, i * ENTRY.size, name.encode(), HEADER.size + len(body), len(data))
        body += data
    with open(path, "wb") as file:
        file.write(HEADER.pack(MAGIC, HEADER.size + len(body), checksum(bytes(body)), len(sections)))
        file.write(body)
