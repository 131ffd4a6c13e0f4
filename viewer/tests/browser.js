// SPDX-License-Identifier: MIT
// Opens pages in headless Chromium and looks at them.
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { pathToFileURL } from 'node:url';

import { chromium } from 'playwright-core';

const axe = readFileSync(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');

// Drawn by software, so that any machine will do; without talk to the network.
const FLAGS = [
  '--headless',
  '--no-sandbox',
  '--use-gl=angle',
  '--use-angle=swiftshader',
  '--enable-unsafe-swiftshader',
  '--disable-quic',
  '--no-first-run',
  '--disable-background-networking',
  '--disable-component-update',
  '--disable-sync',
];

// ms that a busy machine may take for what needs one second.
const PATIENCE = 120000;

// Small: it is the processor that draws.
const SIZE = { width: 900, height: 420 };

export class Browser {
  static async start(executablePath) {
    const browser = new Browser();
    browser.folder = mkdtempSync(join(tmpdir(), 'vesk-page-'));
    browser.chromium = await chromium.launch({ executablePath, args: FLAGS });
    const blank = await browser.chromium.newContext();
    browser.decoder = await blank.newPage();
    return browser;
  }

  async stop() {
    await this.chromium.close();
    rmSync(this.folder, { recursive: true, force: true });
  }

  /** Opens the text of a page, with `file` a page on the disk, with `url` one of a server. */
  async open(html, { file = null, url = null, before = null, size = SIZE, timeout = PATIENCE, ...options } = {}) {
    const context = await this.chromium.newContext({
      viewport: size,
      reducedMotion: 'reduce',
      ...options,
    });
    context.setDefaultTimeout(PATIENCE);
    const page = await context.newPage();
    const opened = new Page(page, this);
    this.last = opened;
    if (before) await page.addInitScript(before);
    const path = file ?? join(this.folder, 'page.html');
    if (!file) writeFileSync(path, html);
    await page.goto(url ?? pathToFileURL(path).href);
    await page.locator('.stage, [role=alert]').first().waitFor({ timeout });
    await opened.settle();
    return opened;
  }

  /** A picture's size and a function for its pixels, [red, green, blue]. */
  async decode(png) {
    const { width, height, data } = await this.decoder.evaluate(async (base64) => {
      const bytes = Uint8Array.from(atob(base64), (c) => c.charCodeAt(0));
      const bitmap = await createImageBitmap(new Blob([bytes], { type: 'image/png' }));
      const canvas = new OffscreenCanvas(bitmap.width, bitmap.height);
      const context = canvas.getContext('2d');
      context.drawImage(bitmap, 0, 0);
      const pixels = context.getImageData(0, 0, bitmap.width, bitmap.height).data;
      let text = '';
      for (let i = 0; i < pixels.length; i += 8192) {
        text += String.fromCharCode(...pixels.subarray(i, i + 8192));
      }
      return { width: bitmap.width, height: bitmap.height, data: btoa(text) };
    }, png.toString('base64'));
    const pixels = Buffer.from(data, 'base64');
    const at = (x, y) => {
      const i = (Math.round(y) * width + Math.round(x)) * 4;
      return [...pixels.subarray(i, i + 3)];
    };
    return { width, height, at };
  }
}

/** An open page, with what it has complained about and asked for. */
class Page {
  errors = [];
  requests = [];

  constructor(page, browser) {
    this.page = page;
    this.browser = browser;
    this.mouse = page.mouse;
    this.keyboard = page.keyboard;
    page.on('console', (message) => {
      if (message.type() === 'error') this.errors.push(message.text());
    });
    page.on('pageerror', (error) => this.errors.push(String(error)));
    page.on('request', (request) => {
      if (!request.url().startsWith('blob:')) this.requests.push(request.url());
    });
  }

  locator(selector, options) {
    return this.page.locator(selector, options);
  }

  evaluate(work, argument) {
    return this.page.evaluate(work, argument);
  }

  /** Waits until what was asked for is drawn. */
  async settle() {
    await this.evaluate(
      () => new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(() => done()))),
    );
  }

  /** What a reader of screens, or of a keyboard only, would stumble over: a rule and where. */
  async violations() {
    await this.evaluate(axe);
    return this.evaluate(async () => {
      const { violations } = await globalThis.axe.run(document, { resultTypes: ['violations'] });
      return violations.flatMap(({ id, nodes }) => nodes.map(({ target }) => `${id}: ${target}`));
    });
  }

  async press(...keys) {
    for (const key of keys) await this.keyboard.press(key);
    await this.settle();
  }

  async text(selector) {
    return (await this.locator(selector).first().textContent()) ?? '';
  }

  async stage() {
    return this.locator('.stage').boundingBox();
  }

  /** Clicks a place of the stage. */
  async click([x, y], modifiers = []) {
    const { x: left, y: top } = await this.stage();
    for (const key of modifiers) await this.keyboard.down(key);
    await this.mouse.click(left + x, top + y);
    for (const key of modifiers) await this.keyboard.up(key);
    await this.settle();
  }

  async drag([x, y], [toX, toY], button = 'left') {
    const { x: left, y: top } = await this.stage();
    await this.mouse.move(left + x, top + y);
    await this.mouse.down({ button });
    await this.mouse.move(left + (x + toX) / 2, top + (y + toY) / 2);
    await this.mouse.move(left + toX, top + toY);
    await this.mouse.up({ button });
    await this.settle();
  }

  /** The picture of the stage as people see it. */
  async picture() {
    const clip = await this.stage();
    return this.browser.decode(await this.page.screenshot({ clip }));
  }

  async close() {
    await this.page.context().close();
  }
}
