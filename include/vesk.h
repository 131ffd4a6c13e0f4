/* SPDX-License-Identifier: MIT */
/*
 * vesk.h - write plant geometry as Vesk record files.
 *
 * Thirteen functions: one opens a file, one sets the header of the elements
 * that follow, eleven write one element each.
 *
 *     vk_openVesk("pump");                      // creates veskpump.dat
 *     vk_setHeader("P-1001", "01", 1);
 *     vk_writeCyl(start, end, 219.1);
 *     vk_openVesk(NULL);                        // closes it
 *
 * The following holds for every function:
 *
 *   Arrays   A point or a vector is an array of three doubles x, y, z in one
 *            world frame. It is read only during the call; the library does
 *            not keep the caller's pointer.
 *   Units    The library has none: a number is written as it is. By custom
 *            all lengths in a file are millimetres; sizes of round shapes are
 *            diameters unless called a radius. No argument is an angle. See
 *            docs/units.md.
 *   Range    No number is refused or changed: zero, negative and huge numbers,
 *            NaN and the infinities are written, the last three as "nan",
 *            "inf", "-inf" (only vk_writeElb throws, see there). "Valid" below
 *            describes the numbers that make a shape which other programs can
 *            measure and show; all others make a record that readers accept
 *            and call degenerate: it has no surface, and `vesk check` names it.
 *   Digits   Coordinates of points keep 4 decimals, components of vectors and
 *            sizes keep 6; exact halves are rounded to the even digit.
 *   Result   A write function that returns int returns the number of lines
 *            printed to the file, 0 if no file is open. The result does not
 *            say that the lines are on the disk: the text goes through the C
 *            library's buffer. vk_openVesk(NULL) reports what the disk refused.
 *   Errors   A NULL array makes the function throw the C++ exception
 *            GeEx::NullPtr (vesk/GeEx.h), and nothing is written; vk_writeElb
 *            can also throw GeEx::NullDir, see there. A C++ host catches these
 *            by class; in a host in another language an exception ends the
 *            program, so check before you call. Lack of memory gives
 *            std::bad_alloc or, where the library keeps its copy of the
 *            element, a call that writes nothing and returns 0. After any of
 *            these the open file, the header and the library are ready for
 *            the next call.
 *   State    One open file, one header and one element for each process that
 *            has loaded the library. The header stays in force until it is set
 *            again, even for the next file.
 *   File     The text of a finished file is complete only after the next
 *            vk_openVesk (with any name, or NULL) or after the library has been
 *            unloaded (a normal end of the process unloads it). The contents of
 *            the C library's buffer are lost if the process is killed or
 *            crashes.
 *   Locale   The bytes do not depend on the host's locale, and no call changes
 *            it.
 *   Threads  None: call the library from one thread at a time.
 */
#ifndef VESK_H
#define VESK_H

/* The version of this header, which is that of the library beside it. */
#define VESK_VERSION_MAJOR 1
#define VESK_VERSION_MINOR 0
#define VESK_VERSION_PATCH 0

/* VESK_API marks what the shared library exports. On Windows the module
   definition file exports the names, so that they stay undecorated. */
#if defined(_WIN32)
#define VESK_API
#elif defined(__GNUC__)
#define VESK_API __attribute__((visibility("default")))
#else
#define VESK_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Opens the file "vesk" + name + ".dat" for writing and closes the one that is
 * open; an existing file of that name is emptied.
 *
 *   name   zero-terminated; put between "vesk" and ".dat" as it is, so the
 *          file is in the current folder unless name contains a '/' (a name
 *          "a/b" is the file "veska/b.dat"). NULL opens nothing: it only
 *          closes the open file. On Windows a name that is valid UTF-8 is
 *          taken as UTF-8, any other in the system's code page; elsewhere the
 *          bytes are the file's name as they are.
 *
 * Returns 1 if the file was opened, else 0: the name is NULL or the system
 * refused (errno has the C library's reason). After a 0 no file is open.
 *
 * The result does not say whether the file that was closed is complete, but
 * errno does, in a host that uses the same C library: it is set to the first
 * reason that the system gave for not writing or closing the file, and stays
 * unchanged if there was none.
 *
 *     errno = 0;
 *     vk_openVesk(NULL);
 *     if (errno != 0) perror("veskpump.dat");
 *
 * Since 1.0.
 */
VESK_API int vk_openVesk(const char* name);

/**
 * Sets the header of every later element.
 *
 *   a   first 8 characters are used, padded with blanks: by custom the pipeline
 *       or part
 *   b   first 2 characters are used, padded with blanks: the group
 *   n   element number 0..46655, written as three base-36 digits
 *
 * In a and b each control character (codes 0 to 31) becomes a blank and every
 * other byte stays as it is; NULL gives blanks. Before the first call all
 * three are blank.
 *
 * Returns 1 if n fits into three base-36 digits, else 0. The header is set in
 * either case, but the high digits of n are lost: 46656 writes "000". A negative
 * n is not refused: its digits are those of the remainders, characters below
 * '0', and the result says whether three digits were enough.
 *
 * Since 1.0.
 */
VESK_API int vk_setHeader(const char* a, const char* b, int n);

/**
 * Writes a point.
 *
 *   p   its position, mm; valid: finite
 *
 * Since 1.0.
 */
VESK_API void vk_writePnt(const double p[3]);

/**
 * Writes a segment.
 *
 *   p1, p2   its ends, mm; valid: finite. Equal ends make a segment of length 0.
 *
 * Since 1.0.
 */
VESK_API void vk_writeSeg(const double p1[3], const double p2[3]);

/**
 * Writes a triangle.
 *
 *   p1, p2, p3   its corners in drawing order, mm; valid: finite and not in one
 *                line. A triangle with its corners in one line has no surface.
 *
 * Since 1.0.
 */
VESK_API void vk_writeTri(const double p1[3], const double p2[3], const double p3[3]);

/**
 * Writes a quadrangle.
 *
 *   p1 to p4   its corners in drawing order, mm; valid: finite, not in one line,
 *              roughly in one plane, and no two sides cross
 *
 * Since 1.0.
 */
VESK_API void vk_writeQua(const double p1[3], const double p2[3], const double p3[3],
                          const double p4[3]);

/**
 * Writes a text.
 *
 *   p1   reference point, mm; valid: finite
 *   p2   vector of the writing direction, p3   vector of the text height; valid:
 *        of unit length and perpendicular. Others stretch or slant the text; a
 *        null vector leaves it without extent.
 *   d1   width of one character in lengths of p2, mm for a unit vector; valid:
 *        > 0. Zero leaves the text without extent; a negative one makes it run
 *        backwards.
 *   d2   height of the text in lengths of p3, mm for a unit vector; valid: > 0.
 *        Zero leaves the text without extent; a negative one mirrors it.
 *   i1   which point of the text p1 is: 1 start, 2 middle, 3 end of the base
 *        line, 4 to 6 of the middle row, 7 to 9 of the top row. Any other number
 *        is written, and is treated as 1.
 *   i2   flag, any number. The style of file that these functions write does not
 *        keep it.
 *   s    zero-terminated, any length up to 512 bytes; NULL is an empty text.
 *        Bytes are written as they are: a line feed in s breaks the record.
 *
 * A text of more than 512 bytes does not fit into a line: the element is then
 * cut short in the file after its first line.
 *
 * Since 1.0.
 */
VESK_API void vk_writeTxt(const double p1[3], const double p2[3], const double p3[3], double d1,
                          double d2, int i1, int i2, const char* s);

/**
 * Writes a box (parallelepiped).
 *
 *   p0           one corner, mm; valid: finite
 *   p1, p2, p3   the ends of the three edges that start there, mm; valid: no edge
 *                of length 0, not all in one plane. The edges need not be
 *                perpendicular, and may be left- or right-handed.
 *
 * Since 1.0.
 */
VESK_API void vk_writeBox(const double p0[3], const double p1[3], const double p2[3],
                          const double p3[3]);

/**
 * Writes a reducer: a solid with eight corners and two ends of four each.
 *
 *   p0 to p3   corners of the first end, mm, in the order 0, 1, 3, 2 around its
 *              face
 *   p4 to p7   corners of the second end, mm; p4 lies opposite p0, and so on
 *
 * Valid: finite, not all in one plane, and no face crosses another. The corners
 * of an end may coincide in an edge or a point; both ends may run in either sense.
 *
 * Since 1.0.
 */
VESK_API void vk_writeRed(const double p0[3], const double p1[3], const double p2[3],
                          const double p3[3], const double p4[3], const double p5[3],
                          const double p6[3], const double p7[3]);

/**
 * Writes a cylinder.
 *
 *   p1, p2   centres of the two faces, mm; valid: finite and at least 0.01 apart.
 *            Equal centres make a cylinder of length 0.
 *   d        diameter, mm; valid: 0.01 or more. 0 makes a line; readers report a
 *            negative one as wrong.
 *
 * Returns the number of lines printed. Since 1.0.
 */
VESK_API int vk_writeCyl(const double p1[3], const double p2[3], double d);

/**
 * Writes a truncated cone.
 *
 *   p1, p2   centres of the two faces, mm; valid: finite and apart
 *   d1, d2   diameters at p1 and at p2, mm; valid: 0 or more, at least one of them
 *            0.01 or more. One may be 0 (a pointed cone); readers report a
 *            negative one as wrong.
 *
 * Returns the number of lines printed. Since 1.0.
 */
VESK_API int vk_writeCon(const double p1[3], const double p2[3], double d1, double d2);

/**
 * Writes a bend, a piece of pipe along an arc (a segment of a torus).
 *
 *   p0       centre of the bend, mm; valid: finite
 *   p1, p2   start and end of the tube's centre line, mm; valid: at equal
 *            distances from p0, above 0, and the angle between them above 0 and
 *            less than half a turn. Within 0.01 degrees of either limit, the
 *            decimals of the record no longer determine the plane of the bend,
 *            and at either limit it has none: write half a turn as two bends.
 *            If the distances differ, readers take their mean.
 *   d        diameter of the tube, mm; valid: above 0, at most twice the radius of
 *            the bend. Readers report a wider or a negative one as wrong.
 *
 * Returns the number of lines printed. Since 1.0.
 */
VESK_API int vk_writeTor(const double p0[3], const double p1[3], const double p2[3], double d);

/**
 * Writes a duct elbow, a rectangular duct along an arc.
 *
 *   p0, p1   the ends of the bend axis, on the two side faces, mm; valid: finite
 *            and apart. Their distance is the width of the duct; 0 makes a sheet.
 *   p2, p3   points of the outer face at the start and at the end of the bend,
 *            in the plane through p0, mm; valid: at equal distances from p0 (the
 *            outer radius), and the angle between them as for vk_writeTor: above 0
 *            and less than half a turn, and 0.01 degrees away from either, or
 *            the record does not determine the plane of the elbow
 *   d        inner bend radius, mm; valid: 0 or more and less than the outer
 *            radius. The depth of the duct is the difference of the two. With a
 *            negative d the section is wider than its bend; with one above the
 *            outer radius the depth is negative; readers report both as wrong.
 *
 * Returns the number of lines printed. Since 1.0. Throws GeEx::NullDir if p2 or p3 is
 * at p0, because then the bend has no direction; nothing is written.
 */
VESK_API int vk_writeElb(const double p0[3], const double p1[3], const double p2[3],
                         const double p3[3], double d);

#ifdef __cplusplus
}
#endif

#endif
