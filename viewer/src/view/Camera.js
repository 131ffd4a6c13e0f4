// SPDX-License-Identifier: MIT
import { Matrix4, OrthographicCamera, PerspectiveCamera, Vector3 } from 'three';

import { Outline } from './Outline.js';

const DEGREE = Math.PI / 180;
const FIELD_OF_VIEW = 35 * DEGREE;

// How much of the height or width of the picture is filled by what shall be seen whole.
export const FILLED = 0.9;

/** Where the eye stands for each standard view, in degrees. Z is up. */
export const VIEWS = {
  iso: { name: 'Isometric', azimuth: -45, elevation: Math.atan(Math.SQRT1_2) / DEGREE },
  top: { name: 'Top', azimuth: -90, elevation: 90 },
  front: { name: 'Front', azimuth: -90, elevation: 0 },
  right: { name: 'Right', azimuth: 0, elevation: 0 },
  back: { name: 'Back', azimuth: 90, elevation: 0 },
  left: { name: 'Left', azimuth: 180, elevation: 0 },
  bottom: { name: 'Bottom', azimuth: -90, elevation: -90 },
};

/**
 * A view of the model: a target, the direction from it to the eye as azimuth and
 * elevation in radians, and the height of what is seen at the target in model
 * units. X of the picture is always level. In perspective the eye is as far away
 * as this height needs, so both projections show the target in the same size.
 *
 * Coordinates are those of the scene, relative to its offset.
 */
export class Camera {
  target = new Vector3();
  azimuth = VIEWS.iso.azimuth * DEGREE;
  elevation = VIEWS.iso.elevation * DEGREE;
  height = 1;
  isPerspective = false;
  bounds = [[0, 0, 0], [1, 1, 1]]; // of the model
  pixelsWide = 1;
  pixelsHigh = 1;

  #orthographic = new OrthographicCamera();
  #perspective = new PerspectiveCamera();

  /** The axes of the picture in the model: to the right, up, and towards the eye. */
  axes() {
    const [sa, ca] = [Math.sin(this.azimuth), Math.cos(this.azimuth)];
    const [se, ce] = [Math.sin(this.elevation), Math.cos(this.elevation)];
    return {
      right: new Vector3(-sa, ca, 0),
      up: new Vector3(-se * ca, -se * sa, ce),
      toEye: new Vector3(ce * ca, ce * sa, se),
    };
  }

  /** Where the eye is, [x, y, z, 1]; without perspective its direction, [x, y, z, 0]. */
  get eye() {
    const { toEye } = this.axes();
    if (!this.isPerspective) return [...toEye.toArray(), 0];
    const distance = this.height / 2 / Math.tan(FIELD_OF_VIEW / 2);
    return [...toEye.multiplyScalar(distance).add(this.target).toArray(), 1];
  }

  get aspect() {
    return this.pixelsWide / this.pixelsHigh;
  }

  /** Model units to a pixel at the target. */
  get unitsPerPixel() {
    return this.height / this.pixelsHigh;
  }

  resize(width, height) {
    this.pixelsWide = Math.max(1, width);
    this.pixelsHigh = Math.max(1, height);
  }

  /** What can be set by hand, for going back to a view. */
  get state() {
    const { azimuth, elevation, height, isPerspective } = this;
    return { target: this.target.clone(), azimuth, elevation, height, isPerspective };
  }

  set state(state) {
    Object.assign(this, state, { target: state.target.clone() });
  }

  /** Turns about a point, which stays where it is in the picture. */
  orbit(azimuth, elevation, pivot = this.target) {
    const before = this.axes();
    const arm = this.target.clone().sub(pivot);
    const parts = [arm.dot(before.right), arm.dot(before.up), arm.dot(before.toEye)];
    this.azimuth = wrapped(this.azimuth + azimuth);
    this.elevation = Math.min(90 * DEGREE, Math.max(-90 * DEGREE, this.elevation + elevation));
    const after = this.axes();
    this.target
      .copy(pivot)
      .addScaledVector(after.right, parts[0])
      .addScaledVector(after.up, parts[1])
      .addScaledVector(after.toEye, parts[2]);
  }

  /** Moves the picture by pixels to the right and down. */
  pan(dx, dy) {
    const { right, up } = this.axes();
    this.target
      .addScaledVector(right, -dx * this.unitsPerPixel)
      .addScaledVector(up, dy * this.unitsPerPixel);
  }

  /** Enlarges by a factor; the pixel x, y keeps what it shows at the target's depth. */
  zoom(factor, x = this.pixelsWide / 2, y = this.pixelsHigh / 2) {
    const { right, up } = this.axes();
    const moved = 1 - 1 / factor;
    this.target
      .addScaledVector(right, (x - this.pixelsWide / 2) * this.unitsPerPixel * moved)
      .addScaledVector(up, -(y - this.pixelsHigh / 2) * this.unitsPerPixel * moved);
    this.height = Math.min(1e12, Math.max(1e-6, this.height / factor));
  }

  /** Puts the eye at a place, in perspective, with the target so far before it. */
  stand(eye, distance) {
    this.height = 2 * distance * Math.tan(FIELD_OF_VIEW / 2);
    this.target.copy(eye).addScaledVector(this.axes().toEye, -distance);
  }

  look({ azimuth, elevation }) {
    this.azimuth = azimuth * DEGREE;
    this.elevation = elevation * DEGREE;
  }

  /** Shows a box [[x, y, z], [x, y, z]] or an Outline whole: it fills most of the picture. */
  fit(what) {
    const outline = what instanceof Outline ? what : Outline.ofBox(what);
    const axes = this.axes();
    const { right, up, toEye } = axes;
    const [[x0, x1], [y0, y1], [z0, z1]] = outline.along(right, up, toEye);
    this.target
      .set(0, 0, 0)
      .addScaledVector(right, (x0 + x1) / 2)
      .addScaledVector(up, (y0 + y1) / 2)
      .addScaledVector(toEye, (z0 + z1) / 2);
    const size = Math.max(y1 - y0, (x1 - x0) / this.aspect, (z1 - z0) * 1e-3);
    this.height = (size > 0 ? Math.max(size, 1e-3) : this.#around()) / FILLED;
    if (this.isPerspective && size > 0) this.#fitInPerspective(outline, axes, z1 - z0);
  }

  // What is near looks larger: goes nearer or away until the picture is filled.
  #fitInPerspective(outline, axes, deep) {
    const tangent = Math.tan(FIELD_OF_VIEW / 2);
    this.height += deep * tangent;
    for (let i = 0; i < 12; ++i) {
      const distance = this.height / 2 / tangent;
      const [left, right, bottom, top] = outline.seen(axes, this.target, distance);
      this.target
        .addScaledVector(axes.right, ((left + right) / 2) * distance)
        .addScaledVector(axes.up, ((bottom + top) / 2) * distance);
      const filled = Math.max(top - bottom, (right - left) / this.aspect) / (2 * tangent);
      // Going away makes the near parts smaller at once, and the far ones hardly.
      this.height *= Math.min(2, Math.max(0.7, (filled / FILLED) ** 0.8));
    }
  }

  // What is shown around a point, which has no size: a twentieth of the model.
  #around() {
    const [low, high] = this.bounds;
    return Math.hypot(...low.map((from, k) => high[k] - from)) / 20 || 1000;
  }

  /** The camera for the renderer; near and far lie close around the model. */
  toThree() {
    const { right, up, toEye } = this.axes();
    const depths = cornersOf(this.bounds).map((corner) => corner.sub(this.target).dot(toEye));
    const margin = this.height * 0.05 + 1e-6;
    const nearest = Math.max(...depths) + margin;
    const furthest = Math.min(...depths) - margin;
    let camera = this.#orthographic;
    let distance = nearest;
    if (this.isPerspective) {
      camera = this.#perspective;
      distance = this.height / 2 / Math.tan(FIELD_OF_VIEW / 2);
      camera.fov = FIELD_OF_VIEW / DEGREE;
      camera.aspect = this.aspect;
      camera.near = Math.max(distance - nearest, distance * 0.01);
      camera.far = Math.max(distance - furthest, camera.near * 1.01);
    } else {
      camera.top = this.height / 2;
      camera.bottom = -camera.top;
      camera.right = camera.top * this.aspect;
      camera.left = -camera.right;
      camera.near = 0;
      camera.far = nearest - furthest;
    }
    const eye = this.target.clone().addScaledVector(toEye, distance);
    camera.matrixAutoUpdate = false;
    camera.matrixWorldAutoUpdate = false;
    camera.matrixWorld.makeBasis(right, up, toEye).setPosition(eye);
    camera.matrixWorldInverse.copy(camera.matrixWorld).invert();
    camera.updateProjectionMatrix();
    return camera;
  }

  /** A function from places in the scene to [x, y, depth], pixels and -1..1. */
  projector() {
    const camera = this.toThree();
    const matrix = new Matrix4().multiplyMatrices(
      camera.projectionMatrix,
      camera.matrixWorldInverse,
    );
    const place = new Vector3();
    return ([x, y, z]) => {
      place.set(x, y, z).applyMatrix4(matrix);
      return [
        ((place.x + 1) / 2) * this.pixelsWide,
        ((1 - place.y) / 2) * this.pixelsHigh,
        place.z,
      ];
    };
  }
}

/** The state between two, t from 0 to 1, turning the shorter way. */
export function between(a, b, t) {
  const mix = (x, y) => x + (y - x) * t;
  return {
    target: a.target.clone().lerp(b.target, t),
    azimuth: a.azimuth + wrapped(b.azimuth - a.azimuth) * t,
    elevation: mix(a.elevation, b.elevation),
    height: a.height * (b.height / a.height) ** t,
    isPerspective: b.isPerspective,
  };
}

/** An angle in -pi..pi. */
function wrapped(angle) {
  return angle - 2 * Math.PI * Math.round(angle / (2 * Math.PI));
}

function cornersOf([low, high]) {
  const corners = [];
  for (const x of [low[0], high[0]]) {
    for (const y of [low[1], high[1]]) {
      for (const z of [low[2], high[2]]) corners.push(new Vector3(x, y, z));
    }
  }
  return corners;
}
