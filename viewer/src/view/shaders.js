// SPDX-License-Identifier: MIT
// Every drawn thing knows the number of its element, and looks up in a texture
// how that element is drawn now: to hide, mark or select thousands of elements is
// to write a few bytes. A texel is: colour number, flags.

/** The flags of an element. */
export const HIDDEN = 1;
export const SELECTED = 2;
export const FADED = 4; // not what it is about: only a veil
export const GHOST = 8; // no longer there

export const STATE_WIDTH = 1024;
export const PLACES_WIDTH = 4096; // texels in a row, four for each place
export const MOST_PLANES = 6;

/** Which elements are drawn: all, those that are faded, or the others. */
export const ALL = 0;
export const VEILED = 1;
export const CLEAR = 2;

const STATES = `
precision highp float;
precision highp int;
precision highp usampler2D;
uniform usampler2D states;

uvec2 stateOf(uint element) {
  ivec2 at = ivec2(int(element) % ${STATE_WIDTH}, int(element) / ${STATE_WIDTH});
  return texelFetch(states, at, 0).rg;
}
`;

const FLAGS = `
#define HIDDEN ${HIDDEN}u
#define SELECTED ${SELECTED}u
#define FADED ${FADED}u
#define GHOST ${GHOST}u
`;

// Behind the far plane: nothing is drawn.
const NOWHERE = 'vec4(0.0, 0.0, 2.0, 1.0)';

// Vertices. SHARED: the mesh stands at many places, in a texture. RIBBON: so does a quad
// that stands for a mesh of few pixels: it lies along the longest edge of the mesh's box
// and looks at the eye. LINE: a quad along a
// piece of a line. POINT: a square. Both are `width` pixels wide, or `size` units where
// that is less, so that they never hide the solids that they belong to; what would be
// less than a pixel is a pixel and pale.
export const VERTEX = `
${STATES}
${FLAGS}
uniform mat4 viewMatrix;
uniform mat4 projectionMatrix;
uniform vec2 pixels;
uniform float width;
uniform float size;
uniform int layer;

in vec3 position;
in vec3 normal;
#ifdef SHARED
uniform sampler2D places;
in uint place;
#ifdef RIBBON
uniform vec3 middle; // of the mesh's box
uniform vec3 halves;
uniform vec4 eye;
#endif
#else
in uint element;
#endif
#ifdef LINE
in vec3 from;
in vec3 to;
#endif
#ifdef POINT
in vec3 at;
#endif

flat out uint vElement;
flat out uvec2 vState;
flat out float vHanded; // -1 where a place mirrors its mesh
out vec3 vNormal;
out vec3 vPlace;
out float vAlpha;

// How many pixels wide, and how clear.
vec2 widthAt(float w) {
  float wide = size * projectionMatrix[1][1] * pixels.y * 0.5 / w;
  return vec2(clamp(wide, 1.0, width), clamp(wide * wide, 0.0, 1.0));
}

void main() {
  vHanded = 1.0;
  vNormal = normal;
  vAlpha = 1.0;
  vec3 point = position;
#ifdef SHARED
  ivec2 texel = ivec2(int(place) % ${PLACES_WIDTH / 4} * 4, int(place) / ${PLACES_WIDTH / 4});
  vec4 row0 = texelFetch(places, texel, 0);
  vec4 row1 = texelFetch(places, texel + ivec2(1, 0), 0);
  vec4 row2 = texelFetch(places, texel + ivec2(2, 0), 0);
  vec4 owner = texelFetch(places, texel + ivec2(3, 0), 0);
  vElement = uint(owner.x) + uint(owner.y) * 65536u;
  vec4 local = vec4(position, 1.0);
#ifdef RIBBON
  local = vec4(middle, 1.0);
#endif
  point = vec3(dot(row0, local), dot(row1, local), dot(row2, local));
#ifdef RIBBON
  vec3 u = vec3(row0.x, row1.x, row2.x) * halves.x;
  vec3 v = vec3(row0.y, row1.y, row2.y) * halves.y;
  vec3 w = vec3(row0.z, row1.z, row2.z) * halves.z;
  vec3 squares = vec3(dot(u, u), dot(v, v), dot(w, w));
  float most = max(squares.x, max(squares.y, squares.z));
  vec3 along = squares.x == most ? u : squares.y == most ? v : w;
  float least = min(squares.x, min(squares.y, squares.z));
  float thick = sqrt(max(squares.x + squares.y + squares.z - most - least, 0.0));
  // A pixel at least, or it would fall between them.
  float deep = (projectionMatrix * viewMatrix * vec4(point, 1.0)).w;
  thick = max(thick, 0.5 * deep / (projectionMatrix[1][1] * pixels.y * 0.5));
  vec3 way = normalize(eye.xyz - point * eye.w);
  vec3 straight = normalize(along);
  vec3 side = cross(way, straight);
  float seen = length(side);
  side = seen > 1e-3 ? side / seen : vec3(0.0);
  // What points at the eye is as long as it is thick.
  vec3 ends = cross(side, way) * thick * (1.0 - seen);
  point += (along + ends) * position.x + side * thick * position.y;
  vNormal = seen > 1e-3 ? cross(straight, side) : way;
#else
  // Normals go by the cofactors: right for unequal scales and mirrors too.
  vec3 a = row0.xyz;
  vec3 b = row1.xyz;
  vec3 c = row2.xyz;
  vec3 turned = vec3(dot(cross(b, c), normal), dot(cross(c, a), normal), dot(cross(a, b), normal));
  vHanded = dot(a, cross(b, c)) < 0.0 ? -1.0 : 1.0;
  vNormal = turned * vHanded;
#endif
#else
  vElement = element;
#endif
  vState = stateOf(vElement);
#ifdef LINE
  point = mix(from, to, position.x);
#endif
#ifdef POINT
  point = at;
#endif
  vPlace = point;
  gl_Position = projectionMatrix * viewMatrix * vec4(point, 1.0);
#ifdef LINE
  vec4 p = projectionMatrix * viewMatrix * vec4(from, 1.0);
  vec4 q = projectionMatrix * viewMatrix * vec4(to, 1.0);
  vec2 along = (q.xy / q.w - p.xy / p.w) * pixels;
  along = dot(along, along) > 1e-12 ? normalize(along) : vec2(1.0, 0.0);
  vec2 aside = vec2(-along.y, along.x) * position.y + along * (position.x * 2.0 - 1.0) * 0.5;
  vec2 wide = widthAt(gl_Position.w);
  gl_Position.xy += aside * wide.x / pixels * gl_Position.w;
  vAlpha = wide.y;
#endif
#ifdef POINT
  vec2 wide = widthAt(gl_Position.w);
  gl_Position.xy += position.xy * wide.x / pixels * gl_Position.w;
  vAlpha = wide.y;
#endif
  bool isVeiled = (vState.g & FADED) != 0u;
  bool isOther = layer == ${VEILED} ? !isVeiled : layer == ${CLEAR} ? isVeiled : false;
  if ((vState.g & HIDDEN) != 0u || isOther || vAlpha < 0.1) gl_Position = ${NOWHERE};
}
`;

const CUT = `
uniform vec4 planes[${MOST_PLANES}]; // what has a positive distance from one of them is cut away
uniform int planeCount;
uniform vec4 eye; // a place, or a direction with w = 0
uniform mat4 viewMatrix;
uniform mat4 projectionMatrix;

void cut(vec3 place) {
  for (int i = 0; i < planeCount; ++i) if (dot(planes[i].xyz, place) > planes[i].w) discard;
}

// Seen from the inside of a solid: the normal of the plane that has opened it, and the
// depth of the place where one looks through that.
vec4 cap(vec3 place) {
  vec3 way = normalize(eye.xyz - place * eye.w);
  vec3 normal = way;
  float nearest = 1e30;
  for (int i = 0; i < planeCount; ++i) {
    float towards = dot(planes[i].xyz, way);
    float t = (planes[i].w - dot(planes[i].xyz, place)) / towards;
    if (towards > 1e-6 && t < nearest) {
      nearest = t;
      normal = planes[i].xyz;
    }
  }
  if (nearest > 1e29) return vec4(normal, gl_FragCoord.z);
  vec4 there = projectionMatrix * viewMatrix * vec4(place + way * nearest, 1.0);
  return vec4(normal, there.z / there.w * 0.5 + 0.5);
}
`;

// What people see. SOLID: shaded, and where a cut opens a closed solid, its inside
// is painted as if the plane were filled.
export const COLOUR = `
${STATES}
${FLAGS}
${CUT}
uniform sampler2D palette;
uniform vec3 background;
uniform vec3 selection;
uniform bool isClosed;

flat in uint vElement;
flat in uvec2 vState;
flat in float vHanded;
in vec3 vNormal;
in vec3 vPlace;
in float vAlpha;
out vec4 colour;

void main() {
  cut(vPlace);
  bool ghost = (vState.g & GHOST) != 0u;
  if (ghost && (int(gl_FragCoord.x) + int(gl_FragCoord.y)) % 3 != 0) discard;
  vec3 base = texelFetch(palette, ivec2(int(vState.r), 0), 0).rgb;
  float alpha = vAlpha;
  if ((vState.g & FADED) != 0u) {
    base = mix(vec3(dot(base, vec3(0.3, 0.5, 0.2))), base, 0.25);
    alpha *= 0.2;
  }
  if ((vState.g & SELECTED) != 0u) base = mix(base, selection, 0.78);
#ifdef SOLID
  vec3 n = normalize(vNormal);
#ifdef RIBBON
  bool inside = false;
#else
  bool inside = gl_FrontFacing == (vHanded < 0.0);
#endif
  if (inside) n = -n;
  if (inside && isClosed && planeCount > 0) {
    n = cap(vPlace).xyz;
    base *= 0.82;
  }
  vec3 seen = normalize((viewMatrix * vec4(n, 0.0)).xyz);
  float key = max(dot(seen, normalize(vec3(-0.35, 0.55, 0.76))), 0.0);
  float fill = max(dot(seen, normalize(vec3(0.6, -0.15, 0.6))), 0.0);
  float sky = 0.5 + 0.5 * n.z;
  float gloss = pow(max(dot(seen, normalize(vec3(-0.18, 0.28, 0.94))), 0.0), 40.0);
  base = base * (0.34 + 0.14 * sky + 0.52 * key + 0.12 * fill) + vec3(0.10 * gloss);
#endif
  colour = vec4(base * alpha, alpha);
}
`;

// What the pointer hits: the element (0 is none), the normal, the depth. With the
// normal: 1 for what is selected, a half for what is only a veil.
export const FACTS = `
${STATES}
${FLAGS}
${CUT}
uniform bool isClosed;
flat in uint vElement;
flat in uvec2 vState;
flat in float vHanded;
in vec3 vNormal;
in vec3 vPlace;
in float vAlpha;
layout(location = 0) out vec4 element;
layout(location = 1) out vec4 normal;
layout(location = 2) out vec4 depth;

void main() {
  cut(vPlace);
  uint n = vElement + 1u;
  element = vec4(float(n & 255u), float((n >> 8) & 255u), float((n >> 16) & 255u), 255.0) / 255.0;
  vec3 direction = vec3(0.0);
  float z = gl_FragCoord.z;
#ifdef SOLID
  direction = normalize(vNormal);
#ifndef RIBBON
  if (gl_FrontFacing == (vHanded < 0.0)) {
    direction = -direction;
    if (planeCount > 0 && isClosed) {
      vec4 opened = cap(vPlace);
      direction = opened.xyz;
      z = opened.w;
    }
  }
#endif
#endif
  float way = (vState.g & SELECTED) != 0u ? 1.0 : (vState.g & FADED) != 0u ? 0.5 : 0.0;
  normal = vec4(direction * 0.5 + 0.5, way);
  uint d = uint(clamp(z, 0.0, 1.0) * 16777215.0);
  depth = vec4(float(d & 255u), float((d >> 8) & 255u), float((d >> 16) & 255u), 255.0) / 255.0;
}
`;

export const SCREEN_VERTEX = `
in vec3 position;
void main() { gl_Position = vec4(position.xy, 0.0, 1.0); }
`;

// Lines where one element ends and another begins, and along sharp edges, drawn
// over the picture from the facts of its pixels.
export const EDGES = `
precision highp float;
uniform sampler2D elements;
uniform sampler2D normals;
uniform sampler2D depths;
uniform vec3 ink;
uniform vec3 selection;
uniform float strength;
out vec4 colour;

// Lines and points have no normal and no edges.
bool isThin(vec4 normal) { return dot(normal.xyz - 0.5, normal.xyz - 0.5) < 0.01; }

vec3 idAt(ivec2 p) { return texelFetch(elements, p, 0).rgb; }
float depthAt(ivec2 p) {
  vec4 d = texelFetch(depths, p, 0);
  return d.a == 0.0 ? 1.0 : dot(d.rgb, vec3(255.0, 65280.0, 16711680.0)) / 16777215.0;
}

void main() {
  ivec2 size = textureSize(elements, 0);
  ivec2 p = ivec2(gl_FragCoord.xy);
  vec3 id = idAt(p);
  vec4 here = texelFetch(normals, p, 0);
  float depth = depthAt(p);
  float veil = here.a > 0.4 && here.a < 0.6 ? 1.0 : 0.0;
  float outline = 0.0;
  float crease = 0.0;
  float chosen = 0.0;
  for (int i = 0; i < 4; ++i) {
    ivec2 step = i == 0 ? ivec2(1, 0) : i == 1 ? ivec2(-1, 0) : i == 2 ? ivec2(0, 1) : ivec2(0, -1);
    ivec2 q = clamp(p + step, ivec2(0), size - 1);
    vec4 there = texelFetch(normals, q, 0);
    if (isThin(here) || isThin(there)) continue;
    if (idAt(q) != id) {
      // On what lies behind: the line is one pixel wide, and a thin pipe keeps its colour.
      if (depth >= depthAt(q)) {
        outline = 1.0;
        if (there.a > 0.4 && there.a < 0.6) veil = 1.0;
      }
      if (max(here.a, there.a) > 0.9 && min(here.a, there.a) < 0.9) chosen = 1.0;
    } else {
      float bend = dot(here.xyz * 2.0 - 1.0, there.xyz * 2.0 - 1.0);
      if (dot(id, id) > 0.0 && bend < 0.86) crease = 1.0;
    }
  }
  for (int i = 0; i < 4 && chosen == 0.0; ++i) {
    ivec2 step = ivec2((i & 1) * 4 - 2, (i & 2) * 2 - 2);
    ivec2 q = clamp(p + step, ivec2(0), size - 1);
    float there = texelFetch(normals, q, 0).a;
    if (max(here.a, there) > 0.9 && min(here.a, there) < 0.9 && idAt(q) != id) chosen = 1.0;
  }
  float alpha = strength * max(0.62 * outline, 0.34 * crease);
  if (veil > 0.0) alpha *= 0.3;
  colour = chosen > 0.0 ? vec4(selection, 1.0) : vec4(ink * alpha, alpha);
}
`;
