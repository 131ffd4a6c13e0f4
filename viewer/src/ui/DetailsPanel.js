import { LEVELS } from '../view/palette.js';
import { h, icon } from './dom.js';
import { countText, numberText } from './numbers.js';

// The digits that a record keeps.
const DECIMALS = 6;

/** What the selected element is: its marks, its numbers and its record. */
export class DetailsPanel {
  #model;
  #state;

  constructor({ model, state }) {
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
      selected.size > 1 ? h('p', { class: 'quiet' }, `${countText(selected.size)} selected, the last:`) : '',
      h('h2', {}, this.#model.nameOf(last)),
      this.#facts(last),
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
