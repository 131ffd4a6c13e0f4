// SPDX-License-Identifier: MIT
import { Vector3 } from 'three';

const EYES = 1700; // millimetres between the eye and the floor that a walk begins on
const BODY = 250; // how near solids come
const SPEED = 3000; // in a second; with Shift four times as much
const TURN = Math.PI / 600; // for each pixel
const LOOK = 4000; // where the target lies before the eye

const WAYS = {
  ArrowUp: [0, 0, -1], KeyW: [0, 0, -1], ArrowDown: [0, 0, 1], KeyS: [0, 0, 1],
  KeyA: [-1, 0, 0], KeyD: [1, 0, 0], KeyE: [0, 1, 0], KeyQ: [0, -1, 0],
};

/**
 * Whether a ball touches boxes that may lie askew, 12 numbers each (the middle and three
 * halves of edges), of elements that `counts(element)`.
 */
export function touches([x, y, z], radius, frames, counts) {
  for (const { elements, frames: f } of frames) {
    for (let i = 0, at = 0; i < elements.length; ++i, at += 12) {
      const d = [x - f[at], y - f[at + 1], z - f[at + 2]];
      let outside = 0;
      for (let k = 3; k < 12 && outside <= radius * radius; k += 3) {
        const half = Math.hypot(f[at + k], f[at + k + 1], f[at + k + 2]);
        const part = half > 0 ? Math.abs(d[0] * f[at + k] + d[1] * f[at + k + 1] + d[2] * f[at + k + 2]) / half : 0;
        outside += Math.max(0, part - half) ** 2;
      }
      if (outside <= radius * radius && counts(elements[i])) return true;
    }
  }
  return false;
}

/** A walk through the model by keys, which goes through no solid. Drags look about. */
export class Walk {
  onChange = () => {};

  #view;
  #before = null; // the camera's state when the walk began
  #keys = new Set();
  #isFast = false;
  #frame = 0;

  constructor(view) {
    this.#view = view;
  }

  get isOn() {
    return this.#before !== null;
  }

  toggle() {
    const { camera } = this.#view;
    if (this.isOn) {
      cancelAnimationFrame(this.#frame);
      this.#frame = 0;
      this.#keys.clear();
      camera.isPerspective = this.#before.isPerspective;
      this.#before = null;
    } else {
      this.#before = camera.state;
      this.#begin(camera);
    }
    this.onChange();
    this.#view.invalidate();
  }

  // Stands before what is looked at, with the eyes at their height above its lowest place.
  #begin(camera) {
    const { toEye } = camera.axes();
    const [low, high] = camera.bounds;
    const size = Math.hypot(...low.map((x, k) => high[k] - x));
    const away = Math.min(camera.height, size);
    const eye = camera.target.clone().addScaledVector(new Vector3(toEye.x, toEye.y, 0).normalize(), away);
    eye.z = Math.min(Math.max(camera.target.z, low[2] + EYES), high[2] + EYES);
    camera.isPerspective = true;
    camera.elevation = 0;
    camera.stand(eye, LOOK);
  }

  /** A key goes down or up; whether the walk takes it. */
  key(event, isDown) {
    if (!this.isOn || !(event.code in WAYS)) return false;
    this.#isFast = event.shiftKey;
    if (isDown) this.#keys.add(event.code);
    else this.#keys.delete(event.code);
    if (isDown && this.#frame === 0) this.#go();
    return true;
  }

  /** Turns the head by pixels. */
  look(dx, dy) {
    const { camera } = this.#view;
    const eye = new Vector3(...camera.eye.slice(0, 3));
    camera.azimuth -= dx * TURN;
    camera.elevation = Math.max(-1.5, Math.min(1.5, camera.elevation + dy * TURN));
    camera.stand(eye, LOOK);
  }

  #go() {
    let before = null;
    const step = (now) => {
      if (this.#keys.size === 0 || !this.isOn) {
        this.#frame = 0;
        return;
      }
      this.move(Math.min(0.1, (now - (before ?? now)) / 1000));
      before = now;
      this.#frame = requestAnimationFrame(step);
    };
    this.#frame = requestAnimationFrame(step);
  }

  /** Goes on for some seconds with the keys that are down; slides along what is in the way. */
  move(seconds, keys = this.#keys) {
    const { camera } = this.#view;
    const { right, toEye } = camera.axes();
    const back = new Vector3(toEye.x, toEye.y, 0).normalize();
    const way = new Vector3();
    for (const key of keys) {
      const [x, up, z] = WAYS[key];
      way.addScaledVector(right, x).addScaledVector(back, z);
      way.z += up;
    }
    if (way.lengthSq() === 0) return;
    way.normalize().multiplyScalar(SPEED * (this.#isFast ? 4 : 1) * seconds);
    const eye = new Vector3(...camera.eye.slice(0, 3));
    // In steps that no pipe is thinner than.
    const steps = Math.max(1, Math.ceil(way.length() / BODY));
    way.divideScalar(steps);
    for (let i = 0; i < steps; ++i) {
      const stays = this.#isBlocked(eye); // who is inside of something may leave it
      for (const axis of ['x', 'y', 'z']) {
        const next = eye.clone();
        next[axis] += way[axis];
        if (stays || !this.#isBlocked(next)) eye.copy(next);
      }
    }
    camera.stand(eye, LOOK);
    this.#view.invalidate();
  }

  #isBlocked(eye) {
    return touches(eye.toArray(), BODY, this.#view.frames, (element) => !this.#view.isHidden(element));
  }
}
