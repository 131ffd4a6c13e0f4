// SPDX-License-Identifier: MIT
// The thirteen functions for Node, by koffi. An exception of the library cannot pass through
// Node, it would end the process: so what would throw is refused here, as a TypeError or a
// RangeError, before the call. vesk.d.ts has the types.
//
// The library is the file that VESK_LIBRARY names, or one beside this module or in the places
// of the system: CVeskDll.dll, libCVeskDll.so.1, libCVeskDll.so.
import fs from 'node:fs';
import path from 'node:path';
import { fileURLToPath } from 'node:url';
import { getSystemErrorMap } from 'node:util';
import koffi from 'koffi';

function candidates() {
  if (process.env.VESK_LIBRARY) return [process.env.VESK_LIBRARY];
  const names = process.platform === 'win32' ? ['CVeskDll.dll'] : ['libCVeskDll.so.1', 'libCVeskDll.so'];
  const here = path.dirname(fileURLToPath(import.meta.url));
  return [...names.map((name) => path.join(here, name)).filter(fs.existsSync), ...names];
}

function load() {
  const tried = [];
  for (const candidate of candidates()) {
    try {
      return koffi.load(candidate);
    } catch (error) {
      tried.push(error.message);
    }
  }
  throw new Error(`the Vesk library was not found; set VESK_LIBRARY. Tried: ${tried.join(', ')}`);
}

const library = load();

const openVesk = library.func('int vk_openVesk(const char* name)');
const setHeader = library.func('int vk_setHeader(const char* a, const char* b, int n)');

// result, name, number of points and what follows them
const write = (result, name, points, rest = '') => {
  const parameters = Array(points).fill('const double*').join(', ') + rest;
  return library.func(`${result} ${name}(${parameters})`);
};
const writePnt = write('void', 'vk_writePnt', 1);
const writeSeg = write('void', 'vk_writeSeg', 2);
const writeTri = write('void', 'vk_writeTri', 3);
const writeQua = write('void', 'vk_writeQua', 4);
const writeTxt = write('void', 'vk_writeTxt', 3, ', double, double, int, int, const char*');
const writeBox = write('void', 'vk_writeBox', 4);
const writeRed = write('void', 'vk_writeRed', 8);
const writeCyl = write('int', 'vk_writeCyl', 2, ', double');
const writeCon = write('int', 'vk_writeCon', 2, ', double, double');
const writeTor = write('int', 'vk_writeTor', 3, ', double');
const writeElb = write('int', 'vk_writeElb', 4, ', double');

const number = (value) => {
  if (typeof value !== 'number' || !Number.isFinite(value)) {
    throw new TypeError(`expected a finite number, not ${value}`);
  }
  return value;
};

const integer = (value, least, most) => {
  if (!Number.isInteger(value)) throw new TypeError(`expected an integer, not ${value}`);
  if (value < least || value > most) throw new RangeError(`expected ${least} to ${most}, not ${value}`);
  return value;
};

const string = (value) => {
  if (typeof value !== 'string') throw new TypeError(`expected a string, not ${value}`);
  if (/[\0\n\r]/.test(value)) throw new RangeError('a zero character or a line end in a string');
  return value;
};

const point = (value) => {
  if (!(Array.isArray(value) || value instanceof Float64Array) || value.length !== 3) {
    throw new TypeError(`expected an array of three numbers, not ${value}`);
  }
  return Float64Array.from(value, number);
};

const distance = (a, b) => Math.hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);

let current = null;

// A name of which no file is in the current folder.
function freeName() {
  for (let number = 0;; ++number) {
    const name = `-${process.pid}-${number}`;
    if (!fs.existsSync(`vesk${name}.dat`)) return name;
  }
}

const partOf = (target) => `${target}.${process.pid}.part`;

// A file can be made beside the target, or an Error that names it.
function probe(target) {
  try {
    if (fs.existsSync(target) && fs.statSync(target).isDirectory()) throw new Error('it is a folder');
    fs.closeSync(fs.openSync(partOf(target), 'w'));
    fs.rmSync(partOf(target));
  } catch (error) {
    throw new Error(`${target}: ${error.message}`);
  }
}

// Across file systems by a copy beside the target: what is there is replaced at once.
function move(source, target) {
  try {
    try {
      fs.renameSync(source, target);
    } catch (error) {
      if (error.code !== 'EXDEV') throw error;
      fs.copyFileSync(source, partOf(target));
      fs.renameSync(partOf(target), target);
      fs.rmSync(source);
    }
  } catch (error) {
    fs.rmSync(partOf(target), {force: true});
    throw new Error(`${target}: ${error.message}; what was written is ${source}`);
  }
}

// A record file, open for writing. There is one for the process: opening another one completes
// the first. Points are arrays of three numbers.
export class VeskFile {
  // The file "vesk" + name + ".dat" in the current folder; an old one is emptied.
  constructor(name, target) {
    string(name);
    if (target !== undefined) {
      target = path.resolve(string(target));
      probe(target);
    }
    const before = current;
    current = null;
    if (before?.#temporary) before.#finish();
    this.#path = target ?? `vesk${name}.dat`;
    if (!openVesk(name)) throw new Error(`${this.#path} cannot be opened for writing`);
    if (target !== undefined) this.#temporary = path.resolve(`vesk${name}.dat`);
    current = this;
  }

  // The file of a path. It appears when it is closed and whole, and what was there before stays
  // until then: it grows under a name of its own in the current folder, where the library writes.
  static at(target) {
    return new VeskFile(freeName(), target);
  }

  // Completes the file. Throws if the system did not take all of it, a full disk for one: the
  // file is not whole then, and one of a path does not appear. Closing again does nothing.
  close() {
    if (current !== this) return;
    current = null;
    this.#finish();
  }

  // Sets the header of the elements that follow; n is 0 to 46655.
  header(a, b, n) {
    this.#call(setHeader, [], string(a), string(b), integer(n, 0, 46655));
  }

  point(p) { this.#call(writePnt, [p]); }
  segment(p1, p2) { this.#call(writeSeg, [p1, p2]); }
  triangle(p1, p2, p3) { this.#call(writeTri, [p1, p2, p3]); }
  quadrangle(p1, p2, p3, p4) { this.#call(writeQua, [p1, p2, p3, p4]); }

  // A text of at most 512 bytes in UTF-8.
  text(p, direction, up, width, height, alignment, flag, text) {
    if (Buffer.byteLength(string(text)) > 512) throw new RangeError('a text of more than 512 bytes');
    this.#call(writeTxt, [p, direction, up], number(width), number(height),
               integer(alignment, 1, 9), integer(flag, 0, 1), text);
  }

  box(p0, p1, p2, p3) { this.#call(writeBox, [p0, p1, p2, p3]); }
  reducer(p0, p1, p2, p3, p4, p5, p6, p7) {
    this.#call(writeRed, [p0, p1, p2, p3, p4, p5, p6, p7]);
  }
  cylinder(p1, p2, d) { return this.#call(writeCyl, [p1, p2], number(d)); }
  cone(p1, p2, d1, d2) { return this.#call(writeCon, [p1, p2], number(d1), number(d2)); }
  torus(p0, p1, p2, d) { return this.#call(writeTor, [p0, p1, p2], number(d)); }

  // p2 and p3 must not be at p0: the bend has no direction then.
  elbow(p0, p1, p2, p3, d) {
    const points = [p0, p1, p2, p3].map(point);
    if (distance(points[0], points[2]) < 1e-12 || distance(points[0], points[3]) < 1e-12) {
      throw new RangeError('p2 and p3 must not be at p0');
    }
    return this.#call(writeElb, [p0, p1, p2, p3], number(d));
  }

  #path;
  #temporary = null;  // where the file grows, if that is not its path

  #finish() {
    koffi.errno(0);
    openVesk(null);
    const reason = koffi.errno();
    if (reason !== 0) {
      if (this.#temporary) fs.rmSync(this.#temporary);
      const [, text] = getSystemErrorMap().get(-reason) ?? ['', `error ${reason}`];
      throw new Error(`${this.#path}: ${text}`);
    }
    if (this.#temporary) move(this.#temporary, this.#path);
  }

  #call(fn, points, ...rest) {
    if (current !== this) throw new Error('the file is closed');
    return fn(...points.map(point), ...rest);
  }
}
