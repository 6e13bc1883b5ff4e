#!/usr/bin/env python3
"""Makes the corpus of the PNG tests: see README.md. Needs convert (ImageMagick), optipng, pngcrush, zopflipng, apngasm."""
import os
import random
import struct
import subprocess
import tempfile
import zlib

HERE = os.path.dirname(os.path.abspath(__file__))
GOOD = os.path.join(HERE, 'good')
BROKEN = os.path.join(HERE, 'broken')
SIGNATURE = b'\x89PNG\r\n\x1a\n'
random.seed(5)


def chunk(kind, data=b'', crc_error=0):
    return (struct.pack('>I', len(data)) + kind + data +
            struct.pack('>I', zlib.crc32(kind + data) ^ crc_error))


def header(width, height, depth, colour, compression=0, filtering=0, interlace=0):
    return chunk(b'IHDR', struct.pack('>IIBBBBB', width, height, depth, colour, compression, filtering, interlace))


def png(*chunks):
    return SIGNATURE + b''.join(chunks) + chunk(b'IEND')


def chunks_of(data):
    at = 8
    while at < len(data):
        size = struct.unpack('>I', data[at:at + 4])[0]
        yield data[at + 4:at + 8], data[at + 8:at + 8 + size]
        at += 12 + size


def run(*command):
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def decode(path):
    """RGBA of one still picture: sixteen bits from ImageMagick, rounded to eight."""
    raw = subprocess.run(['convert', path, '-depth', '16', '-endian', 'LSB', 'RGBA:-'], check=True,
                         stdout=subprocess.PIPE).stdout
    return bytes((s * 255 + 32767) // 65535 for (s,) in struct.iter_unpack('<H', raw))


def decode_bytes(data):
    with tempfile.NamedTemporaryFile(suffix='.png') as file:
        file.write(data)
        file.flush()
        return decode(file.name)


def save(folder, name, data):
    with open(os.path.join(folder, name), 'wb') as file:
        file.write(data)


def good(name, data, pixels=None):
    save(GOOD, name + '.png', data)
    save(GOOD, name + '.rgba', decode_bytes(data) if pixels is None else pixels)


def broken(name, data):
    save(BROKEN, name + '.png', data)


def squash(data):
    """All frames of an animated file on one canvas."""
    shared, frames, default = b'', [], b''
    for kind, content in chunks_of(data):
        if kind == b'IHDR':
            width, height = struct.unpack('>II', content[:8])
            kind_fields = content[8:]
        elif kind in (b'PLTE', b'tRNS'):
            shared += chunk(kind, content)
        elif kind == b'fcTL':
            frames.append([struct.unpack('>IIIII', content[:20])[1:], content[25], b'', False])
        elif kind == b'IDAT':
            default += content
            if frames:
                frames[-1][2] += content
                frames[-1][3] = True
        elif kind == b'fdAT':
            frames[-1][2] += content[4:]

    def pixels_of(w, h, stream):
        return decode_bytes(png(chunk(b'IHDR', struct.pack('>II', w, h) + kind_fields), shared, chunk(b'IDAT', stream)))

    canvas = bytearray(width * height * 4)
    if not any(frame[3] for frame in frames):
        canvas[:] = pixels_of(width, height, default)
    for (w, h, x0, y0), blend, stream, _ in frames:
        pixels = pixels_of(w, h, stream)
        for y in range(h):
            for x in range(w):
                source = pixels[(y * w + x) * 4:][:4]
                at = ((y + y0) * width + x + x0) * 4
                under = canvas[at:at + 4]
                sa, da = source[3], under[3]
                if blend == 0 or sa == 255 or da == 0:
                    canvas[at:at + 4] = source
                elif sa > 0:
                    rest = (255 - sa) * da
                    alpha = sa + (rest + 127) // 255
                    mixed = [min(255, (alpha // 2 + s * sa + (127 + rest * d) // 255) // alpha)
                             for s, d in zip(source[:3], under[:3])]
                    canvas[at:at + 4] = bytes(mixed + [alpha])
    return bytes(canvas)


def by_imagemagick(name, *arguments):
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, 'a.png')
        run('convert', *arguments[:-1], arguments[-1] + path)
        with open(path, 'rb') as file:
            data = file.read()
        good('im-' + name, data)
        return data


def by_optimiser(name, data, *command):
    """`command` with IN and OUT in place of the files."""
    with tempfile.TemporaryDirectory() as folder:
        source, target = os.path.join(folder, 'in.png'), os.path.join(folder, 'out.png')
        save(folder, 'in.png', data)
        run(*[{'IN': source, 'OUT': target}.get(word, word) for word in command])
        with open(target, 'rb') as file:
            good(name, file.read())


def make_good():
    rose = ['rose:', '-resize', '24x18!']
    alpha = rose + ['-alpha', 'set', '-channel', 'A', '-fx', 'i/w', '+channel']
    keyed = rose + ['-posterize', '3', '-fill', 'none', '-draw', 'rectangle 2,2 9,9']
    rgb = by_imagemagick('rgb8', *rose, 'PNG24:')
    rgba = by_imagemagick('rgba8', *alpha, 'PNG32:')
    mapped = by_imagemagick('palette8', *rose, '-colors', '100', 'PNG8:')
    by_imagemagick('rgb16', *rose, 'PNG48:')
    by_imagemagick('rgba16', *alpha, 'PNG64:')
    by_imagemagick('palette-alpha', *keyed, 'PNG8:')
    for depth in (1, 2, 4):
        by_imagemagick(f'palette{depth}', *rose, '-colors', str(2 ** depth), '-define', f'png:bit-depth={depth}', '-define',
                       'png:color-type=3', 'PNG:')
    by_imagemagick('interlaced-palette4', *rose, '-colors', '16', '-interlace', 'PNG', '-define', 'png:bit-depth=4',
                   '-define', 'png:color-type=3', 'PNG:')
    by_imagemagick('rgb-key', *keyed, 'PNG24:')
    for depth in (1, 2, 4, 8, 16):
        by_imagemagick(f'grey{depth}', *rose, '-colorspace', 'Gray', '-depth', str(depth), '-define',
                       f'png:bit-depth={depth}', '-define', 'png:color-type=0', 'PNG:')
    for depth in (8, 16):
        by_imagemagick(f'grey-alpha{depth}', *alpha, '-colorspace', 'Gray', '-define', f'png:bit-depth={depth}',
                       '-define', 'png:color-type=4', 'PNG:')
    for name, source, kind in (('rgb8', rose, 'PNG24:'), ('rgba8', alpha, 'PNG32:'), ('rgb16', rose, 'PNG48:'),
                               ('rgba16', alpha, 'PNG64:'), ('palette8', rose, 'PNG8:')):
        by_imagemagick('interlaced-' + name, *source, '-interlace', 'PNG', kind)
    by_imagemagick('interlaced-grey1', *rose, '-colorspace', 'Gray', '-interlace', 'PNG', '-define', 'png:bit-depth=1',
                   '-define', 'png:color-type=0', 'PNG:')
    for quality in (0, 11, 12, 13, 14, 95):
        by_imagemagick(f'quality{quality}', *alpha, '-quality', str(quality), 'PNG32:')
    by_imagemagick('flat', '-size', '64x48', 'xc:#205080', '-fill', 'white', '-draw', 'rectangle 8,8 40,30', 'PNG32:')
    by_imagemagick('1x1', '-size', '1x1', 'xc:#12345678', 'PNG32:')

    by_optimiser('optipng-rgb', rgb, 'optipng', '-quiet', '-o5', 'IN', '-out', 'OUT')
    by_optimiser('optipng-interlaced', rgba, 'optipng', '-quiet', '-i1', '-zw256', 'IN', '-out', 'OUT')
    by_optimiser('pngcrush-rgba', rgba, 'pngcrush', '-q', '-brute', 'IN', 'OUT')
    by_optimiser('pngcrush-palette', mapped, 'pngcrush', '-q', '-m', '1', 'IN', 'OUT')
    by_optimiser('zopflipng-rgba', rgba, 'zopflipng', '-m', 'IN', 'OUT')
    by_optimiser('zopflipng-palette', mapped, 'zopflipng', 'IN', 'OUT')

    rows = b''.join(bytes([0]) + bytes(random.randrange(256) for _ in range(5)) for _ in range(7))
    stream = zlib.compress(rows)
    grey = header(5, 7, 8, 0)
    good('own-byte-per-chunk', png(grey, *[chunk(b'IDAT', bytes([byte])) for byte in stream]))
    good('own-empty-chunks', png(grey, chunk(b'IDAT'), chunk(b'IDAT', stream[:9]), chunk(b'IDAT'),
                                 chunk(b'IDAT', stream[9:]), chunk(b'IDAT')))
    good('own-unknown-chunks', png(grey, chunk(b'tEXt', b'Title\0x'), chunk(b'abCd', b'123'), chunk(b'IDAT', stream),
                                   chunk(b'tIME', bytes([7, 233, 1, 2, 3, 4, 5]))))
    good('own-grey-key', png(grey, chunk(b'tRNS', bytes([0, rows[3]])), chunk(b'IDAT', stream)))
    wide = b''.join(bytes([0]) + struct.pack('>HHHHHH', 1, 2, 3, 1, 2, 0x103) for _ in range(2))
    good('own-rgb16-key', png(header(2, 2, 16, 2), chunk(b'tRNS', struct.pack('>HHH', 1, 2, 3)),
                              chunk(b'IDAT', zlib.compress(wide))))

    with tempfile.TemporaryDirectory() as folder:
        for i in range(3):
            run('convert', '-size', '24x18', 'xc:#00000000', '-fill', ('red', '#00ff0080', 'blue')[i], '-draw',
                f'circle {6 + 5 * i},9 {6 + 5 * i},{13 - i}', f'PNG32:{folder}/frame{i}.png')
        for name, options in (('apngasm', []), ('apngasm-skip-first', ['-f'])):
            run('apngasm', f'{folder}/out.png', f'{folder}/frame0.png', f'{folder}/frame1.png', f'{folder}/frame2.png',
                '1', '10', *options)
            with open(f'{folder}/out.png', 'rb') as file:
                data = file.read()
            good(name, data, squash(data))


def make_broken():
    rows = b''.join(bytes([y % 5]) + bytes(range(y, y + 12)) for y in range(3))
    size = (4, 3)
    head = header(*size, 8, 2)
    stream = zlib.compress(rows)
    data = chunk(b'IDAT', stream)
    whole = png(head, data)
    decode_bytes(whole)

    def raw(bits):
        """A zlib stream of hand-written bits, a right checksum behind them."""
        value = int(bits.replace(' ', '')[::-1], 2)
        return b'\x78\x01' + value.to_bytes((len(bits.replace(' ', '')) + 7) // 8, 'little') + \
            struct.pack('>I', zlib.adler32(rows))

    def number(value, count):
        return ''.join(str(value >> i & 1) for i in range(count))

    broken('empty', b'')
    broken('one-byte', b'\x89')
    broken('signature-alone', SIGNATURE)
    broken('signature-text-mode', whole.replace(b'\r\n', b'\n', 1))
    broken('crc-of-header', SIGNATURE + chunk(b'IHDR', head[8:-4], 1) + data + chunk(b'IEND'))
    broken('crc-of-data', png(head, chunk(b'IDAT', stream, 1 << 31)))
    broken('crc-of-end', SIGNATURE + head + data + chunk(b'IEND', b'', 1))
    broken('crc-of-unknown', png(head, chunk(b'tEXt', b'x', 1), data))
    broken('no-header', png(data))
    broken('header-not-first', png(chunk(b'gAMA', bytes(4)), head, data))
    broken('header-twice', png(head, head, data))
    broken('header-short', png(chunk(b'IHDR', head[8:-5]), data))
    broken('header-long', png(chunk(b'IHDR', head[8:-4] + b'\0'), data))
    broken('width-zero', png(header(0, 3, 8, 2), data))
    broken('height-zero', png(header(4, 0, 8, 2), data))
    broken('size-enormous', png(header(0x7FFFFFFF, 0x7FFFFFFF, 16, 6), data))
    broken('size-beyond-data', png(header(8000, 8000, 8, 6), data))
    broken('depth-3', png(header(*size, 3, 0), data))
    broken('depth-4-of-rgb', png(header(*size, 4, 2), data))
    broken('depth-16-of-palette', png(header(*size, 16, 3), chunk(b'PLTE', bytes(3)), data))
    broken('colour-type-1', png(header(*size, 8, 1), data))
    broken('compression-1', png(header(*size, 8, 2, compression=1), data))
    broken('filter-method-1', png(header(*size, 8, 2, filtering=1), data))
    broken('interlace-2', png(header(*size, 8, 2, interlace=2), data))
    broken('interlaced-data-are-not', png(header(*size, 8, 2, interlace=1), data))
    broken('filter-5', png(head, chunk(b'IDAT', zlib.compress(b'\x05' + rows[1:]))))
    broken('row-missing', png(head, chunk(b'IDAT', zlib.compress(rows[:-13]))))
    broken('row-too-many', png(head, chunk(b'IDAT', zlib.compress(rows + rows[:13]))))
    broken('byte-missing', png(head, chunk(b'IDAT', zlib.compress(rows[:-1]))))
    broken('byte-too-many', png(head, chunk(b'IDAT', zlib.compress(rows + b'\0'))))
    broken('no-data', png(head))
    broken('no-end', whole[:-12])
    broken('end-cut', whole[:-1])
    broken('chunk-beyond-file', SIGNATURE + head + struct.pack('>I', 0x7FFFFFFF) + data[4:] + chunk(b'IEND'))
    broken('adler-wrong', png(head, chunk(b'IDAT', stream[:-1] + bytes([stream[-1] ^ 1]))))
    broken('adler-missing', png(head, chunk(b'IDAT', stream[:-4])))
    broken('zlib-method', png(head, chunk(b'IDAT', b'\x77\x09' + stream[2:])))
    broken('zlib-window', png(head, chunk(b'IDAT', b'\x88\x1c' + stream[2:])))
    broken('zlib-check', png(head, chunk(b'IDAT', b'\x78\x02' + stream[2:])))
    broken('zlib-dictionary', png(head, chunk(b'IDAT', b'\x78\xbb' + stream[2:])))
    broken('deflate-block-type', png(head, chunk(b'IDAT', raw('1 11'))))
    broken('deflate-stored-length',
           png(head, chunk(b'IDAT', b'\x78\x01\x01' + struct.pack('<HH', len(rows), len(rows)) + rows +
                           struct.pack('>I', zlib.adler32(rows)))))
    broken('deflate-distance-too-far', png(head, chunk(b'IDAT', raw('1 10 00110000 0000001 00100 0' + '0' * 40))))
    broken('deflate-distance-30', png(head, chunk(b'IDAT', raw('1 10 00110000 0000001 11110' + '0' * 40))))
    broken('deflate-length-286', png(head, chunk(b'IDAT', raw('1 10 00110000 11000110' + '0' * 40))))
    broken('deflate-codes-oversubscribed',
           png(head, chunk(b'IDAT', raw('1 01' + number(0, 5) + number(0, 5) + number(0, 4) + number(1, 3) * 4))))
    broken('deflate-codes-incomplete',
           png(head, chunk(b'IDAT', raw('1 01' + number(0, 5) + number(0, 5) + number(0, 4) + number(2, 3) * 3 +
                                        number(0, 3)))))
    broken('deflate-too-many-literals',
           png(head, chunk(b'IDAT', raw('1 01' + number(30, 5) + number(0, 5) + number(15, 4) + '0' * 60))))
    broken('palette-missing', png(header(2, 1, 8, 3), chunk(b'IDAT', zlib.compress(bytes(3)))))
    broken('palette-of-four-bytes', png(header(2, 1, 8, 3), chunk(b'PLTE', bytes(4)),
                                        chunk(b'IDAT', zlib.compress(bytes(3)))))
    broken('palette-of-257', png(header(2, 1, 8, 3), chunk(b'PLTE', bytes(771)),
                                 chunk(b'IDAT', zlib.compress(bytes(3)))))
    broken('transparency-of-palette-long', png(header(2, 1, 8, 3), chunk(b'PLTE', bytes(3)), chunk(b'tRNS', bytes(2)),
                                               chunk(b'IDAT', zlib.compress(bytes(3)))))
    broken('transparency-of-rgb-short', png(head, chunk(b'tRNS', bytes(5)), data))
    broken('transparency-of-grey-long', png(header(2, 1, 8, 0), chunk(b'tRNS', bytes(3)),
                                            chunk(b'IDAT', zlib.compress(bytes(3)))))

    def frame(width, height, x=0, y=0, blend=0):
        return chunk(b'fcTL', struct.pack('>IIIIIHHBB', 0, width, height, x, y, 1, 10, 0, blend))

    animation = chunk(b'acTL', struct.pack('>II', 1, 0))
    frame_data = chunk(b'fdAT', bytes(4) + stream)
    broken('animation-twice', png(head, animation, animation, data))
    broken('animation-of-seven-bytes', png(head, chunk(b'acTL', bytes(7)), data))
    broken('frame-of-25-bytes', png(head, animation, chunk(b'fcTL', bytes(25)), data))
    broken('frame-beyond-canvas', png(head, animation, data, frame(4, 3, 1, 0), frame_data))
    broken('frame-of-no-width', png(head, animation, data, frame(0, 3), frame_data))
    broken('frame-blend-2', png(head, animation, data, frame(4, 3, blend=2), frame_data))
    broken('frame-data-without-frame', png(head, animation, data, frame_data))
    broken('frame-data-of-three-bytes', png(head, animation, data, frame(4, 3), chunk(b'fdAT', bytes(3)), frame_data))
    broken('frame-data-of-another-size', png(head, animation, data, frame(4, 2), frame_data))
    broken('frame-without-default-image', png(head, animation, frame(4, 3), frame_data))


for directory in (GOOD, BROKEN):
    os.makedirs(directory, exist_ok=True)
make_good()
make_broken()
