// SPDX-License-Identifier: MIT
// Measures the page with many elements:
//
//   node frames.js [--chromium PROGRAM] [--page FILE | --count N]
//
// Prints the size of the page, the time until it shows a first picture and all of the
// model, the draw calls, and the time of a frame while the model moves and when it
// rests. Here it is the processor that draws; a graphics card is many times as fast.
import { readFileSync, statSync } from 'node:fs';
import { parseArgs } from 'node:util';

import { Browser } from './browser.js';
import { encode, fill, manyPipes, unitCylinder } from './scenes.js';

const { values: options } = parseArgs({
  options: {
    chromium: { type: 'string', default: '/usr/bin/chromium' },
    page: { type: 'string' },
    count: { type: 'string', default: '200000' },
  },
});

const template = readFileSync(new URL('../dist/template.html', import.meta.url), 'utf8');
const many = () =>
  encode({ ...manyPipes(Number(options.count)), meshes: [unitCylinder(32)] });

// Reading a pixel behind the orders of the first frame waits until it is drawn.
const noteFirstPicture = () => {
  const { prototype } = WebGL2RenderingContext;
  const draw = prototype.drawElementsInstanced;
  prototype.drawElementsInstanced = function (...words) {
    if (globalThis.firstPicture === undefined) {
      globalThis.firstPicture = null;
      Promise.resolve().then(() => {
        this.readPixels(0, 0, 1, 1, this.RGBA, this.UNSIGNED_BYTE, new Uint8Array(4));
        globalThis.firstPicture = performance.now();
      });
    }
    return draw.apply(this, words);
  };
};

const html = options.page ? '' : fill(template, many());
const browser = await Browser.start(options.chromium);
const begin = performance.now();
const page = await browser.open(html, {
  file: options.page,
  size: { width: 1280, height: 720 },
  timeout: 300000,
  before: noteFirstPicture,
});
const opened = performance.now() - begin;

const figures = await page.evaluate(() => {
  const { view } = globalThis.vesk;
  // Reading a pixel waits until all is drawn.
  const gl = view.canvas.getContext('webgl2');
  const finish = () => gl.readPixels(0, 0, 1, 1, gl.RGBA, gl.UNSIGNED_BYTE, new Uint8Array(4));
  const timed = (draw, times) => {
    const from = performance.now();
    for (let i = 0; i < times; ++i) {
      view.camera.orbit(0.01, 0);
      draw();
      finish();
    }
    return (performance.now() - from) / times;
  };
  const rest = timed(() => view.drawNow(), 3);
  const { calls, triangles } = view.statistics;
  const moving = timed(() => view.drawMoving(), 5);
  return { rest, moving, calls, triangles, movingTriangles: view.statistics.triangles };
});
const first = await page.evaluate(() => globalThis.firstPicture);
const memory = await page.evaluate(() => performance.memory?.usedJSHeapSize ?? 0);
await browser.stop();

const bytes = options.page ? statSync(options.page).size : html.length;
const rows = [
  ['page', `${(bytes / 1e6).toFixed(1)} MB`],
  ['first picture', `${(first / 1000).toFixed(1)} s`],
  ['shown after', `${(opened / 1000).toFixed(1)} s`],
  ['memory of scripts', `${(memory / 1e6).toFixed(0)} MB`],
  ['draw calls', figures.calls],
  ['frame at rest', `${figures.rest.toFixed(0)} ms, ${figures.triangles} triangles`],
  ['frame in motion', `${figures.moving.toFixed(0)} ms, ${figures.movingTriangles} triangles`],
];
for (const [name, value] of rows) console.log(`${name.padEnd(18)} ${value}`);
