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
import { readFileSync, writeFileSync } from 'node:fs';
import { join, resolve } from 'node:path';
import { parseArgs } from 'node:util';

import { Browser } from './browser.js';
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

// The page in the front view: x to the right, z up, the bounds in the middle with
// a margin of 15 % in the narrower direction, here the width.
async function open(browser, more = {}, options = {}) {
  const page = await browser.open(fill(template, scene(more)), options);
  await page.press('3');
  const { width, height } = await page.stage();
  const scale = width / (1000 * 1.15);
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

const checks = {
  async DrawsWhatThereIs(browser) {
    const page = await open(browser);
    await see(page, [...ALL_SEEN, [-250, 200, isSky], [300, -150, isSky], [0, 250, isOrange], [0, -200, isRed]]);
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
    assert.equal(await page.text('.popover output'), '0 mm');
    await page.click(page.at(450, 50));
    assert.match(await page.text('.details'), /^Click an element/);
    await page.locator('.popover input[type=checkbox]').check();
    await see(page, [[450, 50, isBlue], [50, 30, isSand], [-50, 30, not(isSand)], [-450, 50, isSky]]);
    await page.locator('.popover select').selectOption('2'); // z = 0: the lower half
    await see(page, [[-450, 50, isBlue], [-450, -100, isSky]]);
    await page.locator('.popover:visible button').click();
    await see(page, ALL_SEEN);
    // Texts are cut too: this one begins at x = 150.
    await page.press('x');
    await page.locator('.popover select').selectOption('0');
    await page.locator('.popover input[type=checkbox]').uncheck();
    await see(page, [[160, 120, isSky]]);
    return page;
  },

  async CutsAreFilled(browser) {
    const page = await open(browser);
    await page.press('x');
    await page.locator('.popover select').selectOption('1');
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
    const scale = Math.min(height / (600 * 1.15), width / (400 * 1.15));
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
    // 200 by 200 with a margin of 15 %; in the fourth corner stands the cube.
    const half = (Math.min(width, height) / 1.15) * 0.47;
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
    await page.press('Escape', '3', 'g'); // nothing is faded now
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
    assert.deepEqual(found, [0, 3, 'undefined']);
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

  async SmallScreensShowTheModelFirst(browser) {
    const page = await browser.open(fill(template, scene()), { size: { width: 390, height: 500 } });
    assert.equal((await page.stage()).width, 390);
    for (const button of await page.locator('.bar button').all()) {
      const { x, width } = await button.boundingBox();
      assert.ok(x >= 0 && x + width <= 390, `${await button.getAttribute('aria-label')} is on the screen`);
    }
    await page.locator('[aria-label=Tree]').click();
    assert.equal(await page.locator('.side.left').isVisible(), true);
    return page;
  },

  async NothingIsDrawnAtRest(browser) {
    const page = await open(browser);
    const frames = () => page.evaluate(() => vesk.view.statistics.frames);
    const before = await frames();
    for (let i = 0; i < 20; ++i) await page.settle();
    assert.equal(await frames(), before);
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
    // Each pipe has 28 triangles; for picking and edges they are drawn a second time.
    assert.ok(rest.triangles >= 2 * 200000 * 28, `${rest.triangles} triangles`);
    // The pipes are four pixels long at most; in motion the larger ones are there.
    const moving = await statistics('drawMoving');
    assert.ok(moving.triangles >= 50000 * 28, `${moving.triangles} triangles`);
    assert.ok(moving.triangles < rest.triangles / 2, `${moving.triangles} triangles`);
    assert.match(await page.text('.counts'), /^200.000 elements$/);
    return page;
  },
};

// What the tool writes.
const toolChecks = {
  async ToolPageShowsTheSample(browser, { folder, vesk }) {
    execFileSync(tool, ['import', piping, 'pump'], { cwd: folder, stdio: 'ignore' });
    vesk('view', 'veskpump.dat', '-o', 'pump.html', '--title', 'Pump');
    const page = await browser.open('', { file: join(folder, 'pump.html') });
    assert.equal(await page.text('h1'), 'Pump');
    assert.match(await page.text('.counts'), /^222 elements/);
    const lines = readFileSync(join(folder, 'veskpump.dat'), 'latin1').split('\n');
    for (const element of [0, 100, 221]) {
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
      await page.close();
      console.log(`passed  ${name}  ${Date.now() - begin} ms`);
    } catch (error) {
      ++failed;
      if (options.shots) await browser.last?.page.screenshot({ path: join(options.shots, `${name}.png`) });
      console.log(`FAILED  ${name}\n${error.stack}`);
    }
  }
  await browser.stop();
  console.log(`${run} checks, ${failed} failures`);
  if (failed > 0 || run === 0) process.exitCode = 1;
}

await main();
