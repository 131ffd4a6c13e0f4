# SPDX-License-Identifier: MIT
"""Reads what `vesk view` draws by Python's own parser of XML and zlib.

    read-drawings.py VESK

Prints what is wrong; exit code 1 if anything is.
"""
import os
import re
import struct
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
import zlib

SVG = '{http://www.w3.org/2000/svg}'
tool = os.path.abspath(sys.argv[1])
faults = 0


def expect(name, got, wanted):
    global faults
    if got != wanted:
        print(f'{name}: {got!r} instead of {wanted!r}')
        faults += 1


def record(line, counter=1):
    return b'P-1     01%03d    00' % counter + line + b'\n'


def draw(records, ending, *options):
    with open('in.dat', 'wb') as file:
        file.write(records)
    made = subprocess.run([tool, 'view', 'in.dat', '-o', '-', '--to', ending, *options],
                          stdout=subprocess.PIPE, check=True)
    return made.stdout


def unfiltered(kind, line, above, size):
    line = bytearray(line)
    for i in range(len(line)):
        a = line[i - size] if i >= size else 0
        b = above[i]
        c = above[i - size] if i >= size else 0
        p = a + b - c
        nearest = min((abs(p - a), 0, a), (abs(p - b), 1, b), (abs(p - c), 2, c))[2]
        line[i] = (line[i] + (0, a, b, (a + b) // 2, nearest)[kind]) & 255
    return line


def pixels(png):
    """Rows of tuples. Every chunk's sum is checked."""
    assert png[:8] == b'\x89PNG\r\n\x1a\n'
    at, chunks = 8, []
    while at < len(png):
        length, = struct.unpack('>I', png[at:at + 4])
        kind, data = png[at + 4:at + 8], png[at + 8:at + 8 + length]
        assert struct.unpack('>I', png[at + 8 + length:at + 12 + length])[0] == \
            zlib.crc32(kind + data)
        chunks.append((kind, data))
        at += 12 + length
    assert chunks[-1][0] == b'IEND'
    width, height, depth, colours = struct.unpack('>IIBB', chunks[0][1][:10])
    assert depth == 8
    size = {2: 3, 6: 4}[colours]
    raw = zlib.decompress(b''.join(data for kind, data in chunks if kind == b'IDAT'))
    assert len(raw) == height * (1 + width * size)
    rows, above = [], bytes(width * size)
    for y in range(height):
        start = y * (1 + width * size)
        above = unfiltered(raw[start], raw[start + 1:start + 1 + width * size], above, size)
        rows.append([tuple(above[i:i + size]) for i in range(0, len(above), size)])
    return rows


def segments(svg):
    """The straight lines of outlines and edges, as pairs of points."""
    lines = []
    for group in svg.findall(SVG + 'g'):
        if group.get('id') not in ('outlines', 'edges', 'lines'):
            continue
        for path in group.findall(SVG + 'path'):
            for stroke in path.get('d').split('M')[1:]:
                numbers = [float(n) for n in re.findall(r'-?[0-9.]+', stroke)]
                points = list(zip(numbers[::2], numbers[1::2]))
                lines += zip(points, points[1:])
    return lines


def texts(svg):
    return [''.join(text.itertext()) for text in svg.iter(SVG + 'text')]


CUBE = record(b'b 1000 0 0,0 0 0,0 1000 0,0 0 1000')

# name, records, options, lines
COUNTS = [
    ('a cube from a corner: 12 edges, 3 hidden', CUBE, ['--from', 'iso'], 9),
    ('a cube from the front: 4 edges, 4 behind, 4 from their ends', CUBE, ['--from', 'front'], 4),
    ('a cube behind a plate', CUBE + record(b'g pt -1 -5 -1,pt 1001 -5 -1,pt 1001 -5 1001,'
                                            b'pt -1 -5 1001', 2), ['--from', 'front'], 4),
    ('nothing', b'', [], 0),
    ('a point', record(b'l pt 1 2 3'), [], 0),
]

# as the bytes of a record, as XML gives it back
HOSTILE = [
    (b'</text><script>alert(1)</script>', '</text><script>alert(1)</script>'),
    (b'&amp; ]]> "quotes" \'too\'', '&amp; ]]> "quotes" \'too\''),
    (b'<!-- <![CDATA[ <?xml ?>', '<!-- <![CDATA[ <?xml ?>'),
    (b'\xd8 60 \xb0C', '\u00d8 60 \u00b0C'),
    ('\u00d8 60 \u4e2d'.encode(), '\u00d8 60 \u4e2d'),
    (b'bell \x07 escape \x1b[31m', 'bell \ufffd escape \ufffd[31m'),
    (b'two  blanks', 'two  blanks'),
]


def main():
    for name, records, options, count in COUNTS:
        svg = ElementTree.fromstring(draw(records, 'svg', *options))
        expect(name, len(segments(svg)), count)

    for raw, wanted in HOSTILE:
        records = record(b'x 0 0 0,1 0 0,0 0 1,50,30,1,%d' % len(raw)) + \
            b'P-1     01001    01x ' + raw + b'\n'
        made = draw(records, 'svg', '--plain')
        expect(f'text {raw!r}', texts(ElementTree.fromstring(made)), [wanted])
        expect(f'tags of {raw!r}', sorted({e.tag for e in ElementTree.fromstring(made).iter()}),
               [SVG + tag for tag in ('g', 'rect', 'svg', 'text', 'title')])

    # The cube from the front, 75 of 100 pixels: from 12.5 to 87.5.
    rows = pixels(draw(CUBE, 'png', '--from', 'front', '--pixels', '100x100', '--plain'))
    expect('rows', (len(rows), len(rows[0])), (100, 100))
    expect('paper', rows[5][5], (255, 255, 255))
    expect('outline', rows[50][12], (28, 36, 48))
    # The colour of boxes, c0a878, and 0.64 + 0.48 * 2 / 3 of it.
    expect('face', rows[50][50], (184, 161, 115))

    rows = pixels(draw(CUBE, 'png', '--pixels', '64x48', '--background', 'transparent'))
    expect('transparent paper', rows[0][0], (0, 0, 0, 0))
    expect('opaque face', rows[20][32][3], 255)


with tempfile.TemporaryDirectory() as folder:
    os.chdir(folder)
    main()
    os.chdir('/')
sys.exit(1 if faults else 0)
