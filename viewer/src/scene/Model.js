// How many numbers a value of a layout takes: number, integer and text one (a
// text is the index of a string), points and vectors three.
const WIDTHS = { n: 1, i: 1, t: 1, p: 3, o: 3, d: 3 };

const widthOf = (layout) => layout.reduce((sum, [, type]) => sum + WIDTHS[type], 0);

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
    this.valueStarts = this.#startsOfValues();
    this.decoder = new TextDecoder();
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
    return this.decoder.decode(bytes).replace(/\n$/, '').split('\n');
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

  #startsOfValues() {
    const { layout } = this.scene.elements;
    const widths = this.scene.layouts.map(widthOf);
    const starts = new Uint32Array(this.count);
    for (let i = 1; i < this.count; ++i) starts[i] = starts[i - 1] + widths[layout[i - 1]];
    return starts;
  }
}
