// SPDX-License-Identifier: MIT
import './style.css';

import { bytesOf, decodeScene, inflated } from './scene/decode.js';
import { App } from './ui/App.js';
import { h } from './ui/dom.js';

// Takes the bytes of a block of the page, which is not needed a second time.
function take(id) {
  const block = document.getElementById(id);
  const text = block.textContent;
  block.textContent = '';
  return inflated(bytesOf(text));
}

async function start() {
  const root = document.getElementById('app');
  const waiting = root.firstElementChild;
  try {
    const [head, data] = await Promise.all([take('vesk-scene'), take('vesk-data')]);
    const scene = decodeScene(JSON.parse(new TextDecoder().decode(head)), data);
    document.title = scene.title;
    // For scripts and tests.
    globalThis.vesk = new App(root, scene);
  } catch (error) {
    waiting.querySelector('p').replaceWith(h('p', { role: 'alert' }, `The model can't be shown: ${error.message}`));
    root.replaceChildren(waiting);
  }
}

start();
