// Makes the head and the data of a page by hand, apart from the code of the tool.

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
 * mesh is an index, matrix 12 numbers.
 */
export function encode({ title = 'sample', offset = [0, 0, 0], bounds, meshes = [], elements, marks = [] }) {
  const blocks = new Blocks();
  const headers = [];
  const layouts = [];
  const strings = [];
  const values = [];
  const records = [];
  const columns = { kind: [], header: [], counter: [], file: [], line: [], layout: [], record: [] };
  const groups = new Map();
  const points = { positions: [], elements: [] };
  const lines = { positions: [], elements: [] };
  const texts = [];
  const indexIn = (list, item) => {
    const text = JSON.stringify(item);
    const found = list.findIndex((each) => JSON.stringify(each) === text);
    return found >= 0 ? found : list.push(item) - 1;
  };
  let recordBytes = 0;
  const encoder = new TextEncoder();
  elements.forEach((element, i) => {
    const record = encoder.encode(`${element.record ?? `record of element ${i}`}\n`);
    columns.kind.push(KINDS.findIndex(([name]) => name === element.kind));
    columns.header.push(indexIn(headers, element.header ?? 'P-1'));
    columns.counter.push(element.counter ?? i + 1);
    columns.file.push(0);
    columns.line.push(element.at ?? i + 1);
    columns.layout.push(indexIn(layouts, (element.values ?? []).map(([name, type]) => [name, type])));
    columns.record.push(recordBytes);
    records.push(record);
    recordBytes += record.length;
    for (const [, type, value] of element.values ?? []) {
      if (type === 't') values.push(strings.push(value) - 1);
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
  columns.record.push(recordBytes);
  const bytes = new Uint8Array(recordBytes);
  records.reduce((at, record) => (bytes.set(record, at), at + record.length), 0);
  const u32 = (list) => blocks.add(Uint32Array.from(list));
  const f32 = (list, width) => blocks.add(Float32Array.from(list), width);
  const head = {
    schema: 'vesk-scene/1',
    title,
    unit: 'mm',
    offset,
    bounds,
    files: ['sample.dat'],
    headers,
    kinds: KINDS.map(([name, plural]) => ({ name, plural })),
    layouts,
    strings,
    meshes: meshes.map((mesh) => ({
      positions: f32(mesh.positions, 3),
      normals: f32(mesh.normals, 3),
      indices: u32(mesh.indices),
      closed: mesh.closed,
    })),
    groups: [...groups].map(([mesh, group]) => ({
      mesh,
      matrices: f32(group.matrices.flat(), 12),
      elements: u32(group.elements),
    })),
    points: { positions: f32(points.positions, 3), elements: u32(points.elements) },
    lines: { positions: f32(lines.positions, 6), elements: u32(lines.elements) },
    texts,
    elements: {
      count: elements.length,
      kind: blocks.add(Uint8Array.from(columns.kind)),
      header: u32(columns.header),
      counter: u32(columns.counter),
      file: u32(columns.file),
      line: u32(columns.line),
      layout: u32(columns.layout),
      record: u32(columns.record),
    },
    records: blocks.add(bytes),
    values: blocks.add(Float64Array.from(values)),
    marks,
    failures: [],
  };
  return { head, bytes: blocks.bytes() };
}

/** The page of a scene, from the template. */
export function fill(template, { head, bytes }) {
  const json = JSON.stringify(head).replaceAll('<', '\\u003c');
  const base64 = Buffer.from(bytes).toString('base64');
  return template
    .replace('id="vesk-scene"></script>', () => `id="vesk-scene">${json}</script>`)
    .replace('id="vesk-data"></script>', () => `id="vesk-data">${base64}</script>`);
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
