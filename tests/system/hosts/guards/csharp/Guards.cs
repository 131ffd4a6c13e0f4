// SPDX-License-Identifier: MIT
using System;
using System.IO;

public static class Guards {
  private static readonly double[] O = {0, 0, 0}, P = {1, 2, 3}, Two = {1, 2};
  private static int failures;

  private static void Refused<E>(string what, Action call) where E : Exception {
    try {
      call();
    } catch (E) {
      return;
    }
    Console.WriteLine("not refused: " + what);
    ++failures;
  }

  public static int Main() {
    VeskFile first = new VeskFile("guards");
    Refused<ArgumentNullException>("a null name", () => new VeskFile(null));
    Refused<ArgumentException>("a name with a zero", () => new VeskFile("a\0b"));
    Refused<ArgumentNullException>("a null point", () => first.Point(null));
    Refused<ArgumentNullException>("a null second point", () => first.Segment(P, null));
    Refused<ArgumentNullException>("a null eighth point", () => first.Reducer(P, P, P, P, P, P, P, null));
    Refused<ArgumentException>("a point of two numbers", () => first.Box(P, P, P, Two));
    Refused<ArgumentException>("an elbow from its axis", () => first.Elbow(P, O, P, O, 1));
    Refused<ArgumentException>("an elbow to its axis", () => first.Elbow(P, O, O, P, 1));
    Refused<ArgumentOutOfRangeException>("number 46656", () => first.Header("", "", 46656));
    Refused<ArgumentOutOfRangeException>("number -1", () => first.Header("", "", -1));
    Refused<ArgumentException>("a text of two lines", () => first.Text(P, P, P, 1, 1, 1, 0, "a\nb"));
    Refused<ArgumentException>("a text of 513 bytes",
                               () => first.Text(P, P, P, 1, 1, 1, 0, new string('a', 513)));
    first.Header(null, null, 46655);  // a null text is blank
    first.Text(P, P, P, 1, 1, 1, 0, new string('a', 512));
    VeskFile second = new VeskFile("second");  // closes the first
    Refused<ObjectDisposedException>("a closed file", () => first.Point(P));
    first.Dispose();  // must leave the second open
    second.Point(P);
    second.Dispose();
    second.Dispose();

    // Its numbers; and 512 bytes do not fit behind a header, they begin one line more.
    if (File.ReadAllLines("veskguards.dat").Length != 3) {
      Console.WriteLine("veskguards.dat holds more than the one text");
      ++failures;
    }
    if (File.ReadAllText("vesksecond.dat") != "          ZZZ    00l pt 1 2 3" + Environment.NewLine) {
      Console.WriteLine("vesksecond.dat is not the one point");
      ++failures;
    }
    return failures == 0 ? 0 : 1;
  }
}
