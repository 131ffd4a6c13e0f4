import { MOST_COLOURS } from './palette.js';

// Every drawn thing knows the number of its element, and looks up in a texture
// how that element is drawn now: to hide, mark or select thousands of elements is
// to write a few bytes. A texel is: colour number, flags.

/** The flags of an element. */
export const HIDDEN = 1;
export const SELECTED = 2;
export const FADED = 4; // not what it is about
export const GHOST = 8; // no longer there

export const STATE_WIDTH = 1024;

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

// Vertices. SHARED: the mesh stands at many places, given by the rows of a 3x4
// matrix. LINE: a quad along a piece of a line, `width` pixels wide. POINT: a
// square of `width` pixels.
export const VERTEX = `
${STATES}
${FLAGS}
uniform mat4 viewMatrix;
uniform mat4 projectionMatrix;
uniform vec2 pixels;
uniform float width;

in uint element;
in vec3 position;
in vec3 normal;
#ifdef SHARED
in vec4 row0;
in vec4 row1;
in vec4 row2;
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

void main() {
  vElement = element;
  vState = stateOf(element);
  vHanded = 1.0;
  vNormal = normal;
  vec3 place = position;
#ifdef SHARED
  vec4 local = vec4(position, 1.0);
  place = vec3(dot(row0, local), dot(row1, local), dot(row2, local));
  // Normals go by the cofactors: right for unequal scales and mirrors too.
  vec3 a = row0.xyz;
  vec3 b = row1.xyz;
  vec3 c = row2.xyz;
  vec3 turned = vec3(dot(cross(b, c), normal), dot(cross(c, a), normal), dot(cross(a, b), normal));
  vHanded = dot(a, cross(b, c)) < 0.0 ? -1.0 : 1.0;
  vNormal = turned * vHanded;
#endif
#ifdef LINE
  place = mix(from, to, position.x);
#endif
#ifdef POINT
  place = at;
#endif
  vPlace = place;
  gl_Position = projectionMatrix * viewMatrix * vec4(place, 1.0);
#ifdef LINE
  vec4 p = projectionMatrix * viewMatrix * vec4(from, 1.0);
  vec4 q = projectionMatrix * viewMatrix * vec4(to, 1.0);
  vec2 along = (q.xy / q.w - p.xy / p.w) * pixels;
  along = dot(along, along) > 1e-12 ? normalize(along) : vec2(1.0, 0.0);
  vec2 aside = vec2(-along.y, along.x) * position.y + along * (position.x * 2.0 - 1.0) * 0.5;
  gl_Position.xy += aside * width / pixels * gl_Position.w;
#endif
#ifdef POINT
  gl_Position.xy += position.xy * width / pixels * gl_Position.w;
#endif
  if ((vState.g & HIDDEN) != 0u) gl_Position = ${NOWHERE};
}
`;

const CUT = `
uniform vec4 section; // a plane: what has a positive distance from it is cut away
uniform bool isCut;
void cut(vec3 place) {
  if (isCut && dot(section.xyz, place) > section.w) discard;
}
`;

// What people see. SOLID: shaded, and where a cut opens a closed solid, its inside
// is painted as if the plane were filled.
export const COLOUR = `
${STATES}
${FLAGS}
${CUT}
uniform mat4 viewMatrix;
uniform vec3 palette[${MOST_COLOURS}];
uniform vec3 background;
uniform vec3 selection;
uniform bool isClosed;

flat in uint vElement;
flat in uvec2 vState;
flat in float vHanded;
in vec3 vNormal;
in vec3 vPlace;
out vec4 colour;

void main() {
  cut(vPlace);
  bool ghost = (vState.g & GHOST) != 0u;
  if (ghost && (int(gl_FragCoord.x) + int(gl_FragCoord.y)) % 3 != 0) discard;
  vec3 base = palette[int(vState.r)];
  if ((vState.g & FADED) != 0u) {
    base = mix(vec3(dot(base, vec3(0.3, 0.5, 0.2))), background, 0.55);
  }
  if ((vState.g & SELECTED) != 0u) base = mix(base, selection, 0.78);
#ifdef SOLID
  vec3 n = normalize(vNormal);
  bool inside = gl_FrontFacing == (vHanded < 0.0);
  if (inside) n = -n;
  if (inside && isClosed && isCut) {
    n = section.xyz;
    base *= 0.82;
  }
  vec3 seen = normalize((viewMatrix * vec4(n, 0.0)).xyz);
  float key = max(dot(seen, normalize(vec3(-0.35, 0.55, 0.76))), 0.0);
  float fill = max(dot(seen, normalize(vec3(0.6, -0.15, 0.6))), 0.0);
  float sky = 0.5 + 0.5 * n.z;
  float gloss = pow(max(dot(seen, normalize(vec3(-0.18, 0.28, 0.94))), 0.0), 40.0);
  base = base * (0.34 + 0.14 * sky + 0.52 * key + 0.12 * fill) + vec3(0.10 * gloss);
#endif
  colour = vec4(base, 1.0);
}
`;

// What the pointer hits: the element (0 is none), the normal, the depth.
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
layout(location = 0) out vec4 element;
layout(location = 1) out vec4 normal;
layout(location = 2) out vec4 depth;

void main() {
  cut(vPlace);
  uint n = vElement + 1u;
  element = vec4(float(n & 255u), float((n >> 8) & 255u), float((n >> 16) & 255u), 255.0) / 255.0;
  vec3 direction = vec3(0.0);
#ifdef SOLID
  direction = normalize(vNormal);
  if (gl_FrontFacing == (vHanded < 0.0)) {
    direction = isCut && isClosed ? section.xyz : -direction;
  }
#endif
  normal = vec4(direction * 0.5 + 0.5, (vState.g & SELECTED) != 0u ? 1.0 : 0.0);
  uint d = uint(clamp(gl_FragCoord.z, 0.0, 1.0) * 16777215.0);
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
      if (depth >= depthAt(q)) outline = 1.0;
      if (here.a != there.a) chosen = 1.0;
    } else {
      float bend = dot(here.xyz * 2.0 - 1.0, there.xyz * 2.0 - 1.0);
      if (dot(id, id) > 0.0 && bend < 0.86) crease = 1.0;
    }
  }
  for (int i = 0; i < 4 && chosen == 0.0; ++i) {
    ivec2 step = ivec2((i & 1) * 4 - 2, (i & 2) * 2 - 2);
    ivec2 q = clamp(p + step, ivec2(0), size - 1);
    if (texelFetch(normals, q, 0).a != here.a && idAt(q) != id) chosen = 1.0;
  }
  float alpha = strength * max(0.62 * outline, 0.34 * crease);
  colour = chosen > 0.0 ? vec4(selection, 1.0) : vec4(ink * alpha, alpha);
}
`;
