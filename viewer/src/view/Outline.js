// SPDX-License-Identifier: MIT
/**
 * What is to be seen whole: boxes that may lie askew, 12 numbers each: the middle and
 * the halves of three edges. It is nearer to the outline of a plant than the corners of
 * one large box are.
 */
export class Outline {
  #boxes;

  constructor(boxes) {
    this.#boxes = boxes;
  }

  /** Of one box [[x, y, z], [x, y, z]] along the axes. */
  static ofBox([low, high]) {
    const middle = low.map((x, k) => (x + high[k]) / 2);
    const half = low.map((x, k) => (high[k] - x) / 2);
    return new Outline([...middle, half[0], 0, 0, 0, half[1], 0, 0, 0, half[2]]);
  }

  get isEmpty() {
    return this.#boxes.length === 0;
  }

  /** [from, to] along each of the axes. */
  along(...axes) {
    return axes.map(({ x, y, z }) => {
      let [low, high] = [Infinity, -Infinity];
      for (let i = 0; i < this.#boxes.length; i += 12) {
        const [middle, half] = extentOf(this.#boxes, i, x, y, z);
        low = Math.min(low, middle - half);
        high = Math.max(high, middle + half);
      }
      return [low, high];
    });
  }

  /**
   * [left, right, bottom, top] in perspective, as tangents at an eye `distance` away
   * from the target.
   */
  seen({ right, up, toEye }, target, distance) {
    const off = [right, up, toEye].map((axis) => target.dot(axis));
    const all = [Infinity, -Infinity, Infinity, -Infinity];
    for (let i = 0; i < this.#boxes.length; i += 12) {
      // As if all of a box were as near as its nearest corner.
      const [z, deep] = extentOf(this.#boxes, i, toEye.x, toEye.y, toEye.z);
      const away = Math.max(distance * 0.02, distance - (z + deep - off[2]));
      [right, up].forEach((axis, k) => {
        const [middle, half] = extentOf(this.#boxes, i, axis.x, axis.y, axis.z);
        all[2 * k] = Math.min(all[2 * k], (middle - half - off[k]) / away);
        all[2 * k + 1] = Math.max(all[2 * k + 1], (middle + half - off[k]) / away);
      });
    }
    return all;
  }
}

function extentOf(b, i, x, y, z) {
  const along = (k) => b[i + k] * x + b[i + k + 1] * y + b[i + k + 2] * z;
  return [along(0), Math.abs(along(3)) + Math.abs(along(6)) + Math.abs(along(9))];
}
