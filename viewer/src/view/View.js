// SPDX-License-Identifier: MIT
import {
  BufferAttribute,
  BufferGeometry,
  Color,
  CustomBlending,
  DataTexture,
  DoubleSide,
  FrontSide,
  GLSL3,
  InstancedBufferAttribute,
  InstancedBufferGeometry,
  Mesh,
  NearestFilter,
  NoBlending,
  OneFactor,
  OneMinusSrcAlphaFactor,
  RawShaderMaterial,
  RGBAFormat,
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
import { DepthImage } from './DepthImage.js';
import { Outline } from './Outline.js';
import { MOST_COLOURS } from './palette.js';
import { boxOf, partsOf } from './parts.js';
import { AT_REST, IN_MOTION, Places, Sight } from './Places.js';
import {
  ALL,
  CLEAR,
  COLOUR,
  EDGES,
  FACTS,
  FADED,
  HIDDEN,
  MOST_PLANES,
  SCREEN_VERTEX,
  STATE_WIDTH,
  VEILED,
  VERTEX,
} from './shaders.js';

// Pixels of the page, and how much of the thickness of a middling solid.
const LINE = { width: 2, part: 0.4 };
const POINT = { width: 7, part: 0.6 };

// While the view moves it is drawn coarser and without edges if a frame at rest takes
// longer than this, in milliseconds; before one was drawn, if it has more triangles.
const QUICK = 60;
const FEW_TRIANGLES = 50000;
const REST_AFTER = 140; // milliseconds

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

  /** Whether the depths of what is drawn are wanted after a frame at rest. */
  wantsDepths = false;
  depths = null; // a DepthImage of the last frame at rest, while the view has not changed

  #scene;
  #renderer;
  #solids = []; // {mesh, isClosed, isMirrored}
  #places = []; // {places, meshes: one for each level}
  frames; // of the places of all meshes, see partsOf
  #hasShape;
  #world = new Scene();
  #screen = new Scene();
  #states;
  #facts = null;
  #factsAreCurrent = false;
  #frame = 0;
  #restTimer = 0;
  #atRest = false;
  #restTime = null; // of the last frame at rest, in milliseconds
  #triangles = 0; // at rest, of what is seen now
  #hasVeil = false;
  #strength = 1;
  #thin = []; // {mesh, size} of points and lines
  #planes = [];
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
      palette: { value: paletteTexture() },
      background: { value: new Color() },
      selection: { value: new Color() },
      ink: { value: new Color() },
      strength: { value: 1 },
      planes: { value: Array.from({ length: MOST_PLANES }, () => new Vector4()) },
      planeCount: { value: 0 },
      eye: { value: new Vector4() },
      layer: { value: ALL },
      pixels: { value: new Vector2() },
    };
    const parts = partsOf(scene);
    this.boxes = parts.boxes;
    this.frames = parts.frames;
    this.thickness = parts.thickness || spacing(scene);
    for (const each of parts.shared) this.#addShared(each);
    for (const each of parts.joined) this.#addJoined(each);
    this.#hasShape = this.#shapes();
    this.#addLines(scene.lines, this.thickness * LINE.part);
    this.#addPoints(scene.points, this.thickness * POINT.part);
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
    this.#strength = strength;
    this.invalidate();
  }

  /** The colours by their numbers, as texts. */
  setPalette(colours) {
    const { data } = this.#uniforms.palette.value.image;
    const colour = new Color();
    colours.slice(0, MOST_COLOURS).forEach((each, i) => {
      colour.set(each).convertLinearToSRGB();
      data.set([colour.r, colour.g, colour.b, 1].map((x) => Math.round(x * 255)), i * 4);
    });
    this.#uniforms.palette.value.needsUpdate = true;
    this.invalidate();
  }

  /** Calls fill(data) for colour number and flags of every element, two bytes each. */
  setStates(fill) {
    const { data } = this.#states.image;
    fill(data);
    this.#hasVeil = false;
    for (let i = 1; i < this.#scene.elements.count * 2 && !this.#hasVeil; i += 2) {
      this.#hasVeil = (data[i] & (FADED | HIDDEN)) === FADED;
    }
    this.#states.needsUpdate = true;
    this.invalidate();
  }

  isHidden(element) {
    return (this.#states.image.data[element * 2 + 1] & HIDDEN) !== 0;
  }

  isFaded(element) {
    return (this.#states.image.data[element * 2 + 1] & FADED) !== 0;
  }

  /** Cuts away what lies beyond planes, [{normal, distance}], six at most. */
  setSection(planes) {
    this.#planes = planes.map(({ normal, distance }) => [...normal, distance]);
    this.#uniforms.planeCount.value = planes.length;
    this.#planes.forEach((plane, i) => this.#uniforms.planes.value[i].set(...plane));
    for (const { mesh, isClosed, isMirrored } of this.#solids) {
      mesh.material.side = isClosed && !isMirrored && planes.length === 0 ? FrontSide : DoubleSide;
      mesh.userData.facts.side = mesh.material.side;
      mesh.material.needsUpdate = true;
      mesh.userData.facts.needsUpdate = true;
    }
    this.invalidate();
  }

  isCutAway([x, y, z]) {
    return this.#planes.some(([a, b, c, d]) => a * x + b * y + c * z > d);
  }

  /** The box of elements that are seen; of all elements without an argument. */
  boxOfVisible(elements = this.#all()) {
    const visible = [];
    for (const element of elements) if (!this.isHidden(element)) visible.push(element);
    return boxOf(this.boxes, visible);
  }

  /**
   * The outline of elements that are seen, of all without an argument; null if none is
   * seen. Texts count where there is nothing else.
   */
  outlineOfVisible(elements = null) {
    const { count } = this.#scene.elements;
    const wanted = new Uint8Array(count).fill(elements === null ? 1 : 0);
    for (const element of elements ?? []) wanted[element] = 1;
    const hasContext = elements === null && this.#scene.elements.shown.includes(0);
    let [hasShape, isSeen] = [false, false];
    for (let i = 0; i < count; ++i) {
      if (this.isHidden(i) || !(this.boxes[i * 6] <= this.boxes[i * 6 + 3])) wanted[i] = 0;
      if (hasContext && this.#scene.elements.shown[i] !== 0) wanted[i] = 0;
      isSeen ||= wanted[i] === 1;
      hasShape ||= wanted[i] === 1 && this.#hasShape[i] > 0;
    }
    if (!isSeen) return null;
    const boxes = [];
    for (const { elements: owners, frames } of this.frames) {
      for (let i = 0; i < owners.length; ++i) {
        if (!wanted[owners[i]]) continue;
        for (let k = 0; k < 12; ++k) boxes.push(frames[i * 12 + k]);
      }
    }
    for (let i = 0; i < count; ++i) {
      if (!wanted[i] || this.#hasShape[i] === 2 || (hasShape && this.#hasShape[i] === 0)) continue;
      const [x0, y0, z0, x1, y1, z1] = this.boxes.subarray(i * 6, i * 6 + 6);
      boxes.push((x0 + x1) / 2, (y0 + y1) / 2, (z0 + z1) / 2);
      boxes.push((x1 - x0) / 2, 0, 0, 0, (y1 - y0) / 2, 0, 0, 0, (z1 - z0) / 2);
    }
    return new Outline(boxes);
  }

  // 2 for solids and faces, 1 for lines and points, 0 for texts.
  #shapes() {
    const shapes = new Uint8Array(this.#scene.elements.count);
    for (const element of this.#scene.lines.elements) shapes[element] = 1;
    for (const element of this.#scene.points.elements) shapes[element] = 1;
    for (const { elements } of this.frames) for (const element of elements) shapes[element] = 2;
    return shapes;
  }

  /** Asks for one frame. */
  invalidate() {
    this.#factsAreCurrent = false;
    this.depths = null;
    this.#atRest = false;
    clearTimeout(this.#restTimer);
    this.#request();
  }

  #rest() {
    this.#atRest = true;
    this.#request();
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
    this.#atRest = false;
    this.#restTime = Infinity;
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
    const begin = performance.now();
    this.#renderer.info.reset();
    const camera = this.#prepare();
    const isWhole = this.#atRest || !this.#isBusy;
    if (isWhole && (this.hasEdges || this.wantsDepths)) this.#currentFacts();
    this.#renderer.setRenderTarget(null);
    this.#renderWorld(camera);
    if (isWhole && this.hasEdges) this.#renderer.render(this.#screen, camera);
    if (isWhole) {
      if (this.wantsDepths) this.#readDepths();
      this.#measure(begin);
    } else {
      this.#restTimer = setTimeout(() => this.#rest(), REST_AFTER);
    }
    this.onDrawn();
  }

  // How long it took. Reading a pixel waits until it is drawn; without reading it would
  // be the time of giving the orders.
  #measure(begin) {
    const gl = this.#renderer.getContext();
    if (!this.wantsDepths) gl.readPixels(0, 0, 1, 1, gl.RGBA, gl.UNSIGNED_BYTE, new Uint8Array(4));
    this.#restTime = performance.now() - begin;
  }

  get #isBusy() {
    return this.#restTime === null ? this.#triangles > FEW_TRIANGLES : this.#restTime > QUICK;
  }

  // What is only a veil, and over it all else, as if it were in front.
  #renderWorld(camera) {
    this.#renderer.clear();
    const layers = this.#hasVeil ? [VEILED, CLEAR] : [ALL];
    layers.forEach((layer, i) => {
      if (i > 0) this.#renderer.clearDepth();
      this.#uniforms.layer.value = layer;
      this.#renderer.render(this.#world, camera);
    });
  }

  // The camera, and the places that are drawn.
  #prepare() {
    const camera = this.camera.toThree();
    const sight = new Sight(this.camera);
    const states = this.#states.image.data;
    this.#uniforms.eye.value.set(...this.camera.eye);
    // Lines around things of a pixel or two would be all that is seen of them.
    const across = this.thickness / this.camera.unitsPerPixel;
    this.#uniforms.strength.value = this.#strength * Math.min(1, Math.max(0.12, (across - 1) / 5));
    // Points and lines that would be too pale.
    for (const { mesh, size } of this.#thin) {
      mesh.visible = this.camera.isPerspective || (size / this.camera.unitsPerPixel) ** 2 > 0.1;
    }
    this.#renderer.getDrawingBufferSize(this.#uniforms.pixels.value);
    const choose = (limits) => {
      this.#triangles = 0;
      for (const { places, meshes } of this.#places) {
        const { triangles } = places.choose(sight, limits, AT_REST, states, this.#planes);
        this.#triangles += triangles;
        meshes.forEach((mesh, level) => (mesh.visible = places.levels[level].count > 0));
      }
    };
    choose(this.#atRest ? AT_REST : this.#restTime > QUICK ? IN_MOTION : AT_REST);
    if (!this.#atRest && this.#restTime === null && this.#isBusy) choose(IN_MOTION);
    return camera;
  }

  #readDepths() {
    const { width, height } = this.#facts;
    const bytes = new Uint8Array(width * height * 4);
    this.#renderer.readRenderTargetPixels(this.#facts, 0, 0, width, height, bytes, 0, 2);
    this.depths = new DepthImage(bytes, width, height, this.camera);
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
    this.#renderWorld(camera);
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

  #add(geometry, defines, options = {}) {
    const { width = 0, size = 0, isClosed = false, isMirrored = false } = options;
    const { places = null, middle = [0, 0, 0], halves = [0, 0, 0] } = options;
    const isSolid = 'SOLID' in defines;
    const uniforms = {
      ...this.#uniforms,
      width: { value: width * Math.min(globalThis.devicePixelRatio, 2) },
      size: { value: size },
      isClosed: { value: isClosed },
      places: { value: places },
      middle: { value: new Vector3(...middle) },
      halves: { value: new Vector3(...halves) },
    };
    const material = (fragmentShader, more) =>
      new RawShaderMaterial({
        glslVersion: GLSL3,
        vertexShader: VERTEX,
        fragmentShader,
        defines,
        uniforms,
        side: isSolid && isClosed && !isMirrored ? FrontSide : DoubleSide,
        forceSinglePass: true,
        blending: NoBlending,
        ...more,
      });
    const pale = {
      transparent: true,
      blending: CustomBlending,
      blendSrc: OneFactor,
      blendDst: OneMinusSrcAlphaFactor,
    };
    const mesh = new Mesh(geometry, material(COLOUR, isSolid ? {} : pale));
    // In the same order as the colours, what is pale behind what is not.
    mesh.userData.facts = material(FACTS, isSolid ? {} : { transparent: true });
    mesh.frustumCulled = false;
    this.#world.add(mesh);
    if (isSolid) this.#solids.push({ mesh, isClosed, isMirrored });
    return mesh;
  }

  #addShared(part) {
    const places = new Places(part);
    const { isClosed, isMirrored } = places;
    const [low, high] = [places.box.slice(0, 3), places.box.slice(3)];
    const meshes = places.levels.map(({ geometry, isRibbon }) => {
      const defines = { SOLID: '', SHARED: '', ...(isRibbon ? { RIBBON: '' } : {}) };
      return this.#add(geometry, defines, {
        isClosed: isClosed && !isRibbon,
        isMirrored,
        places: places.texture,
        middle: low.map((x, k) => (x + high[k]) / 2),
        halves: low.map((x, k) => (high[k] - x) / 2),
      });
    });
    this.#places.push({ places, meshes });
  }

  #addJoined({ positions, normals, elements, indices, closed }) {
    const geometry = new BufferGeometry();
    geometry.setAttribute('position', new BufferAttribute(positions, 3));
    geometry.setAttribute('normal', new BufferAttribute(normals, 3));
    geometry.setAttribute('element', new BufferAttribute(elements, 1));
    geometry.setIndex(new BufferAttribute(indices, 1));
    geometry.computeBoundingSphere();
    this.#add(geometry, { SOLID: '' }, { isClosed: closed }).frustumCulled = true;
  }

  #addLines({ positions, elements }, size) {
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
    this.#thin.push({ mesh: this.#add(geometry, { LINE: '' }, { width: LINE.width, size }), size });
  }

  #addPoints({ positions, elements }, size) {
    if (elements.length === 0) return;
    const geometry = quads([-1, -1, 0, 1, -1, 0, 1, 1, 0, -1, 1, 0], elements);
    geometry.setAttribute('at', new InstancedBufferAttribute(positions, 3));
    this.#thin.push({ mesh: this.#add(geometry, { POINT: '' }, { width: POINT.width, size }), size });
  }

  *#all() {
    for (let i = 0; i < this.#scene.elements.count; ++i) yield i;
  }
}

function rendererFor(canvas) {
  try {
    return new WebGLRenderer({ canvas, antialias: true, alpha: true });
  } catch {
    throw new Error("this browser can't draw in three dimensions (it has no WebGL 2)");
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

function paletteTexture() {
  const texture = new DataTexture(new Uint8Array(MOST_COLOURS * 4), MOST_COLOURS, 1, RGBAFormat);
  texture.needsUpdate = true;
  return texture;
}

// What stands in for the thickness of solids where there are none: how far lines and
// points are apart.
function spacing({ bounds: [low, high], elements }) {
  const size = Math.hypot(...low.map((x, k) => high[k] - x));
  return size > 0 ? size / Math.sqrt(elements.count) : 1e9;
}
