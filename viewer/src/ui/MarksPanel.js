// SPDX-License-Identifier: MIT
import { LEVELS } from '../view/palette.js';
import { h } from './dom.js';
import { countText } from './numbers.js';
import { VirtualList } from './VirtualList.js';

/** The list of what a check or a comparison has found; levels can be left out. */
export class MarksPanel {
  #model;
  #state;
  #shown;
  #marks = [];
  #active = -1;

  constructor({ model, state, onZoom }) {
    this.#model = model;
    this.#state = state;
    this.onZoom = onZoom;
    const { marks } = model.scene;
    const levels = Object.keys(LEVELS).filter((level) => marks.some((mark) => mark.level === level));
    this.#shown = new Set(levels);
    this.rows = new VirtualList({
      rowHeight: 46,
      rowOf: (index) => this.#rowOf(index),
      class: 'marks',
      role: 'listbox',
      'aria-label': 'Findings',
      onclick: (event) => {
        const row = event.target.closest('.mark-row');
        if (row) this.#choose(Number(row.dataset.index));
      },
      onkeydown: (event) => {
        const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
        if (!step) return;
        this.#choose(Math.min(this.#marks.length - 1, Math.max(0, this.#active + step)));
        event.preventDefault();
        event.stopPropagation();
      },
    });
    const checks = levels.map((level) => this.#check(level));
    this.panel = h('div', { class: 'panel-body' }, h('div', { class: 'levels' }, checks), this.rows.list);
    this.#filter();
  }

  #check(level) {
    const count = this.#model.scene.marks.filter((mark) => mark.level === level).length;
    const swatch = h('span', { class: 'swatch' });
    swatch.style.background = LEVELS[level].colour;
    const input = h('input', {
      type: 'checkbox',
      checked: true,
      onchange: () => {
        if (input.checked) this.#shown.add(level);
        else this.#shown.delete(level);
        this.#filter();
      },
    });
    return h('label', {}, input, swatch, `${LEVELS[level].name} `, h('span', { class: 'quiet' }, countText(count)));
  }

  #filter() {
    this.#marks = this.#model.scene.marks.filter((mark) => this.#shown.has(mark.level));
    this.#active = -1;
    this.rows.count = this.#marks.length;
  }

  #rowOf(index) {
    const { element, level, code, text } = this.#marks[index];
    const dot = h('span', { class: 'dot' });
    dot.style.background = LEVELS[level].colour;
    const where =
      element === null ? '' : `${this.#model.nameOf(element)}, ${this.#model.placeOf(element)}`;
    const row = h(
      'div',
      {
        class: 'mark-row',
        role: 'option',
        id: `mark-${index}`,
        'aria-selected': String(index === this.#active),
        title: text,
      },
      h('div', { class: 'what' }, dot, `${level}: ${text}`),
      h('div', { class: 'quiet' }, [where, code].filter(Boolean).join('  ')),
    );
    row.dataset.index = index;
    return row;
  }

  /** Goes so many findings on, from the last one to the first. */
  step(by) {
    const count = this.#marks.length;
    if (count > 0) this.#choose(this.#active < 0 ? (by > 0 ? 0 : count - 1) : (this.#active + by + count) % count);
  }

  #choose(index) {
    if (index < 0) return;
    this.#active = index;
    this.rows.list.setAttribute('aria-activedescendant', `mark-${index}`);
    this.rows.scrollTo(index);
    const { element } = this.#marks[index];
    if (element === null) return;
    this.#state.select([element]);
    this.onZoom([element]);
  }
}
