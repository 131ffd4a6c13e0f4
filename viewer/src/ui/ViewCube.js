// SPDX-License-Identifier: MIT
import { VIEWS } from '../view/Camera.js';
import { h } from './dom.js';

// How each face is turned from the front one; the cube itself turns with the model.
const FACES = {
  front: 'rotateX(-90deg)',
  back: 'rotateZ(180deg) rotateX(-90deg)',
  right: 'rotateZ(-90deg) rotateX(-90deg)',
  left: 'rotateZ(90deg) rotateX(-90deg)',
  top: '',
  bottom: 'rotateX(180deg)',
};

/** A cube that turns with the model; its faces are buttons for the views. */
export class ViewCube {
  constructor(onView) {
    this.cube = h(
      'div',
      { class: 'cube' },
      Object.entries(FACES).map(([view, turn]) => {
        const face = h(
          'button',
          { type: 'button', class: 'face', tabIndex: -1, onclick: () => onView(view) },
          VIEWS[view].name,
        );
        face.style.transform = `${turn} translateZ(var(--half))`;
        return face;
      }),
    );
    this.panel = h('div', { class: 'view-cube', 'aria-hidden': 'true' }, this.cube);
  }

  /** Shows how a camera looks. Y of the page goes down, that of the model up. */
  update(camera) {
    const { right, up, toEye } = camera.axes();
    const m = [
      right.x, -up.x, toEye.x, 0,
      -right.y, up.y, -toEye.y, 0,
      right.z, -up.z, toEye.z, 0,
      0, 0, 0, 1,
    ];
    this.cube.style.transform = `matrix3d(${m.map((x) => x.toFixed(5)).join(',')})`;
  }
}
