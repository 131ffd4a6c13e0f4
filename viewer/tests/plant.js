// SPDX-License-Identifier: MIT
// Writes the record file of a plant that nobody has built:
//
//   node plant.js COUNT [OUT.dat [OUT.csv]]
//
// Pipe racks with lines of pipes, bends, flanges and valves, the welds between them
// as points, centre lines, steel, vessels, and texts with the names of the lines. The
// same count gives the same bytes. With a second name it writes what is known of the
// components beside it.
import { closeSync, openSync, writeSync } from 'node:fs';
import { pathToFileURL } from 'node:url';

const SIZES = [60.3, 88.9, 114.3, 168.3, 219.1, 273, 323.9];
const SPECS = ['A1A', 'B3C', 'C1S'];

// A generator of numbers in 0..1 that is the same everywhere.
function random(seed) {
  let state = seed >>> 0;
  return () => {
    state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
    return state / 4294967296;
  };
}

const number = (x) => String(Math.round(x * 10) / 10);
const triple = (p) => p.map(number).join(' ');
const along = (axis, length) => [0, 1, 2].map((k) => (k === axis ? length : 0));
const plus = (a, b) => a.map((x, k) => x + b[k]);

/** The lines of the file and of the sidecar, as generators would: {records, rows}. */
export function plant(count) {
  const records = [];
  const rows = [];
  const next = random(count);
  const between = (low, high) => Math.round((low + (high - low) * next()) * 2) / 2;
  let elements = 0;
  let component = 0;
  let header = '';

  const add = (...texts) => {
    const f3 = component.toString(36).toUpperCase().padStart(3, '0');
    texts.forEach((text, line) => records.push(`${header}${f3}    ${String(line).padStart(2, '0')}${text}`));
    ++elements;
  };
  const begin = (kind, values = {}) => {
    ++component;
    const f1 = header.slice(0, 8).trimEnd();
    rows.push([f1, header.slice(8).trimEnd(), component, component, kind, values.spec ?? '', values.tag ?? '']);
  };
  const point = (p) => add(`l pt ${triple(p)}`);
  const line = (p, v) => add(`l pt ${triple(p)},pt ${triple(v)}`);
  const cylinder = (p, v, d) => add(`c ${triple(p)},${triple(v)},${number(d)}`);
  const cone = (p, v, d, e) => add(`n ${triple(p)},${triple(v)},${number(d)},${number(e)}`);
  const box = (p, a, b, c) => add(`b ${triple(along(0, a))},${triple(p)},${triple(along(1, b))},${triple(along(2, c))}`);
  const text = (p, words) => {
    add(`x ${triple(p)},1 0 0,0 1 0,200,150,7,${words.length}`, `x ${words}`);
  };

  // One line of pipes, which goes on until it has so many components.
  const run = (name, group, at, components) => {
    header = name.padEnd(8) + group;
    component = 0;
    const d = SIZES[Math.floor(next() * SIZES.length)];
    const spec = SPECS[Math.floor(next() * SPECS.length)];
    let p = at;
    let axis = next() < 0.5 ? 0 : 1;
    let sign = 1;
    begin('text');
    text(plus(p, [0, 0, d]), `${name}-${number(d)}-${spec}`);
    for (let i = 0; i < components && elements < count; ++i) {
      const way = along(axis, sign);
      const part = next();
      if (part < 0.5) {
        const length = between(300, 3000);
        begin('pipe', { spec });
        const v = along(axis, sign * length);
        cylinder(p, v, d);
        line(p, v);
        p = plus(p, v);
      } else if (part < 0.72) {
        const r = d * 1.5;
        const turn = [0, 1, 2].filter((k) => k !== axis)[Math.floor(next() * 2)];
        const side = turn === 2 && p[2] > 9000 ? -1 : turn === 2 && p[2] < 1500 ? 1 : next() < 0.5 ? 1 : -1;
        begin('elbow', { spec });
        const toEnd = along(turn, side * r);
        const centre = plus(p, toEnd);
        add(`t ${triple(centre)},${triple(along(turn, -side * r))},${triple(way.map((x) => x * r))},${number(d)}`);
        const corner = plus(p, way.map((x) => x * r));
        line(p, way.map((x) => x * r));
        line(corner, toEnd);
        p = plus(corner, toEnd);
        axis = turn;
        sign = side;
      } else if (part < 0.86) {
        begin('flange', { spec });
        const v = along(axis, sign * d * 0.3);
        cylinder(p, v, d * 1.7);
        p = plus(p, v);
      } else {
        begin('valve', { spec, tag: `${['HV', 'CV', 'XV'][i % 3]}-${records.length}` });
        const half = along(axis, sign * d);
        cone(p, half, d * 1.4, d * 0.3);
        cone(plus(p, half), half, d * 0.3, d * 1.4);
        cylinder(plus(p, half), along(axis === 2 ? 0 : 2, d * 1.6), d * 0.2);
        p = plus(plus(p, half), half);
      }
      begin('weld', { spec });
      point(p);
    }
  };

  const racks = Math.max(1, Math.round(Math.sqrt(count / 1500)));
  const perRack = Math.ceil(count / (racks * racks));
  let lines = 1000;
  for (let rack = 0; elements < count; ++rack) {
    const corner = [(rack % racks) * 42000, Math.floor(rack / racks) * 30000, 0];
    const until = Math.min(count, elements + perRack);
    header = `RACK${String(rack).padStart(4, '0')}S `;
    component = 0;
    for (let bay = 0; bay < 6 && elements < until; ++bay) {
      begin('steel');
      const foot = plus(corner, [bay * 6000, 0, 0]);
      box(foot, 300, 300, 10000);
      box(plus(foot, [0, 7700, 0]), 300, 300, 10000);
      box(plus(foot, [0, 300, 5000]), 300, 7400, 300);
    }
    header = `V${String(rack).padStart(6, '0')} E `;
    component = 0;
    begin('vessel', { tag: `V-${rack}` });
    const foot = plus(corner, [between(4000, 30000), 16000, 1500]);
    const d = between(2000, 4500);
    cylinder(foot, along(2, 7000), d);
    cone(plus(foot, [0, 0, 7000]), along(2, 800), d, d / 3);
    cone(foot, along(2, -800), d, d / 3);
    while (elements < until) {
      run(`P${lines++}`, String(rack % 4 + 1).padStart(2, '0'),
        plus(corner, [between(0, 30000), between(500, 14000), between(1500, 9000)]), 40);
    }
  }
  return { records, rows };
}

const field = (text) => (/[",\n]/.test(text) ? `"${text.replaceAll('"', '""')}"` : text);

/** The sidecar's text. */
export function sidecar(rows) {
  return ['f1,f2,first,last,component,spec,tag', ...rows.map((row) => row.map(String).map(field).join(','))].join('\n') + '\n';
}

if (import.meta.url === pathToFileURL(process.argv[1]).href) {
  const [count, file, csv] = process.argv.slice(2);
  const { records, rows } = plant(Number(count));
  const write = (name, text) => {
    const to = name ? openSync(name, 'w') : 1;
    writeSync(to, text);
    if (name) closeSync(to);
  };
  write(file, `${records.join('\n')}\n`);
  if (csv) write(csv, sidecar(rows));
}
