// SPDX-License-Identifier: MIT
// Files with a path: whole or not at all.
//
//   paths.exe TARGET [full]     as check-paths runs it
using System;
using System.IO;

public static class Paths {
  private static void Expect(bool holds, string what) {
    if (holds) return;
    Console.WriteLine(what);
    Environment.Exit(1);
  }

  private static bool Refused(string path, string part) {
    try {
      VeskFile.At(path).Dispose();
    } catch (IOException e) {
      return e.Message.Contains(part);
    }
    return false;
  }

  public static void Main(string[] args) {
    string target = args[0];
    if (args.Length > 1) {
      try {
        using (var file = VeskFile.At(target))
          for (int n = 0; n < 100; ++n) file.Point(new double[] {n, 2, 3});
        Expect(false, "a full disk is not told");
      } catch (IOException e) {
        Expect(e.Message.Contains(target + ": File too large"), e.Message);
      }
      Expect(File.ReadAllText(target) == "before", "a full disk took what was there");
      Expect(Directory.GetFiles(".").Length == 0, "a full disk leaves a file behind");
      return;
    }
    Expect(Refused("none/a", "none/a: "), "a folder that is not there is not named");
    Expect(Refused(".", ".: "), "a folder is taken for a file");
    using (var file = VeskFile.At(target)) {
      file.Point(new double[] {1, 2, 3});
      Expect(File.ReadAllText(target) == "before", "it appears before it is whole");
    }
    Expect(File.ReadAllText(target) == "                 00l pt 1 2 3\n", "it is not the one point");
    Expect(Directory.GetFiles(".").Length == 0, "a file is left behind");
    Expect(Directory.GetFiles(Path.GetDirectoryName(target)).Length == 1, "a file is left beside it");
    VeskFile.At(target).Point(new double[] {1, 2, 3});  // the next file completes it
    new VeskFile("-next").Close();
    Expect(File.ReadAllText(target).EndsWith("00l pt 1 2 3\n"), "the next file does not complete it");
    File.Delete("vesk-next.dat");
  }
}
