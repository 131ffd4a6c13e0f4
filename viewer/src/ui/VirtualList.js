// SPDX-License-Identifier: MIT
import { h } from './dom.js';

const MORE = 6; // rows made above and below what is seen

/**
 * A list of which only the rows in sight exist. `rowOf(index)` makes the element
 * of a row; all rows are `rowHeight` pixels high. `list` is to be put in the page.
 */
export class VirtualList {
  #rowOf;
  #rowHeight;
  #count = 0;
  #inner;

  constructor({ rowOf, rowHeight, ...properties }) {
    this.#rowOf = rowOf;
    this.#rowHeight = rowHeight;
    this.#inner = h('div', { class: 'virtual', role: 'presentation' });
    this.list = h('div', { tabIndex: 0, ...properties }, this.#inner);
    this.list.classList.add('list');
    this.list.addEventListener('scroll', () => this.draw(), { passive: true });
    new ResizeObserver(() => this.draw()).observe(this.list);
  }

  set count(count) {
    this.#count = count;
    this.#inner.style.height = `${count * this.#rowHeight}px`;
    this.draw();
  }

  /** How many rows fit. */
  get page() {
    return Math.max(1, Math.floor(this.list.clientHeight / this.#rowHeight));
  }

  draw() {
    const from = Math.max(0, Math.floor(this.list.scrollTop / this.#rowHeight) - MORE);
    const to = Math.min(this.#count, from + this.page + 2 * MORE + 1);
    const rows = [];
    for (let index = from; index < to; ++index) {
      const row = this.#rowOf(index);
      row.style.top = `${index * this.#rowHeight}px`;
      rows.push(row);
    }
    this.#inner.replaceChildren(...rows);
  }

  scrollTo(index) {
    const top = index * this.#rowHeight;
    const { scrollTop, clientHeight } = this.list;
    if (top < scrollTop) this.list.scrollTop = top;
    else if (top + this.#rowHeight > scrollTop + clientHeight) {
      this.list.scrollTop = top + this.#rowHeight - clientHeight;
    }
    this.draw();
  }
}
