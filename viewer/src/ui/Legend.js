import { KIND_COLOURS } from '../view/palette.js';
import { h } from './dom.js';
import { countText } from './numbers.js';

/** The kinds with their colours; a click hides or shows all of a kind. */
export class Legend {
  #state;
  #entries;

  constructor({ model, state }) {
    this.#state = state;
    const { kinds, elements } = model.scene;
    const byKind = kinds.map(() => []);
    for (let i = 0; i < model.count; ++i) byKind[elements.kind[i]].push(i);
    this.#entries = kinds
      .map(({ name, plural }, kind) => ({ name, plural, elements: byKind[kind] }))
      .filter((entry) => entry.elements.length > 0)
      .map((entry) => ({ ...entry, ...this.#make(entry) }));
    this.panel = h(
      'fieldset',
      { class: 'legend' },
      h('legend', {}, 'Kinds'),
      this.#entries.map((entry) => entry.label),
    );
    this.update();
  }

  update() {
    for (const { input, elements } of this.#entries) {
      const shown = this.#state.shownOf(elements);
      input.checked = shown !== 'none';
      input.indeterminate = shown === 'some';
    }
  }

  #make({ name, plural, elements }) {
    const swatch = h('span', { class: 'swatch' });
    swatch.style.background = KIND_COLOURS[name] ?? 'gray';
    const input = h('input', {
      type: 'checkbox',
      onchange: () => this.#state.setHidden(elements, !input.checked),
    });
    const label = h('label', {}, input, swatch, plural, h('span', { class: 'quiet' }, countText(elements.length)));
    return { input, label };
  }
}
