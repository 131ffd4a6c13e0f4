import { lengthText } from '../ui/numbers.js';

const MOST_LABELS = 400;
const LEAST_TEXT = 7; // pixels; smaller texts are drawn level and in this size
const FONT = 'system-ui, sans-serif';

/** Texts, measures and the snapped place, drawn in two dimensions over the model. */
export class Overlay {
  texts = []; // {text, position, along, up, height, width, element}
  measures = []; // {from, to, distance}, places relative to the scene's offset
  start = null; // where the measure that is being made begins
  snapped = null; // {point, name}
  hasLabels = true;
  colours = { text: '#000', paper: '#fff', accent: '#f80' };

  #canvas;
  #view;
  #unit;

  constructor(canvas, view, unit) {
    this.#canvas = canvas;
    this.#view = view;
    this.#unit = unit;
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
    if (this.hasLabels) this.#drawTexts(context, project, ratio);
    context.setTransform(ratio, 0, 0, ratio, 0, 0);
    for (const measure of this.measures) this.#drawMeasure(context, project, measure);
    if (this.start && this.snapped) {
      this.#drawLine(context, project(this.start.point), project(this.snapped.point));
    }
    if (this.start) this.#drawDot(context, project(this.start.point));
    if (this.snapped) this.#drawSnap(context, project(this.snapped.point), this.snapped.name);
  }

  // Texts lie in their plane as in the model where they can be read so, and else
  // stand level; of those that would lie over each other the first is drawn.
  #drawTexts(context, project, ratio) {
    const taken = [];
    let drawn = 0;
    for (const each of this.texts) {
      if (drawn >= MOST_LABELS) break;
      if (this.#view.isHidden(each.element) || this.#view.isCutAway(each.position)) continue;
      const [x, y, z] = project(each.position);
      if (z < -1 || z > 1 || x < -200 || y < -200) continue;
      if (x > this.#view.camera.pixelsWide + 200 || y > this.#view.camera.pixelsHigh + 200) continue;
      const tip = (direction) => project(each.position.map((p, i) => p + direction[i] * each.height));
      const [ax, ay] = tip(each.along);
      const [ux, uy] = tip(each.up);
      const along = [ax - x, ay - y];
      const up = [ux - x, uy - y];
      const area = up[0] * along[1] - up[1] * along[0]; // positive: not seen from behind
      const size = Math.hypot(...up);
      const isReadable = size >= LEAST_TEXT && area > 0.25 * size * Math.hypot(...along);
      context.font = `${isReadable ? 100 : 11}px ${FONT}`;
      context.textBaseline = 'alphabetic';
      const width = context.measureText(each.text).width;
      if (isReadable) {
        // A capital letter is about 0.72 of the size of its font.
        const k = 1 / 72;
        // As wide as the record makes it, if it does.
        const wide = each.width > 0 && width > 0 ? each.width / each.height / width : k;
        context.setTransform(
          ratio * along[0] * wide, ratio * along[1] * wide, -ratio * up[0] * k, -ratio * up[1] * k,
          ratio * x, ratio * y,
        );
      } else {
        const left = insideOf(x, width + 4, this.#view.camera.pixelsWide);
        const box = [left - 2, y - 11, left + width + 2, y + 3];
        if (taken.some((other) => overlap(box, other))) continue;
        taken.push(box);
        context.setTransform(ratio, 0, 0, ratio, ratio * left, ratio * y);
      }
      ++drawn;
      context.lineJoin = 'round';
      context.lineWidth = isReadable ? 10 : 3;
      context.strokeStyle = this.colours.paper;
      context.strokeText(each.text, 0, 0);
      context.fillStyle = this.colours.text;
      context.fillText(each.text, 0, 0);
    }
  }

  #drawMeasure(context, project, { from, to, distance }) {
    const a = project(from);
    const b = project(to);
    this.#drawLine(context, a, b);
    this.#drawDot(context, a);
    this.#drawDot(context, b);
    this.#drawTag(context, (a[0] + b[0]) / 2, (a[1] + b[1]) / 2, lengthText(distance, this.#unit));
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
