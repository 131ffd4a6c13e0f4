// SPDX-License-Identifier: MIT
// Looks at the page in headless Chromium. Each check opens a page of its own, and
// none may complain on the console or ask for anything but the page itself.
//
//   node page.js [--chromium PROGRAM] [--template FILE] [--tool VESK --piping FILE]
//                [--shots FOLDER] [NAME...]
//
// With a tool the pages that it writes are looked at too. Names choose checks.
// With --shots a picture of every page is left in the folder.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { readFileSync, statSync, writeFileSync } from 'node:fs';
import { join, resolve } from 'node:path';
import { parseArgs } from 'node:util';

import { Browser } from './browser.js';
import { plant, sidecar } from './plant.js';
import { box, encode, fill, manyPipes, pipe, triangle, unitCube, unitCylinder } from './scenes.js';

const { values: options, positionals: names } = parseArgs({
  allowPositionals: true,
  options: {
    chromium: { type: 'string', default: '/usr/bin/chromium' },
    template: { type: 'string', default: new URL('../dist/template.html', import.meta.url).pathname },
    tool: { type: 'string' },
    piping: { type: 'string' },
    shots: { type: 'string' },
  },
});
// They are used from another folder.
const tool = options.tool && resolve(options.tool);
const golden = new URL('../../tests/golden', import.meta.url).pathname;
const piping = options.piping && resolve(options.piping);
const template = readFileSync(options.template, 'utf8');

// Has room for the tools beside the model.
const LARGE = { width: 1180, height: 560 };

// A box in the middle, a pipe to the left and one to the right of it, a line
// above, a point below, a text, a triangle behind the box, and a row of small
// pipes along the floor.
const BOUNDS = [[-500, -100, -300], [500, 300, 300]];
const HEAD = [
  pipe([-450, 0, -300], 600, 100, 2, { header: 'P-1', record: 'P-1 left pipe' }),
  box([-100, -100, -100], [200, 200, 200], { header: 'V-1', record: 'V-1 box\nV-1 second line' }),
  pipe([450, 0, -300], 600, 100, 2, { header: 'P-2', record: 'P-2 right pipe' }),
  {
    kind: 'segment', header: 'P-1', line: [[-300, 0, 250], [300, 0, 250]], record: 'P-1 line',
    values: [['vertex 0', 'p', [-300, 0, 250]], ['vertex 1', 'p', [300, 0, 250]]],
  },
  { kind: 'point', header: 'P-1', point: [0, 0, -200], record: 'P-1 point', values: [['vertex 0', 'p', [0, 0, -200]]] },
  {
    kind: 'text', header: 'V-1', record: 'V-1 text', values: [['text', 't', 'HHHH']],
    text: { text: 'HHHH', position: [150, -100, 100], along: [1, 0, 0], up: [0, 0, 1], height: 60 },
  },
  {
    kind: 'triangle', header: 'V-1', mesh: 2, record: 'V-1 triangle',
    matrix: [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0], values: [['vertex 0', 'p', [-350, 300, -200]]],
  },
];
const [LEFT, BOX, RIGHT, LINE, POINT] = HEAD.keys();
const ROW = Array.from({ length: 20 }, (_, i) =>
  pipe([-300 + 30 * i, 0, -300], 30, 20, 2, { header: 'P-3' }),
);
const MESHES = [
  unitCylinder(),
  unitCube(),
  triangle([-350, 300, -200], [-150, 300, -200], [-350, 300, 100]),
];

function scene(more = {}) {
  return encode({ bounds: BOUNDS, meshes: MESHES, elements: [...HEAD, ...ROW], ...more });
}

// The page in the front view: x to the right, z up, the bounds in the middle; they
// fill nine tenths of the narrower direction, here of the width.
async function open(browser, more = {}, options = {}) {
  const page = await browser.open(fill(template, scene(more)), options);
  await page.press('3');
  const { width, height } = await page.stage();
  const scale = (width * 0.9) / 1000;
  page.at = (x, z) => [width / 2 + x * scale, height / 2 - z * scale];
  page.scale = scale;
  return page;
}

// What a colour is like.
const isBlue = ([r, g, b]) => b > r + 25 && b >= g;
const isSand = ([r, g, b]) => r > b + 20 && g > b;
const isGreen = ([r, g, b]) => g > r + 20 && g > b + 20;
const isRed = ([r, g, b]) => r > g + 60 && r > b + 60;
const isOrange = ([r, g, b]) => r > 150 && r > b + 90;
const isSky = ([r, g, b]) => Math.min(r, g, b) > 200 && Math.max(r, g, b) - Math.min(r, g, b) < 25;
const isDark = ([r, g, b]) => Math.max(r, g, b) < 90;
// What it is not.
const not = (looks) => Object.defineProperty((c) => !looks(c), 'name', { value: `not ${looks.name}` });
// A veil over the sky: neither sky nor a colour.
const isPale = ([r, g, b]) => Math.min(r, g, b) > 140 && Math.max(r, g, b) < 248 && Math.max(r, g, b) - Math.min(r, g, b) < 40;
const isGrey = ([r, g, b]) => Math.max(r, g, b) - Math.min(r, g, b) < 30;

// Looks at places of the picture: [[x, z, test], ...].
async function see(page, places) {
  const picture = await page.picture();
  for (const [x, z, looks] of places) {
    const colour = picture.at(...page.at(x, z));
    assert.ok(looks(colour), `${looks.name} at ${x} ${z}, there is ${colour}`);
  }
}

const ALL_SEEN = [[-450, 50, isBlue], [0, 30, isSand], [450, 50, isBlue], [-320, -100, isGreen]];

async function treeRows(page) {
  return page.locator('.tree .row .name').allTextContents();
}

// In the page: how many places of the picture are in the box of a text, and over how
// many of them something of the plant is.
function countTexts() {
  const { view, overlay } = globalThis.vesk;
  view.drawNow();
  const count = { all: 0, over: 0 };
  for (let x = 0; x < view.camera.pixelsWide; x += 3) {
    for (let y = 0; y < view.camera.pixelsHigh; y += 3) {
      if (!overlay.textAt(x, y)) continue;
      ++count.all;
      if (view.depths.at(x, y) < Infinity) ++count.over;
    }
  }
  return count;
}

const checks = {
  async DrawsWhatThereIs(browser) {
    const page = await open(browser);
    await see(page, [...ALL_SEEN, [-250, 200, isSky], [300, -150, isSky], [0, -200, isRed]]);
    // The line is two pixels wide.
    const picture = await page.picture();
    const [x, y] = page.at(0, 250);
    assert.ok([-1, 0, 1].some((dy) => isOrange(picture.at(x, y + dy))));
    return page;
  },

  async ShowsTitleAndCounts(browser) {
    const page = await open(browser, { title: 'Pump house' });
    assert.equal(await page.page.title(), 'Pump house');
    assert.equal(await page.text('h1'), 'Pump house');
    assert.equal(await page.text('.counts'), '27 elements');
    return page;
  },

  async ClickShowsTheRecord(browser) {
    const page = await open(browser);
    await page.click(page.at(20, 20));
    assert.equal(await page.text('.details h2'), 'box 2');
    assert.equal(await page.text('.record'), 'V-1 box\nV-1 second line');
    const rows = await page.locator('.values tr').allInnerTexts();
    assert.deepEqual(rows.map((row) => row.replace(/\s+/g, ' ')), [
      'origin -100 -100 -100',
      'edge 1 200 0 0 length 200',
      'edge 2 0 200 0 length 200',
      'edge 3 0 0 200 length 200',
    ]);
    assert.match(await page.text('.facts'), /V-1.*sample\.dat:2/);
    await see(page, [[20, 20, isOrange], [-450, 50, isBlue]]);
    return page;
  },

  async ClickOpensTheTreeThere(browser) {
    const page = await open(browser);
    await page.click(page.at(20, 20));
    assert.deepEqual(await treeRows(page), ['P-1', 'V-1', 'triangles', 'texts', 'boxes', 'box 2', 'P-2', 'P-3']);
    assert.equal(await page.locator('.row[aria-selected=true]').textContent(), 'box 2line 2');
    return page;
  },

  async ClickBesideClears(browser) {
    const page = await open(browser);
    await page.click(page.at(20, 20));
    await page.click(page.at(-250, 200));
    assert.match(await page.text('.details'), /^Click an element/);
    assert.equal(await page.text('.counts'), '27 elements');
    return page;
  },

  async ControlClickAddsAndTakesAway(browser) {
    const page = await open(browser);
    await page.click(page.at(20, 20));
    await page.click(page.at(-450, 50), ['Control']);
    assert.equal(await page.text('.counts'), '27 elements, 2 selected');
    assert.equal(await page.text('.record'), 'P-1 left pipe');
    await page.click(page.at(-450, 50), ['Control']);
    assert.equal(await page.text('.record'), 'V-1 box\nV-1 second line');
    return page;
  },

  async ThinThingsCanBeHit(browser) {
    const page = await open(browser);
    const beside = ([x, y]) => [x, y + 3];
    await page.click(beside(page.at(100, 250)));
    assert.equal(await page.text('.record'), 'P-1 line');
    await page.click(beside(page.at(0, -200)));
    assert.equal(await page.text('.record'), 'P-1 point');
    return page;
  },

  async HidesAndShows(browser) {
    const page = await open(browser);
    await page.click(page.at(20, 20));
    await page.press('h');
    await see(page, [[20, 20, isSky], [-450, 50, isBlue]]);
    assert.equal(await page.text('.counts'), '27 elements, 1 hidden');
    // What is hidden can't be hit.
    await page.click(page.at(20, 20));
    assert.match(await page.text('.details'), /^Click an element/);
    await page.press('a');
    await see(page, ALL_SEEN);
    return page;
  },

  async ThinPipesKeepTheirColour(browser) {
    const page = await open(browser, {
      elements: [...HEAD, pipe([-300, 0, 200], 400, 8, 0)], // two pixels wide
    });
    const picture = await page.picture();
    const [x, y] = page.at(-250, 200);
    const around = [-2, -1, 0, 1, 2].map((dy) => picture.at(x, y + dy));
    assert.ok(around.some(isBlue), `${around.join(' | ')}`);
    return page;
  },

  async Isolates(browser) {
    const page = await open(browser);
    await page.click(page.at(20, 20));
    await page.press('i', 'Escape');
    await see(page, [[20, 20, isSand], [-450, 50, isSky], [450, 50, isSky], [0, 250, isSky]]);
    assert.equal(await page.text('.counts'), '27 elements, 26 hidden');
    return page;
  },

  async TreeHidesAHeader(browser) {
    const page = await open(browser);
    await page.locator('.row', { hasText: 'P-2' }).locator('.check').click();
    await see(page, [[450, 50, isSky], [-450, 50, isBlue]]);
    await page.locator('.row', { hasText: 'P-2' }).locator('.check').click();
    await see(page, ALL_SEEN);
    return page;
  },

  async TreeGroupsByKind(browser) {
    const page = await open(browser);
    await page.locator('.line select').selectOption('kind');
    assert.deepEqual(await treeRows(page), ['points', 'segments', 'triangles', 'texts', 'boxes', 'cylinders']);
    return page;
  },

  async TreeByKeys(browser) {
    const page = await open(browser);
    await page.locator('.tree').focus();
    await page.press('ArrowDown', 'ArrowDown', 'Space'); // P-2
    await see(page, [[450, 50, isSky]]);
    await page.press('ArrowRight', 'ArrowRight', 'ArrowRight', 'ArrowRight', 'Enter');
    assert.equal(await page.text('.record'), 'P-2 right pipe');
    await page.press('ArrowLeft', 'ArrowLeft', 'ArrowLeft', 'ArrowLeft', 'Home');
    assert.deepEqual(await treeRows(page), ['P-1', 'V-1', 'P-2', 'P-3']);
    const active = await page.locator('.tree').getAttribute('aria-activedescendant');
    assert.equal(await page.text(`#${active} .name`), 'P-1');
    return page;
  },

  async LegendHidesAKind(browser) {
    const page = await open(browser);
    await page.locator('.legend label', { hasText: 'cylinders' }).locator('input').click();
    await see(page, [[-450, 50, isSky], [450, 50, isSky], [20, 20, isSand]]);
    return page;
  },

  async Searches(browser) {
    const page = await open(browser);
    await page.press('/');
    await page.keyboard.type('SECOND line');
    assert.deepEqual(await treeRows(page), ['V-1', 'boxes', 'box 2']);
    await page.locator('.row', { hasText: 'box 2' }).click();
    assert.equal(await page.text('.details h2'), 'box 2');
    await page.locator('.search input').fill('nothing of it');
    assert.deepEqual(await treeRows(page), []);
    return page;
  },

  async SectionCuts(browser) {
    const page = await open(browser);
    await page.press('x');
    const slider = page.locator('.popover input[type=range]');
    await slider.fill('500'); // x = 0: the right half is cut away
    await see(page, [[450, 50, isSky], [50, 30, isSky], [-50, 30, isSand], [-450, 50, isBlue]]);
    assert.equal(await page.locator('.popover .place').first().inputValue(), '0');
    await page.locator('.popover .place').first().fill('-460'); // a number of the file
    await page.keyboard.press('Enter');
    await see(page, [[-450, 50, isSky], [-480, 50, isBlue]]);
    await slider.fill('500');
    await page.click(page.at(450, 50));
    assert.match(await page.text('.details'), /^Click an element/);
    await page.locator('.popover input[type=checkbox]').check();
    await see(page, [[450, 50, isBlue], [50, 30, isSand], [-50, 30, not(isSand)], [-450, 50, isSky]]);
    await page.locator('[aria-label=Axis]').selectOption('2'); // z = 0: the lower half
    await see(page, [[-450, 50, isBlue], [-450, -100, isSky]]);
    await page.locator('.popover:visible button', { hasText: 'Off' }).click();
    await see(page, ALL_SEEN);
    // Texts are cut too: this one begins at x = 150.
    await page.press('x');
    await page.locator('[aria-label=Axis]').selectOption('0');
    await page.locator('.popover input[type=checkbox]').uncheck();
    await see(page, [[160, 120, isSky]]);
    return page;
  },

  async CutsAreFilled(browser) {
    const page = await open(browser);
    await page.press('x');
    await page.locator('[aria-label=Axis]').selectOption('1');
    // y from -100 to 300: a quarter is y = 0, the middle of the box; what is nearer
    // to the eye is left, so the box is opened from behind.
    await page.locator('.popover input[type=range]').fill('250');
    await page.locator('.popover input[type=checkbox]').check();
    await see(page, [[20, 20, isSand], [-450, 50, isBlue]]);
    return page;
  },

  async MeasuresBetweenEndsOfAxes(browser) {
    const page = await open(browser, {}, { size: LARGE });
    await page.press('m');
    await page.click(page.at(-450, 295)); // 5 below the end of the axis
    await page.click(page.at(450, 295));
    assert.match(await page.text('.measures'), /^900 mm along x y z: 900 {2}0 {2}0/);
    await page.click(page.at(-448, -290)); // the origin
    await page.click(page.at(448, 292));
    // 900 * 900 + 600 * 600 = 1170000, whose root is 1081.6654
    assert.match(await page.locator('.measures li').nth(1).textContent(), /^1081\.665 mm/);
    await page.press('Escape');
    assert.equal(await page.locator('.popover:visible').count(), 0);
    return page;
  },

  async MeasuresBetweenVertices(browser) {
    const page = await open(browser, {}, { size: LARGE });
    await page.press('m');
    await page.click(page.at(96, 96)); // a corner of the box, no place of its record
    await page.click(page.at(96, -96)); // the end of edge 1: 200 below
    assert.match(await page.text('.measures'), /^200 mm along x y z: 0 {2}0 {2}-200/);
    return page;
  },

  async MeasuresExactlyFarFromTheOrigin(browser) {
    const far = 12345678.125;
    const elements = HEAD.map((element) => ({
      ...element,
      values: element.values.map(([name, type, value]) =>
        type === 'p' ? [name, type, value.map((x) => x + far)] : [name, type, value],
      ),
    }));
    const page = await open(browser, { offset: [far, far, far], elements }, { size: LARGE });
    await page.press('m');
    await page.click(page.at(-450, 295));
    await page.click(page.at(450, 295));
    assert.match(await page.text('.measures'), /^900 mm/);
    await page.press('Escape');
    await page.click(page.at(-450, 50));
    assert.match(await page.text('.values'), /12345228\.125/);
    return page;
  },

  async SixViews(browser) {
    const page = await open(browser);
    const pressed = async (key) => {
      await page.press(key);
      const { width, height } = await page.stage();
      await page.click([width / 2, height / 2]);
      return page.text('.details h2');
    };
    // At the middle of the bounds, x 0, y 100, z 0, each side sees something else.
    assert.equal(await pressed('3'), 'box 2');
    assert.equal(await pressed('5'), 'box 2');
    assert.match(await pressed('2'), /^Click|box|segment/);
    const page2 = await open(browser);
    await page2.press('4');
    const { width, height } = await page2.stage();
    // From the right: y to the right; its middle is 100, the pipe stands at 0. The
    // height of 600 fits, 400 along y is less than the width.
    const scale = Math.min((height * 0.9) / 600, (width * 0.9) / 400);
    await page2.click([width / 2 - 100 * scale, height / 2]);
    assert.equal(await page2.text('.record'), 'P-2 right pipe');
    await page2.press('6');
    await page2.click([width / 2 + 100 * scale, height / 2]);
    assert.equal(await page2.text('.record'), 'P-1 left pipe');
    await page2.close();
    return page;
  },

  async CubeTurnsToAView(browser) {
    const page = await open(browser);
    await page.press('1');
    await page.locator('.face', { hasText: 'Right' }).click({ force: true });
    await page.settle();
    const toEye = await page.evaluate(() => vesk.view.camera.axes().toEye.toArray());
    assert.deepEqual(toEye.map(Math.round), [1, 0, 0]);
    return page;
  },

  async FitGoesToTheSelection(browser) {
    const page = await open(browser);
    await page.click(page.at(20, 20));
    await page.press('f', 'Escape');
    const picture = await page.picture();
    const { width, height } = picture;
    // 200 by 200 fill nine tenths; in the fourth corner stands the cube.
    const half = Math.min(width, height) * 0.9 * 0.47;
    for (const [x, y] of [[-1, -1], [1, 1], [-1, 1]]) {
      const colour = picture.at(width / 2 + x * half, height / 2 + y * half);
      assert.ok(isSand(colour), `sand at ${x} ${y}, there is ${colour}`);
    }
    await page.press('f');
    await see(page, ALL_SEEN);
    return page;
  },

  async WheelEnlargesAtThePointer(browser) {
    const page = await open(browser);
    const { x: left, y: top } = await page.stage();
    const [x, y] = page.at(-450, 50);
    await page.mouse.move(left + x, top + y);
    for (let i = 0; i < 4; ++i) await page.mouse.wheel(0, -100);
    await page.settle();
    const picture = await page.picture();
    assert.ok(isBlue(picture.at(x, y)));
    // The pipe of 100 is now 1.2^4 = 2.07 as wide: 90 from its middle is inside.
    assert.ok(isBlue(picture.at(x + 90 * page.scale, y)));
    assert.ok(isSky(picture.at(x + 120 * page.scale, y)));
    return page;
  },

  async DragTurnsAndShiftDragMoves(browser) {
    const page = await open(browser);
    await page.keyboard.down('Shift');
    await page.drag([40, 40], [40 + 100 * page.scale, 40]); // by 100 units to the right
    await page.keyboard.up('Shift');
    await see(page, [[-350, 50, isBlue], [-450, 50, isSky], [120, 30, isSand]]);
    await page.drag([40, 40], [40 - 100 * page.scale, 40], 'right');
    await see(page, ALL_SEEN);
    await page.drag(page.at(-250, 200), [page.at(-250, 200)[0] + 100, page.at(0, 200)[1]]);
    const [x, y, z] = await page.evaluate(() => vesk.view.camera.axes().toEye.toArray());
    // A hundred pixels are a fifth of pi, 36 degrees: the eye goes to the left.
    assert.ok(Math.abs(x + Math.sin(Math.PI / 5)) < 0.02 && y < 0 && Math.abs(z) < 0.01, `${x} ${y} ${z}`);
    return page;
  },

  async KeysTurnMoveAndEnlarge(browser) {
    const page = await open(browser);
    await page.locator('.model').focus();
    const camera = () =>
      page.evaluate(() => {
        const { azimuth, elevation, height, target } = vesk.view.camera;
        return { azimuth, elevation, height, x: target.x };
      });
    const before = await camera();
    await page.press('ArrowUp');
    assert.ok((await camera()).elevation > before.elevation);
    await page.press('ArrowLeft');
    assert.ok((await camera()).azimuth > before.azimuth);
    await page.press('3', 'Shift+ArrowRight');
    assert.ok((await camera()).x > before.x);
    await page.press('3', '+');
    assert.ok(Math.abs((await camera()).height * 1.25 - before.height) < 1e-6);
    return page;
  },

  async OneFingerTurnsTwoFingersEnlarge(browser) {
    const page = await open(browser, {}, { hasTouch: true });
    const client = await page.page.context().newCDPSession(page.page);
    const { x: left, y: top, width, height } = await page.stage();
    const [x, y] = [left + width / 2, top + height / 2];
    const touch = (type, ...points) =>
      client.send('Input.dispatchTouchEvent', {
        type,
        touchPoints: points.map(([dx, dy], id) => ({ x: x + dx, y: y + dy, id })),
      });
    await touch('touchStart', [-40, 0], [40, 0]);
    await touch('touchMove', [-60, 0], [60, 0]);
    await touch('touchMove', [-80, 0], [80, 0]);
    await touch('touchEnd');
    await page.settle();
    const picture = await page.picture();
    // Twice as large: the edge of the box, once 100 from the middle, is at 200.
    assert.ok(isSand(picture.at(width / 2 + 190 * page.scale, height / 2)));
    assert.ok(!isSand(picture.at(width / 2 + 215 * page.scale, height / 2)));
    const azimuth = () => page.evaluate(() => vesk.view.camera.azimuth);
    const before = await azimuth();
    await touch('touchStart', [0, 0]);
    await touch('touchMove', [30, 0]);
    await touch('touchMove', [60, 0]);
    await touch('touchEnd');
    assert.ok((await azimuth()) < before - 0.1);
    await page.press('3');
    await page.page.touchscreen.tap(x, y);
    await page.settle();
    assert.equal(await page.text('.details h2'), 'box 2');
    return page;
  },

  async PerspectiveShowsTheSame(browser) {
    const page = await open(browser);
    await page.press('p', 'f');
    await see(page, [[0, 30, isSand]]);
    assert.equal(await page.locator('[data-command=perspective]').getAttribute('aria-pressed'), 'true');
    await page.click(page.at(20, 20));
    assert.equal(await page.text('.details h2'), 'box 2');
    return page;
  },

  async ScaleBarIsTrue(browser) {
    const page = await open(browser);
    assert.equal(await page.text('.scale'), '500 mm');
    const { width } = await page.locator('.scale-line').boundingBox();
    assert.ok(Math.abs(width - 500 * page.scale) < 1, `${width}`);
    return page;
  },

  async TextsAreLabels(browser) {
    const page = await open(browser);
    const darkPixels = async () => {
      const picture = await page.picture();
      const [x0, y1] = page.at(150, 100);
      let count = 0;
      for (let x = x0; x < x0 + 200 * page.scale; ++x) {
        for (let y = y1 - 60 * page.scale; y < y1; ++y) count += isDark(picture.at(x, y)) ? 1 : 0;
      }
      return count;
    };
    const shown = await darkPixels();
    assert.ok(shown > 30, `${shown} dark pixels`);
    await page.press('t');
    assert.equal(await darkPixels(), 0);
    return page;
  },

  async TextsAreAsWideAsTheirRecordSays(browser) {
    const wide = HEAD.map((each) => (each.text ? { ...each, text: { ...each.text, width: 120 } } : each));
    const page = await open(browser, { elements: [...wide, ...ROW] });
    const picture = await page.picture();
    const darkBetween = (from, to) => {
      const [[x0, y1], [x1]] = [page.at(from, 100), page.at(to, 100)];
      let count = 0;
      for (let x = x0; x < x1; ++x) {
        for (let y = y1 - 60 * page.scale; y < y1; ++y) count += isDark(picture.at(x, y)) ? 1 : 0;
      }
      return count;
    };
    assert.ok(darkBetween(240, 270) > 5);
    assert.equal(darkBetween(275, 400), 0);
    return page;
  },

  async ThemeFollowsTheSystemAndTheKey(browser) {
    const page = await open(browser, {}, { colorScheme: 'dark' });
    await see(page, [[-250, 200, isDark], [0, 30, isSand]]);
    await page.press('d');
    await see(page, [[-250, 200, isSky], [0, 30, isSand]]);
    return page;
  },

  async WhatIsChosenCanBeReadInTheDark(browser) {
    const page = await open(browser, {}, { colorScheme: 'dark' });
    const { width, height } = await page.stage();
    await page.click([width / 2, height / 2]);
    assert.equal(await page.locator('.row[aria-selected=true]').count(), 1);
    return page;
  },

  async SavesAPicture(browser) {
    const page = await open(browser, { title: 'Pump / house' });
    const wait = page.page.waitForEvent('download');
    await page.press('s');
    const download = await wait;
    assert.equal(download.suggestedFilename(), 'Pump-house.png');
    const picture = await browser.decode(readFileSync(await download.path()));
    const { width, height } = await page.stage();
    assert.deepEqual([picture.width, picture.height], [Math.round(width), Math.round(height)]);
    for (const [x, z, looks] of [...ALL_SEEN, [-250, 200, isSky]]) {
      assert.ok(looks(picture.at(...page.at(x, z))), `${looks.name} at ${x} ${z}`);
    }
    return page;
  },

  async MarksAreColouredAndListed(browser) {
    const marks = [
      { element: RIGHT, level: 'warning', code: 'V120', text: 'is short' },
      { element: BOX, level: 'error', code: 'V101', text: 'has no volume' },
      { element: BOX, level: 'note', code: '', text: 'is there twice' },
      { element: null, level: 'error', code: 'V021', text: 'plant.dat:9: not a number' },
    ];
    const page = await open(browser, { marks });
    await see(page, [[20, 20, isRed], [450, 50, isOrange], [-450, 50, isGrey]]);
    assert.deepEqual(await page.locator('.what').allTextContents(), [
      'warning: is short', 'error: has no volume', 'note: is there twice', 'error: plant.dat:9: not a number',
    ]);
    await page.locator('.levels label', { hasText: 'Errors' }).locator('input').uncheck();
    assert.equal(await page.locator('.mark-row').count(), 2);
    await page.locator('.mark-row').nth(1).click();
    await page.settle();
    assert.equal(await page.text('.details h2'), 'box 2');
    assert.deepEqual(await page.locator('.mark').allTextContents(), [
      'error: has no volume [V101]', 'note: is there twice',
    ]);
    await page.press('Escape', '3', 'g'); // nothing is a veil now
    await see(page, [[-450, 50, isBlue]]);
    return page;
  },

  async FailuresAreToldAtTheElement(browser) {
    const { head, bytes } = scene();
    head.failures = [{ element: POINT, reason: 'its diameter is negative' }];
    const page = await browser.open(fill(template, { head, bytes }));
    assert.equal(await page.text('.counts'), '27 elements, 1 not drawn');
    await page.press('/');
    await page.keyboard.type('P-1 point');
    await page.locator('.row', { hasText: 'point 5' }).click();
    assert.match(await page.text('.details'), /not drawn: its diameter is negative/);
    return page;
  },

  async HostileTextsStayTexts(browser) {
    const evil = '</script><script>hacked=1</script><img src=x onerror="hacked=1"><!--\u2028';
    const page = await open(browser, {
      title: evil,
      elements: HEAD.map((element) => ({
        ...element,
        header: evil,
        record: evil,
        values: [[evil, 't', evil]],
        text: element.text && { ...element.text, text: evil },
      })),
      marks: [{ element: BOX, level: 'error', code: evil, text: evil }],
    });
    await page.click(page.at(20, 20));
    assert.equal(await page.text('h1'), evil);
    assert.equal(await page.text('.record'), evil);
    assert.equal(await page.text('.values th'), evil);
    assert.equal(await page.text('.what'), `error: ${evil}`);
    await page.locator('[role=tab]', { hasText: 'Elements' }).click();
    assert.equal(await page.text('.row.level-1 .name'), evil);
    const found = await page.evaluate(() => [document.images.length, document.scripts.length, typeof hacked]);
    assert.deepEqual(found, [0, 3, 'undefined']); // two blocks and the code
    return page;
  },

  async PolicyIsInForce(browser) {
    const page = await open(browser);
    const policy = await page.locator('meta[http-equiv]').getAttribute('content');
    assert.match(policy, /^default-src 'none'; script-src 'sha256-[^;]*'; style-src 'sha256-[^;]*';/);
    assert.doesNotMatch(policy, /unsafe/);
    const ran = await page.evaluate(async () => {
      const script = document.createElement('script');
      script.textContent = 'globalThis.injected = 1';
      document.body.append(script);
      const button = document.createElement('button');
      button.setAttribute('onclick', 'globalThis.injected = 2');
      document.body.append(button);
      button.click();
      button.remove();
      const fetched = await fetch('https://example.invalid/').then(() => true, () => false);
      return [typeof globalThis.injected, fetched];
    });
    assert.deepEqual(ran, ['undefined', false]);
    assert.ok(page.errors.length >= 3, 'each is refused by the policy');
    for (const error of page.errors) assert.match(error, /Content Security Policy/);
    page.errors = [];
    return page;
  },

  async ColoursByHeaderSizeAndItem(browser) {
    const attributes = { names: ['spec'], rows: [['A1A'], ['=B3C']] };
    const elements = [{ ...HEAD[LEFT], row: 1 }, HEAD[BOX], { ...HEAD[RIGHT], row: 2 }];
    const page = await open(browser, { elements, attributes });
    const colours = async () => {
      const picture = await page.picture();
      return [[-450, 50], [0, 30], [450, 50]].map((place) => picture.at(...page.at(...place)));
    };
    const differ = (a, b) => Math.hypot(...a.map((x, i) => x - b[i])) > 40;
    const names = () => page.locator('.classes .name').allTextContents();
    const by = (id) => page.locator('[aria-label="Colour by"]').selectOption(id);
    assert.deepEqual(await names(), ['boxes', 'cylinders']);
    await by('header');
    const headers = await colours();
    assert.ok(differ(headers[0], headers[1]) && differ(headers[1], headers[2]) && differ(headers[0], headers[2]));
    assert.deepEqual(await names(), ['P-1', 'P-2', 'V-1']);
    // The legend filters.
    await page.locator('.classes label', { hasText: 'P-2' }).locator('input').uncheck();
    await see(page, [[450, 50, isSky], [-450, 50, not(isSky)]]);
    await page.press('a');
    await by('size');
    assert.deepEqual(await names(), ['100', 'no diameter']);
    const sizes = await colours();
    assert.ok(!differ(sizes[0], sizes[2]) && differ(sizes[0], sizes[1]));
    await by('item-0');
    assert.deepEqual(await names(), ['=B3C', 'A1A', 'none']);
    const items = await colours();
    assert.ok(differ(items[0], items[2]) && differ(items[0], items[1]));
    await page.locator('.line select').selectOption('item-0');
    assert.deepEqual(await treeRows(page), ['none', 'A1A', '=B3C']);
    await page.click(page.at(450, 50));
    assert.match(await page.text('.details'), /spec=B3C/);
    return page;
  },

  async TheLegendKeepsItsColumns(browser) {
    const kinds = ['point', 'segment', 'polyline', 'triangle', 'quadrangle', 'polygon', 'reducer'];
    const elements = Array.from({ length: 21000 }, (_, i) => ({ kind: kinds[i % 7], point: [i, 0, 0], values: [] }));
    const page = await browser.open(fill(template, encode({ bounds: [[0, 0, 0], [21000, 1, 1]], elements })));
    const boxes = await Promise.all((await page.locator('.classes label').all()).map((label) => label.boundingBox()));
    assert.deepEqual(boxes.map(({ x }) => x === boxes[0].x), [true, false, true, false, true, false, true]);
    assert.ok(boxes.every(({ x, width }) => x + width <= 290));
    return page;
  },

  async AComponentIsOneThing(browser) {
    const attributes = { names: ['component', 'tag'], rows: [['valve', 'HV-7']] };
    const elements = [
      { kind: 'segment', header: 'P-1', line: [[-450, 0, -300], [-450, 0, 300]], component: 0, row: 1, values: [] },
      { ...HEAD[LEFT], component: 0, row: 1 },
      { ...HEAD[BOX], component: 1 },
      { ...HEAD[RIGHT], header: 'P-1', component: 0, row: 1 },
    ];
    const page = await open(browser, { elements, attributes });
    await page.click(page.at(450, 50));
    assert.equal(await page.text('.counts'), '4 elements, 3 selected');
    await see(page, [[-450, 50, isOrange], [450, 50, isOrange], [0, 30, isSand]]);
    assert.equal(await page.text('.component'), 'valve HV-7');
    assert.match(await page.text('.details'), /drawn assegment, 2 × cylinder/);
    assert.deepEqual(await treeRows(page), ['P-1', 'cylinders', 'valve HV-7', 'V-1']);
    assert.equal(await page.locator('.row[aria-selected=true] .name').textContent(), 'valve HV-7');
    await page.locator('.row', { hasText: 'HV-7' }).locator('.twist').click();
    assert.deepEqual(await treeRows(page), ['P-1', 'cylinders', 'valve HV-7', 'segment 1', 'cylinder 2', 'cylinder 4', 'V-1']);
    return page;
  },

  async ATextCanBeClicked(browser) {
    const page = await open(browser);
    await page.click(page.at(180, 130));
    assert.equal(await page.text('.record'), 'V-1 text');
    return page;
  },

  async SearchResultsAreSelectedAndCopied(browser) {
    const page = await open(browser);
    await page.press('/');
    await page.keyboard.type('pipe');
    await page.locator('button', { hasText: 'Select all' }).click();
    assert.equal(await page.text('.counts'), '27 elements, 2 selected');
    const table = await page.evaluate(() => vesk.copyTable());
    assert.deepEqual(table.split('\n').slice(0, 3), [
      'file,line,header,counter,kind,origin x,origin y,origin z,axis x,axis y,axis z,diameter',
      'sample.dat,1,P-1,1,cylinder,-450,0,-300,0,0,600,100',
      'sample.dat,3,P-2,3,cylinder,450,0,-300,0,0,600,100',
    ]);
    assert.equal(await page.locator('button', { hasText: 'Copy as CSV' }).count(), 1);
    return page;
  },

  async ALinkOpensTheSameView(browser) {
    const page = await open(browser);
    await page.click(page.at(450, 50));
    await page.press('h', 'p', 'e');
    await page.click(page.at(20, 20));
    await page.press('x');
    await page.locator('[aria-label="Colour by"]').selectOption('header');
    const address = await page.evaluate(() => vesk.address);
    const other = await browser.open(fill(template, scene()));
    await other.evaluate((hash) => (location.hash = hash), address);
    await other.page.waitForFunction((hash) => vesk.address === hash, address);
    await other.settle();
    assert.equal(await other.text('.counts'), '27 elements, 1 hidden, 1 selected');
    assert.equal(await other.text('.record'), 'V-1 box\nV-1 second line');
    assert.equal(await other.locator('[aria-label="Colour by"]').inputValue(), 'header');
    assert.equal(await other.locator('[data-command=section]').getAttribute('aria-pressed'), 'true');
    assert.equal(await other.evaluate(() => vesk.view.camera.isPerspective && !vesk.view.hasEdges), true);
    // The page keeps its own address true.
    await other.press('p');
    await other.page.waitForFunction(() => location.hash === `#${vesk.address}`);
    await page.close();
    return other;
  },

  async NonsenseInTheAddressIsNothing(browser) {
    const page = await open(browser);
    await page.evaluate(() => vesk.goTo('#eye=1,2,x&hidden=zzzz-zzzzz.-.!&section=1,2&by=<b>&selected=0-'));
    assert.match(await page.text('.counts'), /^27 elements/);
    await see(page, ALL_SEEN.slice(1));
    return page;
  },

  async ViewsAreSaved(browser) {
    const page = await open(browser);
    await page.press('v');
    await page.locator('[aria-label="Name of the view"]').fill('from the front');
    await page.locator('.popover button', { hasText: 'Save' }).click();
    await page.locator('.model').focus();
    await page.press('2');
    await page.locator('.views button', { hasText: 'from the front' }).click();
    await page.settle();
    await see(page, ALL_SEEN);
    await page.locator('[aria-label="Remove from the front"]').click();
    assert.equal(await page.locator('.views li').count(), 0);
    return page;
  },

  async ABoxCutsByNumbers(browser) {
    const page = await open(browser, {}, { size: LARGE });
    await page.press('x');
    await page.locator('.box summary').click();
    await page.locator('[aria-label="X from"]').fill('-60');
    await page.locator('[aria-label="X to"]').fill('60');
    await page.locator('[aria-label="X to"]').press('Enter');
    await page.locator('[aria-label="Z to"]').fill('50');
    await page.locator('[aria-label="Z to"]').press('Enter');
    await see(page, [[0, 30, isSand], [0, 80, isSky], [80, 30, isSky], [-450, 50, isSky], [450, 50, isSky]]);
    assert.equal(await page.evaluate(() => vesk.section.planes.length), 3);
    await page.locator('button', { hasText: 'No box' }).click();
    await see(page, [[450, 50, isBlue]]);
    await page.click(page.at(450, 50));
    await page.locator('button', { hasText: 'Around the selection' }).click();
    await see(page, [[450, 50, isOrange], [0, 30, isSky]]);
    return page;
  },

  // Around the cut there is one line, not a row of dots: along it the pixels are alike.
  async TheRimOfACutIsALine(browser) {
    const page = await open(browser, {
      elements: [box([-200, -100, -200], [400, 200, 400])], bounds: [[-200, -100, -200], [200, 100, 200]],
    }, { size: LARGE });
    await page.press('1', 'x');
    await page.locator('[aria-label=Axis]').selectOption('1');
    await page.locator('.popover input[type=checkbox]').check();
    await page.evaluate(() => vesk.view.drawNow());
    const rim = await page.evaluate(() => {
      const project = vesk.view.camera.projector();
      return [project([30, 0, 200]), project([180, 0, 200])]; // beside the popover
    });
    const picture = await page.picture();
    // The darkest of the pixels across the rim, at places along it.
    const tones = Array.from({ length: 40 }, (_, i) => {
      const at = (k) => rim[0][k] + ((rim[1][k] - rim[0][k]) * i) / 39;
      const across = [-2, -1, 0, 1, 2].map((dy) => picture.at(at(0), at(1) + dy).reduce((sum, x) => sum + x, 0));
      return Math.min(...across);
    });
    const spread = Math.max(...tones) - Math.min(...tones);
    assert.ok(spread < 200, `${spread}: ${tones}`);
    return page;
  },

  async MeasuresAnglesAndGaps(browser) {
    const page = await open(browser, {}, { size: LARGE });
    await page.press('m');
    const way = page.locator('[aria-label="What to measure"]');
    await way.selectOption('angle');
    // From one upper end to the lower end below it, and to the upper end on the right.
    for (const [x, z] of [[-450, -290], [-450, 295], [450, 295]]) await page.click(page.at(x, z));
    assert.match(await page.text('.measures'), /^90\u00b0/);
    await way.selectOption('gap');
    await page.click(page.at(20, 20));
    await page.click(page.at(450, 50));
    // From the face at 100 to the pipe at 450, 50 wide; of its 24 sides one corner is there.
    assert.match(await page.locator('.measures li').nth(1).textContent(), /^300 mm/);
    return page;
  },

  async PerspectiveIsKeptInAFlight(browser) {
    const page = await open(browser, {}, { reducedMotion: 'no-preference' });
    await page.evaluate(() => {
      vesk.lookFrom('top');
      vesk.run('perspective');
    });
    await page.page.waitForFunction(() => vesk.view.camera.elevation > 1.57);
    assert.equal(await page.evaluate(() => vesk.view.camera.isPerspective), true);
    return page;
  },

  async AWalkGoesThroughNoSolid(browser) {
    const wall = box([-5000, -100, -5000], [10000, 200, 10000]);
    const page = await open(browser, { elements: [wall], bounds: [[-5000, -100, -5000], [5000, 100, 5000]] });
    await page.press('w');
    const walked = await page.evaluate(() => {
      const { view, walk } = vesk;
      view.camera.azimuth = -Math.PI / 2; // looks along y
      view.camera.stand(view.camera.target.clone().set(0, -3000, 0), 4000);
      const eye = () => view.camera.eye.slice(0, 3).map((x) => Math.round(x) + 0);
      const places = [];
      walk.move(0.5, ['KeyW']);
      places.push(eye());
      for (let i = 0; i < 20; ++i) walk.move(0.5, ['KeyW']);
      places.push(eye());
      view.setStates((data) => (data[1] |= 1)); // the wall is hidden
      for (let i = 0; i < 2; ++i) walk.move(0.5, ['KeyW']);
      places.push(eye());
      return places;
    });
    assert.deepEqual(walked[0], [0, -1500, 0]); // half a second, three metres in a second
    assert.ok(walked[1][1] <= -100 - 250 && walked[1][1] > -700, `${walked[1]}`);
    assert.ok(walked[2][1] > 0, `${walked[2]}`);
    await page.press('Escape');
    assert.equal(await page.locator('[data-command=walk]').getAttribute('aria-pressed'), 'false');
    return page;
  },

  async PaperHasTheDrawingAlone(browser) {
    const page = await open(browser);
    await page.evaluate(() => dispatchEvent(new Event('beforeprint')));
    await page.page.emulateMedia({ media: 'print' });
    await page.page.waitForFunction(() => document.querySelector('.print').naturalWidth > 0);
    for (const selector of ['.bar', '.side.left', '.view-cube', '.counts']) {
      assert.equal(await page.locator(selector).isVisible(), false, selector);
    }
    const { width, height } = await page.locator('.print').boundingBox();
    assert.ok(width > 200 && height > 200, `${width} ${height}`);
    const picture = await browser.decode(await page.page.screenshot());
    let sand = 0;
    for (let x = 0; x < picture.width; x += 2) {
      for (let y = 0; y < picture.height; y += 2) sand += isSand(picture.at(x, y)) ? 1 : 0;
    }
    assert.ok(sand > 100, `${sand} pixels of the box`);
    return page;
  },

  async TextsThatTurnAreHarmless(browser) {
    const turned = 'P-1\u202egnp.exe\u2066';
    const page = await open(browser, {
      title: turned,
      elements: HEAD.map((element) => ({ ...element, header: turned, text: element.text && { ...element.text, text: turned } })),
    });
    const found = await page.evaluate(() => [
      document.title, document.querySelector('h1').textContent, document.querySelector('.row .name').textContent, vesk.overlay.texts[0].text,
    ]);
    assert.deepEqual(found, Array(4).fill('P-1\ufffdgnp.exe\ufffd'));
    return page;
  },

  async HelpListsTheKeys(browser) {
    const page = await open(browser);
    await page.press('?');
    assert.equal(await page.locator('dialog[open]').count(), 1);
    const text = await page.text('dialog');
    for (const word of ['Isolate', 'Section', 'Measure', 'Front view', 'Space']) assert.ok(text.includes(word), word);
    await page.press('Escape');
    assert.equal(await page.locator('dialog[open]').count(), 0);
    return page;
  },

  async EverythingHasANameAndTheKeyboard(browser) {
    const page = await open(browser, { marks: [{ element: BOX, level: 'note', code: '', text: '' }] });
    const nameless = await page.evaluate(() =>
      [...document.querySelectorAll('button, input, select, canvas[tabindex], [role=tree], [role=listbox]')]
        .filter((each) => !each.closest('[aria-hidden=true]'))
        .filter((each) => {
          const label = each.getAttribute('aria-label') ?? each.closest('label')?.textContent;
          return !(label ?? each.textContent).trim();
        })
        .map((each) => each.outerHTML),
    );
    assert.deepEqual(nameless, []);
    const reached = new Set();
    for (let i = 0; i < 60; ++i) {
      await page.keyboard.press('Tab');
      const name = await page.evaluate(() => {
        const { activeElement: each } = document;
        return each.getAttribute('aria-label') ?? each.textContent;
      });
      reached.add(name);
    }
    for (const name of ['Section', 'Measure', 'Help', 'Findings', 'Details']) {
      assert.ok(reached.has(name), `${name} is reached by Tab`);
    }
    assert.ok([...reached].some((name) => name?.startsWith('Model of 27 elements')));
    return page;
  },

  async SmallScreensHaveOneRowOfTools(browser) {
    const page = await browser.open(fill(template, scene()), { size: { width: 390, height: 844 }, hasTouch: true });
    assert.equal((await page.stage()).width, 390);
    const rows = new Set();
    const check = async () => {
      for (const button of await page.locator('.bar button:visible').all()) {
        const { x, y, width, height } = await button.boundingBox();
        const name = await button.getAttribute('aria-label');
        assert.ok(x >= 0 && x + width <= 390 && y >= 0, `${name} is on the screen`);
        assert.ok(width >= 44 && height >= 44, `${name}: ${width} x ${height}`);
        rows.add(y);
      }
    };
    await check();
    assert.equal(rows.size, 1);
    const { height } = await page.locator('.bar').boundingBox();
    assert.ok(height < 60, `${height}`);
    // All others are behind one of them.
    await page.locator('[aria-label="More tools"]').click();
    await check();
    for (const name of ['Perspective', 'Texts', 'Save a picture', 'Help']) {
      assert.equal(await page.locator(`.tools [aria-label="${name}"]`).isVisible(), true, name);
    }
    await page.locator('.tools [aria-label=Texts]').click();
    assert.equal(await page.locator('.tools [aria-label=Texts]').isVisible(), false);
    await page.locator('[aria-label=Tree]').click();
    assert.equal(await page.locator('.side.left').isVisible(), true);
    return page;
  },

  async ATapTellsTheDetailsOnSmallScreens(browser) {
    const page = await browser.open(fill(template, scene()), { size: { width: 390, height: 844 }, hasTouch: true });
    await page.press('3');
    assert.equal(await page.locator('.side.right').isVisible(), false);
    const { x, y, width, height } = await page.stage();
    await page.page.touchscreen.tap(x + width / 2, y + height / 2);
    await page.settle();
    assert.equal(await page.locator('.side.right').isVisible(), true);
    assert.equal(await page.text('.details h2'), 'box 2');
    // The model stays in sight above.
    assert.ok((await page.locator('.side.right').boundingBox()).y > 844 / 2);
    return page;
  },

  async NothingIsDrawnAtRest(browser) {
    const page = await open(browser);
    const frames = () => page.evaluate(() => vesk.view.statistics.frames);
    // On a slow machine a model is drawn in full only after it has stood still, so
    // that the last frame comes some time after the first.
    const pause = (ms) => page.evaluate((ms) => new Promise((done) => setTimeout(done, ms)), ms);
    let drawn = -1;
    for (let i = 0; i < 20 && drawn !== (await frames()); ++i) {
      drawn = await frames();
      await pause(500);
    }
    for (let i = 0; i < 20; ++i) await page.settle();
    await pause(1000);
    assert.equal(await frames(), drawn);
    return page;
  },

  async AnEmptyModelIsAPage(browser) {
    const empty = encode({ bounds: [[0, 0, 0], [0, 0, 0]], elements: [] });
    const page = await browser.open(fill(template, empty));
    assert.equal(await page.text('.counts'), '0 elements');
    assert.equal(await page.text('.nothing'), 'There are no elements');
    assert.equal(await page.locator('.scale').count(), 0);
    await page.press('f', '2', 'x', 'm');
    return page;
  },

  async AnOldBrowserIsTold(browser) {
    const page = await browser.open(fill(template, scene()), {
      before: () => delete globalThis.DecompressionStream,
    });
    assert.match(await page.text('[role=alert]'), /^The model can't be shown: this browser can't unpack it/);
    return page;
  },

  async TheEmptyPageIsSmall(browser) {
    assert.ok(template.length < 300e3, `${template.length} bytes`);
    return open(browser);
  },

  async DamagedDataIsSaid(browser) {
    const { head, bytes } = scene();
    const page = await browser.open(fill(template, { head, bytes: bytes.subarray(0, 99) }));
    assert.equal(await page.text('[role=alert]'), "The model can't be shown: The data of the page is incomplete");
    return page;
  },

  async WithoutWebGLItIsSaid(browser) {
    const page = await browser.open(fill(template, scene()), {
      before: () => {
        HTMLCanvasElement.prototype.getContext = () => null;
      },
    });
    assert.match(await page.text('[role=alert]'), /^The model can't be shown: this browser/i);
    page.errors = []; // the renderer says so too
    return page;
  },

  async TwoHundredThousandTakeFewDrawCalls(browser) {
    const many = encode({ ...manyPipes(200000), meshes: [unitCylinder(8)] });
    const page = await browser.open(fill(template, many), { size: { width: 760, height: 300 } });
    const statistics = (draw) =>
      page.evaluate((name) => {
        vesk.view[name]();
        return vesk.view.statistics;
      }, draw);
    const rest = await statistics('drawNow');
    assert.ok(rest.calls <= 24, `${rest.calls} draw calls`);
    // Each pipe is a few pixels: two triangles of a ribbon, drawn twice for picking and edges.
    assert.ok(rest.triangles >= 2 * 200000 * 2 && rest.triangles < 2 * 200000 * 3, `${rest.triangles} triangles`);
    assert.match(await page.text('.counts'), /^200.000 elements$/);
    // Close up only what is in the picture is drawn.
    await page.evaluate(() => vesk.view.camera.zoom(100));
    const near = await statistics('drawNow');
    assert.ok(near.triangles < rest.triangles / 10, `${near.triangles} triangles`);
    return page;
  },

  // Nineteen thousand and fifty thousand elements of which the same is seen.
  async FramesDependOnWhatIsSeen(browser) {
    const seen = [];
    for (const count of [19683, 50653]) {
      const page = await browser.open(fill(template, encode({ ...manyPipes(count), meshes: [unitCylinder(16)] })));
      seen.push(
        await page.evaluate(() => {
          vesk.view.camera.fit([[0, 0, 0], [100, 100, 100]]);
          vesk.view.camera.bounds = [[0, 0, 0], [100, 100, 100]];
          vesk.state.isolate([...Array(vesk.model.count).keys()].filter((i) => vesk.view.boxes.subarray(i * 6, i * 6 + 6).every((x) => x < 120)));
          const frame = (draw) => {
            vesk.view[draw]();
            return vesk.view.statistics.triangles;
          };
          return [frame('drawMoving'), frame('drawNow')];
        }),
      );
      await page.close();
    }
    assert.deepEqual(seen[0], seen[1]);
    return open(browser);
  },

  // Pipes of five pixels from weld to weld: the welds are points, which are not to be
  // seen through the pipes or beside them.
  async FarPointsDontHideThePlant(browser) {
    const elements = [];
    for (let row = 0; row < 30; ++row) {
      for (let i = 0; i < 60; ++i) {
        elements.push(pipe([i * 1000, 0, row * 1000], 1000, 200, 0));
        elements.push({ kind: 'point', point: [i * 1000, 0, row * 1000], values: [['vertex 0', 'p', [i * 1000, 0, row * 1000]]] });
      }
    }
    const bounds = [[0, -100, -100], [60000, 100, 30000]];
    const page = await browser.open(fill(template, encode({ bounds, meshes: MESHES, elements })));
    await page.press('3');
    const picture = await page.picture();
    const count = { red: 0, blue: 0 };
    for (let x = 0; x < picture.width; ++x) {
      for (let y = 0; y < picture.height; ++y) {
        if (isRed(picture.at(x, y))) ++count.red;
        if (isBlue(picture.at(x, y))) ++count.blue;
      }
    }
    assert.ok(count.blue > 5000 && count.red < 0.01 * count.blue, JSON.stringify(count));
    // Close up a weld between two pipes that are hidden is as large as ever.
    await page.evaluate(() => vesk.state.isolate([1]));
    await page.press('f');
    const close = await page.picture();
    assert.ok(isRed(close.at(close.width / 2, close.height / 2)));
    return page;
  },

  async LabelsAreHiddenByWhatStandsBefore(browser) {
    const text = (y) => ({
      kind: 'text', values: [['text', 't', 'WWWW']],
      text: { text: 'WWWW', position: [-80, y, -20], along: [1, 0, 0], up: [0, 0, 1], height: 60 },
    });
    const drawn = async (y) => {
      const page = await open(browser, { elements: [box([-100, -100, -100], [200, 200, 200]), text(y), ...HEAD.slice(2, 3)] });
      await page.settle();
      const count = await page.evaluate(countTexts);
      await page.close();
      return count.all;
    };
    // Before the box, and far behind it.
    assert.ok((await drawn(-110)) > 0);
    assert.equal(await drawn(2000), 0);
    return open(browser);
  },

  async LabelsLeaveThePlantAlone(browser) {
    // A wall of ten pipes with names that are too small to be read on them.
    const elements = Array.from({ length: 10 }, (_, i) => [
      pipe([0, 0, i * 100], 4000, 90, 0),
      {
        kind: 'text', values: [['text', 't', `NAME-${i}`]],
        text: { text: `NAME-${i}`, position: [2000, -60, i * 100], along: [1, 0, 0], up: [0, 0, 1], height: 20 },
      },
    ]).flat();
    const bounds = [[0, -50, -50], [4000, 50, 950]];
    const page = await browser.open(fill(template, encode({ bounds, meshes: MESHES, elements })));
    await page.press('3');
    const far = await page.evaluate(countTexts);
    assert.ok(far.all > 0 && far.over < 0.1 * far.all, JSON.stringify(far)); // beside the wall
    // Near enough they are read on their pipes.
    await page.evaluate(() => vesk.view.camera.fit([[1900, -50, 0], [2300, 50, 100]]));
    const near = await page.evaluate(countTexts);
    assert.ok(near.over > 50, JSON.stringify(near));
    return page;
  },

  async ThePlantFillsTheStage(browser) {
    // A ring of pipes in the isometric view: the corners of its box are empty.
    const elements = Array.from({ length: 72 }, (_, i) => {
      const [x, y] = [Math.cos(i / 72 * 2 * Math.PI), Math.sin(i / 72 * 2 * Math.PI)];
      return pipe([x * 5000, y * 5000, 0], 300, 100, 2);
    });
    const bounds = [[-5050, -5050, 0], [5050, 5050, 300]];
    const page = await browser.open(fill(template, encode({ bounds, meshes: MESHES, elements })));
    const picture = await page.picture();
    let [left, right, top, bottom] = [Infinity, 0, Infinity, 0];
    for (let x = 0; x < picture.width; ++x) {
      for (let y = 0; y < picture.height; ++y) {
        if (!isBlue(picture.at(x, y))) continue;
        [left, right, top, bottom] = [Math.min(left, x), Math.max(right, x), Math.min(top, y), Math.max(bottom, y)];
      }
    }
    const filled = Math.max((right - left) / picture.width, (bottom - top) / picture.height);
    assert.ok(filled > 0.88 && filled < 0.92, `${filled}`);
    return page;
  },

  async TheXrayShowsFindingsThroughAll(browser) {
    // A pipe that is marked stands behind a box, one that is not before the sky.
    const elements = [
      box([-200, -100, -200], [400, 200, 400]),
      pipe([0, 500, -150], 300, 100, 2),
      pipe([400, 0, -150], 300, 100, 2),
    ];
    const marks = [{ element: 1, level: 'error', code: 'V101', text: 'is behind' }];
    const page = await open(browser, { elements, marks, bounds: [[-500, -100, -300], [500, 550, 300]] });
    const scale = await page.evaluate(() => 1 / vesk.view.camera.unitsPerPixel);
    const { width, height } = await page.stage();
    const [tx, tz] = await page.evaluate(() => [vesk.view.camera.target.x, vesk.view.camera.target.z]);
    page.at = (x, z) => [width / 2 + (x - tx) * scale, height / 2 - (z - tz) * scale];
    await see(page, [[0, 0, isRed], [-150, 0, isPale], [400, 0, isPale]]);
    // The pointer hits what is clear.
    await page.click(page.at(0, 0));
    assert.equal(await page.text('.details h2'), 'cylinder 2');
    await page.press('Escape', 'g');
    await see(page, [[0, 0, isSand], [400, 0, isBlue]]);
    return page;
  },

  async TheXrayShowsTheSelectionThroughAll(browser) {
    const page = await open(browser);
    await page.click(page.at(450, 50));
    await page.press('g');
    await see(page, [[450, 50, isOrange], [20, 20, isPale], [-450, 50, isPale]]);
    await page.press('Escape');
    await see(page, ALL_SEEN);
    return page;
  },

  async TheFirstViewFramesWhatIsMarked(browser) {
    const far = pipe([90000, 0, 0], 1000, 300, 2, { header: 'FAR' });
    const marks = [{ element: HEAD.length, level: 'changed', code: '', text: 'is longer' }];
    const elements = [...HEAD, far];
    const bounds = [[-500, -150, -300], [90150, 300, 1000]];
    const page = await browser.open(fill(template, encode({ bounds, meshes: MESHES, elements, marks })));
    const size = await page.evaluate(() => 1000 / vesk.view.camera.height);
    assert.ok(size > 0.1, `${size} of the picture`);
    const target = await page.evaluate(() => vesk.view.camera.target.x);
    assert.ok(Math.abs(target - 90000) < 2000, `${target}`);
    return page;
  },

  async FindingsAreFlownTo(browser) {
    const marks = [LEFT, RIGHT, BOX].map((element) => ({ element, level: 'error', code: '', text: `of ${element}` }));
    const page = await open(browser, { marks });
    const target = () => page.evaluate(() => Math.round(vesk.view.camera.target.x));
    const seen = [];
    for (const key of ['n', 'n', 'n', 'n', 'b', 'b']) {
      await page.press(key);
      seen.push(await target());
    }
    assert.deepEqual(seen, [-450, 450, 0, -450, 0, 450]);
    assert.equal(await page.locator('[data-command=next]').count(), 1);
    return page;
  },

  async FarMarksGlow(browser) {
    // Of a hundred kilometres one element of ten millimetres has changed, one of a hundred.
    const elements = [pipe([0, 0, 0], 1e8, 1e6, 0), pipe([5e7, 0, 2e7], 10, 10, 2), pipe([1e7, 0, 2e7], 100, 10, 2)];
    const marks = [1, 2].map((element) => ({ element, level: 'removed', code: '', text: '' }));
    const bounds = [[0, -5e5, -5e5], [1e8, 5e5, 2e7]];
    const page = await browser.open(fill(template, encode({ bounds, meshes: MESHES, elements, marks })));
    await page.press('3');
    const { width, height } = await page.stage();
    const [x, z, units] = await page.evaluate(() => [vesk.view.camera.target.x, vesk.view.camera.target.z, vesk.view.camera.unitsPerPixel]);
    const picture = await page.picture();
    for (const place of [5e7, 1e7]) {
      const colour = picture.at(width / 2 + (place - x) / units, height / 2 - (2e7 - z) / units);
      assert.ok(isRed(colour), `${colour}`);
    }
    return page;
  },
};

// What the tool writes.
const toolChecks = {
  async ToolPageShowsTheSample(browser, { folder, vesk }) {
    vesk('import', piping, '-o', 'pump.dat', '-q');
    vesk('view', 'pump.dat', '-o', 'pump.html', '--title', 'Pump');
    const page = await browser.open('', { file: join(folder, 'pump.html') });
    assert.equal(await page.text('h1'), 'Pump');
    const lines = readFileSync(join(folder, 'pump.dat'), 'latin1').split('\n');
    // The first line of an element is 00, behind its header.
    const count = lines.filter((line) => line.slice(17, 19) === '00').length;
    assert.ok((await page.text('.counts')).startsWith(`${count} elements`));
    for (const element of [0, 100, count - 1]) {
      const [line, record] = await page.evaluate(
        (i) => [vesk.scene.elements.line[i], vesk.model.recordOf(i)],
        element,
      );
      assert.deepEqual(record, lines.slice(line - 1, line - 1 + record.length));
    }
    const picture = await page.picture();
    let blue = 0;
    for (let x = 0; x < picture.width; ++x) {
      for (let y = 0; y < picture.height; ++y) blue += isBlue(picture.at(x, y)) ? 1 : 0;
    }
    assert.ok(blue > 100, `${blue} blue pixels of pipes`);
    return page;
  },

  // Every number by every name, of both styles of records and of a plant, as the tool
  // lists them.
  async ToolPageHoldsEveryNumber(browser, { folder, vesk }) {
    writeFileSync(join(folder, 'plant.dat'), `${plant(2000).records.join('\n')}\n`);
    let opened = null;
    for (const name of ['elements.tokens.dat', 'elements.columns.dat', 'pump.dat', 'plant.dat']) {
      const file = name === 'plant.dat' ? join(folder, name) : join(golden, name);
      vesk('view', file, '-o', 'numbers.html', '-f');
      const { elements } = JSON.parse(execFileSync(tool, ['list', file, '--json'], { maxBuffer: 1 << 28 }));
      await opened?.close();
      opened = await browser.open('', { file: join(folder, 'numbers.html') });
      const found = await opened.evaluate(() => {
        const { model, scene, view } = vesk;
        const all = [...Array(model.count).keys()];
        const values = all.map((i) => Object.fromEntries(model.valuesOf(i).map(({ name, value }) => [name, value])));
        const lines = all.map((i) => scene.elements.line[i]);
        const records = new TextDecoder('latin1').decode(scene.records);
        return { values, lines, records, bounds: scene.bounds, box: view.boxOfVisible() };
      });
      assert.equal(found.records, readFileSync(file, 'latin1'), name);
      assert.deepEqual(found.lines, elements.map(({ line }) => line), name);
      elements.forEach(({ values }, i) => assert.deepEqual(found.values[i], values, `${name} ${i}`));
      found.bounds.flat().forEach((bound, k) => assert.ok(Math.abs(bound - found.box.flat()[k]) < 300, `${name} ${k}`));
    }
    return opened;
  },

  async ToolPageOfALargePlantIsSmall(browser, { folder, vesk }) {
    writeFileSync(join(folder, 'large.dat'), `${plant(200000).records.join('\n')}\n`);
    vesk('view', 'large.dat', '-o', 'large.html');
    const { size } = statSync(join(folder, 'large.html'));
    assert.ok(size < 4e6, `${size} bytes`); // 12 million were asked for; real plants are less regular
    return open(browser);
  },

  async ToolPageKnowsComponents(browser, { folder, vesk }) {
    const { records, rows } = plant(400);
    writeFileSync(join(folder, 'known.dat'), `${records.join('\n')}\n`);
    writeFileSync(join(folder, 'known.attributes.csv'), sidecar(rows));
    vesk('view', 'known.dat', '-o', 'known.html');
    const page = await browser.open('', { file: join(folder, 'known.html') });
    const found = await page.evaluate(() => {
      const all = [...Array(vesk.model.count).keys()];
      const valve = all.find((i) => vesk.model.kindOf(i) === 'cone' && vesk.model.componentName(i).startsWith('valve'));
      return {
        names: vesk.scene.attributes.names,
        known: all.filter((i) => vesk.model.attributesOf(i).length > 0).length,
        count: all.length,
        valve: [...vesk.model.together(valve)].map((i) => vesk.model.kindOf(i)),
        name: vesk.model.componentName(valve),
      };
    });
    assert.deepEqual(found.names, ['component', 'spec', 'tag']);
    assert.equal(found.known, found.count);
    assert.deepEqual(found.valve, ['cone', 'cone', 'cylinder']);
    assert.match(found.name, /^valve (HV|CV|XV)-/);
    return page;
  },

  async ToolPageNamesNoFolder(browser, { folder, vesk }) {
    const record = 'P-1     01001    00c 0 0 0,0 0 1000,100\n';
    for (const name of ['one.dat', 'two.dat']) writeFileSync(join(folder, name), record);
    vesk('view', join(folder, 'one.dat'), join(folder, 'two.dat'), join(folder, 'one.dat'), '-o', 'names.html');
    const page = await browser.open('', { file: join(folder, 'names.html') });
    const files = await page.evaluate(() => [vesk.scene.files, [...vesk.scene.elements.file]]);
    assert.deepEqual(files, [['one.dat', 'two.dat'], [0, 1, 0]]);
    assert.doesNotMatch(await page.page.title(), /\//);
    return page;
  },

  async ToolMarksWhatCheckFinds(browser, { folder, vesk }) {
    writeFileSync(
      join(folder, 'bad.dat'),
      'P-1     01001    00c 0 0 0,0 0 1000,100\n' +
        'P-1     01002    00c 500 0 0,0 0 1000,0\n' +
        'P-1     01003    00c 0 0 0,0 0 1000x,100\n',
    );
    vesk('check', 'bad.dat', '--view', '-o', 'check.html');
    const page = await browser.open('', { file: join(folder, 'check.html') });
    const marks = await page.evaluate(() => vesk.scene.marks.map(({ element, level }) => [element, level]));
    assert.ok(marks.some(([element]) => element === 1), JSON.stringify(marks));
    assert.ok(marks.some(([element, level]) => element === null && level === 'error'), JSON.stringify(marks));
    assert.match(await page.text('.marks'), /bad\.dat:3/);
    return page;
  },

  async ToolMarksWhatDiffers(browser, { folder, vesk }) {
    const records = (...pipes) =>
      pipes.map((each, i) => `P-1     0100${i + 1}    00c ${each}\n`).join('');
    writeFileSync(join(folder, 'a.dat'), records('0 0 0,0 0 900,100', '500 0 0,0 0 900,100', '1000 0 0,0 0 900,100'));
    const added = 'P-2     01001    00c 0 5000 0,9000 0 0,50\n';
    writeFileSync(join(folder, 'b.dat'), records('0 0 0,0 0 900,100', '500 40 0,0 0 900,100') + added);
    vesk('diff', 'a.dat', 'b.dat', '--view', '-o', 'diff.html');
    const page = await browser.open('', { file: join(folder, 'diff.html') });
    const marks = await page.evaluate(() =>
      vesk.scene.marks.map(({ element, level }) => `${level} ${vesk.model.placeOf(element)}`),
    );
    assert.deepEqual(marks.sort(), [
      'added b.dat:3', 'before a.dat:2', 'moved b.dat:2', 'removed a.dat:3',
    ]);
    assert.deepEqual(await page.locator('.what').allTextContents(), [
      'moved: by 0 40 0',
      'before: moved by 0 40 0',
      'removed: length 900, diameter 100',
      'added: length 9000, diameter 50',
    ]);
    return page;
  },
};

// After these a page has all that it can have beside the model, or nothing else. axe takes a
// good part of a second.
const FOR_ANYONE = new Set([
  'ClickShowsTheRecord', 'TreeGroupsByKind', 'Searches', 'CutsAreFilled', 'MeasuresAnglesAndGaps',
  'MarksAreColouredAndListed', 'FailuresAreToldAtTheElement', 'HostileTextsStayTexts',
  'ColoursByHeaderSizeAndItem', 'AComponentIsOneThing', 'SearchResultsAreSelectedAndCopied',
  'ViewsAreSaved', 'ABoxCutsByNumbers', 'WhatIsChosenCanBeReadInTheDark', 'HelpListsTheKeys',
  'EverythingHasANameAndTheKeyboard', 'SmallScreensHaveOneRowOfTools',
  'ATapTellsTheDetailsOnSmallScreens', 'AnEmptyModelIsAPage', 'AnOldBrowserIsTold',
  'DamagedDataIsSaid', 'WithoutWebGLItIsSaid', 'FindingsAreFlownTo', 'ToolMarksWhatDiffers',
]);

async function main() {
  const browser = await Browser.start(options.chromium);
  const folder = browser.folder;
  const vesk = (...words) => {
    try {
      execFileSync(tool, words, { cwd: folder, stdio: 'pipe' });
    } catch (error) {
      // 1 is an answer.
      if (error.status !== 1) throw new Error(`vesk ${words.join(' ')}: ${error.stderr}`);
    }
  };
  const all = { ...checks, ...(tool ? toolChecks : {}) };
  let failed = 0;
  let run = 0;
  for (const [name, check] of Object.entries(all)) {
    if (names.length > 0 && !names.includes(name)) continue;
    const begin = Date.now();
    ++run;
    try {
      const page = await check(browser, { folder, vesk });
      if (options.shots) await page.page.screenshot({ path: join(options.shots, `${name}.png`) });
      assert.deepEqual(page.errors, [], 'errors on the console');
      assert.equal(page.requests.length, 1, `requests: ${page.requests}`);
      if (FOR_ANYONE.has(name)) assert.deepEqual(await page.violations(), [], 'hard to reach');
      await page.close();
      console.log(`passed  ${name}  ${Date.now() - begin} ms`);
    } catch (error) {
      ++failed;
      if (options.shots) await browser.last?.page.screenshot({ path: join(options.shots, `${name}.png`) }).catch(() => {});
      await browser.last?.close().catch(() => {});
      console.log(`FAILED  ${name}\n${error.stack}`);
    }
  }
  await browser.stop();
  console.log(`${run} checks, ${failed} failures`);
  if (failed > 0 || run === 0) process.exitCode = 1;
}

await main();
