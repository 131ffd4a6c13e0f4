// SPDX-License-Identifier: MIT
import { FIRST_OF_MANY, FIRST_OF_RAMP, GREY, LEVELS, MANY, RAMP } from '../view/palette.js';

/**
 * Ways of sorting the elements into classes: by kind, header, group, file, size, finding
 * or by an item that is known of their components. A way is {id, name}; ways that would
 * give a single class are left out.
 */
export function waysOf(model) {
  const { scene } = model;
  const ways = [
    { id: 'kind', name: 'Kind' },
    { id: 'header', name: 'Header' },
    { id: 'group', name: 'Group' },
    { id: 'file', name: 'File' },
    { id: 'size', name: 'Size' },
    { id: 'finding', name: 'Finding' },
  ].filter(({ id }) => {
    if (id === 'group') return scene.groupNames.length > 1;
    if (id === 'file') return scene.files.length > 1;
    if (id === 'finding') return scene.marks.length > 0;
    return true;
  });
  const items = scene.attributes.names.map((name, i) => ({ id: `item-${i}`, name }));
  return [...ways, ...items];
}

/** By what a tree can be grouped: the same, without sizes and findings. */
export const groupingsOf = (model) => waysOf(model).filter(({ id }) => id !== 'size' && id !== 'finding');

/** The class of each element in one way: {of, nameOf(class)}; classes are numbers. */
export function columnOf(model, id) {
  const { elements, headers, groupNames, files, kinds, attributes } = model.scene;
  switch (id) {
    case 'kind': return { of: elements.kind, nameOf: (i) => kinds[i].plural };
    case 'header': return { of: elements.header, nameOf: (i) => headers[i] || 'no header' };
    case 'group': return { of: elements.group, nameOf: (i) => groupNames[i] || 'no group' };
    case 'file': return { of: elements.file, nameOf: (i) => files[i] };
    default: {
      const column = attributes.columns[Number(id.slice('item-'.length))];
      const of = elements.row.map((row) => (row > 0 ? column[row - 1] : 0));
      return { of, nameOf: (i) => attributes.texts[i] || 'none' };
    }
  }
}

/**
 * The classes of one way for a legend, {classes: [{name, colour, elements}], colours}:
 * `colour` is a number of the palette, `colours` holds it for each element.
 */
export function classesOf(model, state, id) {
  if (id === 'size') return finished(model, sizes(model));
  if (id === 'finding') return finished(model, findings(model, state));
  const { of, nameOf } = columnOf(model, id);
  const byClass = new Map();
  of.forEach((value, element) => {
    if (!byClass.has(value)) byClass.set(value, []);
    byClass.get(value).push(element);
  });
  const all = [...byClass].map(([value, elements]) => ({ value, name: nameOf(value), elements }));
  if (id === 'kind') {
    all.sort((a, b) => a.value - b.value);
    return finished(model, all.map((each) => ({ ...each, colour: each.value })));
  }
  all.sort((a, b) => b.elements.length - a.elements.length || a.name.localeCompare(b.name));
  const isNothing = ({ value }) => id.startsWith('item-') && value === 0;
  return finished(model, all.map((each, i) => ({ ...each, colour: isNothing(each) ? GREY : FIRST_OF_MANY + (i % MANY.length) })));
}

function finished(model, classes) {
  const colours = new Uint8Array(model.count);
  for (const { colour, elements } of classes) for (const element of elements) colours[element] = colour;
  return { classes, colours };
}

// By the first diameter that an element names. Many are put together in steps.
function sizes(model) {
  const byDiameter = new Map();
  const without = [];
  for (let i = 0; i < model.count; ++i) {
    const diameter = model.diameterOf(i);
    if (diameter === null) without.push(i);
    else if (byDiameter.has(diameter)) byDiameter.get(diameter).push(i);
    else byDiameter.set(diameter, [i]);
  }
  const sorted = [...byDiameter].sort(([a], [b]) => a - b);
  const steps = sorted.length <= 2 * RAMP.length ? sorted.length : RAMP.length;
  const classes = [];
  sorted.forEach(([diameter, elements], i) => {
    const step = Math.floor((i * steps) / sorted.length);
    classes[step] ??= { low: diameter, elements: [] };
    classes[step].high = diameter;
    for (const element of elements) classes[step].elements.push(element);
  });
  const text = (x) => String(Math.round(x * 1000) / 1000);
  const last = Math.max(1, classes.length - 1);
  const named = classes.map(({ low, high, elements }, i) => ({
    name: low === high ? text(low) : `${text(low)} to ${text(high)}`,
    colour: FIRST_OF_RAMP + Math.round((i / last) * (RAMP.length - 1)),
    elements,
  }));
  if (without.length > 0) named.push({ name: 'no diameter', colour: GREY, elements: without });
  return named;
}

function findings(model, state) {
  const byLevel = new Map();
  for (let i = 0; i < model.count; ++i) {
    const level = state.levelOf(i);
    if (!byLevel.has(level)) byLevel.set(level, []);
    byLevel.get(level).push(i);
  }
  const levels = Object.keys(LEVELS);
  const named = levels
    .filter((level) => byLevel.has(level))
    .map((level) => ({
      name: LEVELS[level].name,
      colour: model.scene.kinds.length + levels.indexOf(level),
      elements: byLevel.get(level),
    }));
  if (byLevel.has(null)) named.push({ name: 'No finding', colour: GREY, elements: byLevel.get(null) });
  return named;
}
