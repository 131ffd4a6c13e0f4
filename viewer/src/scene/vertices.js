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
