// SPDX-License-Identifier: MIT
import { h, icon } from './dom.js';

/** Views with names, kept by the browser for this page; each is an address too. */
export class ViewsPanel {
  #key;
  #addressNow;
  #go;
  #views;

  constructor({ scene, addressNow, go, onClose }) {
    this.#key = `vesk views ${scene.title} ${scene.elements.count}`;
    this.#addressNow = addressNow;
    this.#go = go;
    this.#views = this.#read();
    this.name = h('input', {
      type: 'text',
      'aria-label': 'Name of the view',
      placeholder: 'Name',
      maxLength: 80,
      onkeydown: (event) => event.key === 'Enter' && this.save(),
    });
    this.list = h('ul', { class: 'views' });
    this.panel = h(
      'section',
      { class: 'popover', 'aria-label': 'Saved views', hidden: true },
      h('strong', {}, 'Saved views'),
      this.name,
      h('button', { type: 'button', class: 'small', onclick: () => this.save() }, 'Save'),
      h('button', { type: 'button', class: 'small', onclick: onClose }, 'Off'),
      this.list,
    );
    this.#show();
  }

  get isOn() {
    return !this.panel.hidden;
  }

  set isOn(isOn) {
    this.panel.hidden = !isOn;
  }

  save() {
    const name = this.name.value.trim() || `View ${this.#views.length + 1}`;
    this.#views = [...this.#views.filter((view) => view.name !== name), { name, address: this.#addressNow() }];
    this.name.value = '';
    this.#write();
    this.#show();
  }

  #show() {
    this.list.replaceChildren(...this.#views.map((view) => this.#entry(view)));
  }

  #entry(view) {
    const copied = h(
      'button',
      {
        type: 'button',
        class: 'small plain',
        'aria-label': `Copy the link to ${view.name}`,
        title: 'Copy the link',
        onclick: () =>
          navigator.clipboard?.writeText(`${location.href.split('#')[0]}#${view.address}`).then(
            () => copied.classList.add('done'),
            () => {},
          ),
      },
      icon('copy'),
    );
    return h(
      'li',
      {},
      h('button', { type: 'button', class: 'small', onclick: () => this.#go(view.address) }, view.name),
      copied,
      h(
        'button',
        {
          type: 'button',
          class: 'small plain',
          'aria-label': `Remove ${view.name}`,
          onclick: () => {
            this.#views = this.#views.filter((each) => each !== view);
            this.#write();
            this.#show();
          },
        },
        icon('close'),
      ),
    );
  }

  // Browsers may refuse to keep anything for a file.
  #read() {
    try {
      const views = JSON.parse(localStorage.getItem(this.#key) ?? '[]');
      return views.filter(({ name, address }) => typeof name === 'string' && typeof address === 'string');
    } catch {
      return [];
    }
  }

  #write() {
    try {
      localStorage.setItem(this.#key, JSON.stringify(this.#views));
    } catch {
      // They stay until the page is closed.
    }
  }
}
