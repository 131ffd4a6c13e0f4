// SPDX-License-Identifier: MIT
import { classesOf, waysOf } from '../scene/classes.js';
import { paletteOf } from '../view/palette.js';
import { h } from './dom.js';
import { countText } from './numbers.js';

// More classes than this are one entry together.
const MOST = 60;

// Where a name is longer than this, in letters, each class has a row of its own.
const LONG = 11;

/** The classes of the elements with their colours; a click hides or shows all of a class. */
export class Legend {
  #model;
  #state;
  #entries = [];
  #palette;

  constructor({ model, state }) {
    this.#model = model;
    this.#state = state;
    this.#palette = paletteOf(model.scene.kinds);
    this.by = h(
      'select',
      { 'aria-label': 'Colour by', onchange: () => this.choose(this.by.value) },
      waysOf(model).map(({ id, name }) => h('option', { value: id }, name)),
    );
    this.list = h('div', { class: 'classes' });
    this.panel = h(
      'fieldset',
      { class: 'legend' },
      h('legend', {}, 'Colours'),
      this.by,
      this.list,
    );
    this.#show('kind');
  }

  /** Colours by one of the ways. */
  choose(id) {
    const colours = this.#show(id);
    this.#state.setColours(id === 'kind' ? null : colours);
  }

  // Shows the classes; returns the colour of each element.
  #show(id) {
    this.by.value = id;
    const { classes, colours } = classesOf(this.#model, this.#state, id);
    const shown = classes.length > MOST ? classes.slice(0, MOST - 1) : classes;
    if (classes.length > MOST) {
      const others = classes.slice(MOST - 1);
      shown.push({ name: `${countText(others.length)} others`, elements: others.flatMap(({ elements }) => elements) });
    }
    this.#entries = shown.map((entry) => ({ ...entry, ...this.#make(entry) }));
    this.list.classList.toggle('wide', shown.some(({ name }) => name.length > LONG));
    this.list.replaceChildren(...this.#entries.map(({ label }) => label));
    this.update();
    return colours;
  }

  update() {
    for (const { input, elements } of this.#entries) {
      const shown = this.#state.shownOf(elements);
      input.checked = shown !== 'none';
      input.indeterminate = shown === 'some';
    }
  }

  #make({ name, colour, elements }) {
    const swatch = h('span', { class: 'swatch' });
    swatch.style.background = this.#palette[colour] ?? 'linear-gradient(90deg, #4e79a7, #f28e2b, #59a14f)';
    const input = h('input', {
      type: 'checkbox',
      onchange: () => this.#state.setHidden(elements, !input.checked),
    });
    const label = h(
      'label',
      { title: name },
      input,
      swatch,
      h('span', { class: 'name' }, name),
      h('span', { class: 'quiet' }, countText(elements.length)),
    );
    return { input, label };
  }
}
