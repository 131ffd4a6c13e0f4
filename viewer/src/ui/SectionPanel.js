// SPDX-License-Identifier: MIT
import { h } from './dom.js';
import { lengthText } from './numbers.js';

const STEPS = 1000;
const AXES = ['X', 'Y', 'Z'];

/**
 * Sets what cuts the model: a plane at a place along an axis, from one side, and a box
 * from low to high numbers. Numbers are those of the file.
 */
export class SectionPanel {
  #view;
  #scene;
  #box = null; // [[x, y, z], [x, y, z]] in the coordinates of the scene

  constructor({ view, scene, boxOfSelection, onClose }) {
    this.#view = view;
    this.#scene = scene;
    this.axis = h(
      'select',
      { 'aria-label': 'Axis', onchange: () => this.#slide() },
      [...AXES.map((name, i) => h('option', { value: String(i) }, name)), h('option', { value: '' }, 'no plane')],
    );
    this.slider = h('input', {
      type: 'range',
      min: 0,
      max: STEPS,
      value: STEPS / 2,
      'aria-label': 'Position of the section',
      oninput: () => this.#slide(),
    });
    this.place = h('input', {
      type: 'number',
      step: 'any',
      class: 'place',
      'aria-label': 'Position as a number',
      onchange: () => this.apply(),
    });
    this.flip = h('input', { type: 'checkbox', onchange: () => this.apply() });
    this.limits = AXES.map((name) =>
      ['from', 'to'].map((end) =>
        h('input', {
          type: 'number',
          step: 'any',
          class: 'place',
          'aria-label': `${name} ${end}`,
          onchange: () => this.#takeLimits(),
        }),
      ),
    );
    const button = (text, run) => h('button', { type: 'button', class: 'small', onclick: run }, text);
    this.panel = h(
      'section',
      { class: 'popover', 'aria-label': 'Section', hidden: true },
      h('strong', {}, 'Section'),
      this.axis,
      this.slider,
      this.place,
      h('label', {}, this.flip, 'Other side'),
      button('Off', onClose),
      h(
        'details',
        { class: 'box' },
        h('summary', {}, 'Box'),
        h(
          'div',
          { class: 'limits' },
          AXES.flatMap((name, i) => [h('span', {}, name), this.limits[i][0], h('span', {}, 'to'), this.limits[i][1]]),
        ),
        h(
          'div',
          { class: 'line' },
          button('Around the selection', () => this.setBox(boxOfSelection())),
          button('No box', () => this.setBox(null)),
        ),
      ),
    );
    this.#slide(false);
    this.#showLimits();
  }

  get isOn() {
    return !this.panel.hidden;
  }

  set isOn(isOn) {
    this.panel.hidden = !isOn;
    if (isOn) this.apply();
    else this.#view.setSection([]);
  }

  /** What cuts now, in the coordinates of the scene: [{normal, distance}]. */
  get planes() {
    if (!this.isOn) return [];
    const planes = [];
    if (this.axis.value !== '') {
      const axis = Number(this.axis.value);
      const side = this.flip.checked ? -1 : 1;
      const normal = [0, 0, 0];
      normal[axis] = side;
      planes.push({ normal, distance: (Number(this.place.value) - this.#scene.offset[axis]) * side });
    }
    // Six at most: a plane goes first.
    this.#box?.forEach((end, i) =>
      end.forEach((limit, axis) => {
        const [low, high] = this.#scene.bounds;
        const isCut = i === 0 ? limit > low[axis] : limit < high[axis];
        if (!isCut || planes.length >= 6) return;
        const normal = [0, 0, 0];
        normal[axis] = i === 0 ? -1 : 1;
        planes.push({ normal, distance: i === 0 ? -limit : limit });
      }),
    );
    return planes;
  }

  /** Takes planes over that cut along the axes, as `planes` gives them. */
  set planes(planes) {
    const [low, high] = this.#scene.bounds.map((each) => [...each]);
    const axisOf = ({ normal }) => normal.findIndex((x) => Math.abs(x) === 1);
    if (planes.length === 1 && axisOf(planes[0]) >= 0) {
      const [plane] = planes;
      const axis = axisOf(plane);
      this.#box = null;
      this.axis.value = String(axis);
      this.flip.checked = plane.normal[axis] < 0;
      this.#setPlace(plane.distance * plane.normal[axis]);
    } else {
      this.axis.value = '';
      for (const plane of planes) {
        const axis = axisOf(plane);
        if (axis < 0) continue;
        if (plane.normal[axis] < 0) low[axis] = -plane.distance;
        else high[axis] = plane.distance;
      }
      this.#box = planes.length > 0 ? [low, high] : null;
    }
    this.#showLimits();
    this.isOn = planes.length > 0;
  }

  /** Cuts away what is outside of a box in the coordinates of the scene; null for none. */
  setBox(box) {
    this.#box = box;
    if (box) this.axis.value = '';
    this.#showLimits();
    this.apply();
  }

  apply() {
    const axis = Number(this.axis.value);
    this.slider.disabled = this.place.disabled = this.axis.value === '';
    const [low, high] = this.#scene.bounds;
    const place = Number(this.place.value) - this.#scene.offset[axis];
    const part = (place - low[axis]) / (high[axis] - low[axis] || 1);
    this.slider.value = Math.round(part * STEPS);
    this.slider.setAttribute('aria-valuetext', lengthText(Number(this.place.value), this.#scene.unit, 1));
    if (this.isOn) this.#view.setSection(this.planes);
  }

  #slide(isApplied = true) {
    const axis = Number(this.axis.value);
    const [low, high] = this.#scene.bounds;
    this.#setPlace(low[axis] + ((high[axis] - low[axis]) * Number(this.slider.value)) / STEPS);
    if (isApplied) this.apply();
  }

  #setPlace(place) {
    this.place.value = String(Number((place + this.#scene.offset[Number(this.axis.value)]).toFixed(3)));
  }

  #showLimits() {
    const box = this.#box ?? this.#scene.bounds;
    this.limits.forEach((ends, axis) =>
      ends.forEach((input, i) => {
        input.value = String(Number((box[i][axis] + this.#scene.offset[axis]).toFixed(3)));
      }),
    );
  }

  #takeLimits() {
    this.setBox([0, 1].map((i) => this.limits.map((ends, axis) => Number(ends[i].value) - this.#scene.offset[axis])));
  }
}
