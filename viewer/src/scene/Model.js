// SPDX-License-Identifier: MIT
import { harmless } from './decode.js';

// How many numbers a value of a layout takes: number, integer and text one (a
// text is the index of a string), points and vectors three.
const WIDTHS = { n: 1, i: 1, t: 1, p: 3, o: 3, d: 3 };

// Kinds that are drawn beside the shape of a component.
const NO_SHAPES = ['point', 'segment', 'polyline', 'text'];

// Items that name one component among others, the best first.
const NAMING = ['tag', 'uci', 'name', 'item-code', 'skey', 'description'];

/**
 * The elements of a scene: what they are called, where they stand in their file
 * and what their records say. Elements are numbers from 0 on.
 *
 * A layout lists the values of an element as pairs of a name and a type: "n"
 * number, "i" integer, "t" text, "p" a place in the model, "o" a vector from the
 * element's first place to another place, "d" a direction.
 */
export class Model {
  constructor(scene) {
    this.scene = scene;
    this.count = scene.elements.count;
    this.valueStarts = scene.valueStarts;
    this.decoder = new TextDecoder();
    this.#collect();
  }

  #starts; // of the elements of each component in #members
  #members;
  #principal; // the element that a component is named after

  // The elements by their components.
  #collect() {
    const { component, kind } = this.scene.elements;
    const most = component.reduce((all, each) => Math.max(all, each), -1) + 1;
    this.#starts = new Uint32Array(most + 1);
    for (const each of component) ++this.#starts[each + 1];
    for (let i = 0; i < most; ++i) this.#starts[i + 1] += this.#starts[i];
    const next = this.#starts.slice();
    this.#members = new Uint32Array(this.count);
    component.forEach((each, i) => (this.#members[next[each]++] = i));
    const isShape = this.scene.kinds.map(({ name }) => !NO_SHAPES.includes(name));
    this.#principal = new Uint32Array(most);
    for (let i = 0; i < most; ++i) {
      const members = this.#members.subarray(this.#starts[i], this.#starts[i + 1]);
      this.#principal[i] = members.find((element) => isShape[kind[element]]) ?? members[0];
    }
  }

  /** All elements of the component of one, in the order of their file. */
  together(element) {
    const component = this.scene.elements.component[element];
    return this.#members.subarray(this.#starts[component], this.#starts[component + 1]);
  }

  /** The element that the component of this one is named after. */
  principalOf(element) {
    return this.#principal[this.scene.elements.component[element]];
  }

  /** What a component is called: by what is known of it, else by its principal element. */
  componentName(element) {
    const known = new Map(this.attributesOf(element));
    const what = known.get('component') ?? '';
    const which = NAMING.map((name) => known.get(name)).find(Boolean) ?? '';
    return [what, which].filter(Boolean).join(' ') || this.nameOf(this.principalOf(element));
  }

  /** [[name, text]] of what is known of an element's component. */
  attributesOf(element) {
    const { names, texts, columns } = this.scene.attributes;
    const row = this.scene.elements.row[element];
    if (row === 0) return [];
    return names.map((name, i) => [name, texts[columns[i][row - 1]]]).filter(([, text]) => text !== '');
  }

  /** The first diameter that an element names; null if it names none. */
  diameterOf(element) {
    const place = this.#diameterIn(this.scene.elements.layout[element]);
    return place < 0 ? null : this.scene.values[this.valueStarts[element] + place];
  }

  #diameters = [];

  #diameterIn(layout) {
    if (this.#diameters[layout] === undefined) {
      let [at, found] = [0, -1];
      for (const [name, type] of this.scene.layouts[layout]) {
        if (found < 0 && type === 'n' && name.startsWith('diameter')) found = at;
        at += WIDTHS[type];
      }
      this.#diameters[layout] = found;
    }
    return this.#diameters[layout];
  }

  kindOf(element) {
    return this.scene.kinds[this.scene.elements.kind[element]].name;
  }

  headerOf(element) {
    return this.scene.headers[this.scene.elements.header[element]];
  }

  /** "plant.dat:1042" */
  placeOf(element) {
    const { file, line } = this.scene.elements;
    return `${this.scene.files[file[element]]}:${line[element]}`;
  }

  /** "cylinder 17": its kind and its number under its header. */
  nameOf(element) {
    return `${this.kindOf(element)} ${this.scene.elements.counter[element]}`;
  }

  /** The lines of the record as they stand in the file. */
  recordOf(element) {
    const { record } = this.scene.elements;
    const bytes = this.scene.records.subarray(record[element], record[element + 1]);
    return harmless(this.decoder.decode(bytes)).replace(/\n$/, '').split('\n');
  }

  /** [{name, type, value}]: value is a number, a string or [x, y, z]. */
  valuesOf(element) {
    const { values, strings } = this.scene;
    let at = this.valueStarts[element];
    return this.#layoutOf(element).map(([name, type]) => {
      const numbers = Array.from(values.subarray(at, at + WIDTHS[type]));
      at += WIDTHS[type];
      if (type === 't') return { name, type, value: strings[numbers[0]] };
      return { name, type, value: numbers.length === 1 ? numbers[0] : numbers };
    });
  }

  /** The places that an element names, [{name, point}] with exact coordinates. */
  placesOf(element) {
    const places = [];
    for (const { name, type, value } of this.valuesOf(element)) {
      if (type === 'p') places.push({ name, point: value });
      if (type !== 'o' || places.length === 0) continue;
      const from = places[0].point;
      places.push({ name: `end of ${name}`, point: from.map((x, i) => x + value[i]) });
    }
    return places;
  }

  #layoutOf(element) {
    return this.scene.layouts[this.scene.elements.layout[element]];
  }
}
