#!/usr/bin/env python3
"""Writes the icon files the test resources embed: red16_blue32.ico (a 16x16 red and a
32x32 blue image, 32-bit DIBs) and green48.ico (one 48x48 green PNG image)."""
import struct
import zlib


def dib(w, h, bgra):
    header = struct.pack('<IiiHHIIiiII', 40, w, h * 2, 1, 32, 0, 0, 0, 0, 0, 0)
    mask_row = ((w + 31) // 32) * 4
    return header + bytes(bgra) * (w * h) + b'\0' * (mask_row * h)


def png(w, h, rgba):
    rows = b''.join(b'\0' + bytes(rgba) * w for _ in range(h))

    def chunk(kind, data):
        return (struct.pack('>I', len(data)) + kind + data +
                struct.pack('>I', zlib.crc32(kind + data) & 0xffffffff))
    return (b'\x89PNG\r\n\x1a\n' + chunk(b'IHDR', struct.pack('>IIBBBBB', w, h, 8, 6, 0, 0, 0)) +
            chunk(b'IDAT', zlib.compress(rows, 9)) + chunk(b'IEND', b''))


def ico(images):
    out = struct.pack('<HHH', 0, 1, len(images))
    offset = 6 + 16 * len(images)
    data = b''
    for w, h, image in images:
        out += struct.pack('<BBBBHHII', w % 256, h % 256, 0, 0, 1, 32, len(image),
                           offset + len(data))
        data += image
    return out + data


with open('red16_blue32.ico', 'wb') as f:
    f.write(ico([(16, 16, dib(16, 16, [0, 0, 255, 255])), (32, 32, dib(32, 32, [255, 0, 0, 255]))]))
with open('green48.ico', 'wb') as f:
    f.write(ico([(48, 48, png(48, 48, [0, 255, 0, 255]))]))
