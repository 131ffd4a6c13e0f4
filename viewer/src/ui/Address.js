// SPDX-License-Identifier: MIT
// The state of a page in its address, behind the #, so that a link opens the same view of
// the same file:
//
//   #eye=x,y,z,azimuth,elevation,height,p&hidden=...&selected=...&section=...&by=...
//
// Lists of elements are runs of numbers in base 36: "0-5.a" for 0 to 5 and 10.

// Longer ones are left out: some mail programs cut addresses off.
const LONGEST = 4000;

const number = (x) => String(Number(x.toPrecision(9)));

/** Elements in runs; '' for none, null for more than an address holds. */
export function runsOf(elements) {
  const sorted = Uint32Array.from(elements).sort();
  const runs = [];
  for (let i = 0; i < sorted.length; ) {
    let end = i;
    while (end + 1 < sorted.length && sorted[end + 1] === sorted[end] + 1) ++end;
    const [from, to] = [sorted[i].toString(36), sorted[end].toString(36)];
    runs.push(from === to ? from : `${from}-${to}`);
    i = end + 1;
  }
  const text = runs.join('.');
  return text.length > LONGEST ? null : text;
}

/** The elements of runs that are less than `count`; what is no run is nothing. */
export function elementsOfRuns(text, count) {
  const elements = [];
  for (const run of text.split('.')) {
    const [from, to = from] = run.split('-').map((each) => parseInt(each, 36));
    for (let i = from; i >= 0 && i <= Math.min(to, count - 1); ++i) elements.push(i);
  }
  return elements;
}

/** The address of a state, without the #. */
export function addressOf({ camera, hidden, selected, planes, by, xray, hasEdges, hasLabels }) {
  const { target, azimuth, elevation, height, isPerspective } = camera;
  const parts = {
    eye: [...target.toArray(), azimuth, elevation, height].map(number).join(',') + (isPerspective ? ',p' : ''),
    hidden: runsOf(hidden),
    selected: runsOf(selected),
    section: planes.map(({ normal, distance }) => [...normal, distance].map(number).join(',')).join(';'),
    by: by === 'kind' ? '' : by,
    show: [xray && 'x', hasEdges && 'e', hasLabels && 't'].filter(Boolean).join(''),
  };
  const given = Object.entries(parts).filter(([key, text]) => text || key === 'show');
  return given.map(([key, text]) => `${key}=${text}`).join('&');
}

/**
 * What an address says, with only those parts that it has and that can be understood:
 * {eye, hidden, selected, planes, by, xray, hasEdges, hasLabels}.
 */
export function stateOf(address, count) {
  const given = new URLSearchParams(address.replace(/^#/, ''));
  const state = {};
  const finite = (text) => text.split(',').map(Number);
  const isFinite = (numbers, length) => numbers.length === length && numbers.every(Number.isFinite);
  const eye = given.get('eye');
  if (eye !== null) {
    const isPerspective = eye.endsWith(',p');
    const numbers = finite(eye.replace(/,p$/, ''));
    if (isFinite(numbers, 6) && numbers[5] > 0) {
      const [x, y, z, azimuth, elevation, height] = numbers;
      state.eye = { target: [x, y, z], azimuth, elevation, height, isPerspective };
    }
  }
  if (given.has('eye') || given.has('hidden')) state.hidden = elementsOfRuns(given.get('hidden') ?? '', count);
  if (given.has('eye') || given.has('selected')) state.selected = elementsOfRuns(given.get('selected') ?? '', count);
  const planes = (given.get('section') ?? '').split(';').filter(Boolean).map(finite);
  if (planes.length <= 6 && planes.every((plane) => isFinite(plane, 4))) {
    state.planes = planes.map(([a, b, c, distance]) => ({ normal: [a, b, c], distance }));
  }
  state.by = given.get('by') ?? 'kind';
  const show = given.get('show');
  if (show !== null) {
    Object.assign(state, { xray: show.includes('x'), hasEdges: show.includes('e'), hasLabels: show.includes('t') });
  }
  return state;
}
