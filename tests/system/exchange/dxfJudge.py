# SPDX-License-Identifier: MIT
"""dxfJudge RECORDS DXF - ezdxf's audit finds nothing, every element of the record file is
there on the layer of its kind with header and line, at its place, and the volumes of the
meshes are those of the records but for what chords cut off."""
import sys

import ezdxf

import expect

failures = 0


def fail(what):
    global failures
    print('failed:', what)
    failures += 1


def volume(mesh):
    total = 0.0
    corners = [list(v) for v in mesh.vertices]
    origin = corners[0]
    for face in mesh.faces:
        ring = [expect.sub(corners[i], origin) for i in face]
        for i in range(2, len(ring)):
            total += expect.triple(ring[0], ring[i - 1], ring[i]) / 6
    return total


def points(entity):
    """Of a mesh its corners, of lines their vertices."""
    if entity.dxftype() == 'MESH':
        return [list(v) for v in entity.vertices]
    if entity.dxftype() == 'POINT':
        return [list(entity.dxf.location)]
    if entity.dxftype() == 'LINE':
        return [list(entity.dxf.start), list(entity.dxf.end)]
    return [list(v.dxf.location) for v in entity.vertices]


records, path = sys.argv[1:]
document = ezdxf.readfile(path)
auditor = document.audit()
for each in auditor.errors + auditor.fixes:
    fail('audit: ' + each.message)

names = {'cylinder': {'cylinder'}, 'cone': {'cone'}, 'torus': {'torus'}, 'elbow': {'elbow'},
         'box': {'box'}, 'reducer': {'reducer'}, 'text': {'text'},
         'face': {'triangle', 'quadrangle', 'polygon'}, 'line': {'point', 'segment', 'polyline'}}
found = {}
for entity in document.modelspace():
    data = entity.get_xdata('VESK')
    line = int(data[-1].value.split()[1])
    if line in found:
        fail('line %d is there twice' % line)
    found[line] = (entity, data[-2].value)
wanted = 0
for line, kind, values in expect.elements(records):
    wanted += 1
    if line not in found:
        fail('line %d, %s, is missing' % (line, kind))
        continue
    entity, header = found[line]
    if entity.dxf.layer not in names[kind]:
        fail('line %d, %s, is on layer %s' % (line, kind, entity.dxf.layer))
    if kind != 'text' and header != values['header']:
        fail('line %d has the header %s' % (line, header))
    if kind == 'text' and not (
            expect.length(expect.sub(list(entity.dxf.insert), values['corner'])) < 1e-5 and
            expect.length(expect.sub(list(entity.dxf.text_direction), values['along'])) < 1e-5 and
            abs(entity.dxf.char_height - values['height']) < 1e-5 and entity.dxf.attachment_point == 7):
        fail('line %d is a text at %s' % (line, entity.dxf.insert))
    if kind == 'text' and entity.plain_text() != values['words']:
        fail('line %d reads %r, not %r' % (line, entity.plain_text(), values['words']))
    if 'box' in values:
        box = expect.box_of_points(points(entity))
        # Chords lie inside: by less than 2 % of the largest size.
        inside = max(b - a for a, b in zip(values['box'][:3], values['box'][3:])) * 0.02 if values['volume'] else 0
        if kind in ('box', 'reducer'):
            inside = 0
        for i, sign in enumerate((-1, -1, -1, 1, 1, 1)):
            off = sign * (values['box'][i] - box[i])
            if not -0.001 < off < inside + 0.001:
                fail('line %d, %s, is %g off its box (%d)' % (line, kind, off, i))
    if values['header'] and kind == 'line' and len(points(entity)) != values['points']:
        fail('line %d has %d points' % (line, len(points(entity))))
    if values.get('volume'):
        ratio = volume(entity) / values['volume']
        if not 0.96 < ratio < 1.000001:
            fail('line %d, %s, has %.4f of its volume' % (line, kind, ratio))
if wanted != len(found):
    fail('%d entities of %d elements' % (len(found), wanted))
print('%d entities, %d failures' % (len(found), failures))
sys.exit(1 if failures else 0)
