// Reads what the tool has written into the page: a head in JSON, and one block of
// little-endian binary data in base64, to which the head points by pairs of a byte
// offset and a count. Every block begins at a multiple of eight bytes, so that
// typed arrays lie on the data itself and nothing is copied.

export const SCHEMA = 'vesk-scene/1';

/** The bytes of base64 text. */
export function bytesOf(base64) {
  if (Uint8Array.fromBase64) return Uint8Array.fromBase64(base64);
  const text = atob(base64);
  const bytes = new Uint8Array(text.length);
  for (let i = 0; i < text.length; ++i) bytes[i] = text.charCodeAt(i);
  return bytes;
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
  const { elements } = head;
  return {
    title: head.title,
    unit: head.unit,
    offset: head.offset,
    bounds: head.bounds,
    files: head.files,
    headers: head.headers,
    kinds: head.kinds,
    layouts: head.layouts,
    strings: head.strings,
    meshes: head.meshes.map((mesh) => ({
      positions: block(Float32Array, mesh.positions, 3),
      normals: block(Float32Array, mesh.normals, 3),
      indices: block(Uint32Array, mesh.indices),
      closed: mesh.closed,
    })),
    groups: head.groups.map((group) => ({
      mesh: group.mesh,
      matrices: block(Float32Array, group.matrices, 12),
      elements: block(Uint32Array, group.elements),
    })),
    points: {
      positions: block(Float32Array, head.points.positions, 3),
      elements: block(Uint32Array, head.points.elements),
    },
    lines: {
      positions: block(Float32Array, head.lines.positions, 6),
      elements: block(Uint32Array, head.lines.elements),
    },
    texts: head.texts,
    elements: {
      count: elements.count,
      kind: block(Uint8Array, elements.kind),
      header: block(Uint32Array, elements.header),
      counter: block(Uint32Array, elements.counter),
      file: block(Uint32Array, elements.file),
      line: block(Uint32Array, elements.line),
      layout: block(Uint32Array, elements.layout),
      record: block(Uint32Array, elements.record),
    },
    records: block(Uint8Array, head.records),
    values: block(Float64Array, head.values),
    marks: head.marks,
    failures: head.failures,
  };
}
