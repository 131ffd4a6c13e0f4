import {
  BufferAttribute,
  BufferGeometry,
  Color,
  DataTexture,
  DoubleSide,
  FrontSide,
  GLSL3,
  InstancedBufferAttribute,
  InstancedBufferGeometry,
  Mesh,
  NearestFilter,
  OneFactor,
  OneMinusSrcAlphaFactor,
  CustomBlending,
  RawShaderMaterial,
  RGIntegerFormat,
  Scene,
  UnsignedByteType,
  Vector2,
  Vector3,
  Vector4,
  WebGLRenderer,
  WebGLRenderTarget,
} from 'three';

import { Camera } from './Camera.js';
import { MOST_COLOURS, paletteOf } from './palette.js';
import { boxOf, coarse, countAtLeast, partsOf } from './parts.js';
import { COLOUR, EDGES, FACTS, HIDDEN, SCREEN_VERTEX, STATE_WIDTH, VERTEX } from './shaders.js';

const LINE_WIDTH = 2; // pixels of the page
const POINT_WIDTH = 7;

// Models of more elements than this are drawn with coarser meshes, and without small
// things and edges, while they move.
const LARGE = 20000;
const SMALL_AT_REST = 0.5; // pixels
const SMALL_IN_MOTION = 4;
const KEPT_IN_MOTION = 50000; // of each mesh, the largest, or a model far away would vanish
const REST_AFTER = 140; // milliseconds

// Where a frame in full would take longer than this, in milliseconds, as without a
// graphics card, a large model stays as it is in motion.
const PATIENCE = 3000;

// How far around a click an element is still hit, in pixels of the page.
const PICK_REACH = 4;

/**
 * Draws a scene into a canvas. Nothing is drawn until something changes:
 * invalidate() asks for one frame. After each, `onDrawn` is called.
 */
export class View {
  camera = new Camera();
  onDrawn = () => {};
  hasEdges = true;

  #scene;
  #renderer;
  #solids = []; // {mesh, sizes, isClosed, isMirrored, drawn: always, resting or moving}
  #world = new Scene();
  #screen = new Scene();
  #states;
  #facts = null;
  #factsAreCurrent = false;
  #frame = 0;
  #restTimer = 0;
  #atRest = true;
  #isSlow = null; // not known before a large model has come to rest
  #uniforms;

  constructor(canvas, scene) {
    this.canvas = canvas;
    this.#scene = scene;
    this.#renderer = rendererFor(canvas);
    this.#renderer.autoClear = false;
    this.#renderer.info.autoReset = false;
    this.#renderer.setClearColor(0, 0);
    this.camera.bounds = scene.bounds;
    this.#states = this.#makeStates();
    this.#uniforms = {
      states: { value: this.#states },
      palette: { value: this.#palette() },
      background: { value: new Color() },
      selection: { value: new Color() },
      ink: { value: new Color() },
      strength: { value: 1 },
      section: { value: new Vector4() },
      isCut: { value: false },
      pixels: { value: new Vector2() },
    };
    const parts = partsOf(scene);
    this.boxes = parts.boxes;
    for (const each of parts.shared) this.#addShared(each);
    for (const each of parts.joined) this.#addJoined(each);
    this.#addLines(scene.lines);
    this.#addPoints(scene.points);
    this.#addScreen();
    canvas.addEventListener('webglcontextrestored', () => this.invalidate());
  }

  /** Frames, draw calls and triangles of the last frame. */
  get statistics() {
    const { calls, triangles, frame } = this.#renderer.info.render;
    return { calls, triangles, frames: frame };
  }

  /** The size of the canvas in pixels of the page. */
  resize(width, height) {
    this.#renderer.setPixelRatio(Math.min(globalThis.devicePixelRatio, 2));
    this.#renderer.setSize(width, height, false);
    this.camera.resize(width, height);
    this.#facts?.dispose();
    this.#facts = null;
    this.invalidate();
  }

  setColours({ background, selection, ink, strength }) {
    // The shaders work in the colours of the screen.
    const set = (uniform, colour) => this.#uniforms[uniform].value.set(colour).convertLinearToSRGB();
    set('background', background);
    set('selection', selection);
    set('ink', ink);
    this.#uniforms.strength.value = strength;
    this.invalidate();
  }

  /** Calls stateOf(element) for [colour number, flags] of every element. */
  setStates(stateOf) {
    const { data } = this.#states.image;
    for (let i = 0; i < this.#scene.elements.count; ++i) {
      const [colour, flags] = stateOf(i);
      data[i * 2] = colour;
      data[i * 2 + 1] = flags;
    }
    this.#states.needsUpdate = true;
    this.invalidate();
  }

  isHidden(element) {
    return (this.#states.image.data[element * 2 + 1] & HIDDEN) !== 0;
  }

  /** Cuts away what lies beyond a plane, {normal, distance}; null for nothing. */
  setSection(plane) {
    this.#uniforms.isCut.value = plane !== null;
    if (plane) this.#uniforms.section.value.set(...plane.normal, plane.distance);
    for (const { mesh, isClosed, isMirrored } of this.#solids) {
      mesh.material.side = isClosed && !isMirrored && plane === null ? FrontSide : DoubleSide;
      mesh.userData.facts.side = mesh.material.side;
      mesh.material.needsUpdate = true;
      mesh.userData.facts.needsUpdate = true;
    }
    this.invalidate();
  }

  isCutAway([x, y, z]) {
    const { x: a, y: b, z: c, w } = this.#uniforms.section.value;
    return this.#uniforms.isCut.value && a * x + b * y + c * z > w;
  }

  /** The box of elements that are seen; of all elements without an argument. */
  boxOfVisible(elements = this.#all()) {
    const visible = [];
    for (const element of elements) if (!this.isHidden(element)) visible.push(element);
    return boxOf(this.boxes, visible);
  }

  /** Asks for one frame. */
  invalidate() {
    this.#factsAreCurrent = false;
    this.#atRest = this.#scene.elements.count <= LARGE;
    if (!this.#atRest) {
      clearTimeout(this.#restTimer);
      this.#restTimer = setTimeout(() => this.#rest(), REST_AFTER);
    }
    this.#request();
  }

  #rest() {
    this.#isSlow ??= this.#wouldBeSlow();
    if (this.#isSlow) return;
    this.#atRest = true;
    this.#request();
  }

  // From the time of a frame in motion. Reading a pixel waits until it is drawn.
  #wouldBeSlow() {
    const gl = this.#renderer.getContext();
    const begin = performance.now();
    this.drawMoving();
    gl.readPixels(0, 0, 1, 1, gl.RGBA, gl.UNSIGNED_BYTE, new Uint8Array(4));
    const took = performance.now() - begin;
    const now = this.statistics.triangles;
    let all = now;
    for (const { mesh, sizes, drawn } of this.#solids) {
      if (drawn === 'resting') all += (mesh.geometry.index.count / 3) * sizes.length;
    }
    return (took * all * 2) / Math.max(1, now) > PATIENCE;
  }

  /** Draws at once and in full, for a picture or a test. */
  drawNow() {
    this.#factsAreCurrent = false;
    this.#atRest = true;
    this.#draw();
  }

  /** Draws at once what is drawn while a model of many elements moves. */
  drawMoving() {
    this.#factsAreCurrent = false;
    this.#atRest = this.#scene.elements.count <= LARGE;
    this.#draw();
  }

  /**
   * What is at a pixel of the page, counted from the canvas: {element, place}, or
   * null. The nearest element within a few pixels counts, so that lines and points
   * can be hit.
   */
  pick(x, y) {
    const ratio = this.#renderer.getPixelRatio();
    const reach = Math.round(PICK_REACH * ratio);
    const size = 2 * reach + 1;
    const facts = this.#currentFacts();
    const left = Math.round(x * ratio) - reach;
    const bottom = facts.height - 1 - Math.round(y * ratio) - reach;
    const ids = new Uint8Array(size * size * 4);
    const depths = new Uint8Array(size * size * 4);
    this.#renderer.readRenderTargetPixels(facts, left, bottom, size, size, ids, 0, 0);
    this.#renderer.readRenderTargetPixels(facts, left, bottom, size, size, depths, 0, 2);
    const numberAt = (bytes, i) => bytes[i] + bytes[i + 1] * 256 + bytes[i + 2] * 65536;
    let best = null;
    for (let row = 0; row < size; ++row) {
      for (let column = 0; column < size; ++column) {
        const at = (row * size + column) * 4;
        const id = numberAt(ids, at);
        const away = (row - reach) ** 2 + (column - reach) ** 2;
        if (id === 0 || away > reach * reach || (best && away >= best.away)) continue;
        const depth = (numberAt(depths, at) / 16777215) * 2 - 1;
        const pixel = [(left + column + 0.5) / ratio, (facts.height - bottom - row - 0.5) / ratio];
        best = { away, element: id - 1, pixel, depth };
      }
    }
    if (best === null) return null;
    return { element: best.element, place: this.#unproject(best.pixel, best.depth) };
  }

  #unproject([x, y], depth) {
    const camera = this.camera.toThree();
    const { pixelsWide, pixelsHigh } = this.camera;
    return new Vector3((x / pixelsWide) * 2 - 1, 1 - (y / pixelsHigh) * 2, depth)
      .applyMatrix4(camera.projectionMatrixInverse)
      .applyMatrix4(camera.matrixWorld);
  }

  #request() {
    this.#frame ||= requestAnimationFrame(() => {
      this.#frame = 0;
      this.#draw();
    });
  }

  #draw() {
    this.#renderer.info.reset();
    const camera = this.#prepare();
    if (this.hasEdges && this.#atRest) this.#currentFacts();
    this.#renderer.setRenderTarget(null);
    this.#renderer.clear();
    this.#renderer.render(this.#world, camera);
    if (this.hasEdges && this.#atRest) this.#renderer.render(this.#screen, camera);
    this.onDrawn();
  }

  // The camera, and how many places of each mesh are large enough to be seen.
  #prepare() {
    const camera = this.camera.toThree();
    let unit = this.camera.unitsPerPixel;
    if (this.camera.isPerspective) unit *= camera.near / (camera.near + this.camera.height);
    const smallest = unit * (this.#atRest ? SMALL_AT_REST : SMALL_IN_MOTION);
    for (const { mesh, sizes, drawn } of this.#solids) {
      mesh.visible = drawn === 'always' || (drawn === 'resting') === this.#atRest;
      if (!sizes) continue;
      const kept = this.#atRest ? 0 : Math.min(KEPT_IN_MOTION, sizes.length);
      mesh.geometry.instanceCount = Math.max(kept, countAtLeast(sizes, smallest));
    }
    this.#renderer.getDrawingBufferSize(this.#uniforms.pixels.value);
    return camera;
  }

  // Element, normal and depth of every pixel.
  #currentFacts() {
    if (this.#factsAreCurrent) return this.#facts;
    const size = this.#renderer.getDrawingBufferSize(new Vector2());
    this.#facts ??= new WebGLRenderTarget(size.x, size.y, {
      count: 3,
      minFilter: NearestFilter,
      magFilter: NearestFilter,
      type: UnsignedByteType,
      generateMipmaps: false,
    });
    const camera = this.#prepare();
    const swap = () => {
      for (const mesh of this.#world.children) {
        [mesh.material, mesh.userData.facts] = [mesh.userData.facts, mesh.material];
      }
    };
    swap();
    this.#renderer.setRenderTarget(this.#facts);
    this.#renderer.clear();
    this.#renderer.render(this.#world, camera);
    this.#renderer.setRenderTarget(null);
    swap();
    const [elements, normals, depths] = this.#facts.textures;
    Object.assign(this.#screenUniforms, {
      elements: { value: elements },
      normals: { value: normals },
      depths: { value: depths },
    });
    this.#factsAreCurrent = true;
    return this.#facts;
  }

  #screenUniforms;

  #addScreen() {
    const triangle = new BufferGeometry();
    triangle.setAttribute(
      'position',
      new BufferAttribute(new Float32Array([-1, -1, 0, 3, -1, 0, -1, 3, 0]), 3),
    );
    const material = new RawShaderMaterial({
      glslVersion: GLSL3,
      vertexShader: SCREEN_VERTEX,
      fragmentShader: EDGES,
      uniforms: { ...this.#uniforms, elements: {}, normals: {}, depths: {} },
      depthTest: false,
      depthWrite: false,
      transparent: true,
      blending: CustomBlending,
      blendSrc: OneFactor,
      blendDst: OneMinusSrcAlphaFactor,
    });
    this.#screenUniforms = material.uniforms;
    const mesh = new Mesh(triangle, material);
    mesh.frustumCulled = false;
    this.#screen.add(mesh);
  }

  #makeStates() {
    const rows = Math.max(1, Math.ceil(this.#scene.elements.count / STATE_WIDTH));
    const data = new Uint8Array(STATE_WIDTH * rows * 2);
    const texture = new DataTexture(data, STATE_WIDTH, rows, RGIntegerFormat, UnsignedByteType);
    texture.internalFormat = 'RG8UI';
    texture.needsUpdate = true;
    return texture;
  }

  #palette() {
    const colours = paletteOf(this.#scene.kinds).map((each) =>
      new Color(each).convertLinearToSRGB(),
    );
    while (colours.length < MOST_COLOURS) colours.push(new Color());
    return colours;
  }

  #add(geometry, defines, options = {}) {
    const {
      width = 0,
      isClosed = false,
      isMirrored = false,
      sizes = null,
      drawn = 'always',
    } = options;
    const isSolid = 'SOLID' in defines;
    const material = (fragmentShader) =>
      new RawShaderMaterial({
        glslVersion: GLSL3,
        vertexShader: VERTEX,
        fragmentShader,
        defines,
        uniforms: {
          ...this.#uniforms,
          width: { value: width * Math.min(globalThis.devicePixelRatio, 2) },
          isClosed: { value: isClosed },
        },
        side: isSolid && isClosed && !isMirrored ? FrontSide : DoubleSide,
        forceSinglePass: true,
      });
    const mesh = new Mesh(geometry, material(COLOUR));
    mesh.userData.facts = material(FACTS);
    mesh.frustumCulled = false;
    this.#world.add(mesh);
    if (isSolid) this.#solids.push({ mesh, sizes, isClosed, isMirrored, drawn });
  }

  #addShared({ mesh, matrices, elements, sizes }) {
    const places = { element: new InstancedBufferAttribute(elements, 1) };
    for (let row = 0; row < 3; ++row) {
      const values = new Float32Array(elements.length * 4);
      for (let i = 0; i < elements.length; ++i) {
        values.set(matrices.subarray(i * 12 + row * 4, i * 12 + row * 4 + 4), i * 4);
      }
      places[`row${row}`] = new InstancedBufferAttribute(values, 4);
    }
    const isMirrored = hasMirror(matrices);
    const addMesh = ({ positions, normals, indices, closed }, drawn) => {
      const geometry = new InstancedBufferGeometry();
      for (const [name, attribute] of Object.entries(places)) geometry.setAttribute(name, attribute);
      geometry.setAttribute('position', new BufferAttribute(positions, 3));
      geometry.setAttribute('normal', new BufferAttribute(normals, 3));
      geometry.setIndex(new BufferAttribute(indices, 1));
      const defines = { SOLID: '', SHARED: '' };
      this.#add(geometry, defines, { isClosed: closed, isMirrored, sizes, drawn });
    };
    const moving = this.#scene.elements.count > LARGE ? coarse(mesh) : null;
    addMesh(mesh, moving ? 'resting' : 'always');
    if (moving) addMesh(moving, 'moving');
  }

  #addJoined({ positions, normals, elements, indices, closed }) {
    const geometry = new BufferGeometry();
    geometry.setAttribute('position', new BufferAttribute(positions, 3));
    geometry.setAttribute('normal', new BufferAttribute(normals, 3));
    geometry.setAttribute('element', new BufferAttribute(elements, 1));
    geometry.setIndex(new BufferAttribute(indices, 1));
    this.#add(geometry, { SOLID: '' }, { isClosed: closed });
  }

  #addLines({ positions, elements }) {
    if (elements.length === 0) return;
    const from = new Float32Array(elements.length * 3);
    const to = new Float32Array(elements.length * 3);
    for (let i = 0; i < elements.length; ++i) {
      from.set(positions.subarray(i * 6, i * 6 + 3), i * 3);
      to.set(positions.subarray(i * 6 + 3, i * 6 + 6), i * 3);
    }
    const geometry = quads([0, -1, 0, 1, -1, 0, 1, 1, 0, 0, 1, 0], elements);
    geometry.setAttribute('from', new InstancedBufferAttribute(from, 3));
    geometry.setAttribute('to', new InstancedBufferAttribute(to, 3));
    this.#add(geometry, { LINE: '' }, { width: LINE_WIDTH });
  }

  #addPoints({ positions, elements }) {
    if (elements.length === 0) return;
    const geometry = quads([-1, -1, 0, 1, -1, 0, 1, 1, 0, -1, 1, 0], elements);
    geometry.setAttribute('at', new InstancedBufferAttribute(positions, 3));
    this.#add(geometry, { POINT: '' }, { width: POINT_WIDTH });
  }

  *#all() {
    for (let i = 0; i < this.#scene.elements.count; ++i) yield i;
  }
}

function rendererFor(canvas) {
  try {
    return new WebGLRenderer({ canvas, antialias: true, alpha: true });
  } catch {
    throw new Error('this browser draws nothing in three dimensions (it has no WebGL 2)');
  }
}

// A quad for each of the elements.
function quads(corners, elements) {
  const geometry = new InstancedBufferGeometry();
  geometry.setAttribute('position', new BufferAttribute(new Float32Array(corners), 3));
  geometry.setIndex([0, 1, 2, 0, 2, 3]);
  geometry.setAttribute('element', new InstancedBufferAttribute(elements, 1));
  geometry.instanceCount = elements.length;
  return geometry;
}

function hasMirror(matrices) {
  for (let i = 0; i < matrices.length; i += 12) {
    const [a, b, c, , d, e, f, , g, h, k] = matrices.subarray(i, i + 11);
    if (a * (e * k - f * h) - b * (d * k - f * g) + c * (d * h - e * g) < 0) return true;
  }
  return false;
}
