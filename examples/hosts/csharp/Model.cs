// SPDX-License-Identifier: MIT
// Writes all eleven elements. VESK is the folder of the library:
//
//     mcs -out:model.exe Model.cs Vesk.cs
//     LD_LIBRARY_PATH="$VESK/lib" mono model.exe fan
//
// makes veskfan.dat. On Windows, CVeskDll.dll lies beside model.exe, which is compiled for
// 64 bits (csc -platform:x64). Vesk.cs refuses what would throw inside the library.
using System;
using System.IO;

public static class Model {
  private static double[] At(double x, double y, double z) { return new double[] {x, y, z}; }

  public static int Main(string[] args) {
    if (args.Length != 1) {
      Console.Error.WriteLine("Usage: model.exe NAME");
      return 2;
    }
    try {
      using (var file = new VeskFile(args[0])) {
        Write(file);
      }  // closes the file, and throws if the disk refused a part of it
      return 0;
    } catch (IOException e) {
      Console.Error.WriteLine(e.Message);
      return 1;
    }
  }

  private static void Write(VeskFile file) {
    Action<int> number = n => file.Header("DUCT-7", "A1", n);  // every element has its own
    number(1);
    file.Point(At(1, 2, 3));
    number(2);
    file.Segment(At(0, 0, 0), At(1000, 0, 0.5));
    number(3);
    file.Triangle(At(0, 0, 0), At(100, 0, 0), At(0, 50, 0));
    number(4);
    file.Quadrangle(At(0, 0, 10), At(100, 0, 10), At(100, 50, 10), At(0, 50, 10));
    number(5);
    file.Text(At(1, 2, 0), At(1, 0, 0), At(0, 1, 0), 0.5, 2.5, 7, 1, "Fan 1");
    number(6);
    file.Box(At(0, 0, 0), At(10, 0, 0), At(0, 20, 0), At(0, 0, 30));
    number(7);
    file.Reducer(At(0, 0, 0), At(10, 0, 0), At(0, 10, 0), At(10, 10, 0),
                 At(2, 2, 20), At(8, 2, 20), At(2, 8, 20), At(8, 8, 20));
    number(8);
    file.Cylinder(At(1, 2, 3), At(1, 2, 13), 219.1);
    number(9);
    file.Cone(At(0, 0, 0), At(0, 0, 100), 168.3, 114.3);
    number(10);
    file.Torus(At(0, 0, 0), At(100, 0, 0), At(0, 100, 0), 20);
    number(11);
    file.Elbow(At(0, 0, 0), At(0, 0, 10), At(50, 0, 0), At(0, 50, 0), 30);
  }
}
