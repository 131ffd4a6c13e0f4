// SPDX-License-Identifier: MIT
// Files with a path: whole or not at all.
//
//   node paths.js TARGET [full]     as check-paths runs it
import assert from 'node:assert';
import fs from 'node:fs';
import path from 'node:path';
import {VeskFile} from './vesk.js';

const [target, full] = process.argv.slice(2);
const held = () => fs.readFileSync(target, 'utf8');

function fullDisk() {
  const file = VeskFile.at(target);
  for (let n = 0; n < 100; ++n) file.point([n, 2, 3]);
  assert.throws(() => file.close(), (e) => e.message.startsWith(`${target}: file too large`));
  assert.strictEqual(held(), 'before');
  assert.deepStrictEqual(fs.readdirSync('.'), []);
}

function aFile() {
  assert.throws(() => VeskFile.at('none/a'), /none\/a: /);
  assert.throws(() => VeskFile.at('.'), /it is a folder/);
  const file = VeskFile.at(target);
  file.point(new Float64Array([1, 2, 3]));
  assert.strictEqual(held(), 'before');
  file.close();
  assert.strictEqual(held(), '                 00l pt 1 2 3\n');
  assert.deepStrictEqual(fs.readdirSync('.'), []);
  assert.deepStrictEqual(fs.readdirSync(path.dirname(target)), ['pump.rec']);
  VeskFile.at(target).point([4, 2, 3]);
  new VeskFile('-next').close();  // completes the one before
  assert.strictEqual(held(), '                 00l pt 4 2 3\n');
  fs.rmSync('vesk-next.dat');
}

if (full) fullDisk();
else aFile();
