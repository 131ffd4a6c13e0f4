// SPDX-License-Identifier: MIT
// The thirteen functions for C#. An exception of the library cannot pass through the
// runtime, it would end the program: so what would throw is refused here, as an
// ArgumentException, before the call.
//
// The library is looked for at the first use: the file that VESK_LIBRARY names, the folder
// of this assembly, the places of the system (CVeskDll.dll, libCVeskDll.so.1, libCVeskDll.so).
using System;
using System.Collections.Generic;
using System.Diagnostics;
using System.IO;
using System.Runtime.InteropServices;
using System.Text;

/// <summary>A record file, open for writing. There is one for the process: opening another
/// one completes the first. Points are arrays of three doubles, lengths are millimetres by
/// custom. For one thread at a time.</summary>
public sealed class VeskFile : IDisposable {
  /// <summary>The file "vesk" + name + ".dat" in the current folder; an old one is emptied.</summary>
  /// <exception cref="IOException">It cannot be opened; the message begins with the path.</exception>
  public VeskFile(string name) : this("vesk" + name + ".dat", name, null) {}

  /// <summary>The file of a path. It appears when it is closed and whole, and what was there
  /// before stays until then: it grows under a name of its own in the current folder, where
  /// the library writes.</summary>
  /// <exception cref="IOException">It cannot be opened; the message begins with the path.</exception>
  public static VeskFile At(string path) {
    if (path == null) throw new ArgumentNullException("path");
    string whole = Path.GetFullPath(path), name = FreeName();
    try {
      if (Directory.Exists(whole)) throw new IOException("it is a folder");
      using (File.Create(PartOf(whole), 1, FileOptions.DeleteOnClose)) {}
    } catch (Exception e) when (e is IOException || e is UnauthorizedAccessException) {
      throw new IOException(path + ": " + e.Message, e);
    }
    return new VeskFile(whole, name, Path.GetFullPath("vesk" + name + ".dat"));
  }

  private VeskFile(string path, string name, string temporary) {
    if (name == null) throw new ArgumentNullException("name");
    byte[] bytes = Utf8(name);
    this.path = path;
    this.temporary = temporary;
    VeskFile before = open;
    if (before != null && before.temporary != null) before.Close();
    open = null;
    if (Library.vk_openVesk(bytes) == 0) throw new IOException(path + " cannot be opened for writing");
    open = this;
  }

  /// <summary>Completes the file; closing again does nothing.</summary>
  /// <exception cref="IOException">The system did not take all of it, a full disk for one: the
  /// file is not whole then, and one of a path does not appear.</exception>
  public void Close() {
    if (open != this) return;
    open = null;
    IntPtr errno = onWindows ? errnoOfWindows() : errnoOfLinux();
    Marshal.WriteInt32(errno, 0);
    Library.vk_openVesk(null);
    int reason = Marshal.ReadInt32(errno);
    if (reason != 0) {
      IntPtr text = onWindows ? textOfWindows(reason) : textOfLinux(reason);
      if (temporary != null) File.Delete(temporary);
      throw new IOException(path + ": " + Marshal.PtrToStringAnsi(text));
    }
    if (temporary != null) Appear();
  }

  /// <summary>Close, at the end of `using`: what the system refused is thrown here too.</summary>
  /// <exception cref="IOException">As of Close.</exception>
  public void Dispose() { Close(); }

  // Across file systems by a copy beside the path: what is there is replaced at once.
  private void Appear() {
    string part = PartOf(path);
    try {
      File.Move(temporary, part);
      if (File.Exists(path)) File.Replace(part, path, null);
      else File.Move(part, path);
    } catch (Exception e) when (e is IOException || e is UnauthorizedAccessException) {
      string kept = File.Exists(temporary) ? temporary : part;
      if (kept == temporary) File.Delete(part);
      throw new IOException(path + ": " + e.Message + "; what was written is " + kept, e);
    }
  }

  private static string PartOf(string path) {
    return path + "." + Process.GetCurrentProcess().Id + ".part";
  }

  // A name of which no file is in the current folder.
  private static string FreeName() {
    for (int number = 0;; ++number) {
      string name = "-" + Process.GetCurrentProcess().Id + "-" + number;
      if (!File.Exists("vesk" + name + ".dat")) return name;
    }
  }

  /// <summary>Sets the header of the elements that follow; n is 0 to 46655.</summary>
  public void Header(string a, string b, int n) {
    if (n < 0 || n > 46655) throw new ArgumentOutOfRangeException("n", "0 to 46655");
    Check();
    Library.vk_setHeader(Utf8(a), Utf8(b), n);
  }

  /// <summary>A point.</summary>
  public void Point(double[] p) { Check(p); Library.vk_writePnt(p); }

  /// <summary>A segment between two points.</summary>
  public void Segment(double[] p1, double[] p2) { Check(p1, p2); Library.vk_writeSeg(p1, p2); }

  /// <summary>A triangle.</summary>
  public void Triangle(double[] p1, double[] p2, double[] p3) {
    Check(p1, p2, p3);
    Library.vk_writeTri(p1, p2, p3);
  }

  /// <summary>A quadrangle.</summary>
  public void Quadrangle(double[] p1, double[] p2, double[] p3, double[] p4) {
    Check(p1, p2, p3, p4);
    Library.vk_writeQua(p1, p2, p3, p4);
  }

  /// <summary>A text at p of at most 512 bytes in UTF-8; width and height of one character,
  /// alignment 1 to 9, flag 0 or 1.</summary>
  public void Text(double[] p, double[] direction, double[] up, double width, double height,
                   int alignment, int flag, string text) {
    Check(p, direction, up);
    byte[] bytes = Utf8(text);
    if (bytes != null && bytes.Length > 513)  // with the zero at the end
      throw new ArgumentException("more than 512 bytes", "text");
    Library.vk_writeTxt(p, direction, up, width, height, alignment, flag, bytes);
  }

  /// <summary>A corner and the ends of the three edges that leave it.</summary>
  public void Box(double[] p0, double[] p1, double[] p2, double[] p3) {
    Check(p0, p1, p2, p3);
    Library.vk_writeBox(p0, p1, p2, p3);
  }

  /// <summary>Four corners of the first end, in the order 0, 1, 3, 2 round its face, and the four
  /// opposite them.</summary>
  public void Reducer(double[] p0, double[] p1, double[] p2, double[] p3,
                      double[] p4, double[] p5, double[] p6, double[] p7) {
    Check(p0, p1, p2, p3, p4, p5, p6, p7);
    Library.vk_writeRed(p0, p1, p2, p3, p4, p5, p6, p7);
  }

  /// <summary>The centres of the faces and the diameter; returns the lines.</summary>
  public int Cylinder(double[] p1, double[] p2, double d) {
    Check(p1, p2);
    return Library.vk_writeCyl(p1, p2, d);
  }

  /// <summary>The centres of the faces and their diameters; returns the lines.</summary>
  public int Cone(double[] p1, double[] p2, double d1, double d2) {
    Check(p1, p2);
    return Library.vk_writeCon(p1, p2, d1, d2);
  }

  /// <summary>The centre of the bend, the ends of the centre line, the diameter; returns the lines.</summary>
  public int Torus(double[] p0, double[] p1, double[] p2, double d) {
    Check(p0, p1, p2);
    return Library.vk_writeTor(p0, p1, p2, d);
  }

  /// <summary>The ends of the bend axis, the outer points at the start and the end of the bend,
  /// the inner radius; returns the lines. p2 and p3 must not be at p0: the bend has no direction
  /// then.</summary>
  public int Elbow(double[] p0, double[] p1, double[] p2, double[] p3, double d) {
    Check(p0, p1, p2, p3);
    if (Distance(p0, p2) < 1e-12 || Distance(p0, p3) < 1e-12)
      throw new ArgumentException("p2 and p3 must not be at p0");
    return Library.vk_writeElb(p0, p1, p2, p3, d);
  }

  private static VeskFile open;
  private readonly string path;
  private readonly string temporary;  // null where the file grows under its name

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
  [DllImport("libc", EntryPoint = "strerror")]
  private static extern IntPtr textOfLinux(int reason);
  [DllImport("msvcrt", EntryPoint = "_errno", CallingConvention = CallingConvention.Cdecl)]
  private static extern IntPtr errnoOfWindows();
  [DllImport("msvcrt", EntryPoint = "strerror", CallingConvention = CallingConvention.Cdecl)]
  private static extern IntPtr textOfWindows(int reason);

  // The thirteen functions, found by name: DllImport knows but one name of a file.
  private static class Library {
    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
    public delegate int Open(byte[] name);
    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
    public delegate int Header(byte[] a, byte[] b, int n);
    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
    public delegate void Points1(double[] p);
    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
    public delegate void Points2(double[] p1, double[] p2);
    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
    public delegate void Points3(double[] p1, double[] p2, double[] p3);
    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
    public delegate void Points4(double[] p1, double[] p2, double[] p3, double[] p4);
    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
    public delegate void Points8(double[] p0, double[] p1, double[] p2, double[] p3,
                                 double[] p4, double[] p5, double[] p6, double[] p7);
    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
    public delegate void Txt(double[] p1, double[] p2, double[] p3, double d1, double d2,
                             int i1, int i2, byte[] s);
    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
    public delegate int Cyl(double[] p1, double[] p2, double d);
    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
    public delegate int Con(double[] p1, double[] p2, double d1, double d2);
    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
    public delegate int Tor(double[] p0, double[] p1, double[] p2, double d);
    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
    public delegate int Elb(double[] p0, double[] p1, double[] p2, double[] p3, double d);

    private static readonly IntPtr library = Load();
    public static readonly Open vk_openVesk = Get<Open>("vk_openVesk");
    public static readonly Header vk_setHeader = Get<Header>("vk_setHeader");
    public static readonly Points1 vk_writePnt = Get<Points1>("vk_writePnt");
    public static readonly Points2 vk_writeSeg = Get<Points2>("vk_writeSeg");
    public static readonly Points3 vk_writeTri = Get<Points3>("vk_writeTri");
    public static readonly Points4 vk_writeQua = Get<Points4>("vk_writeQua");
    public static readonly Txt vk_writeTxt = Get<Txt>("vk_writeTxt");
    public static readonly Points4 vk_writeBox = Get<Points4>("vk_writeBox");
    public static readonly Points8 vk_writeRed = Get<Points8>("vk_writeRed");
    public static readonly Cyl vk_writeCyl = Get<Cyl>("vk_writeCyl");
    public static readonly Con vk_writeCon = Get<Con>("vk_writeCon");
    public static readonly Tor vk_writeTor = Get<Tor>("vk_writeTor");
    public static readonly Elb vk_writeElb = Get<Elb>("vk_writeElb");

    private static IEnumerable<string> Candidates() {
      string named = Environment.GetEnvironmentVariable("VESK_LIBRARY");
      if (!string.IsNullOrEmpty(named)) {
        yield return named;
        yield break;
      }
      string[] names = onWindows ? new[] {"CVeskDll.dll"} : new[] {"libCVeskDll.so.1", "libCVeskDll.so"};
      foreach (string folder in new[] {AppDomain.CurrentDomain.BaseDirectory, null})
        foreach (string name in names) {
          string file = folder == null ? name : Path.Combine(folder, name);
          if (folder == null || File.Exists(file)) yield return file;
        }
    }

    private static IntPtr Load() {
      string tried = "";
      foreach (string candidate in Candidates()) {
        IntPtr found = onWindows ? LoadLibrary(candidate) : dlopen(candidate, kNow);
        if (found != IntPtr.Zero) return found;
        tried += " " + candidate;
      }
      throw new DllNotFoundException("the Vesk library was not found; set VESK_LIBRARY. Tried:" + tried);
    }

    private static T Get<T>(string name) {
      IntPtr found = onWindows ? GetProcAddress(library, name) : dlsym(library, name);
      if (found == IntPtr.Zero) throw new EntryPointNotFoundException(name);
      return (T)(object)Marshal.GetDelegateForFunctionPointer(found, typeof(T));
    }

    private const int kNow = 2;
    [DllImport("libdl.so.2")] private static extern IntPtr dlopen(string file, int flags);
    [DllImport("libdl.so.2")] private static extern IntPtr dlsym(IntPtr library, string name);
    [DllImport("kernel32", CharSet = CharSet.Unicode)] private static extern IntPtr LoadLibrary(string file);
    [DllImport("kernel32", CharSet = CharSet.Ansi, ExactSpelling = true)]
    private static extern IntPtr GetProcAddress(IntPtr library, string name);
  }
}
