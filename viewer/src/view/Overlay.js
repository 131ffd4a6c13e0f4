// SPDX-License-Identifier: MIT
const MOST_LABELS = 400;
const LEAST_TEXT = 7; // pixels; smaller texts are drawn level and in this size
const LEAST_LABEL = 1.2; // pixels; of texts that would be smaller none is drawn over the plant
const FONT = 'system-ui, sans-serif';
const MOST_GLOWS = 1000;
const GLOW = 9; // pixels around what is marked and too small to be seen

/** Texts, measures and the snapped place, drawn in two dimensions over the model. */
export class Overlay {
  texts = []; // {text, position, along, up, height, width, element}
  measures = []; // {points, text}, places relative to the scene's offset
  start = null; // where the measure that is being made begins
  snapped = null; // {point, name}
  hasLabels = true;
  glows = []; // {box: [x, y, z, x, y, z], colour} of what is to be seen from afar
  colours = { text: '#000', paper: '#fff', accent: '#f80' };

  #canvas;
  #view;
  #shown = new Map(); // by text: where it was drawn when the view was at rest, {dx, dy} or null
  #drawn = []; // {text, box: [left, top, right, bottom]} in pixels

  constructor(canvas, view) {
    this.#canvas = canvas;
    this.#view = view;
  }

  resize(width, height) {
    const ratio = Math.min(globalThis.devicePixelRatio, 2);
    this.#canvas.width = Math.round(width * ratio);
    this.#canvas.height = Math.round(height * ratio);
  }

  draw() {
    const context = this.#canvas.getContext('2d');
    const ratio = Math.min(globalThis.devicePixelRatio, 2);
    context.setTransform(1, 0, 0, 1, 0, 0);
    context.clearRect(0, 0, this.#canvas.width, this.#canvas.height);
    context.setTransform(ratio, 0, 0, ratio, 0, 0);
    const project = this.#view.camera.projector();
    this.#drawn = [];
    this.#drawGlows(context, project);
    if (this.hasLabels) this.#drawTexts(context, project, ratio);
    context.setTransform(ratio, 0, 0, ratio, 0, 0);
    for (const measure of this.measures) this.#drawMeasure(context, project, measure);
    if (this.start && this.snapped) {
      this.#drawLine(context, project(this.start.point), project(this.snapped.point));
    }
    if (this.start) this.#drawDot(context, project(this.start.point));
    if (this.snapped) this.#drawSnap(context, project(this.snapped.point), this.snapped.name);
  }

  /** The text that is drawn at a pixel, or null. */
  textAt(x, y) {
    const hit = this.#drawn.findLast(({ box: [x0, y0, x1, y1] }) => x >= x0 && x <= x1 && y >= y0 && y <= y1);
    return hit?.text ?? null;
  }

  // A ring of light around marked things that are smaller than it.
  #drawGlows(context, project) {
    this.glows.slice(0, MOST_GLOWS).forEach(({ box, colour }) => {
      const [x, y, z] = project([0, 1, 2].map((k) => (box[k] + box[k + 3]) / 2));
      if (z < -1 || z > 1) return;
      const size = Math.hypot(...[0, 1, 2].map((k) => box[k + 3] - box[k])) / this.#view.camera.unitsPerPixel;
      if (size > 2 * GLOW) return;
      const light = context.createRadialGradient(x, y, 0, x, y, GLOW);
      light.addColorStop(0, colour);
      light.addColorStop(0.3, colour);
      light.addColorStop(1, 'transparent');
      context.fillStyle = light;
      context.beginPath();
      context.arc(x, y, GLOW, 0, 2 * Math.PI);
      context.fill();
    });
  }

  // Texts lie in their plane as in the model where they can be read so, and else stand
  // level beside their place. Of those that would lie over each other the first is
  // drawn, and none that something stands before or that would hide the plant. What
  // hides is known when the view is at rest; while it moves, the texts stay.
  #drawTexts(context, project, ratio) {
    const { depths } = this.#view;
    if (depths) this.#shown.clear();
    const taken = [];
    let drawn = 0;
    for (const each of this.texts) {
      if (drawn >= MOST_LABELS) break;
      if (this.#view.isHidden(each.element) || this.#view.isCutAway(each.position)) continue;
      if (!depths && this.#shown.get(each) === null) continue;
      const place = this.#placeOf(each, project);
      if (!place) continue;
      context.font = `${place.isReadable ? 100 : 11}px ${FONT}`;
      context.textBaseline = 'alphabetic';
      const width = context.measureText(each.text).width;
      const isDrawn = place.isReadable
        ? this.#setInPlane(context, each, place, width, ratio)
        : this.#setBeside(context, each, place, width, ratio, taken);
      if (depths && !isDrawn) this.#shown.set(each, null);
      if (!isDrawn) continue;
      ++drawn;
      context.globalAlpha = this.#view.isFaded(each.element) ? 0.35 : 1;
      context.lineJoin = 'round';
      context.lineWidth = place.isReadable ? 10 : 3;
      context.strokeStyle = this.colours.paper;
      context.strokeText(each.text, 0, 0);
      context.fillStyle = this.colours.text;
      context.fillText(each.text, 0, 0);
    }
    context.globalAlpha = 1;
  }

  #placeOf(each, project) {
    const [x, y, z] = project(each.position);
    const { pixelsWide, pixelsHigh } = this.#view.camera;
    if (z < -1 || z > 1 || x < -200 || y < -200 || x > pixelsWide + 200 || y > pixelsHigh + 200) return null;
    const tip = (direction) => project(each.position.map((p, i) => p + direction[i] * each.height));
    const [ax, ay] = tip(each.along);
    const [ux, uy] = tip(each.up);
    const along = [ax - x, ay - y];
    const up = [ux - x, uy - y];
    const area = up[0] * along[1] - up[1] * along[0]; // positive: not seen from behind
    const size = Math.hypot(...up);
    const isReadable = size >= LEAST_TEXT && area > 0.25 * size * Math.hypot(...along);
    return { x, y, z, along, up, size: Math.max(size, Math.hypot(...along)), isReadable };
  }

  // Whether something stands before a text; it may lie in the surface of what it names.
  #isHidden(each, { z }, points) {
    const { depths } = this.#view;
    if (!depths) return false;
    const slack = 2 * each.height + 2 * this.#view.thickness;
    const limit = depths.distanceOf(z) - slack;
    return points.every(([x, y]) => depths.at(x, y) < limit);
  }

  #setInPlane(context, each, place, width, ratio) {
    const { x, y, along, up } = place;
    // A capital letter is about 0.72 of the size of its font.
    const k = 1 / 72;
    // As wide as the record makes it, if it does.
    const wide = each.width > 0 && width > 0 ? each.width / each.height / width : k;
    const at = (a, b) => [x + along[0] * wide * width * a + up[0] * b, y + along[1] * wide * width * a + up[1] * b];
    const points = [at(0.02, 0.5), at(0.5, 0.5), at(0.98, 0.5)];
    if (this.#isHidden(each, place, points)) return false;
    context.setTransform(
      ratio * along[0] * wide, ratio * along[1] * wide, -ratio * up[0] * k, -ratio * up[1] * k,
      ratio * x, ratio * y,
    );
    const corners = [at(0, 0), at(0, 1), at(1, 0), at(1, 1)];
    const [xs, ys] = [0, 1].map((axis) => corners.map((corner) => corner[axis]));
    const box = [Math.min(...xs), Math.min(...ys), Math.max(...xs), Math.max(...ys)];
    this.#drawn.push({ text: each, box });
    return true;
  }

  #setBeside(context, each, place, width, ratio, taken) {
    const { depths, camera } = this.#view;
    if (!depths && !this.#shown.has(each)) return false;
    const boxAt = ([dx, dy]) => {
      const left = insideOf(place.x + dx, width + 4, camera.pixelsWide);
      const y = place.y + dy;
      return [left - 2, y - 11, left + width + 2, y + 3];
    };
    const isFree = (box) => !taken.some((other) => overlap(box, other));
    let offset = this.#shown.get(each);
    if (depths) {
      if (this.#isHidden(each, place, [[place.x, place.y]])) return false;
      const room = [[0, 0], [5, -6], [5, 16], [-width - 5, -6], [-width - 5, 16], [-width / 2, -22], [-width / 2, 30]];
      offset = room.find((each) => isFree(boxAt(each)) && this.#isOverNothing(boxAt(each)));
      // Near enough to be looked at: over what it names, if there is no room beside it.
      if (!offset && place.size >= LEAST_TEXT && isFree(boxAt([0, 0]))) offset = [0, 0];
      if (!offset || place.size < LEAST_LABEL) return false;
      this.#shown.set(each, offset);
    }
    const box = boxAt(offset);
    if (!isFree(box)) return false;
    taken.push(box);
    this.#drawn.push({ text: each, box });
    context.setTransform(ratio, 0, 0, ratio, ratio * (box[0] + 2), ratio * (box[1] + 11));
    return true;
  }

  // Whether a box of the picture covers hardly anything of the plant.
  #isOverNothing([x0, y0, x1, y1]) {
    let [covered, all] = [0, 0];
    for (let x = x0; x <= x1; x += 4) {
      for (let y = y0; y <= y1; y += 4) {
        ++all;
        if (this.#view.depths.at(x, y) < Infinity) ++covered;
      }
    }
    return covered <= 0.06 * all;
  }

  #drawMeasure(context, project, { points, text }) {
    const all = points.map((point) => project(point));
    for (let i = 1; i < all.length; ++i) this.#drawLine(context, all[i - 1], all[i]);
    for (const each of all) this.#drawDot(context, each);
    // In the middle of a line, at the corner of an angle.
    const [[x, y], [x2, y2]] = all.length > 2 ? [all[1], all[1]] : all;
    this.#drawTag(context, (x + x2) / 2, (y + y2) / 2 + (all.length > 2 ? 24 : 0), text);
  }

  #drawLine(context, a, b) {
    for (const [width, colour] of [[4, this.colours.paper], [2, this.colours.accent]]) {
      context.lineWidth = width;
      context.strokeStyle = colour;
      context.beginPath();
      context.moveTo(a[0], a[1]);
      context.lineTo(b[0], b[1]);
      context.stroke();
    }
  }

  #drawDot(context, [x, y]) {
    context.beginPath();
    context.arc(x, y, 4, 0, 2 * Math.PI);
    context.fillStyle = this.colours.accent;
    context.fill();
    context.lineWidth = 1.5;
    context.strokeStyle = this.colours.paper;
    context.stroke();
  }

  #drawSnap(context, [x, y], name) {
    context.lineWidth = 2;
    context.strokeStyle = this.colours.accent;
    context.strokeRect(x - 6, y - 6, 12, 12);
    this.#drawTag(context, x, y + 22, name);
  }

  #drawTag(context, x, y, text) {
    context.font = `600 12px ${FONT}`;
    context.textBaseline = 'middle';
    const width = context.measureText(text).width + 14;
    context.beginPath();
    context.roundRect(x - width / 2, y - 11, width, 22, 5);
    context.fillStyle = this.colours.paper;
    context.fill();
    context.lineWidth = 1;
    context.strokeStyle = this.colours.accent;
    context.stroke();
    context.fillStyle = this.colours.text;
    context.fillText(text, x - width / 2 + 7, y + 0.5);
  }
}

/** Where a label begins that shall begin at x: all of it is seen while its place is. */
export function insideOf(x, width, room) {
  return x < 0 || x > room ? x : Math.max(0, Math.min(x, room - width));
}

function overlap(a, b) {
  return a[0] < b[2] && b[0] < a[2] && a[1] < b[3] && b[1] < a[3];
}
