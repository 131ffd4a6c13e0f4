import { measured, snap } from '../scene/measure.js';
import { Vertices } from '../scene/vertices.js';
import { h, icon } from './dom.js';
import { lengthText, numberText } from './numbers.js';

// More vertices than this are not looked at one by one.
const MOST_VERTICES = 50000;

/** Distances between places of the model: two clicks make one. */
export class Measuring {
  #model;
  #view;
  #overlay;
  #vertices;
  #isOn = false;
  measures = []; // {from, to, distance, delta}, places in the coordinates of the model

  constructor({ model, view, overlay, onClose }) {
    this.#model = model;
    this.#view = view;
    this.#overlay = overlay;
    this.#vertices = new Vertices(model.scene);
    this.hint = h('span', { class: 'quiet', role: 'status' });
    this.list = h('ol', { class: 'measures' });
    this.panel = h(
      'section',
      { class: 'popover', 'aria-label': 'Measure', hidden: true },
      h('strong', {}, 'Measure'),
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
    this.#overlay.start = null;
    this.#show();
  }

  /** The pointer is at x, y. */
  hover(x, y) {
    this.#overlay.snapped = this.#snapAt(x, y);
    this.#overlay.draw();
  }

  click(x, y) {
    const end = this.#snapAt(x, y);
    if (!end) return;
    const { start } = this.#overlay;
    if (start) {
      const [from, to] = [start.point, end.point].map((point) => this.#toModel(point));
      this.measures.push({ from, to, ...measured(from, to) });
      this.#overlay.start = null;
    } else {
      this.#overlay.start = end;
    }
    this.#show();
  }

  /** Gives up the measure that was begun; false if there is none. */
  cancel() {
    if (!this.#overlay.start) return false;
    this.#overlay.start = null;
    this.#show();
    return true;
  }

  clear() {
    this.measures = [];
    this.#overlay.start = null;
    this.#show();
  }

  #show() {
    this.hint.textContent = this.#overlay.start
      ? 'Click the second place.'
      : 'Click the first place.';
    this.#overlay.measures = this.measures.map(({ from, to, distance }) => ({
      from: this.#toScene(from),
      to: this.#toScene(to),
      distance,
    }));
    this.list.replaceChildren(...this.measures.map((measure) => this.#entry(measure)));
    this.#overlay.draw();
  }

  #entry(measure) {
    const { unit } = this.#model.scene;
    return h(
      'li',
      {},
      h('b', {}, lengthText(measure.distance, unit)),
      h('span', { class: 'quiet' }, ` along x y z: ${measure.delta.map((x) => numberText(x)).join('  ')}`),
      h(
        'button',
        {
          type: 'button',
          class: 'small plain',
          'aria-label': 'Remove this measure',
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
    return snap({
      places: places.map(({ name, point }) => ({ name, point: this.#toScene(point) })),
      vertices: vertices.length <= MOST_VERTICES ? vertices : [],
      surface: hit.place.toArray(),
      project: this.#view.camera.projector(),
      x,
      y,
    });
  }

  #toModel(point) {
    return point.map((x, i) => x + this.#model.scene.offset[i]);
  }

  #toScene(point) {
    return point.map((x, i) => x - this.#model.scene.offset[i]);
  }
}
