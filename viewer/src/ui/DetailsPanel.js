// SPDX-License-Identifier: MIT
import { LEVELS } from '../view/palette.js';
import { h, icon } from './dom.js';
import { countText, numberText } from './numbers.js';

// The digits that a record keeps.
const DECIMALS = 6;

/** What the selected element is: its marks, its numbers and its record. */
export class DetailsPanel {
  #model;
  #state;

  constructor({ model, state, onCopy }) {
    this.onCopy = onCopy;
    this.#model = model;
    this.#state = state;
    this.panel = h('div', { class: 'panel-body details', 'aria-live': 'polite' });
    this.update();
  }

  update() {
    const { last, selected } = this.#state;
    if (last < 0) {
      this.panel.replaceChildren(
        h('p', { class: 'quiet hint' }, 'Click an element to see its record and its numbers.'),
      );
      return;
    }
    this.panel.replaceChildren(
      selected.size > 1 ? this.#selection() : '',
      h('h2', {}, this.#model.nameOf(last)),
      this.#facts(last),
      ...this.#component(last),
      ...this.#marks(last),
      ...this.#failures(last),
      h('h3', {}, 'Numbers'),
      this.#values(last),
      h('div', { class: 'line' }, h('h3', {}, 'Record'), this.#copyButton(last)),
      h('pre', { class: 'record', tabIndex: 0, 'aria-label': 'Record' }, this.#model.recordOf(last).join('\n')),
    );
  }

  #facts(element) {
    return h(
      'dl',
      { class: 'facts' },
      h('dt', {}, 'Header'),
      h('dd', {}, this.#model.headerOf(element) || 'none'),
      h('dt', {}, 'Place'),
      h('dd', {}, this.#model.placeOf(element)),
    );
  }

  #selection() {
    const copied = h('button', { type: 'button', class: 'small', onclick: () => this.onCopy(copied) }, 'Copy as CSV');
    return h('div', { class: 'line' }, h('span', { class: 'quiet' }, `${countText(this.#state.selected.size)} selected, the last:`), copied);
  }

  // What the element is a part of, and what is known of that.
  #component(element) {
    const together = this.#model.together(element);
    const known = this.#model.attributesOf(element);
    if (together.length === 1 && known.length === 0) return [];
    const kinds = new Map();
    for (const each of together) {
      const kind = this.#model.kindOf(each);
      kinds.set(kind, (kinds.get(kind) ?? 0) + 1);
    }
    const parts = [...kinds].map(([kind, count]) => (count > 1 ? `${count} \u00d7 ${kind}` : kind)).join(', ');
    const facts = [...known, ...(together.length > 1 ? [['drawn as', parts]] : [])];
    return [
      h('h3', {}, 'Component'),
      h('p', { class: 'component' }, this.#model.componentName(element)),
      h('dl', { class: 'facts' }, facts.flatMap(([name, text]) => [h('dt', {}, name), h('dd', {}, text)])),
    ];
  }

  #marks(element) {
    return this.#model.scene.marks
      .filter((mark) => mark.element === element)
      .map((mark) => {
        const dot = h('span', { class: 'dot' });
        dot.style.background = LEVELS[mark.level].colour;
        return h('p', { class: 'mark' }, dot, `${mark.level}: ${mark.text}`, mark.code && ` [${mark.code}]`);
      });
  }

  #failures(element) {
    return this.#model.scene.failures
      .filter((failure) => failure.element === element)
      .map(({ reason }) => h('p', { class: 'mark' }, `not drawn: ${reason}`));
  }

  #values(element) {
    const rows = this.#model.valuesOf(element).map(({ name, type, value }) => {
      const text = (x) => (type === 't' ? x : numberText(x, DECIMALS));
      // Blanks between the numbers, for those who copy them.
      const parts = [value].flat().flatMap((x) => [h('span', { class: 'number' }, text(x)), ' ']);
      if (type === 'o') {
        parts.push(h('span', { class: 'quiet' }, `length ${numberText(Math.hypot(...value))}`));
      }
      return h('tr', {}, h('th', { scope: 'row' }, name), h('td', {}, parts));
    });
    return h('table', { class: 'values' }, h('tbody', {}, rows));
  }

  #copyButton(element) {
    const button = h(
      'button',
      {
        type: 'button',
        class: 'small',
        title: 'Copy the record',
        'aria-label': 'Copy the record',
        onclick: async () => {
          await navigator.clipboard?.writeText(this.#model.recordOf(element).join('\n')).then(
            () => button.classList.add('done'),
            () => {},
          );
        },
      },
      icon('copy'),
    );
    return button;
  }
}
