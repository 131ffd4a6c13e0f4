# SPDX-License-Identifier: MIT
# Writes all eleven elements. VESK is the folder of the library:
#
#     VESK_LIBRARY="$VESK/lib/libCVeskDll.so" python3 model.py fan
#
# makes veskfan.dat. The module vesk.py, beside this file, calls the library by ctypes.
# What would end Python inside the library is an error of Python before the call.
import sys

import vesk


def write_model(name):
    with vesk.File(name) as file:
        number = lambda n: file.header("DUCT-7", "A1", n)  # every element has its own
        number(1)
        file.point((1, 2, 3))
        number(2)
        file.segment((0, 0, 0), (1000, 0, 0.5))
        number(3)
        file.triangle((0, 0, 0), (100, 0, 0), (0, 50, 0))
        number(4)
        file.quadrangle((0, 0, 10), (100, 0, 10), (100, 50, 10), (0, 50, 10))
        number(5)
        file.text((1, 2, 0), (1, 0, 0), (0, 1, 0), 0.5, 2.5, "Fan 1", alignment=7, flag=1)
        number(6)
        file.box((0, 0, 0), (10, 0, 0), (0, 20, 0), (0, 0, 30))
        number(7)
        file.reducer((0, 0, 0), (10, 0, 0), (0, 10, 0), (10, 10, 0),
                     (2, 2, 20), (8, 2, 20), (2, 8, 20), (8, 8, 20))
        number(8)
        file.cylinder((1, 2, 3), (1, 2, 13), 219.1)
        number(9)
        file.cone((0, 0, 0), (0, 0, 100), 168.3, 114.3)
        number(10)
        file.torus((0, 0, 0), (100, 0, 0), (0, 100, 0), 20)
        number(11)
        file.elbow((0, 0, 0), (0, 0, 10), (50, 0, 0), (0, 50, 0), 30)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("Usage: model.py NAME")
    try:
        write_model(sys.argv[1])
    except OSError as error:
        sys.exit(f"{error.filename or 'model.py'}: {error.strerror or error}")
