# SPDX-License-Identifier: MIT
"""sqliteTest RECORDS DATABASE QUERIES - the tables against arithmetic, and ten queries."""
import collections
import math
import re
import sqlite3
import sys

import expect

records, path, queries = sys.argv[1:]
failures = 0


def check(truth, what):
    global failures
    if not truth:
        print('failed:', what)
        failures += 1


database = sqlite3.connect(path)
check(database.execute('PRAGMA integrity_check').fetchone()[0] == 'ok', 'integrity')
check(database.execute('PRAGMA user_version').fetchone()[0] == 1, 'version of the schema')
metres = collections.Counter()
volume = 0.0
count = 0
with open(records) as lines:
    tame = [line for line in lines if not line.startswith('BAD')]
with open('tame.dat', 'w') as out:
    out.writelines(tame)
for line, kind, values in expect.elements('tame.dat'):
    count += 1
    row = database.execute('SELECT kind, volume, length, counter, last_line, min_x, min_y, min_z, max_x, '
                           'max_y, max_z, id FROM elements WHERE line = ?', (line,)).fetchone()
    check(row is not None, 'line %d is missing' % line)
    if row is None:
        continue
    if values.get('volume'):
        check(math.isclose(row[1], values['volume'], rel_tol=1e-9), 'volume of line %d' % line)
        volume += values['volume']
    check(row[4] - line == (1 if kind == 'text' else 0), 'last line of line %d' % line)
    if kind == 'text':
        continue
    check(row[3] == values['counter'], 'counter of line %d' % line)
    check((row[1] or 0.0) == 0.0 or values['volume'] > 0.0, 'line %d has a volume' % line)
    check(row[2] is None if 'length' not in values else math.isclose(row[2], values['length'], rel_tol=1e-9),
          'length of line %d' % line)
    # The box of a bend is known from sections of it alone.
    near = 1e-3 if kind in ('torus', 'elbow') else 1e-9
    check(max(abs(a - b) for a, b in zip(row[5:11], values['box'])) < near, 'box of line %d' % line)
    # In 32 bits, rounded outwards.
    box = database.execute('SELECT min_x, min_y, min_z, max_x, max_y, max_z FROM boxes WHERE id = ?',
                           (row[11],)).fetchone()
    check(all(0 <= sign * (a - b) < 0.01 for a, b, sign in zip(box, row[5:11], (-1, -1, -1, 1, 1, 1))),
          'box of line %d among the boxes' % line)
    told = {name: [c for c in (x, y, z) if c is not None] for name, x, y, z in database.execute(
        'SELECT name, x, y, z FROM value_list WHERE element = ?', (row[11],))}
    check(told.keys() == values['values'].keys() and all(
        len(told[n]) == len(v) and all(abs(a - b) < 1e-9 for a, b in zip(told[n], v))
        for n, v in values['values'].items()), 'values of line %d' % line)
    if kind in ('cylinder', 'torus'):
        metres[values['header']] += (values['length'] if kind == 'cylinder'
                                     else values['radius'] * values['sweep']) / 1000
check(database.execute('SELECT count(*) FROM elements').fetchone()[0] == count + 1, 'elements')
check(database.execute('SELECT count(*) FROM boxes').fetchone()[0] == count + 1, 'boxes')
# The last line, whose data begin with column 22.
check(database.execute('SELECT file, line, column FROM faults').fetchall() ==
      [(1, sum(1 for _ in open(records)), 22)], 'faults')
for message, expected in database.execute('SELECT message, expected FROM faults'):
    check(message and message != expected, 'what is wrong and what was expected')
check(database.execute("SELECT line, reason FROM elements WHERE reason IS NOT NULL").fetchall() ==
      [(sum(1 for _ in open(records)) - 1, 'length of zero')], 'reasons')
check(database.execute("SELECT value FROM meta WHERE key = 'unit in millimetres'").fetchone() == ('1',), 'unit')
check(database.execute('SELECT name FROM files').fetchall() == [(records,)], 'files')
check(database.execute('SELECT f1, f2, first, last FROM components JOIN headers ON headers.id = header').fetchall()
      == [('LINE-11', '01', 0, 999)], 'components')

text = open(queries).read()
questions = [q for q in re.sub('--[^\n]*\n', '', text).split(';') if q.strip()]
check(len(questions) == 10, '%d questions' % len(questions))
first = database.execute("SELECT id, min_x, min_y, min_z FROM element_list WHERE f1 = 'LINE-11' "
                         "AND f2 = '01' ORDER BY id LIMIT 1").fetchone()
given = {'id': first[0], 'x': first[1], 'y': first[2], 'z': first[3]}
answers = [database.execute(q, given).fetchall() for q in questions]
check(first[0] in [row[0] for row in answers[0]], 'what is near')
check(len(answers[0]) < count, 'what is near is not all')
check({(r[0] + ' ' + r[1]): round(r[2], 6) for r in answers[1] if r[0] != 'BAD'} ==
      {h: round(m, 6) for h, m in metres.items()}, 'metres of pipe')
check(len(answers[2]) == 10 and answers[2] == sorted(answers[2], key=lambda r: -r[4]), 'boxes')
check(math.isclose(sum(r[2] or 0 for r in answers[4]), volume / 1e9, rel_tol=1e-9), 'volume')
check(len(answers[7]) == sum(1 for _, k, _ in expect.elements('tame.dat') if k == 'text'), 'texts')
check(answers[8] == [('item-code', 'PIPE 6'), ('pipeline', 'P-11 "A"')], 'attributes')
check(len(answers[9]) == 2, 'faults and reasons')
for number, answer in enumerate(answers):
    check(number == 9 or answer, 'question %d has no answer' % (number + 1))
print('%d elements, %d questions, %d failures' % (count, len(questions), failures))
sys.exit(1 if failures else 0)
