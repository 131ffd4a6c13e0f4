# SPDX-License-Identifier: MIT
"""The checks of the Python module. VESK_MODULE is its folder, VESK_LIBRARY the library."""

import errno
import math
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time
import unittest
import unittest.mock
from fractions import Fraction

sys.path.insert(0, os.environ["VESK_MODULE"])
sys.dont_write_bytecode = True
import vesk  # noqa: E402

O = (0, 0, 0)
P = (1, 2, 3)
X = (1, 0, 0)
Y = (0, 1, 0)


class InAFolderOfItsOwn(unittest.TestCase):
    def setUp(self):
        self.before = os.getcwd()
        self.folder = tempfile.mkdtemp()
        os.chdir(self.folder)

    def tearDown(self):
        os.chdir(self.before)
        shutil.rmtree(self.folder)

    def lines(self, name):
        """The records of a file without header and line number."""
        text = pathlib.Path(f"vesk{name}.dat").read_text()
        return [line[19:] for line in text.splitlines()]


class Arguments(InAFolderOfItsOwn):
    # what, exception, part of the message, call
    REFUSED = [
        ("null point", TypeError, "p must be three numbers, not NoneType", lambda f: f.point(None)),
        ("number as point", TypeError, "p must be three numbers, not int", lambda f: f.point(1)),
        ("two numbers", ValueError, "p must be three numbers, not 2", lambda f: f.point((1, 2))),
        ("four numbers", ValueError, "not 4", lambda f: f.point((1, 2, 3, 4))),
        ("string as point", TypeError, "x of p must be a number, not str", lambda f: f.point("123")),
        ("string in a point", TypeError, "y of p must be a number", lambda f: f.point((1, "2", 3))),
        ("complex in a point", TypeError, "z of p must be a number", lambda f: f.point((1, 2, 3j))),
        ("NaN", ValueError, "z of p must be finite", lambda f: f.point((1, 2, math.nan))),
        ("infinity", ValueError, "x of p1 must be finite", lambda f: f.segment((math.inf, 2, 3), P)),
        ("second point", TypeError, "p2 must be", lambda f: f.segment(P, None)),
        ("third point", TypeError, "p3 must be", lambda f: f.triangle(P, P, None)),
        ("fourth point", TypeError, "p4 must be", lambda f: f.quadrangle(P, P, P, None)),
        ("corner of a box", TypeError, "p3 must be", lambda f: f.box(P, P, P, None)),
        ("eighth corner", TypeError, "p7 must be", lambda f: f.reducer(P, P, P, P, P, P, P, None)),
        ("end of a cylinder", TypeError, "p2 must be", lambda f: f.cylinder(P, None, 1)),
        ("diameter", TypeError, "d must be a number", lambda f: f.cylinder(O, P, None)),
        ("end of a cone", TypeError, "p1 must be", lambda f: f.cone(None, P, 1, 1)),
        ("second diameter", TypeError, "d2 must be a number", lambda f: f.cone(O, P, 1, "1")),
        ("centre of a torus", TypeError, "p0 must be", lambda f: f.torus(None, P, P, 1)),
        ("infinite diameter", ValueError, "d must be finite", lambda f: f.torus(O, X, Y, math.inf)),
        ("elbow without array", TypeError, "p3 must be", lambda f: f.elbow(P, P, P, None, 1)),
        ("elbow from its axis", ValueError, "p2 must not be at p0", lambda f: f.elbow(P, O, P, O, 1)),
        ("elbow to its axis", ValueError, "p3 must not be at p0", lambda f: f.elbow(P, O, O, P, 1)),
        ("number too large", ValueError, "n must be 0 to 46655, not 46656",
         lambda f: f.header("", "", 46656)),
        ("number too small", ValueError, "not -1", lambda f: f.header("", "", -1)),
        ("half a number", TypeError, "n must be an integer, not float",
         lambda f: f.header("", "", 1.0)),
        ("header of bytes", TypeError, "a must be a str, not bytes", lambda f: f.header(b"", "", 1)),
        ("null header", TypeError, "b must be a str, not NoneType", lambda f: f.header("", None, 1)),
        ("text with a line end", ValueError, "line end",
         lambda f: f.text(P, X, Y, 1, 1, "a\nb")),
        ("text with a zero", ValueError, "zero", lambda f: f.text(P, X, Y, 1, 1, "a\0b")),
        ("null text", TypeError, "text must be a str", lambda f: f.text(P, X, Y, 1, 1, None)),
        # 257 letters of two bytes are 514 bytes.
        ("long text", ValueError, "at most 512 bytes, not 514",
         lambda f: f.text(P, X, Y, 1, 1, "\u00e4" * 257)),
        ("alignment 0", ValueError, "alignment must be 1 to 9",
         lambda f: f.text(P, X, Y, 1, 1, "a", alignment=0)),
        ("alignment 10", ValueError, "alignment must be 1 to 9",
         lambda f: f.text(P, X, Y, 1, 1, "a", alignment=10)),
        ("flag 2", ValueError, "flag must be 0 to 1", lambda f: f.text(P, X, Y, 1, 1, "a", flag=2)),
    ]

    def test_what_is_refused_writes_nothing(self):
        with vesk.File("a") as file:
            for what, exception, message, call in self.REFUSED:
                with self.subTest(what):
                    with self.assertRaises(exception) as caught:
                        call(file)
                    self.assertIn(message, str(caught.exception))
            file.point(P)
        self.assertEqual(self.lines("a"), ["l pt 1 2 3"])

    def test_points_are_any_three_real_numbers(self):
        with vesk.File("a") as file:
            file.point([1, 2.5, Fraction(1, 4)])
            file.point(float(n) for n in range(3))
            file.point(range(1, 4))
        self.assertEqual(self.lines("a"), ["l pt 1 2.5 0.25", "l pt 0 1 2", "l pt 1 2 3"])

    def test_the_largest_values_are_taken(self):
        with vesk.File("a") as file:
            file.header("", "", 0)
            file.header("", "", 46655)
            file.text(P, X, Y, 1, 1, "\u00e4" * 256, alignment=9)
            file.text(P, X, Y, 1, 1, "")
        lines = self.lines("a")
        # A text of 512 bytes does not fit behind a header and begins one line more.
        self.assertEqual(lines[1:3], ["x ", "x " + "\u00e4" * 256])
        self.assertTrue(lines[0].endswith(",9,512"), lines[0])

    def test_names_are_refused_before_the_open_file_is_closed(self):
        with vesk.File("a") as file:
            for name, exception in ((None, TypeError), (b"b", TypeError), ("b\0c", ValueError)):
                with self.subTest(name), self.assertRaises(exception):
                    vesk.File(name)
            file.point(P)
        self.assertEqual(os.listdir(), ["veska.dat"])
        self.assertEqual(self.lines("a"), ["l pt 1 2 3"])


class Files(InAFolderOfItsOwn):
    def test_the_four_solids_return_their_lines(self):
        with vesk.File("a") as file:
            self.assertEqual(file.cylinder(O, P, 1), 1)
            self.assertEqual(file.cone(O, P, 1, 0), 1)
            self.assertEqual(file.torus(O, X, Y, 0.5), 1)
            self.assertEqual(file.elbow(O, (0, 0, 1), X, Y, 0.5), 1)

    def test_a_refused_file_is_an_oserror_with_number_and_name(self):
        with self.assertRaises(FileNotFoundError) as caught:
            vesk.File("none/a")
        self.assertEqual(caught.exception.errno, errno.ENOENT)
        self.assertEqual(caught.exception.filename, "vesknone/a.dat")
        os.mkdir("veskb.dat")
        with self.assertRaises(IsADirectoryError):
            vesk.File("b")

    def test_a_refused_file_closes_the_open_one(self):
        file = vesk.File("a")
        file.point(P)
        with self.assertRaises(OSError):
            vesk.File("none/a")
        self.assertTrue(file.closed)
        self.assertEqual(self.lines("a"), ["l pt 1 2 3"])

    def test_with_closes_also_after_an_exception(self):
        with self.assertRaises(KeyError):
            with vesk.File("a") as file:
                file.point(P)
                self.assertFalse(file.closed)
                raise KeyError
        self.assertTrue(file.closed)
        self.assertEqual(self.lines("a"), ["l pt 1 2 3"])

    def test_a_closed_file_takes_nothing(self):
        file = vesk.File("a")
        file.close()
        file.close()
        for call in (lambda: file.point(P), lambda: file.header("", "", 1)):
            with self.assertRaisesRegex(ValueError, "veska.dat is closed"):
                call()

    def test_the_second_file_closes_the_first(self):
        first = vesk.File("a")
        first.point(P)
        with vesk.File("b") as second:
            self.assertTrue(first.closed)
            with self.assertRaises(ValueError):
                first.point(P)
            first.close()  # not the second
            second.point(O)
        self.assertEqual(self.lines("a"), ["l pt 1 2 3"])
        self.assertEqual(self.lines("b"), ["l pt 0 0 0"])

    def test_names_beyond_ascii(self):
        with vesk.File("Gerät") as file:
            self.assertEqual(file.path, "veskGerät.dat")
        self.assertEqual(os.listdir(), ["veskGerät.dat"])

    def test_threads_wait_for_each_other(self):
        class Library:
            inside = most = calls = 0

            def vk_writeCyl(self, *_):
                self.inside += 1
                self.most = max(self.most, self.inside)
                self.calls += 1
                time.sleep(0.01)  # others come in now, if they can
                self.inside -= 1
                return 1

        library = Library()
        with vesk.File("a") as file, unittest.mock.patch.object(vesk, "_library", lambda: library):
            threads = [threading.Thread(target=file.cylinder, args=(O, P, 1)) for _ in range(8)]
            for thread in threads:
                thread.start()
            for thread in threads:
                thread.join()
        self.assertEqual((library.calls, library.most), (8, 1))


class Paths(InAFolderOfItsOwn):
    """Files with a path: whole or not at all."""

    def setUp(self):
        super().setUp()
        os.makedirs("here")
        os.mkdir("there")
        os.chdir("here")

    TARGET = os.path.join("..", "there", "pump.rec")

    def target(self):
        return pathlib.Path(self.TARGET).read_text()[19:]

    def test_the_file_appears_when_it_is_closed(self):
        pathlib.Path(self.TARGET).write_text("before")
        with vesk.File(path=self.TARGET) as file:
            file.point(P)
            self.assertEqual(pathlib.Path(self.TARGET).read_text(), "before")
            self.assertEqual(file.path, os.path.abspath(self.TARGET))
        self.assertEqual(self.target(), "l pt 1 2 3\n")
        self.assertEqual((os.listdir(), os.listdir("../there")), ([], ["pump.rec"]))

    def test_the_host_may_leave_the_folder(self):
        file = vesk.File(path=self.TARGET)
        file.point(P)
        os.chdir("..")
        file.close()
        os.chdir("here")
        self.assertEqual(self.target(), "l pt 1 2 3\n")

    def test_after_an_exception_it_does_not_appear(self):
        with self.assertRaises(KeyError):
            with vesk.File(path=self.TARGET) as file:
                file.point(P)
                raise KeyError
        self.assertTrue(file.closed)
        self.assertEqual((os.listdir(), os.listdir("../there")), ([], []))

    def test_the_next_file_completes_it(self):
        vesk.File(path=self.TARGET).point(P)
        vesk.File("b").close()
        self.assertEqual(self.target(), "l pt 1 2 3\n")
        self.assertEqual(os.listdir(), ["veskb.dat"])

    def test_a_folder_that_is_not_there_is_named_at_once(self):
        for path, kind in (("../none/a", FileNotFoundError), ("../there", IsADirectoryError)):
            with self.subTest(path), self.assertRaises(kind) as caught:
                vesk.File(path=path)
            self.assertEqual(caught.exception.filename, os.path.abspath(path))
        self.assertEqual((os.listdir(), os.listdir("../there")), ([], []))

    def test_another_file_system_gets_a_copy(self):
        if not os.path.isdir("/dev/shm") or os.stat("/dev/shm").st_dev == os.stat(".").st_dev:
            self.skipTest("there is one file system")
        with tempfile.TemporaryDirectory(dir="/dev/shm") as folder:
            path = pathlib.Path(folder, "pump.rec")
            path.write_text("before")
            with vesk.File(path=path) as file:
                file.point(P)
            self.assertEqual(path.read_text()[19:], "l pt 1 2 3\n")
            self.assertEqual((os.listdir(), os.listdir(folder)), ([], ["pump.rec"]))

    def test_a_full_disk_leaves_what_was_there(self):
        pathlib.Path(self.TARGET).write_text("before")
        result = run("import resource, vesk\n"
                     "resource.setrlimit(resource.RLIMIT_FSIZE, (1000, 1000))\n"
                     "with vesk.File(path='../there/pump.rec') as file:\n"
                     "    for n in range(100): file.point((n, 2, 3))\n",
                     VESK_LIBRARY=os.environ["VESK_LIBRARY"])
        self.assertEqual(result.returncode, 1)
        self.assertIn("File too large", result.stderr)
        self.assertIn("there/pump.rec", result.stderr)
        self.assertEqual(pathlib.Path(self.TARGET).read_text(), "before")
        self.assertEqual((os.listdir(), os.listdir("../there")), ([], ["pump.rec"]))

    def test_a_name_or_a_path_but_not_both(self):
        for arguments in ({}, {"name": "a", "path": "b"}):
            with self.subTest(arguments), self.assertRaises(TypeError):
                vesk.File(**arguments)


def run(script, module=os.environ["VESK_MODULE"], **variables):
    """Runs a script in an interpreter of its own, without VESK_LIBRARY unless given."""
    environment = {k: v for k, v in os.environ.items() if k != "VESK_LIBRARY"}
    environment.update(variables, PYTHONPATH=str(module), PYTHONDONTWRITEBYTECODE="1")
    return subprocess.run([sys.executable, "-c", script], env=environment, text=True,
                          capture_output=True)


class Finding(InAFolderOfItsOwn):
    LIBRARY = os.environ["VESK_LIBRARY"]
    POINT = "import vesk\nwith vesk.File('a') as file: file.point((1, 2, 3))"

    def setUp(self):
        super().setUp()
        os.mkdir("module")
        shutil.copy(os.path.join(os.environ["VESK_MODULE"], "vesk.py"), "module")

    def find(self, **variables):
        return run(self.POINT, module="module", **variables)

    def expect_found(self, result):
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(self.lines("a"), ["l pt 1 2 3"])

    def test_by_the_variable(self):
        self.expect_found(self.find(VESK_LIBRARY=self.LIBRARY))

    def test_beside_the_module(self):
        shutil.copy(self.LIBRARY, "module")
        self.expect_found(self.find())

    def test_in_the_places_of_the_system(self):
        self.expect_found(self.find(LD_LIBRARY_PATH=os.path.dirname(self.LIBRARY)))

    def test_in_the_build_folder_of_a_source_tree(self):
        for folder in ("include", "build/dev/lib", "examples/hosts"):
            os.makedirs(folder)
        pathlib.Path("include/vesk.h").touch()
        shutil.copy(self.LIBRARY, "build/dev/lib")
        os.rename("module", "examples/hosts/python")
        self.expect_found(run(self.POINT, module="examples/hosts/python"))

    def test_a_wrong_variable_is_an_oserror_that_names_it(self):
        shutil.copy(self.LIBRARY, "module")  # must not be taken instead
        result = self.find(VESK_LIBRARY="/none/libvesk.so")
        self.assertEqual(result.returncode, 1)
        self.assertIn("OSError: the Vesk library was not found", result.stderr)
        self.assertIn("/none/libvesk.so", result.stderr)

    def test_importing_needs_no_library(self):
        result = run("import vesk", module="module", VESK_LIBRARY="/none/libvesk.so")
        self.assertEqual(result.returncode, 0, result.stderr)


class Endings(InAFolderOfItsOwn):
    def test_a_forgotten_close_is_made_good_by_a_normal_end(self):
        result = run("import vesk\nfile = vesk.File('a')\nfile.point((1, 2, 3))",
                     VESK_LIBRARY=os.environ["VESK_LIBRARY"])
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(self.lines("a"), ["l pt 1 2 3"])

    def test_without_the_module_a_null_array_ends_the_program(self):
        result = run("import ctypes, os, resource\n"
                     "resource.setrlimit(resource.RLIMIT_CORE, (0, 0))\n"
                     "library = ctypes.CDLL(os.environ['VESK_LIBRARY'])\n"
                     "try:\n    library.vk_writePnt(None)\n"
                     "except BaseException:\n    pass\n",
                     VESK_LIBRARY=os.environ["VESK_LIBRARY"])
        self.assertEqual(result.returncode, -signal.SIGABRT)


if __name__ == "__main__":
    unittest.main()
