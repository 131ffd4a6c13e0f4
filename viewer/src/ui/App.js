// SPDX-License-Identifier: MIT
import { csvOf, tableOf } from '../scene/csv.js';
import { Model } from '../scene/Model.js';
import { State } from '../scene/State.js';
import { between, VIEWS } from '../view/Camera.js';
import { control } from '../view/controls.js';
import { Overlay } from '../view/Overlay.js';
import { LEVELS, paletteOf } from '../view/palette.js';
import { View } from '../view/View.js';
import { Walk } from '../view/Walk.js';
import { addressOf, stateOf } from './Address.js';
import { commandsOf } from './commands.js';
import { DetailsPanel } from './DetailsPanel.js';
import { h, icon } from './dom.js';
import { Help } from './Help.js';
import { Legend } from './Legend.js';
import { MarksPanel } from './MarksPanel.js';
import { Measuring } from './Measuring.js';
import { countText, elementsText, scaleBar } from './numbers.js';
import { SectionPanel } from './SectionPanel.js';
import { TreePanel } from './TreePanel.js';
import { ViewCube } from './ViewCube.js';
import { ViewsPanel } from './ViewsPanel.js';

const FLIGHT = 260; // milliseconds from one view to another
const NOTE_AFTER = 400; // milliseconds until the address is that of the view
const NARROW = '(max-width: 760px)';
const DARK = '(prefers-color-scheme: dark)';

/** The page of a scene. */
export class App {
  #flight = 0;

  constructor(root, scene) {
    this.scene = scene;
    this.model = new Model(scene);
    this.state = new State(this.model);
    this.state.onChange = () => this.#update();

    this.canvas = h('canvas', {
      class: 'model',
      tabIndex: 0,
      role: 'application',
      'aria-label': `Model of ${elementsText(scene.elements.count)}; the arrow keys turn it`,
    });
    this.overlayCanvas = h('canvas', { class: 'overlay', 'aria-hidden': 'true' });
    this.view = new View(this.canvas, scene);
    this.overlay = new Overlay(this.overlayCanvas, this.view);
    this.overlay.texts = scene.texts;
    this.view.wantsDepths = scene.texts.length > 0;
    this.view.setPalette(paletteOf(scene.kinds));

    this.walk = new Walk(this.view);
    this.commands = commandsOf(this);
    this.#build(root);
    this.view.onDrawn = () => this.#onDrawn();
    this.#listen();
    this.#useTheme(matchMedia(DARK).matches ? 'dark' : 'light');
    this.#update();
    this.#resize();
    this.view.camera.fit(this.#firstSight());
    this.view.invalidate();
    if (location.hash) this.goTo(location.hash);
  }

  #build(root) {
    const { scene, model, state, view, overlay } = this;
    const onZoom = (elements) => this.fit(elements);
    const run = (id) => () => this.run(id);
    this.toggles = [];
    this.tree = new TreePanel({ model, state, onZoom });
    this.details = new DetailsPanel({ model, state, onCopy: (button) => this.copyTable(button) });
    this.legend = new Legend({ model, state });
    const boxOfSelection = () => view.boxOfVisible(state.selected.size > 0 ? state.selected : undefined);
    this.section = new SectionPanel({ view, scene, boxOfSelection, onClose: run('section') });
    this.views = new ViewsPanel({
      scene,
      addressNow: () => this.address,
      go: (address) => this.goTo(address),
      onClose: run('views'),
    });
    this.measuring = new Measuring({ model, view, overlay, onClose: run('measure') });
    this.cube = new ViewCube((id) => this.lookFrom(id));
    this.help = new Help(this.commands);
    this.marks = scene.marks.length > 0 ? new MarksPanel({ model, state, onZoom }) : null;

    this.buttons = new Map();
    const buttons = this.commands.filter((command) => command.icon).map((command) => this.#button(command));
    this.more = h(
      'button',
      {
        type: 'button',
        class: 'more',
        title: 'More tools',
        'aria-label': 'More tools',
        'aria-expanded': 'false',
        onclick: () => this.#showMore(!this.tools.classList.contains('open')),
      },
      icon('more'),
    );
    this.tools = h('div', { class: 'tools', role: 'toolbar', 'aria-label': 'Tools' }, buttons);
    this.left = h('aside', { class: 'side left', 'aria-label': 'Elements' }, this.#tabs(), this.legend.panel);
    this.right = h('aside', { class: 'side right', 'aria-label': 'Details' }, this.details.panel);
    this.print = h('img', { class: 'print', alt: '' });
    this.scaleLine = h('div', { class: 'scale-line' });
    this.scaleText = h('span', {});
    this.counts = h('div', { class: 'counts', role: 'status' });
    this.stage = h(
      'main',
      { class: 'stage' },
      this.canvas,
      this.overlayCanvas,
      this.cube.panel,
      h('div', { class: 'popovers' }, this.views.panel, this.section.panel, this.measuring.panel),
      this.#isEmpty()
        ? h('p', { class: 'nothing' }, this.model.count === 0 ? 'There are no elements' : 'No element can be drawn')
        : h('div', { class: 'scale', title: 'Scale, at the middle of the view' }, this.scaleText, this.scaleLine),
      this.counts,
    );
    root.replaceChildren(
      h(
        'header',
        { class: 'bar' },
        this.#toggle('tree', 'Tree', () => this.left),
        h('h1', {}, scene.title),
        this.tools,
        this.more,
        this.#toggle('details', 'Details', () => this.right),
      ),
      h('div', { class: 'middle' }, this.left, this.stage, this.right),
      this.help.dialog,
    );
    this.right.hidden = matchMedia(NARROW).matches;
    this.left.hidden = matchMedia(NARROW).matches;
    this.#showToggles();
  }

  #button(command) {
    const button = h(
      'button',
      {
        type: 'button',
        title: `${command.name} (${command.keyName ?? command.key})`,
        'aria-label': command.name,
        'aria-keyshortcuts': command.key,
        onclick: () => {
          this.#showMore(false);
          this.run(command.id);
        },
      },
      icon(command.icon),
    );
    button.classList.toggle('gap', command.gap === true);
    button.classList.toggle('first', command.first === true);
    button.dataset.command = command.id;
    this.buttons.set(command.id, button);
    return button;
  }

  // On small screens most tools are behind a button.
  #showMore(isShown) {
    this.tools.classList.toggle('open', isShown);
    this.more.setAttribute('aria-expanded', String(isShown));
  }

  // The tree alone, or beside it what was found.
  #tabs() {
    if (!this.marks) return this.tree.panel;
    const panels = [
      { name: 'Findings', panel: this.marks.panel },
      { name: 'Elements', panel: this.tree.panel },
    ];
    const choose = (chosen) => {
      panels.forEach(({ panel }, i) => {
        panel.hidden = i !== chosen;
        tabs[i].setAttribute('aria-selected', String(i === chosen));
        tabs[i].tabIndex = i === chosen ? 0 : -1;
      });
    };
    const tabs = panels.map(({ name, panel }, i) => {
      panel.setAttribute('role', 'tabpanel');
      panel.setAttribute('aria-label', name);
      return h(
        'button',
        {
          type: 'button',
          role: 'tab',
          onclick: () => choose(i),
          onkeydown: (event) => {
            if (event.key !== 'ArrowLeft' && event.key !== 'ArrowRight') return;
            choose(1 - i);
            tabs[1 - i].focus();
            event.stopPropagation();
          },
        },
        name,
      );
    });
    choose(0);
    this.showElements = () => choose(1);
    return h(
      'div',
      { class: 'tabbed' },
      h('div', { class: 'tabs', role: 'tablist' }, tabs),
      panels.map(({ panel }) => panel),
    );
  }

  #toggle(name, label, panel) {
    const button = h(
      'button',
      {
        type: 'button',
        title: label,
        'aria-label': label,
        onclick: () => {
          panel().hidden = !panel().hidden;
          this.#showToggles();
        },
      },
      icon(name),
    );
    this.toggles.push({ button, panel });
    return button;
  }

  #showToggles() {
    for (const { button, panel } of this.toggles) {
      button.setAttribute('aria-expanded', String(!panel().hidden));
    }
  }

  #listen() {
    new ResizeObserver(() => this.#resize()).observe(this.stage);
    matchMedia(DARK).addEventListener('change', (event) => this.#useTheme(event.matches ? 'dark' : 'light'));
    document.addEventListener('keydown', (event) => this.#onKey(event));
    document.addEventListener('keyup', (event) => this.walk.key(event, false));
    this.walk.onChange = () => this.#showButtons();
    addEventListener('beforeprint', () => this.#preparePrint());
    addEventListener('afterprint', () => this.print.remove());
    addEventListener('hashchange', () => this.goTo(location.hash));
    control(this.canvas, this.view.camera, {
      onChange: () => this.#moved(),
      onLook: (dx, dy) => this.walk.isOn && (this.walk.look(dx, dy), true),
      onClick: (x, y, more) => this.#onClick(x, y, more),
      onDoubleClick: (x, y) => this.#onDoubleClick(x, y),
      onHover: (x, y) => this.measuring.isOn && this.measuring.hover(x, y),
      pivotAt: (x, y) => this.view.pick(x, y)?.place ?? null,
    });
  }

  run(id) {
    this.commands.find((command) => command.id === id).run();
    this.#showButtons();
  }

  /** Shows elements whole: those given, else the selected ones, else all. */
  fit(elements = null) {
    const outline = this.#outlineToFit(elements);
    if (!outline) return;
    this.#fly(() => this.view.camera.fit(outline));
  }

  lookFrom(id) {
    const outline = this.view.outlineOfVisible();
    this.#fly(() => {
      this.view.camera.look(VIEWS[id]);
      this.view.camera.fit(outline ?? this.scene.bounds);
    });
  }

  // What is marked, with something of what is around it; else all.
  #firstSight() {
    const marked = this.state.marked;
    const box = marked.length > 0 ? this.view.boxOfVisible(marked) : null;
    if (!box) return this.view.outlineOfVisible() ?? this.scene.bounds;
    const [low, high] = box;
    const all = this.scene.bounds;
    const size = Math.hypot(...all[0].map((x, k) => all[1][k] - x));
    const around = Math.max(Math.hypot(...low.map((x, k) => high[k] - x)) * 0.15, size * 0.02);
    return [low.map((x) => x - around), high.map((x) => x + around)];
  }

  /** A PNG of what is seen, as a Blob. */
  async picture() {
    this.view.drawNow();
    return new Promise((resolve) => this.#pictureCanvas().toBlob(resolve, 'image/png'));
  }

  #pictureCanvas() {
    const { width, height } = this.canvas;
    const picture = h('canvas', { width, height });
    const context = picture.getContext('2d');
    const style = getComputedStyle(this.stage);
    const sky = context.createLinearGradient(0, 0, 0, height);
    sky.addColorStop(0, style.getPropertyValue('--sky'));
    sky.addColorStop(1, style.getPropertyValue('--ground'));
    context.fillStyle = sky;
    context.fillRect(0, 0, width, height);
    context.drawImage(this.canvas, 0, 0);
    context.drawImage(this.overlayCanvas, 0, 0);
    this.#drawScale(context, width / this.canvas.clientWidth, height, style.getPropertyValue('--text'));
    return picture;
  }

  /** Puts a table of what is selected into the clipboard; tells it at a button. */
  async copyTable(button = null) {
    const table = csvOf(tableOf(this.model, this.state.selected));
    await navigator.clipboard?.writeText(table).then(
      () => button?.classList.add('done'),
      () => {},
    );
    return table;
  }

  async savePicture() {
    const address = URL.createObjectURL(await this.picture());
    const name = this.scene.title.replace(/[^\p{L}\p{N}._-]+/gu, '-') || 'model';
    h('a', { href: address, download: `${name}.png` }).click();
    setTimeout(() => URL.revokeObjectURL(address), 10000);
  }

  #drawScale(context, ratio, height, colour) {
    if (this.#isEmpty()) return;
    const { pixels, text } = scaleBar(this.view.camera.unitsPerPixel, this.scene.unit);
    context.setTransform(ratio, 0, 0, ratio, 16, height - 16);
    context.strokeStyle = colour;
    context.fillStyle = colour;
    context.lineWidth = 1.5;
    context.beginPath();
    context.moveTo(0, -6);
    context.lineTo(0, 0);
    context.lineTo(pixels, 0);
    context.lineTo(pixels, -6);
    context.stroke();
    context.font = '12px system-ui, sans-serif';
    context.fillText(text, 6, -6);
  }

  #isEmpty() {
    return this.scene.failures.length === this.model.count;
  }

  #outlineToFit(elements = null) {
    if (elements) return this.view.outlineOfVisible(elements);
    if (this.state.selected.size > 0) {
      const outline = this.view.outlineOfVisible(this.state.selected);
      if (outline) return outline;
    }
    return this.view.outlineOfVisible();
  }

  // Goes from the view that is to the one that `change` makes.
  #fly(change) {
    cancelAnimationFrame(this.#flight);
    const { camera } = this.view;
    const from = camera.state;
    change();
    const to = camera.state;
    if (matchMedia('(prefers-reduced-motion: reduce)').matches) {
      this.view.invalidate();
      return;
    }
    let begin = null;
    const step = (now) => {
      begin ??= now;
      const t = Math.min(1, (now - begin) / FLIGHT);
      // The key for perspective works in a flight too.
      const { isPerspective } = camera;
      camera.state = { ...(t < 1 ? between(from, to, t * t * (3 - 2 * t)) : to), isPerspective };
      this.view.invalidate();
      if (t < 1) this.#flight = requestAnimationFrame(step);
    };
    this.#flight = requestAnimationFrame(step);
  }

  #moved() {
    cancelAnimationFrame(this.#flight);
    this.overlay.snapped = null;
    this.view.invalidate();
  }

  #update() {
    this.view.setStates((data) => this.state.fillStyles(data));
    this.overlay.glows = this.#glows();
    this.tree.update();
    this.details.update();
    this.legend.update();
    this.#showButtons();
    const { hiddenCount, selected } = this.state;
    this.counts.textContent = [
      elementsText(this.model.count),
      hiddenCount > 0 && `${countText(hiddenCount)} hidden`,
      selected.size > 0 && `${countText(selected.size)} selected`,
      this.scene.failures.length > 0 && `${countText(this.scene.failures.length)} not drawn`,
    ]
      .filter(Boolean)
      .join(', ');
  }

  // What is marked, where it shall be seen from afar.
  #glows() {
    if (!this.state.xray) return [];
    const { boxes } = this.view;
    return this.state.marked
      .filter((element) => !this.state.hidden[element] && boxes[element * 6] <= boxes[element * 6 + 3])
      .map((element) => ({
        box: boxes.subarray(element * 6, element * 6 + 6),
        colour: LEVELS[this.state.levelOf(element)].colour,
      }));
  }

  /** What is seen now, as an address without the #. */
  get address() {
    const { view, overlay, state } = this;
    const hidden = [];
    state.hidden.forEach((isHidden, element) => isHidden && hidden.push(element));
    return addressOf({
      camera: view.camera,
      hidden,
      selected: state.selected,
      planes: this.section.planes,
      by: this.legend.by.value,
      xray: state.xray,
      hasEdges: view.hasEdges,
      hasLabels: overlay.hasLabels,
    });
  }

  /** Shows what an address says. */
  goTo(address) {
    const { view, overlay, state } = this;
    if (address.replace(/^#/, '') === this.address) return;
    const given = stateOf(address, this.model.count);
    if (given.hidden) state.hidden.fill(0);
    for (const element of given.hidden ?? []) state.hidden[element] = 1;
    if ([...this.legend.by.options].some(({ value }) => value === given.by)) this.legend.choose(given.by);
    if (given.planes) this.section.planes = given.planes;
    if (given.xray !== undefined) {
      state.xray = given.xray;
      view.hasEdges = given.hasEdges;
      overlay.hasLabels = given.hasLabels;
    }
    state.select(given.selected ?? [...state.selected]);
    if (given.eye) {
      cancelAnimationFrame(this.#flight);
      const { target, ...eye } = given.eye;
      Object.assign(view.camera, eye);
      view.camera.target.set(...target);
    }
    view.invalidate();
    this.#showButtons();
  }

  #noteTimer = 0;

  // Keeps the address of the page true, a moment after something has changed.
  #note() {
    clearTimeout(this.#noteTimer);
    this.#noteTimer = setTimeout(() => {
      try {
        history.replaceState(null, '', `#${this.address}`);
      } catch {
        // The browser refuses for this file: links are in the saved views.
      }
    }, NOTE_AFTER);
  }

  // The canvas is empty on paper, and what is around it is for the screen.
  #preparePrint() {
    this.view.drawNow();
    this.print.src = this.#pictureCanvas().toDataURL('image/png');
    this.stage.append(this.print);
  }

  #showButtons() {
    for (const { id, isOn } of this.commands) {
      if (isOn) this.buttons.get(id)?.setAttribute('aria-pressed', String(isOn()));
    }
    for (const { id, needsSelection } of this.commands) {
      if (needsSelection) this.buttons.get(id).disabled = this.state.selected.size === 0;
    }
    this.buttons.get('show').disabled = this.state.hiddenCount === 0;
  }

  #useTheme(theme) {
    document.documentElement.dataset.theme = theme;
    const style = getComputedStyle(document.documentElement);
    const colour = (name) => style.getPropertyValue(name).trim();
    this.overlay.colours = {
      text: colour('--text'),
      paper: colour('--panel'),
      accent: colour('--accent'),
    };
    this.view.setColours({
      background: colour('--sky'),
      selection: colour('--chosen'),
      ink: colour('--ink'),
      strength: Number(colour('--edges')),
    });
  }

  #resize() {
    const { clientWidth, clientHeight } = this.stage;
    if (clientWidth === 0 || clientHeight === 0) return;
    this.overlay.resize(clientWidth, clientHeight);
    this.view.resize(clientWidth, clientHeight);
  }

  #onDrawn() {
    this.#note();
    this.overlay.draw();
    this.cube.update(this.view.camera);
    const { pixels, text } = scaleBar(this.view.camera.unitsPerPixel, this.scene.unit);
    this.scaleLine.style.width = `${pixels}px`;
    this.scaleText.textContent = text;
  }

  #onClick(x, y, more) {
    if (this.measuring.isOn) {
      this.measuring.click(x, y);
      return;
    }
    const text = this.overlay.hasLabels ? this.overlay.textAt(x, y) : null;
    const hit = text ?? this.view.pick(x, y);
    // On a small screen what was tapped is told below.
    if (matchMedia(NARROW).matches && !more) {
      this.right.hidden = !hit;
      this.#showToggles();
    }
    if (hit) this.state.select(this.model.together(hit.element), more, hit.element);
    else if (!more) this.state.select([]);
  }

  #onDoubleClick(x, y) {
    if (this.measuring.isOn) return;
    const hit = this.view.pick(x, y);
    this.fit(hit ? this.model.together(hit.element) : null);
  }

  turnTheme() {
    this.#useTheme(document.documentElement.dataset.theme === 'dark' ? 'light' : 'dark');
  }

  focusSearch() {
    this.left.hidden = false;
    this.showElements?.();
    this.#showToggles();
    this.tree.input.focus();
    this.tree.input.select();
  }

  // One thing after the other: the measure that was begun, the tool, the selection.
  leave() {
    if (this.walk.isOn) {
      this.walk.toggle();
      return;
    }
    if (this.measuring.cancel()) return;
    if (this.measuring.isOn) this.measuring.isOn = false;
    else this.state.select([]);
  }

  #onKey(event) {
    if (event.ctrlKey || event.metaKey || event.altKey || this.help.dialog.open) return;
    const { target } = event;
    if (target.matches('input[type=search], input[type=text], input[type=number]')) {
      if (event.key === 'Escape') this.canvas.focus();
      return;
    }
    const isChoice = target.matches('select, input[type=range]');
    if (isChoice && (event.key.startsWith('Arrow') || event.key.length === 1)) return;
    if (!isChoice && this.walk.key(event, true)) {
      event.preventDefault();
      return;
    }
    if (!isChoice && this.#onMoveKey(event)) {
      event.preventDefault();
      return;
    }
    const command = this.commands.find((each) => each.key === event.key);
    if (!command) return;
    event.preventDefault();
    this.run(command.id);
  }

  #onMoveKey({ key, shiftKey }) {
    const { camera } = this.view;
    const turn = Math.PI / 24;
    const arrows = { ArrowLeft: [1, 0], ArrowRight: [-1, 0], ArrowUp: [0, 1], ArrowDown: [0, -1] };
    if (key in arrows) {
      const [x, y] = arrows[key];
      if (shiftKey) camera.pan(x * 40, y * 40);
      else camera.orbit(x * turn, y * turn);
    } else if (key === '+' || key === '=') {
      camera.zoom(1.25);
    } else if (key === '-') {
      camera.zoom(0.8);
    } else {
      return false;
    }
    this.#moved();
    return true;
  }
}
