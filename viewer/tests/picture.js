// SPDX-License-Identifier: MIT
// Takes the picture of docs/viewer.md:
//
//   node picture.js [--chromium PROGRAM] PAGE OUT.png
import { writeFileSync } from 'node:fs';
import { resolve } from 'node:path';
import { parseArgs } from 'node:util';

import { Browser } from './browser.js';

const { values: options, positionals: [file, out] } = parseArgs({
  allowPositionals: true,
  options: { chromium: { type: 'string', default: '/usr/bin/chromium' } },
});

const browser = await Browser.start(options.chromium);
const page = await browser.open('', { file: resolve(file), size: { width: 1120, height: 640 } });
// The valve before the pump, with what is around it.
await page.evaluate(() => {
  const { state, view, model } = globalThis.vesk;
  const cones = [...Array(model.count).keys()].filter((i) => model.kindOf(i) === 'cone');
  const size = (i) => view.boxes[i * 6 + 4] - view.boxes[i * 6 + 1];
  state.select([cones.sort((a, b) => size(b) - size(a))[0]]);
  globalThis.vesk.fit();
  view.camera.orbit(0.25, 0);
  view.camera.zoom(0.1);
  view.invalidate();
});
await page.settle();
writeFileSync(out, await page.page.screenshot());
await browser.stop();
