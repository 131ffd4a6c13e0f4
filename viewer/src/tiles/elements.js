// SPDX-License-Identifier: MIT
// Which element of the record files a place in a tile belongs to.

// What the root node of a content tells about all its elements, above an object.
function tableAbove(object) {
  for (let each = object; each; each = each.parent) {
    if (each.userData.elements) return each.userData.elements;
  }
  return null;
}

const named = (table, column, names, id) => table[names][table[column][id]];

/**
 * What a ray has hit, {header, kind, file, line}; null for what is none. An element is
 * an object of its own, or an instance with an index into the table of its content.
 */
export function elementOf({ object, instanceId }) {
  if (instanceId === undefined) {
    for (let each = object; each; each = each.parent) {
      if (each.userData.line !== undefined) {
        const { header, kind, file, line } = each.userData;
        return { header, kind, file, line };
      }
    }
    return null;
  }
  const ids = object.geometry.getAttribute('_FEATURE_ID_0') ?? object.geometry.getAttribute('_feature_id_0');
  const table = tableAbove(object);
  if (!ids || !table) return null;
  const id = ids.getX(instanceId);
  return {
    header: named(table, 'header', 'headers', id),
    kind: named(table, 'kind', 'kinds', id),
    file: named(table, 'file', 'files', id),
    line: table.line[id],
  };
}
