# SPDX-License-Identifier: MIT
"""What the elements of a record file in the token style are, by arithmetic of its own."""
import math

KINDS = {'c': 'cylinder', 'n': 'cone', 't': 'torus', 'e': 'elbow', 'b': 'box', 'r': 'reducer',
         'g': 'face', 'l': 'line', 'x': 'text'}


def add(a, b):
    return [p + q for p, q in zip(a, b)]


def sub(a, b):
    return [p - q for p, q in zip(a, b)]


def dot(a, b):
    return sum(p * q for p, q in zip(a, b))


def cross(a, b):
    return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]]


def length(a):
    return math.sqrt(dot(a, a))


def triple(a, b, c):
    return dot(a, cross(b, c))


FACES = [(0, 2, 3, 1), (4, 5, 7, 6), (0, 1, 5, 4), (1, 3, 7, 5), (3, 2, 6, 7), (2, 0, 4, 6)]


def body_volume(c):
    """Between bilinear faces: each is the mean of its two triangulations."""
    six = 0.0
    for f in FACES:
        a, b, d, e = (sub(c[k], c[0]) for k in f)
        six += (triple(a, b, d) + triple(a, d, e) + triple(b, d, e) + triple(a, b, e)) / 2
    return abs(six / 6)


def elements(path):
    """Yields (line, kind, values) of each element; values tell volume and sizes."""
    for number, line in enumerate(open(path, encoding='latin-1'), 1):
        if line[17:19] != '00':
            continue
        word, data = line[19], line[21:].rstrip('\n')
        if word == 'x':
            yield number, 'text', {'header': line[:10].rstrip()}
            continue
        parts = [[float(x) for x in p.replace('pt', '').split()] for p in data.split(',')]
        values = {'volume': 0.0, 'header': line[:8].rstrip() + ' ' + line[8:10].rstrip()}
        if word == 'c':
            values.update(radius=parts[2][0] / 2, length=length(parts[1]))
            values['volume'] = math.pi * values['radius'] ** 2 * values['length']
        elif word == 'n':
            r, s = parts[2][0] / 2, parts[3][0] / 2
            values['volume'] = math.pi / 3 * length(parts[1]) * (r * r + r * s + s * s)
        elif word in 'te':
            a, b = parts[1], parts[2]
            sweep = math.atan2(length(cross(a, b)), dot(a, b))
            radius = (length(a) + length(b)) / 2
            area = math.pi * parts[3][0] ** 2 / 4 if word == 't' else parts[3][0] * parts[4][0]
            values.update(sweep=sweep, radius=radius, volume=sweep * radius * area)
        elif word == 'b':
            values['volume'] = abs(triple(parts[0], parts[2], parts[3]))
        elif word == 'r':
            o = parts[0]
            values['volume'] = body_volume([o] + [add(o, v) for v in parts[1:]])
        elif word == 'g':
            values['corners'] = len(parts)
        elif word == 'l':
            values['points'] = len(parts)
        yield number, KINDS[word], values
