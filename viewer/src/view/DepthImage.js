// SPDX-License-Identifier: MIT
const NOTHING = 0;
const MOST = 16777215;

/** How far away what is drawn is, pixel by pixel. */
export class DepthImage {
  #bytes;
  #depthOf;

  /** Four bytes for each pixel, the lowest row first; the last byte is 0 where nothing is. */
  constructor(bytes, width, height, camera) {
    Object.assign(this, { width, height });
    this.#bytes = bytes;
    this.ratio = width / camera.pixelsWide;
    const { near, far } = camera.toThree();
    const span = far - near;
    // In units of the model, from the eye on.
    this.#depthOf = camera.isPerspective
      ? (depth) => (near * far) / (far - ((depth + 1) / 2) * span)
      : (depth) => near + ((depth + 1) / 2) * span;
  }

  /** How far away something with this depth (-1 to 1) is. */
  distanceOf(depth) {
    return this.#depthOf(depth);
  }

  /** How far away what is seen at a pixel of the page is; Infinity where nothing is. */
  at(x, y) {
    const column = Math.floor(x * this.ratio);
    const row = this.height - 1 - Math.floor(y * this.ratio);
    if (column < 0 || row < 0 || column >= this.width || row >= this.height) return Infinity;
    const i = (row * this.width + column) * 4;
    const b = this.#bytes;
    if (b[i + 3] === NOTHING) return Infinity;
    return this.#depthOf(((b[i] + b[i + 1] * 256 + b[i + 2] * 65536) / MOST) * 2 - 1);
  }
}
