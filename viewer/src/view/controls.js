// SPDX-License-Identifier: MIT
const CLICK = 5; // pixels that a click may wander
const TURN = Math.PI / 500; // radians for each pixel

/**
 * Mouse and touch on the canvas.
 *
 *   left button, one finger              turn
 *   right or middle button, with Shift   move
 *   wheel, two fingers                   enlarge, and move
 *   click                                onClick(x, y, more)
 *   pointer without a button             onHover(x, y)
 *   drag                                 onLook(dx, dy), which may take it
 *
 * Turning goes about what the pointer is on: pivotAt(x, y), or null.
 */
export function control(canvas, camera, { onChange, onClick, onDoubleClick, onHover, onLook = () => false, pivotAt }) {
  const pointers = new Map(); // by id: [x, y]
  let from = null; // where the first pointer went down
  let isDrag = false;
  let pivot = null;
  let spread = 0;

  const placeOf = (event) => {
    const box = canvas.getBoundingClientRect();
    return [event.clientX - box.left, event.clientY - box.top];
  };
  const middle = () => {
    const all = [...pointers.values()];
    return [0, 1].map((k) => all.reduce((sum, place) => sum + place[k], 0) / all.length);
  };
  const distance = () => {
    const [a, b] = [...pointers.values()];
    return Math.hypot(a[0] - b[0], a[1] - b[1]);
  };

  canvas.addEventListener('pointerdown', (event) => {
    canvas.focus({ preventScroll: true });
    canvas.setPointerCapture(event.pointerId);
    pointers.set(event.pointerId, placeOf(event));
    if (pointers.size === 1) {
      from = { place: placeOf(event), button: event.button };
      isDrag = false;
    } else {
      isDrag = true;
      spread = pointers.size === 2 ? distance() : 0;
    }
  });

  canvas.addEventListener('pointermove', (event) => {
    const place = placeOf(event);
    if (!pointers.has(event.pointerId)) {
      if (event.pointerType === 'mouse') onHover(...place);
      return;
    }
    const before = pointers.size > 1 ? middle() : pointers.get(event.pointerId);
    pointers.set(event.pointerId, place);
    const now = pointers.size > 1 ? middle() : place;
    const [dx, dy] = [now[0] - before[0], now[1] - before[1]];
    if (pointers.size > 1) {
      camera.pan(dx, dy);
      if (pointers.size === 2 && spread > 0) camera.zoom(distance() / spread, ...now);
      spread = pointers.size === 2 ? distance() : 0;
      onChange();
      return;
    }
    if (!isDrag) {
      if (Math.hypot(place[0] - from.place[0], place[1] - from.place[1]) < CLICK) {
        pointers.set(event.pointerId, before);
        return;
      }
      isDrag = true;
      pivot = pivotAt(...from.place);
    }
    if (onLook(dx, dy)) {
      onChange();
      return;
    }
    if (from.button !== 0 || event.shiftKey) camera.pan(dx, dy);
    else camera.orbit(-dx * TURN, dy * TURN, pivot ?? undefined);
    onChange();
  });

  const release = (event) => {
    if (!pointers.delete(event.pointerId)) return;
    if (event.type === 'pointerup' && !isDrag && from.button === 0) {
      onClick(...from.place, event.ctrlKey || event.metaKey || event.shiftKey);
    }
    spread = 0;
  };
  canvas.addEventListener('pointerup', release);
  canvas.addEventListener('pointercancel', release);
  canvas.addEventListener('dblclick', (event) => onDoubleClick(...placeOf(event)));
  canvas.addEventListener('contextmenu', (event) => event.preventDefault());
  canvas.addEventListener(
    'wheel',
    (event) => {
      event.preventDefault();
      const lines = event.deltaMode === 0 ? event.deltaY / 100 : event.deltaY / 3;
      camera.zoom(1.2 ** -Math.max(-4, Math.min(4, lines)), ...placeOf(event));
      onChange();
    },
    { passive: false },
  );
}
