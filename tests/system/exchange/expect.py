# SPDX-License-Identifier: MIT
"""What the elements of a record file in the token style are, by arithmetic of its own."""
import math

KINDS = {'c': 'cylinder', 'n': 'cone', 't': 'torus', 'e': 'elbow', 'b': 'box', 'r': 'reducer',
         'g': 'face', 'l': 'line', 'x': 'text'}

# What the numbers of a record are called, in their order.
NAMES = {'c': ['origin', 'axis', 'diameter'], 'n': ['origin', 'axis', 'diameter 1', 'diameter 2'],
         't': ['centre', 'start', 'end', 'diameter'], 'e': ['centre', 'start', 'end', 'depth', 'width'],
         'b': ['edge 1', 'origin', 'edge 2', 'edge 3'], 'r': ['corner %d' % k for k in range(8)]}


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


def box_of_points(points):
    return [min(p[i] for p in points) for i in range(3)] + [max(p[i] for p in points) for i in range(3)]


def box_of_discs(discs):
    """Of flat discs (centre, normal, radius): along an axis each reaches radius times the sine
    of the angle between the axis and its normal."""
    points = []
    for centre, normal, radius in discs:
        size = length(normal)
        reach = [radius * math.sqrt(max(0.0, 1 - (n / size) ** 2)) for n in normal]
        points += [add(centre, reach), sub(centre, reach)]
    return box_of_points(points)


def along_arc(start, end, steps):
    """(outward, tangent) from start to end about their common centre, as unit vectors."""
    x = [c / length(start) for c in start]
    normal = cross(start, end)
    y = cross([c / length(normal) for c in normal], x)
    sweep = math.atan2(length(normal), dot(start, end))
    for i in range(steps + 1):
        c, s = math.cos(sweep * i / steps), math.sin(sweep * i / steps)
        yield ([p * c + q * s for p, q in zip(x, y)], [q * c - p * s for p, q in zip(x, y)])


def box_of_bend(word, centre, start, end, sizes):
    """Close to it: of 2000 sections of the bend, discs or rectangles."""
    radius = (length(start) + length(end)) / 2
    arc = list(along_arc(start, end, 2000))
    if word == 't':
        return box_of_discs([(add(centre, [radius * c for c in out]), way, sizes[0] / 2) for out, way in arc])
    up = cross(*arc[0])
    points = []
    for out, _ in arc:
        for r in (radius - sizes[0] / 2, radius + sizes[0] / 2):
            for h in (-sizes[1] / 2, sizes[1] / 2):
                points.append([c + r * o + h * u for c, o, u in zip(centre, out, up)])
    return box_of_points(points)


def elements(path):
    """Yields (line, kind, values) of each element; values tell volume, sizes and box, and under
    "values" the numbers of the record by their names, vertices as points."""
    lines = list(open(path, encoding='latin-1'))
    for number, line in enumerate(lines, 1):
        if line[17:19] != '00':
            continue
        word, data = line[19], line[21:].rstrip('\n')
        if word == 'x':
            at, along, up, (height,), (width,), (place,), (letters,) = ([float(x) for x in p.split()]
                                                                        for p in data.split(','))
            # The place is one of nine of the text: left, middle and right, from below upwards.
            column, row = (int(place) - 1) % 3 / 2, (int(place) - 1) // 3 / 2
            corner = sub(sub(at, [c * column * width * letters for c in along]), [c * row * height for c in up])
            words = lines[number][21:].rstrip('\n').encode('latin-1').decode()
            yield number, 'text', {'header': line[:10].rstrip(), 'corner': corner, 'height': height,
                                   'along': along, 'words': words}
            continue
        parts = [[float(x) for x in p.replace('pt', '').split()] for p in data.split(',')]
        values = {'volume': 0.0, 'header': line[:8].rstrip() + ' ' + line[8:10].rstrip(),
                  'counter': int(line[10:13], 36), 'values': dict(zip(NAMES.get(word, []), parts))}
        if word == 'c':
            values.update(radius=parts[2][0] / 2, length=length(parts[1]))
            values['box'] = box_of_discs([(parts[0], parts[1], values['radius']),
                                          (add(parts[0], parts[1]), parts[1], values['radius'])])
            values['volume'] = math.pi * values['radius'] ** 2 * values['length']
        elif word == 'n':
            r, s = parts[2][0] / 2, parts[3][0] / 2
            values.update(length=length(parts[1]))
            values['volume'] = math.pi / 3 * length(parts[1]) * (r * r + r * s + s * s)
            values['box'] = box_of_discs([(parts[0], parts[1], r), (add(parts[0], parts[1]), parts[1], s)])
        elif word in 'te':
            a, b = parts[1], parts[2]
            sweep = math.atan2(length(cross(a, b)), dot(a, b))
            radius = (length(a) + length(b)) / 2
            area = math.pi * parts[3][0] ** 2 / 4 if word == 't' else parts[3][0] * parts[4][0]
            values.update(sweep=sweep, radius=radius, length=sweep * radius, volume=sweep * radius * area)
            values['box'] = box_of_bend(word, parts[0], a, b, [p[0] for p in parts[3:]])
        elif word == 'b':
            values['volume'] = abs(triple(parts[0], parts[2], parts[3]))
            corners = [parts[1]]
            for edge in (parts[0], parts[2], parts[3]):
                corners += [add(corner, edge) for corner in corners]
            values['box'] = box_of_points(corners)
        elif word == 'r':
            o = parts[0]
            corners = [o] + [add(o, v) for v in parts[1:]]
            values.update(volume=body_volume(corners), box=box_of_points(corners))
        elif word in 'gl':
            # Vertices but for the first stand as vectors from it.
            vertices = [parts[0]] + [add(parts[0], v) for v in parts[1:]]
            values['box'] = box_of_points(vertices)
            values['values'] = {'vertex %d' % i: p for i, p in enumerate(vertices)}
            if word == 'g':
                values['corners'] = len(parts)
            else:
                values.update(points=len(parts),
                              length=sum(length(sub(p, q)) for p, q in zip(vertices, vertices[1:])))
        yield number, KINDS[word], values
