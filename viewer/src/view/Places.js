// SPDX-License-Identifier: MIT
import {
  BufferAttribute,
  DataTexture,
  DynamicDrawUsage,
  FloatType,
  InstancedBufferAttribute,
  InstancedBufferGeometry,
  RGBAFormat,
} from 'three';

import { coarse, edgesOf, meshBox } from './parts.js';
import { HIDDEN, PLACES_WIDTH } from './shaders.js';

/** How fine a thing is drawn, by what it measures across on the screen, in pixels. */
export const AT_REST = { whole: 14, coarse: 3.5, least: 0.5 };
export const IN_MOTION = { whole: 40, coarse: 7, least: 1.2 };

const RIBBON = {
  positions: Float32Array.of(-1, -1, 0, 1, -1, 0, 1, 1, 0, -1, 1, 0),
  normals: new Float32Array(12),
  indices: Uint32Array.of(0, 1, 2, 0, 2, 3),
};

/**
 * The places of a mesh that stands at many of them. Before every frame the places that
 * are seen are chosen, each with as many triangles as its size on the screen is worth:
 * the mesh, a coarser one, or a ribbon as long and as thick.
 */
export class Places {
  levels = []; // {geometry, triangles, count, isRibbon}
  texture;

  #elements;
  #balls; // 5 numbers for each place: the middle, the radius, the thickness

  constructor({ mesh, matrices, elements, frames }) {
    this.#elements = elements;
    this.isClosed = mesh.closed;
    this.isMirrored = hasMirror(matrices);
    this.#balls = ballsOf(frames);
    this.texture = textureOf(matrices, elements);
    this.box = meshBox(mesh);
    this.levels.push(this.#levelOf(mesh));
    if (mesh.indices.length > 2 * RIBBON.indices.length) {
      this.levels.push(this.#levelOf(coarse(mesh) ?? mesh));
      // What is open may be flat.
      if (mesh.closed) this.levels.push({ ...this.#levelOf(RIBBON), isRibbon: true });
    }
  }

  #levelOf({ positions, normals, indices }) {
    const geometry = new InstancedBufferGeometry();
    geometry.setAttribute('position', new BufferAttribute(positions, 3));
    geometry.setAttribute('normal', new BufferAttribute(normals, 3));
    geometry.setIndex(new BufferAttribute(indices, 1));
    const chosen = new InstancedBufferAttribute(new Uint32Array(this.#elements.length), 1);
    chosen.setUsage(DynamicDrawUsage);
    geometry.setAttribute('place', chosen);
    return { geometry, chosen, triangles: indices.length / 3, count: 0 };
  }

  /**
   * Chooses what is drawn. `eye` is what a Sight gives, `states` two bytes for each
   * element. Returns how many triangles there are now, and how many with the limits `rest`.
   */
  choose(eye, limits, rest, states, planes) {
    const balls = this.#balls;
    const elements = this.#elements;
    const last = this.levels.length - 1;
    const lists = this.levels.map(({ chosen }) => chosen.array);
    const counts = this.levels.map(() => 0);
    let triangles = 0;
    for (let i = 0, at = 0; i < elements.length; ++i, at += 5) {
      if (states[elements[i] * 2 + 1] & HIDDEN) continue;
      const x = balls[at];
      const y = balls[at + 1];
      const z = balls[at + 2];
      const radius = balls[at + 3];
      const scale = eye.scaleOf(x, y, z, radius);
      if (scale === 0) continue;
      const size = 2 * radius * scale;
      if (size < rest.least) continue;
      if (planes.some(([a, b, c, d]) => a * x + b * y + c * z - radius > d)) continue;
      const thickness = balls[at + 4] * scale;
      triangles += this.levels[levelAt(thickness, rest, last)].triangles;
      if (size < limits.least) continue;
      const level = levelAt(thickness, limits, last);
      lists[level][counts[level]++] = i;
    }
    let drawn = 0;
    this.levels.forEach((level, i) => {
      level.count = counts[i];
      level.geometry.instanceCount = counts[i];
      level.chosen.clearUpdateRanges();
      level.chosen.addUpdateRange(0, counts[i]);
      level.chosen.needsUpdate = counts[i] > 0;
      drawn += counts[i] * level.triangles;
    });
    return { drawn, triangles };
  }
}

function levelAt(thickness, limits, last) {
  return Math.min(last, thickness >= limits.whole ? 0 : thickness >= limits.coarse ? 1 : 2);
}

/** How large things are in the picture of a camera, and which of them are in it. */
export class Sight {
  constructor(camera) {
    const { right, up, toEye } = camera.axes();
    Object.assign(this, { right, up, toEye, target: camera.target });
    this.high = camera.height / 2;
    this.wide = this.high * camera.aspect;
    this.unit = camera.pixelsHigh / camera.height;
    const eye = camera.eye;
    this.distance = eye[3] === 0 ? 0 : toEye.dot({ x: eye[0], y: eye[1], z: eye[2] }) - toEye.dot(camera.target);
  }

  /** Pixels to a unit at a ball; 0 if it is outside of the picture. */
  scaleOf(x, y, z, radius) {
    const { right, up, toEye, target } = this;
    const [dx, dy, dz] = [x - target.x, y - target.y, z - target.z];
    let { wide, high } = this;
    let scale = this.unit;
    if (this.distance > 0) {
      const away = this.distance - (dx * toEye.x + dy * toEye.y + dz * toEye.z);
      if (away + radius <= 0) return 0;
      const near = Math.max(away, radius * 0.5, this.distance * 1e-3) / this.distance;
      wide *= near;
      high *= near;
      scale /= near;
      radius *= 1.1; // the sides of the picture lie askew
    }
    if (Math.abs(dx * right.x + dy * right.y + dz * right.z) > wide + radius) return 0;
    if (Math.abs(dx * up.x + dy * up.y + dz * up.z) > high + radius) return 0;
    return scale;
  }
}

function ballsOf(frames) {
  const balls = new Float32Array((frames.length / 12) * 5);
  for (let place = 0; place < frames.length / 12; ++place) {
    const [long, middle, short] = edgesOf(frames, place);
    balls.set(frames.subarray(place * 12, place * 12 + 3), place * 5);
    balls[place * 5 + 3] = Math.hypot(long, middle, short);
    balls[place * 5 + 4] = 2 * middle;
  }
  return balls;
}

// Four texels for each place: the rows of its matrix, and its element.
function textureOf(matrices, elements) {
  const rows = Math.max(1, Math.ceil((elements.length * 4) / PLACES_WIDTH));
  const data = new Float32Array(PLACES_WIDTH * rows * 4);
  for (let i = 0; i < elements.length; ++i) {
    data.set(matrices.subarray(i * 12, i * 12 + 12), i * 16);
    data[i * 16 + 12] = elements[i] % 65536;
    data[i * 16 + 13] = Math.floor(elements[i] / 65536);
  }
  const texture = new DataTexture(data, PLACES_WIDTH, rows, RGBAFormat, FloatType);
  texture.needsUpdate = true;
  return texture;
}

function hasMirror(matrices) {
  for (let i = 0; i < matrices.length; i += 12) {
    const [a, b, c, , d, e, f, , g, h, k] = matrices.subarray(i, i + 11);
    if (a * (e * k - f * h) - b * (d * k - f * g) + c * (d * h - e * g) < 0) return true;
  }
  return false;
}
