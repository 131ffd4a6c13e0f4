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

/**
 * The colours in the order of their numbers: first one for each kind of the
 * scene, then one for each level.
 */
export function paletteOf(kinds) {
  return [
    ...kinds.map((kind) => KIND_COLOURS[kind.name] ?? OTHER),
    ...Object.values(LEVELS).map((level) => level.colour),
  ];
}

export const MOST_COLOURS = 32;
