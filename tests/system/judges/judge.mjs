// SPDX-License-Identifier: MIT
// Looks at exported meshes with readers that are not ours.
//
//   node judge.mjs validator FILE.glb...
//   node judge.mjs three REPORT.json FILE.glb FILE.obj FILE.stl
//   node judge.mjs packed PLAIN.glb PACKED.glb MM
//
// The validator may find neither an error nor a warning. The loaders of three.js
// have to count the triangles of the report, find its volume, and the same box in
// all three files. Of two files, the second compressed, every corner of every triangle
// has to lie within a distance of its place in the first, and every normal within two
// degrees. Exit code 1 and a line for each difference otherwise.
import { readFileSync } from 'node:fs';
import process from 'node:process';

let failed = false;
const fail = (text) => {
  console.log(`failed: ${text}`);
  failed = true;
};

async function validate(files) {
  const { default: validator } = await import('gltf-validator');
  for (const file of files) {
    const report = await validator.validateBytes(new Uint8Array(readFileSync(file)));
    const { numErrors, numWarnings, messages } = report.issues;
    const unknown = messages.filter((each) => each.code === 'UNSUPPORTED_EXTENSION');
    if (unknown.length > 0 && !/instances|compress/.test(file)) fail(`${file}: an extension`);
    if (numErrors + numWarnings > 0) fail(`${file}: ${JSON.stringify(messages.slice(0, 5))}`);
    console.log(`${file}: ${report.info.totalTriangleCount} triangles, ${numErrors} errors, ` +
      `${numWarnings} warnings`);
  }
}

const buffer = (file) => {
  const bytes = readFileSync(file);
  return bytes.buffer.slice(bytes.byteOffset, bytes.byteOffset + bytes.byteLength);
};

// Triangles, volume and box of everything below an object, in its coordinates.
function measure(three, object) {
  object.updateMatrixWorld(true);
  const box = new three.Box3();
  const corners = [new three.Vector3(), new three.Vector3(), new three.Vector3()];
  let triangles = 0;
  let volume = 0;
  object.traverse((each) => {
    if (!each.isMesh) return;
    const { position } = each.geometry.attributes;
    const { index } = each.geometry;
    const count = index ? index.count : position.count;
    // From a point of its own: far from the origin the sum would cancel.
    for (let n = 0; n < (each.isInstancedMesh ? each.count : 1); ++n) {
      const matrix = new three.Matrix4();
      if (each.isInstancedMesh) each.getMatrixAt(n, matrix);
      matrix.premultiply(each.matrixWorld);
      const from = new three.Vector3().fromBufferAttribute(position, 0).applyMatrix4(matrix);
      for (let i = 0; i < count; i += 3) {
        corners.forEach((corner, k) => {
          corner.fromBufferAttribute(position, index ? index.getX(i + k) : i + k);
          corner.applyMatrix4(matrix);
          box.expandByPoint(corner);
          corner.sub(from);
        });
        volume += corners[0].dot(corners[1].clone().cross(corners[2])) / 6;
      }
      triangles += count / 3;
    }
  });
  return { triangles, volume, box };
}

// Corners and normals of everything drawn, in the order of the nodes: triangles as
// lists of three, lines and points of one.
function corners(three, object) {
  object.updateMatrixWorld(true);
  const all = [];
  object.traverse((each) => {
    if (!each.geometry) return;
    const { position, normal } = each.geometry.attributes;
    const { index } = each.geometry;
    const count = index ? index.count : position.count;
    for (let n = 0; n < (each.isInstancedMesh ? each.count : 1); ++n) {
      const matrix = new three.Matrix4();
      if (each.isInstancedMesh) each.getMatrixAt(n, matrix);
      matrix.premultiply(each.matrixWorld);
      const turn = new three.Matrix3().getNormalMatrix(matrix);
      const corner = (i) => {
        const at = index ? index.getX(i) : i;
        return {
          place: new three.Vector3().fromBufferAttribute(position, at).applyMatrix4(matrix),
          normal: normal && new three.Vector3().fromBufferAttribute(normal, at)
            .applyMatrix3(turn).normalize(),
        };
      };
      const step = each.isMesh ? 3 : 1;
      for (let i = 0; i < count; i += step) {
        all.push(Array.from({ length: step }, (_, k) => corner(i + k)));
      }
    }
  });
  return all;
}

// How far two are apart: triangles may begin at another corner.
function apart(a, b) {
  const ways = a.map((_, first) => a.map((corner, k) => {
    const other = b[(first + k) % b.length];
    return {
      distance: corner.place.distanceTo(other.place),
      angle: corner.normal ? corner.normal.angleTo(other.normal) : 0,
    };
  }).reduce((worst, each) => ({
    distance: Math.max(worst.distance, each.distance),
    angle: Math.max(worst.angle, each.angle),
  })));
  return ways.reduce((best, each) => (each.distance < best.distance ? each : best));
}

async function compare(plainFile, packedFile, millimetres) {
  globalThis.self ??= globalThis;
  const three = await import('three');
  const { GLTFLoader } = await import('three/addons/loaders/GLTFLoader.js');
  const { MeshoptDecoder } = await import('three/addons/libs/meshopt_decoder.module.js');
  const loader = new GLTFLoader().setMeshoptDecoder(MeshoptDecoder);
  const read = async (file) => corners(three, (await loader.parseAsync(buffer(file), '')).scene);
  const plain = await read(plainFile);
  const packed = await read(packedFile);
  if (!readFileSync(packedFile).includes('EXT_meshopt_compression')) fail('not compressed');
  if (plain.length !== packed.length) fail(`${packed.length} pieces, not ${plain.length}`);
  // A file is in metres; 32 bits tell what is 2^24 times as small as the largest number.
  const largest = plain.flat().reduce((most, { place }) => Math.max(most, place.length()), 0);
  const within = Number(millimetres) / 1000 + largest / 2 ** 22;
  let furthest = 0;
  let widest = 0;
  for (let i = 0; i < plain.length && i < packed.length; ++i) {
    const { distance, angle } = apart(plain[i], packed[i]);
    furthest = Math.max(furthest, distance);
    widest = Math.max(widest, angle);
  }
  const degrees = widest * 180 / Math.PI;
  console.log(`${packedFile}: ${packed.length} pieces, ${furthest * 1000} mm of ` +
    `${within * 1000}, ${degrees} degrees`);
  if (!(furthest <= within)) fail(`${packedFile}: a corner is too far off`);
  if (!(degrees <= 2)) fail(`${packedFile}: a normal is too far off`);
}

async function load(reportFile, glb, obj, stl) {
  globalThis.self ??= globalThis;  // where loaders look for what browsers have
  const three = await import('three');
  const { GLTFLoader } = await import('three/addons/loaders/GLTFLoader.js');
  const { OBJLoader } = await import('three/addons/loaders/OBJLoader.js');
  const { STLLoader } = await import('three/addons/loaders/STLLoader.js');
  const report = JSON.parse(readFileSync(reportFile, 'utf8'));
  const sum = (name) => report.kinds.reduce((total, kind) => total + kind[name], 0);
  const expected = { triangles: sum('triangles'), volume: sum('meshVolume') };

  // What vesk writes into a .glb is turned and in metres; turned back and in the
  // unit of the others it is the same.
  const scene = (await new GLTFLoader().parseAsync(buffer(glb), '')).scene;
  const back = new three.Group();
  back.rotation.x = Math.PI / 2;
  back.scale.setScalar(1000 / report.unit);
  back.add(scene);
  const judged = {
    [glb]: measure(three, back),
    [obj]: measure(three, new OBJLoader().parse(readFileSync(obj, 'utf8'))),
    [stl]: measure(three, new three.Mesh(new STLLoader().parse(buffer(stl)))),
  };
  const cubic = (report.unit / 1000) ** 3;
  // In an .stl the elements are one surface, and what is open has no volume.
  const isOpen = report.kinds.some((kind) => kind.triangles > 0 && kind.solids === 0);
  // Where the coordinates of a plant are of 32 bits, four digits of a pipe are left.
  const near = (a, b, size) => Math.abs(a - b) <= 1e-4 * size;
  for (const [file, { triangles, volume, box }] of Object.entries(judged)) {
    const size = box.getSize(new three.Vector3()).length();
    const other = judged[stl].box;
    console.log(`${file}: ${triangles} triangles, ${volume * cubic} m3`);
    if (triangles !== expected.triangles) fail(`${file}: not ${expected.triangles} triangles`);
    const counts = !isOpen || file !== stl;
    if (counts && !near(volume * cubic, expected.volume, expected.volume)) {
      fail(`${file}: not ${expected.volume} m3`);
    }
    for (const corner of ['min', 'max']) {
      for (const axis of ['x', 'y', 'z']) {
        if (!near(box[corner][axis], other[corner][axis], size)) {
          fail(`${file}: ${corner} ${axis} is ${box[corner][axis]}, not ${other[corner][axis]}`);
        }
      }
    }
  }
}

const [judge, ...files] = process.argv.slice(2);
if (judge === 'validator') await validate(files);
else if (judge === 'packed') await compare(...files);
else await load(...files);
process.exit(failed ? 1 : 0);
