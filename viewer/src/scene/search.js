// SPDX-License-Identifier: MIT
// Finds elements by the words of a query. Every word must stand in the element's
// header, in the name of its kind, in the name of its file or in its record;
// capitals do not matter.

/** Searches in one model; the records are made searchable once, at the first query. */
export class Search {
  #model;
  #records = null;

  constructor(model) {
    this.#model = model;
  }

  /** A Uint8Array with 1 for each element found; null for a query without words. */
  find(query) {
    const words = query.toLowerCase().split(/\s+/).filter((word) => word !== '');
    if (words.length === 0) return null;
    const found = new Uint8Array(this.#model.count).fill(1);
    for (const word of words) {
      const has = this.#withWord(word);
      for (let i = 0; i < found.length; ++i) found[i] &= has[i];
    }
    return found;
  }

  #withWord(word) {
    const { scene } = this.#model;
    const { elements } = scene;
    const holding = (texts) => texts.map((text) => (text.toLowerCase().includes(word) ? 1 : 0));
    const headers = holding(scene.headers);
    const files = holding(scene.files);
    const kinds = holding(scene.kinds.map((kind) => kind.name));
    const found = this.#inRecords(word);
    for (let i = 0; i < found.length; ++i) {
      found[i] |= headers[elements.header[i]] | files[elements.file[i]] | kinds[elements.kind[i]];
    }
    return found;
  }

  // All records are one text with a character for each byte, so that an index in
  // the text is an index in the bytes.
  #inRecords(word) {
    const { records, elements } = this.#model.scene;
    const oneByteEach = new TextDecoder('latin1');
    this.#records ??= oneByteEach.decode(records).toLowerCase();
    const wanted = oneByteEach.decode(new TextEncoder().encode(word)).toLowerCase();
    const found = new Uint8Array(this.#model.count);
    let element = 0;
    for (let at = this.#records.indexOf(wanted); at >= 0; ) {
      while (elements.record[element + 1] <= at) ++element;
      found[element] = 1;
      at = this.#records.indexOf(wanted, elements.record[element + 1]);
    }
    return found;
  }
}
