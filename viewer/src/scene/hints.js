// SPDX-License-Identifier: MIT
// Takes back the hints by which the tool makes a page small (tools/view/PageCode.h):
// most numbers of a page are numbers of its records, which are in the page as text.
// The arithmetic is that of the tool, so that every bit comes back.

export const HEAD = 19; // bytes of a line that stand apart, column by column
const NEWLINE = 10;
const [ZERO, NINE, POINT, PLUS, MINUS] = [48, 57, 46, 43, 45];

const MOST_DIGITS = 15;
const POWERS = Array.from({ length: MOST_DIGITS + 1 }, (_, i) => 10 ** i);

/** The lines of all records, put together from the heads and the rests of them. */
export function joinLines(heads, rests, size) {
  const lines = new Uint8Array(size);
  const count = heads.length / HEAD;
  let from = 0;
  let to = 0;
  for (let line = 0; line < count; ++line) {
    let byte = 0;
    for (let k = 0; k < HEAD && byte !== NEWLINE; ++k) {
      byte = heads[k * count + line];
      lines[to++] = byte;
    }
    while (byte !== NEWLINE && from < rests.length) {
      byte = rests[from++];
      lines[to++] = byte;
    }
  }
  return lines;
}

/** Where the record of each element begins, and where the last one ends. */
export function recordStarts(records, lines) {
  const starts = new Uint32Array(lines.length + 1);
  let at = 0;
  for (let i = 0; i < lines.length; ++i) {
    for (let left = lines[i]; left > 0 && at < records.length; --left) {
      at = records.indexOf(NEWLINE, at) + 1 || records.length;
    }
    starts[i + 1] = at;
  }
  return starts;
}

/**
 * The simple numbers of the record from `begin` to `end`, behind the heads of its
 * lines; they are put into `to`, and how many there are is returned.
 */
export function plainNumbers(records, begin, end, to) {
  let count = 0;
  let column = 0;
  for (let at = begin; at < end; ) {
    const first = records[at];
    if (first === NEWLINE) {
      column = 0;
      ++at;
      continue;
    }
    if (column < HEAD) {
      ++column;
      ++at;
      continue;
    }
    let whole = 0;
    let digits = 0;
    let decimals = -1; // none before the point
    let isNumber = true;
    let stop = at;
    for (; stop < end; ++stop) {
      const c = records[stop];
      if (c >= ZERO && c <= NINE) {
        whole = whole * 10 + (c - ZERO);
        ++digits;
        if (decimals >= 0) ++decimals;
      } else if (c === POINT) {
        if (decimals >= 0) isNumber = false;
        decimals = 0;
      } else if (c === PLUS || c === MINUS) {
        if (stop > at) isNumber = false;
      } else {
        break;
      }
    }
    if (isNumber && digits > 0 && digits <= MOST_DIGITS) {
      const number = whole / POWERS[Math.max(0, decimals)];
      to[count++] = first === MINUS ? -number : number;
    }
    column += Math.max(1, stop - at);
    at = Math.max(stop, at + 1);
  }
  return count;
}

const WIDTHS = { n: 1, i: 1, t: 1, p: 3, o: 3, d: 3 };

/** How many numbers the values of a layout take. */
export const widthOf = (layout) => layout.reduce((sum, [, type]) => sum + WIDTHS[type], 0);

/** Where the values of each element begin, and where the last ones end. */
export function valueStarts(layouts, layoutOf) {
  const widths = layouts.map(widthOf);
  const starts = new Uint32Array(layoutOf.length + 1);
  for (let i = 0; i < layoutOf.length; ++i) starts[i + 1] = starts[i] + widths[layoutOf[i]];
  return starts;
}

/** The values of all elements one after the other. */
export function valuesOf({ layouts, layoutOf, starts, records, recordStarts, hints, literals, texts }) {
  const types = layouts.map((layout) => layout.map(([, type]) => type));
  const values = new Float64Array(starts.at(-1));
  let numbers = new Float64Array(1024);
  let hint = 0;
  let literal = 0;
  let text = 0;
  for (let i = 0; i < layoutOf.length; ++i) {
    const [begin, end] = [recordStarts[i], recordStarts[i + 1]];
    if (end - begin > numbers.length) numbers = new Float64Array(end - begin);
    const count = plainNumbers(records, begin, end, numbers);
    const first = starts[i];
    let at = first;
    let next = 0;
    for (const type of types[layoutOf[i]]) {
      if (type === 't') {
        values[at++] = texts[text++];
        continue;
      }
      const width = WIDTHS[type];
      for (let axis = 0; axis < width; ++axis, ++at) {
        const code = hints[hint++] - 1;
        if (code < 0) {
          values[at] = literals[literal++];
          continue;
        }
        next = (next + (code >> 3)) % count;
        const number = numbers[next++];
        switch (code & 7) {
          case 0: values[at] = number; break;
          case 1: values[at] = values[at - 3] + number; break;
          case 2: values[at] = number - values[at - 3]; break;
          case 3: values[at] = values[first + axis] + number; break;
          default: values[at] = number - values[first + axis];
        }
      }
    }
  }
  return values;
}

const MOST_VALUES = 62;
const FIRST_VALUE = 6;

/**
 * The 32-bit numbers of things that are drawn, `axes.length` for each of the
 * elements. An axis of 0, 1 or 2 marks a place, which lies relative to the offset.
 */
export function placesOf({ elements, axes, values, starts, offset, hints, literals }) {
  const width = axes.length;
  const numbers = new Float32Array(elements.length * width);
  let literal = 0;
  for (let i = 0, at = 0; i < elements.length; ++i) {
    const first = starts[elements[i]];
    for (let k = 0; k < width; ++k, ++at) {
      const hint = hints[at];
      switch (hint) {
        case 0: numbers[at] = literals[literal++]; break;
        case 1: break;
        case 2: numbers[at] = -0; break;
        case 3: numbers[at] = 1; break;
        case 4: numbers[at] = -1; break;
        case 5: numbers[at] = at >= 3 ? numbers[at - 3] : 0; break;
        default: {
          const code = hint - FIRST_VALUE;
          let value = values[first + (code % MOST_VALUES)];
          const operation = Math.floor(code / MOST_VALUES);
          if (operation === 1) value = -value;
          else if (operation === 2) value *= 0.5;
          else if (operation === 3) value *= -0.5;
          numbers[at] = axes[k] < 0 ? value : value - offset[axes[k]];
        }
      }
    }
  }
  return numbers;
}
