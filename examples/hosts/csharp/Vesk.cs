// SPDX-License-Identifier: MIT
// The thirteen functions for C#. An exception of the library cannot pass through the
// runtime, it would end the program: so what would throw is refused here, as an
// ArgumentException, before the call.
using System;
using System.IO;
using System.Runtime.InteropServices;
using System.Text;

// The file "vesk" + name + ".dat", open for writing. There is one for the process: opening
// another one closes the first. Points are arrays of three doubles. For one thread at a time.
public sealed class VeskFile : IDisposable {
  public VeskFile(string name) {
    if (name == null) throw new ArgumentNullException("name");
    byte[] bytes = Utf8(name);
    path = "vesk" + name + ".dat";
    open = null;
    if (vk_openVesk(bytes) == 0) throw new IOException(path + " cannot be opened for writing");
    open = this;
  }

  // Completes the file. An IOException tells that the system did not take all of it, a full
  // disk for one: the file is not whole then. Closing again does nothing.
  public void Close() {
    if (open != this) return;
    open = null;
    IntPtr errno = onWindows ? errnoOfWindows() : errnoOfLinux();
    Marshal.WriteInt32(errno, 0);
    vk_openVesk(null);
    int reason = Marshal.ReadInt32(errno);
    if (reason == 0) return;
    IntPtr text = onWindows ? textOfWindows(reason) : textOfLinux(reason);
    throw new IOException(path + ": " + Marshal.PtrToStringAnsi(text));
  }

  // Closes too, without a word about what the system refused.
  public void Dispose() {
    if (open == this) vk_openVesk(null);
    if (open == this) open = null;
  }

  // Sets the header of the elements that follow; n is 0 to 46655.
  public void Header(string a, string b, int n) {
    if (n < 0 || n > 46655) throw new ArgumentOutOfRangeException("n", "0 to 46655");
    Check();
    vk_setHeader(Utf8(a), Utf8(b), n);
  }

  public void Point(double[] p) { Check(p); vk_writePnt(p); }

  public void Segment(double[] p1, double[] p2) { Check(p1, p2); vk_writeSeg(p1, p2); }

  public void Triangle(double[] p1, double[] p2, double[] p3) {
    Check(p1, p2, p3);
    vk_writeTri(p1, p2, p3);
  }

  public void Quadrangle(double[] p1, double[] p2, double[] p3, double[] p4) {
    Check(p1, p2, p3, p4);
    vk_writeQua(p1, p2, p3, p4);
  }

  // A text of at most 512 bytes in UTF-8.
  public void Text(double[] p, double[] direction, double[] up, double width, double height,
                   int alignment, int flag, string text) {
    Check(p, direction, up);
    byte[] bytes = Utf8(text);
    if (bytes != null && bytes.Length > 513)  // with the zero at the end
      throw new ArgumentException("more than 512 bytes", "text");
    vk_writeTxt(p, direction, up, width, height, alignment, flag, bytes);
  }

  public void Box(double[] p0, double[] p1, double[] p2, double[] p3) {
    Check(p0, p1, p2, p3);
    vk_writeBox(p0, p1, p2, p3);
  }

  public void Reducer(double[] p0, double[] p1, double[] p2, double[] p3,
                      double[] p4, double[] p5, double[] p6, double[] p7) {
    Check(p0, p1, p2, p3, p4, p5, p6, p7);
    vk_writeRed(p0, p1, p2, p3, p4, p5, p6, p7);
  }

  public int Cylinder(double[] p1, double[] p2, double d) {
    Check(p1, p2);
    return vk_writeCyl(p1, p2, d);
  }

  public int Cone(double[] p1, double[] p2, double d1, double d2) {
    Check(p1, p2);
    return vk_writeCon(p1, p2, d1, d2);
  }

  public int Torus(double[] p0, double[] p1, double[] p2, double d) {
    Check(p0, p1, p2);
    return vk_writeTor(p0, p1, p2, d);
  }

  // p2 and p3 must not be at p0: the bend has no direction then.
  public int Elbow(double[] p0, double[] p1, double[] p2, double[] p3, double d) {
    Check(p0, p1, p2, p3);
    if (Distance(p0, p2) < 1e-12 || Distance(p0, p3) < 1e-12)
      throw new ArgumentException("p2 and p3 must not be at p0");
    return vk_writeElb(p0, p1, p2, p3, d);
  }

  private static VeskFile open;
  private readonly string path;

  private void Check(params double[][] points) {
    if (open != this) throw new ObjectDisposedException("VeskFile");
    if (points == null) throw new ArgumentNullException("p");
    foreach (double[] point in points) {
      if (point == null) throw new ArgumentNullException("p");
      if (point.Length != 3) throw new ArgumentException("a point is three numbers");
    }
  }

  private static double Distance(double[] a, double[] b) {
    double x = a[0] - b[0], y = a[1] - b[1], z = a[2] - b[2];
    return Math.Sqrt(x * x + y * y + z * z);
  }

  // The runtime's own strings would go out in the system's code page on Windows.
  private static byte[] Utf8(string text) {
    if (text == null) return null;
    if (text.IndexOfAny(new char[] {'\0', '\n', '\r'}) >= 0)
      throw new ArgumentException("a zero character or a line end in a text");
    return Encoding.UTF8.GetBytes(text + "\0");
  }

  // The reason of a failure, as the C library that CVeskDll uses keeps it.
  private static readonly bool onWindows = Path.DirectorySeparatorChar == '\\';
  [DllImport("libc", EntryPoint = "__errno_location")] private static extern IntPtr errnoOfLinux();
  [DllImport("libc", EntryPoint = "strerror")] private static extern IntPtr textOfLinux(int reason);
  [DllImport("msvcrt", EntryPoint = "_errno", CallingConvention = CallingConvention.Cdecl)]
  private static extern IntPtr errnoOfWindows();
  [DllImport("msvcrt", EntryPoint = "strerror", CallingConvention = CallingConvention.Cdecl)]
  private static extern IntPtr textOfWindows(int reason);

  private const string Dll = "CVeskDll";  // CVeskDll.dll, libCVeskDll.so
  private const CallingConvention C = CallingConvention.Cdecl;

  [DllImport(Dll, CallingConvention = C)] private static extern int vk_openVesk(byte[] name);
  [DllImport(Dll, CallingConvention = C)] private static extern int vk_setHeader(byte[] a, byte[] b, int n);
  [DllImport(Dll, CallingConvention = C)] private static extern void vk_writePnt(double[] p);
  [DllImport(Dll, CallingConvention = C)] private static extern void vk_writeSeg(double[] p1, double[] p2);
  [DllImport(Dll, CallingConvention = C)] private static extern void vk_writeTri(
      double[] p1, double[] p2, double[] p3);
  [DllImport(Dll, CallingConvention = C)] private static extern void vk_writeQua(
      double[] p1, double[] p2, double[] p3, double[] p4);
  [DllImport(Dll, CallingConvention = C)] private static extern void vk_writeTxt(
      double[] p1, double[] p2, double[] p3, double d1, double d2, int i1, int i2, byte[] s);
  [DllImport(Dll, CallingConvention = C)] private static extern void vk_writeBox(
      double[] p0, double[] p1, double[] p2, double[] p3);
  [DllImport(Dll, CallingConvention = C)] private static extern void vk_writeRed(
      double[] p0, double[] p1, double[] p2, double[] p3,
      double[] p4, double[] p5, double[] p6, double[] p7);
  [DllImport(Dll, CallingConvention = C)] private static extern int vk_writeCyl(
      double[] p1, double[] p2, double d);
  [DllImport(Dll, CallingConvention = C)] private static extern int vk_writeCon(
      double[] p1, double[] p2, double d1, double d2);
  [DllImport(Dll, CallingConvention = C)] private static extern int vk_writeTor(
      double[] p0, double[] p1, double[] p2, double d);
  [DllImport(Dll, CallingConvention = C)] private static extern int vk_writeElb(
      double[] p0, double[] p1, double[] p2, double[] p3, double d);
}
