// SPDX-License-Identifier: MIT
// Distances between places that the pointer snaps to.

const REACH = { place: 14, vertex: 10 }; // pixels of the page

// Places that are as near to the pointer within so many pixels: the one in front
// counts.
const SAME = 2;

/**
 * The place that the pointer at x, y means, {point, name}. `places` are those that
 * the record names, {name, point}; they win over `vertices`, points of the mesh,
 * and both over the place of the surface under the pointer. `project` turns a
 * point into pixels and a depth, which grows away from the eye.
 */
export function snap({ places, vertices, surface, project, x, y }) {
  const nearest = (candidates, reach) => {
    let best = null;
    for (const candidate of candidates) {
      const [px, py, depth] = project(candidate.point);
      const pixels = Math.hypot(px - x, py - y);
      if (pixels > reach) continue;
      const away = Math.round(pixels / SAME);
      if (best === null || away < best.away || (away === best.away && depth < best.depth)) {
        best = { ...candidate, away, depth };
      }
    }
    return best && { point: best.point, name: best.name };
  };
  return (
    nearest(places, REACH.place) ??
    nearest(vertices.map((point) => ({ point, name: 'vertex' })), REACH.vertex) ?? {
      point: surface,
      name: 'surface',
    }
  );
}

/** {distance, delta: [x, y, z]} from one point to another. */
export function measured(from, to) {
  const delta = to.map((x, i) => x - from[i]);
  return { distance: Math.hypot(...delta), delta };
}

/** The angle at a place between the ways to two others, in degrees. */
export function angleAt(apex, from, to) {
  const [u, v] = [from, to].map((point) => point.map((x, i) => x - apex[i]));
  const across = Math.hypot(u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]);
  return (Math.atan2(across, u.reduce((sum, x, i) => sum + x * v[i], 0)) * 180) / Math.PI;
}
