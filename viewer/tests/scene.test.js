import assert from 'node:assert/strict';
import { test } from 'node:test';

import { bytesOf, decodeScene } from '../src/scene/decode.js';
import { measured, snap } from '../src/scene/measure.js';
import { Model } from '../src/scene/Model.js';
import { Search } from '../src/scene/search.js';
import { State } from '../src/scene/State.js';
import { Tree } from '../src/scene/Tree.js';
import { Vertices } from '../src/scene/vertices.js';
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

test('AnotherSchemaIsRefused', () => {
  assert.throws(() => decodeScene({ schema: 'vesk-scene/2' }, new Uint8Array()), /vesk-scene\/2/);
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

test('NothingIsHiddenAtFirst', () => {
  const state = stateOf();
  assert.equal(state.hiddenCount, 0);
  assert.deepEqual(state.styleOf(2), [7, 0]); // the box is the eighth kind
});

test('IsolatingHidesTheRest', () => {
  const state = stateOf();
  state.isolate([1, 2]);
  assert.deepEqual([...state.hidden], [1, 0, 0, 1]);
  assert.equal(state.styleOf(0)[1], HIDDEN);
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
  assert.equal(state.styleOf(1)[1], SELECTED);
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
  assert.deepEqual(state.styleOf(1), [13, 0]); // the first colour behind 13 kinds
  assert.equal(state.styleOf(2)[1], GHOST);
  assert.equal(state.styleOf(0)[1], FADED);
  state.setFades(false);
  assert.equal(state.styleOf(0)[1], 0);
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
