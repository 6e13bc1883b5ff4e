#!/usr/bin/env python3
"""Makes the files of the corpus that GIMP writes, and their pixels as GIMP reads them: see README.md.

Needs gimp (2.10), convert (ImageMagick) and xvfb-run, since some of GIMP's writers want a screen."""
import os
import random
import struct
import subprocess
import tempfile
import zlib

HERE = os.path.dirname(os.path.abspath(__file__))
OUT = os.path.join(HERE, 'gimp')
random.seed(11)
W, H = 13, 7  # of most pictures; no multiple of anything

# What the script below is made of. `add` puts a picture on the top of an image or a group as a layer, `save` writes an
# image as XCF, and `expect` writes the pixels that GIMP shows.
LANGUAGE = r'''
(define (source image name) (car (gimp-file-load-layer RUN-NONINTERACTIVE image (string-append work name ".png"))))
(define (new width height) (let ((i (car (gimp-image-new width height RGB)))) (gimp-image-undo-disable i) i))
(define (insert image layer parent opacity mode)
  (gimp-layer-set-mode layer mode)
  (gimp-layer-set-opacity layer opacity)
  (gimp-image-insert-layer image layer parent -1)
  layer)
(define (add image name parent x y opacity)
  (let ((l (insert image (source image name) parent opacity LAYER-MODE-NORMAL-LEGACY)))
    (gimp-layer-set-offsets l x y)
    l))
(define (flat image name) (gimp-layer-flatten (add image name 0 0 0 100)))
(define (group image parent opacity)
  (insert image (car (gimp-layer-group-new image)) parent opacity LAYER-MODE-NORMAL-LEGACY))
(define (mask layer) (gimp-layer-add-mask layer (car (gimp-layer-create-mask layer ADD-MASK-COPY))))
(define (index image colours)
  (gimp-image-convert-indexed image CONVERT-DITHER-NONE CONVERT-PALETTE-GENERATE colours 0 0 ""))
(define (precision image kind)
  (if (not (= (car (gimp-image-get-precision image)) kind)) (gimp-image-convert-precision image kind)))
(define (expect image name)
  (gimp-image-undo-disable image)
  (if (not (= (car (gimp-image-base-type image)) RGB)) (gimp-image-convert-rgb image))
  (let ((l (car (gimp-image-merge-visible-layers image CLIP-TO-IMAGE))))
    (gimp-layer-resize-to-image-size l)
    (precision image PRECISION-U8-GAMMA)
    (if (= 0 (car (gimp-drawable-has-alpha l))) (gimp-layer-add-alpha l))
    (file-png-save2 RUN-NONINTERACTIVE image l (string-append work name ".expected") "x" 0 9 0 0 0 0 0 0 1))
  (gimp-image-delete image))
(define (read name) (car (gimp-file-load RUN-NONINTERACTIVE (string-append out name) name)))
(define (drawable image) (car (gimp-image-get-active-drawable image)))
(define (save image name)
  (gimp-xcf-save 0 image (drawable image) (string-append out name) name)
  (gimp-image-delete image)
  (expect (read name) name))
(define (tga image name)
  (file-tga-save RUN-WITH-LAST-VALS image (drawable image) (string-append out name) name 0 0)
  (gimp-image-delete image)
  (expect (read name) name))
(define (bmp image name)
  (file-bmp-save RUN-WITH-LAST-VALS image (drawable image) (string-append out name) name)
  (gimp-image-delete image)
  (expect (read name) name))
'''


def colour(alpha):
    return tuple(random.randrange(256) for _ in range(3)) + (random.randrange(256) if alpha else 255,)


def source(folder, name, pixels, width=W, height=H):
    """A PNG file for GIMP to begin with."""
    def chunk(kind, data):
        return struct.pack('>I', len(data)) + kind + data + struct.pack('>I', zlib.crc32(kind + data))
    rows = b''.join(b'\0' + b''.join(bytes(p) for p in pixels[at:at + width]) for at in range(0, width * height, width))
    with open(os.path.join(folder, name + '.png'), 'wb') as file:
        file.write(b'\x89PNG\r\n\x1a\n' + chunk(b'IHDR', struct.pack('>IIBBBBB', width, height, 8, 6, 0, 0, 0)) +
                   chunk(b'IDAT', zlib.compress(rows)) + chunk(b'IEND', b''))


def sources(folder):
    source(folder, 'opaque', [colour(False) for _ in range(W * H)])
    source(folder, 'clear', [colour(True) for _ in range(W * H)])
    source(folder, 'small', [colour(True) for _ in range(5 * 4)], 5, 4)
    source(folder, 'solid', [colour(False) for _ in range(5 * 4)], 5, 4)
    few = [colour(True) for _ in range(5)]
    source(folder, 'runs', [few[i // 4 % 3 + i // 40] for i in range(W * H)])
    source(folder, 'tiles', [(x // 9 * 20, y // 5 * 15, 7, 255 if x > 20 else x * 9) for y in range(66) for x in range(70)],
           70, 66)


def pictures():
    """Names of XCF files and how to make what they hold, in `i`."""
    bottom = '(add i "opaque" 0 0 0 100) '
    yield 'rgb', '(flat i "opaque")'
    yield 'rgba', '(add i "clear" 0 0 0 100)'
    yield 'tiles', '(add i "tiles" 0 0 0 100)', (70, 66)
    yield 'grey', '(flat i "opaque") (gimp-image-convert-grayscale i)'
    yield 'grey-alpha', '(add i "clear" 0 0 0 100) (gimp-image-convert-grayscale i)'
    yield 'indexed', '(flat i "opaque") (index i 20)'
    yield 'indexed-alpha', '(add i "clear" 0 0 0 100) (index i 9)'
    yield 'offsets', bottom + '(add i "solid" 0 2 1 100) (add i "solid" 0 -2 -3 100) (add i "solid" 0 11 5 100)'
    yield 'offsets-alpha', bottom + '(add i "small" 0 2 1 100) (add i "small" 0 -2 -3 100)'
    yield 'nothing-below', '(add i "small" 0 2 1 100)'
    yield 'opacity', bottom + '(add i "clear" 0 0 0 40)'
    yield 'invisible', bottom + '(gimp-item-set-visible (add i "clear" 0 0 0 100) FALSE)'
    yield 'mask', bottom + '(mask (add i "solid" 0 2 1 100))'
    yield 'mask-off', bottom + '(let ((l (add i "solid" 0 2 1 100))) (mask l) (gimp-layer-set-apply-mask l FALSE))'
    yield 'group', bottom + '(let ((g (group i 0 100))) (add i "small" g 1 1 100) (add i "solid" g 5 2 100))'
    yield 'group-opacity', bottom + '(let ((g (group i 0 50))) (add i "solid" g 1 1 100) (add i "solid" g 3 2 100))'
    yield 'group-hidden', bottom + '(let ((g (group i 0 100))) (add i "small" g 1 1 100) (gimp-item-set-visible g FALSE))'
    yield 'group-nested', (bottom + '(let* ((g (group i 0 60)) (h (group i g 50)))'
                           '(add i "solid" g 1 1 100) (add i "solid" h 5 2 80))')
    yield 'group-mask', (bottom + '(let ((g (group i 0 100))) (add i "solid" g 1 1 100) (add i "solid" g 3 2 100) (mask g)'
                         '(gimp-layer-set-opacity (add i "opaque" g 3 2 100) 30))')
    yield 'group-empty', bottom + '(group i 0 100)'
    yield 'group-through', (bottom + '(let ((g (group i 0 100))) (add i "small" g 1 1 100)'
                            '(gimp-layer-set-mode g LAYER-MODE-PASS-THROUGH))')
    yield 'new-modes', bottom + '(gimp-layer-set-mode (add i "solid" 0 2 1 100) LAYER-MODE-NORMAL)'
    yield 'channels', (bottom + '(gimp-image-insert-channel i (car (gimp-channel-new i 13 7 "c" 50 \'(255 0 0))) 0 0)'
                       '(gimp-image-select-ellipse i CHANNEL-OP-REPLACE 2 2 5 3)')
    yield 'floating', (bottom + '(gimp-image-select-rectangle i CHANNEL-OP-REPLACE 2 2 5 3)'
                       '(gimp-selection-float (drawable i) 2 1)')
    for kind in ('U8-LINEAR', 'U16-LINEAR', 'U16-GAMMA', 'U32-LINEAR', 'U32-GAMMA', 'HALF-LINEAR', 'HALF-GAMMA',
                 'FLOAT-LINEAR', 'FLOAT-GAMMA', 'DOUBLE-LINEAR', 'DOUBLE-GAMMA'):
        yield kind.lower(), f'(add i "clear" 0 0 0 100) (precision i PRECISION-{kind})'
    yield 'u16-linear-grey', ('(add i "clear" 0 0 0 100) (gimp-image-convert-grayscale i)'
                              '(precision i PRECISION-U16-LINEAR)')
    yield 'float-linear-mask', bottom + '(mask (add i "solid" 0 2 1 100)) (precision i PRECISION-FLOAT-GAMMA)'


def settings(writer, *choices):
    """Makes the writer take these for the choices of last time. Those of BMP are the form of a pixel, whether to compress,
    and whether to leave the colour space out, for which it takes a shorter header; those of TGA are whether to compress
    and whether to begin at the bottom, which it does not take from its arguments."""
    data = struct.pack('<%di' % len(choices), *choices)
    return (f"(let ((a (cons-array {len(data)} 'byte)))" + ' '.join('(aset a %d %d)' % byte for byte in enumerate(data)) +
            f'(gimp-procedural-db-set-data "file-{writer}-save" {len(data)} a))')


def script(work):
    yield LANGUAGE + '(define work "%s/") (define out "%s/")' % (work, OUT)
    for name, make, *size in pictures():
        yield '(let ((i (new %d %d))) %s (save i "%s.xcf"))' % (*(size or [(W, H)])[0], make, name)
    yield '(save (car (gimp-file-load RUN-NONINTERACTIVE "%s/good/zlib-tiles.xcf" "x")) "zlib.xcf")' % HERE

    for form, name in enumerate(('565', '1555', '555', '888', '8888', 'x888')):
        make = '(add i "clear" 0 0 0 100)' if name in ('1555', '8888') else '(flat i "opaque")'
        for plain in (0, 1):
            yield '(let ((i (new 13 7))) %s %s (bmp i "%s%s.bmp"))' % (make, settings('bmp', form, 0, plain), name,
                                                                  '' if plain else '-colour-space')
    for colours in (2, 16, 60):
        for runs in (0, 1):
            yield '(let ((i (new 13 7))) (flat i "opaque") (index i %d) %s (bmp i "indexed-%d%s.bmp"))' % (
                colours, settings('bmp', 3, runs, 1), colours, '-runs' if runs else '')
    for colours in (4, 60):
        yield '(let ((i (new 13 7))) (flat i "runs") (index i %d) %s (bmp i "indexed-long-runs-%d.bmp"))' % (
            colours, settings('bmp', 3, 1, 1), colours)
    yield '(let ((i (new 13 7))) (flat i "opaque") (gimp-image-convert-grayscale i) %s (bmp i "grey.bmp"))' % settings('bmp', 
        3, 0, 1)

    for name, make in (('rgb', '(flat i "PICTURE")'), ('rgba', '(add i "PICTURE" 0 0 0 100)'),
                       ('grey', '(flat i "PICTURE") (gimp-image-convert-grayscale i)'),
                       ('grey-alpha', '(add i "PICTURE" 0 0 0 100) (gimp-image-convert-grayscale i)'),
                       ('indexed', '(flat i "PICTURE") (index i 12)'),
                       ('indexed-alpha', '(add i "PICTURE" 0 0 0 100) (index i 12)')):
        for picture, runs, corner in (('clear', 0, 0), ('clear', 0, 1), ('clear', 1, 0), ('runs', 1, 1)):
            yield '(let ((i (new 13 7))) %s %s (tga i "%s%s%s.tga"))' % (
                make.replace('PICTURE', picture), settings('tga', runs, corner), name, '-runs' if runs else '',
                '-from-top' if corner == 0 else '')
    yield '(gimp-quit 0)'


def main():
    os.makedirs(OUT, exist_ok=True)
    for old in os.listdir(OUT):
        os.remove(os.path.join(OUT, old))
    with tempfile.TemporaryDirectory() as work:
        sources(work)
        subprocess.run(['xvfb-run', '-a', 'gimp', '-i', '-d', '-f', '-b', '-'], input='\n'.join(script(work)), text=True,
                       check=True, env=dict(os.environ, HOME=work))
        for name in os.listdir(OUT):
            with open(os.path.join(OUT, name + '.rgba'), 'wb') as file:
                expected = 'PNG:' + os.path.join(work, name + '.expected')
                subprocess.run(['convert', expected, '-depth', '8', 'RGBA:-'], check=True, stdout=file)


main()
