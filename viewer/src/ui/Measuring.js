// SPDX-License-Identifier: MIT
import { angleAt, measured, snap } from '../scene/measure.js';
import { nearestOf } from '../scene/nearest.js';
import { Vertices } from '../scene/vertices.js';
import { h, icon } from './dom.js';
import { lengthText, numberText } from './numbers.js';

// More vertices than this are not looked at one by one.
const MOST_VERTICES = 50000;

// What is measured, and what is to be clicked one after the other.
const WAYS = {
  distance: { name: 'Distance', hints: ['Click the first point.', 'Click the second point.'] },
  angle: { name: 'Angle', hints: ['Click a point on one side.', 'Click the corner.', 'Click a point on the other side.'] },
  gap: { name: 'Smallest distance', hints: ['Click the first element.', 'Click the second element.'] },
};

/** Distances and angles between places of the model, and smallest distances of elements. */
export class Measuring {
  #model;
  #view;
  #overlay;
  #vertices;
  #isOn = false;
  measures = []; // {from, to, distance, delta} or {from, apex, to, angle}, places in the coordinates of the model
  #clicked = []; // of the measure that is being made, as #snapAt gives them

  constructor({ model, view, overlay, onClose }) {
    this.#model = model;
    this.#view = view;
    this.#overlay = overlay;
    this.#vertices = new Vertices(model.scene);
    this.hint = h('span', { class: 'quiet', role: 'status' });
    this.way = h(
      'select',
      { 'aria-label': 'What to measure', onchange: () => this.#begin() },
      Object.entries(WAYS).map(([id, { name }]) => h('option', { value: id }, name)),
    );
    this.list = h('ol', { class: 'measures' });
    this.panel = h(
      'section',
      { class: 'popover', 'aria-label': 'Measure', hidden: true },
      h('strong', {}, 'Measure'),
      this.way,
      this.hint,
      h('button', { type: 'button', class: 'small', onclick: () => this.clear() }, 'Clear'),
      h('button', { type: 'button', class: 'small', onclick: onClose }, 'Off'),
      this.list,
    );
  }

  get isOn() {
    return this.#isOn;
  }

  set isOn(isOn) {
    this.#isOn = isOn;
    this.panel.hidden = !isOn;
    this.#overlay.snapped = null;
    this.#begin();
  }

  // Nothing is clicked yet.
  #begin() {
    this.#clicked = [];
    this.#overlay.start = null;
    this.#show();
  }

  /** The pointer is at x, y. */
  hover(x, y) {
    this.#overlay.snapped = this.#snapAt(x, y);
    this.#overlay.draw();
  }

  click(x, y) {
    const place = this.#snapAt(x, y);
    if (!place) return;
    this.#clicked.push(place);
    this.#overlay.start = place;
    if (this.#clicked.length === WAYS[this.way.value].hints.length) {
      const measure = this.#finished();
      if (measure) this.measures.push(measure);
      this.#clicked = [];
      this.#overlay.start = null;
    }
    this.#show();
  }

  #finished() {
    const points = this.#clicked.map(({ point }) => this.#toModel(point));
    if (this.way.value === 'angle') {
      const [from, apex, to] = points;
      return { from, apex, to, angle: angleAt(apex, from, to) };
    }
    if (this.way.value === 'distance') return { from: points[0], to: points[1], ...measured(...points) };
    const gap = nearestOf(...this.#clicked.map(({ element }) => this.#vertices.trianglesOf(element)));
    if (!gap) return null;
    const [from, to] = [gap.from, gap.to].map((point) => this.#toModel(point));
    return { from, to, ...measured(from, to) };
  }

  /** Gives up the measure that was begun; false if there is none. */
  cancel() {
    if (this.#clicked.length === 0) return false;
    this.#begin();
    return true;
  }

  clear() {
    this.measures = [];
    this.#begin();
  }

  #show() {
    this.hint.textContent = WAYS[this.way.value].hints[this.#clicked.length];
    this.#overlay.measures = this.measures.map((measure) => ({
      points: [measure.from, measure.apex, measure.to].filter(Boolean).map((point) => this.#toScene(point)),
      text: this.#textOf(measure),
    }));
    this.list.replaceChildren(...this.measures.map((measure) => this.#entry(measure)));
    this.#overlay.draw();
  }

  #textOf({ angle, distance }) {
    return angle === undefined ? lengthText(distance, this.#model.scene.unit) : `${numberText(angle)}\u00b0`;
  }

  #entry(measure) {
    return h(
      'li',
      {},
      h('b', {}, this.#textOf(measure)),
      measure.delta
        ? h('span', { class: 'quiet' }, ` along x y z: ${measure.delta.map((x) => numberText(x)).join('  ')}`)
        : null,
      h(
        'button',
        {
          type: 'button',
          class: 'small plain',
          'aria-label': 'Remove this measurement',
          onclick: () => {
            this.measures = this.measures.filter((each) => each !== measure);
            this.#show();
          },
        },
        icon('close'),
      ),
    );
  }

  #snapAt(x, y) {
    const hit = this.#view.pick(x, y);
    if (!hit) return null;
    const vertices = this.#vertices.of(hit.element);
    const places = this.#model.placesOf(hit.element);
    const place = snap({
      places: places.map(({ name, point }) => ({ name, point: this.#toScene(point) })),
      vertices: vertices.length <= MOST_VERTICES ? vertices : [],
      surface: hit.place.toArray(),
      project: this.#view.camera.projector(),
      x,
      y,
    });
    return { ...place, element: hit.element };
  }

  #toModel(point) {
    return point.map((x, i) => x + this.#model.scene.offset[i]);
  }

  #toScene(point) {
    return point.map((x, i) => x - this.#model.scene.offset[i]);
  }
}
