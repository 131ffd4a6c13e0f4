# SPDX-License-Identifier: MIT
"""boxesTest VESK - the R*Tree of databases with few and many elements: SQLite's own check, each
element once, and the answers of random windows against every box compared one by one."""
import random
import sqlite3
import subprocess
import sys

vesk = sys.argv[1]
failures = 0
WINDOW = ('{0}max_x >= ? AND {0}min_x <= ? AND {0}max_y >= ? AND {0}min_y <= ? '
          'AND {0}max_z >= ? AND {0}min_z <= ?')


def check(truth, what):
    global failures
    if not truth:
        print('failed:', what)
        failures += 1


def boxes(count, size, far):
    """Lines of boxes with their edges along the axes, in all orders and places."""
    chance = random.Random(count)
    for number in range(count):
        low = [far + chance.uniform(-size, size) for _ in range(3)]
        edges = [chance.choice((0.001, 1, 250, size / 5)) * chance.random() + 0.001
                 for _ in range(3)]
        vectors = [' '.join('%.4f' % (edges[k] if k == axis else 0) for k in range(3))
                   for axis in range(3)]
        corner = ' '.join('%.4f' % c for c in low)
        yield 'BOXES   01%03d    00b %s\n' % (number % 1000,
                                             ','.join([vectors[0], corner] + vectors[1:]))


# A leaf holds 51 boxes: none, one leaf, two, two levels that are full, three levels.
for count, size, far in ((0, 1e3, 0), (1, 1e3, 0), (51, 1e3, 0), (52, 1e3, 0), (2601, 1e4, 0),
                         (2602, 1e4, -4e6), (9000, 1e5, 1e9), (300, 0.001, 0), (300, 1e30, 0)):
    name = '%d boxes within %g about %g' % (count, size, far)
    with open('boxes.dat', 'w') as out:
        # So that there is something to read where there are no boxes.
        out.write('BAD     01000    00c 0 0\n')
        out.writelines(boxes(count, size, far))
    said = subprocess.run([vesk, 'export', '-q', '-f', 'boxes.dat', '-o', 'boxes.sqlite'],
                          capture_output=True, text=True)
    check(said.returncode in (0, 1), name + ': ' + said.stderr)
    database = sqlite3.connect('boxes.sqlite')
    stands = database.execute("SELECT rtreecheck('boxes')").fetchone()[0]
    check(stands == 'ok', '%s: %s' % (name, stands))
    check(database.execute('SELECT id FROM boxes ORDER BY id').fetchall() ==
          database.execute('SELECT id FROM elements WHERE min_x IS NOT NULL ORDER BY id').fetchall(),
          name + ': each element once')
    check(database.execute('SELECT count(*) FROM elements WHERE kind = \'box\'').fetchone()[0] ==
          count, name + ': all are read')
    outside = database.execute(
        'SELECT count(*) FROM boxes b JOIN elements e ON e.id = b.id '
        'WHERE b.min_x > e.min_x OR b.max_x < e.max_x OR b.min_y > e.min_y '
        'OR b.max_y < e.max_y OR b.min_z > e.min_z OR b.max_z < e.max_z').fetchone()[0]
    check(outside == 0, '%s: %d boxes are too small' % (name, outside))
    chance = random.Random(1)
    found = 0
    for _ in range(40):
        window = []
        for _axis in range(3):
            low = far + chance.uniform(-size, size)
            window += [low, low + size * chance.choice((0.01, 0.3, 1))]
        exact = set(database.execute(
            'SELECT id FROM elements WHERE ' + WINDOW.format(''), window).fetchall())
        near = database.execute('SELECT b.id FROM boxes b JOIN elements e ON e.id = b.id WHERE ' +
                                WINDOW.format('b.') + ' AND ' + WINDOW.format('e.'),
                                window * 2).fetchall()
        check(len(near) == len(set(near)) and set(near) == exact, name + ': a window')
        found += len(exact)
    check(found > 0 or count < 2, name + ': no window holds a box')
    database.close()
print('%d failures' % failures)
sys.exit(1 if failures else 0)
