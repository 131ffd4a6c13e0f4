// SPDX-License-Identifier: MIT
// ifcJudge EXPECTED IFC - opens an IFC file with web-ifc: every product is there once and at
// its place, radii, lengths and sweeps of swept solids are those of the records, and volumes within
// 1.5 % (its circles have 48 sides). EXPECTED is JSON by expect.py: [line, kind, values].
import { readFileSync } from 'node:fs';
import * as WebIFC from 'web-ifc';

let failures = 0;
const fail = (what) => {
  console.log('failed:', what);
  failures += 1;
};

const expected = new Map(JSON.parse(readFileSync(process.argv[2], 'utf8'))
  .filter(([, kind]) => kind !== 'text').map(([line, kind, values]) => [line, { kind, values }]));
const api = new WebIFC.IfcAPI();
await api.Init();
const model = api.OpenModel(new Uint8Array(readFileSync(process.argv[3])), { CIRCLE_SEGMENTS: 48 });

const volumes = new Map();
const boxes = new Map();
api.StreamAllMeshes(model, (mesh) => {
  let volume = 0;
  const box = [Infinity, Infinity, Infinity, -Infinity, -Infinity, -Infinity];
  for (let i = 0; i < mesh.geometries.size(); ++i) {
    const placed = mesh.geometries.get(i);
    const geometry = api.GetGeometry(model, placed.geometryExpressID);
    const vertices = api.GetVertexArray(geometry.GetVertexData(), geometry.GetVertexDataSize());
    const indices = api.GetIndexArray(geometry.GetIndexData(), geometry.GetIndexDataSize());
    const m = placed.flatTransformation;
    const at = (index) => {
      const [x, y, z] = vertices.slice(6 * index, 6 * index + 3);
      return [0, 1, 2].map((r) => m[r] * x + m[4 + r] * y + m[8 + r] * z + m[12 + r]);
    };
    if (indices.length === 0) continue;
    const o = at(indices[0]);
    for (let k = 0; k < indices.length; k += 3) {
      const [a, b, c] = [0, 1, 2].map((j) => at(indices[k + j]).map((v, r) => v - o[r]));
      volume += (a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2]) +
        a[2] * (b[0] * c[1] - b[1] * c[0])) / 6;
    }
    for (const index of indices) {
      // web-ifc gives metres, and y up.
      const [x, y, z] = at(index);
      [x, -z, y].forEach((v, i) => {
        box[i] = Math.min(box[i], v * 1000);
        box[3 + i] = Math.max(box[3 + i], v * 1000);
      });
    }
    geometry.delete();
  }
  volumes.set(mesh.expressID, Math.abs(volume));
  boxes.set(mesh.expressID, box);
});

const near = (a, b) => Math.abs(a - b) <= 1e-9 * Math.max(1, Math.abs(b));
const ids = new Set();
const seen = new Set();
const products = api.GetLineIDsWithType(model, WebIFC.IFCPRODUCT, true);
for (let i = 0; i < products.size(); ++i) {
  const product = api.GetLine(model, products.get(i), true);
  if (product.type === WebIFC.IFCSITE) continue;
  const tag = product.Tag?.value ?? product.ObjectType?.value ?? '';
  const line = Number(tag.split(':')[1]);
  const wanted = expected.get(line);
  if (!wanted) {
    fail(`${tag} is no element`);
    continue;
  }
  if (seen.has(line)) fail(`${tag} is there twice`);
  seen.add(line);
  const id = product.GlobalId.value;
  if (!/^[0-3][0-9A-Za-z_$]{21}$/.test(id) || ids.has(id)) fail(`${tag} has the GlobalId ${id}`);
  ids.add(id);
  const { kind, values } = wanted;
  if (!product.Name.value.startsWith(values.header)) fail(`${tag} is called ${product.Name.value}`);
  const item = product.Representation.Representations[0].Items[0];
  if (kind === 'cylinder' && !(near(item.SweptArea.Radius.value, values.radius) &&
      near(item.Depth.value, values.length))) {
    fail(`${tag} has other sizes`);
  }
  if ((kind === 'torus' || kind === 'elbow') && !near(item.Angle.value, values.sweep)) {
    fail(`${tag} has the sweep ${item.Angle.value}, not ${values.sweep}`);
  }
  const box = boxes.get(products.get(i));
  if (kind !== 'line') {
    // Chords lie inside: by less than 1 % of the largest size. It reckons in 32 bits.
    const size = Math.max(...[0, 1, 2].map((k) => values.box[3 + k] - values.box[k]));
    values.box.forEach((v, k) => {
      const off = (k < 3 ? -1 : 1) * (v - box[k]);
      if (!(off > -0.05 && off < 0.05 + 0.01 * size)) fail(`${tag} is ${off} off its box (${k})`);
    });
  }
  if (values.volume > 0) {
    const ratio = volumes.get(products.get(i)) * 1e9 / values.volume;
    if (!(Math.abs(ratio - 1) <= Number(process.argv[4] ?? 0.015))) {
      fail(`${tag} has ${ratio} of its volume`);
    }
  }
}
if (seen.size !== expected.size) fail(`${seen.size} products of ${expected.size} elements`);
console.log(`${seen.size} products, ${failures} failures`);
api.CloseModel(model);
process.exit(failures > 0 ? 1 : 0);
