// SPDX-License-Identifier: MIT
// Makes the head and the data of a page by hand, apart from the code of the tool:
// every number stands in it as it is, without a hint.
import { deflateSync } from 'node:zlib';

const HEAD = 19; // bytes of a line that stand apart

const KINDS = [
  ['point', 'points'], ['segment', 'segments'], ['polyline', 'polylines'],
  ['triangle', 'triangles'], ['quadrangle', 'quadrangles'], ['polygon', 'polygons'],
  ['text', 'texts'], ['box', 'boxes'], ['reducer', 'reducers'], ['cylinder', 'cylinders'],
  ['cone', 'cones'], ['torus', 'tori'], ['elbow', 'elbows'],
];

/** Blocks of binary data one after the other, each at a multiple of eight. */
class Blocks {
  parts = [];
  size = 0;

  add(array, width = 1) {
    const at = this.size;
    const bytes = new Uint8Array(array.buffer, array.byteOffset, array.byteLength);
    this.parts.push([at, bytes]);
    this.size += Math.ceil(bytes.length / 8) * 8;
    return [at, array.length / width];
  }

  /** Numbers of 32 bits by their bytes. */
  planes(array, width = 1) {
    const bytes = new Uint8Array(array.buffer, array.byteOffset, array.byteLength);
    const planes = new Uint8Array(bytes.length);
    bytes.forEach((byte, i) => {
      planes[(i % 4) * array.length + Math.floor(i / 4)] = byte;
    });
    return [this.add(planes)[0], array.length / width];
  }

  /** The differences between neighbours, the sign in the lowest bit. */
  steps(numbers) {
    const zigzag = (x) => ((x << 1) ^ (x >> 31)) >>> 0;
    return this.planes(Uint32Array.from(numbers, (x, i) => zigzag((x - (numbers[i - 1] ?? 0)) | 0)));
  }

  bytes() {
    const all = new Uint8Array(this.size);
    for (const [at, bytes] of this.parts) all.set(bytes, at);
    return all;
  }
}

/** A cylinder of radius 1 from z = 0 to z = 1. */
export function unitCylinder(segments = 24) {
  const positions = [];
  const normals = [];
  const indices = [];
  const vertex = (position, normal) => {
    positions.push(...position);
    normals.push(...normal);
    return positions.length / 3 - 1;
  };
  const at = (i) => [Math.cos((2 * Math.PI * i) / segments), Math.sin((2 * Math.PI * i) / segments)];
  const side = [];
  for (let i = 0; i < segments; ++i) {
    const [x, y] = at(i);
    side.push([vertex([x, y, 0], [x, y, 0]), vertex([x, y, 1], [x, y, 0])]);
  }
  const caps = [0, 1].map((z) =>
    side.map((_, i) => vertex([...at(i), z], [0, 0, 2 * z - 1])),
  );
  for (let i = 0; i < segments; ++i) {
    const j = (i + 1) % segments;
    indices.push(side[i][0], side[j][0], side[j][1], side[i][0], side[j][1], side[i][1]);
    if (i > 0 && j > 0) {
      indices.push(caps[0][0], caps[0][j], caps[0][i], caps[1][0], caps[1][i], caps[1][j]);
    }
  }
  return { positions, normals, indices, closed: true };
}

/** A cube from 0 to 1. */
export function unitCube() {
  const positions = [];
  const normals = [];
  const indices = [];
  for (let axis = 0; axis < 3; ++axis) {
    for (const end of [0, 1]) {
      const first = positions.length / 3;
      for (const [u, v] of [[0, 0], [1, 0], [1, 1], [0, 1]]) {
        const p = [0, 0, 0];
        p[axis] = end;
        p[(axis + 1) % 3] = u;
        p[(axis + 2) % 3] = v;
        const n = [0, 0, 0];
        n[axis] = 2 * end - 1;
        positions.push(...p);
        normals.push(...n);
      }
      const quad = end ? [0, 1, 2, 0, 2, 3] : [0, 2, 1, 0, 3, 2];
      indices.push(...quad.map((i) => first + i));
    }
  }
  return { positions, normals, indices, closed: true };
}

/** One triangle, open. */
export function triangle(a, b, c) {
  return {
    positions: [a, b, c].flat(),
    normals: [0, 0, 1, 0, 0, 1, 0, 0, 1],
    indices: [0, 1, 2],
    closed: false,
  };
}

/**
 * The head and the bytes of a scene. An element is
 * {kind, header, values: [[name, type, value]], record, mesh, matrix, point, line, text};
 * mesh is an index, matrix 12 numbers. Attributes are {names, rows: [[text]]}; a `row` of
 * an element counts from 1.
 */
export function encode({ title = 'sample', offset = [0, 0, 0], bounds, meshes = [], elements, marks = [], files = ['sample.dat'], attributes = { names: [], rows: [] } }) {
  const blocks = new Blocks();
  const headers = [];
  const layouts = [];
  const strings = [];
  const values = [];
  const records = [];
  const groupNames = [''];
  const columns = {
    kind: [], shown: [], header: [], group: [], counter: [], file: [], line: [], lines: [], layout: [],
    component: [], row: [],
  };
  const stringIds = [];
  const groups = new Map();
  const points = { positions: [], elements: [] };
  const lines = { positions: [], elements: [] };
  const texts = [];
  const indexIn = (list, item) => {
    const text = JSON.stringify(item);
    const found = list.findIndex((each) => JSON.stringify(each) === text);
    return found >= 0 ? found : list.push(item) - 1;
  };
  const encoder = new TextEncoder();
  elements.forEach((element, i) => {
    const record = (element.record ?? `record of element ${i}`).split('\n');
    columns.kind.push(KINDS.findIndex(([name]) => name === element.kind));
    columns.header.push(indexIn(headers, element.header ?? 'P-1'));
    columns.counter.push(element.counter ?? i + 1);
    columns.file.push(element.file ?? 0);
    columns.line.push(element.at ?? i + 1);
    columns.layout.push(indexIn(layouts, (element.values ?? []).map(([name, type]) => [name, type])));
    columns.shown.push(element.shown ?? 0);
    columns.component.push(element.component ?? i);
    columns.row.push(element.row ?? 0);
    columns.group.push(indexIn(groupNames, element.group ?? ''));
    columns.lines.push(record.length);
    records.push(...record.map((line) => encoder.encode(`${line}\n`)));
    for (const [, type, value] of element.values ?? []) {
      if (type === 't') stringIds.push(strings.push(value) - 1);
      else values.push(...[value].flat());
    }
    if (element.matrix) {
      if (!groups.has(element.mesh)) groups.set(element.mesh, { matrices: [], elements: [] });
      groups.get(element.mesh).matrices.push(element.matrix);
      groups.get(element.mesh).elements.push(i);
    }
    if (element.point) {
      points.positions.push(...element.point);
      points.elements.push(i);
    }
    if (element.line) {
      lines.positions.push(...element.line.flat());
      lines.elements.push(i);
    }
    if (element.text) texts.push({ element: i, ...element.text });
  });
  const split = splitLines(records);
  const places = (owners, numbers) => ({
    elements: blocks.steps(owners),
    hints: blocks.add(new Uint8Array(numbers.length)),
    literals: blocks.planes(Float32Array.from(numbers)),
  });
  const head = {
    schema: 'vesk-scene/2',
    title,
    unit: 'mm',
    offset,
    bounds,
    files,
    headers,
    groupNames,
    kinds: KINDS.map(([name, plural]) => ({ name, plural })),
    layouts,
    strings,
    meshes: meshes.map((mesh) => ({
      positions: blocks.planes(Float32Array.from(mesh.positions), 3),
      normals: blocks.add(Int8Array.from(mesh.normals, (x) => Math.round(x * 127)), 3),
      indices: blocks.steps(mesh.indices),
      closed: mesh.closed,
    })),
    groups: [...groups].map(([mesh, group]) => ({
      mesh,
      ...places(group.elements, group.matrices.flat()),
    })),
    points: places(points.elements, points.positions),
    lines: places(lines.elements, lines.positions),
    texts: {
      strings: texts.map(({ text }) => text),
      ...places(
        texts.map(({ element }) => element),
        texts.flatMap(({ position, along, up, height, width = 0 }) => [position, along, up, height, width].flat()),
      ),
    },
    elements: {
      count: elements.length,
      kind: blocks.add(Uint8Array.from(columns.kind)),
      shown: blocks.add(Uint8Array.from(columns.shown)),
      header: blocks.steps(columns.header),
      group: blocks.steps(columns.group),
      counter: blocks.steps(columns.counter),
      file: blocks.steps(columns.file),
      line: blocks.steps(columns.line),
      lines: blocks.steps(columns.lines),
      layout: blocks.steps(columns.layout),
      component: blocks.steps(columns.component),
      row: blocks.steps(columns.row),
    },
    records: {
      bytes: records.reduce((sum, line) => sum + line.length, 0),
      heads: blocks.add(split.heads, HEAD),
      rests: blocks.add(split.rests),
    },
    values: {
      hints: blocks.add(new Uint8Array(values.length)),
      literals: blocks.add(Float64Array.from(values)),
      texts: blocks.steps(stringIds),
    },
    attributes: attributesOf(blocks, attributes),
    marks,
    failures: [],
  };
  return { head, bytes: blocks.bytes() };
}

// The columns as numbers of texts, of which the first is empty.
function attributesOf(blocks, { names, rows }) {
  const texts = ['', ...new Set(rows.flat().filter(Boolean))];
  const columns = names.map((_, i) => blocks.steps(rows.map((row) => texts.indexOf(row[i]))));
  return { names, texts, columns };
}

// The first 19 bytes of the lines, column by column and filled up with newlines, and
// what follows them.
function splitLines(lines) {
  const heads = new Uint8Array(lines.length * HEAD).fill(10);
  lines.forEach((line, i) => line.subarray(0, HEAD).forEach((byte, k) => (heads[k * lines.length + i] = byte)));
  const rests = lines.filter((line) => line.length > HEAD).map((line) => line.subarray(HEAD));
  return { heads, rests: new Uint8Array(Buffer.concat(rests)) };
}

/** The page of a scene, from the template. */
export function fill(template, { head, bytes }) {
  const packed = (data) => deflateSync(data).toString('base64');
  return template
    .replace('id="vesk-scene"></script>', () => `id="vesk-scene">${packed(JSON.stringify(head))}</script>`)
    .replace('id="vesk-data"></script>', () => `id="vesk-data">${packed(bytes)}</script>`);
}

/** A cylinder along an axis: 0 x, 1 y, 2 z. */
export function pipe(from, length, diameter, axis, more = {}) {
  const r = diameter / 2;
  const rows = [[0, 0, 0, from[0]], [0, 0, 0, from[1]], [0, 0, 0, from[2]]];
  rows[(axis + 1) % 3][0] = r;
  rows[(axis + 2) % 3][1] = r;
  rows[axis][2] = length;
  const along = [0, 0, 0];
  along[axis] = length;
  return {
    kind: 'cylinder',
    mesh: 0,
    matrix: rows.flat(),
    values: [['origin', 'p', from], ['axis', 'o', along], ['diameter', 'n', diameter]],
    ...more,
  };
}

export function box(from, edges, more = {}) {
  const [a, b, c] = edges;
  return {
    kind: 'box',
    mesh: 1,
    matrix: [a, 0, 0, from[0], 0, b, 0, from[1], 0, 0, c, from[2]],
    values: [['origin', 'p', from], ['edge 1', 'o', [a, 0, 0]], ['edge 2', 'o', [0, b, 0]], ['edge 3', 'o', [0, 0, c]]],
    ...more,
  };
}

/** Pipes of different sizes and directions at all places of a cube, and its bounds. */
export function manyPipes(count) {
  const side = Math.ceil(Math.cbrt(count));
  const elements = Array.from({ length: count }, (_, i) => {
    const at = [i % side, Math.floor(i / side) % side, Math.floor(i / side / side)];
    return pipe(at.map((k) => k * 20), 15, 4 + (i % 5), i % 3, { header: `P-${i % 50}` });
  });
  return { elements, bounds: [[-4, -4, -4], [side * 20, side * 20, side * 20]] };
}
