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
 * What holds for every function:
 *
 *   Arrays   A point or a vector is an array of three doubles x, y, z in one
 *            world frame. It is read during the call only; the library keeps
 *            no pointer of the caller's.
 *   Units    The library knows none: a number is written as it comes. By
 *            custom all lengths of a file are millimetres.
 *   Digits   Coordinates of points keep 4 decimals, components of vectors and
 *            sizes keep 6; exact halves go to the even digit. NaN and the
 *            infinities are written as "nan", "inf", "-inf".
 *   Result   A write function that returns int returns the number of lines
 *            printed to the file: 0 when no file is open. It is not a sign
 *            that the disk took them: the text goes through the C library's
 *            buffer. What the disk refused shows at vk_openVesk(NULL).
 *   Errors   A NULL array throws the C++ exception GeEx::NullPtr (ge/GeEx.h)
 *            out of the function and nothing is written; vk_writeElb throws
 *            GeEx::NullDir as well, see there. A C++ host catches them by
 *            class; in a host of another language an exception ends the
 *            program, so check before you call. Lack of memory is
 *            std::bad_alloc or, where the library keeps its copy of the
 *            element, a call that writes nothing and returns 0. After any of
 *            these the open file, the header and the library are fit for the
 *            next call.
 *   State    One open file, one header, one element for each process that has
 *            loaded the library. The header stays in force until it is set
 *            again, also across files.
 *   File     The text of a finished file is complete only after the next
 *            vk_openVesk (of any name, or NULL) or after the library has been
 *            unloaded (a normal end of the process unloads it). What stands in
 *            the C library's buffer is lost if the process is killed or
 *            crashes.
 *   Locale   The bytes do not depend on the host's locale, and no call changes
 *            it.
 *   Threads  None: call the library from one thread at a time.
 */
#ifndef VESK_H
#define VESK_H

/* VESK_API marks what the shared library exports. Windows exports by the
   module definition file, so that the names stay undecorated. */
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
 *          file lies in the current folder unless name holds a '/' (a name
 *          "a/b" is the file "veska/b.dat"). NULL opens nothing: it only
 *          closes what is open. On Windows a name that is valid UTF-8 is
 *          taken as UTF-8, any other in the system's code page; elsewhere the
 *          bytes are the file's name as they are.
 *
 * Returns 1 if the file was opened, else 0: the name is NULL or the system
 * refused (errno is the C library's). After a 0 no file is open.
 *
 * Whether the file that was closed is complete does not show in the result, but
 * in errno, of a host that uses the same C library: it becomes the first reason
 * that the system gave for not writing or closing the file, and stays as it was
 * if there was none.
 *
 *     errno = 0;
 *     vk_openVesk(NULL);
 *     if (errno != 0) perror("veskpump.dat");
 */
VESK_API int vk_openVesk(const char* name);

/**
 * Sets the header of every later element.
 *
 *   a   first 8 characters, padded with blanks: by custom the pipeline or part
 *   b   first 2 characters, padded with blanks
 *   n   element number 0..46655, written as three base-36 digits
 *
 * In a and b each control character (codes 0 to 31) becomes a blank and every
 * other byte stays as it is; NULL gives blanks. Before the first call all
 * three are blank.
 *
 * Returns 1 if n fits into three base-36 digits, else 0. The header is set in
 * either case, the high digits of n being lost: 46656 writes "000". A negative
 * n is not refused: its digits are those of the remainders, characters below
 * '0', and the result tells whether three digits were enough.
 */
VESK_API int vk_setHeader(const char* a, const char* b, int n);

/** Writes a point. p: its place. */
VESK_API void vk_writePnt(const double p[3]);

/** Writes a segment from p1 to p2. Equal points are written as they are. */
VESK_API void vk_writeSeg(const double p1[3], const double p2[3]);

/** Writes a triangle; p1, p2, p3: its corners in drawing order. */
VESK_API void vk_writeTri(const double p1[3], const double p2[3], const double p3[3]);

/** Writes a quadrangle; p1 to p4: its corners in drawing order. */
VESK_API void vk_writeQua(const double p1[3], const double p2[3], const double p3[3],
                          const double p4[3]);

/**
 * Writes a text.
 *
 *   p1   reference point
 *   p2   vector of the writing direction, p3   vector of the text height
 *   d1   width of one character, along p2
 *   d2   height of the text, along p3
 *   i1   which point of the text p1 is: 1 start, 2 middle, 3 end of the base
 *        line, 4 to 6 of the middle row, 7 to 9 of the top row; written as it is
 *   i2   flag. The style of file that these functions write does not keep it.
 *   s    zero-terminated, any length up to 512 bytes; NULL is an empty text.
 *        Bytes are written as they are: a line feed in s breaks the record.
 *
 * A text of more than 512 bytes does not fit into a line: the element is then
 * cut short in the file after its first line.
 */
VESK_API void vk_writeTxt(const double p1[3], const double p2[3], const double p3[3], double d1,
                          double d2, int i1, int i2, const char* s);

/**
 * Writes a box (parallelepiped).
 *
 *   p0           one corner
 *   p1, p2, p3   the ends of the three edges that leave it; they need not be
 *                perpendicular
 */
VESK_API void vk_writeBox(const double p0[3], const double p1[3], const double p2[3],
                          const double p3[3]);

/**
 * Writes a reducer: a solid with eight corners and two ends of four each.
 *
 *   p0 to p3   corners of the first end, in the order 0, 1, 3, 2 round its face
 *   p4 to p7   corners of the second end; p4 lies opposite p0, and so on
 */
VESK_API void vk_writeRed(const double p0[3], const double p1[3], const double p2[3],
                          const double p3[3], const double p4[3], const double p5[3],
                          const double p6[3], const double p7[3]);

/**
 * Writes a cylinder.
 *
 *   p1, p2   centres of the two faces
 *   d        diameter
 *
 * Returns the number of lines printed.
 */
VESK_API int vk_writeCyl(const double p1[3], const double p2[3], double d);

/**
 * Writes a truncated cone.
 *
 *   p1, p2   centres of the two faces
 *   d1, d2   diameters at p1 and at p2; one may be 0 (a pointed cone)
 *
 * Returns the number of lines printed.
 */
VESK_API int vk_writeCon(const double p1[3], const double p2[3], double d1, double d2);

/**
 * Writes a torus segment, a bent piece of pipe.
 *
 *   p0       centre of the bend
 *   p1, p2   start and end of the tube's centre line, at equal distances from
 *            p0 and less than half a turn apart
 *   d        diameter of the tube
 *
 * Returns the number of lines printed.
 */
VESK_API int vk_writeTor(const double p0[3], const double p1[3], const double p2[3], double d);

/**
 * Writes a rectangular elbow, a bent piece of duct.
 *
 *   p0, p1   the ends of the bend axis, on the two side faces
 *   p2, p3   points of the outer face at the start and at the end of the bend,
 *            in the plane through p0
 *   d        inner bend radius
 *
 * Returns the number of lines printed. Throws GeEx::NullDir when p2 or p3 is
 * at p0, for then the bend has no direction; nothing is written.
 */
VESK_API int vk_writeElb(const double p0[3], const double p1[3], const double p2[3],
                         const double p3[3], double d);

#ifdef __cplusplus
}
#endif

#endif
