// SPDX-License-Identifier: MIT
import assert from 'node:assert/strict';
import { test } from 'node:test';

import { countText, elementsText, lengthText, numberText, scaleBar } from '../src/ui/numbers.js';
import { between, Camera, VIEWS } from '../src/view/Camera.js';
import { DepthImage } from '../src/view/DepthImage.js';
import { Outline } from '../src/view/Outline.js';
import { insideOf } from '../src/view/Overlay.js';
import { KIND_COLOURS, LEVELS, MOST_COLOURS } from '../src/view/palette.js';
import { boxOf, coarse, edgesOf, FEW_PLACES, MOST_CORNERS, partsOf } from '../src/view/parts.js';
import { AT_REST, Places, Sight } from '../src/view/Places.js';
import { HIDDEN } from '../src/view/shaders.js';
import { decodeScene } from '../src/scene/decode.js';
import { box, encode, pipe, triangle, unitCube, unitCylinder } from './scenes.js';

const numbers = [
  [0, '0'], [-0, '0'], [12, '12'], [12.5, '12.5'], [1 / 3, '0.333'], [0.0004, '0.0004'],
  [-1e-7, '-1e-7'], [123456789.1234, '123456789.123'], [1e21, '1e+21'], [NaN, 'NaN'],
];
for (const [value, text] of numbers) {
  test(`Number: ${text}`, () => assert.equal(numberText(value), text));
}

test('LengthsHaveTheirUnit', () => assert.equal(lengthText(12.5, 'mm'), '12.5 mm'));
test('LengthsWithoutAUnit', () => assert.equal(lengthText(12.5, ''), '12.5'));
test('NoElements', () => assert.equal(elementsText(0), '0 elements'));
test('OneElement', () => assert.equal(elementsText(1), '1 element'));
test('ManyElements', () => assert.equal(elementsText(2000), '2\u202f000 elements'));
test('CountsAreGrouped', () => assert.equal(countText(1234567), '1\u202f234\u202f567'));

// At most 150 pixels: the room is 150 times the units of a pixel.
const bars = [
  ['OneToOne', 1, 'mm', 100, '100 mm'], // room for 150
  ['TwoHundred', 1.5, 'mm', 200 / 1.5, '200 mm'], // 225
  ['Metres', 10, 'mm', 100, '1 m'], // 1500
  ['Kilometres', 40000, 'mm', 125, '5 km'], // 6000000
  ['SmallParts', 0.0008, 'mm', 125, '0.1 mm'], // 0.12
  ['AnotherUnit', 10, 'ft', 100, '1000 ft'],
];
for (const [name, unitsPerPixel, unit, pixels, text] of bars) {
  test(`ScaleBar: ${name}`, () => {
    const bar = scaleBar(unitsPerPixel, unit);
    assert.equal(bar.text, text);
    assert.ok(Math.abs(bar.pixels - pixels) < 1e-9);
  });
}

function cameraOf(view) {
  const camera = new Camera();
  camera.resize(200, 100);
  camera.look(VIEWS[view]);
  camera.bounds = [[0, 0, 0], [100, 100, 100]];
  return camera;
}

const nearly = (a, b, within = 1e-9) =>
  assert.ok(b.every((x, i) => Math.abs(x - b[i]) <= within), `${a} instead of ${b}`);

// What points to the right, up and to the eye.
const axes = [
  ['top', [1, 0, 0], [0, 1, 0], [0, 0, 1]],
  ['bottom', [1, 0, 0], [0, -1, 0], [0, 0, -1]],
  ['front', [1, 0, 0], [0, 0, 1], [0, -1, 0]],
  ['right', [0, 1, 0], [0, 0, 1], [1, 0, 0]],
  ['back', [-1, 0, 0], [0, 0, 1], [0, 1, 0]],
  ['left', [0, -1, 0], [0, 0, 1], [-1, 0, 0]],
];
for (const [view, right, up, toEye] of axes) {
  test(`View: ${view}`, () => {
    const is = cameraOf(view).axes();
    nearly(is.right.toArray(), right);
    nearly(is.up.toArray(), up);
    nearly(is.toEye.toArray(), toEye);
  });
}

test('IsometricShowsTheAxesAlike', () => {
  const project = cameraOf('iso').projector();
  const origin = project([0, 0, 0]);
  const lengths = [[1, 0, 0], [0, 1, 0], [0, 0, 1]].map((end) => {
    const [x, y] = project(end);
    return Math.hypot(x - origin[0], y - origin[1]);
  });
  nearly(lengths, [lengths[0], lengths[0], lengths[0]], 1e-6);
});

for (const isPerspective of [false, true]) {
  const kind = isPerspective ? 'Perspective' : 'Orthographic';
  test(`${kind}FitShowsAllCorners`, () => {
    const camera = cameraOf('iso');
    camera.isPerspective = isPerspective;
    camera.fit([[0, 0, 0], [100, 10, 50]]);
    const project = camera.projector();
    for (const x of [0, 100]) {
      for (const y of [0, 10]) {
        for (const z of [0, 50]) {
          const [px, py, depth] = project([x, y, z]);
          assert.ok(px > 0 && px < 200 && py > 0 && py < 100 && Math.abs(depth) <= 1, `${px} ${py} ${depth}`);
        }
      }
    }
  });

  test(`${kind}TargetIsTheMiddle`, () => {
    const camera = cameraOf('iso');
    camera.isPerspective = isPerspective;
    camera.target.set(10, 20, 30);
    nearly(camera.projector()([10, 20, 30]).slice(0, 2), [100, 50], 1e-6);
  });
}

// The model's diagonal is 100 sqrt(3); nine tenths of the picture are filled.
test('FitOfAPointShowsATwentiethOfTheModel', () => {
  const camera = cameraOf('iso');
  camera.fit([[7, 8, 9], [7, 8, 9]]);
  assert.ok(Math.abs(camera.height - 5 * Math.sqrt(3) / 0.9) < 1e-9, `${camera.height}`);
  nearly(camera.target.toArray(), [7, 8, 9]);
});

test('FitOfAPointThatIsAllShowsAMetre', () => {
  const camera = cameraOf('iso');
  camera.bounds = [[7, 8, 9], [7, 8, 9]];
  camera.fit(camera.bounds);
  assert.ok(Math.abs(camera.height - 1000 / 0.9) < 1e-9);
});

// A label of 30 pixels in a room of 100.
const labels = [
  ['WhereItsPlaceIs', 20, 20],
  ['LeftOfItsPlaceAtTheBorder', 90, 70],
  ['NotInTheRoom', 101, 101],
  ['NotInTheRoomOnTheLeft', -5, -5],
];
for (const [name, x, left] of labels) {
  test(`Label: ${name}`, () => assert.equal(insideOf(x, 30, 100), left));
}
test('Label: WiderThanTheRoom', () => assert.equal(insideOf(20, 130, 100), 0));

test('PanMovesByPixels', () => {
  const camera = cameraOf('iso');
  camera.height = 40;
  const before = camera.projector()([1, 2, 3]);
  camera.pan(7, -5);
  const after = camera.projector()([1, 2, 3]);
  nearly([after[0] - before[0], after[1] - before[1]], [7, -5], 1e-6);
});

test('ZoomKeepsWhatIsUnderThePointer', () => {
  const camera = cameraOf('top');
  camera.height = 40;
  const before = camera.projector()([5, 3, 0]);
  camera.zoom(2, before[0], before[1]);
  assert.equal(camera.height, 20);
  nearly(camera.projector()([5, 3, 0]).slice(0, 2), before.slice(0, 2), 1e-6);
});

test('OrbitKeepsItsPivotInPlace', () => {
  const camera = cameraOf('iso');
  camera.height = 40;
  const pivot = camera.target.clone().set(5, -3, 2);
  const before = camera.projector()(pivot.toArray()).slice(0, 2);
  camera.orbit(0.7, -0.3, pivot);
  nearly(camera.projector()(pivot.toArray()), before, 1e-6);
});

test('OrbitStopsAtThePoles', () => {
  const camera = cameraOf('front');
  camera.orbit(0, 99);
  nearly(camera.axes().toEye.toArray(), [0, 0, 1]);
});

test('FlightsGoTheShorterWay', () => {
  const state = (degrees) => {
    const camera = cameraOf('front');
    camera.azimuth = (degrees * Math.PI) / 180;
    return camera.state;
  };
  // From 170 to -170 degrees, half way: 180.
  assert.ok(Math.abs(Math.abs(between(state(170), state(-170), 0.5).azimuth) - Math.PI) < 1e-9);
});

function partsOfSample(elements) {
  const { head, bytes } = encode({
    bounds: [[0, 0, 0], [1, 1, 1]],
    meshes: [unitCylinder(), unitCube(), triangle([0, 0, 0], [1, 0, 0], [0, 1, 0])],
    elements,
  });
  return partsOf(decodeScene(head, bytes));
}

test('AMeshAtManyPlacesIsSharedTheLargestFirst', () => {
  const elements = Array.from({ length: FEW_PLACES }, (_, i) => pipe([0, 0, 0], 10 + i, 2, 0));
  const { shared, joined } = partsOfSample(elements);
  assert.equal(joined.length, 0);
  assert.equal(shared.length, 1);
  assert.deepEqual([...shared[0].elements], [...elements.keys()].reverse());
  // The row of x: the length is in its third column.
  assert.equal(shared[0].matrices[2], 10 + FEW_PLACES - 1);
});

test('MeshesAtFewPlacesAreJoined', () => {
  const { shared, joined } = partsOfSample([
    box([0, 0, 0], [1, 2, 3]),
    box([5, 0, 0], [1, 1, 1]),
    { kind: 'triangle', mesh: 2, matrix: [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0] },
  ]);
  assert.equal(shared.length, 0);
  assert.deepEqual(joined.map(({ closed, indices }) => [closed, indices.length]), [[true, 72], [false, 3]]);
  assert.deepEqual([...new Set(joined[0].elements)], [0, 1]);
});

test('AMirrorTurnsTrianglesOver', () => {
  const { joined } = partsOfSample([
    { kind: 'triangle', mesh: 2, matrix: [-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0] },
  ]);
  assert.deepEqual([...joined[0].indices], [0, 2, 1]);
  nearly([...joined[0].normals.subarray(0, 3)], [0, 0, 1], 1e-6);
});

test('NormalsFollowUnequalScales', () => {
  // A cube stretched to 1, 2, 4 keeps the directions of its faces.
  const { joined } = partsOfSample([box([0, 0, 0], [1, 2, 4])]);
  const directions = new Set();
  for (let i = 0; i < joined[0].normals.length; i += 3) {
    const n = [...joined[0].normals.subarray(i, i + 3)];
    const length = Math.hypot(...n);
    directions.add(n.map((x) => Math.round(x / length) + 0).join(' '));
  }
  assert.equal(directions.size, 6);
});

test('BoxesHoldShapesLinesPointsAndTexts', () => {
  const { boxes } = partsOfSample([
    pipe([10, 0, 0], 100, 20, 0),
    { kind: 'segment', line: [[1, 2, 3], [-1, 5, 3]] },
    { kind: 'point', point: [7, 8, 9] },
    { kind: 'text', text: { text: 'T', position: [4, 4, 4], along: [1, 0, 0], up: [0, 1, 0], height: 1, width: 3 } },
  ]);
  nearly([...boxes.subarray(0, 6)], [10, -10, -10, 110, 10, 10], 1e-4);
  assert.deepEqual([...boxes.subarray(6)], [-1, 2, 3, 1, 5, 3, 7, 8, 9, 7, 8, 9, 4, 4, 4, 7, 5, 4]);
  assert.deepEqual(boxOf(boxes, [1, 2]), [[-1, 2, 3], [7, 8, 9]]);
  assert.equal(boxOf(boxes, []), null);
});

test('FramesLieAskewWithTheirPlaces', () => {
  // A unit cube turned by 45 degrees about z and stretched to 4 along z.
  const c = Math.SQRT1_2;
  const { frames, thickness } = partsOfSample([
    { kind: 'box', mesh: 1, matrix: [c, -c, 0, 0, c, c, 0, 0, 0, 0, 4, 0] },
  ]);
  nearly([...frames[0].frames.subarray(0, 3)], [0, c, 2], 1e-6);
  nearly(edgesOf(frames[0].frames, 0), [2, 0.5, 0.5], 1e-6);
  assert.ok(Math.abs(thickness - 1) < 1e-6);
});

test('ManyMeshesAtFewPlacesAreSomeMeshes', () => {
  const count = MOST_CORNERS / 36 + 1;
  const { head, bytes } = encode({
    bounds: [[0, 0, 0], [1, 1, 1]],
    meshes: Array.from({ length: count }, () => unitCube()),
    elements: Array.from({ length: count }, (_, i) => box([i, 0, 0], [1, 1, 1], { mesh: i })),
  });
  const { joined } = partsOf(decodeScene(head, bytes));
  assert.deepEqual(joined.map(({ indices }) => indices.length), [MOST_CORNERS, 36]);
});

// A camera of 200 by 100 pixels from the front, a unit is a pixel.
function sight(more = {}) {
  const camera = cameraOf('front');
  camera.target.set(0, 0, 0);
  camera.height = 100;
  Object.assign(camera, more);
  return new Sight(camera);
}

const sights = [
  ['InTheMiddle', [0, 0, 0], 1, 1],
  ['PartlyInThePicture', [105, 0, 0], 10, 1],
  ['BesideThePicture', [105, 0, 0], 1, 0],
  ['AboveThePicture', [0, 0, 60], 5, 0],
  ['BehindAllTheSame', [0, 1e6, 0], 1, 1],
];
for (const [name, place, radius, scale] of sights) {
  test(`Sight: ${name}`, () => assert.equal(sight().scaleOf(...place, radius), scale));
}

test('Sight: HalfTheSizeAtTwiceTheDistance', () => {
  const eye = sight({ isPerspective: true });
  assert.ok(Math.abs(eye.scaleOf(0, eye.distance, 0, 1) - 0.5) < 1e-9); // from the front y goes away
  assert.equal(eye.scaleOf(0, -eye.distance - 2, 0, 1), 0);
});

test('TrianglesGoByTheSizeOnTheScreen', () => {
  // Diameters of 100, 10, 2 and 0.1 pixels, one beside the picture, one hidden.
  const diameters = [100, 10, 2, 0.1, 10, 10];
  const elements = [
    ...diameters.map((d, i) => pipe([i === 4 ? 500 : 0, 0, 0], d === 0.1 ? 0.2 : 40, d, 2)),
    ...Array.from({ length: FEW_PLACES }, () => pipe([900, 0, 0], 1, 1, 2)),
  ];
  const { head, bytes } = encode({ bounds: [[0, 0, 0], [1, 1, 1]], meshes: [unitCylinder(32)], elements });
  const places = new Places(partsOf(decodeScene(head, bytes)).shared[0]);
  const states = new Uint8Array(elements.length * 2);
  states[5 * 2 + 1] = HIDDEN;
  const { drawn, triangles } = places.choose(sight(), AT_REST, AT_REST, states, []);
  assert.deepEqual(places.levels.map(({ count }) => count), [1, 1, 1]);
  // The mesh has 124 triangles, the coarse one 28, the ribbon 2.
  assert.deepEqual([drawn, triangles], [154, 154]);
  // What lies beyond a plane as a whole is not drawn.
  places.choose(sight(), AT_REST, AT_REST, states, [[1, 0, 0, -80]]);
  assert.deepEqual(places.levels.map(({ count }) => count), [0, 0, 0]);
});

test('FitFillsNineTenths', () => {
  // A pole askew: its outline is far from the corners of its box along the axes.
  const camera = cameraOf('front');
  camera.fit(new Outline([0, 0, 0, 70, 0, 70, -1, 0, 1, 0, 1, 0]));
  const project = camera.projector();
  const [low, high] = [project([-71, 0, -71]), project([71, 0, 71])];
  assert.ok(Math.abs(low[1] - high[1] - 90) < 1e-6, `${low} ${high}`); // of 100 pixels
});

test('FitInPerspectiveFillsNineTenthsToo', () => {
  const camera = cameraOf('front');
  camera.isPerspective = true;
  camera.fit([[0, 0, 0], [100, 400, 100]]);
  const project = camera.projector();
  const heights = [0, 400].map((y) => Math.abs(project([50, y, 100])[1] - project([50, y, 0])[1]));
  assert.ok(Math.max(...heights) > 60 && Math.max(...heights) <= 100, `${heights}`);
});

test('DepthsAreReadByThePixel', () => {
  // Two pixels beside each other; a third of the way, and nothing.
  const third = Math.round(16777215 / 3);
  const bytes = Uint8Array.of(third & 255, (third >> 8) & 255, third >> 16, 255, 0, 0, 0, 0);
  const camera = { pixelsWide: 2, isPerspective: false, toThree: () => ({ near: 100, far: 400 }) };
  const depths = new DepthImage(bytes, 2, 1, camera);
  assert.ok(Math.abs(depths.at(0.5, 0.5) - 200) < 1e-3);
  assert.equal(depths.at(1.5, 0.5), Infinity);
  assert.equal(depths.at(5, 5), Infinity);
  assert.equal(depths.distanceOf(1), 400);
});

test('ThePaletteHasRoomForKindsAndLevels', () => {
  assert.ok(Object.keys(KIND_COLOURS).length + Object.keys(LEVELS).length <= MOST_COLOURS);
});

const area = ({ positions, indices }) => {
  let sum = 0;
  for (let i = 0; i < indices.length; i += 3) {
    const [a, b, c] = [0, 1, 2].map((k) => positions.slice(indices[i + k] * 3, indices[i + k] * 3 + 3));
    const [u, v] = [b, c].map((p) => p.map((x, k) => x - a[k]));
    sum += Math.hypot(u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]) / 2;
  }
  return sum;
};

test('ACoarseCylinderIsStillOne', () => {
  const fine = unitCylinder(32);
  const few = coarse(fine);
  // 32 pieces: 64 triangles round about and 30 on each end; the ring of few has 8.
  assert.deepEqual([fine.indices.length / 3, few.indices.length / 3], [124, 28]);
  // Its area is 4 pi; a ring of 8 in the middles of the pieces has 15 % less at most.
  assert.ok(area(few) > 0.85 * 4 * Math.PI && area(few) < 4 * Math.PI, `${area(few)}`);
});

test('WhatIsCoarseAlreadyStaysAsItIs', () => assert.equal(coarse(unitCube()), null));
