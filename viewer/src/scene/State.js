// SPDX-License-Identifier: MIT
import { LEVELS } from '../view/palette.js';
import { FADED, GHOST, HIDDEN, SELECTED } from '../view/shaders.js';

// How the tool has chosen to show an element, beside 0, as it is.
const CONTEXT = 1;
const LEFT_OUT = 2;

/**
 * What people have chosen: which elements are hidden, which are selected, and
 * whether the others are only a veil. `onChange` is told of every change.
 */
export class State {
  #model;
  #marked; // the number of the gravest level + 1, 0 without a mark
  hidden;
  selected = new Set();
  last = -1; // the element that was selected last, -1 for none
  xray; // whether only what is marked or selected is clear
  colours = null; // a colour number for each element; null: by kind, what is marked by its mark
  onChange = () => {};

  constructor(model) {
    this.#model = model;
    this.hidden = Uint8Array.from(model.scene.elements.shown, (shown) => (shown === LEFT_OUT ? 1 : 0));
    this.#marked = new Uint8Array(model.count);
    const levels = Object.keys(LEVELS);
    for (const { element, level } of model.scene.marks) {
      if (element === null) continue;
      const grave = levels.indexOf(level) + 1;
      const now = this.#marked[element];
      if (grave > 0) this.#marked[element] = now === 0 ? grave : Math.min(now, grave);
    }
    this.xray = model.scene.marks.some(({ element }) => element !== null);
  }

  /** The elements with a mark. */
  get marked() {
    const elements = [];
    this.#marked.forEach((grave, element) => grave > 0 && elements.push(element));
    return elements;
  }

  /** The level of an element's gravest mark; null without a mark. */
  levelOf(element) {
    const grave = this.#marked[element];
    return grave === 0 ? null : Object.keys(LEVELS)[grave - 1];
  }

  /** Fills in [colour number, flags] of every element for the shaders. */
  fillStyles(data) {
    const { kind, shown } = this.#model.scene.elements;
    const levels = this.#model.scene.kinds.length - 1; // marks count from 1
    const before = Object.keys(LEVELS).indexOf('before') + 1;
    // What is marked or selected is clear, if there is anything.
    const veils = this.xray && (this.selected.size > 0 || this.#marked.some((grave) => grave > 0));
    for (let i = 0; i < this.#model.count; ++i) {
      const grave = this.#marked[i];
      data[i * 2] = this.colours ? this.colours[i] : grave > 0 ? levels + grave : kind[i];
      let flags = 0;
      if (this.hidden[i]) flags |= HIDDEN;
      if (grave === before) flags |= GHOST;
      if (shown[i] === CONTEXT || (veils && grave === 0)) flags |= FADED;
      data[i * 2 + 1] = flags;
    }
    for (const element of this.selected) {
      data[element * 2 + 1] = (data[element * 2 + 1] & ~FADED) | SELECTED;
    }
  }

  get hiddenCount() {
    return this.hidden.reduce((sum, hidden) => sum + hidden, 0);
  }

  /**
   * Selects these elements, or with `more` turns their selection over. `last` is the one
   * that is told about, else the last of them.
   */
  select(elements, more = false, last = null) {
    if (!more) this.selected.clear();
    for (const element of elements) {
      if (more && this.selected.has(element)) {
        this.selected.delete(element);
      } else {
        this.selected.add(element);
        this.last = element;
      }
    }
    if (last !== null && this.selected.has(last)) this.last = last;
    if (!this.selected.has(this.last)) this.last = [...this.selected].at(-1) ?? -1;
    this.onChange();
  }

  setHidden(elements, hidden) {
    for (const element of elements) this.hidden[element] = hidden ? 1 : 0;
    this.onChange();
  }

  isolate(elements) {
    this.hidden.fill(1);
    this.setHidden(elements, false);
  }

  showAll() {
    this.hidden.fill(0);
    this.onChange();
  }

  setColours(colours) {
    this.colours = colours;
    this.onChange();
  }

  setXray(xray) {
    this.xray = xray;
    this.onChange();
  }

  /** "all", "some" or "none" of the elements are shown. */
  shownOf(elements) {
    let hidden = 0;
    for (const element of elements) hidden += this.hidden[element];
    if (hidden === 0) return 'all';
    return hidden === elements.length ? 'none' : 'some';
  }
}
