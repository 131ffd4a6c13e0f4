// SPDX-License-Identifier: MIT
// Looks at the page of a tileset in headless Chromium, from a server of this program.
//
//   node tiles.js --tool VESK [--chromium PROGRAM] [--shots FOLDER]
//
// A page may complain about nothing and ask for nothing but what is in its folder.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { createReadStream, mkdtempSync, rmSync, statSync, writeFileSync } from 'node:fs';
import { createServer } from 'node:http';
import { tmpdir } from 'node:os';
import { join, resolve } from 'node:path';
import { parseArgs } from 'node:util';

import { Browser } from './browser.js';

const { values: options } = parseArgs({
  options: {
    chromium: { type: 'string', default: '/usr/bin/chromium' },
    tool: { type: 'string' },
    shots: { type: 'string' },
  },
});
const tool = resolve(options.tool);
const TYPES = { html: 'text/html', json: 'application/json', glb: 'model/gltf-binary' };

// Only files, and only those below the folder.
function serve(folder) {
  const server = createServer((request, response) => {
    const path = join(folder, decodeURIComponent(request.url));
    const file = path.endsWith('/') ? `${path}index.html` : path;
    if (!file.startsWith(folder) || !statSync(file, { throwIfNoEntry: false })?.isFile()) {
      response.writeHead(404).end();
      return;
    }
    response.writeHead(200, { 'content-type': TYPES[file.split('.').pop()] ?? 'text/plain' });
    createReadStream(file).pipe(response);
  });
  return new Promise((done) => {
    server.listen(0, '127.0.0.1', () => done({ server, address: `http://127.0.0.1:${server.address().port}/` }));
  });
}

const header = (i, name = 'P-1') => `${name.padEnd(8)}01${String(i % 1000).padStart(3, '0')}    00`;

// A vessel in the middle of small pipes all around it, `x` millimetres to the right.
function plant(x) {
  const lines = [`${header(0, 'V-<b>1')}c ${x} 0 -4000,0 0 8000,6000`];
  for (let i = 1; i < 1200; ++i) {
    const angle = i * 2.4;
    const at = [x + 9000 * Math.cos(angle), 9000 * Math.sin(angle), (i % 100) * 80 - 4000];
    lines.push(`${header(i)}c ${at.map((n) => n.toFixed(1)).join(' ')},0 0 ${100 + (i % 7) * 40},60`);
  }
  return `${lines.join('\n')}\n`;
}

const complete = (page) => page.page.waitForFunction(() => globalThis.vesk?.isComplete, null, { timeout: 120000 });

async function colours(page) {
  const picture = await page.picture();
  const seen = new Set();
  for (let x = 0; x < picture.width; x += 3) {
    for (let y = 60; y < picture.height; y += 3) seen.add(picture.at(x, y).join());
  }
  return seen.size;
}

const checks = {
  async 'a click names header, kind, file and line'(browser, address) {
    const page = await browser.open('', { url: `${address}one/` });
    await complete(page);
    assert((await colours(page)) > 50, 'the picture is not empty');
    const { width, height } = await page.stage();
    await page.click([width / 2, height / 2]);
    assert.equal(await page.text('.details'), 'HeaderV-<b>1 01KindcylinderFileone.datLine1');
    assert.match(await page.text('.bar p'), /^1,200 elements$/);
    await page.click([width - 4, height / 2]);
    assert.equal(await page.locator('.details').isHidden(), true);
    return page;
  },

  // The left half of the picture is of the one zone, the right one of the other.
  async 'zones are shown as one'(browser, address) {
    const page = await browser.open('', { url: address });
    await complete(page);
    // Each zone comes when it comes.
    const found = await page.page.waitForFunction(() => {
      const { clientWidth: width, clientHeight: height } = document.querySelector('.stage');
      const files = [new Set(), new Set()];
      for (let x = 0.05; x < 1; x += 0.05) {
        for (let y = 0.1; y < 1; y += 0.1) {
          const element = globalThis.vesk.pick(x * width, y * height);
          if (element) files[x < 0.5 ? 0 : 1].add(element.file);
        }
      }
      return files.every((each) => each.size > 0) && files.map((each) => [...each]);
    }, null, { timeout: 120000, polling: 500 }).then((handle) => handle.jsonValue());
    assert.deepEqual(found, [['one.dat'], ['two.dat']]);
    return page;
  },

  // From afar the root, near by leaves.
  async 'finer tiles are fetched near by'(browser, address) {
    const page = await browser.open('', { url: `${address}one/`, size: { width: 220, height: 160 } });
    await complete(page);
    const before = page.requests.length;
    await page.page.setViewportSize({ width: 1200, height: 900 });
    await page.evaluate(() => globalThis.vesk.fit());
    for (const end = Date.now() + 120000; page.requests.length === before && Date.now() < end;) {
      await page.page.waitForTimeout(100);
    }
    assert(page.requests.length > before, `still ${before} requests`);
    return page;
  },

  async 'without a server the page says what it needs'(browser, _, folder) {
    const page = await browser.open('', { file: join(folder, 'one/index.html') });
    assert.match(await page.text('[role=alert]'), /from a web server only/);
    return page;
  },
};

const folder = mkdtempSync(join(tmpdir(), 'vesk-tiles-'));
for (const [name, x] of [['one', 0], ['two', 60000]]) {
  writeFileSync(join(folder, `${name}.dat`), plant(x));
  execFileSync(tool, ['export', `${name}.dat`, '-o', `${name}/`, '--tile-triangles', '5000'], { cwd: folder });
}
execFileSync(tool, ['export', 'one', 'two', '-o', './'], { cwd: folder });
const { server, address } = await serve(folder);
const browser = await Browser.start(options.chromium);
let failed = 0;
for (const [name, check] of Object.entries(checks)) {
  try {
    const page = await check(browser, address, folder);
    assert.deepEqual(page.errors, []);
    assert.deepEqual(await page.violations(), []);
    const strange = page.requests.filter((url) => !url.startsWith(address) && !/^(file|data):/.test(url));
    assert.deepEqual(strange, []);
    if (options.shots) writeFileSync(join(options.shots, `${name}.png`), await page.page.screenshot());
    console.log(`ok: ${name}`);
  } catch (error) {
    failed += 1;
    console.log(`failed: ${name}\n${error.stack}`);
    if (options.shots) writeFileSync(join(options.shots, `${name}.png`), await browser.last.page.screenshot());
    console.log(browser.last.errors.join('\n'));
  }
  await browser.last.close();
}
await browser.stop();
server.close();
rmSync(folder, { recursive: true, force: true });
process.exit(failed ? 1 : 0);
