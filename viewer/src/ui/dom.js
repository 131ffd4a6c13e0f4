// SPDX-License-Identifier: MIT
const SVG = 'http://www.w3.org/2000/svg';

/**
 * An element of the page. Properties that begin with "on" listen, "class" and
 * those with a dash are attributes, the rest are properties of the object. What is
 * no element among the children becomes text, never markup.
 */
export function h(tag, properties = {}, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(properties)) {
    if (name.startsWith('on')) element.addEventListener(name.slice(2), value);
    else if (name === 'class' || name === 'role' || name.includes('-')) setAttribute(element, name, value);
    else element[name] = value;
  }
  element.append(...children.flat().filter((child) => child !== null));
  return element;
}

/** Sets an attribute, or takes it away for null. */
export function setAttribute(element, name, value) {
  if (value === null) element.removeAttribute(name);
  else element.setAttribute(name, value);
}

// Drawn in strokes on 20 by 20.
const ICONS = {
  fit: 'M3 7V3h4M13 3h4v4M17 13v4h-4M7 17H3v-4M7.5 7.5h5v5h-5z',
  cube: 'M10 2.5l6.5 3.6v7.8L10 17.5l-6.5-3.6V6.1zM3.5 6.1L10 9.8l6.5-3.7M10 9.8v7.7',
  perspective: 'M3 5l14-2v14L3 15zM3 10h14M9.5 4v12',
  section: 'M10 2v16M4 5.5h6v9H4zM12.5 5.5h1M15 5.5h1v2M16 10v1M16 13.5v1h-1M12.5 14.5h1',
  measure: 'M2.5 13.5l11-11 4 4-11 11zM5.5 10.5l1.5 1.5M8 8l2.2 2.2M10.5 5.5L12 7',
  hide: 'M3 10s2.7-4.5 7-4.5S17 10 17 10s-2.7 4.5-7 4.5S3 10 3 10zM4 16L16 4',
  isolate: 'M7 7h6v6H7zM3 3h2M3 3v2M17 3h-2M17 3v2M3 17h2M3 17v-2M17 17h-2M17 17v-2',
  show: 'M3 10s2.7-4.5 7-4.5S17 10 17 10s-2.7 4.5-7 4.5S3 10 3 10zM10 8a2 2 0 100 4 2 2 0 000-4z',
  labels: 'M4 5V3.5h12V5M10 3.5v13M7.5 16.5h5',
  edges: 'M4 4h12v12H4zM4 4l12 12',
  theme: 'M10 3a7 7 0 100 14zM10 3a7 7 0 010 14',
  picture: 'M3 6h3l1.5-2h5L14 6h3v10H3zM10 8a3 3 0 100 6 3 3 0 000-6z',
  help: 'M7.5 7.5a2.5 2.5 0 113.6 2.2c-.8.4-1.1.9-1.1 1.8M10 14.5v.4',
  tree: 'M3 4h14M7 10h10M7 16h10M3 10h1M3 16h1',
  details: 'M4 3h12v14H4zM7 7h6M7 10h6M7 13h4',
  close: 'M5 5l10 10M15 5L5 15',
  copy: 'M7 7h9v10H7zM13 7V3H4v10h3',
  xray: 'M10 3a7 7 0 100 14 7 7 0 000-14zM10 7.5a2.5 2.5 0 100 5 2.5 2.5 0 000-5z',
  walk: 'M11 3.2a1 1 0 100 2 1 1 0 000-2zM10.5 7.5l-3 1.5-.5 3M10.5 7.5l.5 4.5-2.5 5M11 12l3 5M10.5 7.5l2 3 2.5.5',
  views: 'M4 4h12v9H4zM7 16h9M4 16h.5M7.5 10.5l2-2.5 1.5 1.8 1.2-1 1.8 1.7',
  more: 'M4.5 10h.5M10 10h.5M15.5 10h.5',
  next: 'M4 10h11M10.5 5.5L15 10l-4.5 4.5M17.5 4v12',
  previous: 'M16 10H5M9.5 5.5L5 10l4.5 4.5M2.5 4v12',
};

export function icon(name) {
  const svg = document.createElementNS(SVG, 'svg');
  for (const [key, value] of Object.entries({ viewBox: '0 0 20 20', 'aria-hidden': 'true', class: 'icon' })) {
    svg.setAttribute(key, value);
  }
  const path = document.createElementNS(SVG, 'path');
  path.setAttribute('d', ICONS[name]);
  svg.append(path);
  return svg;
}
