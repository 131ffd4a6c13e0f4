// SPDX-License-Identifier: MIT
import { placed } from '../view/parts.js';

/** The vertices of the meshes, lines and points of single elements. */
export class Vertices {
  #scene;
  #places = null; // by element: [group, place in it, ...]

  constructor(scene) {
    this.#scene = scene;
  }

  /** [[x, y, z]] relative to the scene's offset. */
  of(element) {
    this.#places ??= this.#index();
    const vertices = [];
    const places = this.#places.get(element) ?? [];
    for (let i = 0; i < places.length; i += 2) {
      const { mesh, matrices } = this.#scene.groups[places[i]];
      const { positions } = this.#scene.meshes[mesh];
      for (let v = 0; v < positions.length; v += 3) {
        vertices.push(placed(matrices, places[i + 1], ...positions.subarray(v, v + 3)));
      }
    }
    return vertices;
  }

  /** [[[x, y, z], ...]]: its triangles; lines and points as such without an area. */
  trianglesOf(element) {
    this.#places ??= this.#index();
    const triangles = [];
    const places = this.#places.get(element) ?? [];
    for (let i = 0; i < places.length; i += 2) {
      const { mesh, matrices } = this.#scene.groups[places[i]];
      const { positions, indices } = this.#scene.meshes[mesh];
      const corner = (k) => placed(matrices, places[i + 1], ...positions.subarray(indices[k] * 3, indices[k] * 3 + 3));
      for (let k = 0; k < indices.length; k += 3) triangles.push([corner(k), corner(k + 1), corner(k + 2)]);
    }
    if (triangles.length > 0) return triangles;
    const { lines, points } = this.#scene;
    const at = (positions, k) => Array.from(positions.subarray(k, k + 3));
    lines.elements.forEach((each, i) => {
      if (each !== element) return;
      const [from, to] = [at(lines.positions, i * 6), at(lines.positions, i * 6 + 3)];
      triangles.push([from, to, to]);
    });
    points.elements.forEach((each, i) => {
      if (each === element) triangles.push(Array(3).fill(at(points.positions, i * 3)));
    });
    return triangles;
  }

  #index() {
    const index = new Map();
    this.#scene.groups.forEach(({ elements }, group) => {
      elements.forEach((element, place) => {
        if (!index.has(element)) index.set(element, []);
        index.get(element).push(group, place);
      });
    });
    return index;
  }
}
