// SPDX-License-Identifier: MIT
// Fields that a spreadsheet would take for a formula get an apostrophe in front.
const FORMULA = /^[=+\-@\t\r]/;

/** A table as CSV, quoted where it must be; numbers stay as they are. */
export function csvOf(rows) {
  const field = (value) => {
    if (typeof value === 'number') return String(value);
    const text = FORMULA.test(value) ? `'${value}` : value;
    return /[",\r\n]/.test(text) ? `"${text.replaceAll('"', '""')}"` : text;
  };
  return rows.map((row) => `${row.map(field).join(',')}\n`).join('');
}

/** A table of elements: where they stand, their values by name, and what is known of them. */
export function tableOf(model, elements) {
  const names = [];
  const place = new Map();
  const known = model.scene.attributes.names;
  const all = [...elements].map((element) => {
    const values = new Map();
    for (const { name, type, value } of model.valuesOf(element)) {
      const parts = Array.isArray(value) ? value : [value];
      parts.forEach((part, i) => values.set(parts.length === 1 ? name : `${name} ${'xyz'[i]}`, type === 't' ? part : Number(part)));
    }
    for (const name of values.keys()) {
      if (!place.has(name)) place.set(name, names.push(name) - 1);
    }
    return { element, values };
  });
  const rows = all.map(({ element, values }) => {
    const attributes = new Map(model.attributesOf(element));
    const { file, line, counter } = model.scene.elements;
    return [
      model.scene.files[file[element]], line[element], model.headerOf(element), counter[element], model.kindOf(element),
      ...known.map((name) => attributes.get(name) ?? ''),
      ...names.map((name) => values.get(name) ?? ''),
    ];
  });
  return [['file', 'line', 'header', 'counter', 'kind', ...known, ...names], ...rows];
}
