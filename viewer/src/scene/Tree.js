/**
 * The elements as a tree of two levels of groups, by header and kind or by kind
 * and header, and which rows of it are to be seen. A row is a number: an element,
 * or -1 - g for the group g.
 */
export class Tree {
  /** One of: a header, a kind, one under the other. */
  static BY = ['header', 'kind'];

  #model;
  #by = 'header';
  #found = null;
  #open = new Set();
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
    return Tree.isGroup(row) ? this.groupOf(row).level : 3;
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

  /** Opens the groups above an element; the index of its row, -1 if it is filtered out. */
  reveal(element) {
    const at = this.order.indexOf(element);
    if (at < 0) return -1;
    for (const group of this.groups) {
      if (group.start <= at && at < group.end) this.#open.add(group.key);
    }
    this.#list();
    return this.rows.indexOf(element);
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
    const { kind, header } = this.#model.scene.elements;
    const { kinds, headers } = this.#model.scene;
    const [outer, inner] = this.#by === 'header' ? [header, kind] : [kind, header];
    const names = { header: (i) => headers[i] || 'no header', kind: (i) => kinds[i].plural };
    const [outerName, innerName] =
      this.#by === 'header' ? [names.header, names.kind] : [names.kind, names.header];

    const all = Uint32Array.from({ length: this.#model.count }, (_, i) => i);
    this.order = this.#found === null ? all : all.filter((i) => this.#found[i]);
    this.order.sort((a, b) => outer[a] - outer[b] || inner[a] - inner[b] || a - b);

    this.groups = [];
    let top = null;
    let sub = null;
    this.order.forEach((element, at) => {
      if (top === null || outer[element] !== top.value) {
        top = { level: 1, value: outer[element], name: outerName(outer[element]), start: at };
        top.key = `${this.#by} ${top.value}`;
        this.groups.push(top);
        sub = null;
      }
      if (sub === null || inner[element] !== sub.value) {
        sub = { level: 2, value: inner[element], name: innerName(inner[element]), start: at };
        sub.key = `${top.key} ${sub.value}`;
        this.groups.push(sub);
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
    this.rows = [];
    for (let g = 0; g < this.groups.length; ++g) {
      const group = this.groups[g];
      this.rows.push(-1 - g);
      if (!this.#open.has(group.key)) {
        if (group.level === 1) {
          while (g + 1 < this.groups.length && this.groups[g + 1].level === 2) ++g;
        }
        continue;
      }
      if (group.level === 2) {
        for (let at = group.start; at < group.end; ++at) this.rows.push(this.order[at]);
      }
    }
  }
}
