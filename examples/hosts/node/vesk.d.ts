// SPDX-License-Identifier: MIT

/** x, y and z, finite. */
export type Point = readonly [number, number, number] | readonly number[] | Float64Array;

/**
 * A record file, open for writing. There is one for the process: opening another one completes
 * the first. Lengths are millimetres by custom. What is wrong is a TypeError or a RangeError, and
 * nothing is written then; what the system refuses is an Error that begins with the path.
 */
export class VeskFile {
  /** The file "vesk" + name + ".dat" in the current folder; an old one is emptied. */
  constructor(name: string);
  /** The file of a path: it appears when it is closed and whole. */
  static at(path: string): VeskFile;
  /** Completes the file; throws if the system did not take all of it. */
  close(): void;

  /** Sets the header of the elements that follow; n is 0 to 46655. */
  header(a: string, b: string, n: number): void;
  point(p: Point): void;
  segment(p1: Point, p2: Point): void;
  triangle(p1: Point, p2: Point, p3: Point): void;
  quadrangle(p1: Point, p2: Point, p3: Point, p4: Point): void;
  /** A text of at most 512 bytes in UTF-8; alignment 1 to 9, flag 0 or 1. */
  text(p: Point, direction: Point, up: Point, width: number, height: number, alignment: number,
       flag: number, text: string): void;
  /** A corner and the ends of the three edges that leave it. */
  box(p0: Point, p1: Point, p2: Point, p3: Point): void;
  /** Four corners of the first end, 0, 1, 3, 2 round its face, and the four opposite them. */
  reducer(p0: Point, p1: Point, p2: Point, p3: Point, p4: Point, p5: Point, p6: Point,
          p7: Point): void;
  /** The centres of the faces and the diameter; returns the lines. */
  cylinder(p1: Point, p2: Point, d: number): number;
  /** The centres of the faces and their diameters; returns the lines. */
  cone(p1: Point, p2: Point, d1: number, d2: number): number;
  /** The centre of the bend, the ends of the centre line, the diameter; returns the lines. */
  torus(p0: Point, p1: Point, p2: Point, d: number): number;
  /** The ends of the bend axis, the outer points (not at p0), the inner radius. */
  elbow(p0: Point, p1: Point, p2: Point, p3: Point, d: number): number;
}
