// SPDX-License-Identifier: MIT
// The colours of the kinds of elements and of marks, for light and dark alike.

export const KIND_COLOURS = {
  point: '#c4566a',
  segment: '#c98a3d',
  polyline: '#cf7350',
  triangle: '#7fa886',
  quadrangle: '#a2ae5f',
  polygon: '#8fb07a',
  text: '#7d8794',
  box: '#c0a878',
  reducer: '#c4855a',
  cylinder: '#6b9ac8',
  cone: '#4fb0a5',
  torus: '#4d7fb8',
  elbow: '#9583bd',
};

/** Marks by level, the gravest first: a name for people and a colour. */
export const LEVELS = {
  error: { name: 'Errors', colour: '#e0393e' },
  warning: { name: 'Warnings', colour: '#f0a020' },
  note: { name: 'Notes', colour: '#3b8cf0' },
  removed: { name: 'Removed', colour: '#e0393e' },
  added: { name: 'Added', colour: '#2ea650' },
  moved: { name: 'Moved', colour: '#f0a020' },
  changed: { name: 'Changed', colour: '#9a5be0' },
  before: { name: 'As it was', colour: '#8a939e' },
};

const OTHER = '#9aa4b0';

/** Colours of classes that have no order, as far from each other as may be. */
export const MANY = [
  '#4e79a7', '#f28e2b', '#59a14f', '#e15759', '#b07aa1', '#76b7b2', '#edc948', '#9c755f',
  '#2f6fd0', '#d1601b', '#2b8a5a', '#c23b6e', '#7a4fc0', '#1f9bb0', '#b59b00', '#6d4c41',
  '#8fb8de', '#ffb77d', '#9ad08f', '#f7a6a7', '#d6b1cf', '#a8dad6', '#f5e08a', '#c9ac9c',
];

/** From little to much. */
export const RAMP = [
  '#3b4cc0', '#5977e3', '#7b9ff9', '#9ebeff', '#c0d4f5', '#f2cbb7', '#f7a889', '#e7745b', '#b40426',
];

// The colours of one scene, by their numbers: one for each kind, for each level, and
// then these.
const KINDS = 13;
export const FIRST_OF_MANY = KINDS + Object.keys(LEVELS).length;
export const FIRST_OF_RAMP = FIRST_OF_MANY + MANY.length;
export const GREY = FIRST_OF_RAMP + RAMP.length;

export function paletteOf(kinds) {
  return [
    ...kinds.map((kind) => KIND_COLOURS[kind.name] ?? OTHER),
    ...Object.values(LEVELS).map((level) => level.colour),
    ...MANY,
    ...RAMP,
    OTHER,
  ];
}

export const MOST_COLOURS = 256;
