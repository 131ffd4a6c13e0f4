import { LEVELS } from '../view/palette.js';
import { FADED, GHOST, HIDDEN, SELECTED } from '../view/shaders.js';

/**
 * What people have chosen: which elements are hidden, which are selected, and
 * whether those without a mark are faded. `onChange` is told of every change.
 */
export class State {
  #model;
  #marked; // the number of the gravest level + 1, 0 without a mark
  hidden;
  selected = new Set();
  last = -1; // the element that was selected last, -1 for none
  fades;
  onChange = () => {};

  constructor(model) {
    this.#model = model;
    this.hidden = new Uint8Array(model.count);
    this.#marked = new Uint8Array(model.count);
    const levels = Object.keys(LEVELS);
    for (const { element, level } of model.scene.marks) {
      if (element === null) continue;
      const grave = levels.indexOf(level) + 1;
      const now = this.#marked[element];
      if (grave > 0) this.#marked[element] = now === 0 ? grave : Math.min(now, grave);
    }
    this.fades = model.scene.marks.length > 0;
  }

  /** The level of an element's gravest mark; null without a mark. */
  levelOf(element) {
    const grave = this.#marked[element];
    return grave === 0 ? null : Object.keys(LEVELS)[grave - 1];
  }

  /** [colour number, flags] for the shaders. */
  styleOf(element) {
    const grave = this.#marked[element];
    const { scene } = this.#model;
    const colour = grave > 0 ? scene.kinds.length + grave - 1 : scene.elements.kind[element];
    let flags = 0;
    if (this.hidden[element]) flags |= HIDDEN;
    if (this.selected.has(element)) flags |= SELECTED;
    if (this.fades && grave === 0) flags |= FADED;
    if (this.levelOf(element) === 'before') flags |= GHOST;
    return [colour, flags];
  }

  get hiddenCount() {
    return this.hidden.reduce((sum, hidden) => sum + hidden, 0);
  }

  /** Selects these elements, or with `more` turns their selection over. */
  select(elements, more = false) {
    if (!more) this.selected.clear();
    for (const element of elements) {
      if (more && this.selected.has(element)) {
        this.selected.delete(element);
      } else {
        this.selected.add(element);
        this.last = element;
      }
    }
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

  setFades(fades) {
    this.fades = fades;
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
