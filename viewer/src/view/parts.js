// SPDX-License-Identifier: MIT
// What of a scene is drawn by one call each, as plain arrays. A mesh that stands
// at many places is drawn by one call for all of them; the meshes that stand at few
// places are put together into one.

/** A mesh at fewer places than this is put together with others. */
export const FEW_PLACES = 16;

/** Corners of triangles that are put together into one mesh at most. */
export const MOST_CORNERS = 129600;

/**
 * The solids and faces of a scene:
 *   shared: [{mesh, matrices, elements, frames}], the largest places first
 *   joined: [{positions, normals, elements, indices, closed}]
 *   boxes:  6 numbers for each element, low x y z, high x y z
 *   frames: [{elements, frames}] of all meshes: for each place 12 numbers, the middle
 *           of the mesh's box there and the three halves of its edges
 *   thickness: what a middling solid measures across; 0 without solids
 */
export function partsOf(scene) {
  const boxes = new Float32Array(scene.elements.count * 6);
  for (let i = 0; i < boxes.length; i += 6) boxes.set(EMPTY, i);
  const shared = [];
  const few = { true: [], false: [] };
  const frames = [];
  for (const group of scene.groups) {
    const mesh = scene.meshes[group.mesh];
    const places = { mesh, matrices: group.matrices, elements: group.elements, frames: framesOf(mesh, group.matrices) };
    addBoxes(boxes, places);
    frames.push({ elements: places.elements, frames: places.frames });
    if (group.elements.length < FEW_PLACES) few[mesh.closed].push(places);
    else shared.push(sortedBySize(places));
  }
  const joined = [];
  for (const closed of [true, false]) {
    for (const some of chunksOf(few[closed])) joined.push({ ...join(some), closed });
  }
  addPoints(boxes, scene.points.positions, scene.points.elements, 3);
  addPoints(boxes, scene.lines.positions, scene.lines.elements, 6);
  for (const text of scene.texts) {
    addPoints(boxes, cornersOfText(text), Array(4).fill(text.element), 3);
  }
  return { shared, joined, boxes, frames, thickness: middleThickness(frames) };
}

// Neighbours in the file lie near each other in the plant mostly, so that a part of
// them can be left out as a whole where it is not seen.
function chunksOf(groups) {
  const chunks = [];
  let corners = MOST_CORNERS;
  const sorted = [...groups].sort((a, b) => a.elements[0] - b.elements[0]);
  for (const group of sorted) {
    if (corners >= MOST_CORNERS) {
      chunks.push([]);
      corners = 0;
    }
    chunks.at(-1).push(group);
    corners += group.mesh.indices.length * group.elements.length;
  }
  return chunks;
}

/** The length of the three half edges of a frame, the longest first. */
export function edgesOf(frames, place) {
  const at = place * 12 + 3;
  const length = (k) => Math.hypot(frames[at + k], frames[at + k + 1], frames[at + k + 2]);
  const [a, b, c] = [length(0), length(3), length(6)];
  const most = Math.max(a, b, c);
  const least = Math.min(a, b, c);
  return [most, a + b + c - most - least, least];
}

function middleThickness(all) {
  const thick = [];
  for (const { elements, frames } of all) {
    const step = Math.max(1, Math.floor(elements.length / 500));
    for (let i = 0; i < elements.length; i += step) thick.push(2 * edgesOf(frames, i)[1]);
  }
  return thick.sort((a, b) => a - b)[thick.length >> 1] ?? 0;
}

// The last ones differ from the first where the record says how wide the text is.
function cornersOfText({ position, along, up, height, width = 0 }) {
  const corner = (right, high) => position.map((p, k) => p + along[k] * right + up[k] * high);
  return [...corner(0, 0), ...corner(0, height), ...corner(width, 0), ...corner(width, height)];
}

const EMPTY = [Infinity, Infinity, Infinity, -Infinity, -Infinity, -Infinity];

/** The box of some elements, [[x, y, z], [x, y, z]]; null if they have none. */
export function boxOf(boxes, elements) {
  const all = [...EMPTY];
  for (const element of elements) {
    for (let k = 0; k < 3; ++k) {
      all[k] = Math.min(all[k], boxes[element * 6 + k]);
      all[k + 3] = Math.max(all[k + 3], boxes[element * 6 + 3 + k]);
    }
  }
  return all[0] <= all[3] ? [all.slice(0, 3), all.slice(3)] : null;
}

/** The place of a point of a mesh, by row k of 12 numbers of the matrix. */
export function placed(matrices, k, x, y, z) {
  const at = k * 12;
  const place = [0, 0, 0];
  for (let row = 0; row < 3; ++row) {
    const m = at + row * 4;
    place[row] = matrices[m] * x + matrices[m + 1] * y + matrices[m + 2] * z + matrices[m + 3];
  }
  return place;
}

/** Low x y z and high x y z of a mesh. */
export function meshBox({ positions }) {
  const box = [...EMPTY];
  for (let i = 0; i < positions.length; i += 3) {
    for (let k = 0; k < 3; ++k) {
      box[k] = Math.min(box[k], positions[i + k]);
      box[k + 3] = Math.max(box[k + 3], positions[i + k]);
    }
  }
  return box;
}

// The box of the mesh at each of its places: the middle and the halves of three edges.
function framesOf(mesh, matrices) {
  const box = meshBox(mesh);
  const middle = [0, 1, 2].map((k) => (box[k] + box[k + 3]) / 2);
  const half = [0, 1, 2].map((k) => (box[k + 3] - box[k]) / 2);
  const frames = new Float32Array(matrices.length);
  for (let at = 0; at < matrices.length; at += 12) {
    for (let row = 0; row < 3; ++row) {
      const m = at + row * 4;
      frames[at + row] =
        matrices[m] * middle[0] + matrices[m + 1] * middle[1] + matrices[m + 2] * middle[2] + matrices[m + 3];
      for (let k = 0; k < 3; ++k) frames[at + 3 + k * 3 + row] = matrices[m + k] * half[k];
    }
  }
  return frames;
}

// Widens the boxes of the elements by those of the mesh at its places.
function addBoxes(boxes, { elements, frames }) {
  for (let place = 0; place < elements.length; ++place) {
    const f = place * 12;
    for (let row = 0; row < 3; ++row) {
      const half = Math.abs(frames[f + 3 + row]) + Math.abs(frames[f + 6 + row]) + Math.abs(frames[f + 9 + row]);
      const at = elements[place] * 6 + row;
      boxes[at] = Math.min(boxes[at], frames[f + row] - half);
      boxes[at + 3] = Math.max(boxes[at + 3], frames[f + row] + half);
    }
  }
}

function addPoints(boxes, positions, elements, width) {
  for (let i = 0; i < elements.length; ++i) {
    for (let k = 0; k < width; ++k) {
      const at = elements[i] * 6 + (k % 3);
      boxes[at] = Math.min(boxes[at], positions[i * width + k]);
      boxes[at + 3] = Math.max(boxes[at + 3], positions[i * width + k]);
    }
  }
}

function sortedBySize({ mesh, matrices, elements, frames }) {
  const sizes = Float32Array.from(elements, (_, i) => edgesOf(frames, i)[0]);
  const order = Uint32Array.from({ length: elements.length }, (_, i) => i);
  order.sort((a, b) => sizes[b] - sizes[a] || a - b);
  const sorted = {
    mesh,
    matrices: new Float32Array(matrices.length),
    elements: new Uint32Array(elements.length),
    frames: new Float32Array(frames.length),
  };
  order.forEach((from, to) => {
    sorted.matrices.set(matrices.subarray(from * 12, from * 12 + 12), to * 12);
    sorted.frames.set(frames.subarray(from * 12, from * 12 + 12), to * 12);
    sorted.elements[to] = elements[from];
  });
  return sorted;
}

// One mesh of meshes at their places.
function join(groups) {
  let vertices = 0;
  let corners = 0;
  for (const { mesh, elements } of groups) {
    vertices += (mesh.positions.length / 3) * elements.length;
    corners += mesh.indices.length * elements.length;
  }
  const joined = {
    positions: new Float32Array(vertices * 3),
    normals: new Float32Array(vertices * 3),
    elements: new Uint32Array(vertices),
    indices: new Uint32Array(corners),
  };
  let vertex = 0;
  let corner = 0;
  for (const { mesh, matrices, elements } of groups) {
    elements.forEach((element, place) => {
      const turn = cofactorsOf(matrices, place);
      const count = mesh.positions.length / 3;
      for (let i = 0; i < count; ++i) {
        const [x, y, z] = mesh.positions.subarray(i * 3, i * 3 + 3);
        const [nx, ny, nz] = mesh.normals.subarray(i * 3, i * 3 + 3);
        joined.positions.set(placed(matrices, place, x, y, z), (vertex + i) * 3);
        for (let k = 0; k < 3; ++k) {
          joined.normals[(vertex + i) * 3 + k] =
            turn.rows[k][0] * nx + turn.rows[k][1] * ny + turn.rows[k][2] * nz;
        }
        joined.elements[vertex + i] = element;
      }
      // A mirror turns the triangles inside out.
      for (let i = 0; i < mesh.indices.length; i += 3) {
        const [a, b, c] = mesh.indices.subarray(i, i + 3);
        joined.indices.set(
          turn.isMirror ? [vertex + a, vertex + c, vertex + b] : [vertex + a, vertex + b, vertex + c],
          corner + i,
        );
      }
      vertex += count;
      corner += mesh.indices.length;
    });
  }
  return joined;
}

// What turns normals: the cofactors of the matrix, of a size that keeps clear of
// the ends of the numbers.
function cofactorsOf(matrices, place) {
  const row = (k) => Array.from(matrices.subarray(place * 12 + k * 4, place * 12 + k * 4 + 3));
  const cross = (p, q) => [
    p[1] * q[2] - p[2] * q[1],
    p[2] * q[0] - p[0] * q[2],
    p[0] * q[1] - p[1] * q[0],
  ];
  const [a, b, c] = [row(0), row(1), row(2)];
  const rows = [cross(b, c), cross(c, a), cross(a, b)];
  const determinant = a[0] * rows[0][0] + a[1] * rows[0][1] + a[2] * rows[0][2];
  const largest = Math.max(...rows.flat().map(Math.abs)) || 1;
  const scale = (determinant < 0 ? -1 : 1) / largest;
  return { rows: rows.map((each) => each.map((x) => x * scale)), isMirror: determinant < 0 };
}

/**
 * A mesh with fewer triangles that looks alike from afar; null if there is not
 * half to be saved. Vertices that are near each other and look the same way
 * become one in their middle.
 */
export function coarse({ positions, normals, indices, closed }) {
  const box = meshBox({ positions });
  // Three steps along each axis, and three for each part of a normal.
  const step = (i, k) => {
    const size = box[k + 3] - box[k];
    return size > 0 ? Math.round(((positions[i + k] - box[k]) / size) * 2) : 0;
  };
  const turn = (i, k) => Math.round(normals[i + k] * 1.2) + 1;
  const byKey = new Map();
  const sums = []; // [x, y, z, normal x, y, z, count]
  const clusterOf = new Uint32Array(positions.length / 3);
  for (let i = 0; i < positions.length; i += 3) {
    const key = [0, 1, 2].reduce((all, k) => (all * 3 + step(i, k)) * 3 + turn(i, k), 0);
    if (!byKey.has(key)) byKey.set(key, sums.push([0, 0, 0, 0, 0, 0, 0]) - 1);
    const cluster = byKey.get(key);
    clusterOf[i / 3] = cluster;
    for (let k = 0; k < 3; ++k) {
      sums[cluster][k] += positions[i + k];
      sums[cluster][k + 3] += normals[i + k];
    }
    ++sums[cluster][6];
  }
  const kept = [];
  for (let i = 0; i < indices.length; i += 3) {
    const [a, b, c] = [0, 1, 2].map((k) => clusterOf[indices[i + k]]);
    if (a !== b && b !== c && c !== a) kept.push(a, b, c);
  }
  if (kept.length * 2 > indices.length) return null;
  return {
    positions: Float32Array.from(sums.flatMap((sum) => sum.slice(0, 3).map((x) => x / sum[6]))),
    normals: Float32Array.from(sums.flatMap((sum) => sum.slice(3, 6))),
    indices: Uint32Array.from(kept),
    closed,
  };
}
