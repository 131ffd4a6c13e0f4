// SPDX-License-Identifier: MIT
import { h } from './dom.js';

const POINTER = [
  ['Drag', 'turn'],
  ['Right drag, Shift drag', 'move'],
  ['Wheel', 'zoom at the pointer'],
  ['Click', 'select; with Ctrl or Shift, add'],
  ['Double click', 'zoom to the element'],
  ['One finger, two fingers', 'turn; move and zoom'],
];

const TREE = [
  ['Up, Down', 'move through the rows'],
  ['Right, Left', 'open and close'],
  ['Space', 'show or hide'],
  ['Enter', 'select; with Shift, add'],
];

const CANVAS = [
  ['Arrows', 'turn'],
  ['Shift and arrows', 'move'],
  ['+  \u2212', 'zoom in and out'],
];

/** What mouse, fingers and keys do. */
export class Help {
  constructor(commands) {
    const table = (title, rows) =>
      h(
        'section',
        {},
        h('h3', {}, title),
        h(
          'dl',
          {},
          rows.flatMap(([keys, what]) => [h('dt', {}, keys), h('dd', {}, what)]),
        ),
      );
    const keys = commands
      .filter((command) => command.key)
      .map((command) => [command.keyName ?? command.key, command.name]);
    this.dialog = h(
      'dialog',
      { class: 'help', 'aria-label': 'Help' },
      h('h2', {}, 'Mouse, touch and keys'),
      h(
        'div',
        { class: 'columns' },
        table('Keys', [...CANVAS, ...keys]),
        h('div', {}, table('Mouse and touch', POINTER), table('In the tree', TREE)),
      ),
      h('button', { type: 'button', autofocus: true, onclick: () => this.dialog.close() }, 'Close'),
    );
  }

  toggle() {
    if (this.dialog.open) this.dialog.close();
    else this.dialog.showModal();
  }
}
