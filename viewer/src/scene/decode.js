// SPDX-License-Identifier: MIT
import { HEAD, joinLines, placesOf, recordStarts, valuesOf, valueStarts } from './hints.js';

// A page holds a head in JSON and little-endian binary data, both compressed and in
// base64. The head points into the data by pairs of a byte offset and a count. Every
// block begins at a multiple of eight bytes. Numbers of 32 bits stand in planes, all
// their lowest bytes first, and those of columns as differences between neighbours.

export const SCHEMA = 'vesk-scene/2';

const MATRIX = [-1, -1, -1, 0, -1, -1, -1, 1, -1, -1, -1, 2];
const TEXT = [0, 1, 2, -1, -1, -1, -1, -1, -1, -1, -1];

// What turns the direction of a text, and would let a name read as another one.
const TURNING = /[\u061c\u200e\u200f\u202a-\u202e\u2066-\u2069]/g;

/** Text, or all texts of an array or object, without the characters that turn it over. */
export function harmless(what) {
  if (typeof what === 'string') return what.replace(TURNING, '\ufffd');
  if (Array.isArray(what)) return what.map(harmless);
  if (what === null || typeof what !== 'object') return what;
  return Object.fromEntries(Object.entries(what).map(([key, value]) => [key, harmless(value)]));
}

/** The bytes of base64 text. */
export function bytesOf(base64) {
  if (Uint8Array.fromBase64) return Uint8Array.fromBase64(base64);
  const text = atob(base64);
  const bytes = new Uint8Array(text.length);
  for (let i = 0; i < text.length; ++i) bytes[i] = text.charCodeAt(i);
  return bytes;
}

/** The bytes that zlib's format holds. */
export async function inflated(bytes) {
  const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream('deflate'));
  try {
    return new Uint8Array(await new Response(stream).arrayBuffer());
  } catch {
    throw new Error('The data of the page is incomplete');
  }
}

/** Numbers of 32 bits from their planes. */
export function joinedPlanes(bytes, count) {
  const numbers = new Uint32Array(count);
  for (let i = 0; i < count; ++i) {
    numbers[i] =
      bytes[i] | (bytes[count + i] << 8) | (bytes[2 * count + i] << 16) | (bytes[3 * count + i] << 24);
  }
  return numbers;
}

/** Turns differences into the numbers, in their place. */
export function summed(steps) {
  let sum = 0;
  for (let i = 0; i < steps.length; ++i) {
    sum = (sum + ((steps[i] >>> 1) ^ -(steps[i] & 1))) >>> 0;
    steps[i] = sum;
  }
  return steps;
}

/**
 * The scene with typed arrays in place of the pairs. Throws an Error that says
 * what is wrong when the head is of another schema or points outside of the data.
 */
export function decodeScene(head, bytes) {
  if (head.schema !== SCHEMA) {
    throw new Error(`The page holds ${head.schema}, this viewer reads ${SCHEMA}`);
  }
  const block = (Type, [offset, count], width = 1) => {
    const length = count * width;
    if (offset % 8 !== 0 || offset + length * Type.BYTES_PER_ELEMENT > bytes.length) {
      throw new Error('The data of the page is incomplete');
    }
    return new Type(bytes.buffer, bytes.byteOffset + offset, length);
  };
  const planes = ([offset, count], width = 1) =>
    joinedPlanes(block(Uint8Array, [offset, count], width * 4), count * width);
  const floats = (place, width) => new Float32Array(planes(place, width).buffer);
  const steps = (place) => summed(planes(place));

  const { elements, records } = head;
  const lines = joinLines(
    block(Uint8Array, records.heads, HEAD),
    block(Uint8Array, records.rests),
    records.bytes,
  );
  const layoutOf = steps(elements.layout);
  const starts = valueStarts(head.layouts, layoutOf);
  const record = recordStarts(lines, steps(elements.lines));
  const values = valuesOf({
    layouts: head.layouts,
    layoutOf,
    starts,
    records: lines,
    recordStarts: record,
    hints: block(Uint8Array, head.values.hints),
    literals: block(Float64Array, head.values.literals),
    texts: steps(head.values.texts),
  });
  const placed = (part, axes) => {
    const owners = steps(part.elements);
    const hints = block(Uint8Array, part.hints);
    const literals = floats(part.literals);
    const { offset } = head;
    return { elements: owners, numbers: placesOf({ elements: owners, axes, values, starts, offset, hints, literals }) };
  };
  const points = placed(head.points, [0, 1, 2]);
  const pieces = placed(head.lines, [0, 1, 2, 0, 1, 2]);

  return {
    title: harmless(head.title),
    unit: head.unit,
    offset: head.offset,
    bounds: head.bounds,
    files: harmless(head.files),
    headers: harmless(head.headers),
    groupNames: harmless(head.groupNames),
    attributes: {
      names: harmless(head.attributes.names),
      texts: harmless(head.attributes.texts),
      columns: head.attributes.columns.map(steps),
    },
    kinds: head.kinds,
    layouts: harmless(head.layouts),
    strings: harmless(head.strings),
    meshes: head.meshes.map((mesh) => ({
      positions: floats(mesh.positions, 3),
      normals: Float32Array.from(block(Int8Array, mesh.normals, 3), (x) => x / 127),
      indices: steps(mesh.indices),
      closed: mesh.closed,
    })),
    groups: head.groups.map((group) => {
      const { elements: owners, numbers } = placed(group, MATRIX);
      return { mesh: group.mesh, matrices: numbers, elements: owners };
    }),
    points: { positions: points.numbers, elements: points.elements },
    lines: { positions: pieces.numbers, elements: pieces.elements },
    texts: textsOf(placed(head.texts, TEXT), harmless(head.texts.strings)),
    elements: {
      count: elements.count,
      kind: block(Uint8Array, elements.kind),
      shown: block(Uint8Array, elements.shown),
      header: steps(elements.header),
      counter: steps(elements.counter),
      group: steps(elements.group),
      file: steps(elements.file),
      line: steps(elements.line),
      layout: layoutOf,
      component: steps(elements.component),
      row: steps(elements.row),
      record,
    },
    records: lines,
    values,
    valueStarts: starts,
    marks: harmless(head.marks),
    failures: harmless(head.failures),
  };
}

function textsOf({ elements, numbers }, strings) {
  return strings.map((text, i) => {
    const part = (from, to) => Array.from(numbers.subarray(i * 11 + from, i * 11 + to));
    const [height, width] = part(9, 11);
    return { text, element: elements[i], position: part(0, 3), along: part(3, 6), up: part(6, 9), height, width };
  });
}
