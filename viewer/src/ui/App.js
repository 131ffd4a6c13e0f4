import { Model } from '../scene/Model.js';
import { State } from '../scene/State.js';
import { between, VIEWS } from '../view/Camera.js';
import { control } from '../view/controls.js';
import { Overlay } from '../view/Overlay.js';
import { View } from '../view/View.js';
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

const FLIGHT = 260; // milliseconds from one view to another
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
    this.overlay = new Overlay(this.overlayCanvas, this.view, scene.unit);
    this.overlay.texts = scene.texts;

    this.commands = this.#makeCommands();
    this.#build(root);
    this.view.onDrawn = () => this.#onDrawn();
    this.#listen();
    this.#useTheme(matchMedia(DARK).matches ? 'dark' : 'light');
    this.#update();
    this.#resize();
    this.view.camera.fit(this.#boxToFit() ?? scene.bounds);
    this.view.invalidate();
  }

  // Every command once: for its button, its key and the help.
  #makeCommands() {
    const visible = (elements) => [...elements].filter((element) => !this.state.hidden[element]);
    const onSelected = (work) => () => {
      if (this.state.selected.size > 0) work([...this.state.selected]);
    };
    const views = Object.entries(VIEWS).map(([id, { name }], i) => ({
      id: `view-${id}`,
      name: `${name} view`,
      key: String(i + 1),
      run: () => this.lookFrom(id),
    }));
    return [
      { id: 'fit', name: 'Fit the selection, or all', key: 'f', icon: 'fit', run: () => this.fit() },
      ...views,
      {
        id: 'perspective',
        name: 'Perspective',
        key: 'p',
        icon: 'perspective',
        isOn: () => this.view.camera.isPerspective,
        run: () => {
          this.view.camera.isPerspective = !this.view.camera.isPerspective;
          this.view.invalidate();
        },
      },
      {
        id: 'isolate',
        name: 'Isolate the selection',
        key: 'i',
        icon: 'isolate',
        gap: true,
        run: onSelected((elements) => this.state.isolate(elements)),
      },
      {
        id: 'hide',
        name: 'Hide the selection',
        key: 'h',
        icon: 'hide',
        run: onSelected((elements) => {
          this.state.setHidden(visible(elements), true);
          this.state.select([]);
        }),
      },
      { id: 'show', name: 'Show all', key: 'a', icon: 'show', run: () => this.state.showAll() },
      {
        id: 'section',
        name: 'Section',
        key: 'x',
        icon: 'section',
        gap: true,
        isOn: () => this.section.isOn,
        run: () => (this.section.isOn = !this.section.isOn),
      },
      {
        id: 'measure',
        name: 'Measure',
        key: 'm',
        icon: 'measure',
        isOn: () => this.measuring.isOn,
        run: () => (this.measuring.isOn = !this.measuring.isOn),
      },
      {
        id: 'labels',
        name: 'Texts',
        key: 't',
        icon: 'labels',
        isOn: () => this.overlay.hasLabels,
        run: () => {
          this.overlay.hasLabels = !this.overlay.hasLabels;
          this.view.invalidate();
        },
      },
      {
        id: 'edges',
        name: 'Edges',
        key: 'e',
        icon: 'edges',
        isOn: () => this.view.hasEdges,
        run: () => {
          this.view.hasEdges = !this.view.hasEdges;
          this.view.invalidate();
        },
      },
      ...(this.scene.marks.length === 0
        ? []
        : [
            {
              id: 'fade',
              name: 'Fade what has no finding',
              key: 'g',
              icon: 'fade',
              isOn: () => this.state.fades,
              run: () => this.state.setFades(!this.state.fades),
            },
          ]),
      {
        id: 'picture',
        name: 'Save a picture',
        key: 's',
        icon: 'picture',
        gap: true,
        run: () => this.savePicture(),
      },
      {
        id: 'theme',
        name: 'Light or dark',
        key: 'd',
        icon: 'theme',
        run: () => this.#useTheme(document.documentElement.dataset.theme === 'dark' ? 'light' : 'dark'),
      },
      { id: 'search', name: 'Search', key: '/', run: () => this.#focusSearch() },
      { id: 'help', name: 'Help', key: '?', icon: 'help', run: () => this.help.toggle() },
      { id: 'leave', name: 'Give up, clear the selection', key: 'Escape', keyName: 'Esc', run: () => this.#leave() },
    ];
  }

  #build(root) {
    const { scene, model, state, view, overlay } = this;
    const onZoom = (elements) => this.fit(elements);
    const run = (id) => () => this.run(id);
    this.toggles = [];
    this.tree = new TreePanel({ model, state, onZoom });
    this.details = new DetailsPanel({ model, state });
    this.legend = new Legend({ model, state });
    this.section = new SectionPanel({ view, scene, onClose: run('section') });
    this.measuring = new Measuring({ model, view, overlay, onClose: run('measure') });
    this.cube = new ViewCube((id) => this.lookFrom(id));
    this.help = new Help(this.commands);
    this.marks = scene.marks.length > 0 ? new MarksPanel({ model, state, onZoom }) : null;

    this.buttons = new Map();
    const tools = this.commands
      .filter((command) => command.icon)
      .map((command) => {
        const button = h(
          'button',
          {
            type: 'button',
            title: `${command.name} (${command.keyName ?? command.key})`,
            'aria-label': command.name,
            'aria-keyshortcuts': command.key,
            onclick: () => this.run(command.id),
          },
          icon(command.icon),
        );
        button.classList.toggle('gap', command.gap === true);
        button.dataset.command = command.id;
        this.buttons.set(command.id, button);
        return button;
      });

    this.left = h('aside', { class: 'side left', 'aria-label': 'Elements' }, this.#tabs(), this.legend.panel);
    this.right = h('aside', { class: 'side right', 'aria-label': 'Details' }, this.details.panel);
    this.scaleLine = h('div', { class: 'scale-line' });
    this.scaleText = h('span', {});
    this.counts = h('div', { class: 'counts', role: 'status' });
    this.stage = h(
      'main',
      { class: 'stage' },
      this.canvas,
      this.overlayCanvas,
      this.cube.panel,
      h('div', { class: 'popovers' }, this.section.panel, this.measuring.panel),
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
        h('div', { class: 'tools', role: 'toolbar', 'aria-label': 'Tools' }, tools),
        this.#toggle('details', 'Details', () => this.right),
      ),
      h('div', { class: 'middle' }, this.left, this.stage, this.right),
      this.help.dialog,
    );
    this.right.hidden = matchMedia(NARROW).matches;
    this.left.hidden = matchMedia(NARROW).matches;
    this.#showToggles();
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
    control(this.canvas, this.view.camera, {
      onChange: () => this.#moved(),
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
    const box = this.#boxToFit(elements);
    if (!box) return;
    this.#fly(() => this.view.camera.fit(box));
  }

  lookFrom(id) {
    this.#fly(() => {
      this.view.camera.look(VIEWS[id]);
      this.view.camera.fit(this.view.boxOfVisible() ?? this.scene.bounds);
    });
  }

  /** A PNG of what is seen, as a Blob. */
  async picture() {
    this.view.drawNow();
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
    return new Promise((resolve) => picture.toBlob(resolve, 'image/png'));
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

  #boxToFit(elements = null) {
    if (elements) return this.view.boxOfVisible(elements);
    if (this.state.selected.size > 0) {
      const box = this.view.boxOfVisible(this.state.selected);
      if (box) return box;
    }
    return this.view.boxOfVisible();
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
      camera.state = t < 1 ? between(from, to, t * t * (3 - 2 * t)) : to;
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
    this.view.setStates((element) => this.state.styleOf(element));
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

  #showButtons() {
    for (const { id, isOn } of this.commands) {
      if (isOn) this.buttons.get(id)?.setAttribute('aria-pressed', String(isOn()));
    }
    for (const id of ['isolate', 'hide']) this.buttons.get(id).disabled = this.state.selected.size === 0;
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
    const hit = this.view.pick(x, y);
    if (hit) this.state.select([hit.element], more);
    else if (!more) this.state.select([]);
  }

  #onDoubleClick(x, y) {
    if (this.measuring.isOn) return;
    const hit = this.view.pick(x, y);
    this.fit(hit ? [hit.element] : null);
  }

  #focusSearch() {
    this.left.hidden = false;
    this.showElements?.();
    this.#showToggles();
    this.tree.input.focus();
    this.tree.input.select();
  }

  // One thing after the other: the measure that was begun, the tool, the selection.
  #leave() {
    if (this.measuring.cancel()) return;
    if (this.measuring.isOn) this.measuring.isOn = false;
    else this.state.select([]);
  }

  #onKey(event) {
    if (event.ctrlKey || event.metaKey || event.altKey || this.help.dialog.open) return;
    const { target } = event;
    if (target.matches('input[type=search]')) {
      if (event.key === 'Escape') this.canvas.focus();
      return;
    }
    const isChoice = target.matches('select, input[type=range]');
    if (isChoice && (event.key.startsWith('Arrow') || event.key.length === 1)) return;
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
