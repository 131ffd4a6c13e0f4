// SPDX-License-Identifier: MIT
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { deflateSync } from 'node:zlib';

import { classesOf, waysOf } from '../src/scene/classes.js';
import { csvOf } from '../src/scene/csv.js';
import { bytesOf, decodeScene, harmless, inflated, joinedPlanes, summed } from '../src/scene/decode.js';
import { joinLines, placesOf, plainNumbers, recordStarts, valuesOf } from '../src/scene/hints.js';
import { angleAt, measured, snap } from '../src/scene/measure.js';
import { Model } from '../src/scene/Model.js';
import { nearestOf } from '../src/scene/nearest.js';
import { Search } from '../src/scene/search.js';
import { State } from '../src/scene/State.js';
import { Tree } from '../src/scene/Tree.js';
import { Vertices } from '../src/scene/vertices.js';
import { elementsOfRuns, runsOf } from '../src/ui/Address.js';
import { FADED, GHOST, HIDDEN, SELECTED } from '../src/view/shaders.js';
import { box, encode, pipe, unitCube, unitCylinder } from './scenes.js';

// Under P-1 a pipe and a box, under V-2 two pipes.
function sample(more = {}) {
  const { head, bytes } = encode({
    bounds: [[0, 0, 0], [1000, 1000, 1000]],
    meshes: [unitCylinder(), unitCube()],
    elements: [
      pipe([0, 0, 0], 1000, 100, 0, { header: 'P-1', record: 'P-1 c 0 0 0,1000 0 0,100' }),
      pipe([0, 0, 500], 400, 50, 1, { header: 'V-2', record: 'V-2 c first\nV-2 second line' }),
      box([0, 0, 0], [10, 20, 30], { header: 'P-1', record: 'P-1 b Grüße' }),
      pipe([9, 0, 0], 70, 5, 2, { header: 'V-2', record: 'V-2 </script>' }),
    ],
    ...more,
  });
  return decodeScene(head, bytes);
}

const model = () => new Model(sample());

test('Base64Decodes', () => {
  assert.deepEqual([...bytesOf('AAEC/w==')], [0, 1, 2, 255]);
});

test('ZlibIsUnpacked', async () => {
  const text = 'a plant '.repeat(1000);
  assert.equal(Buffer.from(await inflated(deflateSync(text))).toString(), text);
});

test('DamagedZlibIsRefused', async () => {
  await assert.rejects(inflated(deflateSync('a plant').subarray(0, 9)), /incomplete/);
});

test('PlanesAreLowestBytesFirst', () => {
  assert.deepEqual([...joinedPlanes(Uint8Array.of(1, 2, 0, 1, 0, 0, 0, 255), 2)], [1, 0xff000102]);
});

test('StepsGoUpAndDown', () => {
  // 2 up, 1 down, 0, 4294967295 up, which is 1 down: twice the step, and 1 for down less 1.
  assert.deepEqual([...summed(Uint32Array.of(4, 1, 0, 3))], [2, 1, 1, 4294967295]);
});

// What a line holds behind its first 19 bytes.
const numbers = [
  ['Plain', 'c 1 2.5 -3', [1, 2.5, -3]],
  ['WithCommas', 'c 1,2,.5', [1, 2, 0.5]],
  ['ExactAsTheText', 'c 215343.6,0.1', [215343.6, 0.1]],
  ['MinusZero', 'c -0', [-0]],
  ['Plus', 'c +7', [7]],
  ['ExponentsAreTwoNumbers', 'c 1e3', [1, 3]],
  ['WornTogetherIsNone', 'c 1-2 1.2.3 5', [5]],
  ['SixteenDigitsAreTooMany', 'c 1234567890123456 123456789012345', [123456789012345]],
  ['OnlyBehindTheHeadOfEveryLine', 'c 1\nP-1     01001    01c 2', [1, 2]],
];

for (const [name, line, expected] of numbers) {
  test(`Numbers: ${name}`, () => {
    const bytes = new TextEncoder().encode(`P-1     01001    00${line}\n`);
    const found = [];
    const count = plainNumbers(bytes, 0, bytes.length, found);
    assert.equal(count, expected.length);
    expected.forEach((each, i) => assert.ok(Object.is(found[i], each), `${found}`));
  });
}

test('LinesArePutTogether', () => {
  const lines = ['short\n', 'exactly 19 letters!\n', 'one more than that all\n', '\n'];
  const count = lines.length;
  const heads = new Uint8Array(count * 19).fill(10);
  lines.forEach((line, i) => [...line.slice(0, 19)].forEach((c, k) => (heads[k * count + i] = c.charCodeAt(0))));
  const rests = new TextEncoder().encode(lines.map((line) => line.slice(19)).join(''));
  const whole = joinLines(heads, rests, lines.join('').length);
  assert.equal(new TextDecoder().decode(whole), lines.join(''));
  assert.deepEqual([...recordStarts(whole, [1, 2, 1])], [0, 6, 49, 50]);
});

test('ValuesFollowFromTheRecord', () => {
  const records = new TextEncoder().encode('P-1     01001    00l pt 1 2 3,pt 10 0 0.5,7\n');
  const hint = (mode, skipped) => 1 + mode + 8 * skipped;
  const values = valuesOf({
    layouts: [[['vertex 0', 'p'], ['vertex 1', 'p'], ['text', 't'], ['size', 'n'], ['other', 'n']]],
    layoutOf: [0],
    starts: Uint32Array.of(0, 9),
    records,
    recordStarts: [0, records.length],
    hints: [hint(0, 0), hint(0, 0), hint(0, 0), hint(1, 0), hint(3, 0), hint(1, 0), hint(0, 0), 0],
    literals: [0.25],
    texts: [4],
  });
  assert.deepEqual([...values], [1, 2, 3, 11, 2, 3.5, 4, 7, 0.25]);
});

test('PlacesFollowFromTheValues', () => {
  const of = (value, operation) => 6 + value + 62 * operation;
  const numbers = placesOf({
    elements: [1],
    axes: [-1, -1, -1, 1, -1, -1, -1],
    values: [99, 10, 20],
    starts: [0, 1],
    offset: [0, 5, 0],
    hints: [0, 1, 4, of(0, 0), of(1, 3), 5, of(0, 2)],
    literals: [1.5],
  });
  // Itself, nothing, minus one, 10 - 5, minus half of 20, the third before, half of 10.
  assert.deepEqual([...numbers], [1.5, 0, -1, 5, -10, -1, 5]);
});

test('AnotherSchemaIsRefused', () => {
  assert.throws(() => decodeScene({ schema: 'vesk-scene/1' }, new Uint8Array()), /vesk-scene\/1/);
});

test('DataThatIsCutOffIsRefused', () => {
  const { head, bytes } = encode({ bounds: [[0, 0, 0], [1, 1, 1]], elements: [pipe([0, 0, 0], 1, 1, 0)] });
  assert.throws(() => decodeScene(head, bytes.subarray(0, bytes.length - 8)), /incomplete/);
});

test('ValuesAreExactDoubles', () => {
  const scene = sample({ elements: [pipe([0.1, -1e-9, 123456789.123], 1 / 3, 5, 2)] });
  assert.deepEqual(new Model(scene).valuesOf(0), [
    { name: 'origin', type: 'p', value: [0.1, -1e-9, 123456789.123] },
    { name: 'axis', type: 'o', value: [0, 0, 1 / 3] },
    { name: 'diameter', type: 'n', value: 5 },
  ]);
});

test('ValuesOfLaterElementsAreFound', () => {
  // Three values of 3, 3 and 1 numbers lie before those of the box.
  assert.deepEqual(model().valuesOf(2).map(({ value }) => value), [
    [0, 0, 0], [10, 0, 0], [0, 20, 0], [0, 0, 30],
  ]);
});

test('TextsAreLookedUp', () => {
  const scene = sample({
    elements: [
      { kind: 'text', values: [['position', 'p', [1, 2, 3]], ['text', 't', 'A & B']] },
      { kind: 'text', values: [['position', 'p', [1, 2, 3]], ['text', 't', 'C']] },
    ],
  });
  assert.equal(new Model(scene).valuesOf(1)[1].value, 'C');
});

test('RecordsKeepTheirLines', () => {
  assert.deepEqual(model().recordOf(1), ['V-2 c first', 'V-2 second line']);
  assert.deepEqual(model().recordOf(2), ['P-1 b Grüße']);
});

test('PlacesAreEndsOfAxesAndCorners', () => {
  assert.deepEqual(model().placesOf(1), [
    { name: 'origin', point: [0, 0, 500] },
    { name: 'end of axis', point: [0, 400, 500] },
  ]);
});

test('NamesTellKindCounterAndLine', () => {
  assert.equal(model().nameOf(3), 'cylinder 4');
  assert.equal(model().placeOf(3), 'sample.dat:4');
});

const searches = [
  ['NoWordsFindNothingInParticular', '  ', null],
  ['AHeaderInAnyCase', 'v-2', [1, 3]],
  ['AKind', 'box', [2]],
  ['ARecord', 'SECOND', [1]],
  ['AllWordsMustBeThere', 'p-1 cylinder', [0]],
  ['TextBeyondAscii', 'grüße', [2]],
  ['MarkupIsText', '</script>', [3]],
  ['NothingFound', 'nowhere', []],
  ['TheFile', 'sample.dat', [0, 1, 2, 3]],
  ['NoWordAcrossRecords', '100v-2', []],
];

for (const [name, query, expected] of searches) {
  test(`Search: ${name}`, () => {
    const found = new Search(model()).find(query);
    const elements = found && [...found.keys()].filter((element) => found[element]);
    assert.deepEqual(elements, expected);
  });
}

// A row in words: "P-1 (2)" for a group of two, "#3" for an element.
function rowsOf(tree) {
  return tree.rows.map((row) =>
    Tree.isGroup(row) ? `${tree.groupOf(row).name} (${tree.elementsOf(row).length})` : `#${row}`,
  );
}

test('TreeBeginsClosed', () => {
  assert.deepEqual(rowsOf(new Tree(model())), ['P-1 (2)', 'V-2 (2)']);
});

test('TreeOpensGroups', () => {
  const tree = new Tree(model());
  tree.setOpen(tree.rows[1], true);
  assert.deepEqual(rowsOf(tree), ['P-1 (2)', 'V-2 (2)', 'cylinders (2)']);
  tree.setOpen(tree.rows[2], true);
  assert.deepEqual(rowsOf(tree), ['P-1 (2)', 'V-2 (2)', 'cylinders (2)', '#1', '#3']);
  tree.setOpen(tree.rows[1], false);
  assert.deepEqual(rowsOf(tree), ['P-1 (2)', 'V-2 (2)']);
});

test('TreeGroupsByKind', () => {
  const tree = new Tree(model());
  tree.by = 'kind';
  assert.deepEqual(rowsOf(tree), ['boxes (1)', 'cylinders (3)']);
});

test('TreeRevealsAnElement', () => {
  const tree = new Tree(model());
  const index = tree.reveal(2);
  assert.equal(tree.rows[index], 2);
  assert.deepEqual(rowsOf(tree), ['P-1 (2)', 'boxes (1)', '#2', 'cylinders (1)', 'V-2 (2)']);
  assert.equal(tree.parentOf(2), 1);
  assert.equal(tree.parentOf(1), 0);
  assert.equal(tree.parentOf(0), -1);
});

test('TreeShowsWhatWasFoundAndOpensIt', () => {
  const tree = new Tree(model());
  tree.filter(Uint8Array.from([0, 1, 0, 0]));
  assert.deepEqual(rowsOf(tree), ['V-2 (1)', 'cylinders (1)', '#1']);
  assert.equal(tree.reveal(0), -1);
  tree.filter(null);
  assert.equal(tree.order.length, 4);
});

const stateOf = (marks = []) => new State(new Model(sample({ marks })));

// [colour number, flags] of an element.
function styleOf(state, element) {
  const data = new Uint8Array(2 * 4);
  state.fillStyles(data);
  return [...data.subarray(element * 2, element * 2 + 2)];
}

test('NothingIsHiddenAtFirst', () => {
  const state = stateOf();
  assert.equal(state.hiddenCount, 0);
  assert.deepEqual(styleOf(state, 2), [7, 0]); // the box is the eighth kind
});

test('IsolatingHidesTheRest', () => {
  const state = stateOf();
  state.isolate([1, 2]);
  assert.deepEqual([...state.hidden], [1, 0, 0, 1]);
  assert.equal(styleOf(state, 0)[1], HIDDEN);
  assert.equal(state.shownOf([1, 2]), 'all');
  assert.equal(state.shownOf([2, 3]), 'some');
  assert.equal(state.shownOf([0, 3]), 'none');
  state.showAll();
  assert.equal(state.hiddenCount, 0);
});

test('SelectingMoreTurnsOver', () => {
  const state = stateOf();
  state.select([1]);
  state.select([2], true);
  assert.deepEqual([[...state.selected], state.last], [[1, 2], 2]);
  state.select([2], true);
  assert.deepEqual([[...state.selected], state.last], [[1], 1]);
  assert.equal(styleOf(state, 1)[1], SELECTED);
  state.select([]);
  assert.deepEqual([[...state.selected], state.last], [[], -1]);
});

test('TheGravestMarkColours', () => {
  const state = stateOf([
    { element: 1, level: 'note', text: '' },
    { element: 1, level: 'error', text: '' },
    { element: 2, level: 'before', text: '' },
    { element: null, level: 'error', text: 'of the file' },
  ]);
  assert.equal(state.levelOf(1), 'error');
  assert.deepEqual(styleOf(state, 1), [13, 0]); // the first colour behind 13 kinds
  assert.equal(styleOf(state, 2)[1], GHOST);
  assert.equal(styleOf(state, 0)[1], FADED);
  state.setXray(false);
  assert.equal(styleOf(state, 0)[1], 0);
});

test('WhatIsSelectedIsClearInTheXray', () => {
  const state = stateOf();
  state.setXray(true);
  assert.equal(styleOf(state, 0)[1], 0); // nothing is selected: all is clear
  state.select([2]);
  assert.deepEqual([0, 1, 2].map((element) => styleOf(state, element)[1]), [FADED, FADED, SELECTED]);
});

test('TheToolChoosesWhatIsShown', () => {
  // 1 is around what is to be seen, 2 is left out.
  const elements = [0, 1, 2].map((shown) => pipe([0, 0, 0], 10, 5, 0, { shown }));
  const state = new State(new Model(sample({ elements })));
  const flags = () => [0, 1, 2].map((element) => styleOf(state, element)[1] & (FADED | HIDDEN));
  assert.deepEqual(flags(), [0, FADED, HIDDEN]);
  state.showAll();
  assert.deepEqual(flags(), [0, FADED, 0]);
});

test('VerticesStandAtTheirPlaces', () => {
  // The corners of the box of 10, 20, 30 at the origin; a corner comes three times.
  const corners = new Set(new Vertices(sample()).of(2).map((point) => point.join(' ')));
  assert.deepEqual([...corners].sort(), [
    '0 0 0', '0 0 30', '0 20 0', '0 20 30', '10 0 0', '10 0 30', '10 20 0', '10 20 30',
  ]);
});

test('VerticesOfWhatHasNoneAreNone', () => {
  assert.deepEqual(new Vertices(sample({ elements: [{ kind: 'point', point: [0, 0, 0] }] })).of(0), []);
});

// A unit is a pixel, the eye looks along z.
const snapAt = (x, y, places, vertices) =>
  snap({ places, vertices, surface: [x, y, 7], project: (point) => point, x, y });

const snaps = [
  ['APlaceNearby', [100, 100], [{ name: 'origin', point: [110, 100, 1] }], [], 'origin'],
  ['APlaceTooFarAway', [100, 100], [{ name: 'origin', point: [115, 100, 1] }], [], 'surface'],
  ['TheNearestPlace', [100, 100], [{ name: 'a', point: [110, 100, 1] }, { name: 'b', point: [95, 100, 1] }], [], 'b'],
  ['APlaceWinsOverAVertex', [100, 100], [{ name: 'a', point: [113, 100, 1] }], [[101, 100, 1]], 'a'],
  ['TheOneInFront', [100, 100], [{ name: 'a', point: [105, 100, 9] }, { name: 'b', point: [95, 100, 1] }], [], 'b'],
  ['AVertexNearby', [100, 100], [], [[104, 103, 1]], 'vertex'],
  ['AVertexTooFarAway', [100, 100], [], [[111, 100, 1]], 'surface'],
];

for (const [name, [x, y], places, vertices, expected] of snaps) {
  test(`Snap: ${name}`, () => {
    assert.equal(snapAt(x, y, places, vertices).name, expected);
  });
}

test('MeasuresAreDistanceAndParts', () => {
  // 2, 3, 6: 4 + 9 + 36 = 49 = 7 * 7
  assert.deepEqual(measured([1, 1, 1], [3, 4, 7]), { distance: 7, delta: [2, 3, 6] });
});

// Two headers; a valve of two cones under P-1, one of them with its centre line.
function plantOfComponents() {
  const cone = (more) => pipe([0, 0, 0], 10, 5, 0, { kind: 'cone', header: 'P-1', ...more });
  return new Model(
    sample({
      elements: [
        { kind: 'segment', header: 'P-1', line: [[0, 0, 0], [1, 0, 0]], values: [], component: 0, row: 1 },
        cone({ component: 0, row: 1 }),
        cone({ component: 0, row: 1, values: [['diameter 1', 'n', 80], ['diameter 2', 'n', 40]] }),
        pipe([0, 0, 0], 10, 40, 0, { header: 'V-2', component: 1, group: 'G' }),
        pipe([0, 0, 0], 10, 60, 0, { header: 'V-2', component: 2, file: 1 }),
      ],
      files: ['a.dat', 'b.dat'],
      attributes: { names: ['component', 'tag'], rows: [['valve', 'HV-7']] },
    }),
  );
}

test('AComponentIsKnownByItsElements', () => {
  const plant = plantOfComponents();
  assert.deepEqual([...plant.together(1)], [0, 1, 2]);
  assert.equal(plant.principalOf(0), 1); // the first that is no line
  assert.equal(plant.componentName(2), 'valve HV-7');
  assert.equal(plant.componentName(4), 'cylinder 5');
  assert.deepEqual(plant.attributesOf(3), []);
});

const colourings = [
  ['kind', ['segments 1', 'cylinders 2', 'cones 2']],
  ['header', ['P-1 3', 'V-2 2']],
  ['group', ['no group 4', 'G 1']],
  ['file', ['a.dat 4', 'b.dat 1']],
  // The second cone names 80 first.
  ['size', ['5 1', '40 1', '60 1', '80 1', 'no diameter 1']],
  ['item-1', ['HV-7 3', 'none 2']],
];

for (const [way, expected] of colourings) {
  test(`ColoursBy: ${way}`, () => {
    const plant = plantOfComponents();
    assert.ok(waysOf(plant).some(({ id }) => id === way));
    const { classes, colours } = classesOf(plant, new State(plant), way);
    assert.deepEqual(classes.map(({ name, elements }) => `${name} ${elements.length}`), expected);
    for (const { colour, elements } of classes) for (const element of elements) assert.equal(colours[element], colour);
    assert.equal(new Set(classes.map(({ colour }) => colour)).size, classes.length);
  });
}

test('AComponentIsARowOfTheTree', () => {
  const tree = new Tree(plantOfComponents());
  assert.equal(tree.reveal(0), 2); // header, kind of its principal element, component
  assert.deepEqual(tree.rows.map((row) => (Tree.isGroup(row) ? tree.groupOf(row).name : row)), [
    'P-1', 'cones', 'valve HV-7', 'V-2',
  ]);
  tree.setOpen(tree.rows[2], true);
  assert.deepEqual(tree.rows.slice(3, 6), [0, 1, 2]);
  assert.equal(tree.levelOf(0), 4);
  assert.equal(tree.levelOf(3), 3);
});

const fields = [
  ['Text', 'plain', 'plain'],
  ['Number', -2.5, '-2.5'],
  ['Quotes', 'a "b", c', '"a ""b"", c"'],
  ['Formula', '=1+1', "'=1+1"],
  ['FormulaWithQuotes', '=a,"b"', '"\'=a,""b"""'],
];
for (const [name, value, text] of fields) {
  test(`Csv: ${name}`, () => assert.equal(csvOf([[value, 'x']]), `${text},x\n`));
}

const runs = [[[], ''], [[5], '5'], [[2, 0, 1, 36], '0-2.10'], [[0, 2, 4], '0.2.4']];
for (const [elements, text] of runs) {
  test(`Runs: ${text}`, () => {
    assert.equal(runsOf(elements), text);
    assert.deepEqual(elementsOfRuns(text, 100), [...elements].sort((a, b) => a - b));
  });
}

test('TooManyRunsAreLeftOut', () => {
  assert.equal(runsOf(Array.from({ length: 5000 }, (_, i) => 2 * i)), null);
  assert.deepEqual(elementsOfRuns('0-zzzzzz', 3), [0, 1, 2]);
});

// Expected distances by hand.
const flat = (x, y, z, size = 1) => [[[x, y, z], [x + size, y, z], [x, y + size, z]]];
const gaps = [
  ['FaceToFace', flat(0, 0, 0), flat(0, 0, 3), 3],
  ['EdgeToCorner', flat(0, 0, 0), flat(4, 4, 0), Math.hypot(3.5, 3.5)], // (0.5, 0.5) to (4, 4)
  ['PointOverAFace', flat(0, 0, 0, 9), [Array(3).fill([1, 1, 2])], 2],
  ['CrossingLines', [[[-1, 0, 0], [1, 0, 0], [1, 0, 0]]], [[[0, -1, 5], [0, 1, 5], [0, 1, 5]]], 5],
  ['ThroughEachOther', flat(0, 0, 0, 9), [[[1, 1, -1], [1, 1, 1], [1, 1, 1]]], 0],
];
for (const [name, one, other, distance] of gaps) {
  test(`Gap: ${name}`, () => {
    for (const [a, b] of [[one, other], [other, one]]) {
      assert.ok(Math.abs(nearestOf(a, b).distance - distance) < 1e-9, `${nearestOf(a, b).distance}`);
    }
  });
}

test('AnglesAreThoseAtTheCorner', () => {
  assert.ok(Math.abs(angleAt([1, 1, 0], [2, 1, 0], [1, 5, 0]) - 90) < 1e-9);
  assert.ok(Math.abs(angleAt([0, 0, 0], [1, 0, 0], [-3, 3, 0]) - 135) < 1e-9);
});

test('TurningCharactersAreShown', () => {
  assert.deepEqual(harmless({ a: ['x\u202ey', 1, null] }), { a: ['x\ufffdy', 1, null] });
});
