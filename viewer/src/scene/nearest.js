// SPDX-License-Identifier: MIT
// The smallest distance between the drawn shapes of two elements, triangle by triangle.
// Lines and points are triangles without an area.

const minus = (a, b) => [a[0] - b[0], a[1] - b[1], a[2] - b[2]];
const dot = (a, b) => a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
const cross = (a, b) => [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]];
const along = (a, d, t) => [a[0] + d[0] * t, a[1] + d[1] * t, a[2] + d[2] * t];
const clamp = (t) => Math.max(0, Math.min(1, t));

/** [from, to] of the nearest places of two pieces of lines, a to b and c to d. */
export function nearestOfPieces(a, b, c, d) {
  const [u, v, w] = [minus(b, a), minus(d, c), minus(a, c)];
  const [uu, uv, vv, uw, vw] = [dot(u, u), dot(u, v), dot(v, v), dot(u, w), dot(v, w)];
  const area = uu * vv - uv * uv;
  let s = area > 1e-12 * uu * vv ? clamp((uv * vw - vv * uw) / area) : 0;
  let t = vv > 0 ? (uv * s + vw) / vv : 0;
  if (t < 0 || t > 1) {
    t = clamp(t);
    s = uu > 0 ? clamp((uv * t - uw) / uu) : 0;
  }
  return [along(a, u, s), along(c, v, t)];
}

/** The place of a triangle that is nearest to a point. */
export function nearestOfTriangle(p, [a, b, c]) {
  const [u, v, w] = [minus(b, a), minus(c, a), minus(p, a)];
  const [uu, uv, vv, wu, wv] = [dot(u, u), dot(u, v), dot(v, v), dot(w, u), dot(w, v)];
  const area = uu * vv - uv * uv;
  if (area > 1e-12 * uu * vv) {
    const s = (vv * wu - uv * wv) / area;
    const t = (uu * wv - uv * wu) / area;
    if (s >= 0 && t >= 0 && s + t <= 1) return along(along(a, u, s), v, t);
  }
  return [[a, b], [b, c], [c, a]]
    .map(([from, to]) => nearestOfPieces(p, p, from, to)[1])
    .reduce((best, each) => (far(p, each) < far(p, best) ? each : best));
}

const far = (a, b) => {
  const d = minus(a, b);
  return dot(d, d);
};

// Where the piece from p to q goes through a triangle; null if it does not.
function pierced(p, q, [a, b, c]) {
  const [u, v, d] = [minus(b, a), minus(c, a), minus(q, p)];
  const h = cross(d, v);
  const det = dot(u, h);
  if (Math.abs(det) < 1e-15) return null;
  const w = minus(p, a);
  const s = dot(w, h) / det;
  const g = cross(w, u);
  const t = dot(d, g) / det;
  const way = dot(v, g) / det;
  return s >= 0 && t >= 0 && s + t <= 1 && way >= 0 && way <= 1 ? along(p, d, way) : null;
}

const edges = ([a, b, c]) => [[a, b], [b, c], [c, a]];

function nearestOfTwo(one, other, best) {
  const take = (from, to) => {
    const square = far(from, to);
    if (square < best.square) Object.assign(best, { square, from, to });
  };
  for (const p of one) take(p, nearestOfTriangle(p, other));
  for (const p of other) take(nearestOfTriangle(p, one), p);
  for (const [a, b] of edges(one)) {
    for (const [c, d] of edges(other)) take(...nearestOfPieces(a, b, c, d));
    const hit = pierced(a, b, other);
    if (hit) take(hit, hit);
  }
  for (const [a, b] of edges(other)) {
    const hit = pierced(a, b, one);
    if (hit) take(hit, hit);
  }
}

const boxOf = (triangle) => [
  [0, 1, 2].map((k) => Math.min(triangle[0][k], triangle[1][k], triangle[2][k])),
  [0, 1, 2].map((k) => Math.max(triangle[0][k], triangle[1][k], triangle[2][k])),
];

function apart([low, high], [otherLow, otherHigh]) {
  let square = 0;
  for (let k = 0; k < 3; ++k) square += Math.max(0, low[k] - otherHigh[k], otherLow[k] - high[k]) ** 2;
  return square;
}

/** {distance, from, to} of two lists of triangles [[x, y, z], ...]; null if one is empty. */
export function nearestOf(one, other) {
  const best = { square: Infinity, from: null, to: null };
  const boxes = other.map((triangle) => ({ triangle, box: boxOf(triangle) }));
  for (const triangle of one) {
    const box = boxOf(triangle);
    for (const each of boxes) {
      if (apart(box, each.box) < best.square) nearestOfTwo(triangle, each.triangle, best);
    }
  }
  return best.from && { distance: Math.sqrt(best.square), from: best.from, to: best.to };
}
