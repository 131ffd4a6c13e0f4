// SPDX-License-Identifier: MIT
// Shows the tileset beside the page.
import './style.css';

import { TilesRenderer } from '3d-tiles-renderer/three';
import {
  AmbientLight,
  Box3,
  BoxGeometry,
  DirectionalLight,
  EdgesGeometry,
  LineBasicMaterial,
  LineSegments,
  Matrix4,
  PerspectiveCamera,
  Raycaster,
  Scene,
  Sphere,
  Vector2,
  Vector3,
  WebGLRenderer,
} from 'three';
import { OrbitControls } from 'three/addons/controls/OrbitControls.js';

import { elementOf } from './elements.js';
import { h } from '../ui/dom.js';

// Pixels that a tile may be off before finer ones are fetched.
const ERROR = 4;
const FIELD_OF_VIEW = 35;
// From above, in front and to the left.
const VIEW = new Vector3(-1, -1, 0.8).normalize();
// A press that moves no further is a click.
const CLICK = 4;
const NAMES = { header: 'Header', kind: 'Kind', file: 'File', line: 'Line' };

const heading = () => h('h1', {}, document.title);

function say(text) {
  const alert = h('p', { role: 'alert' }, text);
  document.getElementById('app').replaceChildren(h('div', { class: 'loading' }, heading(), alert));
}

class Page {
  #renderer = new WebGLRenderer({ antialias: true, alpha: true, logarithmicDepthBuffer: true });
  #scene = new Scene();
  #camera = new PerspectiveCamera(FIELD_OF_VIEW, 1, 0.1, 1e6);
  #tiles = new TilesRenderer(new URL('tileset.json', location.href).href);
  #sphere = new Sphere();
  #frame = 0;
  #isFitted = false;
  #chosen = null;
  #light = new DirectionalLight(0xffffff, 2.2);

  constructor(root) {
    const canvas = this.#renderer.domElement;
    canvas.className = 'stage';
    canvas.tabIndex = 0;
    canvas.setAttribute('aria-label', 'Model: drag to turn, right button to move, wheel to zoom, click to ask');
    this.count = h('p', { role: 'status' });
    this.details = h('div', { class: 'details', role: 'status', hidden: true });
    const fit = h('button', { type: 'button' }, 'Fit');
    fit.addEventListener('click', () => this.fit());
    root.replaceChildren(canvas, h('div', { class: 'bar' }, heading(), fit, this.count), this.details);

    this.#camera.up.set(0, 0, 1);
    this.#scene.add(new AmbientLight(0xffffff, 1.2), this.#light, this.#tiles.group);
    this.controls = new OrbitControls(this.#camera, canvas);
    this.controls.zoomToCursor = true;
    this.controls.addEventListener('change', () => this.redraw());
    this.#listen(canvas);
    this.#follow();
    new ResizeObserver(() => this.#resize()).observe(root);
    this.redraw();
  }

  /** For scripts and tests: whether all that is in sight has been fetched. */
  get isComplete() {
    const { downloading, parsing } = this.#tiles.stats;
    return this.#isFitted && this.#frame === 0 && downloading + parsing === 0 &&
      this.#tiles.loadProgress === 1 && this.#tiles.group.children.length > 0;
  }

  redraw() {
    this.#frame ||= requestAnimationFrame(() => {
      this.#frame = 0;
      this.#draw();
    });
  }

  fit() {
    if (!this.#tiles.getBoundingSphere(this.#sphere)) return;
    const angle = (Math.min(1, this.#camera.aspect) * FIELD_OF_VIEW * Math.PI) / 360;
    const distance = Math.max(this.#sphere.radius, 0.01) / Math.sin(angle);
    this.controls.target.copy(this.#sphere.center);
    this.#camera.position.copy(this.#sphere.center).addScaledVector(VIEW, distance);
    this.controls.update();
    this.redraw();
  }

  /** The element below a place of the picture, in CSS pixels; null if there is none. */
  pick(x, y) {
    const { width, height } = this.#renderer.domElement.getBoundingClientRect();
    const ray = new Raycaster();
    const at = new Vector2((2 * x) / width - 1, 1 - (2 * y) / height);
    ray.setFromCamera(at, this.#camera);
    ray.params.Line.threshold = ray.params.Points.threshold =
      (this.#camera.position.distanceTo(this.controls.target) * 4) / height;
    const hit = ray.intersectObject(this.#tiles.group, true)[0];
    const element = hit ? elementOf(hit) : null;
    this.#mark(element && hit);
    this.#tell(element);
    this.redraw();
    return element;
  }

  #follow() {
    const tiles = this.#tiles;
    tiles.errorTarget = ERROR;
    // At the top of a server names come with two strokes, which some servers take as another.
    tiles.registerPlugin({ preprocessURL: (url) => url.replace(/([^:])\/{2,}/g, '$1/') });
    tiles.setCamera(this.#camera);
    for (const event of ['needs-update', 'needs-render', 'load-content', 'load-model', 'tiles-load-end']) {
      tiles.addEventListener(event, () => this.redraw());
    }
    tiles.addEventListener('load-tile-set', ({ tileSet }) => {
      const { elements } = tileSet?.extras ?? {};
      if (elements && !this.count.textContent) {
        this.count.textContent = `${elements.toLocaleString('en')} elements`;
      }
      this.redraw();
    });
    tiles.addEventListener('load-error', ({ error, url }) => {
      const text = `Could not read ${url ?? 'a tile'}: ${error.message}`;
      if (this.#isFitted) this.count.textContent = text;
      else say(text);
    });
  }

  #listen(canvas) {
    let from = null;
    canvas.addEventListener('pointerdown', (event) => {
      from = event.isPrimary && event.button === 0 ? [event.offsetX, event.offsetY] : null;
    });
    canvas.addEventListener('pointerup', (event) => {
      if (!from || Math.hypot(event.offsetX - from[0], event.offsetY - from[1]) > CLICK) return;
      this.pick(event.offsetX, event.offsetY);
    });
    globalThis.addEventListener('keydown', (event) => {
      if (event.key === 'f' || event.key === 'Home') this.fit();
    });
  }

  // A box around the element.
  #mark(hit) {
    this.#chosen?.removeFromParent();
    this.#chosen?.geometry.dispose();
    this.#chosen = null;
    if (!hit) return;
    const { object, instanceId } = hit;
    object.geometry.computeBoundingBox();
    const box = new Box3().copy(object.geometry.boundingBox);
    const size = box.getSize(new Vector3());
    const edges = new EdgesGeometry(new BoxGeometry(size.x, size.y, size.z));
    const lines = new LineSegments(edges, new LineBasicMaterial({ color: 0xff8a1f, depthTest: false }));
    const centre = box.getCenter(new Vector3());
    const place = new Matrix4();
    if (instanceId !== undefined) object.getMatrixAt(instanceId, place);
    lines.matrixAutoUpdate = false;
    lines.matrix.copy(object.matrixWorld).multiply(place)
      .multiply(new Matrix4().makeTranslation(centre.x, centre.y, centre.z));
    lines.renderOrder = 1;
    this.#scene.add(lines);
    this.#chosen = lines;
  }

  #tell(element) {
    this.details.hidden = !element;
    if (!element) return;
    const rows = Object.entries(NAMES)
      .flatMap(([key, name]) => [h('dt', {}, name), h('dd', {}, String(element[key]))]);
    this.details.replaceChildren(h('dl', {}, ...rows));
  }

  #resize() {
    const { clientWidth: width, clientHeight: height } = this.#renderer.domElement.parentElement;
    if (width === 0 || height === 0) return;
    this.#renderer.setPixelRatio(globalThis.devicePixelRatio);
    this.#renderer.setSize(width, height, false);
    this.#camera.aspect = width / height;
    this.#camera.updateProjectionMatrix();
    this.redraw();
  }

  #draw() {
    if (!this.#isFitted && this.#tiles.getBoundingSphere(this.#sphere)) {
      this.#isFitted = true;
      this.fit();
    }
    if (this.#isFitted) {
      const away = this.#camera.position.distanceTo(this.#sphere.center);
      this.#camera.near = Math.max(this.#sphere.radius * 1e-5, 1e-3);
      this.#camera.far = away + 2 * this.#sphere.radius;
      this.#camera.updateProjectionMatrix();
    }
    this.#camera.updateMatrixWorld();
    this.#light.position.copy(this.#camera.position);
    this.#light.target.position.copy(this.controls.target);
    this.#light.target.updateMatrixWorld();
    this.#tiles.setResolutionFromRenderer(this.#camera, this.#renderer);
    this.#tiles.update();
    this.#renderer.render(this.#scene, this.#camera);
  }
}

if (location.protocol === 'file:') {
  say('A browser fetches tiles from a web server only, for instance from that of: python3 -m http.server');
} else {
  try {
    // For scripts and tests.
    globalThis.vesk = new Page(document.getElementById('app'));
  } catch (error) {
    say(`The model can't be shown: ${error.message}`);
  }
}
