// SPDX-License-Identifier: MIT
import { columnOf } from './classes.js';

/**
 * The elements as a tree: two levels of groups, the second one by kind or by header, the
 * components of several elements below, and which rows of it are to be seen. A row is a
 * number: an element, or -1 - g for the group g.
 */
export class Tree {
  #model;
  #by = 'header';
  #found = null;
  #open = new Set();
  #isPart; // 1 for elements of components with a row of their own
  groups = [];
  rows = [];

  constructor(model) {
    this.#model = model;
    this.#build();
  }

  get by() {
    return this.#by;
  }

  set by(by) {
    this.#by = by;
    this.#build();
  }

  /** Shows the elements with a 1 in `found` alone; all for null. */
  filter(found) {
    this.#found = found;
    this.#build();
  }

  static isGroup(row) {
    return row < 0;
  }

  groupOf(row) {
    return this.groups[-1 - row];
  }

  /** The elements of a row, in the order of the tree. */
  elementsOf(row) {
    if (!Tree.isGroup(row)) return [row];
    const { start, end } = this.groupOf(row);
    return this.order.subarray(start, end);
  }

  levelOf(row) {
    if (Tree.isGroup(row)) return this.groupOf(row).level;
    return this.#isPart[row] ? 4 : 3;
  }

  isOpen(row) {
    return Tree.isGroup(row) && this.#open.has(this.groupOf(row).key);
  }

  setOpen(row, open) {
    if (!Tree.isGroup(row)) return;
    const { key } = this.groupOf(row);
    if (open) this.#open.add(key);
    else this.#open.delete(key);
    this.#list();
  }

  /**
   * Opens the groups above an element; the index of its row, or of that of its component
   * while that is closed; -1 if it is filtered out.
   */
  reveal(element) {
    const at = this.order.indexOf(element);
    if (at < 0) return -1;
    let row = element;
    this.groups.forEach((group, g) => {
      if (at < group.start || at >= group.end) return;
      if (group.level < 3) this.#open.add(group.key);
      else if (!this.#open.has(group.key)) row = -1 - g;
    });
    this.#list();
    return this.rows.indexOf(row);
  }

  /** The index of the row above that holds this one; -1 at the top. */
  parentOf(index) {
    const level = this.levelOf(this.rows[index]);
    for (let i = index - 1; i >= 0; --i) {
      if (this.levelOf(this.rows[i]) < level) return i;
    }
    return -1;
  }

  #build() {
    const model = this.#model;
    // A component is one thing: all of it stands where its principal element does.
    const columnOfComponents = (id) => {
      const { of, nameOf } = columnOf(model, id);
      if (id !== 'kind') return { of, nameOf };
      return { of: Uint32Array.from({ length: model.count }, (_, i) => of[model.principalOf(i)]), nameOf };
    };
    const outer = columnOfComponents(this.#by);
    const inner = columnOfComponents(this.#by === 'header' ? 'kind' : 'header');
    const { component } = model.scene.elements;

    const all = Uint32Array.from({ length: model.count }, (_, i) => i);
    this.order = this.#found === null ? all : all.filter((i) => this.#found[i]);
    this.order.sort(
      (a, b) =>
        outer.of[a] - outer.of[b] || inner.of[a] - inner.of[b] ||
        (component[a] === component[b] ? a - b : model.together(a)[0] - model.together(b)[0]),
    );

    this.groups = [];
    this.#isPart = new Uint8Array(model.count);
    let [top, sub, part] = [null, null, null];
    const begin = (level, value, name, above, at) => {
      const group = { level, value, name, start: at, key: `${above} ${value}` };
      this.groups.push(group);
      return group;
    };
    this.order.forEach((element, at) => {
      const [o, i] = [outer.of[element], inner.of[element]];
      if (top === null || o !== top.value) {
        top = begin(1, o, outer.nameOf(o), this.#by, at);
        sub = null;
      }
      if (sub === null || i !== sub.value) {
        sub = begin(2, i, inner.nameOf(i), top.key, at);
        part = null;
      }
      if (part === null || component[element] !== part.value) {
        const next = this.order[at + 1];
        const isOfMany = next !== undefined && component[next] === component[element];
        part = isOfMany ? begin(3, component[element], model.componentName(element), sub.key, at) : null;
      }
      if (part) {
        this.#isPart[element] = 1;
        part.end = at + 1;
      }
      top.end = at + 1;
      sub.end = at + 1;
    });
    // One header, or a few elements found: nobody wants to open them by hand.
    const tops = this.groups.filter((group) => group.level === 1);
    if (tops.length === 1) this.#open.add(tops[0].key);
    if (this.#found !== null && this.order.length <= 200) {
      for (const group of this.groups) this.#open.add(group.key);
    }
    this.#list();
  }

  #list() {
    const { groups, order, rows } = Object.assign(this, { rows: [] });
    const isOpen = (group) => this.#open.has(group.key);
    let g = 0;
    while (g < groups.length) {
      const group = groups[g];
      rows.push(-1 - g++);
      if (!isOpen(group)) {
        while (g < groups.length && groups[g].level > group.level) ++g;
        continue;
      }
      if (group.level === 1) continue;
      // Components of several elements, and elements that are a component by themselves.
      let at = group.start;
      for (; g < groups.length && groups[g].level === 3; ++g) {
        const part = groups[g];
        while (at < part.start) rows.push(order[at++]);
        rows.push(-1 - g);
        while (at < part.end && isOpen(part)) rows.push(order[at++]);
        at = part.end;
      }
      while (at < group.end) rows.push(order[at++]);
    }
  }
}
