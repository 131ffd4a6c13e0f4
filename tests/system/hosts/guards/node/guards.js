// SPDX-License-Identifier: MIT
import assert from 'node:assert';
import fs from 'node:fs';
import {VeskFile} from './vesk.js';

const o = [0, 0, 0];
const p = [1, 2, 3];
const first = new VeskFile('guards');
const refused = [
  ['a null point', TypeError, () => first.point(null)],
  ['no second point', TypeError, () => first.segment(p)],
  ['a null eighth point', TypeError, () => first.reducer(p, p, p, p, p, p, p, null)],
  ['a point of two numbers', TypeError, () => first.box(p, p, p, [1, 2])],
  ['a hole in a point', TypeError, () => first.point([1, , 3])],
  ['a string in a point', TypeError, () => first.point([1, '2', 3])],
  ['a point that is not a number', TypeError, () => first.point([1, NaN, 3])],
  ['an infinite diameter', TypeError, () => first.cylinder(o, p, Infinity)],
  ['no diameter', TypeError, () => first.torus(o, p, p)],
  ['an elbow from its axis', RangeError, () => first.elbow(p, o, p, o, 1)],
  ['an elbow to its axis', RangeError, () => first.elbow(p, o, o, p, 1)],
  ['number 46656', RangeError, () => first.header('', '', 46656)],
  ['number -1', RangeError, () => first.header('', '', -1)],
  ['half a number', TypeError, () => first.header('', '', 0.5)],
  ['a null header', TypeError, () => first.header(null, '', 1)],
  ['a text of two lines', RangeError, () => first.text(p, p, p, 1, 1, 1, 0, 'a\nb')],
  // 257 letters of two bytes are 514 bytes.
  ['a text of 514 bytes', RangeError, () => first.text(p, p, p, 1, 1, 1, 0, '\u00e4'.repeat(257))],
  ['alignment 10', RangeError, () => first.text(p, p, p, 1, 1, 10, 0, 'a')],
];
for (const [what, type, call] of refused) assert.throws(call, type, what);

first.header('', '', 46655);
first.text(p, p, p, 1, 1, 1, 0, '\u00e4'.repeat(256));
const second = new VeskFile('second');  // closes the first
assert.throws(() => first.point(p), /closed/);
first.close();  // must leave the second open
second.point(p);
second.close();
second.close();
assert.throws(() => second.point(p), /closed/);

// A text of 512 bytes does not fit behind a header and begins one line more.
const [head, empty, body, ...rest] = fs.readFileSync('veskguards.dat', 'utf8').split('\n');
assert.strictEqual(head, '          ZZZ    00x 1 2 3,1 2 3,1 2 3,1,1,1,512');
assert.strictEqual(empty, '          ZZZ    01x ');
assert.strictEqual(body, '          ZZZ    02x ' + '\u00e4'.repeat(256));
assert.deepStrictEqual(rest, ['']);
assert.strictEqual(fs.readFileSync('vesksecond.dat', 'utf8'), '          ZZZ    00l pt 1 2 3\n');
