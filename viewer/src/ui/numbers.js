// SPDX-License-Identifier: MIT
/** A number with at most so many decimals and without useless zeros: 12.5, 0, 1e-9. */
export function numberText(value, decimals = 3) {
  if (!Number.isFinite(value)) return String(value);
  const text = value.toFixed(decimals);
  // A small number that decimals would make nothing of.
  if (Number(text) === 0 && value !== 0) return value.toPrecision(3).replace(/\.?0+(?=e|$)/, '');
  return Number(text).toString();
}

/** "12.5 mm" */
export function lengthText(value, unit, decimals = 3) {
  return `${numberText(value, decimals)} ${unit}`.trim();
}

/**
 * The longest bar of 1, 2 or 5 times a power of ten that is no longer than `most`
 * pixels: {pixels, text}. Millimetres become metres and kilometres where these are
 * shorter to read.
 */
export function scaleBar(unitsPerPixel, unit, most = 150) {
  const room = unitsPerPixel * most;
  const power = 10 ** Math.floor(Math.log10(room));
  const length = [5, 2, 1].map((digit) => digit * power).find((each) => each <= room) ?? power;
  const pixels = length / unitsPerPixel;
  if (unit === 'mm' && length >= 1e6) return { pixels, text: `${numberText(length / 1e6)} km` };
  if (unit === 'mm' && length >= 1000) return { pixels, text: `${numberText(length / 1000)} m` };
  return { pixels, text: lengthText(length, unit) };
}

/** "1 element", "2 elements" */
export function elementsText(count) {
  return `${countText(count)} ${count === 1 ? 'element' : 'elements'}`;
}

/** 1234567 as "1 234 567". */
export function countText(count) {
  return String(count).replace(/\B(?=(\d{3})+$)/g, '\u202f');
}
