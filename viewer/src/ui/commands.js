// SPDX-License-Identifier: MIT
import { VIEWS } from '../view/Camera.js';

/**
 * Every command of the page once: for its button, its key and the help. A command is
 * {id, name, key, run}, with `icon` it has a button, with `isOn` that is pressed or not.
 * On small screens the `first` ones are at hand, the others behind a button.
 */
export function commandsOf(app) {
  const { state, view, overlay } = app;
  const onSelected = (work) => () => {
    if (state.selected.size > 0) work([...state.selected]);
  };
  const visible = (elements) => elements.filter((element) => !state.hidden[element]);
  const toggled = (object, name) => () => {
    object[name] = !object[name];
    view.invalidate();
  };
  const command = (id, name, key, icon, run, more = {}) => ({ id, name, key, icon, run, ...more });
  const views = Object.entries(VIEWS).map(([id, { name }], i) =>
    command(`view-${id}`, `${name} view`, String(i + 1), null, () => app.lookFrom(id)),
  );
  const findings = [
    command('next', 'Next finding', 'n', 'next', () => app.marks.step(1), { first: true }),
    command('previous', 'Previous finding', 'b', 'previous', () => app.marks.step(-1)),
  ];
  return [
    command('fit', 'Fit the selection, or all', 'f', 'fit', () => app.fit(), { first: true }),
    ...views,
    command('perspective', 'Perspective', 'p', 'perspective', toggled(view.camera, 'isPerspective'), {
      isOn: () => view.camera.isPerspective,
    }),
    command('walk', 'Walk', 'w', 'walk', () => app.walk.toggle(), { isOn: () => app.walk.isOn }),
    command('isolate', 'Isolate the selection', 'i', 'isolate', onSelected((elements) => state.isolate(elements)), {
      gap: true,
      needsSelection: true,
    }),
    command(
      'hide',
      'Hide the selection',
      'h',
      'hide',
      onSelected((elements) => {
        state.setHidden(visible(elements), true);
        state.select([]);
      }),
      { needsSelection: true },
    ),
    command('show', 'Show all', 'a', 'show', () => state.showAll()),
    command('section', 'Section', 'x', 'section', () => (app.section.isOn = !app.section.isOn), {
      gap: true,
      first: true,
      isOn: () => app.section.isOn,
    }),
    command('measure', 'Measure', 'm', 'measure', () => (app.measuring.isOn = !app.measuring.isOn), {
      first: true,
      isOn: () => app.measuring.isOn,
    }),
    command(
      'labels',
      'Texts',
      't',
      'labels',
      () => {
        overlay.hasLabels = !overlay.hasLabels;
        view.wantsDepths = overlay.hasLabels && app.scene.texts.length > 0;
        view.invalidate();
      },
      { isOn: () => overlay.hasLabels },
    ),
    command('edges', 'Edges', 'e', 'edges', toggled(view, 'hasEdges'), { isOn: () => view.hasEdges }),
    command('xray', 'See through all but findings and selection', 'g', 'xray', () => state.setXray(!state.xray), {
      isOn: () => state.xray,
    }),
    ...(app.scene.marks.length > 0 ? findings : []),
    command('views', 'Saved views', 'v', 'views', () => (app.views.isOn = !app.views.isOn), {
      gap: true,
      isOn: () => app.views.isOn,
    }),
    command('picture', 'Save a picture', 's', 'picture', () => app.savePicture()),
    command('theme', 'Light or dark', 'd', 'theme', () => app.turnTheme()),
    command('search', 'Search', '/', null, () => app.focusSearch()),
    command('help', 'Help', '?', 'help', () => app.help.toggle()),
    command('leave', 'Cancel, clear the selection', 'Escape', null, () => app.leave(), { keyName: 'Esc' }),
  ];
}
