import { h } from './dom.js';
import { lengthText } from './numbers.js';

const STEPS = 1000;

/** Sets the plane that cuts the model: an axis, a place along it, a side. */
export class SectionPanel {
  #view;
  #scene;

  constructor({ view, scene, onClose }) {
    this.#view = view;
    this.#scene = scene;
    this.axis = h(
      'select',
      { 'aria-label': 'Axis', onchange: () => this.apply() },
      ['X', 'Y', 'Z'].map((name, i) => h('option', { value: String(i) }, name)),
    );
    this.slider = h('input', {
      type: 'range',
      min: 0,
      max: STEPS,
      value: STEPS / 2,
      'aria-label': 'Place of the section',
      oninput: () => this.apply(),
    });
    this.flip = h('input', { type: 'checkbox', onchange: () => this.apply() });
    this.place = h('output', {});
    this.panel = h(
      'section',
      { class: 'popover', 'aria-label': 'Section', hidden: true },
      h('strong', {}, 'Section'),
      this.axis,
      this.slider,
      this.place,
      h('label', {}, this.flip, 'Other side'),
      h('button', { type: 'button', class: 'small', onclick: onClose }, 'Off'),
    );
  }

  get isOn() {
    return !this.panel.hidden;
  }

  set isOn(isOn) {
    this.panel.hidden = !isOn;
    if (isOn) this.apply();
    else this.#view.setSection(null);
  }

  apply() {
    const axis = Number(this.axis.value);
    const [low, high] = this.#scene.bounds;
    const place = low[axis] + ((high[axis] - low[axis]) * Number(this.slider.value)) / STEPS;
    const side = this.flip.checked ? -1 : 1;
    const normal = [0, 0, 0];
    normal[axis] = side;
    const text = lengthText(place + this.#scene.offset[axis], this.#scene.unit, 1);
    this.place.textContent = text;
    this.slider.setAttribute('aria-valuetext', text);
    this.#view.setSection({ normal, distance: place * side });
  }
}
