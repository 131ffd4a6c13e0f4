import './style.css';

import { bytesOf, decodeScene } from './scene/decode.js';
import { App } from './ui/App.js';
import { h } from './ui/dom.js';

// Takes the text of a block of the page, which is not needed a second time.
function take(id) {
  const block = document.getElementById(id);
  const text = block.textContent;
  block.textContent = '';
  return text;
}

function start() {
  const root = document.getElementById('app');
  try {
    const scene = decodeScene(JSON.parse(take('vesk-scene')), bytesOf(take('vesk-data')));
    document.title = scene.title;
    // For scripts and tests.
    globalThis.vesk = new App(root, scene);
  } catch (error) {
    root.replaceChildren(h('p', { class: 'loading', role: 'alert' }, `The model can't be shown: ${error.message}`));
  }
}

start();
