#!/usr/bin/env python3
"""Makes the corpus of the tests of BMP, TGA, XCF and PMG files: see README.md. Needs convert (ImageMagick)."""
import os
import random
import struct
import subprocess
import tempfile
import zlib

HERE = os.path.dirname(os.path.abspath(__file__))
random.seed(7)
W, H = 13, 7  # of most pictures; no multiple of anything
OPAQUE_BLACK = (0, 0, 0, 255)


def save(folder, name, data):
    with open(os.path.join(HERE, folder, name), 'wb') as file:
        file.write(data)


def good(name, data, pixels):
    """`pixels` is a list of colours (R, G, B, A), from the top."""
    save('good', name, data)
    save('good', name + '.rgba', b''.join(bytes(pixel) for pixel in pixels))


def broken(name, data):
    save('broken', name, data)


def random_colour(alpha=False):
    return tuple(random.randrange(256) for _ in range(3)) + (random.randrange(256) if alpha else 255,)


def random_picture(alpha=False, width=W, height=H):
    return [random_colour(alpha) for _ in range(width * height)]


def rows_of(pixels, width=W):
    return [pixels[at:at + width] for at in range(0, len(pixels), width)]


def scale(sample, largest):
    return (sample * 255 + largest // 2) // largest


# ---- files of ImageMagick ----

def by_imagemagick():
    rose = ['rose:', '-resize', f'{W}x{H}!']
    alpha = rose + ['-alpha', 'set', '-channel', 'A', '-fx', '(i+1)/w', '+channel']
    grey = ['-colorspace', 'gray', '-type', 'grayscale']
    plain, runs = ['-compress', 'none'], ['-compress', 'RLE']

    def mapped(colours):
        return ['-colors', str(colours), '-type', 'palette']

    def sub(kind):
        return ['-define', 'bmp:subtype=' + kind]

    for name, *command in (
            ('core-24.bmp', *rose, 'BMP2:'), ('core-8.bmp', *rose, *mapped(200), 'BMP2:'),
            ('info-24.bmp', *rose, *plain, 'BMP3:'), ('info-8.bmp', *rose, *mapped(200), *plain, 'BMP3:'),
            ('info-4.bmp', *rose, *mapped(16), *plain, 'BMP3:'), ('info-1.bmp', *rose, *mapped(2), *plain, 'BMP3:'),
            ('info-rle8.bmp', 'rose:', '-resize', '20x11!', '-posterize', '3', *mapped(30), *runs, 'BMP3:'),
            ('v5-32.bmp', *alpha, 'BMP:'), ('v5-555.bmp', *rose, *sub('RGB555'), 'BMP:'),
            ('v5-565.bmp', *rose, *sub('RGB565'), 'BMP:'), ('v5-4444.bmp', *alpha, *sub('ARGB4444'), 'BMP:'),
            ('v5-1555.bmp', *alpha, *sub('ARGB1555'), 'BMP:'), ('pixel.bmp', '-size', '1x1', 'xc:#12345678', 'BMP:'),
            ('colour-24.tga', *rose, *plain, 'TGA:'), ('colour-24-runs.tga', *rose, '-posterize', '2', *runs, 'TGA:'),
            ('colour-32.tga', *alpha, *plain, 'TGA:'), ('colour-32-runs.tga', *alpha, '-posterize', '2', *runs, 'TGA:'),
            ('mapped-8.tga', *rose, *mapped(60), *plain, 'TGA:'),
            ('mapped-8-runs.tga', *rose, '-posterize', '2', *mapped(60), *runs, 'TGA:'),
            ('grey-8.tga', *rose, *grey, *plain, 'TGA:'),
            ('grey-8-runs.tga', *rose, '-posterize', '2', *grey, *runs, 'TGA:'),
            ('from-top-left.tga', *rose, '-orient', 'TopLeft', 'TGA:'),
            ('from-top-right.tga', *rose, '-orient', 'TopRight', 'TGA:'),
            ('from-bottom-right.tga', *rose, '-orient', 'BottomRight', 'TGA:')):
        with tempfile.NamedTemporaryFile(suffix=name) as file:
            subprocess.run(['convert', *command[:-1], command[-1] + file.name], check=True)
            decoded = subprocess.run(['convert', file.name, '-auto-orient', '-depth', '8', 'RGBA:-'], check=True,
                                     stdout=subprocess.PIPE).stdout
            data = file.read()
            pixels = [decoded[at:at + 4] for at in range(0, len(decoded), 4)]
            good('im-' + name, data, masked_pixels(data) if 'subtype' in str(command) else pixels)


def masked_pixels(data):
    """The pixels of a file with masks, rounded; ImageMagick repeats the upper bits of short samples instead."""
    masks = struct.unpack('<4I', data[54:70])
    rows = rows_of(data[struct.unpack('<I', data[10:14])[0]:], (W * 16 + 31) // 32 * 4)
    return [under_masks(value, masks) for row in reversed(rows) for value in struct.unpack('<%dH' % W, row[:2 * W])]


# ---- BMP ----

def bmp(depth, data, size=(W, H), header=40, compression=0, palette=(), masks=(), used=0, gap=0, offset=None, planes=1,
        entry_size=None):
    """`palette` is what lies behind the headers; `masks` are three or four, in the header or behind it."""
    if header == 12:
        info = struct.pack('<IHHHH', header, size[0], size[1], planes, depth)
    else:
        info = struct.pack('<IiiHHIIIIII', header, size[0], size[1], planes, depth, compression, len(data), 2835, 2835,
                           used, 0)[:header]
    info += struct.pack('<%dI' % len(masks), *masks)
    info = info.ljust(header, b'\0')
    entry_size = entry_size or (3 if header == 12 else 4)
    entries = b''.join(bytes((b, g, r, 0))[:entry_size] for r, g, b, _ in palette)
    start = 14 + len(info) + len(entries) + gap
    return (b'BM' + struct.pack('<IHHI', start + len(data), 0, 0, start if offset is None else offset) + info + entries +
            bytes(gap) + data)


def bmp_rows(rows, top_down=False):
    """Rows, which are given from the top, filled up to four bytes."""
    return b''.join(row + bytes(-len(row) % 4) for row in (rows if top_down else reversed(rows)))


def packed(indices, depth):
    bits = ''.join(format(index, '0%db' % depth) for index in indices)
    bits += '0' * (-len(bits) % 8)
    return bytes(int(bits[at:at + 8], 2) for at in range(0, len(bits), 8))


def bgr(row):
    return b''.join(bytes((b, g, r)) for r, g, b, _ in row)


def bgra(row):
    return b''.join(bytes((b, g, r, a)) for r, g, b, a in row)


def numbers(count, size):
    """Random pixels of so many bytes: those that are the same wherever they are read."""
    values = [random.randrange(1 << 8 * size) for _ in range(count)]
    return values, [value.to_bytes(size, 'little') for value in values]


def under_masks(value, masks):
    colour = []
    for mask in masks:
        shift = (mask & -mask).bit_length() - 1 if mask else 0
        colour.append(scale((value & mask) >> shift, mask >> shift) if mask else 0)
    return tuple(colour) if len(colour) == 4 and masks[3] else tuple(colour[:3]) + (255,)


def bmp_good():
    for header in (12, 16, 40, 64):
        for depth in (1, 4, 8):
            palette = [random_colour() for _ in range(1 << depth)]
            indices = [random.randrange(1 << depth) for _ in range(W * H)]
            data = bmp_rows([packed(row, depth) for row in rows_of(indices)])
            good(f'header{header}-{depth}.bmp', bmp(depth, data, header=header, palette=palette),
                 [palette[index] for index in indices])
            if header == 64:
                good(f'header64-{depth}-three-bytes.bmp', bmp(depth, data, header=header, palette=palette, entry_size=3),
                     [palette[index] for index in indices])
    picture, clear = random_picture(), random_picture(alpha=True)
    for header in (12, 16, 40, 52, 56, 64, 108, 124):
        good(f'header{header}-24.bmp', bmp(24, bmp_rows([bgr(row) for row in rows_of(picture)]), header=header), picture)
    good('info-top-down-24.bmp', bmp(24, bmp_rows([bgr(row) for row in rows_of(picture)], True), (W, -H)), picture)
    good('info-32-alpha.bmp', bmp(32, b''.join(bgra(row) for row in reversed(rows_of(clear)))), clear)
    good('info-32-alpha-top-down.bmp', bmp(32, b''.join(bgra(row) for row in rows_of(clear)), (W, -H)), clear)
    unused = [pixel[:3] + (0,) for pixel in clear]
    good('info-32-alpha-unused.bmp', bmp(32, b''.join(bgra(row) for row in reversed(rows_of(unused)))),
         [pixel[:3] + (255,) for pixel in clear])
    almost = unused[:-1] + [unused[-1][:3] + (1,)]
    good('info-32-alpha-once.bmp', bmp(32, b''.join(bgra(row) for row in reversed(rows_of(almost)))), almost)
    palette = [random_colour() for _ in range(5)]
    indices = [random.randrange(16) for _ in range(W * H)]
    good('info-4-five-colours.bmp',
         bmp(4, bmp_rows([packed(row, 4) for row in rows_of(indices)]), palette=palette, used=5),
         [palette[index] if index < 5 else OPAQUE_BLACK for index in indices])
    good('info-24-gap.bmp', bmp(24, bmp_rows([bgr(row) for row in rows_of(picture)]), gap=19), picture)
    good('info-24-wrong-file-size.bmp',
         b'BM\1\0\0\0' + bmp(24, bmp_rows([bgr(row) for row in rows_of(picture)]))[6:], picture)
    masks565, masks555 = (0xF800, 0x07E0, 0x001F), (0x7C00, 0x03E0, 0x001F)
    for name, header, compression, size, masks in (
            ('info-555', 40, 0, 2, masks555), ('info-565', 40, 3, 2, masks565), ('v2-565', 52, 3, 2, masks565),
            ('v3-4444', 56, 3, 2, (0x0F00, 0x00F0, 0x000F, 0xF000)), ('v4-332', 108, 3, 2, (0xE0, 0x1C, 0x03, 0)),
            ('info-4444-alpha', 40, 6, 2, (0xF000, 0x0F00, 0x00F0, 0x000F)),
            ('v3-10-10-10-2', 56, 3, 4, (0x3FF00000, 0x000FFC00, 0x000003FF, 0xC0000000)),
            ('v4-rgba', 108, 3, 4, (0x000000FF, 0x0000FF00, 0x00FF0000, 0xFF000000)),
            ('v5-no-alpha', 124, 3, 4, (0x00FF0000, 0x0000FF00, 0x000000FF, 0)),
            ('info-888', 40, 3, 4, (0xFF000000, 0x00FF0000, 0x0000FF00)),
            ('info-one-bit-of-red', 40, 3, 4, (0x80000000, 0x7FFF0000, 0x0000FFFF)),
            ('info-no-green', 40, 3, 2, (0xFF00, 0, 0x00FF)),
            ('info-scattered', 40, 3, 2, (0x5000, 0x0501, 0x0024))):
        values, stored = numbers(W * H, size)
        data = bmp_rows([b''.join(row) for row in rows_of(stored)])
        good(name + '.bmp', bmp(8 * size, data, header=header, compression=compression,
                                masks=() if compression == 0 else masks), [under_masks(value, masks) for value in values])

    palette = [random_colour() for _ in range(256)]

    def filled(*rows):
        """Rows of indices from the bottom, filled up with index 0, as colours from the top."""
        rows = [list(row) + [0] * (6 - len(row)) for row in rows] + [[0] * 6] * (4 - len(rows))
        return [palette[index] for row in reversed(rows) for index in row]

    runs8 = bytes((3, 7, 3, 9, 0, 0, 0, 5, 1, 2, 3, 4, 5, 0, 1, 6, 0, 0, 0, 2, 2, 1, 2, 8, 0, 1))
    rows8 = [7, 7, 7, 9, 9, 9], [1, 2, 3, 4, 5, 6], [], [0, 0, 8, 8]
    good('info-rle8.bmp', bmp(8, runs8, (6, 4), compression=1, palette=palette), filled(*rows8))
    good('os2-rle8.bmp', bmp(8, runs8, (6, 4), header=64, compression=1, palette=palette), filled(*rows8))
    good('info-rle8-empty.bmp', bmp(8, b'\0\1', (6, 4), compression=1, palette=palette), filled())
    runs4 = bytes((5, 0x7A, 0, 0, 0, 5, 0x12, 0x34, 0x50, 0, 1, 0x6F, 0, 0, 0, 2, 2, 1, 3, 0x8C, 0, 1))
    good('info-rle4.bmp', bmp(4, runs4, (6, 4), compression=2, palette=palette[:16]),
         filled([7, 10, 7, 10, 7], [1, 2, 3, 4, 5, 6], [], [0, 0, 8, 12, 8]))
    runs4 = bytes((6, 0x11, 0, 0, 0, 3, 0x23, 0x40, 0, 3, 0x56, 0x70, 0, 0, 0, 1))
    good('v5-rle4.bmp', bmp(4, runs4, (6, 4), header=124, compression=2, palette=palette[:16]),
         filled([1] * 6, [2, 3, 4, 5, 6, 7]))


def bmp_broken():
    palette = [random_colour() for _ in range(256)]
    data24 = bmp_rows([bgr(row) for row in rows_of(random_picture())])
    data32 = bytes(W * H * 4)
    broken('header-cut.bmp', bmp(24, data24)[:20])
    broken('magic-alone.bmp', b'BM')
    broken('header-size-13.bmp', bmp(24, data24, header=13))
    broken('header-size-enormous.bmp', bmp(24, data24)[:14] + b'\xff\xff\xff\xff' + bmp(24, data24)[18:])
    broken('width-zero.bmp', bmp(24, data24, (0, H)))
    broken('width-negative.bmp', bmp(24, data24, (-W, H)))
    broken('height-zero.bmp', bmp(24, data24, (W, 0)))
    broken('height-least.bmp', bmp(24, data24, (W, -2 ** 31)))
    broken('size-enormous.bmp', bmp(24, data24, (2 ** 31 - 1, 2 ** 31 - 1)))
    broken('runs-of-enormous-size.bmp', bmp(8, b'\0\1', (65535, 65535), compression=1, palette=palette))
    broken('row-missing.bmp', bmp(24, data24, (W, H + 1)))
    broken('byte-missing.bmp', bmp(24, data24[:-1]))
    broken('planes-2.bmp', bmp(24, data24, planes=2))
    broken('planes-0.bmp', bmp(24, data24, planes=0))
    for depth in (0, 2, 3, 15, 48, 64, 65535):
        broken(f'depth-{depth}.bmp', bmp(depth, bytes(2000), palette=palette[:16]))
    for compression in (4, 5, 7, 11):
        broken(f'compression-{compression}.bmp', bmp(24, data24, compression=compression))
    for header in (12, 16, 40, 52, 56, 64, 108, 124):
        broken(f'header{header}-cut.bmp', bmp(24, b'', header=header)[:-1])
    for depth in (1, 4, 8, 16, 32):
        stride = (W * depth + 31) // 32 * 4
        broken(f'byte-missing-{depth}.bmp', bmp(depth, bytes(stride * H - 1), palette=palette[:1 << min(depth, 8)]))
    broken('runs-of-8-in-4.bmp', bmp(4, b'\6\1\0\1', (6, 4), compression=1, palette=palette[:16]))
    broken('runs-of-4-in-8.bmp', bmp(8, b'\6\1\0\1', (6, 4), compression=2, palette=palette))
    broken('masks-in-24.bmp', bmp(24, data24, compression=3, masks=(0xFF, 0xFF00, 0xFF0000)))
    broken('masks-in-os2.bmp', bmp(32, data32, header=64, compression=3))
    broken('masks-cut.bmp', bmp(32, b'', compression=3, masks=(0xFF0000, 0xFF00)))
    broken('offset-in-masks.bmp', bmp(32, data32, compression=3, masks=(0xFF0000, 0xFF00, 0xFF), offset=60))
    broken('offset-zero.bmp', bmp(24, data24, offset=0))
    broken('offset-in-header.bmp', bmp(24, data24, offset=50))
    broken('offset-beyond.bmp', bmp(24, data24, offset=100000))
    broken('offset-cuts-pixels.bmp', bmp(24, data24, offset=55))

    def runs(name, data, depth=8, size=(6, 4)):
        broken(f'runs-{name}.bmp', bmp(depth, bytes(data), size, compression=1 if depth == 8 else 2,
                                       palette=palette[:1 << depth]))

    runs('from-top', (6, 1, 0, 1), size=(6, -4))
    runs('without-end', (6, 1, 0, 0, 6, 2))
    runs('nothing', ())
    runs('half-a-pair', (6, 1, 0))
    runs('too-long', (7, 1, 0, 1))
    runs('too-long-4', (7, 0x11, 0, 1), depth=4)
    runs('bytes-too-long', (3, 1, 0, 4, 1, 2, 3, 4, 0, 1))
    runs('bytes-cut', (0, 5, 1, 2, 3))
    runs('bytes-not-filled-up', (0, 5, 1, 2, 3, 4, 5))
    runs('above-the-top', (0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 0, 1))
    runs('row-too-many', (0, 0) * 5 + (0, 1))
    runs('jump-right', (0, 2, 7, 0, 0, 1))
    runs('jump-above', (0, 2, 0, 5, 0, 1))
    runs('jump-cut', (0, 2, 1))


# ---- TGA ----

def tga(kind, depth, data, size=(W, H), descriptor=0x20, text=b'', first=0, colours=b'', count=0, map_depth=0, map_kind=None):
    if map_kind is None:
        map_kind = 1 if count else 0
    return (struct.pack('<BBBHHBHHHHBB', len(text), map_kind, kind, first, count, map_depth, 0, 0, size[0], size[1], depth,
                        descriptor) + text + colours + data)


def tga_colour(value, depth, alpha):
    """The colour that `value`, bytes of a pixel, stands for."""
    if depth >= 24:
        return value[2], value[1], value[0], value[3] if depth == 32 else 255
    number = value[0] | value[1] << 8
    clear = depth == 16 and alpha and number < 0x8000
    return tuple(scale(number >> shift & 31, 31) for shift in (10, 5, 0)) + (0 if clear else 255,)


def tga_packets(values):
    """Packets of both kinds, which run on from row to row."""
    data, at, turn = b'', 0, 0
    while at < len(values):
        count = min(random.choice((1, 2, 5, 20)), len(values) - at)
        if turn % 2 == 0:
            values[at:at + count] = [values[at]] * count
            data += bytes((127 + count,)) + values[at]
        else:
            data += bytes((count - 1,)) + b''.join(values[at:at + count])
        at += count
        turn += 1
    return data


def tga_good():
    for depth, descriptor in ((15, 0x20), (16, 0x20), (16, 0x21), (24, 0x20), (32, 0x20), (32, 0x28)):
        for runs in (0, 8):
            values = [bytes(random.randrange(256) for _ in range((depth + 7) // 8)) for _ in range(W * H)]
            data = tga_packets(values) if runs else b''.join(values)
            alpha = descriptor & 15
            good(f'colour-{depth}-alpha{alpha}{"-runs" if runs else ""}.tga', tga(2 + runs, depth, data, descriptor=descriptor),
                 [tga_colour(value, depth, alpha) for value in values])
    for depth, descriptor in ((8, 0x20), (16, 0x20), (16, 0x28)):
        for runs in (0, 8):
            values = [bytes(random.randrange(256) for _ in range(depth // 8)) for _ in range(W * H)]
            data = tga_packets(values) if runs else b''.join(values)
            alpha = descriptor & 15
            good(f'grey-{depth}-alpha{alpha}{"-runs" if runs else ""}.tga', tga(3 + runs, depth, data, descriptor=descriptor),
                 [(v[0], v[0], v[0], v[-1] if depth == 16 else 255) for v in values])
    for depth, map_depth, first, descriptor in ((8, 15, 0, 0x20), (8, 16, 3, 0x21), (8, 16, 0, 0x20), (8, 24, 0, 0x20),
                                                (8, 32, 0, 0x20), (16, 24, 300, 0x20), (15, 32, 0, 0x28)):
        for runs in (0, 8):
            stored = [bytes(random.randrange(256) for _ in range((map_depth + 7) // 8)) for _ in range(40)]
            colours = [tga_colour(value, map_depth, descriptor & 15) for value in stored]
            indices = [first + random.randrange(40) for _ in range(W * H)]
            values = [index.to_bytes((depth + 7) // 8, 'little') for index in indices]
            data = tga_packets(values) if runs else b''.join(values)
            good(f'mapped-{depth}-{map_depth}-from{first}-alpha{descriptor & 15}{"-runs" if runs else ""}.tga',
                 tga(1 + runs, depth, data, descriptor=descriptor, first=first, colours=b''.join(stored), count=40,
                     map_depth=map_depth), [colours[int.from_bytes(value, 'little') - first] for value in values])
    picture = random_picture()
    for descriptor in (0, 0x10, 0x20, 0x30):
        rows = rows_of(picture)
        rows = rows if descriptor & 0x20 else rows[::-1]
        rows = [row[::-1] if descriptor & 0x10 else row for row in rows]
        data = b''.join(bgr(row) for row in rows)
        good(f'corner-{descriptor >> 4}.tga', tga(2, 24, data, descriptor=descriptor), picture)
    unused = [pixel[:3] + (0,) for pixel in picture]
    good('colour-32-alpha-unused.tga', tga(2, 32, bgra(unused)), picture)
    good('colour-32-alpha8-all-clear.tga', tga(2, 32, bgra(unused), descriptor=0x28), unused)
    good('grey-16-alpha-unused.tga', tga(3, 16, b''.join(bytes((r, 0)) for r, *_ in picture)),
         [(r, r, r, 255) for r, *_ in picture])
    data = bgr(picture)
    good('text.tga', tga(2, 24, data, text=b'made by hand'), picture)
    good('map-not-needed.tga', tga(2, 24, data, colours=bytes(30), count=10, map_depth=24), picture)
    good('index-beyond-map.tga', tga(1, 8, bytes((1, 2, 3, 4)), (2, 2), first=2, colours=bytes(range(6)), count=2,
                                     map_depth=24), [OPAQUE_BLACK, (2, 1, 0, 255), (5, 4, 3, 255), OPAQUE_BLACK])


def tga_broken():
    data = bgr(random_picture())
    for cut in (1, 2, 3):
        broken(f'header-cut-by-{cut + 1}.tga', tga(2, 24, b'')[:17 - cut])
    broken('header-alone.tga', tga(2, 24, b''))
    broken('header-cut.tga', tga(2, 24, b'')[:17])
    broken('byte-missing.tga', tga(2, 24, data[:-1]))
    for kind, depth in ((1, 8), (2, 15), (2, 16), (2, 32), (3, 8), (3, 16)):
        size = (depth + 7) // 8
        values = [bytes((i % 9,)) * size for i in range(W * H)]
        colours = dict(colours=bytes(30), count=10, map_depth=24) if kind == 1 else {}
        broken(f'byte-missing-{kind}-{depth}.tga', tga(kind, depth, b''.join(values)[:-1], **colours))
        broken(f'byte-missing-{kind + 8}-{depth}.tga', tga(kind + 8, depth, tga_packets(values)[:-1], **colours))
    broken('row-missing.tga', tga(2, 24, data, (W, H + 1)))
    broken('size-enormous.tga', tga(2, 24, data, (65535, 65535)))
    broken('runs-of-enormous-size.tga', tga(10, 24, data, (65535, 65535)))
    broken('width-zero.tga', tga(2, 24, data, (0, H)))
    broken('height-zero.tga', tga(2, 24, data, (W, 0)))
    for kind in (0, 4, 8, 12, 32, 33):
        broken(f'type-{kind}.tga', tga(kind, 24, data))
    for depth in (0, 1, 8, 17, 64):
        broken(f'colour-of-depth-{depth}.tga', tga(2, depth, data))
    for depth in (15, 24, 32):
        broken(f'grey-of-depth-{depth}.tga', tga(3, depth, data * 2))
    broken('interleaved-2.tga', tga(2, 24, data, descriptor=0x60))
    broken('interleaved-4.tga', tga(2, 24, data, descriptor=0xA0))
    broken('text-cut.tga', tga(2, 24, b'', (1, 1), text=b'a text of this length')[:30])
    broken('map-missing.tga', tga(1, 8, data))
    broken('map-kind-2.tga', tga(1, 8, data, colours=bytes(30), count=10, map_depth=24, map_kind=2))
    broken('map-of-no-colours.tga', tga(1, 8, data, map_depth=24, map_kind=1))
    broken('map-of-depth-8.tga', tga(1, 8, data, colours=bytes(30), count=30, map_depth=8))
    broken('map-cut.tga', tga(1, 8, data, colours=bytes(30), count=65535, map_depth=24))
    broken('map-not-needed-cut.tga', tga(2, 24, b'', (1, 1), colours=bytes(30), count=11, map_depth=24))
    broken('mapped-of-depth-24.tga', tga(1, 24, data, colours=bytes(30), count=10, map_depth=24))
    broken('packet-too-long.tga', tga(10, 24, b'\x84\1\2\3', (2, 2)))
    broken('packet-of-bytes-too-long.tga', tga(10, 24, b'\4' + bytes(15), (2, 2)))
    broken('packet-cut.tga', tga(10, 24, b'\x83\1\2', (2, 2)))
    broken('packet-of-bytes-cut.tga', tga(10, 24, b'\3' + bytes(11), (2, 2)))
    broken('packet-missing.tga', tga(10, 24, b'\x81\1\2\3', (2, 2)))
    broken('runs-of-nothing.tga', tga(11, 8, b'', (2, 2)))


# ---- XCF ----

class Layer:
    def __init__(self, pixels, size=(W, H), kind=1, at=(0, 0), opacity=255, float_opacity=None, visible=1, mask=None,
                 mask_applies=1, group=False, path=None, indices=None, name=b'Layer'):
        self.__dict__.update(locals())
        width = {0: lambda p: p[:3], 1: bytes, 2: lambda p: p[:1], 3: lambda p: (p[0], p[3]), 4: lambda p: p[:1],
                 5: lambda p: (p[0], p[3])}
        stored = pixels if indices is None else [(index, 0, 0, pixel[3]) for index, pixel in zip(indices, pixels)]
        self.stored = [bytes(width[kind](pixel)) for pixel in stored]


def runs_of(data):
    """Runs of all four kinds, as they come."""
    out, at = b'', 0
    while at < len(data):
        end = at + 1
        while end < len(data) and data[end] == data[at]:
            end += 1
        if end - at > 127 or (end - at > 2 and at % 5 == 0):
            out += struct.pack('>BHB', 127, end - at, data[at])
        elif end - at > 1:
            out += bytes((end - at - 1, data[at]))
        else:
            while end < len(data) and end - at < 200 and (end + 1 >= len(data) or data[end] != data[end + 1]):
                end += 1
            count = end - at
            out += (bytes((256 - count,)) if count < 128 else struct.pack('>BH', 128, count)) + data[at:end]
        at = end
    return out


class Xcf:
    """Puts structures one behind another and fills in the offsets that lead to them."""

    def __init__(self, layers, size=(W, H), version=0, base=0, compression=1, colours=None, precision=150, more=b'',
                 count=None, magic=None, faults=()):
        self.faults, self.compression, self.version = faults, compression, version
        self.hierarchies = []
        self.pointer = '>Q' if version >= 11 else '>I'
        magic = magic or (b'gimp xcf file\0' if version == 0 else b'gimp xcf v%03d\0' % version)
        self.out = bytearray(magic + struct.pack('>III', *size, base))
        if version >= 4:
            self.out += struct.pack('>I', (0 if precision == 150 else precision) if version == 4 else precision)
        if colours is not None:
            number = len(colours) if count is None else count
            if version == 0:
                self.prop(1, struct.pack('>I', number) + bytes(number))
            else:
                self.prop(1, struct.pack('>I', number) + b''.join(bytes(colour[:3]) for colour in colours))
        self.prop(17, bytes((compression,)))
        self.prop(21, struct.pack('>I', 5) + b'note\0' + struct.pack('>II', 0, 3) + b'abc')
        self.out += more
        self.prop(0)
        pointers = [self.hole() for _ in layers]
        self.put(0)
        self.put(0)
        for layer, pointer in zip(layers, pointers):
            self.fill(pointer)
            self.layer(layer)

    def prop(self, kind, content=b''):
        self.out += struct.pack('>II', kind, len(content)) + content

    def put(self, value):
        self.out += struct.pack(self.pointer, value)

    def hole(self):
        at = len(self.out)
        self.put(0)
        return at

    def fill(self, at, value=None):
        struct.pack_into(self.pointer, self.out, at, len(self.out) if value is None else value)

    def layer(self, layer):
        self.out += struct.pack('>IIII', *layer.size, layer.kind, len(layer.name) + 1) + layer.name + b'\0'
        if layer.group:
            self.prop(29)
        if layer.path is not None:
            self.prop(30, struct.pack('>%dI' % len(layer.path), *layer.path))
        self.prop(6, struct.pack('>I', layer.opacity))
        if layer.float_opacity is not None:
            self.prop(33, struct.pack('>f', layer.float_opacity))
        self.prop(8, struct.pack('>I', layer.visible))
        self.prop(15, struct.pack('>ii', *layer.at))
        if layer.mask is not None:
            self.prop(11, struct.pack('>I', layer.mask_applies))
        self.prop(7, struct.pack('>I', 0))
        self.prop(0)
        hierarchy, mask = self.hole(), self.hole()
        self.hierarchies.append(hierarchy)
        self.fill(hierarchy)
        self.hierarchy(layer.size, layer.stored)
        if layer.mask is not None:
            self.fill(mask)
            size = (layer.size[0] + 1, layer.size[1]) if 'mask-size' in self.faults else layer.size
            self.out += struct.pack('>III', *size, 5) + b'mask\0'
            self.prop(6, struct.pack('>I', 255))
            self.prop(0)
            hierarchy = self.hole()
            self.fill(hierarchy)
            self.hierarchy(layer.size, getattr(layer, 'stored_mask', [bytes((alpha,)) for alpha in layer.mask]))

    def hierarchy(self, size, stored):
        faults = self.faults
        bpp = len(stored[0])
        self.out += struct.pack('>III', size[0] + ('hierarchy-size' in faults), size[1], bpp + ('bpp' in faults))
        level = self.hole()
        self.put(0)
        if 'level-missing' not in faults:
            self.fill(level)
        self.out += struct.pack('>II', size[0], size[1] + ('level-size' in faults))
        corners = [(x, y) for y in range(0, size[1], 64) for x in range(0, size[0], 64)]
        pointers = [self.hole() for _ in corners]
        self.put(7 if 'tile-too-many' in faults else 0)
        for (x0, y0), pointer in zip(corners, pointers):
            if 'tile-missing' not in faults:
                self.fill(pointer, 1 << 30 if 'tile-beyond' in faults else None)
            pixels = [stored[y * size[0] + x] for y in range(y0, min(y0 + 64, size[1]))
                      for x in range(x0, min(x0 + 64, size[0]))]
            if self.compression == 1:
                data = b''.join(runs_of(bytes(pixel[c] for pixel in pixels)) for c in range(bpp))
            else:
                data = b''.join(pixels)
                data = zlib.compress(data) if self.compression == 2 else data
            if 'run-too-long' in faults:
                data = struct.pack('>BHB', 127, len(pixels) + 1, 0) + data
            if 'stream-damaged' in faults:
                data = data[:-1] + bytes((data[-1] ^ 1,))
            self.out += data

    def bytes(self):
        return bytes(self.out)


def part(value, of):
    return (value * of + 127) // 255


def over(under, source):
    """Straight alpha, in whole numbers."""
    sa, da = source[3], under[3]
    if sa == 255 or da == 0:
        return source
    if sa == 0:
        return under
    rest = (255 - sa) * da
    alpha = sa + (rest + 127) // 255
    return tuple(min(255, (alpha // 2 + s * sa + (127 + rest * d) // 255) // alpha)
                 for s, d in zip(source[:3], under[:3])) + (alpha,)


def laid(layers, size=(W, H), path=()):
    """The layers that are to be seen, from the bottom up. `path` leads to the group that they are in. What is in an
    opaque group without a mask is laid straight on what lies below."""
    canvas = [(0, 0, 0, 0)] * (size[0] * size[1])
    lay(canvas, layers, size, path)
    return canvas


def lay(canvas, layers, size, path):
    places = {}
    for layer in layers:
        own = tuple(layer.path or (sum(len(other) == 1 for other in places),))
        places[own] = layer
    for own, layer in reversed(places.items()):
        if own[:-1] != path or not layer.visible:
            continue
        opacity = layer.opacity if layer.float_opacity is None else round(layer.float_opacity * 255)
        mask = layer.mask if layer.mask_applies else None
        pixels, width, at = layer.pixels, layer.size[0], layer.at
        if layer.group:
            if opacity == 255 and mask is None:
                lay(canvas, layers, size, own)
                continue
            group = laid(layers, size, own)
            if mask is None:
                pixels, width, at = group, size[0], (0, 0)
            else:
                pixels = [group[(i // width + at[1]) * size[0] + i % width + at[0]] for i in range(len(mask))]
        for i, pixel in enumerate(pixels):
            x, y = i % width + at[0], i // width + at[1]
            if 0 <= x < size[0] and 0 <= y < size[1]:
                alpha = part(pixel[3], opacity)
                if mask is not None:
                    alpha = part(alpha, mask[i])
                canvas[y * size[0] + x] = over(canvas[y * size[0] + x], tuple(pixel[:3]) + (alpha,))


def grey_picture(alpha):
    return [(level, level, level, random.randrange(256) if alpha else 255)
            for level in (random.randrange(256) for _ in range(W * H))]


def xcf_good():
    def one(name, layers, size=(W, H), **options):
        good(name + '.xcf', Xcf(layers, size, **options).bytes(), laid(layers, size))

    for version in (0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 14):
        one(f'version-{version}', [Layer(random_picture(True))], version=version)
    one('version-of-two-zeros', [Layer(random_picture(True))], magic=b'gimp xcf v00\0\0')
    for version in (0, 11):
        one(f'plain-tiles-{version}', [Layer(random_picture(True))], version=version, compression=0)
    one('zlib-tiles', [Layer(random_picture(True))], version=8, compression=2)
    one('perceptual', [Layer(random_picture(True))], version=10, precision=175)
    one('no-layers', [])
    one('rgb', [Layer(random_picture(), kind=0)])
    one('grey', [Layer(grey_picture(False), kind=2)], base=1, version=2)
    one('grey-alpha', [Layer(grey_picture(True), kind=3)], base=1, version=3)
    colours = [random_colour() for _ in range(20)]
    for kind in (4, 5):
        for version in (1, 11):
            indices = [random.randrange(22) for _ in range(W * H)]
            pixels = [(colours[i] if i < 20 else OPAQUE_BLACK)[:3] + (random.randrange(256) if kind == 5 else 255,)
                      for i in indices]
            one(f'indexed-{kind}-{version}', [Layer(pixels, kind=kind, indices=indices)], base=2, version=version,
                colours=colours)
    indices = [random.randrange(20) for _ in range(W * H)]
    one('indexed-lost-colours', [Layer([(i, i, i, 255) for i in indices], kind=4, indices=indices)], base=2,
        colours=colours)
    large = [random.choice(((1, 2, 3, 4), (200, 2, 3, 4), random_colour(True))) for _ in range(70 * 66)]
    flat = [(9, 8, 7, 255) if (x // 40 + y // 50) % 2 else (1, 2, 3, 0) for y in range(66) for x in range(130)]
    one('tiles', [Layer(large, (70, 66))], (70, 66))
    one('tiles-flat', [Layer(flat, (130, 66))], (130, 66), version=11)

    bottom = Layer(random_picture(), kind=0)
    small = dict(size=(5, 4))

    def little():
        return random_picture(True, 5, 4)

    one('offsets', [Layer(little(), at=(2, 1), **small), bottom])
    one('offsets-outside', [Layer(little(), at=(-2, -3), **small), Layer(little(), at=(11, 5), **small),
                            Layer(little(), at=(400, -70), **small), Layer(little(), at=(-2 ** 31, 2 ** 31 - 1), **small),
                            bottom])
    one('larger-than-canvas', [Layer(random_picture(True, 20, 20), (20, 20), at=(-3, -9))])
    one('opacity', [Layer(random_picture(True), opacity=100), bottom])
    one('opacity-on-nothing', [Layer(random_picture(True), opacity=1), Layer(random_picture(True), opacity=77)])
    one('opacity-as-float', [Layer(random_picture(True), opacity=3, float_opacity=0.25), bottom], version=11)
    one('invisible', [Layer(random_picture(True), visible=0), bottom])
    one('mask', [Layer(random_picture(True), mask=[random.randrange(256) for _ in range(W * H)]), bottom])
    one('mask-of-opaque', [Layer(random_picture(), kind=0, mask=[random.randrange(256) for _ in range(W * H)])], version=11)
    one('mask-not-applied', [Layer(random_picture(True), mask=[0] * (W * H), mask_applies=0), bottom])
    group = Layer(random_picture(True), group=True, opacity=128)
    inside = Layer(little(), path=[0, 0], opacity=200, **small)
    hidden = Layer(random_picture(True), group=True, visible=0)
    below_hidden = Layer(little(), path=[1, 0], **small)
    one('groups', [group, inside, hidden, below_hidden, bottom], version=3)
    nested = Layer(random_picture(True), group=True, path=[0, 0], opacity=100)
    deep = Layer(little(), path=[0, 0, 0], **small)
    one('groups-in-groups', [group, nested, deep, bottom], version=11)


def xcf_broken():
    def one(name, **options):
        layers = options.pop('layers', None) or [Layer(random_picture(True))]
        broken(name + '.xcf', Xcf(layers, **options).bytes())

    whole = Xcf([Layer(random_picture(True))]).bytes()
    broken('magic-alone.xcf', whole[:14])
    for name, magic in (('version-without-letter', b'gimp xcf 0011\0'), ('version-of-letters', b'gimp xcf vabc\0'),
                        ('version-of-nothing', b'gimp xcf v\0\0\0\0'), ('version-without-end', b'gimp xcf v001x'),
                        ('version-filed', b'gimp xcf fila\0')):
        one(name, magic=magic)
    for name, size in (('width-zero', (0, H)), ('height-zero', (W, 0)), ('size-enormous', (2 ** 32 - 1, 2 ** 32 - 1)),
                       ('size-beyond-memory', (16385, 16384))):
        one(name, size=size)
    one('base-type-3', base=3)
    for version, precision in ((4, 5), (7, 125), (7, 400), (6, 600)):
        one(f'precision-{precision}-of-{version}', version=version, precision=precision)
    one('compression-3', compression=3)
    one('compression-missing', more=struct.pack('>II', 17, 0))
    one('property-beyond-file', more=struct.pack('>II', 99, 2 ** 32 - 1))
    one('colours-257', base=2, version=1, colours=[(1, 2, 3)] * 257, layers=[Layer(random_picture(), kind=4)])
    one('colours-enormous', base=2, version=1, colours=[(1, 2, 3)], count=2 ** 32 - 1,
        layers=[Layer(random_picture(), kind=4)])
    one('colours-missing', base=2, version=1, layers=[Layer(random_picture(), kind=4)])
    one('grey-layer-of-rgb', layers=[Layer(grey_picture(False), kind=2)])
    one('rgb-layer-of-grey', base=1)
    good_layer = struct.pack('>IIII', W, H, 1, 6)
    at = whole.index(good_layer)
    for name, fields in (('layer-width-zero', (0, H, 1, 6)), ('layer-height-zero', (W, 0, 1, 6)),
                         ('layer-type-6', (W, H, 6, 6)), ('layer-size-enormous', (2 ** 32 - 1, 2 ** 32 - 1, 1, 6)),
                         ('layer-name-enormous', (W, H, 1, 2 ** 32 - 1))):
        broken(name + '.xcf', whole[:at] + struct.pack('>IIII', *fields) + whole[at + 16:])
    pointer = whole.index(struct.pack('>I', at))
    for name, value in (('layer-beyond-file', len(whole)), ('layer-far-beyond-file', 2 ** 32 - 1), ('layer-in-itself', 0)):
        broken(name + '.xcf', whole[:pointer] + struct.pack('>I', value or pointer) + whole[pointer + 4:])
    broken('layers-without-end.xcf', whole[:pointer] + struct.pack('>I', at) * 9)
    for fault in ('hierarchy-size', 'bpp', 'level-missing', 'level-size', 'tile-too-many', 'tile-missing', 'tile-beyond',
                  'run-too-long'):
        one(fault, faults=(fault,))
    one('mask-size', faults=('mask-size',), layers=[Layer(random_picture(True), mask=[1] * (W * H))])
    one('stream-damaged', faults=('stream-damaged',), compression=2, version=8)
    data = bytearray(Xcf([Layer([(127, 127, 127, 127)] * (W * H))], compression=0).bytes())
    at = data.index(struct.pack('>II', 17, 1)) + 8
    data[at] = 1
    broken('plain-read-as-runs.xcf', bytes(data))
    one('path-too-deep', layers=[Layer(random_picture(True), path=[0] * 65)])


# ---- PMG ----

def pmg(width, height, pixels, map_width=0, map_height=0, map_pixels=b''):
    return struct.pack('<QQ', width, height) + pixels + struct.pack('<QQ', map_width, map_height) + map_pixels


def pmg_all():
    def block(picture):
        return b''.join(bytes(pixel) for pixel in picture)

    picture, little = random_picture(True), random_picture(True, 3, 2)
    good('plain.pmg', pmg(W, H, block(picture)), picture)
    good('pixel.pmg', pmg(1, 1, bytes((1, 2, 3, 4))), [(1, 2, 3, 4)])
    good('with-map.pmg', pmg(W, H, block(picture), 3, 2, block(little)), picture)
    good('map-of-no-height.pmg', pmg(W, H, block(picture), 9, 0), picture)
    good('empty.pmg', pmg(0, 0, b''), [])
    good('empty-with-map.pmg', pmg(0, 0, b'', 3, 2, block(little)), [])
    broken('nothing.pmg', b'')
    broken('width-alone.pmg', struct.pack('<Q', 0))
    broken('pixels-cut.pmg', pmg(W, H, block(picture))[:-20])
    broken('map-cut.pmg', pmg(W, H, block(picture), 3, 2, block(little)[:-1]))
    broken('map-fields-cut.pmg', pmg(W, H, block(picture))[:-1])
    broken('width-of-32-bits.pmg', pmg(2 ** 31, 0, b''))
    broken('height-of-32-bits.pmg', pmg(0, 2 ** 31, b''))
    broken('map-width-of-32-bits.pmg', pmg(0, 0, b'', 2 ** 31, 0))
    broken('map-height-of-32-bits.pmg', pmg(0, 0, b'', 0, 2 ** 31))
    broken('size-that-wraps.pmg', pmg(2 ** 31 - 1, 2 ** 31 - 1, b''))
    broken('size-of-two-to-62.pmg', pmg(2 ** 62, 1, bytes(64)))


# ---- what came later; its place behind all else keeps the other files as they are ----

def light_of(byte):
    part = byte / 255
    return part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4


def byte_of_light(light):
    return sum(light >= light_of(byte + 0.5) for byte in range(255))


def long_sample(code, version):
    """A random sample in the form that `code` has in Python, as bytes, and its value of 0 to 1."""
    if code in 'efd':
        value = random.choice((random.random(), random.random() / 50, -0.25, 1.5, float('inf'), float('-inf'), float('nan'),
                               2.0 ** -20, -2.0 ** -20, 1.0, 0.0))
    else:
        value = random.randrange(256 ** struct.calcsize('>' + code))
    stored = struct.pack(('<' if version < 12 else '>') + code, value)
    value = struct.unpack(('<' if version < 12 else '>') + code, stored)[0]
    if code not in 'efd':
        return stored, value / (256 ** len(stored) - 1)
    return stored, min(value, 1.0) if value > 0 else 0.0


def long_pixels(code, version, linear, kind, count=W * H):
    """Pixels as they are stored, and as they look."""
    colours, alpha = (3 if kind < 2 else 1), kind % 2
    stored, pixels = [], []
    for _ in range(count):
        samples = [long_sample(code, version) for _ in range(colours + alpha)]
        seen = [byte_of_light(value) if linear else int(value * 255 + 0.5) for _, value in samples[:colours]]
        stored.append(b''.join(sample for sample, _ in samples))
        pixels.append(tuple(seen * (1 if colours == 3 else 3)) + (int(samples[-1][1] * 255 + 0.5) if alpha else 255,))
    return stored, pixels


def xcf_long_samples():
    for version, precision, code, linear in (
            (4, 1, 'H', False), (4, 2, 'I', True), (4, 3, 'e', True), (4, 4, 'f', True), (5, 100, 'B', True),
            (5, 200, 'H', True), (5, 450, 'e', False), (6, 250, 'H', False), (6, 500, 'f', True), (6, 550, 'f', False),
            (7, 300, 'I', True), (7, 500, 'e', True), (7, 700, 'd', True), (9, 275, 'H', False), (11, 650, 'f', False),
            (12, 100, 'B', True), (12, 200, 'H', True), (12, 250, 'H', False), (12, 300, 'I', True), (12, 350, 'I', False),
            (12, 500, 'e', True), (12, 550, 'e', False), (12, 600, 'f', True), (12, 650, 'f', False), (12, 700, 'd', True),
            (12, 750, 'd', False), (14, 375, 'I', False), (14, 575, 'e', False), (14, 675, 'f', False)):
        kind = random.choice((0, 1, 2, 3))
        stored, pixels = long_pixels(code, version, linear, kind)
        layer = Layer(pixels, kind=kind)
        layer.stored = stored
        good(f'samples-{precision}-of-{version}.xcf',
             Xcf([layer], base=kind // 2, version=version, precision=precision, compression=random.choice((0, 1, 2))).bytes(),
             pixels)
    stored, pixels = long_pixels('f', 12, True, 1)
    layer = Layer(pixels)
    layer.stored = stored
    parts = [random.random() for _ in range(W * H)]
    layer.mask = [int(value * 255 + 0.5) for value in parts]
    layer.stored_mask = [struct.pack('>f', value) for value in parts]
    good('samples-of-mask.xcf', Xcf([layer], version=12, precision=600).bytes(), laid([layer]))
    broken('samples-cut.xcf', Xcf([layer], version=12, precision=600, compression=0).bytes()[:-1])
    indices = [random.randrange(20) for _ in range(W * H)]
    layer = Layer([OPAQUE_BLACK] * (W * H), kind=4, indices=indices)
    for precision in (100, 250):
        broken(f'precision-{precision}-of-indices.xcf',
               Xcf([layer], base=2, version=12, precision=precision, colours=[random_colour() for _ in range(20)]).bytes())
    for precision in (0, 50, 800, 2 ** 32 - 46):
        broken(f'precision-{precision}.xcf', Xcf([Layer(random_picture(True))], version=12, precision=precision).bytes())
    for version, precision in ((5, 175), (6, 700), (7, 650), (12, 200)):
        broken(f'bytes-not-of-precision-{precision}-of-{version}.xcf',
               Xcf([Layer(random_picture(True))], version=version, precision=precision).bytes())


def xcf_faults_of_newer_files():
    for fault in ('hierarchy-size', 'bpp', 'level-missing', 'level-size', 'tile-too-many', 'tile-missing', 'tile-beyond'):
        for version, precision, compression in ((11, 150, 0), (12, 600, 1), (10, 250, 2)):
            stored, pixels = long_pixels({150: 'B', 600: 'f', 250: 'H'}[precision], version, precision == 600, 1)
            layer = Layer(pixels)
            layer.stored = stored
            broken(f'{fault}-of-{version}.xcf', Xcf([layer], version=version, precision=precision, compression=compression,
                                                   faults=(fault,)).bytes())

    def one(name, layer, **options):
        broken(name + '.xcf', Xcf([layer], faults=(name[:name.index('-of-')],), **options).bytes())

    for version in (11, 12):
        one(f'run-too-long-of-{version}', Layer(random_picture(True)), version=version)
        one(f'stream-damaged-of-{version}', Layer(random_picture(True)), version=version, compression=2)
    mask = [1] * (W * H)
    one('mask-size-of-11', Layer(random_picture(True), mask=mask), version=11)
    one('mask-size-of-group', Layer(random_picture(True), mask=mask, group=True), version=3)
    one('mask-size-of-hidden-group', Layer(random_picture(True), mask=mask, group=True, visible=0), version=3)


def xcf_groups():
    def one(name, layers, **options):
        good(name + '.xcf', Xcf(layers, version=3, **options).bytes(), laid(layers))

    def little(x, y, path, **options):
        return Layer(random_picture(True, 5, 4), (5, 4), at=(x, y), path=path, **options)

    def group(**options):
        return Layer(random_picture(True), group=True, **options)

    bottom = Layer(random_picture(), kind=0)
    apart = [little(1, 1, [0, 0]), little(3, 2, [0, 1], opacity=200)]
    one('group-of-opacity', [group(opacity=99), *apart, bottom])
    one('group-that-is-opaque', [group(), *apart, bottom])
    one('group-of-no-opacity', [group(opacity=0), *apart, bottom])
    one('group-of-nothing', [group(opacity=99), bottom])

    def masked(**options):
        """A group is as large as what is in it, and so is its mask."""
        return Layer(random_picture(True, 7, 5), (7, 5), at=(1, 1), group=True, mask=mask, **options)

    mask = [random.randrange(256) for _ in range(7 * 5)]
    one('group-with-mask', [masked(), *apart, bottom])
    one('group-with-mask-and-opacity', [masked(opacity=99), *apart, bottom])
    one('group-with-mask-not-applied', [masked(mask_applies=0), *apart, bottom])
    one('group-in-hidden-group', [group(visible=0), group(path=[0, 0], opacity=99), little(1, 1, [0, 0, 0]), bottom])
    one('groups-apart-in-each-other', [group(opacity=99), little(2, 2, [0, 0]), group(path=[0, 1], opacity=150),
                                       little(1, 1, [0, 1, 0]), little(4, 3, [0, 1, 1]), bottom])
    one('group-between-layers', [little(0, 0, None), group(opacity=99), little(1, 1, [1, 0]), bottom])
    unread = Xcf([group(opacity=99), *apart, bottom], version=3)
    unread.fill(unread.hierarchies[0], 0)
    good('group-without-pixels.xcf', unread.bytes(), laid([group(opacity=99), *apart, bottom]))
    broken('group-with-mask-cut.xcf', Xcf([*apart, bottom, masked()], version=3).bytes()[:-1])
    broken('group-with-layer-cut.xcf', Xcf([group(visible=0), *apart], version=3).bytes()[:-1])


def tga_unused_map_alpha():
    stored = [bytes(random.randrange(256) for _ in range(3)) + b'\0' for _ in range(9)]
    indices = [random.randrange(9) for _ in range(W * H)]
    for descriptor, alpha in ((0x20, 255), (0x28, 0)):
        good(f'mapped-32-alpha{descriptor & 15}-all-clear.tga',
             tga(1, 8, bytes(indices), colours=b''.join(stored), count=9, map_depth=32, descriptor=descriptor),
             [(stored[i][2], stored[i][1], stored[i][0], alpha) for i in indices])
    broken('mapped-32-cut.tga', tga(1, 8, bytes(indices)[:-1], colours=b''.join(stored), count=9, map_depth=32))
    broken('mapped-32-map-cut.tga', tga(1, 8, b'', colours=b''.join(stored)[:-1], count=9, map_depth=32))


for directory in ('good', 'broken'):
    os.makedirs(os.path.join(HERE, directory), exist_ok=True)
    for old in os.listdir(os.path.join(HERE, directory)):
        os.remove(os.path.join(HERE, directory, old))
by_imagemagick()
bmp_good()
bmp_broken()
tga_good()
tga_broken()
xcf_good()
xcf_broken()
pmg_all()
xcf_long_samples()
xcf_groups()
xcf_faults_of_newer_files()
tga_unused_map_alpha()
