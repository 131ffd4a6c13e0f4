// SPDX-License-Identifier: MIT
import { groupingsOf } from '../scene/classes.js';
import { Search } from '../scene/search.js';
import { Tree } from '../scene/Tree.js';
import { LEVELS } from '../view/palette.js';
import { h, setAttribute } from './dom.js';
import { countText, elementsText } from './numbers.js';
import { VirtualList } from './VirtualList.js';

const NARROW = '(max-width: 760px)';
const CHECKED = { all: 'true', some: 'mixed', none: 'false' };

/** The tree of the elements, with its search. */
export class TreePanel {
  #model;
  #state;
  #search;
  #active = 0; // index of the row with the keyboard
  #last = -1; // the element that was revealed last

  constructor({ model, state, onZoom }) {
    this.#model = model;
    this.#state = state;
    this.#search = new Search(model);
    this.tree = new Tree(model);
    this.onZoom = onZoom;

    this.input = h('input', {
      type: 'search',
      placeholder: 'Search headers, kinds, records',
      'aria-label': 'Search elements',
      spellcheck: false,
      autocomplete: 'off',
      oninput: () => this.#find(),
      onkeydown: (event) => {
        if (event.key === 'ArrowDown') this.rows.list.focus();
      },
    });
    this.found = h('span', { class: 'quiet', role: 'status' });
    this.by = h(
      'select',
      {
        'aria-label': 'Group by',
        onchange: () => {
          this.tree.by = this.by.value;
          this.#rebuilt();
        },
      },
      ['header', 'kind', ...groupingsOf(model).map(({ id }) => id).filter((id) => id !== 'header' && id !== 'kind')].map(
        (id) => h('option', { value: id }, `By ${groupingsOf(model).find((each) => each.id === id).name.toLowerCase()}`),
      ),
    );
    this.take = h(
      'button',
      { type: 'button', class: 'small', hidden: true, onclick: () => state.select(this.tree.order) },
      'Select all',
    );
    this.rows = new VirtualList({
      // For a finger where the screen is small.
      rowHeight: matchMedia(NARROW).matches ? 44 : 26,
      rowOf: (index) => this.#rowOf(index),
      class: 'tree',
      role: 'tree',
      'aria-label': 'Elements',
      'aria-multiselectable': 'true',
      onkeydown: (event) => this.#onKey(event),
      onclick: (event) => this.#onClick(event),
      ondblclick: (event) => this.#onDoubleClick(event),
    });
    this.panel = h(
      'div',
      { class: 'panel-body' },
      h('div', { class: 'search' }, this.input),
      h('div', { class: 'line' }, this.by, this.take, this.found),
      this.rows.list,
    );
    this.#rebuilt();
  }

  /** To be called when the state has changed. */
  update() {
    const { last } = this.#state;
    if (last !== this.#last && last >= 0) {
      const index = this.tree.reveal(last);
      if (index >= 0) {
        this.#setRows();
        this.#setActive(index);
      }
    }
    this.#last = last;
    this.rows.draw();
  }

  #find() {
    const found = this.#search.find(this.input.value);
    this.tree.filter(found);
    this.#rebuilt();
  }

  #rebuilt() {
    this.#active = 0;
    this.rows.list.scrollTop = 0;
    this.#setRows();
    const count = this.tree.order.length;
    this.take.hidden = count === 0 || count === this.#model.count;
    this.found.textContent =
      count === this.#model.count
        ? elementsText(count)
        : `${countText(count)} of ${countText(this.#model.count)}`;
  }

  #setRows() {
    this.rows.count = this.tree.rows.length;
    setAttribute(this.rows.list, 'aria-activedescendant', this.tree.rows.length ? `row-${this.#active}` : null);
  }

  #setActive(index) {
    this.#active = Math.min(this.tree.rows.length - 1, Math.max(0, index));
    setAttribute(this.rows.list, 'aria-activedescendant', `row-${this.#active}`);
    this.rows.scrollTo(this.#active);
  }

  #rowOf(index) {
    const row = this.tree.rows[index];
    const elements = this.tree.elementsOf(row);
    const isGroup = Tree.isGroup(row);
    const shown = this.#state.shownOf(elements);
    const level = isGroup ? null : this.#state.levelOf(row);
    const isPart = isGroup && this.tree.levelOf(row) === 3;
    const isSelected = (!isGroup || isPart) && elements.every((element) => this.#state.selected.has(element));
    const name = isGroup ? this.tree.groupOf(row).name : this.#model.nameOf(row);
    const element = h(
      'div',
      {
        class: `row level-${this.tree.levelOf(row)}`,
        role: 'treeitem',
        id: `row-${index}`,
        'aria-level': this.tree.levelOf(row),
        'aria-selected': String(isSelected),
        'aria-checked': CHECKED[shown],
        'aria-expanded': isGroup ? String(this.tree.isOpen(row)) : null,
      },
      h('span', { class: 'twist' }),
      h('span', { class: 'check', title: 'Shown' }),
      h('span', { class: 'name' }, name),
      level && h('span', { class: 'dot', title: LEVELS[level].name }),
      h(
        'span',
        { class: 'quiet' },
        isGroup && !isPart ? countText(elements.length) : `line ${this.#model.scene.elements.line[elements[0]]}`,
      ),
    );
    if (level) element.querySelector('.dot').style.background = LEVELS[level].colour;
    element.classList.toggle('active', index === this.#active);
    element.dataset.index = index;
    return element;
  }

  #toggleShown(row) {
    const elements = this.tree.elementsOf(row);
    this.#state.setHidden(elements, this.#state.shownOf(elements) === 'all');
  }

  #toggleOpen(row) {
    this.tree.setOpen(row, !this.tree.isOpen(row));
    this.#setRows();
  }

  #onClick(event) {
    const element = event.target.closest('.row');
    if (!element) return;
    const index = Number(element.dataset.index);
    const row = this.tree.rows[index];
    this.#setActive(index);
    if (event.target.classList.contains('check')) this.#toggleShown(row);
    else if (event.target.classList.contains('twist')) this.#toggleOpen(row);
    else if (Tree.isGroup(row) && this.tree.levelOf(row) < 3 && !(event.ctrlKey || event.metaKey)) this.#toggleOpen(row);
    else this.#choose(row, event.ctrlKey || event.metaKey);
  }

  #onDoubleClick(event) {
    const element = event.target.closest('.row');
    if (!element || event.target.className === 'check') return;
    const row = this.tree.rows[Number(element.dataset.index)];
    this.onZoom(this.tree.elementsOf(row));
  }

  #choose(row, more) {
    const elements = this.tree.elementsOf(row);
    const isPart = Tree.isGroup(row) && this.tree.levelOf(row) === 3;
    // What a component is named after is told in the details.
    const last = isPart ? this.#model.principalOf(elements[0]) : elements.at(-1);
    this.#last = last;
    this.#state.select(elements, more, last);
  }

  #onKey(event) {
    const row = this.tree.rows[this.#active];
    if (row === undefined || event.ctrlKey || event.metaKey || event.altKey) return;
    const move = (index) => this.#setActive(index);
    const keys = {
      ArrowDown: () => move(this.#active + 1),
      ArrowUp: () => move(this.#active - 1),
      PageDown: () => move(this.#active + this.rows.page),
      PageUp: () => move(this.#active - this.rows.page),
      Home: () => move(0),
      End: () => move(this.tree.rows.length - 1),
      ArrowRight: () => {
        if (!Tree.isGroup(row)) return;
        if (this.tree.isOpen(row)) move(this.#active + 1);
        else this.#toggleOpen(row);
      },
      ArrowLeft: () => {
        if (this.tree.isOpen(row)) this.#toggleOpen(row);
        else if (this.tree.parentOf(this.#active) >= 0) move(this.tree.parentOf(this.#active));
      },
      ' ': () => this.#toggleShown(row),
      Enter: () => this.#choose(row, event.shiftKey),
    };
    if (!(event.key in keys)) return;
    keys[event.key]();
    event.preventDefault();
    event.stopPropagation();
  }
}
